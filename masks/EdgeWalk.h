#ifndef MASKS_EDGE_WALK_H_
#define MASKS_EDGE_WALK_H_

#include <algorithm>
#include <cstdint>

#include "masks/ContourFill.h"

/// An edge of a contour, or the part of it that lies on a canvas.
struct FillEdge {
  cv::Point from;
  cv::Point to;

  const cv::Point& Upper() const { return from.y <= to.y ? from : to; }
  const cv::Point& Lower() const { return from.y <= to.y ? to : from; }
};

inline bool IsOnCanvas(const cv::Point& p, const FillArea& area) {
  return static_cast<unsigned>(p.x) < static_cast<unsigned>(area.width) &&
         static_cast<unsigned>(p.y) < static_cast<unsigned>(area.height);
}

/// Clips an edge to the area's canvas, as ClipLine does.
bool ClipEdge(FillEdge& edge, const FillArea& area);

/// Crossings are told in units of 1/65536 pixel.
constexpr int kCrossingBits = 16;
constexpr std::int64_t kCrossingOne = std::int64_t{1} << kCrossingBits;

/// The first whole column that is not left of a crossing, and the last that is not right of it.
inline std::int64_t ColumnFrom(std::int64_t crossing) {
  return (crossing + kCrossingOne - 1) >> kCrossingBits;
}
inline std::int64_t ColumnTo(std::int64_t crossing) { return crossing >> kCrossingBits; }

/// Division truncates. Small numbers are divided as such, since that takes a fraction of the time.
inline std::int64_t Quotient(std::int64_t dividend, std::int64_t divisor) {
  const auto dividend32 = static_cast<std::int32_t>(dividend);
  const auto divisor32 = static_cast<std::int32_t>(divisor);
  if (dividend32 == dividend && divisor32 == divisor) return dividend32 / divisor32;
  return dividend / divisor;
}

/// Calls `visit(row, x)` for each of the area's rows that the edge crosses, downward.
template <typename Visit>
void WalkCrossings(const FillEdge& edge, const FillArea& area, Visit visit) {
  const cv::Point& upper = edge.Upper();
  const cv::Point& lower = edge.Lower();
  const int top = std::max(upper.y, area.firstRow);
  const int end = std::min(lower.y, area.endRow);
  if (top >= end) return;
  const std::int64_t across = static_cast<std::int64_t>(lower.x) - upper.x;
  const std::int64_t down = static_cast<std::int64_t>(lower.y) - upper.y;
  std::int64_t x = upper.x * kCrossingOne;
  if (down == 1) return visit(top, x);
  const std::int64_t step = Quotient(across * kCrossingOne, down);
  x += step * (static_cast<std::int64_t>(top) - upper.y);
  for (int row = top; row < end; ++row, x += step) visit(row, x);
}

/// Small numbers: the ends of a line on a canvas of everyday size, at most `kBriefRows` rows apart.
constexpr std::int64_t kBriefColumns = std::int64_t{1} << 29;
constexpr std::int64_t kBriefRows = std::int64_t{1} << 14;

/// A quotient rounded down that advances with its dividend, for lines of small numbers. It is held
/// in units of 2^-32, `kBias` above what its divisor divides. As the divisor is at most twice
/// `kBriefRows` and each step of at most `kBriefRows` strays by less than a unit, the bias keeps it
/// at or above the true quotient, and below the next that the divisor can give.
class BriefQuotient {
 public:
  static constexpr std::int64_t kOne = std::int64_t{1} << 32;
  static constexpr std::int64_t kBias = 4 * kBriefRows;

  BriefQuotient(std::int64_t value, std::int64_t step) : value_(value), step_(step) {}

  int Value() const { return static_cast<int>(value_ >> 32); }
  void Advance() { value_ += step_; }
  void Advance(std::int64_t steps) { value_ += step_ * steps; }

 private:
  std::int64_t value_;
  std::int64_t step_;
};

/// As above, exact at any length.
class SteadyQuotient {
 public:
  /// `quotient + rest / divisor` where the rest is at least 0 and less than the divisor; both parts
  /// of the step likewise.
  SteadyQuotient(std::int64_t quotient, std::int64_t rest, std::int64_t wholeStep,
                 std::int64_t restStep, std::int64_t divisor)
      : quotient_(quotient),
        rest_(rest - divisor),
        wholeStep_(wholeStep),
        restStep_(restStep),
        divisor_(divisor) {}

  std::int64_t Value() const { return quotient_; }

  // The rest is held less the divisor. Whether it carries can't be foretold, so no branch asks.
  void Advance() {
    rest_ += restStep_;
    const std::int64_t carry = ~(rest_ >> 63);
    rest_ -= divisor_ & carry;
    quotient_ += wholeStep_ - carry;
  }

  void Advance(std::int64_t steps);

 private:
  std::int64_t quotient_;
  std::int64_t rest_;
  std::int64_t wholeStep_;
  std::int64_t restStep_;
  std::int64_t divisor_;
};

