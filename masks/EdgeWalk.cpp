#include "masks/EdgeWalk.h"

#include "masks/LineClip.h"

namespace {

__extension__ typedef __int128 Wide;

// A quotient rounded down. Lines seldom advance by more than a pixel, and division is slow.
std::int64_t FloorDivide(std::int64_t dividend, std::int64_t divisor) {
  if (dividend >= 0 && dividend < divisor) return 0;
  if (dividend < 0 && dividend >= -divisor) return -1;
  const std::int64_t quotient = dividend / divisor;
  return quotient - (quotient * divisor > dividend ? 1 : 0);
}

bool IsWithin(const cv::Point& p, const FillArea& area) {
  return p.x >= 0 && p.x < area.width && p.y >= 0 && p.y < area.height;
}

}  // namespace

bool ClipEdge(FillEdge& edge, const FillArea& area) {
  if (IsWithin(edge.from, area) && IsWithin(edge.to, area)) return true;
  LinePoint from = {edge.from.x, edge.from.y};
  LinePoint to = {edge.to.x, edge.to.y};
  if (!ClipLine(from, to, area.width, area.height)) return false;
  edge.from = cv::Point(static_cast<int>(from.x), static_cast<int>(from.y));
  edge.to = cv::Point(static_cast<int>(to.x), static_cast<int>(to.y));
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
  crossing.step = across == 0 || down == 1 ? across * kCrossingOne : across * kCrossingOne / down;
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
  rest_ = offset - start * divisor_ - divisor_;
  if (skippedRows == 0) return;
  const Wide rest = static_cast<Wide>(restStep_) * skippedRows + rest_ + divisor_;
  const auto carried = static_cast<std::int64_t>(rest / divisor_);
  quotient_ += wholeStep_ * skippedRows + carried;
  rest_ = static_cast<std::int64_t>(rest - static_cast<Wide>(carried) * divisor_) - divisor_;
}
