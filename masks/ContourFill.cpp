#include "masks/ContourFill.h"

#include <algorithm>
#include <cstdint>

#include "masks/DenseFill.h"
#include "masks/SparseFill.h"

void ContourFill::Add(const std::vector<cv::Point>& contour) {
  if (contour.empty()) return;
  const auto top =
      std::min_element(contour.begin(), contour.end(),
                       [](const cv::Point& a, const cv::Point& b) { return a.y < b.y; });
  std::vector<cv::Point>& points = contours_.points;
  points.insert(points.end(), top, contour.end());
  points.insert(points.end(), contour.begin(), top + 1);
  contours_.ends.push_back(points.size());
}

namespace {

/// What the edges of contours meet of an area.
struct Reach {
  explicit Reach(const FillArea& whole) : area(whole) {
    area.firstRow = whole.endRow;
    area.endRow = whole.firstRow;
  }

  void Add(const cv::Point& from, const cv::Point& to, const FillArea& whole) {
    const int top = std::max(std::min(from.y, to.y), whole.firstRow);
    const int last = std::min(std::max(from.y, to.y), whole.endRow - 1);
    if (top > last) return;
    area.firstRow = std::min(area.firstRow, top);
    area.endRow = std::max(area.endRow, last + 1);
    edgeRows += static_cast<std::int64_t>(last) - top;
    // A side ends where the edges turn up or down; level ones lead upward here.
    const bool downward = from.y < to.y;
    if (downward != leadsDown) ++sides;
    leadsDown = downward;
  }

  FillArea area;  ///< The rows that are met.
  std::int64_t edgeRows = 0;
  std::int64_t sides = 0;
  bool leadsDown = false;
};

}  // namespace

void ContourFill::Fill(RunSink& sink) const {
  if (area_.width <= 0) return;
  Reach reach(area_);
  contours_.ForEach([&](const cv::Point* first, const cv::Point* end) {
    for (const cv::Point* to = first + 1; to != end; ++to) reach.Add(to[-1], *to, area_);
  });
  const FillArea& area = reach.area;
  if (area.firstRow >= area.endRow) return;
  const std::int64_t rows = static_cast<std::int64_t>(area.endRow) - area.firstRow;
  const std::int64_t words = rows * (area.width / 64 + 1);
  if (words <= std::max(reach.edgeRows / 2, 40 * reach.sides)) {
    FillDensely(contours_, area, sink);
  } else {
    FillSparsely(contours_, area, reach.edgeRows, sink);
  }
}
