#include "platform/FillContours.h"

#include <climits>
#include <opencv2/imgproc.hpp>

namespace {

void Draw(cv::Mat& raster, const std::vector<std::vector<cv::Point>>& contours,
          cv::InputArray hierarchy) {
  constexpr int kAllContours = -1;
  constexpr int kFilled = -1;
  constexpr int kEightConnected = 8;
  cv::drawContours(raster, contours, kAllContours, cv::Scalar(255), kFilled, kEightConnected,
                   hierarchy, INT_MAX, cv::Point());
}

}  // namespace

void FillContours(cv::Mat& raster, const std::vector<std::vector<cv::Point>>& contours) {
  std::vector<std::vector<cv::Point>> painted;
  for (const std::vector<cv::Point>& contour : contours) {
    if (!contour.empty()) painted.push_back(contour);
  }
  if (!painted.empty()) Draw(raster, painted, cv::noArray());
}

void FillRing(cv::Mat& raster, const std::vector<cv::Point>& outer,
              const std::vector<cv::Point>& hole) {
  if (outer.empty() || hole.empty()) return FillContours(raster, {outer, hole});
  const std::vector<cv::Vec4i> hierarchy = {{-1, -1, 1, -1}, {-1, -1, -1, 0}};
  Draw(raster, {outer, hole}, hierarchy);
}
