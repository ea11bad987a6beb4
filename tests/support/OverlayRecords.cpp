#include "support/OverlayRecords.h"

#include <gtest/gtest.h>

#include "support/Support.h"

VemVarArray ArrayOf(const std::vector<VemVar>& values) {
  VemVarArray array;
  for (const VemVar& value : values) array.Append(value);
  return array;
}

void ExpectValues(const IVemOverlay& overlay, const std::vector<VemVar>& values) {
  EXPECT_TRUE(Same(overlay.Params, ArrayOf(values))) << testing::PrintToString(overlay.Params);
}

void ExpectNumbers(const VemVarArray& array, const std::vector<VemVar>& values) {
  EXPECT_TRUE(Same(array, ArrayOf(values))) << testing::PrintToString(array);
}

namespace {

void FillRest(IVemOverlay& overlay) {
  overlay.Image = Raster("#.#\n.#.\n");
  overlay.Width = 31;
  overlay.Height = 32;
  overlay.Rows = VemVarArray(33);
  overlay.FirstColumns = VemVarArray(34);
  overlay.LastColumns = VemVarArray(35);
  overlay.SetPen(41, 42, 43, 44);
  overlay.SetBrush(51, 52, 53, 54);
}

}  // namespace

void ExpectRuns(const IVemOverlay& overlay, int row, int first, int last) {
  ExpectNumbers(overlay.Rows, {row});
  ExpectNumbers(overlay.FirstColumns, {first});
  ExpectNumbers(overlay.LastColumns, {last});
}

void ExpectPenAndBrush(const IVemOverlay& overlay) {
  EXPECT_EQ(overlay.PenColor0, 41);
  EXPECT_EQ(overlay.PenColor1, 42);
  EXPECT_EQ(overlay.PenColor2, 43);
  EXPECT_EQ(overlay.PenWidth, 44);
  EXPECT_EQ(overlay.BrushColor0, 51);
  EXPECT_EQ(overlay.BrushColor1, 52);
  EXPECT_EQ(overlay.BrushColor2, 53);
  EXPECT_EQ(overlay.BrushMode, 54);
  EXPECT_TRUE(overlay.RedrawPen);
  EXPECT_TRUE(overlay.RedrawBrush);
}

void ExpectRest(const IVemOverlay& overlay) {
  EXPECT_EQ(Picture(overlay.Image), "#.#\n.#.\n");
  EXPECT_EQ(overlay.Width, 31);
  EXPECT_EQ(overlay.Height, 32);
  ExpectRuns(overlay, 33, 34, 35);
  ExpectPenAndBrush(overlay);
}

IVemOverlay FullOverlay() {
  IVemOverlay overlay;
  FillRest(overlay);
  overlay.SetCircle(VemPoint(1, 2), 3);
  return overlay;
}

void ExpectFullOverlay(const IVemOverlay& overlay) {
  EXPECT_EQ(overlay.Type, VemOverlayCircle);
  ExpectValues(overlay, {2.0, 1.0, 3.0});
  ExpectRest(overlay);
}

VemImage ImageOf(const std::string& picture) {
  VemImage image;
  image.Mat() = Raster(picture);
  return image;
}

VemRegion RegionOf(int width, int height, int row, int first, int last) {
  VemVarArray rows(row);
  VemVarArray firstColumns(first);
  VemVarArray lastColumns(last);
  return VemRegion(width, height, rows, firstColumns, lastColumns);
}

void ExpectRegion(VemRegion& region, int width, int height, const std::vector<Run>& runs) {
  EXPECT_EQ(region.Width(), width);
  EXPECT_EQ(region.Height(), height);
  VemVarArray rows, firstColumns, lastColumns;
  region.GetRegionRuns(&rows, &firstColumns, &lastColumns);
  EXPECT_EQ(RunsOf(rows, firstColumns, lastColumns), runs);
}
