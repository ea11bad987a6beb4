#include "IVemROIPara.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

#include "support/Support.h"

// Rotated shapes against plain geometry in extended precision: what lies in the shape by a margin
// is in the mask, what lies outside by a margin is not. The margin covers the roundings to float.

namespace {

using Doubles = std::vector<double>;
using Real = long double;
using Runs = std::vector<Run>;

Runs RunsOfShape(VemROIType type, const Doubles& params) {
  IVemROIPara para;
  para.Type = type;
  for (double param : params) para.Params.Append(VemVar(param));
  VemVarArray rows, firstColumns, lastColumns;
  int width = 0;
  int height = 0;
  para.GetMask(&rows, &firstColumns, &lastColumns, &width, &height);
  return RunsOf(rows, firstColumns, lastColumns);
}

// A row's pixels: those that must be there, and those that may.
struct RowLimits {
  Real surelyFrom;
  Real surelyTo;
  Real perhapsFrom;
  Real perhapsTo;
};

// Whether the run of a row, which may be none, keeps to the limits. Its first column is clipped at
// 0, its last one at `largest`.
bool Keeps(const RowLimits& limits, const Runs& runs, int row, int largest) {
  const auto run =
      std::find_if(runs.begin(), runs.end(), [&](const Run& r) { return r.Row == row; });
  const bool must = limits.surelyFrom <= limits.surelyTo;
  if (run == runs.end()) return !must;
  const Real first = run->FirstColumn;
  const Real last = run->LastColumn;
  if (must && first > std::max<Real>(limits.surelyFrom, 0)) return false;
  if (must && last < std::min<Real>(limits.surelyTo, largest)) return false;
  return first >= std::max<Real>(limits.perhapsFrom, 0) &&
         last <= std::min<Real>(limits.perhapsTo, largest);
}

class Draws {
 public:
  explicit Draws(unsigned seed) : engine_(seed) {}
  Real Between(double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(engine_);
  }
  double Number(double low, double high) {
    const double value = static_cast<double>(Between(low, high));
    return engine_() % 2 == 0 ? std::trunc(value) : value;
  }
  bool OneIn(unsigned n) { return engine_() % n == 0; }

 private:
  std::mt19937 engine_;
};

// --- Ellipses ---------------------------------------------------------------------------------

constexpr Real kPi = 3.141592653589793238462643383279502884L;

class EllipseByFoci {
 public:
  explicit EllipseByFoci(const Doubles& p)
      : x_(std::trunc(p[1])),
        y_(std::trunc(p[0])),
        longer_(static_cast<float>(std::max(p[2], p[3]))) {
    const Real shorter = static_cast<float>(std::min(p[2], p[3]));
    Real turn = static_cast<float>(p[4]) * kPi / 180;
    // An angle of more than 180 in radians loses 180.
    if (turn > 180) turn -= 180;
    // The long axis lies along the angle or across it; columns grow, rows shrink along it.
    if (p[3] > p[2]) turn += kPi / 2;
    const Real away = std::sqrt(longer_ * longer_ - shorter * shorter);
    dx_ = std::cos(turn) * away;
    dy_ = -std::sin(turn) * away;
  }

  // How far the distances to the foci add up beyond the long axis.
  Real Excess(Real x, Real y) const {
    return std::hypot(x - x_ - dx_, y - y_ - dy_) + std::hypot(x - x_ + dx_, y - y_ + dy_) -
           2 * longer_;
  }

  // The crossings with a row of the ellipse whose distances add up to `slack` more.
  bool Crossings(Real y, Real slack, Real& first, Real& last) const {
    const Real low = x_ - longer_ - slack - 1;
    const Real high = x_ + longer_ + slack + 1;
    const auto isInside = [&](Real x) { return Excess(x, y) <= slack; };
    // The excess is convex along a row; its least value is found by thirds.
    Real a = low;
    Real b = high;
    for (int i = 0; i < 90; ++i) {
      const Real u = a + (b - a) / 3;
      const Real v = b - (b - a) / 3;
      (Excess(u, y) < Excess(v, y) ? b : a) = Excess(u, y) < Excess(v, y) ? v : u;
    }
    const Real middle = (a + b) / 2;
    if (!isInside(middle)) return false;
    first = Border(low, middle, isInside);
    last = Border(high, middle, isInside);
    return true;
  }

