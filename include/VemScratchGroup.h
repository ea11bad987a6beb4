#ifndef VEM_SCRATCH_GROUP_H_
#define VEM_SCRATCH_GROUP_H_

#include <cstdint>
#include <vector>

#include "VemExport.h"
#include "VemVar.h"

// What a surface-scratch inspection reports: an array of layers, each with the settings that made
// it and a list of groups, each with a label and a list of features. The order of the public fields
// is part of the binary interface. Copies are deep on every level.

/// One feature of a scratch: a flat record without operations. Nothing is written into it by
/// default.
struct VemScratchFeature {
  std::uint64_t Head0;  ///< Payload of the inspection, not read here.
  std::uint64_t Head1;  ///< Payload of the inspection, not read here.
  int SortKey;          ///< What features are sorted by.
  std::uint32_t Tail;   ///< Payload of the inspection, not read here.
};

/// The order of features: whether the SortKey of `a` is below that of `b`.
VEM_EXPORT bool SelfCompare(VemScratchFeature& a, VemScratchFeature& b);

/// The settings of a scratch inspection. What they mean, the inspection settles. On its own, the
/// record has no defaults.
struct VemScratchPrecessing {
  int Param0;    ///< 0 in a default layer.
  float Param1;  ///< 9.0 in a default layer.
  int Param2;    ///< 0 in a default layer.
  int Param3;    ///< 255 in a default layer.
  int Param4;    ///< 0 in a default layer.
  int Param5;    ///< 0 in a default layer.
};

/// A list of features under a label.
///
/// Positions are not tested and must be valid; Insert at the number of elements adds at the end. A
/// reference to an element lives until the list grows, loses an element, is assigned to or ends.
/// What throws is the allocator alone: the list is then sound, but may hold a part of what was to
/// be added or assigned. Use an object from one thread at a time; reading it from several at once
/// is safe.
class VEM_EXPORT VemScratchGroup {
 public:
  VemScratchGroup();                              ///< No label, no features.
  VemScratchGroup(VemVar& label);                 ///< A copy of the label, no features.
  VemScratchGroup(const VemScratchGroup& other);  ///< A deep copy.
  /// Takes over label and features of the copy that the argument is. Assigned to itself, a group
  /// stays as it is.
  VemScratchGroup& operator=(VemScratchGroup other);
  ~VemScratchGroup();

  void Append(VemScratchFeature feature);                ///< Adds at the end.
  void Insert(int position, VemScratchFeature feature);  ///< Inserts before the position.
  void Remove(int position);                             ///< Removes and closes the gap.
  void Clear();  ///< Removes all features and gives their storage back; the label stays.
  void Sort();   ///< Sorts by growing SortKey. Features of equal keys stand in any order.

  int GetFeatureNum() const;  ///< The number of features.

  VemScratchFeature& operator[](int position);              ///< The feature itself.
  const VemScratchFeature& operator[](int position) const;  ///< The feature itself.

  VemVar Label;  ///< VemVarNone at first.

 private:
  std::vector<VemScratchFeature>* Features;
};

/// A list of groups beside the settings that made it. What goes in is copied twice: for the
/// argument, and for the list.
///
/// Positions are not tested, but for the non-const operator[], and must be valid; Insert at the
/// number of elements adds at the end. A reference to a group lives until the list grows, loses an
/// element, is assigned to or ends. What throws is the allocator alone: the layer is then sound,
/// but may hold a part of what was to be added or assigned. Use an object from one thread at a
/// time; reading it from several at once is safe.
class VEM_EXPORT VemScratchLayer {
 public:
  VemScratchLayer();                               ///< Default settings, no groups.
  VemScratchLayer(VemScratchPrecessing settings);  ///< The given settings, no groups.
  VemScratchLayer(const VemScratchLayer& other);   ///< A deep copy.
  /// A deep copy, in place. Assigned to itself, a layer stays as it is.
  VemScratchLayer& operator=(const VemScratchLayer& other);
  ~VemScratchLayer();

  void Append(VemScratchGroup group);                ///< Adds at the end.
  void Insert(int position, VemScratchGroup group);  ///< Inserts before the position.
  void Remove(int position);                         ///< Removes and closes the gap.
  void Clear();  ///< Destroys all groups but keeps their storage; the settings stay.

  int GetGroupNum() const;  ///< The number of groups.

  /// The group itself, at the nearest position that is valid: the first for a negative one, the
  /// last for one too large. Without groups: an invalid reference, which faults when touched.
  VemScratchGroup& operator[](int position);
  /// The group itself. The position must be valid.
  const VemScratchGroup& operator[](int position) const;

  VemScratchPrecessing Settings;  ///< The settings.

 private:
  std::vector<VemScratchGroup>* Groups;
};

/// A list of layers.
///
/// Positions are not tested and must be valid; Insert at the number of elements adds at the end. A
/// reference to an element lives until the list grows, loses an element, is assigned to or ends.
/// What throws is the allocator alone: the list is then sound, but may hold a part of what was to
/// be added or assigned. Use an object from one thread at a time; reading it from several at once
/// is safe.
class VEM_EXPORT VemScratchLayerArray {
 public:
  VemScratchLayerArray();                                   ///< No layers.
  VemScratchLayerArray(const VemScratchLayerArray& other);  ///< A deep copy.
  /// A deep copy, in place. Assigned to itself, an array stays as it is.
  VemScratchLayerArray& operator=(const VemScratchLayerArray& other);
  ~VemScratchLayerArray();

  void Append(VemScratchLayer& layer);                ///< Adds a copy at the end.
  void Insert(int position, VemScratchLayer& layer);  ///< Inserts a copy before the position.
  void Remove(int position);                          ///< Removes and closes the gap.
  void Clear();                                       ///< Destroys all layers, keeps their storage.

  int GetLayerNum() const;  ///< The number of layers.

  VemScratchLayer& operator[](int position);              ///< The layer itself.
  const VemScratchLayer& operator[](int position) const;  ///< The layer itself.

 private:
  std::vector<VemScratchLayer>* layers_;
};

#endif  // VEM_SCRATCH_GROUP_H_
