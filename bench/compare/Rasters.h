#ifndef COMPARE_RASTERS_H_
#define COMPARE_RASTERS_H_

#include <string>
#include <vector>

#include <opencv2/core.hpp>

#include "compare/Compare.h"

struct NamedRaster {
  std::string name;
  cv::Mat raster;
};

/// Nested plates, rings and bars: long runs, few outlines.
cv::Mat SolidRaster(int size);

/// Cells of `grain` by `grain` pixels, each foreground with a chance of `percent`.
cv::Mat NoiseRaster(int size, int grain, int percent);

/// Gray pictures, composed or from the files of the setting, cut where Otsu's method says.
std::vector<NamedRaster> PictureRasters(const Setting& setting);

#endif  // COMPARE_RASTERS_H_
