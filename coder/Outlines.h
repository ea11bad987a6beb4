#ifndef CODER_OUTLINES_H_
#define CODER_OUTLINES_H_

#include <opencv2/core.hpp>

#include "coder/RunTracer.h"

/// Fills the lists, which are empty at entry, with the runs and the outlines of a raster.
void FindOutlines(const cv::Mat& raster, const Outlines& outlines);

#endif  // CODER_OUTLINES_H_
