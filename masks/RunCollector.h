#ifndef MASKS_RUN_COLLECTOR_H_
#define MASKS_RUN_COLLECTOR_H_

#include <cstdint>
#include <vector>

#include "masks/RunSink.h"

/// Gathers runs in any order, which may overlap, and hands out the maximal runs that cover the same
/// pixels of a canvas.
class RunCollector {
 public:
  RunCollector(int width, int height) : width_(width), height_(height) {}

  void Reserve(std::size_t count) { runs_.reserve(count); }

  /// Adds the part of a run that lies on the canvas.
  void Add(std::int64_t row, std::int64_t first, std::int64_t last) {
    if (row < 0 || row >= height_) return;
    if (first < 0) first = 0;
    if (last >= width_) last = width_ - std::int64_t{1};
    if (first > last) return;
    runs_.push_back({static_cast<int>(row), static_cast<int>(first), static_cast<int>(last)});
  }

  void HandOut(RunSink& sink);

 private:
  void Sort();

  int width_;
  int height_;
  std::vector<Run> runs_;
};

#endif  // MASKS_RUN_COLLECTOR_H_
