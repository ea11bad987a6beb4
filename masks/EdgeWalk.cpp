#include "masks/EdgeWalk.h"

namespace {

__extension__ typedef __int128 Wide;

bool OnOneSide(int a, int b, int size) { return (a < 0 && b < 0) || (a >= size && b >= size); }

bool IsWithin(int value, int size) { return value >= 0 && value < size; }

// From `start`, the part of `rise` that falls to the way from `from` to `to` out of `run`.
int MoveAlong(int start, int from, int to, std::int64_t rise, std::int64_t run) {
  const Wide way = static_cast<std::int64_t>(to) - from;
  return static_cast<int>(start + static_cast<std::int64_t>(way * rise / run));
}

void MoveToRows(cv::Point& end, const FillEdge& edge, int height) {
  if (IsWithin(end.y, height)) return;
  const int row = end.y < 0 ? 0 : height - 1;
  end.x = MoveAlong(end.x, end.y, row, static_cast<std::int64_t>(edge.to.x) - edge.from.x,
                    static_cast<std::int64_t>(edge.to.y) - edge.from.y);
  end.y = row;
}

void MoveToColumns(cv::Point& end, const FillEdge& edge, int width) {
  if (IsWithin(end.x, width)) return;
  const int column = end.x < 0 ? 0 : width - 1;
  end.y = MoveAlong(end.y, end.x, column, static_cast<std::int64_t>(edge.to.y) - edge.from.y,
                    static_cast<std::int64_t>(edge.to.x) - edge.from.x);
  end.x = column;
}

// A quotient rounded down. Lines seldom advance by more than a pixel, and division is slow.
std::int64_t FloorDivide(std::int64_t dividend, std::int64_t divisor) {
  if (dividend >= 0 && dividend < divisor) return 0;
  if (dividend < 0 && dividend >= -divisor) return -1;
  const std::int64_t quotient = dividend / divisor;
  return quotient - (quotient * divisor > dividend ? 1 : 0);
}

}  // namespace

bool ClipEdge(FillEdge& edge, const FillArea& area) {
  const auto isOutside = [&] {
    return OnOneSide(edge.from.x, edge.to.x, area.width) ||
           OnOneSide(edge.from.y, edge.to.y, area.height);
  };
  if (isOutside()) return false;
  MoveToRows(edge.from, edge, area.height);
  MoveToRows(edge.to, edge, area.height);
  if (isOutside()) return false;
  MoveToColumns(edge.from, edge, area.width);
  MoveToColumns(edge.to, edge, area.width);
  return true;
}

bool CrossRows(const FillEdge& edge, const FillArea& area, Crossing& crossing) {
  const bool downward = edge.from.y < edge.to.y;
  const cv::Point& upper = downward ? edge.from : edge.to;
  const cv::Point& lower = downward ? edge.to : edge.from;
  crossing.top = std::max(upper.y, area.firstRow);
  crossing.end = std::min(lower.y, area.endRow);
  if (crossing.top >= crossing.end) return false;
  const std::int64_t across = static_cast<std::int64_t>(lower.x) - upper.x;
  const std::int64_t down = static_cast<std::int64_t>(lower.y) - upper.y;
  crossing.step = across == 0 ? 0 : across * kCrossingOne / down;
  const std::int64_t skipped = static_cast<std::int64_t>(crossing.top) - upper.y;
  crossing.x = upper.x * kCrossingOne + crossing.step * skipped;
  return true;
}

bool BorderWalk::Start(const FillEdge& line, const FillArea& area) {
  const bool downward = line.from.y <= line.to.y;
  const cv::Point& upper = downward ? line.from : line.to;
  const cv::Point& lower = downward ? line.to : line.from;
  top_ = std::max(upper.y, area.firstRow);
  end_ = std::min(lower.y + 1, area.endRow);
  if (top_ >= end_) return false;

  const std::int64_t down = static_cast<std::int64_t>(lower.y) - upper.y;
  const std::int64_t across = static_cast<std::int64_t>(lower.x) - upper.x;
  const std::int64_t skipped = static_cast<std::int64_t>(top_) - upper.y;
  divisor_ = 2 * down;
  lowerColumn_ = lower.x;
  if (down == 0) {
    first_ = std::min(upper.x, lower.x);
    last_ = std::max(upper.x, lower.x);
  } else if (-down <= across && across <= down) {
    slope_ = kSteep;
    SetQuotient(upper.x, 2 * across, down - 1, skipped);
    first_ = last_ = quotient_;
  } else {
    slope_ = across > 0 ? kFlatRight : kFlatLeft;
    SetQuotient(upper.x + std::int64_t{1}, 2 * across, -across, skipped);
    Next();
    if (slope_ == kFlatRight) first_ = std::max<std::int64_t>(first_, upper.x);
    if (slope_ == kFlatLeft) last_ = std::min<std::int64_t>(last_, upper.x);
  }
  return true;
}

void BorderWalk::SetQuotient(std::int64_t base, std::int64_t slope, std::int64_t offset,
                             std::int64_t skippedRows) {
  wholeStep_ = FloorDivide(slope, divisor_);
  restStep_ = slope - wholeStep_ * divisor_;
  const std::int64_t start = FloorDivide(offset, divisor_);
  quotient_ = base + start;
  rest_ = offset - start * divisor_;
  if (skippedRows == 0) return;
  const Wide rest = static_cast<Wide>(restStep_) * skippedRows + rest_;
  const auto carried = static_cast<std::int64_t>(rest / divisor_);
  quotient_ += wholeStep_ * skippedRows + carried;
  rest_ = static_cast<std::int64_t>(rest - static_cast<Wide>(carried) * divisor_);
}
