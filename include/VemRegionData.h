#ifndef VEM_REGION_DATA_H_
#define VEM_REGION_DATA_H_

#include <vector>

#include <opencv2/core.hpp>

#include "VemTuple.h"

/// What a VemRegion keeps: a canvas, runs, and an optional description of outlines that nothing
/// keeps in step with the runs.
///
/// Copies are deep. Use an object from one thread at a time; reading it from several at once is
/// safe.
struct VemRegionData {
  int Width = 0;                                       ///< Columns of the canvas.
  int Height = 0;                                      ///< Rows of the canvas.
  VemVarArray Rows;                                    ///< The row of each run.
  VemVarArray FirstColumns;                            ///< The first column of each run.
  VemVarArray LastColumns;                             ///< The last column of each run, included.
  std::vector<cv::Vec<int, 4>> Hierarchy;              ///< Outline tree, in OpenCV's layout.
  std::vector<std::vector<cv::Point_<int>>> Contours;  ///< The outlines.
};

#endif  // VEM_REGION_DATA_H_
