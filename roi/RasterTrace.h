#ifndef ROI_RASTER_TRACE_H_
#define ROI_RASTER_TRACE_H_

#include <opencv2/core.hpp>
#include <vector>

#include "VemRLC.h"

/// What the coder finds in a mask raster.
struct RasterTrace {
  explicit RasterTrace(cv::Mat& raster);

  /// The outlines, outer borders and holes' alike, each with its first vertex again at the end.
  std::vector<std::vector<cv::Point>> ClosedContours();

  VemRLC coder;  ///< Alive around the coder's calls, which take no object.
  std::vector<Run> runs;
  std::vector<cv::Point> points;
  std::vector<int> pointStarts;
};

#endif  // ROI_RASTER_TRACE_H_
