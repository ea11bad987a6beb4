#ifndef MASKS_RUN_SINK_H_
#define MASKS_RUN_SINK_H_

#include <cstddef>
#include <memory>
#include <vector>

#include <opencv2/core.hpp>

#include "VemRLC.h"

/// Takes the runs of a shape, row by row from the top and from left to right: maximal runs, of
/// which no two touch.
class RunSink {
 public:
  /// The next runs, `first` to the one before `end`; at least one. The sink may change them.
  virtual void Add(Run* first, Run* end) = 0;

 protected:
  ~RunSink() = default;
};

/// Hands runs to a sink, many at a time.
class RunBatch {
 public:
  explicit RunBatch(RunSink& sink) : sink_(sink) { SetRoom(kRoom); }
  RunBatch(const RunBatch&) = delete;
  RunBatch& operator=(const RunBatch&) = delete;

  /// Where the next runs go: there is room for `count`.
  Run* Room(std::size_t count) {
    if (static_cast<std::size_t>(limit_ - end_) < count) MakeRoom(count);
    return end_;
  }

  /// Takes the runs that were written there, up to the one before `end`.
  void Take(Run* end) { end_ = end; }

  /// Hands out what is left.
  void Finish();

 private:
  static constexpr std::size_t kRoom = 512;

  void MakeRoom(std::size_t count);

  // What is written to later is not cleared.
  void SetRoom(std::size_t count) {
    runs_.reset(new Run[count]);
    end_ = runs_.get();
    limit_ = end_ + count;
  }

  RunSink& sink_;
  std::unique_ptr<Run[]> runs_;
  Run* end_;
  const Run* limit_;
};

/// Lists the runs.
class RunLister final : public RunSink {
 public:
  explicit RunLister(std::vector<Run>& runs) : runs_(runs) {}
  void Add(Run* first, Run* end) override { runs_.insert(runs_.end(), first, end); }

 private:
  std::vector<Run>& runs_;
};

/// Paints the runs into a CV_8UC1 raster with 255. All of them must lie in it.
class RunPainter final : public RunSink {
 public:
  explicit RunPainter(cv::Mat& raster) : raster_(raster) {}
  void Add(Run* first, Run* end) override;

 private:
  cv::Mat& raster_;
};

#endif  // MASKS_RUN_SINK_H_
