#ifndef MASKS_EDGE_WALK_H_
#define MASKS_EDGE_WALK_H_

#include <algorithm>
#include <cstdint>

#include "masks/ContourFill.h"

/// Crossings are told in units of 1/65536 pixel.
constexpr int kCrossingBits = 16;
constexpr std::int64_t kCrossingOne = std::int64_t{1} << kCrossingBits;

/// The first whole column that is not left of a crossing, and the last that is not right of it.
inline std::int64_t ColumnFrom(std::int64_t crossing) {
  return (crossing + kCrossingOne - 1) >> kCrossingBits;
}
inline std::int64_t ColumnTo(std::int64_t crossing) { return crossing >> kCrossingBits; }

/// Where an edge crosses the rows of an area, from `top` to the row before `end`.
struct Crossing {
  std::int64_t x;     ///< Where it crosses the row at hand.
  std::int64_t step;  ///< How far it advances to the next row.
  int top;
  int end;
};

/// Tells where the edge crosses the area's rows; false where it crosses none.
bool CrossRows(const FillEdge& edge, const FillArea& area, Crossing& crossing);

/// The pixels of an 8-connected line, row by row from `top` to the row before `end`: in each row
/// the columns `first` to `last`.
///
/// With t as the number of rows below the upper end, a steep line has in each row the one column
/// whose place is `quotient`, a flat one the columns between the quotients of t and t + 1:
///
///     steep  upper.x + floor((2 * dx * t + dy - 1) / (2 * dy))
///     flat   upper.x + 1 + floor((2 * dx * t - dx) / (2 * dy))
///
/// Quotient and rest advance together, so they are exact at any length.
class BorderWalk {
 public:
  /// Begins the line between two points of the area's canvas; false where it has no wanted row.
  bool Start(const FillEdge& line, const FillArea& area);

  int top() const { return top_; }
  int end() const { return end_; }
  std::int64_t first() const { return first_; }
  std::int64_t last() const { return last_; }

  /// Goes to the next row.
  void Next() {
    const std::int64_t before = quotient_;
    Advance();
    if (slope_ == kSteep) {
      first_ = last_ = quotient_;
    } else if (slope_ == kFlatRight) {
      first_ = before;
      last_ = std::min(quotient_ - 1, lowerColumn_);
    } else {
      first_ = std::max(quotient_, lowerColumn_);
      last_ = before - 1;
    }
  }

 private:
  enum Slope : int { kSteep, kFlatRight, kFlatLeft };

  void SetQuotient(std::int64_t base, std::int64_t slope, std::int64_t offset,
                   std::int64_t skippedRows);

  // The rest is held less the divisor. Whether it carries can't be foretold, so no branch asks.
  void Advance() {
    rest_ += restStep_;
    const std::int64_t carry = ~(rest_ >> 63);
    rest_ -= divisor_ & carry;
    quotient_ += wholeStep_ - carry;
  }

  std::int64_t first_;
  std::int64_t last_;
  std::int64_t quotient_;
  std::int64_t rest_;
  std::int64_t wholeStep_;
  std::int64_t restStep_;
  std::int64_t divisor_;
  std::int64_t lowerColumn_;
  Slope slope_;
  int top_;
  int end_;
};

/// Clips an edge to the area's canvas, as ClipLine does.
bool ClipEdge(FillEdge& edge, const FillArea& area);

#endif  // MASKS_EDGE_WALK_H_
