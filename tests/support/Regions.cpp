#include "support/Regions.h"

#include <gtest/gtest.h>

#include "support/PrivateAccess.h"

struct PrivateVemRegionData {
  using Type = VemRegionData* VemRegion::*;
  friend Type PrivateOf(PrivateVemRegionData);
};

template struct PrivateAccess<PrivateVemRegionData, &VemRegion::data_>;

bool operator==(const Outlines& a, const Outlines& b) {
  return a.contours == b.contours && a.hierarchy == b.hierarchy;
}

void PrintTo(const Outlines& outlines, std::ostream* out) {
  *out << outlines.contours.size() << " contours:";
  for (const auto& contour : outlines.contours) {
    *out << " {";
    for (const cv::Point& point : contour) *out << point;
    *out << '}';
  }
  *out << ", hierarchy:";
  for (const auto& record : outlines.hierarchy) *out << ' ' << record;
}

bool operator==(const RegionValue& a, const RegionValue& b) {
  return a.width == b.width && a.height == b.height && a.runs == b.runs && a.outlines == b.outlines;
}

void PrintTo(const RegionValue& region, std::ostream* out) {
  *out << region.width << " by " << region.height << ", runs "
       << testing::PrintToString(region.runs) << ", ";
  PrintTo(region.outlines, out);
}

VemRegionData*& Block(VemRegion& region) { return region.*PrivateOf(PrivateVemRegionData()); }

VemRegion MakeRegion(const RegionValue& plain) {
  VemRegion region;
  VemRegionData& data = *Block(region);
  data.Width = plain.width;
  data.Height = plain.height;
  for (const Run& run : plain.runs) {
    data.Rows.Append(run.Row);
    data.FirstColumns.Append(run.FirstColumn);
    data.LastColumns.Append(run.LastColumn);
  }
  data.Hierarchy = plain.outlines.hierarchy;
  data.Contours = plain.outlines.contours;
  return region;
}

RegionValue ValueOf(VemRegion& region) {
  const VemRegionData& data = *Block(region);
  return {data.Width,
          data.Height,
          RunsOf(data.Rows, data.FirstColumns, data.LastColumns),
          {data.Contours, data.Hierarchy}};
}

VemPointArray PointArray(const std::vector<VemPoint>& points) {
  VemPointArray array;
  for (VemPoint point : points) array.Append(point);
  return array;
}
