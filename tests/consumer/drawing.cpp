#include <cstdio>

#include <opencv2/core.hpp>

#include "VemROI.h"
#include "vem/view.h"

int main() {
  cv::Mat picture = cv::Mat::zeros(30, 30, CV_8UC1);
  VemPoint corner(10, 20), opposite(12, 22);
  VemROI roi;
  roi.GenRect1(corner, opposite);
  const bool drawn = vem::draw(picture, roi, vem::draw_style(255, 255, 255, 0, true));
  std::printf("%d pixels drawn\n", cv::countNonZero(picture));
  return drawn && cv::countNonZero(picture) == 9 ? 0 : 1;
}
