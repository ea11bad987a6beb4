#ifndef PLATFORM_FILL_CONTOURS_H_
#define PLATFORM_FILL_CONTOURS_H_

#include <opencv2/core.hpp>
#include <vector>

/// Paints the contours filled, even-odd, and their outlines into a CV_8UC1 raster with 255. A
/// contour without points paints nothing, which `cv::drawContours` itself refuses in some versions;
/// one that reaches far beyond the raster costs no more than one that does not.
void FillContours(cv::Mat& raster, const std::vector<std::vector<cv::Point>>& contours);

/// Paints the area between an outer contour and a hole in it, the hole's outline included.
void FillRing(cv::Mat& raster, const std::vector<cv::Point>& outer,
              const std::vector<cv::Point>& hole);

#endif  // PLATFORM_FILL_CONTOURS_H_
