#include "roi/ShapeGeometry.h"

#include <climits>
#include <cmath>
#include <cstddef>
#include <opencv2/imgproc.hpp>

PointPair::PointPair(const VemVarArray& params)
    : x1(params[1].I()), y1(params[0].I()), x2(params[3].I()), y2(params[2].I()) {}

namespace {

cv::Point TruncatedPoint(double x, double y) {
  return cv::Point(TruncateToInt(ToFloat(x)), TruncateToInt(ToFloat(y)));
}

}  // namespace

RotatedCorners::RotatedCorners(const VemVarArray& params) : angle(params[4].F()) {
  const int column = TruncateToInt(params[1].F());
  const int row = TruncateToInt(params[0].F());
  const double length1 = ToDouble(params[2].F());
  const double length2 = ToDouble(params[3].F());
  const double a = ToDouble(angle) / 180.0 * 3.1415926;
  const double s = std::sin(a);
  const double c = std::cos(a);
  const double ax = ToDouble(ToFloat(column + length1 * c * 0.5));
  const double ay = ToDouble(ToFloat(row - length1 * s * 0.5));
  const double bx = ToDouble(ToFloat(column - length1 * c * 0.5));
  const double by = ToDouble(ToFloat(row + length1 * s * 0.5));
  const double dx = s * length2 * 0.5;
  const double dy = c * length2 * 0.5;
  corners = {TruncatedPoint(ax + dx, ay + dy), TruncatedPoint(ax - dx, ay - dy),
             TruncatedPoint(bx - dx, by - dy), TruncatedPoint(bx + dx, by + dy)};
  // Each scan begins at another corner, which a tie then keeps.
  top = corners[0];
  left = corners[1];
  bottom = corners[2];
  right = corners[3];
  for (const cv::Point& p : corners) {
    if (p.y < top.y) top = p;
    if (p.x < left.x) left = p;
    if (p.y > bottom.y) bottom = p;
    if (p.x > right.x) right = p;
  }
  endRow = WrapAdd(bottom.y, 1);
  endColumn = WrapAdd(right.x, 1);
}

EllipseBox::EllipseBox(const VemVarArray& params)
    : column(params[1].I()),
      row(params[0].I()),
      a(params[2].F()),
      b(params[3].F()),
      angle(params[4].F()),
      shape(cv::Point2f(ToFloat(column), ToFloat(row)), cv::Size2f(a + a, b + b), -angle),
      bounds(shape.boundingRect()),
      endRow(WrapAdd(bounds.y, bounds.height)),
      endColumn(WrapAdd(bounds.x, bounds.width)) {}

cv::Point SampleCircle(double degrees, double radius, int column, int row) {
  const double t = degrees * 3.14 / 180.0;
  return cv::Point(TruncateToInt(std::cos(t) * radius + column),
                   TruncateToInt(std::sin(-t) * radius + row));
}

// The list closes on the arc's start, unrounded, not on its end.
ArcSamples::ArcSamples(const VemVarArray& params) {
  const int column = TruncateToInt(params[1].D());
  const int row = TruncateToInt(params[0].D());
  const double radius = params[2].D();
  const double start = params[3].D();
  const double right = radius + column;
  const double bottom = radius + row;
  canvas = {TruncateToInt(right + 1.0), TruncateToInt(bottom + 1.0)};
  outside = 0 > right || 0 > bottom;
  if (outside) return;
  const double end = params[4].D() + start;
  for (long i = TruncateToInt(start); end > static_cast<double>(i) && i <= INT_MAX; ++i) {
    points.push_back(SampleCircle(static_cast<double>(i), radius, column, row));
  }
  points.push_back(SampleCircle(start, radius, column, row));
}

ClosedVertices::ClosedVertices(const VemVarArray& params) {
  points.reserve(static_cast<std::size_t>(params.Length()) / 2 + 1);
  for (int k = 0; k < params.Length(); k += 2) {
    points.emplace_back(params[k + 1].I(), params[k].I());
  }
  points.emplace_back(params[1].I(), params[0].I());
  bounds = cv::boundingRect(points);
  endRow = WrapAdd(bounds.y, bounds.height);
  endColumn = WrapAdd(bounds.x, bounds.width);
}
