#include "coder/Outlines.h"

#include "coder/RunScanner.h"

void FindOutlines(const cv::Mat& raster, const Outlines& outlines) {
  ListRuns(raster, outlines.runs);
  TraceRuns(outlines);
}
