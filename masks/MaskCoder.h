#ifndef MASKS_MASK_CODER_H_
#define MASKS_MASK_CODER_H_

#include <vector>

#include <opencv2/core.hpp>

#include "VemRLC.h"

// The calls into the coder, in the form in which its users pass them.

/// All runs of a mask raster, by row, then by column.
std::vector<Run> ListRuns(cv::Mat& raster);

/// The runs of a mask raster one component after the other, in the order of their first runs.
std::vector<Run> ListComponentRuns(cv::Mat& raster);

/// The outlines of a mask raster, outer borders and holes' alike, each with its first vertex again
/// at the end.
std::vector<std::vector<cv::Point>> TraceClosed(cv::Mat& raster);

/// As above, of the runs that a raster would have: maximal, by row, then by column.
std::vector<std::vector<cv::Point>> TraceClosed(std::vector<Run>& runs);

#endif  // MASKS_MASK_CODER_H_
