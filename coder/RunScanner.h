#ifndef CODER_RUN_SCANNER_H_
#define CODER_RUN_SCANNER_H_

#include <cstddef>
#include <vector>

#include <opencv2/core.hpp>

#include "coder/RowKernels.h"

/// Reads a raster once, from the top, some rows at a time.
class RunScanner {
 public:
  explicit RunScanner(const cv::Mat& raster);

  /// The rows of the raster: none of one of several channels or dimensions.
  int Rows() const { return rows_; }
  int Columns() const { return next_.columns; }
  const RowKernels& Kernels() const { return kernels_; }

  /// Finds the edges of the next rows; false when there are no more. The edges of the row before
  /// them still stand where they were found, unless ForgetAbove has been called.
  bool FindEdges(EdgeRows& found) {
    if (next_.count == 0) return false;
    findEdges_(next_, found);
    return true;
  }

  /// The edges of the rows before are about to be overwritten.
  void ForgetAbove() { next_.above = next_.aboveEnd = nullptr; }

  /// Tells where the edges of the row before stand now.
  void MoveAbove(const Edge* above, const Edge* end) {
    next_.above = above;
    next_.aboveEnd = end;
  }

 private:
  const int rows_;
  const RowKernels& kernels_;
  void (*const findEdges_)(PixelRows&, EdgeRows&);
  PixelRows next_;
};

/// Fills the list, which is empty at entry, with all runs of a raster by row, then by column.
void ListRuns(const cv::Mat& raster, std::vector<Run>& runs);

#endif  // CODER_RUN_SCANNER_H_
