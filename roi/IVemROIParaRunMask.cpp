#include <algorithm>
#include <array>
#include <climits>
#include <cmath>
#include <cstddef>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#include <utility>
#include <vector>

#include "IVemROIPara.h"
#include "VemRLC.h"
#include "platform/FillContours.h"
#include "regions/RunTriple.h"
#include "values/Processor.h"

// One function for each shape: it reads the shape's numbers in their stored order, y before x,
// appends the runs and tells the canvas. False means that the shape lies wholly left of or above
// the origin. Rounding and constants, the several values of pi among them, belong to each shape
// alone.

namespace {

struct Canvas {
  int width;
  int height;
};

// One past an inclusive largest coordinate.
Canvas CanvasTo(int column, int row) { return {WrapAdd(column, 1), WrapAdd(row, 1)}; }

std::size_t Count(int first, int end) {
  return end > first ? static_cast<std::size_t>(static_cast<long>(end) - first) : 0;
}

double ToDouble(float value) { return static_cast<double>(value); }
float ToFloat(double value) { return static_cast<float>(value); }
float ToFloat(int value) { return static_cast<float>(value); }

/// The corners of the two shapes that are stored as y1, x1, y2, x2.
struct Corners {
  explicit Corners(const VemVarArray& params)
      : x1(params[1].I()), y1(params[0].I()), x2(params[3].I()), y2(params[2].I()) {}

  bool IsOutside() const { return std::max(x1, x2) < 0 || std::max(y1, y2) < 0; }

  int x1;
  int y1;
  int x2;
  int y2;
};

bool Rect1Runs(const VemVarArray& params, RunTriple& runs, Canvas& canvas) {
  const Corners c(params);
  if (c.IsOutside()) return false;
  const int firstRow = std::max(std::min(c.y1, c.y2), 0);
  const int lastRow = std::max(c.y1, c.y2);
  const int firstColumn = std::max(std::min(c.x1, c.x2), 0);
  const int lastColumn = std::max(c.x1, c.x2);
  runs.Reserve(Count(firstRow, lastRow) + 1);
  for (long row = firstRow; row <= lastRow; ++row) {
    runs.Append(static_cast<int>(row), firstColumn, lastColumn);
  }
  canvas = CanvasTo(lastColumn, lastRow);
  return true;
}

// The circle ends one row earlier at the bottom than at the top, and its canvas has no plus 1: both
// are meant.
bool CircleRuns(const VemVarArray& params, RunTriple& runs, Canvas& canvas) {
  const int column = params[1].I();
  const int row = params[0].I();
  const double radius = params[2].I();
  const double bottom = row + radius;
  const double right = column + radius;
  if (0 > bottom || 0 > right) return false;
  const int firstRow = std::max(TruncateToInt(row - radius + 1.0), 0);
  const int endRow = TruncateToInt(bottom - 1.0);
  const int largestColumn = TruncateToInt(right);
  runs.Reserve(Count(firstRow, endRow));
  for (int r = firstRow; r < endRow; ++r) {
    const int distance = WrapSubtract(r, row);
    const double half = std::sqrt(radius * radius - WrapMultiply(distance, distance));
    runs.Append(r, std::max(TruncateToInt(column - half), 0),
                std::min(TruncateToInt(column + half), largestColumn));
  }
  canvas = {largestColumn, TruncateToInt(bottom)};
  return true;
}

/// A rotated rectangle as whole-number corners, and those of them that reach farthest.
struct RotatedCorners {
  explicit RotatedCorners(const VemVarArray& params) {
    const int column = TruncateToInt(params[1].F());
    const int row = TruncateToInt(params[0].F());
    const double length1 = ToDouble(params[2].F());
    const double length2 = ToDouble(params[3].F());
    angle = params[4].F();
    const double a = ToDouble(angle) / 180.0 * 3.1415926;
    const double s = std::sin(a);
    const double c = std::cos(a);
    const double ax = ToDouble(ToFloat(column + length1 * c * 0.5));
    const double ay = ToDouble(ToFloat(row - length1 * s * 0.5));
    const double bx = ToDouble(ToFloat(column - length1 * c * 0.5));
    const double by = ToDouble(ToFloat(row + length1 * s * 0.5));
    const double dx = s * length2 * 0.5;
    const double dy = c * length2 * 0.5;
    corners = {Corner(ax + dx, ay + dy), Corner(ax - dx, ay - dy), Corner(bx - dx, by - dy),
               Corner(bx + dx, by + dy)};
    top = left = bottom = right = corners[0];
    for (const cv::Point& p : corners) {
      if (p.y < top.y) top = p;
      if (p.x < left.x) left = p;
      if (p.y > bottom.y) bottom = p;
      if (p.x > right.x) right = p;
    }
  }

