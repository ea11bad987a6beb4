#include "roi/RasterTrace.h"

RasterTrace::RasterTrace(cv::Mat& raster) {
  std::vector<cv::Vec4i> hierarchy;
  std::vector<int> runStarts;
  VemRLC::FindContours(raster, 1, &points, &pointStarts, &hierarchy, nullptr, &runs, &runStarts,
                       true, -1, -1, 1, false);
}

std::vector<std::vector<cv::Point>> RasterTrace::ClosedContours() {
  std::vector<std::vector<cv::Point>> contours;
  VemRLC::Convert(points, pointStarts, contours);
  for (std::vector<cv::Point>& contour : contours) contour.push_back(cv::Point(contour.front()));
  return contours;
}
