#include "support/OutlineReference.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include <opencv2/imgproc.hpp>

#include "IVemROIPara.h"
#include "VemPointArray.h"

namespace {

using Pixels = std::vector<cv::Point>;

int Truncate(double value) {
  if (!(value > -2147483649.0 && value < 2147483648.0)) return std::numeric_limits<int>::min();
  return static_cast<int>(value);
}

cv::Point Truncate(double x, double y) { return cv::Point(Truncate(x), Truncate(y)); }

// The stored numbers as the readers of VemVar deliver them.
class Stored {
 public:
  explicit Stored(const std::vector<double>& values) : values_(values) {}

  int I(std::size_t k) const { return Truncate(values_.at(k)); }
  double D(std::size_t k) const { return values_.at(k); }
  float F(std::size_t k) const { return static_cast<float>(values_.at(k)); }
  std::size_t Length() const { return values_.size(); }

 private:
  const std::vector<double>& values_;
};

Chain Widened(const Pixels& pixels) {
  Chain chain;
  for (const cv::Point& p : pixels) chain.emplace_back(p.x, p.y);
  return chain;
}

OutlineMask Failure() { return {}; }

OutlineMask Success(const std::vector<Pixels>& contours, int width, int height) {
  OutlineMask mask{true, {}, width, height};
  for (const Pixels& contour : contours) mask.contours.push_back(Widened(contour));
  return mask;
}

OutlineMask Traced(const cv::Mat& raster) {
  return {true, TracedContours(raster), raster.cols, raster.rows};
}

// The one contour over the canvas that holds it, a row and a column to spare.
OutlineMask Bounded(const Pixels& contour) {
  int right = std::numeric_limits<int>::min();
  int bottom = std::numeric_limits<int>::min();
  for (const cv::Point& p : contour) {
    right = std::max(right, p.x + 1);
    bottom = std::max(bottom, p.y + 1);
  }
  if (right < 0 || bottom < 0) return Failure();
  return Success({contour}, right + 1, bottom + 1);
}

OutlineMask Rect1(const Stored& p) {
  const int x1 = p.I(1);
  const int y1 = p.I(0);
  const int x2 = p.I(3);
  const int y2 = p.I(2);
  if (std::max(x1, x2) < -1 || std::max(y1, y2) < -1) return Failure();
  return Success({{{x1, y1}, {x2, y1}, {x2, y2}, {x1, y2}, {x1, y1}}}, std::max(x1, x2) + 1,
                 std::max(y1, y2) + 1);
}

OutlineMask Line(const Stored& p) {
  const int x1 = p.I(1);
  const int y1 = p.I(0);
  const int x2 = p.I(3);
  const int y2 = p.I(2);
  if (std::max(x1, x2) < 0 || std::max(y1, y2) < 0) return Failure();
  return Success({{{x1, y1}, {x2, y2}}}, std::max(x1, x2) + 1, std::max(y1, y2) + 1);
}

OutlineMask Circle(const Stored& p) {
  const int col = p.I(1);
  const int row = p.I(0);
  const int radius = p.I(2);
  const double bottom = static_cast<double>(row) + radius;
  const double right = static_cast<double>(col) + radius;
  if (0 > bottom || 0 > right) return Failure();
  cv::Mat raster = cv::Mat::zeros(Truncate(bottom + 1.0), Truncate(right + 1.0), CV_8UC1);
  cv::circle(raster, cv::Point(col, row), radius, cv::Scalar(255), -1, 8, 0);
  return Traced(raster);
}

OutlineMask Ellipse(const Stored& p) {
  const float a = p.F(2);
  const float b = p.F(3);
  const cv::RotatedRect box(cv::Point2f(static_cast<float>(p.I(1)), static_cast<float>(p.I(0))),
                            cv::Size2f(a + a, b + b), -p.F(4));
  const cv::Rect bounds = box.boundingRect();
  const int bottom = bounds.y + bounds.height;
  const int right = bounds.x + bounds.width;
  if (bottom < 0 || right < 0) return Failure();
  cv::Mat raster = cv::Mat::zeros(bottom + 1, right + 1, CV_8UC1);
  cv::ellipse(raster, box, cv::Scalar(255), -1, 8);
  return Traced(raster);
}

OutlineMask Polygon(const Stored& p) {
  Pixels points;
  for (std::size_t k = 0; k < p.Length(); k += 2) points.emplace_back(p.I(k + 1), p.I(k));
  points.emplace_back(p.I(1), p.I(0));
  return Bounded(points);
}

// A double that went through a float.
double Narrowed(double value) { return static_cast<float>(value); }

OutlineMask Rect2(const Stored& p) {
  const int col = Truncate(p.F(1));
  const int row = Truncate(p.F(0));
  const double length1 = p.F(2);
  const double length2 = p.F(3);
  const double angle = static_cast<double>(p.F(4)) / 180.0 * 3.1415926;
  const double s = std::sin(angle);
  const double c = std::cos(angle);
  const double ax = Narrowed(col + length1 * c * 0.5);
  const double ay = Narrowed(row - length1 * s * 0.5);
  const double bx = Narrowed(col - length1 * c * 0.5);
  const double by = Narrowed(row + length1 * s * 0.5);
  const double dx = s * length2 * 0.5;
  const double dy = c * length2 * 0.5;
  const cv::Point p0 = Truncate(Narrowed(ax + dx), Narrowed(ay + dy));
  const cv::Point p1 = Truncate(Narrowed(ax - dx), Narrowed(ay - dy));
  const cv::Point p2 = Truncate(Narrowed(bx - dx), Narrowed(by - dy));
  const cv::Point p3 = Truncate(Narrowed(bx + dx), Narrowed(by + dy));
  return Bounded({p0, p1, p2, p3, p0});
}

cv::Point OnCircle(double degrees, double radius, int col, int row) {
  const double t = degrees * 3.14 / 180.0;
  return Truncate(std::cos(t) * radius + col, std::sin(-t) * radius + row);
}

OutlineMask Arc(const Stored& p) {
  const int col = Truncate(p.D(1));
  const int row = Truncate(p.D(0));
  const double radius = p.D(2);
  const double start = p.D(3);
  const double sweep = p.D(4);
  const double right = radius + col;
  const double bottom = radius + row;
  if (0 > right || 0 > bottom) return Failure();
  const double end = sweep + start;
  Pixels samples;
  for (int i = Truncate(start); end > i; ++i) samples.push_back(OnCircle(i, radius, col, row));
  samples.push_back(OnCircle(start, radius, col, row));
  return Success({samples}, Truncate(right + 1.0), Truncate(bottom + 1.0));
}

OutlineMask Torus(const Stored& p) {
  const int col = Truncate(p.D(1));
  const int row = Truncate(p.D(0));
  const double start = p.D(4);
  const double sweep = p.D(5);
  const double right = p.D(3) + col;
  const double bottom = p.D(3) + row;
  if (0 > right || 0 > bottom) return Failure();
  const double end = start + sweep;
  Pixels inner;
  Pixels outer;
  for (int i = Truncate(start); !(i > end); ++i) {
    inner.push_back(OnCircle(i, p.D(2), col, row));
    outer.push_back(OnCircle(i, p.D(3), col, row));
  }
  std::vector<Pixels> contours = {inner, outer};
  if (Truncate(sweep) % 360 > 0.05) {
    Pixels sector = inner;
    sector.insert(sector.end(), outer.rbegin(), outer.rend());
    sector.push_back(inner.at(0));
    contours = {sector};
  }
  return Success(contours, Truncate(right + 1.0), Truncate(bottom + 1.0));
}

}  // namespace

