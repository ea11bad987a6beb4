#include "platform/CloneBuffer.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "platform/MatSize.h"

cv::Mat CloneBuffer(const unsigned char* data, int step, int height, int width, int type) {
  const std::int64_t area = static_cast<std::int64_t>(height) * width;
  if (data == nullptr && area != 0) {
    CV_Error(cv::Error::StsNullPtr, "no data for an image that is not empty");
  }
  const bool packed = step == 0 || height == 1;
  if (!packed && step % CV_ELEM_SIZE1(type) != 0) {
    CV_Error(cv::Error::BadStep, "the step is no multiple of the size of a channel");
  }
  if (area == 0) return cv::Mat();

  if (height > 0 && width > 0) RequireCountable(height, width, CV_MAT_TYPE(type));
  cv::Mat clone;
  clone.create(height, width, CV_MAT_TYPE(type));
  const std::size_t rowSize = static_cast<std::size_t>(width) * clone.elemSize();
  const std::ptrdiff_t stride = packed ? static_cast<std::ptrdiff_t>(rowSize) : step;
  if (stride == static_cast<std::ptrdiff_t>(rowSize)) {
    std::memcpy(clone.data, data, rowSize * static_cast<std::size_t>(height));
    return clone;
  }
  for (int row = 0; row < height; ++row) std::memcpy(clone.ptr(row), data + row * stride, rowSize);
  return clone;
}
