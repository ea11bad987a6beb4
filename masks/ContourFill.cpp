#include "masks/ContourFill.h"

#include <algorithm>
#include <cstddef>

#include "masks/DenseFill.h"
#include "masks/SparseFill.h"

void ContourFill::Add(const std::vector<cv::Point>& contour) {
  if (contour.empty()) return;
  cv::Point before = contour.back();
  for (const cv::Point& point : contour) {
    edges_.push_back({before, point});
    before = point;
  }
}

void ContourFill::Fill(RunSink& sink) const {
  if (area_.width <= 0) return;
  // The rows that the edges reach, and how many they meet in all.
  FillArea area = area_;
  area.firstRow = area_.endRow;
  area.endRow = area_.firstRow;
  std::int64_t edgeRows = 0;
  for (const FillEdge& edge : edges_) {
    const int top = std::max(std::min(edge.from.y, edge.to.y), area_.firstRow);
    const int last = std::min(std::max(edge.from.y, edge.to.y), area_.endRow - 1);
    if (top > last) continue;
    area.firstRow = std::min(area.firstRow, top);
    area.endRow = std::max(area.endRow, last + 1);
    edgeRows += static_cast<std::int64_t>(last) - top + 1;
  }
  if (area.firstRow >= area.endRow) return;
  const std::int64_t rows = static_cast<std::int64_t>(area.endRow) - area.firstRow;
  const std::int64_t words = rows * (area.width / 64 + 1);
  if (words <= 2 * edgeRows) {
    FillDensely(edges_, area, sink);
  } else {
    FillSparsely(edges_, area, sink);
  }
}
