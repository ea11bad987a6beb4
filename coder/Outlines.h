#ifndef CODER_OUTLINES_H_
#define CODER_OUTLINES_H_

#include <opencv2/core.hpp>
#include <vector>

#include "VemRLC.h"

/// The outlines of a raster, flat: see VemRLC::FindContours.
struct Outlines {
  std::vector<cv::Point>& points;
  std::vector<int>& pointStarts;
  std::vector<cv::Vec4i>& hierarchy;
  std::vector<Run>& runs;
  std::vector<int>& runStarts;
};

/// Fills the lists, which are empty at entry.
void FindOutlines(const cv::Mat& raster, const Outlines& outlines);

/// As FindOutlines, of the runs that `outlines.runs` holds at entry: maximal, by row, then by
/// column. Their rows and columns may be any, but for the outermost eight columns of `int`.
void TraceRuns(const Outlines& outlines);

#endif  // CODER_OUTLINES_H_
