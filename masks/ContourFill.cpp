#include "masks/ContourFill.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "masks/DenseFill.h"
#include "masks/SparseFill.h"

void ContourFill::Add(const std::vector<cv::Point>& contour) {
  if (contour.empty()) return;
  int topRow = contour[0].y;
  for (const cv::Point& point : contour) topRow = std::min(topRow, point.y);
  const auto start = std::find_if(contour.begin(), contour.end(),
                                  [&](const cv::Point& point) { return point.y == topRow; });
  std::vector<cv::Point>& points = contours_.points;
  points.insert(points.end(), start, contour.end());
  points.insert(points.end(), contour.begin(), start + 1);
  contours_.ends.push_back(points.size());
}

namespace {

// A contour begins in its topmost row, where it turns.
void AppendSides(const cv::Point* first, const cv::Point* end, std::vector<FillSide>& sides) {
  const cv::Point* const last = end - 1;
  for (const cv::Point* from = first; from != last;) {
    const cv::Point* to = from + 1;
    while (to != last && to->y == from->y) ++to;
    if (to->y > from->y) {
      while (to != last && to[1].y >= to->y) ++to;
      sides.push_back({from, to});
    } else {
      while (to != last && to[1].y <= to->y) ++to;
      sides.push_back({to, from});
      if (to->y == from->y) sides.push_back({from, to});  // There and back.
    }
    from = to;
  }
}

/// How the sides of contours go through an area.
struct Course {
  Course(const std::vector<FillSide>& sides, const FillArea& whole) : area(whole) {
    area.firstRow = whole.endRow;
    area.endRow = whole.firstRow;
    for (const FillSide& side : sides) {
      const int top = std::min(std::max(side.upper->y, whole.firstRow), whole.endRow - 1);
      const int bottom = std::min(std::max(side.lower->y, whole.firstRow), whole.endRow - 1);
      area.firstRow = std::min(area.firstRow, top);
      area.endRow = std::max(area.endRow, bottom + 1);
      edgeRows += bottom - top;
      if (top < bottom) ++longSides;
    }
  }

  FillArea area;               ///< With the rows that the sides meet, and maybe one more.
  std::int64_t edgeRows = 0;   ///< How many rows the sides cross in all.
  std::int64_t longSides = 0;  ///< How many sides cross any.
};

}  // namespace

void ContourFill::Fill(RunSink& sink) const {
  if (area_.width <= 0 || area_.firstRow >= area_.endRow || contours_.ends.empty()) return;
  std::vector<FillSide> sides;
  contours_.ForEach(
      [&](const cv::Point* first, const cv::Point* end) { AppendSides(first, end, sides); });
  const Course course(sides, area_);
  const FillArea& area = course.area;
  const std::int64_t rows = static_cast<std::int64_t>(area.endRow) - area.firstRow;
  const std::int64_t words = rows * (area.width / 64 + 1);
  if (words <= std::max(course.edgeRows / 2, 40 * course.longSides)) {
    FillDensely(contours_, area, sink);
  } else {
    FillSparsely(sides, area, course.edgeRows, sink);
  }
}
