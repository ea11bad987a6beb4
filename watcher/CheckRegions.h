#ifndef WATCHER_CHECK_REGIONS_H_
#define WATCHER_CHECK_REGIONS_H_

#include <algorithm>
#include <cstddef>
#include <vector>

#include <opencv2/core.hpp>

#include "VemData.h"
#include "values/Processor.h"
#include "watcher/Behind.h"
#include "watcher/CheckValues.h"
#include "watcher/Report.h"

/// Checks of regions and of the coder.
namespace watcher {
namespace checks {

// --- Regions ---

inline bool RefuseLengths(const Call& call, const VemVarArray& rows, const VemVarArray& firsts,
                          const VemVarArray& lasts) {
  const std::size_t length = SizeOf(rows);
  return call.Refuse(SizeOf(firsts) != length || SizeOf(lasts) != length,
                     "the arrays differ in length");
}

// The rows tell how many runs there are.
inline bool DifferInLength(const Call& call, std::size_t rows, std::size_t firsts,
                           std::size_t lasts) {
  if (firsts == rows && lasts == rows) return false;
  call.Tell(Kind::kNoEffect, "rows %zu, firstColumns %zu, lastColumns %zu: the rows alone count",
            rows, firsts, lasts);
  return true;
}

inline void PaintedRuns(const Call& call, const IVemROIPara&, const VemVarArray& rows,
                        const VemVarArray& firsts, const VemVarArray& lasts, int, int) {
  DifferInLength(call, SizeOf(rows), SizeOf(firsts), SizeOf(lasts));
}

inline bool DifferInLength(const Call& call, const VemRegion& region) {
  const VemRegionData& data = Behind(region);
  return DifferInLength(call, SizeOf(data.Rows), SizeOf(data.FirstColumns),
                        SizeOf(data.LastColumns));
}

inline bool RefuseCanvas(const Call& call, int width, int height) {
  return call.Refuse(width < 1 || height < 1, "the canvas is below 1 by 1");
}

// No runs give the empty region, which is what they ask for.
inline void RegionOfRuns(const Call& call, const VemVarArray& rows, const VemVarArray& firsts,
                         const VemVarArray& lasts) {
  RefuseLengths(call, rows, firsts, lasts);
}

inline void RegionOnCanvas(const Call& call, int width, int height, const VemVarArray& rows,
                           const VemVarArray& firsts, const VemVarArray& lasts) {
  if (RefuseLengths(call, rows, firsts, lasts)) return;
  if (SizeOf(rows) > 0 || width != 0 || height != 0) RefuseCanvas(call, width, height);
}

// The largest coordinate is found as the library finds it.
inline void RegionOfPoints(const Call& call, const VemPointArray& points) {
  const std::vector<VemPoint>& list = Behind(points);
  if (list.empty()) return call.Tell(Kind::kObject, "points is empty");
  int largestX = TruncateToInt(list[0].x);
  int largestY = TruncateToInt(list[0].y);
  for (const VemPoint& point : list) {
    if (point.x > static_cast<double>(largestX)) largestX = TruncateToInt(point.x);
    if (point.y > static_cast<double>(largestY)) largestY = TruncateToInt(point.y);
  }
  if (call.Refuse(largestX < 1, "no point lies right of column 0")) return;
  call.Refuse(largestY < 1, "no point lies below row 0");
}

inline void PointsOnCanvas(const Call& call, int width, int height, const VemPointArray&) {
  RefuseCanvas(call, width, height);
}

inline void AppendRuns(const Call& call, const IVemRegionArrayPara&, int, int,
                       const std::vector<int>& rows, const std::vector<int>& firsts,
                       const std::vector<int>& lasts) {
  if (call.Refuse(rows.empty(), "rows is empty")) return;
  if (call.Refuse(firsts.size() != rows.size(), "rows and firstColumns differ in length")) return;
  if (call.Refuse(lasts.empty(), "lastColumns is empty")) return;
  DifferInLength(call, rows.size(), firsts.size(), lasts.size());
}

template <typename Array, typename... Args>
void AppendRegion(const Call& call, const Array&, const VemRegion& region, Args&...) {
  DifferInLength(call, region);
}

template <typename Array>
void ReplaceRegion(const Call& call, const Array& self, int index, const VemRegion& region) {
  if (call.InRange(index, SizeOf(self))) DifferInLength(call, region);
}

// Of the two tracks, the longer one tells what there is.
inline std::size_t LongerTrack(const IVemRegionArrayPara& self) {
  return std::max(self.Rows.size(), self.Hierarchies.size());
}

inline void RemoveItem(const Call& call, const IVemRegionArrayPara& self, int position) {
  call.InRange(position, LongerTrack(self));
}

inline void SwapItems(const Call& call, const IVemRegionArrayPara& self, int a, int b) {
  if (call.InRange(a, LongerTrack(self), 0)) call.InRange(b, LongerTrack(self), 1);
}

inline void AppendOutlines(const Call& call, const IVemRegionArrayPara&,
                           const std::vector<std::vector<cv::Point>>& contours,
                           const std::vector<cv::Vec4i>& hierarchy, bool) {
  if (contours.size() == hierarchy.size()) return;
  call.Tell(Kind::kNoEffect, "contours %zu, hierarchy %zu: nothing keeps them in step",
            contours.size(), hierarchy.size());
}

// Outlines go into a track of their own.
inline void InsertRegion(const Call& call, const IVemRegionArrayPara& self, int position,
                         const VemRegion& region) {
  if (position < 0 || static_cast<std::size_t>(position) > SizeOf(self)) {
    call.InRange(position, SizeOf(self));
  } else if (!Behind(region).Hierarchy.empty() &&
             static_cast<std::size_t>(position) > self.Hierarchies.size()) {
    call.Tell(Kind::kNoEffect, "the outlines are lost, %d of the regions before have any",
              static_cast<int>(self.Hierarchies.size()));
  } else {
    DifferInLength(call, region);
  }
}
inline void InsertRegion(const Call& call, const VemRegionArray& self, int index,
                         const VemRegion& region) {
  InsertRegion(call, Behind(self), index, region);
}

// --- The coder ---

inline void IsRaster(const Call& call, const cv::Mat& raster) {
  if (raster.dims > 2) {
    call.Tell(Kind::kNoEffect, "raster has %d dimensions, and counts as one without foreground",
              raster.dims);
  } else if (raster.channels() != 1) {
    call.Tell(Kind::kNoEffect, "raster has %d channels, and counts as one without foreground",
              raster.channels());
  }
}

template <typename Object, typename... Args>
void Raster(const Call& call, const Object&, const cv::Mat& raster, Args&...) {
  IsRaster(call, raster);
}
template <typename... Args>
void Raster(const Call& call, const cv::Mat& raster, const char&, Args&...) {
  IsRaster(call, raster);
}

// Each outline's points lie between its start and the next one's.
inline void Starts(const Call& call, const std::vector<cv::Point>& points,
                   const std::vector<int>& pointStarts,
                   const std::vector<std::vector<cv::Point>>&) {
  int last = 0;
  for (const int start : pointStarts) {
    if (start < last)
      return call.Tell(Kind::kIndex, "a start of %d follows one of %d", start, last);
    if (static_cast<std::size_t>(start) > points.size()) {
      return call.Tell(Kind::kIndex, "a start of %d, points %zu", start, points.size());
    }
    last = start;
  }
}

}  // namespace checks
}  // namespace watcher

#endif  // WATCHER_CHECK_REGIONS_H_
