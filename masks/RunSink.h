#ifndef MASKS_RUN_SINK_H_
#define MASKS_RUN_SINK_H_

#include <vector>

#include <opencv2/core.hpp>

#include "VemRLC.h"

/// Takes the runs of a shape, row by row from the top and from left to right: maximal runs, of
/// which no two touch. A row without runs is left out.
class RunSink {
 public:
  /// The runs of one row, `first` to the one before `end`; at least one. The sink may change them.
  virtual void AddRow(Run* first, Run* end) = 0;

 protected:
  ~RunSink() = default;
};

/// Lists the runs.
class RunLister final : public RunSink {
 public:
  explicit RunLister(std::vector<Run>& runs) : runs_(runs) {}
  void AddRow(Run* first, Run* end) override {
    for (const Run* run = first; run != end; ++run) runs_.push_back(*run);
  }

 private:
  std::vector<Run>& runs_;
};

/// Paints the runs into a CV_8UC1 raster with 255. All of them must lie in it.
class RunPainter final : public RunSink {
 public:
  explicit RunPainter(cv::Mat& raster) : raster_(raster) {}
  void AddRow(Run* first, Run* end) override;

 private:
  cv::Mat& raster_;
};

#endif  // MASKS_RUN_SINK_H_
