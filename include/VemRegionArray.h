#ifndef VEM_REGION_ARRAY_H_
#define VEM_REGION_ARRAY_H_

#include "VemExport.h"
#include "VemRegion.h"

class IVemRegionArrayPara;

/// An ordered list of regions. Regions go in and come out as copies, with their runs in order.
///
/// Outlines travel beside the regions and are delivered rightly only where all regions of an array
/// have them, or none; IVemRegionArrayPara, which the handle owns alone and forwards to, tells
/// more.
///
/// An index is in range when it is not negative and below Length(). Remove, Swap and Select do
/// nothing on a bad one; Insert and Replace must be given a good one. Nothing is reported. What
/// throws is the allocator alone.
///
/// No argument is changed, though its reference is not const. Pointers to write through must not be
/// null. After a throw the array is as before.
///
/// Use an array from one thread at a time; reading it from several at once is safe.
class VEM_EXPORT VemRegionArray {
 public:
  VemRegionArray();                             ///< Empty.
  VemRegionArray(const VemRegionArray& other);  ///< A deep copy.
  /// Makes the contents a deep copy of `other`'s. Assigned to itself, an array stays as it is.
  VemRegionArray& operator=(const VemRegionArray& other);
  ~VemRegionArray();

  void Append(VemRegion& value);  ///< IVemRegionArrayPara::Append
  /// Adds the regions of `values` at the end, without their outlines; itself: it doubles.
  void Append(VemRegionArray& values);
  void Insert(int index, VemRegion& value);   ///< IVemRegionArrayPara::Insert; at Length() it adds.
  void Remove(int index);                     ///< IVemRegionArrayPara::Remove
  void Replace(int index, VemRegion& value);  ///< IVemRegionArrayPara::Replace
  void Swap(int i, int j);                    ///< IVemRegionArrayPara::Swap
  void Clear();                               ///< Empties the array and gives its storage back.

  int Length() const;                      ///< The number of regions.
  void Select(int index, VemRegion* out);  ///< IVemRegionArrayPara::Select
  void Union(VemRegion* out);              ///< IVemRegionArrayPara::Union
  /// A copy of the region. Out of range: the empty region.
  VemRegion operator[](int index) const;

 private:
  IVemRegionArrayPara* impl_;
};

#endif  // VEM_REGION_ARRAY_H_
