#include "roi/ShapeGeometry.h"

#include <climits>
#include <cmath>
#include <cstddef>
#include <initializer_list>

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
  reach = {WrapAdd(right.x, 1), WrapAdd(bottom.y, 1)};
}

namespace {

Reach ReachOf(const cv::Rect& bounds) {
  return {WrapAdd(bounds.x, bounds.width), WrapAdd(bounds.y, bounds.height)};
}

int FloorToInt(float value) {
  const int whole = TruncateToInt(value);
  return WrapSubtract(whole, ToFloat(whole) > value ? 1 : 0);
}

int CeilToInt(float value) {
  const int whole = TruncateToInt(value);
  return WrapAdd(whole, ToFloat(whole) < value ? 1 : 0);
}

// The box around an ellipse is that around the rectangle in which it lies, in float steps.
cv::Rect BoxAround(const cv::RotatedRect& ellipse) {
  const double angle = ToDouble(ellipse.angle) * 3.1415926535897932384626433832795 / 180.0;
  const float b = ToFloat(std::cos(angle)) * 0.5f;
  const float a = ToFloat(std::sin(angle)) * 0.5f;
  const cv::Point2f& center = ellipse.center;
  const cv::Size2f& size = ellipse.size;
  const float x0 = center.x - a * size.height - b * size.width;
  const float y0 = center.y + b * size.height - a * size.width;
  const float x1 = center.x + a * size.height - b * size.width;
  const float y1 = center.y - b * size.height - a * size.width;
  const std::initializer_list<float> xs = {x0, x1, 2 * center.x - x0, 2 * center.x - x1};
  const std::initializer_list<float> ys = {y0, y1, 2 * center.y - y0, 2 * center.y - y1};
  const int x = FloorToInt(std::min(xs));
  const int y = FloorToInt(std::min(ys));
  return cv::Rect(x, y, WrapSubtract(CeilToInt(std::max(xs)), WrapSubtract(x, 1)),
                  WrapSubtract(CeilToInt(std::max(ys)), WrapSubtract(y, 1)));
}

}  // namespace

EllipseBox::EllipseBox(const VemVarArray& params)
    : column(params[1].I()),
      row(params[0].I()),
      a(params[2].F()),
      b(params[3].F()),
      angle(params[4].F()),
      shape(cv::Point2f(ToFloat(column), ToFloat(row)), cv::Size2f(a + a, b + b), -angle),
      bounds(BoxAround(shape)),
      reach(ReachOf(bounds)) {}

namespace {

cv::Point SampleCircle(double degrees, double radius, const cv::Point& center) {
  const double t = degrees * 3.14 / 180.0;
  return cv::Point(TruncateToInt(std::cos(t) * radius + center.x),
                   TruncateToInt(std::sin(-t) * radius + center.y));
}

}  // namespace

std::size_t CountDegrees(double start, double end, ArcEnd arcEnd) {
  const double first = TruncateToInt(start);
  const double last = arcEnd == ArcEnd::kIncluded ? std::floor(end) : std::ceil(end) - 1;
  if (!(first <= last)) return 0;
  return static_cast<std::size_t>(std::min<double>(last, INT_MAX) - first) + 1;
}

std::vector<cv::Point> SampleDegrees(double start, double end, ArcEnd arcEnd, double radius,
                                     const cv::Point& center) {
  const std::size_t count = CountDegrees(start, end, arcEnd);
  std::vector<cv::Point> samples;
  samples.reserve(count + 1);
  const double first = TruncateToInt(start);
  for (std::size_t i = 0; i < count; ++i) {
    samples.push_back(SampleCircle(first + static_cast<double>(i), radius, center));
  }
  return samples;
}

ArcSamples::ArcSamples(const VemVarArray& params)
    : radius(params[2].D()),
      start(params[3].D()),
      end(params[4].D() + start),
      center(TruncateToInt(params[1].D()), TruncateToInt(params[0].D())) {
  const double right = radius + center.x;
  const double bottom = radius + center.y;
  canvas = {TruncateToInt(right + 1.0), TruncateToInt(bottom + 1.0)};
  outside = 0 > right || 0 > bottom;
}

std::size_t ArcSamples::Count() const { return CountDegrees(start, end, ArcEnd::kExcluded) + 1; }

// The list closes on the arc's start, unrounded, not on its end.
std::vector<cv::Point> ArcSamples::List() const {
  std::vector<cv::Point> points = SampleDegrees(start, end, ArcEnd::kExcluded, radius, center);
  points.push_back(SampleCircle(start, radius, center));
  return points;
}

namespace {

// The columns and rows of all points; a box too large for its size to be told wraps.
cv::Rect BoxAround(const std::vector<cv::Point>& points) {
  int left = points[0].x;
  int right = left;
  int top = points[0].y;
  int bottom = top;
  for (const cv::Point& p : points) {
    left = std::min(left, p.x);
    right = std::max(right, p.x);
    top = std::min(top, p.y);
    bottom = std::max(bottom, p.y);
  }
  return cv::Rect(left, top, WrapAdd(WrapSubtract(right, left), 1),
                  WrapAdd(WrapSubtract(bottom, top), 1));
}

}  // namespace

ClosedVertices::ClosedVertices(const VemVarArray& params) {
  points.reserve(static_cast<std::size_t>(params.Length()) / 2 + 1);
  for (int k = 0; k < params.Length(); k += 2) {
    points.emplace_back(params[k + 1].I(), params[k].I());
  }
  points.emplace_back(params[1].I(), params[0].I());
  bounds = BoxAround(points);
  reach = ReachOf(bounds);
}
