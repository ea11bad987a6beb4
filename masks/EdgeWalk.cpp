#include "masks/EdgeWalk.h"

#include "masks/LineClip.h"

namespace {

__extension__ typedef __int128 Wide;

}  // namespace

bool ClipEdge(FillEdge& edge, const FillArea& area) {
  if (IsOnCanvas(edge.from, area) && IsOnCanvas(edge.to, area)) return true;
  LinePoint from = {edge.from.x, edge.from.y};
  LinePoint to = {edge.to.x, edge.to.y};
  if (!ClipLine(from, to, area.width, area.height)) return false;
  edge.from = cv::Point(static_cast<int>(from.x), static_cast<int>(from.y));
  edge.to = cv::Point(static_cast<int>(to.x), static_cast<int>(to.y));
  return true;
}

void SteadyQuotient::Advance(std::int64_t steps) {
  const Wide rest = static_cast<Wide>(restStep_) * steps + rest_ + divisor_;
  const auto carried = static_cast<std::int64_t>(rest / divisor_);
  quotient_ += wholeStep_ * steps + carried;
  rest_ = static_cast<std::int64_t>(rest - static_cast<Wide>(carried) * divisor_) - divisor_;
}
