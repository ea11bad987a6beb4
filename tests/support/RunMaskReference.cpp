#include "support/RunMaskReference.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

#include <opencv2/imgproc.hpp>

#include "IVemROIPara.h"
#include "support/FillReference.h"
#include "support/Support.h"

namespace {

using Contour = std::vector<cv::Point>;

// The stored numbers as the readers of VemVar deliver them.
class Numbers {
 public:
  explicit Numbers(const std::vector<double>& values) : values_(values) {}

  int I(std::size_t k) const { return Truncated(values_.at(k)); }
  double D(std::size_t k) const { return values_.at(k); }
  float F(std::size_t k) const { return static_cast<float>(values_.at(k)); }
  std::size_t Length() const { return values_.size(); }

 private:
  const std::vector<double>& values_;
};

struct Bounds {
  int x;
  int y;
  int width;
  int height;
  int right;
  int bottom;
};

Bounds BoundsOf(const Contour& points) {
  int minX = points[0].x;
  int maxX = points[0].x;
  int minY = points[0].y;
  int maxY = points[0].y;
  for (const cv::Point& point : points) {
    minX = std::min(minX, point.x);
    maxX = std::max(maxX, point.x);
    minY = std::min(minY, point.y);
    maxY = std::max(maxY, point.y);
  }
  return {minX, minY, maxX - minX + 1, maxY - minY + 1, maxX + 1, maxY + 1};
}

RunMask Failed() { return {}; }

// The whole numbers about `seed` for which `inside` holds, which must be without a gap and `seed`
// among them. Found by steps that double and then halve, so they may lie far away.
struct Span {
  std::int64_t first;
  std::int64_t last;
};

template <typename Inside>
std::int64_t FarthestInside(std::int64_t seed, int direction, Inside inside) {
  std::int64_t step = 1;
  while (inside(seed + direction * step)) step *= 2;
  for (; step > 0; step /= 2) {
    if (inside(seed + direction * step)) seed += direction * step;
  }
  return seed;
}

template <typename Inside>
Span SpanAbout(std::int64_t seed, Inside inside) {
  return {FarthestInside(seed, -1, inside), FarthestInside(seed, 1, inside)};
}

// Beyond 32 bits a canvas wraps, and the row after the last one does not come.
int Wrapped(std::int64_t value) { return static_cast<int>(static_cast<std::uint32_t>(value)); }

// Whether a value lies from one to another, in either order, both included.
bool LiesBetween(std::int64_t value, std::int64_t end1, std::int64_t end2) {
  return (value >= end1 || value >= end2) && (value <= end1 || value <= end2);
}

// The pixels whose column and row lie between those of the corners.
RunMask Rect1(const Numbers& p) {
  const Span columns =
      SpanAbout(p.I(1), [&](std::int64_t x) { return LiesBetween(x, p.I(1), p.I(3)); });
  const Span rows =
      SpanAbout(p.I(0), [&](std::int64_t y) { return LiesBetween(y, p.I(0), p.I(2)); });
  if (columns.last < 0 || rows.last < 0) return Failed();
  RunMask mask{true, {}, Wrapped(columns.last + 1), Wrapped(rows.last + 1)};
  for (std::int64_t row = 0; row <= rows.last; ++row) {
    if (!LiesBetween(row, p.I(0), p.I(2))) row = rows.first;
    mask.runs.push_back({static_cast<int>(row),
                         static_cast<int>(std::max<std::int64_t>(columns.first, 0)),
                         static_cast<int>(columns.last)});
  }
  return mask;
}

// What 32 bits keep of a square.
std::int64_t SquareIn32Bits(std::int64_t value) { return Wrapped(value * value); }

// All in whole numbers: the half width of a row is the root of a whole number n, and a column x is
// up to it if the square of its distance is up to n. Right for radii below 2 to the power of 20,
// where no root rounds to a whole number that it is not.
RunMask Circle(const Numbers& p) {
  const std::int64_t col = p.I(1);
  const std::int64_t row = p.I(0);
  const std::int64_t radius = p.I(2);
  if (row + radius < 0 || col + radius < 0) return Failed();
  const int width = Truncated(static_cast<double>(col + radius));
  RunMask mask{true, {}, width, Truncated(static_cast<double>(row + radius))};
  if (row + radius - 1 > std::numeric_limits<int>::max()) return mask;
  for (std::int64_t r = std::max<std::int64_t>(row - radius + 1, 0); r <= row + radius - 2; ++r) {
    const std::int64_t n = radius * radius - SquareIn32Bits(r - row);
    const auto reaches = [&](std::int64_t away) { return away <= 0 || away * away <= n; };
    // The first column loses its fraction and so lies up to one column before the edge.
    const std::int64_t first = FarthestInside(
        col, -1, [&](std::int64_t x) { return x == col || (col - x - 1) * (col - x - 1) < n; });
    std::int64_t last = FarthestInside(col, 1, [&](std::int64_t x) { return reaches(x - col); });
    // Left of column 0 the fraction is lost toward zero, not downward.
    if (last < 0 && (last - col) * (last - col) != n) ++last;
    mask.runs.push_back({static_cast<int>(r), static_cast<int>(std::max<std::int64_t>(first, 0)),
                         static_cast<int>(std::min<std::int64_t>(last, width))});
  }
  return mask;
}

struct Edge {
  Edge(cv::Point a, cv::Point b, cv::Point at)
      : k(static_cast<float>(static_cast<double>(a.y - b.y) / static_cast<double>(a.x - b.x))),
        m(static_cast<float>(at.y) - static_cast<float>(at.x) * k) {}