  static cv::Point Corner(double x, double y) {
    return cv::Point(TruncateToInt(ToFloat(x)), TruncateToInt(ToFloat(y)));
  }

  float angle;
  std::array<cv::Point, 4> corners;
  cv::Point top;
  cv::Point left;
  cv::Point bottom;
  cv::Point right;
};

/// The line y = slope * x + intercept through two corners; a flat or upright one has an infinity or
/// a NaN in it.
struct EdgeLine {
  EdgeLine(const cv::Point& from, const cv::Point& to)
      : slope(ToFloat(static_cast<double>(WrapSubtract(from.y, to.y)) /
                      static_cast<double>(WrapSubtract(from.x, to.x)))),
        intercept(ToFloat(from.y) - ToFloat(from.x) * slope) {}

  float ColumnAt(float row) const { return (row - intercept) / slope; }

  float slope;
  float intercept;
};

// Where a row is crossed by the four edges, ascending. A NaN never changes places.
std::array<float, 4> Crossings(const std::array<EdgeLine, 4>& lines, float row) {
  std::array<float, 4> x = {lines[0].ColumnAt(row), lines[1].ColumnAt(row), lines[2].ColumnAt(row),
                            lines[3].ColumnAt(row)};
  for (std::size_t end = 3; end > 0; --end) {
    for (std::size_t i = 0; i < end; ++i) {
      if (x[i] > x[i + 1]) std::swap(x[i], x[i + 1]);
    }
  }
  return x;
}

void UprightRect2Runs(const RotatedCorners& r, int endRow, RunTriple& runs) {
  const int firstColumn = std::max(std::min(r.top.x, r.left.x), 0);
  const int lastColumn = std::max(r.top.x, r.left.x);
  for (int row = std::max(r.top.y, 0); row < endRow; ++row) {
    runs.Append(row, firstColumn, lastColumn);
  }
}

// The bias of 0.45 goes to both ends alike: neither a floor nor a rounding to nearest.
void TiltedRect2Runs(const RotatedCorners& r, int endRow, RunTriple& runs) {
  const std::array<EdgeLine, 4> lines = {EdgeLine(r.top, r.right), EdgeLine(r.left, r.bottom),
                                         EdgeLine(r.left, r.top), EdgeLine(r.right, r.bottom)};
  for (int row = std::max(r.top.y, 0); row < endRow; ++row) {
    const std::array<float, 4> x = Crossings(lines, ToFloat(row));
    runs.Append(row, std::max(TruncateToInt(ToDouble(x[1]) + 0.45), 0),
                TruncateToInt(ToDouble(x[2]) + 0.45));
  }
}

bool Rect2Runs(const VemVarArray& params, RunTriple& runs, Canvas& canvas) {
  const RotatedCorners r(params);
  const int endRow = WrapAdd(r.bottom.y, 1);
  const int endColumn = WrapAdd(r.right.x, 1);
  if (endRow < 0 || endColumn < 0) return false;
  runs.Reserve(Count(std::max(r.top.y, 0), endRow));
  if (TruncateToInt(r.angle) % 90 == 0) {
    UprightRect2Runs(r, endRow, runs);
  } else {
    TiltedRect2Runs(r, endRow, runs);
  }
  canvas = CanvasTo(endColumn, endRow);
  return true;
}

// The columns follow the whole-number slope. A line wider than high has slope 0 and no runs, since
// its columns are infinite; for an upright one the division faults.
bool LineRuns(const VemVarArray& params, RunTriple& runs, Canvas& canvas) {
  const Corners c(params);
  if (c.IsOutside()) return false;
  const float slope = ToFloat(Divide(WrapSubtract(c.y2, c.y1), WrapSubtract(c.x2, c.x1)).quotient);
  const float intercept = ToFloat(c.y1) - ToFloat(c.x1) * slope;
  const int firstRow = std::max(std::min(c.y1, c.y2), 0);
  const int lastRow = std::max(c.y1, c.y2);
  for (long row = firstRow; row <= lastRow; ++row) {
    const int column = TruncateToInt((static_cast<float>(row) - intercept) / slope);
    if (column >= 0) runs.Append(static_cast<int>(row), column, column);
  }
  canvas = CanvasTo(std::max(c.x1, c.x2), lastRow);
  return true;
}

/// The two foci of an ellipse, rounded to float, and its longer semi-axis.
struct Foci {
  Foci(int column, int row, double a, double b, float angle) {
    double t = ToDouble(angle) / 180.0 * 3.141592653589793;
    if (t > 180.0) t -= 180.0;  // Radians against 180: this is meant.
    const double s = std::sin(t);
    const double c = std::cos(t);
    if (a >= b) {
      const double e = std::sqrt(a * a - b * b);
      longer = a;
      Set(column - c * e, row + s * e, column + c * e, row - s * e);
    } else {
      const double e = std::sqrt(b * b - a * a);
      longer = b;
      Set(column - s * e, row - c * e, column + s * e, row + c * e);
    }
  }