/// A line between two points of a canvas, downward.
struct DownwardLine {
  DownwardLine(const cv::Point& from, const cv::Point& to)
      : upper(from),
        lower(to),
        across(static_cast<std::int64_t>(to.x) - from.x),
        down(static_cast<std::int64_t>(to.y) - from.y) {}

  bool IsSteep() const { return -down <= across && across <= down; }
  bool IsBrief() const { return down <= kBriefRows && std::max(upper.x, lower.x) < kBriefColumns; }

  cv::Point upper;
  cv::Point lower;
  std::int64_t across;
  std::int64_t down;
};

/// The one column in each row of a steep line, t rows below its upper end:
///
///     upper.x + floor((2 * across * t + down - 1) / (2 * down))
inline SteadyQuotient SteepColumns(const DownwardLine& line) {
  const std::int64_t down = line.down;
  const std::int64_t whole = line.across < 0 ? -1 : line.across == down ? 1 : 0;
  return {line.upper.x, down - 1, whole, 2 * (line.across - whole * down), 2 * down};
}

/// As above, from the least dividend to the one a bias below the next quotient.
inline BriefQuotient BriefSteepColumns(const DownwardLine& line) {
  constexpr std::int64_t kOne = BriefQuotient::kOne;
  return {line.upper.x * kOne + kOne / 2 - BriefQuotient::kBias, line.across * kOne / line.down};
}

/// Where a flat line leaves its rows. Those columns are in its row t that lie between the values
/// for t and t + 1, the left one included:
///
///     upper.x + 1 + floor((2 * across * t - across) / (2 * down))
inline SteadyQuotient FlatColumns(const DownwardLine& line) {
  const std::int64_t down = line.down;
  std::int64_t whole = Quotient(line.across, down);
  if (whole * down > line.across) --whole;
  const std::int64_t rest = line.across - whole * down;
  // Half of the step back, in whole columns and a rest.
  const std::int64_t back = (whole & 1) * down + rest;
  const std::int64_t borrow = back > 0 ? 1 : 0;
  return {line.upper.x + 1 - (whole >> 1) - borrow, 2 * down * borrow - back, whole, 2 * rest,
          2 * down};
}

inline BriefQuotient BriefFlatColumns(const DownwardLine& line) {
  constexpr std::int64_t kOne = BriefQuotient::kOne;
  const std::int64_t step = line.across * kOne / line.down;
  return {(line.upper.x + std::int64_t{1}) * kOne - (step >> 1) + BriefQuotient::kBias, step};
}

template <typename Columns, typename Visit>
void WalkSteep(Columns columns, int top, int last, Visit visit) {
  for (int row = top; row <= last; ++row, columns.Advance()) {
    const int column = static_cast<int>(columns.Value());
    visit(row, column, column);
  }
}

template <typename Columns, typename Visit>
void WalkFlat(const DownwardLine& line, Columns columns, int top, int last, Visit visit) {
  using Column = decltype(columns.Value());
  const Column left = std::min(line.upper.x, line.lower.x);
  const Column right = std::max(line.upper.x, line.lower.x);
  const bool rightward = line.across > 0;
  Column before = columns.Value();
  for (int row = top; row <= last; ++row) {
    columns.Advance();
    const Column behind = columns.Value();
    const Column first = rightward ? before : behind;
    const Column end = rightward ? behind : before;
    visit(row, static_cast<int>(std::max(first, left)), static_cast<int>(std::min(end - 1, right)));
    before = behind;
  }
}

/// Calls `visit(row, first, last)` for the rows from `top` to `last` of those that an 8-connected
/// line between two points of the canvas meets, downward, with the columns of its pixels there.
template <typename Visit>
void WalkBorder(const DownwardLine& line, int top, int last, Visit visit) {
  if (top > last) return;
  const std::int64_t skipped = static_cast<std::int64_t>(top) - line.upper.y;
  if (line.down == 0) {
    visit(top, std::min(line.upper.x, line.lower.x), std::max(line.upper.x, line.lower.x));
  } else if (line.IsBrief()) {
    BriefQuotient columns = line.IsSteep() ? BriefSteepColumns(line) : BriefFlatColumns(line);
    columns.Advance(skipped);
    if (line.IsSteep()) {
      WalkSteep(columns, top, last, visit);
    } else {
      WalkFlat(line, columns, top, last, visit);
    }
  } else {
    SteadyQuotient columns = line.IsSteep() ? SteepColumns(line) : FlatColumns(line);
    if (skipped != 0) columns.Advance(skipped);
    if (line.IsSteep()) {
      WalkSteep(columns, top, last, visit);
    } else {
      WalkFlat(line, columns, top, last, visit);
    }
  }
}

/// As above for all rows of the line that lie in the area.
template <typename Visit>
void WalkBorder(const FillEdge& edge, const FillArea& area, Visit visit) {
  const DownwardLine line(edge.Upper(), edge.Lower());
  WalkBorder(line, std::max(line.upper.y, area.firstRow), std::min(line.lower.y, area.endRow - 1),
             visit);
}

#endif  // MASKS_EDGE_WALK_H_