  // The roundings to float grow with the square of what is squared.
  Real Margin(Real row) const {
    const Real reach = std::fabs(x_) + std::fabs(dx_) + std::fabs(y_ - row) + std::fabs(dy_) + 1;
    return reach * reach / longer_ * 0x1p-24L + 1e-9L;
  }

 private:
  template <typename Inside>
  static Real Border(Real outside, Real inside, Inside isInside) {
    for (int i = 0; i < 90; ++i) {
      const Real middle = (outside + inside) / 2;
      (isInside(middle) ? inside : outside) = middle;
    }
    return inside;
  }

  Real x_;
  Real y_;
  Real longer_;
  Real dx_;
  Real dy_;
};

RowLimits EllipseLimits(const EllipseByFoci& ellipse, int row) {
  RowLimits limits = {1, 0, 1, 0};
  const Real margin = ellipse.Margin(row);
  Real first;
  Real last;
  if (ellipse.Crossings(row, margin, first, last)) {
    limits.perhapsFrom = std::trunc(first);
    limits.perhapsTo = std::trunc(last);
  }
  if (ellipse.Crossings(row, -margin, first, last)) {
    limits.surelyFrom = std::trunc(first);
    limits.surelyTo = std::trunc(last);
  }
  return limits;
}

TEST(IVemROIParaRunMaskGeometry, EllipseHoldsWhatIsNearItsFoci) {
  Draws draws(5);
  int rows = 0;
  int open = 0;
  for (int i = 0; i < 700; ++i) {
    const double y = draws.Number(-30, 60);
    const double x = draws.Number(-30, 60);
    const double a = draws.OneIn(4) ? draws.Number(1, 400) : draws.Number(1, 40);
    const double b = draws.OneIn(5) ? a : draws.Number(1, 40);
    const double angle = draws.OneIn(3) ? draws.Number(10300, 40000) : draws.Number(-800, 800);
    const Doubles params = {y, x, a, b, angle};
    const Runs runs = RunsOfShape(VemROIEllipse, params);
    const EllipseByFoci ellipse(params);
    // The box does not know of the 180 that large angles lose, so it may cut such an ellipse.
    const cv::Rect box =
        cv::RotatedRect(
            cv::Point2f(static_cast<float>(std::trunc(x)), static_cast<float>(std::trunc(y))),
            cv::Size2f(static_cast<float>(a) * 2, static_cast<float>(b) * 2),
            static_cast<float>(-angle))
            .boundingRect();
    if (box.x + box.width < 0) {
      ASSERT_TRUE(runs.empty()) << ::testing::PrintToString(params);
      continue;
    }
    const int firstRow = std::max(box.y - box.height + 1, 0);
    ASSERT_TRUE(runs.empty() || runs.front().Row >= firstRow);
    for (int row = firstRow; row < std::min(box.y + box.height - 1, 60); ++row) {
      const RowLimits limits = EllipseLimits(ellipse, row);
      ASSERT_TRUE(Keeps(limits, runs, row, box.x + box.width + 1))
          << ::testing::PrintToString(params) << " row " << row << ::testing::PrintToString(runs);
      if (limits.perhapsFrom > limits.perhapsTo) continue;
      ++rows;
      if (limits.perhapsFrom < limits.surelyFrom || limits.perhapsTo > limits.surelyTo) ++open;
    }
  }
  // The margin leaves hardly anything open.
  EXPECT_GT(rows, 7000);
  EXPECT_LT(open, rows / 20);
}

// --- Rotated rectangles -----------------------------------------------------------------------

struct Vertex {
  Real x;
  Real y;
};

// The corners in their order around the rectangle. None when one is so near to a whole number that
// the roundings to float tell what is left of it.
std::vector<Vertex> Rect2Corners(const Doubles& p) {
  const Real col = std::trunc(static_cast<float>(p[1]));
  const Real row = std::trunc(static_cast<float>(p[0]));
  const Real turn = static_cast<float>(p[4]) / 180.0L * 3.1415926L;
  const Vertex along = {std::cos(turn) * static_cast<float>(p[2]) / 2,
                        -std::sin(turn) * static_cast<float>(p[2]) / 2};
  const Vertex across = {std::sin(turn) * static_cast<float>(p[3]) / 2,
                         std::cos(turn) * static_cast<float>(p[3]) / 2};
  std::vector<Vertex> corners;
  for (const auto& [a, b] : {std::pair<int, int>{1, 1}, {1, -1}, {-1, -1}, {-1, 1}}) {
    const Vertex v = {col + a * along.x + b * across.x, row + a * along.y + b * across.y};
    for (Real coordinate : {v.x, v.y}) {
      const Real away = std::fabs(coordinate - std::nearbyint(coordinate));
      if (away <
          (std::fabs(coordinate) + std::fabs(along.x) + std::fabs(along.y) + 100) * 0x1p-23L) {
        return {};
      }
    }
    corners.push_back({std::trunc(v.x), std::trunc(v.y)});
  }
  return corners;
}

// Whether all four edges slope, and each corner alone reaches farthest to its side.
bool IsTilted(const std::vector<Vertex>& corners) {
  int rising = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    const Vertex& a = corners[i];
    const Vertex& b = corners[(i + 1) % 4];
    if (a.x == b.x || a.y == b.y) return false;
    rising += (a.x < b.x) == (a.y < b.y) ? 1 : 0;
  }
  return rising == 2;
}

