#ifndef CODER_RUN_SCANNER_H_
#define CODER_RUN_SCANNER_H_

#include <cstddef>
#include <cstdint>
#include <opencv2/core.hpp>
#include <vector>

#include "VemRLC.h"

/// Reads a raster once, row by row from the top, as maximal runs of foreground.
///
///     for (RunScanner scanner(raster); scanner.NextRow(runs);) {
///       // runs[scanner.RowBegin()] and what follows are the row's runs
///     }
class RunScanner {
 public:
  explicit RunScanner(const cv::Mat& raster);

  /// Appends the runs of the next row; false when there is no further row.
  bool NextRow(std::vector<Run>& runs);

  /// Where the runs of the row before begin. They end where those of the row begin.
  std::size_t AboveBegin() const { return aboveBegin_; }
  /// Where the runs of the row begin. They are the last.
  std::size_t RowBegin() const { return rowBegin_; }

 private:
  std::size_t ExpectedRuns(std::size_t count) const;

  const cv::Mat& raster_;
  int rows_;
  int row_;
  std::size_t aboveBegin_;
  std::size_t rowBegin_;
  std::vector<std::uint64_t> words_;
  std::vector<int> edges_;
};

#endif  // CODER_RUN_SCANNER_H_
