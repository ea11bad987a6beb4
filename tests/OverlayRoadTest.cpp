#include <functional>
#include <vector>

#include <gtest/gtest.h>

#include "VemOverlay.h"
#include "VemOverlayPath.h"
#include "VemROI.h"
#include "VemRegion.h"
#include "VemRegionArray.h"
#include "support/RunMaskReference.h"
#include "support/Support.h"

namespace {

// The road of a mask from shape to display: shape, runs, region, overlay, path.

VemPointArray PointsOf(std::initializer_list<VemPoint> list) {
  VemPointArray points;
  for (VemPoint point : list) points.Append(point);
  return points;
}

struct Shape {
  const char* name;
  std::vector<double> params;  // The shape's stored numbers.
  std::function<void(VemROI&)> generate;
};

// Every shape but the mask.
std::vector<Shape> Shapes() {
  static VemPoint p(4, 3), q(40, 21), upright(5, 30), center(30, 25);
  static VemPointArray points = PointsOf({{10, 5}, {30, 25}, {5, 20}, {12, 14}});
  const std::vector<double> chain = {5, 10, 25, 30, 20, 5, 14, 12};
  return {
      {"Rect1", {3, 4, 21, 40}, [](VemROI& roi) { roi.GenRect1(p, q); }},
      {"Circle", {25, 30, 12.5}, [](VemROI& roi) { roi.GenCircle(center, 12.5); }},
      {"CircleBeyondTheOrigin", {25, 30, 50}, [](VemROI& roi) { roi.GenCircle(center, 50); }},
      {"Torus",
       {25, 30, 8, 20, 20, 250},
       [](VemROI& roi) { roi.GenTorus(center, 8, 20, 20, 250); }},
      {"Polygon", chain, [](VemROI& roi) { roi.GenPolygon(points); }},
      {"Irregular", chain, [](VemROI& roi) { roi.GenIrregular(points); }},
      {"Rect2", {25, 30, 30, 12, 35}, [](VemROI& roi) { roi.GenRect2(center, 30, 12, 35); }},
      {"Line", {3, 4, 30, 5}, [](VemROI& roi) { roi.GenLine(p, upright); }},
      {"Ellipse", {25, 30, 20, 9, 35}, [](VemROI& roi) { roi.GenEllipse(center, 20, 9, 35); }},
      {"Arc", {25, 30, 15, 10, 200}, [](VemROI& roi) { roi.GenArc(center, 15, 10, 200); }},
      {"Point", {4, 3}, [](VemROI& roi) { roi.GenPoint(p); }},
  };
}

RunMask MaskOf(const VemROI& roi) {
  RunMask mask;
  VemVarArray rows, firstColumns, lastColumns;
  mask.width = 100;
  mask.height = 100;
  mask.result = roi.GetMask(&rows, &firstColumns, &lastColumns, &mask.width, &mask.height);
  mask.runs = RunsOf(rows, firstColumns, lastColumns);
  return mask;
}

VemRegion RegionOf(const RunMask& mask) {
  VemVarArray rows, firstColumns, lastColumns;
  for (const ::Run& run : mask.runs) {
    rows.Append(run.Row);
    firstColumns.Append(run.FirstColumn);
    lastColumns.Append(run.LastColumn);
  }
  return VemRegion(mask.width, mask.height, rows, firstColumns, lastColumns);
}

void ExpectRegion(VemRegion& region, const RunMask& expected) {
  VemVarArray rows, firstColumns, lastColumns;
  region.GetRegionRuns(&rows, &firstColumns, &lastColumns);
  EXPECT_EQ(RunsOf(rows, firstColumns, lastColumns), expected.runs);
  EXPECT_EQ(region.Width(), expected.width);
  EXPECT_EQ(region.Height(), expected.height);
}

void ExpectOverlay(VemOverlay& overlay, const RunMask& expected) {
  EXPECT_EQ(overlay.OverlayType(), VemOverlayRegion);
  VemRegion region;
  EXPECT_TRUE(overlay.GetRegion(&region));
  ExpectRegion(region, expected);
}

// Every stage is changed or dropped once the next one is made.
void ExpectRoad(VemROI roi, const RunMask& expected) {
  const RunMask mask = MaskOf(roi);
  ASSERT_EQ(mask, expected);
  roi.Reset();

  VemOverlay overlay;
  {
    VemRegion region = RegionOf(mask);
    ExpectRegion(region, expected);
    VemRegionArray regions;
    regions.Append(region);
    region = VemRegion();
    ASSERT_EQ(regions.Length(), 1);
    regions.Select(0, &region);
    ExpectRegion(region, expected);
    VemRegion read = static_cast<const VemRegionArray&>(regions)[0];
    regions.Clear();
    ExpectRegion(read, expected);
    overlay.GenRegion(read);
    read = VemRegion();
  }
  ExpectOverlay(overlay, expected);

  VemOverlayPath path;
  path.AddOverlay(overlay);
  overlay.Reset();
  VemOverlayPath copy(path);
  path[0].Reset();
  ASSERT_EQ(copy.Length(), 1);
  ExpectOverlay(copy[0], expected);
}

TEST(OverlayRoad, RunsOfEveryShapeArrive) {
  for (const Shape& shape : Shapes()) {
    SCOPED_TRACE(shape.name);
    VemROI roi;
    shape.generate(roi);
    const RunMask expected = ReferenceRunMask(roi.ROIType(), shape.params, 100, 100);
    EXPECT_EQ(expected.runs.empty(), roi.ROIType() == VemROIPoint);
    ExpectRoad(roi, expected);
  }
}

TEST(OverlayRoad, RunsOfAPolygonArrive) {
  VemPointArray points = PointsOf({{1, 1}, {5, 1}, {3, 3}});
  VemROI roi;
  roi.GenPolygon(points);
  ExpectRoad(roi, {true, {{1, 1, 5}, {2, 2, 4}, {3, 3, 3}}, 7, 5});
}

TEST(OverlayRoad, RunsOfAMaskArrive) {
  const RunMask mask = {true, {{7, 2, 90}, {3, 4, 5}, {3, 5, 6}}, 60, 50};
  VemVarArray rows, firstColumns, lastColumns;
  RegionOf(mask).GetRegionRuns(&rows, &firstColumns, &lastColumns);
  VemROI roi;
  roi.GenMask(rows, firstColumns, lastColumns, 60, 50);
  ExpectRoad(roi, mask);
}

}  // namespace
