#ifndef CODER_COMPONENTS_H_
#define CODER_COMPONENTS_H_

#include <vector>

#include <opencv2/core.hpp>

#include "VemRLC.h"

/// Finds the 8-connected components of a raster: their runs, one component after the other, in the
/// order of their first runs; and where each component starts in `runs`, with a closing entry. The
/// lists are empty at entry, and stay so without foreground. Returns the number of components.
int FindComponents(const cv::Mat& raster, std::vector<Run>& runs, std::vector<int>& starts);

#endif  // CODER_COMPONENTS_H_
