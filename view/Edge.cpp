#include "view/Edge.h"

#include <algorithm>
#include <cmath>

#include "view/Shapes.h"

namespace {

// The first line that is not above a height, or the one behind the last.
std::int64_t LineFrom(double y, std::int64_t height) {
  const double line = std::ceil(y * kLines - 0.5);
  const double end = static_cast<double>(height * kLines);
  return static_cast<std::int64_t>(std::min(std::max(line, 0.0), end));
}

}  // namespace

void AddEdge(std::vector<Edge>& edges, const cv::Point2d& from, const cv::Point2d& to,
             std::int64_t height) {
  constexpr double kCorner = 0.5;  // From a pixel's centre to its corner, in x and y.
  const bool down = from.y <= to.y;
  const cv::Point2d& upper = down ? from : to;
  const cv::Point2d& lower = down ? to : from;
  const std::int64_t first = LineFrom(upper.y + kCorner, height);
  const std::int64_t end = LineFrom(lower.y + kCorner, height);
  if (first >= end) return;
  const cv::Point2d point = NearPoint(upper, lower) + cv::Point2d(kCorner, kCorner);
  edges.push_back({first, end, point, SlopeOf(upper, lower), down});
}
