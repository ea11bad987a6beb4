#include "masks/ContourFill.h"

#include <algorithm>
#include <cstdint>

#include "masks/DenseFill.h"
#include "masks/SparseFill.h"

void ContourFill::Add(const std::vector<cv::Point>& contour) {
  if (contour.empty()) return;
  contours_.points.push_back(contour.back());
  contours_.points.insert(contours_.points.end(), contour.begin(), contour.end());
  contours_.ends.push_back(contours_.points.size());
}

void ContourFill::Fill(RunSink& sink) const {
  if (area_.width <= 0) return;
  // The rows that the edges reach, and how many they meet in all.
  FillArea area = area_;
  area.firstRow = area_.endRow;
  area.endRow = area_.firstRow;
  std::int64_t edgeRows = 0;
  contours_.ForEach([&](const cv::Point* first, const cv::Point* end) {
    for (const cv::Point* to = first + 1; to != end; ++to) {
      const int top = std::max(std::min(to[-1].y, to->y), area_.firstRow);
      const int last = std::min(std::max(to[-1].y, to->y), area_.endRow - 1);
      if (top > last) continue;
      area.firstRow = std::min(area.firstRow, top);
      area.endRow = std::max(area.endRow, last + 1);
      edgeRows += static_cast<std::int64_t>(last) - top + 1;
    }
  });
  if (area.firstRow >= area.endRow) return;
  const std::int64_t rows = static_cast<std::int64_t>(area.endRow) - area.firstRow;
  const std::int64_t words = rows * (area.width / 64 + 1);
  if (words <= 2 * edgeRows) {
    FillDensely(contours_, area, sink);
  } else {
    FillSparsely(contours_, area, edgeRows, sink);
  }
}
