#ifndef WATCHER_BEHIND_H_
#define WATCHER_BEHIND_H_

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include <opencv2/core.hpp>

#include "VemData.h"

/// What stands behind the handles, read in place: a check neither calls the library, which a
/// process may not even have, nor takes memory. The layouts are part of the binary interface.
namespace watcher {

/// Access is not checked in an explicit instantiation.
template <typename Tag, typename Tag::Member kMember>
struct Open {
  friend typename Tag::Member MemberOf(Tag) { return kMember; }
};

#define VEM_BEHIND(Class, Type, member)                \
  struct Behind##Class {                               \
    using Member = Type Class::*;                      \
    friend Member MemberOf(Behind##Class);             \
  };                                                   \
  template struct Open<Behind##Class, &Class::member>; \
  inline auto& Behind(const Class& object) { return *(object.*MemberOf(Behind##Class())); }

VEM_BEHIND(Vem1DCodeArray, std::vector<Vem1DCode>*, store_)
VEM_BEHIND(Vem2DVarArray, std::vector<VemVarArray>*, store_)
VEM_BEHIND(Vem3DPointArray, std::vector<Vem3DPoint>*, store_)
VEM_BEHIND(VemContour, std::vector<cv::Point2d>*, store_)
VEM_BEHIND(VemContourArray, std::vector<std::vector<cv::Point2d>>*, store_)
VEM_BEHIND(VemDMCodeArray, std::vector<VemDMCode>*, store_)
VEM_BEHIND(VemFeaturePointArray, std::vector<VemFeaturePoint>*, store_)
VEM_BEHIND(VemImage, cv::Mat*, mat)
VEM_BEHIND(VemImageArray, std::vector<cv::Mat*>*, store_)
VEM_BEHIND(VemMatrix, cv::Mat*, mat)
VEM_BEHIND(VemMatrixArray, std::vector<cv::Mat*>*, store_)
VEM_BEHIND(VemOverlay, IVemOverlay*, impl_)
VEM_BEHIND(VemOverlayPath, IVemOverlayPath*, impl_)
VEM_BEHIND(VemPDF417CodeArray, std::vector<VemPDF417Code>*, store_)
VEM_BEHIND(VemPointArray, std::vector<VemPoint>*, store_)
VEM_BEHIND(VemQRCodeArray, std::vector<VemQRCode>*, store_)
VEM_BEHIND(VemROI, IVemROIPara*, impl_)
VEM_BEHIND(VemROIArray, std::vector<IVemROIArrayPara>*, store_)
VEM_BEHIND(VemRegion, VemRegionData*, data_)
VEM_BEHIND(VemRegionArray, IVemRegionArrayPara*, impl_)
VEM_BEHIND(VemScratchGroup, std::vector<VemScratchFeature>*, Features)
VEM_BEHIND(VemScratchLayer, std::vector<VemScratchGroup>*, Groups)
VEM_BEHIND(VemScratchLayerArray, std::vector<VemScratchLayer>*, layers_)
VEM_BEHIND(VemVCodeArray, std::vector<VemVCode>*, store_)
VEM_BEHIND(VemVarArray, VemVarStore*, store_)
#undef VEM_BEHIND

// The table of a morphology structure is of interest as an address alone.
struct BehindMorphStructure {
  using Member = int* VemMorphStructure::*;
  friend Member MemberOf(BehindMorphStructure);
};
template struct Open<BehindMorphStructure, &VemMorphStructure::values>;
struct BehindMorphType {
  using Member = VemMorphStructureType VemMorphStructure::*;
  friend Member MemberOf(BehindMorphType);
};
template struct Open<BehindMorphType, &VemMorphStructure::type>;

inline const int* TableOf(const VemMorphStructure& structure) {
  return structure.*MemberOf(BehindMorphStructure());
}
inline bool IsCustom(const VemMorphStructure& structure) {
  return structure.*MemberOf(BehindMorphType()) == VemMorphStructureCustom;
}

/// How many elements a list has.
template <typename T>
std::size_t SizeOf(const std::vector<T>& list) {
  return list.size();
}
inline std::size_t SizeOf(const VemVarStore& store) {
  return static_cast<std::size_t>(store.Last - store.First);
}
inline std::size_t SizeOf(const IVemRegionArrayPara& array) { return array.Widths.size(); }
inline std::size_t SizeOf(const IVemOverlayPath& path) { return path.Overlays.size(); }
template <typename Array>
auto SizeOf(const Array& array) -> decltype(SizeOf(Behind(array))) {
  return SizeOf(Behind(array));
}

/// The element at an index that is in range.
template <typename Array>
const auto& ElementOf(const Array& array, int index) {
  return Behind(array)[static_cast<std::size_t>(index)];
}
inline const VemVar& ElementOf(const VemVarArray& array, int index) {
  return Behind(array).First[index];
}

/// Whether an address is one that an object can have. The page at address 0 is no process's: null
/// lies there, and what an array gives for an index out of range.
inline bool IsAddress(const volatile void* address) {
  return reinterpret_cast<std::uintptr_t>(address) >= 4096;
}

inline bool IsText(const VemVar& value) { return value.ValType() == VemVarString; }

/// The 64 bits behind the kind of a value.
template <typename T>
T PayloadOf(const VemVar& value) {
  static_assert(sizeof(T) == 8 && sizeof(VemVar) == 16, "the kind, then the payload");
  T payload;
  std::memcpy(&payload, reinterpret_cast<const char*>(&value) + 8, sizeof(payload));
  return payload;
}

/// Whether a record can't be assigned to itself.
inline bool HoldsText(const VemVar& value) { return IsText(value); }
inline bool HoldsText(const Vem1DCode& code) { return IsText(code.Value); }
inline bool HoldsText(const VemVCode& code) {
  return IsText(code.Value0) || IsText(code.Value1) || IsText(code.Value2) || IsText(code.Value3);
}
inline bool HoldsText(const VemPDF417Code& code) {
  return IsText(code.Value) || IsText(code.Polarity) || IsText(code.Value2);
}
template <typename Code>
auto HoldsText(const Code& code) -> decltype(IsText(code.SymbolType)) {
  return IsText(code.Value) || IsText(code.SymbolType) || IsText(code.Polarity) ||
         IsText(code.Value3) || IsText(code.Value4);
}

}  // namespace watcher

#endif  // WATCHER_BEHIND_H_