  float Crossing(int row) const { return (static_cast<float>(row) - m) / k; }

  float k;
  float m;
};

void SortByBubbles(float (&values)[4]) {
  for (int last = 3; last > 0; --last) {
    for (int i = 0; i < last; ++i) {
      if (values[i] > values[i + 1]) std::swap(values[i], values[i + 1]);
    }
  }
}

RunMask Rect2(const Numbers& p) {
  const int col = Truncated(p.F(1));
  const int row = Truncated(p.F(0));
  const double length1 = p.F(2);
  const double length2 = p.F(3);
  const float angle = p.F(4);
  const double a = static_cast<double>(angle) / 180.0 * 3.1415926;
  const double s = std::sin(a);
  const double c = std::cos(a);
  const double ax = static_cast<float>(col + length1 * c * 0.5);
  const double ay = static_cast<float>(row - length1 * s * 0.5);
  const double bx = static_cast<float>(col - length1 * c * 0.5);
  const double by = static_cast<float>(row + length1 * s * 0.5);
  const double dx = s * length2 * 0.5;
  const double dy = c * length2 * 0.5;
  const auto corner = [](double x, double y) {
    return cv::Point(Truncated(static_cast<float>(x)), Truncated(static_cast<float>(y)));
  };
  const Contour corners{corner(ax + dx, ay + dy), corner(ax - dx, ay - dy),
                        corner(bx - dx, by - dy), corner(bx + dx, by + dy)};
  const Bounds bounds = BoundsOf(corners);
  if (bounds.bottom < 0 || bounds.right < 0) return Failed();

  cv::Point top = corners[0];
  cv::Point left = corners[1];
  cv::Point bot = corners[2];
  cv::Point rgt = corners[3];
  for (const cv::Point& point : corners) {
    if (point.y < top.y) top = point;
    if (point.x < left.x) left = point;
    if (point.y > bot.y) bot = point;
    if (point.x > rgt.x) rgt = point;
  }

  RunMask mask{true, {}, bounds.right + 1, bounds.bottom + 1};
  const int firstRow = std::max(bounds.y, 0);
  if (Truncated(angle) % 90 == 0) {
    for (int r = firstRow; r < bounds.bottom; ++r) {
      mask.runs.push_back({r, std::max(std::min(top.x, left.x), 0), std::max(top.x, left.x)});
    }
    return mask;
  }
  const Edge line1(top, rgt, top);
  const Edge line2(left, bot, left);
  const Edge line3(left, top, left);
  const Edge line4(rgt, bot, rgt);
  for (int r = firstRow; r < bounds.bottom; ++r) {
    float crossings[4] = {line1.Crossing(r), line2.Crossing(r), line3.Crossing(r),
                          line4.Crossing(r)};
    SortByBubbles(crossings);
    const int first = Truncated(static_cast<double>(crossings[1]) + 0.45);
    const int last = Truncated(static_cast<double>(crossings[2]) + 0.45);
    mask.runs.push_back({r, std::max(first, 0), last});
  }
  return mask;
}

// A step of one column is worth a whole number of rows. Right where all that is reckoned stays
// below 2 to the power of 24, so that floats hold it.
RunMask Line(const Numbers& p) {
  const std::int64_t x1 = p.I(1);
  const std::int64_t y1 = p.I(0);
  const std::int64_t x2 = p.I(3);
  const std::int64_t y2 = p.I(2);
  if ((x1 < 0 && x2 < 0) || (y1 < 0 && y2 < 0)) return Failed();
  RunMask mask{true, {}, Wrapped(std::max(x1, x2) + 1), Wrapped(std::max(y1, y2) + 1)};
  const std::int64_t rowsPerColumn = (y2 - y1) / (x2 - x1);
  if (rowsPerColumn == 0) return mask;
  for (std::int64_t r = 0; r <= std::max(y1, y2); ++r) {
    if (!LiesBetween(r, y1, y2)) continue;
    // Column x1 + (r - y1) / rowsPerColumn, over one divisor.
    const std::int64_t column = (x1 * rowsPerColumn + r - y1) / rowsPerColumn;
    if (column < 0) continue;
    mask.runs.push_back({static_cast<int>(r), static_cast<int>(column), static_cast<int>(column)});
  }
  return mask;
}

RunMask Ellipse(const Numbers& p) {
  const int col = p.I(1);
  const int row = p.I(0);
  const float a = p.F(2);
  const float b = p.F(3);
  const float angle = p.F(4);
  const cv::RotatedRect rotated(cv::Point2f(static_cast<float>(col), static_cast<float>(row)),
                                cv::Size2f(a + a, b + b), -angle);
  const cv::Rect box = rotated.boundingRect();
  const int bottom = box.y + box.height;
  const int right = box.x + box.width;
  if (bottom < 0 || right < 0) return Failed();

  double t = static_cast<double>(angle) / 180.0 * 3.141592653589793;
  if (t > 180.0) t -= 180.0;
  const double s = std::sin(t);
  const double c = std::cos(t);
  const double wideA = a;
  const double wideB = b;
  double m;
  float f1x, f1y, f2x, f2y;
  if (a >= b) {
    m = wideA;
    const double e = std::sqrt(wideA * wideA - wideB * wideB);
    f1x = static_cast<float>(col - c * e);
    f1y = static_cast<float>(row + s * e);
    f2x = static_cast<float>(col + c * e);
    f2y = static_cast<float>(row - s * e);
  } else {
    m = wideB;
    const double e = std::sqrt(wideB * wideB - wideA * wideA);
    f1x = static_cast<float>(col - s * e);
    f1y = static_cast<float>(row - c * e);
    f2x = static_cast<float>(col + s * e);
    f2y = static_cast<float>(row + c * e);
  }
  const float squared1 = f1x * f1x;
  const float squared2 = f2x * f2x;
  const float apart = 2 * (f2x - f1x);
  const double P = squared1;
  const double Q = squared2;
  const double D = apart;
  const double K4 = 4.0 * m * m;
  const double K16 = 16.0 * m * m;
  const double E = D * D - K16;
  const double G = 32.0 * m * m * static_cast<double>(f2x);
  const double H = 4.0 * E;

  RunMask mask{true, {}, right + 1, bottom + 1};
  for (int r = std::max(box.y - box.height + 1, 0); r < bottom - 1; ++r) {
    const float down1 = static_cast<float>(r) - f1y;
    const float down2 = static_cast<float>(r) - f2y;
    const float downSquared1 = down1 * down1;
    const float downSquared2 = down2 * down2;
    const double u = downSquared1;
    const double v = downSquared2;
    const double S = u + P - Q - v - K4;
    const double B = (D + D) * S + G;
    const double disc = B * B - H * (S * S - K16 * (v + Q));
    if (!(disc > 0)) continue;
    const double w = std::sqrt(disc);
    const double plus = (w - B) / (E + E);
    const double minus = (-w - B) / (E + E);
    const int first = Truncated(minus < plus ? minus : plus);
    const int last = Truncated(minus < plus ? plus : minus);
    mask.runs.push_back({r, std::max(first, 0), std::min(last, right + 1)});
  }
  return mask;
}

// A coordinate without its fraction, from the exact value; next to a whole number, where the last
// bit tells, from the value in double steps.
int Settled(long double exact, double inSteps) {
  const long double away = std::fabs(exact - std::nearbyint(exact));
  if (away < 1e-9L * (1 + std::fabs(exact))) return Truncated(inSteps);
  return Truncated(static_cast<double>(std::trunc(exact)));
}

// As many samples as there are whole numbers of degrees from the first one on, below the end.
RunMask Arc(const Numbers& p) {
  const int col = Truncated(p.D(1));
  const int row = Truncated(p.D(0));
  const double radius = p.D(2);
  if (radius + col < 0 || radius + row < 0) return Failed();
  RunMask mask{true, {}, Truncated(radius + col + 1), Truncated(radius + row + 1)};
  const double first = Truncated(p.D(3));
  const double count = std::ceil(p.D(3) + p.D(4) - first);
  std::vector<double> degrees;
  for (double i = 0; i < count; ++i) degrees.push_back(first + i);
  degrees.push_back(p.D(3));
  for (double degree : degrees) {
    const long double turn = degree * 3.14L / 180;
    const double t = degree * 3.14 / 180.0;
    const int x = Settled(std::cos(turn) * radius + col, std::cos(t) * radius + col);
    const int y = Settled(row - std::sin(turn) * radius, std::sin(-t) * radius + row);
    if (x >= 0 && y >= 0) mask.runs.push_back({y, x, x});
  }
  return mask;
}

Contour ClosedVertices(const Numbers& p) {
  Contour points;
  for (std::size_t k = 0; k < p.Length(); k += 2) points.emplace_back(p.I(k + 1), p.I(k));
  points.emplace_back(p.I(1), p.I(0));
  return points;
}

RunMask Irregular(const Numbers& p) {
  const Contour points = ClosedVertices(p);
  const Bounds bounds = BoundsOf(points);
  if (bounds.right < 0 || bounds.bottom < 0) return Failed();
  RunMask mask{true, {}, bounds.right + 1, bounds.bottom + 1};
  for (const cv::Point& point : points) {
    if (point.x >= 0 && point.y >= 0) mask.runs.push_back({point.y, point.x, point.x});
  }
  return mask;
}

std::vector<Run> RunsOfRaster(const cv::Mat& raster) {
  std::vector<Run> runs;
  for (int row = 0; row < raster.rows; ++row) {
    for (int column = 0; column < raster.cols; ++column) {
      if (raster.at<unsigned char>(row, column) == 0) continue;
      if (column == 0 || raster.at<unsigned char>(row, column - 1) == 0) {
        runs.push_back({row, column, column});
      }
      runs.back().LastColumn = column;
    }
  }
  return runs;
}

RunMask Polygon(const Numbers& p) {
  Contour points = ClosedVertices(p);
  const Bounds bounds = BoundsOf(points);
  if (bounds.right < 0 || bounds.bottom < 0) return Failed();
  for (cv::Point& point : points) point -= cv::Point(bounds.x, bounds.y);
  const cv::Mat raster = FilledByRule({points}, bounds.width + 1, bounds.height + 1);
  RunMask mask{true, {}, bounds.right + 1, bounds.bottom + 1};
  for (const Run& run : RunsOfRaster(raster)) {
    const int row = bounds.y + run.Row;
    if (row < 0) continue;
    mask.runs.push_back({row, std::max(bounds.x + run.FirstColumn, 0), bounds.x + run.LastColumn});
  }
  return mask;
}

// OpenCV's samples; some versions raise where others give none.
Contour CircleSamples(int center, int radius, int from, int to) {
  Contour samples;
  try {
    cv::ellipse2Poly({center, center}, {radius, radius}, 0, from, to, 1, samples);
  } catch (const cv::Exception&) {
    samples.clear();
  }
  return samples;
}

RunMask Torus(const Numbers& p) {
  const double start = p.D(4);
  const double sweep = p.D(5);
  const int row = p.I(0);
  const int col = p.I(1);
  const int inner = p.I(2);
  const int outer = p.I(3);
  if (col + outer < 0 || row + outer < 0) return Failed();
  const int a = -Truncated(start);
  const int n = Truncated(sweep);
  const int b = a - n;
  const Contour innerPts = CircleSamples(outer, inner, a, b);
  const Contour outerPts = CircleSamples(outer, outer, a, b);
  cv::Mat raster;
  if (n > 358) {
    raster = FilledByRule({outerPts, innerPts}, 2 * outer + 1, 2 * outer + 1);
  } else {
    Contour sector = outerPts;
    sector.insert(sector.end(), innerPts.rbegin(), innerPts.rend());
    if (!outerPts.empty()) sector.push_back(outerPts.front());
    raster = FilledByRule({sector}, 2 * outer + 1, 2 * outer + 1);
  }
  RunMask mask{true, {}, col + outer + 1, row + outer + 1};
  for (const Run& run : RunsOfRaster(raster)) {
    const int y = row + run.Row - outer;
    const int last = col + run.LastColumn - outer;
    const int first = col + run.FirstColumn - outer;
    if (y < 0 || last < 0) continue;
    mask.runs.push_back({y, std::max(first, 0), last});
  }
  return mask;
}

}  // namespace

