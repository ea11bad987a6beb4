#include "IVemROIPara.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

#include <opencv2/core.hpp>

#include "masks/Canvas.h"
#include "masks/ContourFill.h"
#include "masks/EllipseSamples.h"
#include "masks/RunSink.h"
#include "masks/RunTriple.h"
#include "roi/ShapeGeometry.h"
#include "values/Processor.h"

// One function for each shape: it reads the shape's numbers in their stored order, y before x,
// appends the runs and tells the canvas. False means that the shape lies wholly left of or above
// the origin. Rounding and constants, the several values of pi among them, belong to each shape
// alone.

namespace {

std::size_t Count(int first, int end) {
  return end > first ? static_cast<std::size_t>(static_cast<long>(end) - first) : 0;
}

// How many rows of a shape whose first row is `top` lie above row 0.
int RowsAbove(int top) { return top < 0 ? WrapSubtract(0, top) : 0; }

bool Rect1Runs(const VemVarArray& params, RunTriple& runs, Canvas& canvas) {
  const PointPair p(params);
  if (p.IsOutside()) return false;
  const int firstRow = std::max(std::min(p.y1, p.y2), 0);
  const int lastRow = std::max(p.y1, p.y2);
  const int firstColumn = std::max(std::min(p.x1, p.x2), 0);
  const int lastColumn = std::max(p.x1, p.x2);
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

void UprightRect2Runs(const RotatedCorners& r, RunTriple& runs) {
  const int firstColumn = std::max(std::min(r.top.x, r.left.x), 0);
  const int lastColumn = std::max(r.top.x, r.left.x);
  for (int row = std::max(r.top.y, 0); row < r.reach.endRow; ++row) {
    runs.Append(row, firstColumn, lastColumn);
  }
}

// The bias of 0.45 goes to both ends alike: neither a floor nor a rounding to nearest.
void TiltedRect2Runs(const RotatedCorners& r, RunTriple& runs) {
  const std::array<EdgeLine, 4> lines = {EdgeLine(r.top, r.right), EdgeLine(r.left, r.bottom),
                                         EdgeLine(r.left, r.top), EdgeLine(r.right, r.bottom)};
  for (int row = std::max(r.top.y, 0); row < r.reach.endRow; ++row) {
    const std::array<float, 4> x = Crossings(lines, ToFloat(row));
    runs.Append(row, std::max(TruncateToInt(ToDouble(x[1]) + 0.45), 0),
                TruncateToInt(ToDouble(x[2]) + 0.45));
  }
}

bool Rect2Runs(const VemVarArray& params, RunTriple& runs, Canvas& canvas) {
  const RotatedCorners r(params);
  if (r.reach.IsOutside()) return false;
  runs.Reserve(Count(std::max(r.top.y, 0), r.reach.endRow));
  if (TruncateToInt(r.angle) % 90 == 0) {
    UprightRect2Runs(r, runs);
  } else {
    TiltedRect2Runs(r, runs);
  }
  canvas = r.reach.ToCanvas();
  return true;
}

// The first number from `first` on for which `holds`, which then holds up to the end; or the end.
template <typename Holds>
long FirstThat(long first, long end, Holds holds) {
  while (first < end) {
    const long middle = first + (end - first) / 2;
    if (holds(middle)) {
      end = middle;
    } else {
      first = middle + 1;
    }
  }
  return first;
}

// Appends the rows whose columns are neither negative nor too large for an integer: columns only
// grow, or only shrink, from row to row.
void AppendLineRows(float slope, float intercept, long firstRow, long endRow, RunTriple& runs) {
  const auto column = [=](long row) { return (static_cast<float>(row) - intercept) / slope; };
  const auto notNegative = [=](long row) { return column(row) > -1.0f; };
  const auto tooLarge = [=](long row) { return column(row) >= 2147483648.0f; };
  if (slope > 0) {
    firstRow = FirstThat(firstRow, endRow, notNegative);
    endRow = FirstThat(firstRow, endRow, tooLarge);
  } else {
    firstRow = FirstThat(firstRow, endRow, [=](long row) { return !tooLarge(row); });
    endRow = FirstThat(firstRow, endRow, [=](long row) { return !notNegative(row); });
  }
  runs.Reserve(static_cast<std::size_t>(endRow - firstRow));
  for (long row = firstRow; row < endRow; ++row) {
    const int place = TruncateToInt(column(row));
    runs.Append(static_cast<int>(row), place, place);
  }
}

// The columns follow the whole-number slope. A line wider than high has slope 0 and no runs, since
// its columns are infinite; for an upright one the division faults.
bool LineRuns(const VemVarArray& params, RunTriple& runs, Canvas& canvas) {
  if (params.Length() == 0) return false;  // Left so by a generator from points.
  const PointPair p(params);
  if (p.IsOutside()) return false;
  const float slope = ToFloat(Divide(WrapSubtract(p.y2, p.y1), WrapSubtract(p.x2, p.x1)).quotient);
  const float intercept = ToFloat(p.y1) - ToFloat(p.x1) * slope;
  const int firstRow = std::max(std::min(p.y1, p.y2), 0);
  const int lastRow = std::max(p.y1, p.y2);
  canvas = CanvasTo(std::max(p.x1, p.x2), lastRow);
  if (slope == 0) return true;
  AppendLineRows(slope, intercept, firstRow, long{lastRow} + 1, runs);
  return true;
}

/// The two foci of an ellipse, rounded to float, and its longer semi-axis.
struct Foci {
  explicit Foci(const EllipseBox& ellipse) {
    const int column = ellipse.column;
    const int row = ellipse.row;
    const double a = ToDouble(ellipse.a);
    const double b = ToDouble(ellipse.b);
    double t = ToDouble(ellipse.angle) / 180.0 * 3.141592653589793;
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
  const EllipseBox ellipse(params);
  if (ellipse.reach.IsOutside()) return false;
  canvas = ellipse.reach.ToCanvas();

  // The rows start one height above the box and end one row early; those that miss the ellipse have
  // no crossing.
  const cv::Rect& box = ellipse.bounds;
  const int firstRow = std::max(WrapAdd(WrapSubtract(box.y, box.height), 1), 0);
  const int endRow = ellipse.reach.endRow - 1;
  runs.Reserve(Count(std::max(firstRow, box.y), endRow));
  AppendEllipseRows(Foci(ellipse), firstRow, endRow, canvas.width, runs);
  return true;
}

// One run for each pixel that is not left of or above the origin. There must be room.
void AppendPixels(const std::vector<cv::Point>& points, RunTriple& runs) {
  for (const cv::Point& p : points) {
    if (p.x >= 0 && p.y >= 0) runs.Append(p.y, p.x, p.x);
  }
}

bool ArcRuns(const VemVarArray& params, RunTriple& runs, Canvas& canvas) {
  const ArcSamples arc(params);
  if (arc.outside) return false;
  runs.Reserve(arc.Count());
  AppendPixels(arc.List(), runs);
  canvas = arc.canvas;
  return true;
}

bool IrregularRuns(const VemVarArray& params, RunTriple& runs, Canvas& canvas) {
  const ClosedVertices vertices(params);
  if (vertices.reach.IsOutside()) return false;
  runs.Reserve(vertices.points.size());
  AppendPixels(vertices.points, runs);
  canvas = vertices.reach.ToCanvas();
  return true;
}

/// Moves the runs of a shape from its own raster to their place and clips them at column 0.
class Placer final : public RunSink {
 public:
  Placer(const cv::Point& offset, bool keepsHidden, RunTriple& runs)
      : offset_(offset), keepsHidden_(keepsHidden), runs_(runs) {}

  void Add(Run* first, Run* end) override {
    Run* placed = first;
    for (const Run* run = first; run != end; ++run) {
      const int last = WrapAdd(offset_.x, run->LastColumn);
      if (last < 0 && !keepsHidden_) continue;
      *placed++ = {WrapAdd(offset_.y, run->Row), std::max(WrapAdd(offset_.x, run->FirstColumn), 0),
                   last};
    }
    runs_.Append(first, placed);
  }

 private:
  const cv::Point offset_;
  const bool keepsHidden_;  ///< Whether runs wholly left of column 0 stay, with their ends crossed.
  RunTriple& runs_;
};

// A polygon is filled in the box around it, one row and one column larger.
bool PolygonRuns(const VemVarArray& params, RunTriple& runs, Canvas& canvas) {
  ClosedVertices vertices(params);
  if (vertices.reach.IsOutside()) return false;
  canvas = vertices.reach.ToCanvas();
  const cv::Rect& bounds = vertices.bounds;
  for (cv::Point& p : vertices.points) {
    p = cv::Point(WrapSubtract(p.x, bounds.x), WrapSubtract(p.y, bounds.y));
  }
  FillArea area(WrapAdd(bounds.width, 1), WrapAdd(bounds.height, 1));
  RequireCanvas(area.width, area.height);
  area.firstRow = RowsAbove(bounds.y);
  ContourFill fill(area);
  fill.Add(vertices.points);
  Placer placer(bounds.tl(), true, runs);
  fill.Fill(placer);
  return true;
}

// A ring is filled about the centre of a square that just holds it.
void FillRing(int inner, int startAngle, int sweep, const FillArea& area, RunSink& sink) {
  const int outer = area.width / 2;
  const int from = WrapSubtract(0, startAngle);  // Angles of samples turn the other way.
  const int to = WrapSubtract(from, sweep);
  const std::vector<cv::Point> hole = SampleCircle(outer, inner, from, to);
  std::vector<cv::Point> rim = SampleCircle(outer, outer, from, to);
  ContourFill fill(area);
  fill.Reserve(2, rim.size() + hole.size() + 1);
  if (sweep > 358) {
    fill.Add(rim);
    fill.Add(hole);
  } else if (!rim.empty()) {
    const cv::Point start = rim.front();
    rim.reserve(rim.size() + hole.size() + 1);
    rim.insert(rim.end(), hole.rbegin(), hole.rend());
    rim.push_back(start);
    fill.Add(rim);
  }
  fill.Fill(sink);
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
  if (right < 0 || bottom < 0 || EndsBefore0(column, row, outer)) return false;

  RequireRadius(outer);
  const int size = WrapAdd(WrapMultiply(2, outer), 1);
  RequireCanvas(size, size);
  FillArea area(size, size);
  const cv::Point corner(WrapSubtract(column, outer), WrapSubtract(row, outer));
  area.firstRow = RowsAbove(corner.y);
  Placer placer(corner, false, runs);
  FillRing(inner, startAngle, sweep, area, placer);
  canvas = CanvasTo(right, bottom);
  return true;
}

/// A shape that runs are made of; null for those that have none.
using ListShape = bool (*)(const VemVarArray& params, RunTriple& runs, Canvas& canvas);

constexpr ListShape kListShapes[] = {
    Rect1Runs,      // VemROIRect1
    CircleRuns,     // VemROICircle
    TorusRuns,      // VemROITorus
    nullptr,        // VemROINone
    PolygonRuns,    // VemROIPolygon
    IrregularRuns,  // VemROIIrregular
    Rect2Runs,      // VemROIRect2
    LineRuns,       // VemROILine
    EllipseRuns,    // VemROIEllipse
    ArcRuns,        // VemROIArc
};

bool CopyMask(const IVemROIPara& mask, VemVarArray* rows, VemVarArray* firstColumns,
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
  if (Type == VemROINone) return false;
  const ListShape shape = EntryFor(kListShapes, Type);
  if (Type != VemROIMask && shape == nullptr) return true;
  Canvas canvas = {0, 0};
  bool reachesIn = false;
  try {
    reachesIn = Type == VemROIMask ? CopyMask(*this, rows, firstColumns, lastColumns, canvas)
                                   : shape(Params, runs, canvas);
  } catch (...) {
    runs.Clear();
    throw;
  }
  *width = reachesIn ? canvas.width : 0;
  *height = reachesIn ? canvas.height : 0;
  return reachesIn;
}
