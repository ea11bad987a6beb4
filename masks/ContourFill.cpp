#include "masks/ContourFill.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "masks/DenseFill.h"
#include "masks/SparseFill.h"

void ContourFill::Add(const std::vector<cv::Point>& contour) {
  if (contour.empty()) return;
  const auto top =
      std::min_element(contour.begin(), contour.end(),
                       [](const cv::Point& a, const cv::Point& b) { return a.y < b.y; });
  std::vector<cv::Point>& points = contours_.points;
  const std::size_t start = points.size();
  points.resize(start + contour.size() + 1);
  std::rotate_copy(contour.begin(), top, contour.end(), points.data() + start);
  points.back() = *top;
  contours_.ends.push_back(points.size());
}

namespace {

/// How the edges of contours go through an area.
struct Course {
  explicit Course(const FillArea& whole) : area(whole) {
    area.firstRow = whole.endRow;
    area.endRow = whole.firstRow;
  }

  // The contour's figures stay in registers until its end.
  void Add(const cv::Point* first, const cv::Point* end, const FillArea& whole) {
    const int top = whole.firstRow;
    const int bottom = whole.endRow - 1;
    int row = std::min(std::max(first->y, top), bottom);
    int least = row;
    int largest = row;
    int sense = 0;
    std::int64_t crossed = 0;
    std::int64_t turns = 0;
    for (const cv::Point* p = first + 1; p != end; ++p) {
      const int next = std::min(std::max(p->y, top), bottom);
      const int rise = next - row;
      const int turned = rise == 0 ? sense : rise >> 31 | 1;
      turns += turned != sense ? 1 : 0;
      crossed += std::abs(rise);
      least = std::min(least, next);
      largest = std::max(largest, next);
      sense = turned;
      row = next;
    }
    area.firstRow = std::min(area.firstRow, least);
    area.endRow = std::max(area.endRow, largest + 1);
    edgeRows += crossed;
    sides += turns;
  }

  FillArea area;              ///< With the rows that the edges meet, and maybe one more.
  std::int64_t edgeRows = 0;  ///< How many rows the edges cross in all.
  std::int64_t sides = 0;     ///< How many ways lead downward or upward until the next turn.
};

}  // namespace

void ContourFill::Fill(RunSink& sink) const {
  if (area_.width <= 0 || area_.firstRow >= area_.endRow || contours_.ends.empty()) return;
  Course course(area_);
  contours_.ForEach(
      [&](const cv::Point* first, const cv::Point* end) { course.Add(first, end, area_); });
  const FillArea& area = course.area;
  const std::int64_t rows = static_cast<std::int64_t>(area.endRow) - area.firstRow;
  const std::int64_t words = rows * (area.width / 64 + 1);
  if (words <= std::max(course.edgeRows / 2, 40 * course.sides)) {
    FillDensely(contours_, area, sink);
  } else {
    FillSparsely(contours_, area, course.edgeRows, sink);
  }
}
