#include "coder/Outlines.h"

#include "coder/RunScanner.h"

void FindOutlines(const cv::Mat& raster, const Outlines& outlines) {
  for (RunScanner scanner(raster); scanner.NextRow(outlines.runs);) continue;
  TraceRuns(outlines);
}