  void Set(double firstX, double firstY, double secondX, double secondY) {
    x1 = ToFloat(firstX);
    y1 = ToFloat(firstY);
    x2 = ToFloat(secondX);
    y2 = ToFloat(secondY);
  }

  double longer;
  float x1;
  float y1;
  float x2;
  float y2;
};

// In each row, solves for the two columns whose distances to the foci add up to the longer axis;
// the factors 4, 16 and 32 come from squaring that equation twice.
void AppendEllipseRows(const Foci& f, int firstRow, int endRow, int largestColumn,
                       RunTriple& runs) {
  const double m = f.longer;
  const double p = ToDouble(f.x1 * f.x1);
  const double q = ToDouble(f.x2 * f.x2);
  const double d = ToDouble(2 * (f.x2 - f.x1));
  const double k4 = 4.0 * m * m;
  const double k16 = 16.0 * m * m;
  const double e = d * d - k16;
  const double g = 32.0 * m * m * ToDouble(f.x2);
  const double h = 4.0 * e;
  for (int r = firstRow; r < endRow; ++r) {
    const float dy1 = ToFloat(r) - f.y1;
    const float dy2 = ToFloat(r) - f.y2;
    const double u = ToDouble(dy1 * dy1);
    const double v = ToDouble(dy2 * dy2);
    const double s = u + p - q - v - k4;
    const double b = (d + d) * s + g;
    const double discriminant = b * b - h * (s * s - k16 * (v + q));
    if (!(discriminant > 0)) continue;
    const double w = std::sqrt(discriminant);
    const auto [smaller, larger] = std::minmax({(w - b) / (e + e), (-w - b) / (e + e)});
    runs.Append(r, std::max(TruncateToInt(smaller), 0),
                std::min(TruncateToInt(larger), largestColumn));
  }
}

bool EllipseRuns(const VemVarArray& params, RunTriple& runs, Canvas& canvas) {
  const int column = params[1].I();
  const int row = params[0].I();
  const float a = params[2].F();
  const float b = params[3].F();
  const float angle = params[4].F();
  const cv::Rect box =
      cv::RotatedRect(cv::Point2f(ToFloat(column), ToFloat(row)), cv::Size2f(a + a, b + b), -angle)
          .boundingRect();
  const int bottom = WrapAdd(box.y, box.height);
  const int right = WrapAdd(box.x, box.width);
  if (bottom < 0 || right < 0) return false;
  canvas = CanvasTo(right, bottom);

  // The rows start one height above the box and end one row early; those that miss the ellipse have
  // no crossing.
  const int firstRow = std::max(WrapAdd(WrapSubtract(box.y, box.height), 1), 0);
  const int endRow = bottom - 1;
  const Foci foci(column, row, ToDouble(a), ToDouble(b), angle);
  runs.Reserve(Count(std::max(firstRow, box.y), endRow));
  AppendEllipseRows(foci, firstRow, endRow, canvas.width, runs);
  return true;
}

// The list closes on the arc's start, unrounded, not on its end.
bool ArcRuns(const VemVarArray& params, RunTriple& runs, Canvas& canvas) {
  const int column = TruncateToInt(params[1].D());
  const int row = TruncateToInt(params[0].D());
  const double radius = params[2].D();
  const double start = params[3].D();
  const double right = radius + column;
  const double bottom = radius + row;
  if (0 > right || 0 > bottom) return false;

  const auto sample = [&](double degrees) {
    const double t = degrees * 3.14 / 180.0;
    const int x = TruncateToInt(std::cos(t) * radius + column);
    const int y = TruncateToInt(std::sin(-t) * radius + row);
    if (x >= 0 && y >= 0) runs.Append(y, x, x);
  };
  const double end = params[4].D() + start;
  for (long i = TruncateToInt(start); end > static_cast<double>(i) && i <= INT_MAX; ++i) {
    sample(static_cast<double>(i));
  }
  sample(start);
  canvas = {TruncateToInt(right + 1.0), TruncateToInt(bottom + 1.0)};
  return true;
}

/// The vertices of a polygon or an irregular shape as whole numbers, the first one again at the
/// end.
std::vector<cv::Point> ClosedVertices(const VemVarArray& params) {
  std::vector<cv::Point> points;
  points.reserve(static_cast<std::size_t>(params.Length()) / 2 + 1);
  for (int k = 0; k < params.Length(); k += 2) {
    points.emplace_back(params[k + 1].I(), params[k].I());
  }
  points.emplace_back(params[1].I(), params[0].I());
  return points;
}

/// The canvas of listed vertices: one more than holds them. False when they end above or left of
/// the origin.
bool CanvasOf(const cv::Rect& bounds, Canvas& canvas) {
  const int right = WrapAdd(bounds.x, bounds.width);
  const int bottom = WrapAdd(bounds.y, bounds.height);
  canvas = CanvasTo(right, bottom);
  return right >= 0 && bottom >= 0;
}

bool IrregularRuns(const VemVarArray& params, RunTriple& runs, Canvas& canvas) {
  const std::vector<cv::Point> points = ClosedVertices(params);
  if (!CanvasOf(cv::boundingRect(points), canvas)) return false;
  runs.Reserve(points.size());
  for (const cv::Point& p : points) {
    if (p.x >= 0 && p.y >= 0) runs.Append(p.y, p.x, p.x);
  }
  return true;
}

std::vector<Run> ListRuns(cv::Mat& raster) {
  VemRLC coder;
  coder.SetParam(1, 6, true, -1, -1, 1, false, false);
  coder.Calc(raster, true);
  return std::move(coder.FillRuns);
}

bool PolygonRuns(const VemVarArray& params, RunTriple& runs, Canvas& canvas) {
  std::vector<cv::Point> points = ClosedVertices(params);
  const cv::Rect bounds = cv::boundingRect(points);
  if (!CanvasOf(bounds, canvas)) return false;
  for (cv::Point& p : points) {
    p = cv::Point(WrapSubtract(p.x, bounds.x), WrapSubtract(p.y, bounds.y));
  }
  cv::Mat raster(WrapAdd(bounds.height, 1), WrapAdd(bounds.width, 1), CV_8UC1, cv::Scalar(0));
  FillContours(raster, {points});

  const std::vector<Run> drawn = ListRuns(raster);
  runs.Reserve(drawn.size());
  for (const Run& run : drawn) {
    const int row = WrapAdd(bounds.y, run.Row);
    if (row < 0) continue;
    runs.Append(row, std::max(WrapAdd(bounds.x, run.FirstColumn), 0),
                WrapAdd(bounds.x, run.LastColumn));
  }
  return true;
}

/// A ring about the centre of a raster that just holds it.
cv::Mat DrawRing(int inner, int outer, int startAngle, int sweep) {
  const int from = WrapSubtract(0, startAngle);  // OpenCV's angles turn the other way.
  const int to = WrapSubtract(from, sweep);
  const cv::Point center(outer, outer);
  std::vector<cv::Point> innerPoints;
  std::vector<cv::Point> outerPoints;
  cv::ellipse2Poly(center, cv::Size(inner, inner), 0, from, to, 1, innerPoints);
  cv::ellipse2Poly(center, cv::Size(outer, outer), 0, from, to, 1, outerPoints);

  const int size = WrapAdd(WrapMultiply(2, outer), 1);
  cv::Mat raster(size, size, CV_8UC1, cv::Scalar(0));
  if (sweep > 358) {
    FillRing(raster, outerPoints, innerPoints);
    return raster;
  }
  std::vector<cv::Point> sector(outerPoints);
  sector.insert(sector.end(), innerPoints.rbegin(), innerPoints.rend());
  if (!outerPoints.empty()) sector.push_back(outerPoints.front());
  FillContours(raster, {sector});
  return raster;
}

bool TorusRuns(const VemVarArray& params, RunTriple& runs, Canvas& canvas) {
  const int startAngle = TruncateToInt(params[4].D());
  const int sweep = TruncateToInt(params[5].D());
  const int row = params[0].I();
  const int column = params[1].I();
  const int inner = params[2].I();
  const int outer = params[3].I();
  const int right = WrapAdd(column, outer);
  const int bottom = WrapAdd(row, outer);
  if (right < 0 || bottom < 0) return false;

  cv::Mat raster = DrawRing(inner, outer, startAngle, sweep);
  const std::vector<Run> drawn = ListRuns(raster);
  runs.Reserve(drawn.size());
  for (const Run& run : drawn) {
    const int y = WrapSubtract(WrapAdd(row, run.Row), outer);
    const int last = WrapSubtract(WrapAdd(column, run.LastColumn), outer);
    const int first = WrapSubtract(WrapAdd(column, run.FirstColumn), outer);
    if (y >= 0 && last >= 0) runs.Append(y, std::max(first, 0), last);
  }
  canvas = CanvasTo(right, bottom);
  return true;
}

bool MaskRuns(const IVemROIPara& mask, VemVarArray* rows, VemVarArray* firstColumns,
              VemVarArray* lastColumns, Canvas& canvas) {
  if (mask.Width < 0 || mask.Height < 0) return false;
  *rows = mask.Rows;
  *firstColumns = mask.FirstColumns;
  *lastColumns = mask.LastColumns;
  canvas = {mask.Width, mask.Height};
  return true;
}

}  // namespace

