#ifndef VEM_VEM_PARTS_H_
#define VEM_VEM_PARTS_H_

#include <cstring>
#include <type_traits>

class IVemOverlay;
class IVemOverlayPath;
class IVemROIPara;
class IVemRegionArrayPara;
class VemFeatureDescriptor;
class VemOverlay;
class VemOverlayPath;
class VemROI;
class VemRegion;
class VemRegionArray;
struct VemRegionData;

namespace cv {
class Mat;
}  // namespace cv

namespace vem {

/// What a handle's one pointer points to, as `type`.
template <typename Handle>
struct parts_of;

/// Of a region of interest.
template <>
struct parts_of<VemROI> {
  /// The object behind the handle.
  using type = IVemROIPara;
};
/// Of a region.
template <>
struct parts_of<VemRegion> {
  /// The object behind the handle.
  using type = VemRegionData;
};
/// Of an array of regions.
template <>
struct parts_of<VemRegionArray> {
  /// The object behind the handle.
  using type = IVemRegionArrayPara;
};
/// Of an overlay.
template <>
struct parts_of<VemOverlay> {
  /// The object behind the handle.
  using type = IVemOverlay;
};
/// Of a path of overlays.
template <>
struct parts_of<VemOverlayPath> {
  /// The object behind the handle.
  using type = IVemOverlayPath;
};
/// Of a feature descriptor.
template <>
struct parts_of<VemFeatureDescriptor> {
  /// The object behind the handle.
  using type = cv::Mat;
};

/// The object behind a handle, in place: its public fields hold the numbers as they were set, where
/// the handle's readers round them or copy. Include the header of the object to reach its fields.
///
/// The reference lives as long as the handle, unless the handle gets another object: where an array
/// moves its elements, and where vem::from_json reads into it. What is written through it nothing
/// tests; the fields then have to go together as the object's header tells.
template <typename Handle>
typename parts_of<Handle>::type& parts(Handle& handle) {
  static_assert(std::is_standard_layout<Handle>::value && sizeof(Handle) == sizeof(void*),
                "a handle is one pointer");
  typename parts_of<Handle>::type* object = nullptr;
  std::memcpy(&object, static_cast<const void*>(&handle), sizeof object);
  return *object;
}

/// The same of a handle that is not to be changed.
template <typename Handle>
const typename parts_of<Handle>::type& parts(const Handle& handle) {
  return parts(const_cast<Handle&>(handle));
}

}  // namespace vem

#endif  // VEM_VEM_PARTS_H_
