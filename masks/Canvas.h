#ifndef MASKS_CANVAS_H_
#define MASKS_CANVAS_H_

#include <opencv2/core.hpp>

/// Raises `cv::Exception` for a negative size, as OpenCV does for a raster of that size.
inline void RequireCanvas(int width, int height) { CV_Assert(width >= 0 && height >= 0); }

#endif  // MASKS_CANVAS_H_
