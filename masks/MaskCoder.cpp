#include "masks/MaskCoder.h"

#include <utility>

std::vector<Run> ListRuns(cv::Mat& raster) {
  VemRLC coder;
  coder.SetParam(1, 6, true, -1, -1, 1, false, false);
  coder.Calc(raster, true);
  return std::move(coder.FillRuns);
}

std::vector<Run> ListComponentRuns(cv::Mat& raster) {
  VemRLC coder;
  coder.SetParam(1, 9, false, -1, -1, -1, false, false);
  coder.Calc(raster, true);
  if (coder.ComponentCount <= 0) return {};
  return std::move(coder.ComponentRuns);
}

std::vector<std::vector<cv::Point>> TraceClosed(cv::Mat& raster) {
  const VemRLC coder;  // Alive around the calls, which take no object.
  std::vector<cv::Point> points;
  std::vector<int> pointStarts;
  std::vector<cv::Vec4i> hierarchy;
  std::vector<Run> runs;
  std::vector<int> runStarts;
  VemRLC::FindContours(raster, 1, &points, &pointStarts, &hierarchy, nullptr, &runs, &runStarts,
                       true, -1, -1, 1, false);
  std::vector<std::vector<cv::Point>> contours;
  VemRLC::Convert(points, pointStarts, contours);
  for (std::vector<cv::Point>& contour : contours) contour.push_back(cv::Point(contour.front()));
  return contours;
}
