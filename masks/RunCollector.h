#ifndef MASKS_RUN_COLLECTOR_H_
#define MASKS_RUN_COLLECTOR_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "masks/RunSink.h"

/// Gathers runs in any order, which may overlap, and hands out the maximal runs that cover the same
/// pixels of a canvas.
class RunCollector {
 public:
  RunCollector(int width, int height) : width_(width), height_(height) {}

  void Reserve(std::size_t count) { runs_.reserve(count); }

  /// Adds the part of a run that lies on the canvas. Quickest where one run in each row comes
  /// first, downward, and the others touch it.
  void Add(std::int64_t row, std::int64_t first, std::int64_t last) {
    if (row < 0 || row >= height_) return;
    if (first < 0) first = 0;
    if (last >= width_) last = width_ - std::int64_t{1};
    if (first > last) return;
    const Run run = {static_cast<int>(row), static_cast<int>(first), static_cast<int>(last)};
    if (!Unite(run)) runs_.push_back(run);
  }

  void HandOut(RunSink& sink);

 private:
  // Widens the run that stands as far behind the first as its row lies below, if the two touch.
  bool Unite(const Run& run) {
    const std::int64_t place = runs_.empty() ? 0 : std::int64_t{run.Row} - runs_[0].Row;
    if (static_cast<std::uint64_t>(place) >= runs_.size()) return false;
    Run& other = runs_[static_cast<std::size_t>(place)];
    if (other.Row != run.Row || run.FirstColumn > std::int64_t{other.LastColumn} + 1 ||
        other.FirstColumn > std::int64_t{run.LastColumn} + 1) {
      return false;
    }
    other.FirstColumn = std::min(other.FirstColumn, run.FirstColumn);
    other.LastColumn = std::max(other.LastColumn, run.LastColumn);
    return true;
  }

  void Sort();

  int width_;
  int height_;
  std::vector<Run> runs_;
};

#endif  // MASKS_RUN_COLLECTOR_H_
