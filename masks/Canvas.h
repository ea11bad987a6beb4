#ifndef MASKS_CANVAS_H_
#define MASKS_CANVAS_H_

#include <opencv2/core.hpp>

/// Raises `cv::Exception` for a negative size, as OpenCV does for a raster of that size.
inline void RequireCanvas(int width, int height) { CV_Assert(width >= 0 && height >= 0); }

/// A CV_8UC1 raster of background. A negative size is OpenCV's to refuse.
inline cv::Mat EmptyRaster(int width, int height) {
  cv::Mat raster;
  raster.create(height, width, CV_8UC1);
  raster.setTo(0);
  return raster;
}

#endif  // MASKS_CANVAS_H_
