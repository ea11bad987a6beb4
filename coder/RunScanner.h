#ifndef CODER_RUN_SCANNER_H_
#define CODER_RUN_SCANNER_H_

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <opencv2/core.hpp>
#include <vector>

#include "coder/RowKernels.h"

/// Reads a raster, row by row, as the edges of maximal runs of foreground: the first column of a
/// run, then the column behind its last, and so on.
class RunScanner {
 public:
  explicit RunScanner(const cv::Mat& raster);

  /// The rows to read: none of a raster of several channels or dimensions.
  int Rows() const { return rows_; }

  /// The numbers that FindEdges may write, those beyond its end included.
  std::size_t EdgeRoom() const { return static_cast<std::size_t>(raster_.cols) + 1 + kSlack; }

  /// Finds the edges of a row, whose place has room for as many as EdgeRoom, beside those of the
  /// row above it. Returns the end of them, or null where the row is like the one above: then
  /// nothing of use is written. Rows come in order.
  int* FindEdges(int row, int* edges, const int* above, const int* aboveEnd) {
    const unsigned char* const pixels = raster_.ptr(row);
    if (differing_ < kTries && row > 0 &&
        std::memcmp(pixels, pixels - raster_.step[0], rowBytes_) == 0) {
      return nullptr;
    }
    int* const end = findEdges_(pixels, raster_.cols, edges);
    if (end - edges == aboveEnd - above && std::equal(above, aboveEnd, edges)) {
      differing_ = 0;
    } else {
      ++differing_;
    }
    return end;
  }

  const RowKernels& Kernels() const { return kernels_; }

 private:
  // Rows that differ from the one above them make a further such row likely: then their pixels are
  // not compared beforehand.
  static constexpr int kTries = 2;

  const cv::Mat& raster_;
  const int rows_;
  const std::size_t rowBytes_;
  const RowKernels& kernels_;
  int* (*const findEdges_)(const void*, int, int*);
  int differing_ = 0;
};

/// Fills the list, which is empty at entry, with all runs of a raster by row, then by column.
void ListRuns(const cv::Mat& raster, std::vector<Run>& runs);

#endif  // CODER_RUN_SCANNER_H_
