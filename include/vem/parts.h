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

/// What a handle's one pointer points to, as `type`: of VemROI an IVemROIPara, of VemRegion a
/// VemRegionData, of VemRegionArray an IVemRegionArrayPara, of VemOverlay an IVemOverlay, of
/// VemOverlayPath an IVemOverlayPath, of VemFeatureDescriptor a `cv::Mat`.
template <typename Handle>
struct parts_of;

/// @cond
// clang-format off
template <> struct parts_of<VemROI> { using type = IVemROIPara; };
template <> struct parts_of<VemRegion> { using type = VemRegionData; };
template <> struct parts_of<VemRegionArray> { using type = IVemRegionArrayPara; };
template <> struct parts_of<VemOverlay> { using type = IVemOverlay; };
template <> struct parts_of<VemOverlayPath> { using type = IVemOverlayPath; };
template <> struct parts_of<VemFeatureDescriptor> { using type = cv::Mat; };
// clang-format on
/// @endcond

/// The object behind a handle, in place: its public fields hold the numbers as they were set, where
/// the handle's readers round them or copy. Include the header of the object to reach its fields.
///
/// The reference lives as long as the handle, unless the handle gets another object: where an array
/// moves its elements, and where vem::from_json reads into it. Nothing tests what
/// is written through it: the fields have to go together as the object's header tells.
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

/// @cond
template <typename Handle>
void parts(const Handle&&) {
  static_assert(sizeof(Handle) == 0, "vem::parts: the object of a temporary is gone with it");
}
/// @endcond

}  // namespace vem

#endif  // VEM_VEM_PARTS_H_