bool IVemROIPara::GetMask(VemVarArray* rows, VemVarArray* firstColumns, VemVarArray* lastColumns,
                          int* width, int* height) const {
  RunTriple runs(*rows, *firstColumns, *lastColumns);
  runs.Clear();
  Canvas canvas = {0, 0};
  bool reachesIn = false;
  switch (Type) {
    case VemROIRect1:
      reachesIn = Rect1Runs(Params, runs, canvas);
      break;
    case VemROICircle:
      reachesIn = CircleRuns(Params, runs, canvas);
      break;
    case VemROITorus:
      reachesIn = TorusRuns(Params, runs, canvas);
      break;
    case VemROIPolygon:
      reachesIn = PolygonRuns(Params, runs, canvas);
      break;
    case VemROIIrregular:
      reachesIn = IrregularRuns(Params, runs, canvas);
      break;
    case VemROIRect2:
      reachesIn = Rect2Runs(Params, runs, canvas);
      break;
    case VemROILine:
      reachesIn = LineRuns(Params, runs, canvas);
      break;
    case VemROIEllipse:
      reachesIn = EllipseRuns(Params, runs, canvas);
      break;
    case VemROIArc:
      reachesIn = ArcRuns(Params, runs, canvas);
      break;
    case VemROIMask:
      reachesIn = MaskRuns(*this, rows, firstColumns, lastColumns, canvas);
      break;
    case VemROINone:
      return false;
    case VemROIPoint:
    default:
      return true;
  }
  *width = reachesIn ? canvas.width : 0;
  *height = reachesIn ? canvas.height : 0;
  return reachesIn;
}
