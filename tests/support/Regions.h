#ifndef TESTS_SUPPORT_REGIONS_H_
#define TESTS_SUPPORT_REGIONS_H_

#include <vector>

#include <opencv2/core.hpp>

#include "VemRegion.h"
#include "VemRegionData.h"
#include "support/Support.h"

using Hierarchy = std::vector<cv::Vec<int, 4>>;
using Contours = std::vector<std::vector<cv::Point_<int>>>;

/// The outlines of a region.
struct Outlines {
  Contours contours;
  Hierarchy hierarchy;
};

bool operator==(const Outlines& a, const Outlines& b);
void PrintTo(const Outlines& outlines, std::ostream* out);

/// Canvas, runs and outlines of a region as plain values.
struct RegionValue {
  int width = 0;
  int height = 0;
  std::vector<Run> runs;
  Outlines outlines;
};

bool operator==(const RegionValue& a, const RegionValue& b);
void PrintTo(const RegionValue& region, std::ostream* out);

VemPointArray PointArray(const std::vector<VemPoint>& points);

/// The block behind a region.
VemRegionData*& Block(VemRegion& region);
VemRegion MakeRegion(const RegionValue& plain);
RegionValue ValueOf(VemRegion& region);

#endif  // TESTS_SUPPORT_REGIONS_H_
