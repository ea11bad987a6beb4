#ifndef MASKS_ROUND_FILL_H_
#define MASKS_ROUND_FILL_H_

#include <opencv2/core.hpp>

#include "masks/RunSink.h"

/// Fills a circle on a canvas: the pixels whose centres are no farther than `radius`, not negative,
/// from the centre.
void FillCircle(const cv::Point& center, int radius, const cv::Size& canvas, RunSink& sink);

/// Fills a rotated ellipse on a canvas: a convex polygon of points on the ellipse, 5 to 90 degrees
/// apart by its size, in units of 1/65536 pixel.
void FillEllipse(const cv::RotatedRect& ellipse, const cv::Size& canvas, RunSink& sink);

#endif  // MASKS_ROUND_FILL_H_
