#ifndef PLATFORM_MAT_SIZE_H_
#define PLATFORM_MAT_SIZE_H_

#include <cstddef>
#include <limits>

#include <opencv2/core.hpp>

/// Raises `cv::Exception` for a size, not negative, whose bytes no integer can count. OpenCV itself
/// multiplies the same numbers without a look at the carry, and asks for what is left.
inline void RequireCountable(int rows, int cols, int type) {
  const std::size_t count = static_cast<std::size_t>(rows) * static_cast<std::size_t>(cols);
  if (count > std::numeric_limits<std::size_t>::max() / CV_ELEM_SIZE(type)) {
    CV_Error(cv::Error::StsNoMem, "the matrix is too large");
  }
}

#endif  // PLATFORM_MAT_SIZE_H_
