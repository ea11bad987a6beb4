#ifndef PLATFORM_CLONE_BUFFER_H_
#define PLATFORM_CLONE_BUFFER_H_

#include <opencv2/core.hpp>

/// Copies a caller's raster into a matrix of its own, with packed rows. `type` is an OpenCV type
/// code; `step` is in bytes from one row to the next, 0 for packed rows, and is not looked at for a
/// single row. It may be narrower than a row or negative.
///
/// A zero area gives the default matrix. Raises `cv::Exception` for null data beside a non-zero
/// area, for a step that is no multiple of a channel's size, and for a negative size beside a
/// non-zero area. `cv::Mat`'s own constructor is never handed the step: its tests differ between
/// versions of OpenCV.
cv::Mat CloneBuffer(const unsigned char* data, int step, int height, int width, int type);

#endif  // PLATFORM_CLONE_BUFFER_H_
