#include "masks/MaskCoder.h"

#include <utility>

#include "coder/RunTracer.h"

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

namespace {

/// The lists in which outlines are told.
struct OutlineLists {
  std::vector<std::vector<cv::Point>> Close() {
    std::vector<std::vector<cv::Point>> contours;
    VemRLC::Convert(points, pointStarts, contours);
    for (std::vector<cv::Point>& contour : contours) contour.push_back(contour.front());
    return contours;
  }

  std::vector<cv::Point> points;
  std::vector<int> pointStarts;
  std::vector<cv::Vec4i> hierarchy;
  std::vector<int> runStarts;
};

}  // namespace

std::vector<std::vector<cv::Point>> TraceClosed(cv::Mat& raster) {
  const VemRLC coder;  // Alive around the calls, which take no object.
  OutlineLists lists;
  std::vector<Run> runs;
  VemRLC::FindContours(raster, 1, &lists.points, &lists.pointStarts, &lists.hierarchy, nullptr,
                       &runs, &lists.runStarts, true, -1, -1, 1, false);
  return lists.Close();
}

std::vector<std::vector<cv::Point>> TraceClosed(std::vector<Run>& runs) {
  OutlineLists lists;
  TraceRuns({lists.points, lists.pointStarts, lists.hierarchy, runs, lists.runStarts});
  return lists.Close();
}