VemContour ContourOf(const Chain& points) {
  VemPointArray array;
  for (const cv::Point2d& p : points) {
    VemPoint point(p.x, p.y);
    array.Append(point);
  }
  VemContour contour;
  contour.FromPointArray(array);
  return contour;
}

VemContourArray ContoursOf(const Chains& chains) {
  VemContourArray contours;
  for (const Chain& chain : chains) {
    VemContour contour = ContourOf(chain);
    contours.Append(contour);
  }
  return contours;
}

Chain PointsOf(const VemContour& contour) {
  VemContour copy(contour);
  VemPointArray array;
  copy.ToPointArray(&array);
  Chain points;
  for (int i = 0; i < array.Length(); ++i) points.emplace_back(array[i].x, array[i].y);
  return points;
}

Chains PointsOf(const VemContourArray& contours) {
  Chains chains;
  for (int i = 0; i < contours.Length(); ++i) chains.push_back(PointsOf(contours[i]));
  return chains;
}

bool operator==(const OutlineMask& a, const OutlineMask& b) {
  return a.result == b.result && a.contours == b.contours && a.width == b.width &&
         a.height == b.height;
}

void PrintTo(const OutlineMask& mask, std::ostream* out) {
  *out << (mask.result ? "true" : "false") << ", " << mask.width << " by " << mask.height;
  for (const Chain& contour : mask.contours) {
    *out << "\n ";
    for (const cv::Point2d& p : contour) *out << " (" << p.x << ", " << p.y << ')';
  }
}

Chains TracedContours(const cv::Mat& raster) {
  if (raster.empty()) return {};
  // Without approximation an outline begins with the pixel at which the scan met it.
  std::vector<Pixels> dense;
  std::vector<Pixels> simple;
  cv::findContours(raster.clone(), dense, cv::RETR_CCOMP, cv::CHAIN_APPROX_NONE);
  cv::findContours(raster.clone(), simple, cv::RETR_CCOMP, cv::CHAIN_APPROX_SIMPLE);
  std::vector<std::pair<std::pair<int, int>, std::size_t>> order;
  for (std::size_t i = 0; i < dense.size(); ++i) {
    order.push_back({{dense[i][0].y, dense[i][0].x}, i});
  }
  std::sort(order.begin(), order.end());
  Chains contours;
  for (const auto& [pixel, i] : order) {
    Chain contour = Widened(simple[i]);
    contour.push_back(cv::Point2d(contour[0]));
    contours.push_back(contour);
  }
  return contours;
}

OutlineMask ReferenceOutlines(int type, const std::vector<double>& params, int width, int height) {
  const Stored stored(params);
  switch (type) {
    case VemROIRect1:
      return Rect1(stored);
    case VemROICircle:
      return Circle(stored);
    case VemROITorus:
      return Torus(stored);
    case VemROINone:
      return {false, {}, width, height};
    case VemROIPolygon:
    case VemROIIrregular:
      return Polygon(stored);
    case VemROIRect2:
      return Rect2(stored);
    case VemROILine:
      return Line(stored);
    case VemROIEllipse:
      return Ellipse(stored);
    case VemROIArc:
      return Arc(stored);
    default:
      return {true, {}, width, height};
  }
}
