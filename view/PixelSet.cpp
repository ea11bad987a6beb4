#include "view/PixelSet.h"

#include <algorithm>
#include <climits>

namespace {

// Pixels in a box: a number for each, 0 where it is not in the set.
class Raster {
 public:
  Raster(const std::vector<Run>& runs, const cv::Size& picture);

  cv::Rect Box() const { return box_; }
  int& At(int row, int column) { return numbers_[IndexOf(row, column)]; }

  // Numbers each pixel by its steps to the next that is not in the set, up to `limit`.
  void CountSteps(int limit);

 private:
  std::size_t IndexOf(int row, int column) const {
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(box_.width) +
           static_cast<std::size_t>(column);
  }
  void Step(int row, int column, int rowStep, int columnStep);

  cv::Rect box_;
  std::vector<int> numbers_;
};

// The least box around runs, a pixel wider where the picture is.
cv::Rect BoxOf(const std::vector<Run>& runs, const cv::Size& picture) {
  int top = INT_MAX, bottom = -1, left = INT_MAX, right = -1;
  for (const Run& run : runs) {
    top = std::min(top, run.Row);
    bottom = std::max(bottom, run.Row);
    left = std::min(left, run.FirstColumn);
    right = std::max(right, run.LastColumn);
  }
  if (bottom < 0) return {};
  const cv::Point first(std::max(left - 1, 0), std::max(top - 1, 0));
  const cv::Point last(std::min(right + 1, picture.width - 1),
                       std::min(bottom + 1, picture.height - 1));
  return {first.x, first.y, last.x - first.x + 1, last.y - first.y + 1};
}

Raster::Raster(const std::vector<Run>& runs, const cv::Size& picture)
    : box_(BoxOf(runs, picture)),
      numbers_(static_cast<std::size_t>(box_.width) * static_cast<std::size_t>(box_.height)) {
  // First the runs that begin at each pixel, less those that have ended; then their sums.
  for (const Run& run : runs) {
    const int row = run.Row - box_.y, end = run.LastColumn + 1 - box_.x;
    ++At(row, run.FirstColumn - box_.x);
    if (end < box_.width) --At(row, end);
  }
  for (int row = 0; row < box_.height; ++row) {
    int covered = 0;
    for (int column = 0; column < box_.width; ++column) {
      covered += At(row, column);
      At(row, column) = covered > 0 ? 1 : 0;
    }
  }
}

void Raster::Step(int row, int column, int rowStep, int columnStep) {
  const int otherRow = row + rowStep, otherColumn = column + columnStep;
  if (otherRow < 0 || otherRow >= box_.height) return;
  if (otherColumn < 0 || otherColumn >= box_.width) return;
  int& number = At(row, column);
  number = std::min(number, At(otherRow, otherColumn) + 1);
}

void Raster::CountSteps(int limit) {
  for (int& number : numbers_) number *= limit;
  for (int row = 0; row < box_.height; ++row) {
    for (int column = 0; column < box_.width; ++column) {
      for (int across = -1; across <= 1; ++across) Step(row, column, -1, across);
      Step(row, column, 0, -1);
    }
  }
  for (int row = box_.height - 1; row >= 0; --row) {
    for (int column = box_.width - 1; column >= 0; --column) {
      for (int across = -1; across <= 1; ++across) Step(row, column, 1, across);
      Step(row, column, 0, 1);
    }
  }
}

// Lays the pixels whose number is from 1 to `limit`.
void LayNumbers(Raster& raster, Canvas& canvas, int limit, const Color& color, int part) {
  const cv::Rect box = raster.Box();
  std::vector<unsigned char> weights(static_cast<std::size_t>(box.width));
  for (int row = 0; row < box.height; ++row) {
    for (int column = 0; column < box.width; ++column) {
      const int number = raster.At(row, column);
      const bool chosen = number >= 1 && number <= limit;
      weights[static_cast<std::size_t>(column)] = static_cast<unsigned char>(chosen ? part : 0);
    }
    canvas.Lay(box.y + row, box.x, weights, color);
  }
}

}  // namespace

void PixelSet::Add(const VemVarArray& rows, const VemVarArray& firstColumns,
                   const VemVarArray& lastColumns) {
  const int count = std::min({rows.Length(), firstColumns.Length(), lastColumns.Length()});
  for (int i = 0; i < count; ++i) {
    const int row = rows[i].I();
    const int first = std::max(firstColumns[i].I(), 0);
    const int last = std::min(lastColumns[i].I(), picture_.width - 1);
    if (row < 0 || row >= picture_.height || first > last) continue;
    runs_.push_back({row, first, last});
  }
}

void PixelSet::Lay(Canvas& canvas, const Color& color, int part) const {
  Raster raster(runs_, picture_);
  LayNumbers(raster, canvas, 1, color, part);
}

void PixelSet::LayBorder(Canvas& canvas, const Color& color, int width) const {
  const int limit = std::min(width, std::max(picture_.width, picture_.height));
  Raster raster(runs_, picture_);
  raster.CountSteps(limit + 1);
  LayNumbers(raster, canvas, limit, color, kOpaque);
}
