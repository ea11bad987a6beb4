#ifndef CODER_RUN_BLOCK_H_
#define CODER_RUN_BLOCK_H_

#include <algorithm>
#include <cstddef>
#include <vector>

#include "coder/RowKernels.h"

/// Gathers runs in a block that stays near the processor, and adds them to the end of a list
/// whenever it is full: so no element of the list is written twice, and few calls are made.
class RunBlock {
 public:
  /// For the runs of a raster of `rows` rows, which come row by row.
  RunBlock(const RowKernels& kernels, int rows, std::vector<Run>& runs)
      : rows_(static_cast<std::size_t>(rows)), store_(kernels.storeRuns), runs_(runs) {}

  /// Adds `count` runs of a row, told by their edges.
  void Add(const Edge* edges, std::size_t count, int row) {
    if (count > kRoom - size_) {
      Reserve(runs_.size() + size_ + count, static_cast<std::size_t>(row) + 1);
      do {
        const std::size_t some = kRoom - size_;
        store_(edges, some, row, block_ + size_);
        size_ = kRoom;
        edges += 2 * some;
        count -= some;
        Finish();
      } while (count > kRoom);
    }
    store_(edges, count, row, block_ + size_);
    size_ += count;
  }

  /// Adds to the list what is still in the block.
  void Finish() {
    runs_.insert(runs_.end(), block_, block_ + size_);
    size_ = 0;
  }

 private:
  static constexpr std::size_t kRoom = 1024;

  // Makes room for as many runs as there will be when the rows to come are like those read, in
  // which there are `count`, and for twice that: each move to a larger list touches all of it
  // again.
  void Reserve(std::size_t count, std::size_t read) {
    if (count <= runs_.capacity()) return;
    const std::size_t expected = count * rows_ / read;
    runs_.reserve(std::max(expected + expected / 16, 2 * count));
  }

  const std::size_t rows_;
  void (*const store_)(const Edge*, std::size_t, int, Run*);
  std::vector<Run>& runs_;
  std::size_t size_ = 0;
  Run block_[kRoom + kSlack];
};

#endif  // CODER_RUN_BLOCK_H_