// The crossings of a row with the outline; the margin is that of slope and intercept in float.
RowLimits Rect2Limits(const std::vector<Vertex>& corners, Real row) {
  Real from = kInfinity;
  Real to = -kInfinity;
  Real margin = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    const Vertex& a = corners[i];
    const Vertex& b = corners[(i + 1) % 4];
    if (row < std::min(a.y, b.y) || row > std::max(a.y, b.y)) continue;
    const Real columnsPerRow = (b.x - a.x) / (b.y - a.y);
    const Real x = a.x + (row - a.y) * columnsPerRow;
    from = std::min(from, x);
    to = std::max(to, x);
    const Real reach = std::fabs(a.x) + std::fabs(b.x) +
                       (std::fabs(a.y) + std::fabs(b.y) + row) * std::fabs(columnsPerRow);
    margin = std::max(margin, reach * 0x1p-22L);
  }
  // The bias of 0.45 to both ends.
  return {std::trunc(from + 0.45L + margin), std::trunc(to + 0.45L - margin),
          std::trunc(from + 0.45L - margin), std::trunc(to + 0.45L + margin)};
}

TEST(IVemROIParaRunMaskGeometry, Rect2HoldsWhatIsBetweenItsEdges) {
  Draws draws(6);
  int shapes = 0;
  int rows = 0;
  int open = 0;
  for (int i = 0; i < 5000; ++i) {
    const double reach = draws.OneIn(5) ? 5000 : 60;
    const Doubles params = {draws.Number(-reach, 60), draws.Number(-reach / 2, 60),
                            draws.Number(1, 2 * reach), draws.Number(1, 2 * reach),
                            draws.OneIn(4) ? draws.Number(-40000, 40000) : draws.Number(-800, 800)};
    const Runs runs = RunsOfShape(VemROIRect2, params);
    const std::vector<Vertex> corners = Rect2Corners(params);
    if (corners.empty() || !IsTilted(corners)) continue;
    if (static_cast<int>(static_cast<float>(params[4])) % 90 == 0) continue;
    Real right = -kInfinity;
    Real top = kInfinity;
    Real bottom = -kInfinity;
    for (const Vertex& corner : corners) {
      right = std::max(right, corner.x);
      top = std::min(top, corner.y);
      bottom = std::max(bottom, corner.y);
    }
    if (right < -1) bottom = -1;
    const Real first = std::max<Real>(top, 0);
    ASSERT_EQ(static_cast<Real>(runs.size()), std::max<Real>(bottom - first + 1, 0))
        << ::testing::PrintToString(params);
    ++shapes;
    for (const ::Run& run : runs) {
      const RowLimits limits = Rect2Limits(corners, run.Row);
      ASSERT_EQ(&run - runs.data(), static_cast<std::ptrdiff_t>(run.Row - first));
      ASSERT_GE(run.FirstColumn, std::max<Real>(limits.perhapsFrom, 0));
      ASSERT_LE(run.FirstColumn, std::max<Real>(limits.surelyFrom, 0));
      ASSERT_GE(run.LastColumn, limits.surelyTo) << ::testing::PrintToString(params) << run.Row;
      ASSERT_LE(run.LastColumn, limits.perhapsTo);
      ++rows;
      if (limits.perhapsFrom < limits.surelyFrom || limits.perhapsTo > limits.surelyTo) ++open;
    }
  }
  // The margin leaves hardly anything open.
  EXPECT_GT(shapes, 2000);
  EXPECT_GT(rows, 50000);
  EXPECT_LT(open, rows / 50);
}

}  // namespace