bool operator==(const RunMask& a, const RunMask& b) {
  return a.result == b.result && a.runs == b.runs && a.width == b.width && a.height == b.height;
}

void PrintTo(const RunMask& mask, std::ostream* out) {
  *out << (mask.result ? "true" : "false") << ", " << mask.width << " by " << mask.height << ", {";
  for (const Run& run : mask.runs) {
    PrintTo(run, out);
    *out << ' ';
  }
  *out << '}';
}

int Truncated(double value) {
  // Both limits are doubles; a NaN passes neither comparison.
  if (value > -2147483649.0 && value < 2147483648.0) return static_cast<int>(value);
  return std::numeric_limits<int>::min();
}

RunMask ReferenceRunMask(int type, const std::vector<double>& params, int width, int height) {
  const Numbers p(params);
  switch (type) {
    case VemROIRect1:
      return Rect1(p);
    case VemROICircle:
      return Circle(p);
    case VemROITorus:
      return Torus(p);
    case VemROIPolygon:
      return Polygon(p);
    case VemROIIrregular:
      return Irregular(p);
    case VemROIRect2:
      return Rect2(p);
    case VemROILine:
      return Line(p);
    case VemROIEllipse:
      return Ellipse(p);
    case VemROIArc:
      return Arc(p);
    default:
      return {type != VemROINone, {}, width, height};
  }
}
