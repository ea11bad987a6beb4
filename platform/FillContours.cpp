#include "platform/FillContours.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <opencv2/imgproc.hpp>

namespace {

using Polygon = std::vector<cv::Point2d>;

void Draw(cv::Mat& raster, const std::vector<std::vector<cv::Point>>& contours,
          cv::InputArray hierarchy) {
  constexpr int kAllContours = -1;
  constexpr int kFilled = -1;
  constexpr int kEightConnected = 8;
  cv::drawContours(raster, contours, kAllContours, cv::Scalar(255), kFilled, kEightConnected,
                   hierarchy, INT_MAX, cv::Point());
}

// OpenCV walks through every row of a polygon, also far outside the raster, and its edges drift by
// a pixel every 65,536 rows. Vertices as far as this from the raster are drawn as they are; what
// lies beyond is cut off first.
constexpr double kReach = 32767;

cv::Rect2d ReachOf(const cv::Mat& raster) {
  return cv::Rect2d(-kReach, -kReach, raster.cols + 2 * kReach, raster.rows + 2 * kReach);
}

bool IsWithin(const std::vector<cv::Point>& contour, const cv::Rect2d& reach) {
  return std::all_of(contour.begin(), contour.end(),
                     [&](const cv::Point& p) { return reach.contains(cv::Point2d(p)); });
}

// The part of a closed polygon on one side of a limit: `sign` is 1 to keep what is greater.
Polygon Cut(const Polygon& polygon, double cv::Point2d::*axis, double limit, double sign) {
  Polygon kept;
  for (std::size_t i = 0; i < polygon.size(); ++i) {
    const cv::Point2d& from = polygon[i];
    const cv::Point2d& to = polygon[(i + 1) % polygon.size()];
    const double fromDepth = sign * (from.*axis - limit);
    const double toDepth = sign * (to.*axis - limit);
    if (fromDepth >= 0) kept.push_back(from);
    if ((fromDepth >= 0) == (toDepth >= 0)) continue;
    cv::Point2d crossing = from + (to - from) * (fromDepth / (fromDepth - toDepth));
    crossing.*axis = limit;
    kept.push_back(crossing);
  }
  return kept;
}

std::vector<cv::Point> CutTo(const cv::Rect2d& reach, const std::vector<cv::Point>& contour) {
  Polygon polygon(contour.begin(), contour.end());
  polygon = Cut(polygon, &cv::Point2d::x, reach.x, 1);
  polygon = Cut(polygon, &cv::Point2d::x, reach.x + reach.width, -1);
  polygon = Cut(polygon, &cv::Point2d::y, reach.y, 1);
  polygon = Cut(polygon, &cv::Point2d::y, reach.y + reach.height, -1);
  return std::vector<cv::Point>(polygon.begin(), polygon.end());
}

}  // namespace

void FillContours(cv::Mat& raster, const std::vector<std::vector<cv::Point>>& contours) {
  const cv::Rect2d reach = ReachOf(raster);
  const auto isDrawn = [&](const std::vector<cv::Point>& contour) {
    return !contour.empty() && IsWithin(contour, reach);
  };
  if (!contours.empty() && std::all_of(contours.begin(), contours.end(), isDrawn)) {
    return Draw(raster, contours, cv::noArray());
  }
  std::vector<std::vector<cv::Point>> painted;
  for (const std::vector<cv::Point>& contour : contours) {
    painted.push_back(IsWithin(contour, reach) ? contour : CutTo(reach, contour));
    if (painted.back().empty()) painted.pop_back();
  }
  if (!painted.empty()) Draw(raster, painted, cv::noArray());
}

void FillRing(cv::Mat& raster, const std::vector<cv::Point>& outer,
              const std::vector<cv::Point>& hole) {
  if (outer.empty() || hole.empty()) return FillContours(raster, {outer, hole});
  const std::vector<cv::Vec4i> hierarchy = {{-1, -1, 1, -1}, {-1, -1, -1, 0}};
  Draw(raster, {outer, hole}, hierarchy);
}
