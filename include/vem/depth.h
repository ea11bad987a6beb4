#ifndef VEM_VEM_DEPTH_H_
#define VEM_VEM_DEPTH_H_

/// The names of the depths of pixels.

/// @cond
namespace vem {
namespace detail {

constexpr int depth_count = 7;

// By the codes that VemImageType, VemMatrixType and OpenCV share; null for any other code.
inline const char* depth_name(int depth) {
  static const char* const names[depth_count] = {"8U", "8S", "16U", "16S", "32S", "32F", "64F"};
  return depth >= 0 && depth < depth_count ? names[depth] : nullptr;
}

}  // namespace detail
}  // namespace vem
/// @endcond

#endif  // VEM_VEM_DEPTH_H_
