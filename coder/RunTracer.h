#ifndef CODER_RUN_TRACER_H_
#define CODER_RUN_TRACER_H_

#include <vector>

#include <opencv2/core.hpp>

#include "VemRLC.h"

/// The outlines of a raster, flat: see VemRLC::FindContours.
struct Outlines {
  std::vector<cv::Point>& points;
  std::vector<int>& pointStarts;
  std::vector<cv::Vec4i>& hierarchy;
  std::vector<Run>& runs;
  std::vector<int>& runStarts;
};

/// Fills the other lists, which are empty at entry, with the outlines of the runs that
/// `outlines.runs` holds: maximal, by row, then by column. Rows may be missing; rows and columns
/// may be any, but for the outermost eight columns of `int`. Needs nothing of the coder but `Run`
/// and coder/SideLinks.cpp.
void TraceRuns(const Outlines& outlines);

#endif  // CODER_RUN_TRACER_H_
