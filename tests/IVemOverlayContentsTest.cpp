#include "IVemOverlay.h"

#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/OverlayKinds.h"
#include "support/OverlayRecords.h"
#include "support/Support.h"

namespace {

// All const, but for the region's.
constexpr bool (IVemOverlay::*kGetText)(VemPoint*, VemVarArray*,
                                        VemFont*) const = &IVemOverlay::GetText;
constexpr bool (IVemOverlay::*kGetImage)(VemPoint*, VemImage*) const = &IVemOverlay::GetImage;
constexpr bool (IVemOverlay::*kGetRegion)(VemRegion*) = &IVemOverlay::GetRegion;

// --- Text ---

VemFont SomeFont() {
  VemFont font;
  font.Name = VemVar("Mono");
  font.Size = 5000000000L;
  font.Weight = -7;
  font.Flag0 = 1;
  font.Flag1 = 128;
  font.Flag2 = 255;
  font.Flag3 = 4;
  return font;
}

TEST(IVemOverlayContents, TextIsStored) {
  IVemOverlay overlay = FullOverlay();
  VemPoint point(1.5, 2.5);
  VemFont font = SomeFont();
  std::string text = "width 12.4";
  overlay.SetText(point, text.c_str(), font);
  text[0] = 'X';
  font.Name = VemVar("Changed");
  EXPECT_EQ(overlay.OverlayType(), 16);
  ExpectValues(overlay, {2.5, 1.5, "width 12.4", 5000000000L, -7L, 128, 255, 4, "Mono"});
  ExpectRest(overlay);
}

TEST(IVemOverlayContents, TextIsRead) {
  IVemOverlay overlay;
  VemPoint point(16777217.0, 16777219.0);
  VemFont font = SomeFont();
  overlay.SetText(point, "", font);
  VemPoint place;
  VemVarArray text = ArrayOf({1, 2, 3});
  VemFont read;
  read.Flag0 = 77;
  EXPECT_TRUE((overlay.*kGetText)(&place, &text, &read));
  EXPECT_EQ(place.x, 16777216.0);
  EXPECT_EQ(place.y, 16777220.0);
  ExpectNumbers(text, {""});
  EXPECT_STREQ(read.Name.S(), "Mono");
  EXPECT_NE(read.Name.S(), font.Name.S());
  EXPECT_EQ(read.Size, 5000000000L);
  EXPECT_EQ(read.Weight, -7);
  EXPECT_EQ(read.Flag0, 77);
  EXPECT_EQ(read.Flag1, 128);
  EXPECT_EQ(read.Flag2, 255);
  EXPECT_EQ(read.Flag3, 4);
}

TEST(IVemOverlayContents, TextThatIsNoTextStaysUnread) {
  IVemOverlay overlay;
  overlay.Type = VemOverlayText;
  overlay.Params = ArrayOf({2, 1, 3, 4.9, 5.9, 257, -1, 0x10000000AL, 8});
  VemPoint place;
  VemVarArray text = ArrayOf({"old", 2});
  VemFont font;
  EXPECT_TRUE(overlay.GetText(&place, &text, &font));
  ExpectNumbers(text, {"old", 2});
  EXPECT_EQ(font.Size, 4);
  EXPECT_EQ(font.Weight, 5);
  EXPECT_EQ(font.Flag1, 1);
  EXPECT_EQ(font.Flag2, 255);
  EXPECT_EQ(font.Flag3, 10);
  EXPECT_TRUE(Same(font.Name, 8));
}

// A flag is the low byte of the number as a 64-bit integer: as one of 32 bits these would be the
// smallest, whose low byte is 0.
TEST(IVemOverlayContents, FlagsOfATextAreReadFrom64Bits) {
  IVemOverlay overlay;
  overlay.Type = VemOverlayText;
  overlay.Params = ArrayOf({2, 1, "text", 9, 1, 3000000001.0, -3000000002.0, 8589934595.0, "Mono"});
  VemPoint place;
  VemVarArray text;
  VemFont font;
  EXPECT_TRUE(overlay.GetText(&place, &text, &font));
  EXPECT_EQ(font.Flag1, 1);    // 3000000001 is 11718750 times 256, and 1.
  EXPECT_EQ(font.Flag2, 254);  // And -3000000002 is 2 short of a multiple.
  EXPECT_EQ(font.Flag3, 3);
}

TEST(IVemOverlayContents, TextOfAnotherKindOrWithoutValuesIsNotRead) {
  IVemOverlay circle = FullOverlay();
  IVemOverlay empty;
  empty.Type = VemOverlayText;
  for (const IVemOverlay* overlay : {&circle, &empty}) {
    VemPoint place(-1, -2);
    VemVarArray text("old");
    VemFont font;
    EXPECT_FALSE(overlay->GetText(&place, &text, &font));
    EXPECT_EQ(place.x, -1);
    EXPECT_EQ(place.y, -2);
    ExpectNumbers(text, {"old"});
    EXPECT_STREQ(font.Name.S(), "Times");
    EXPECT_EQ(font.Size, 9);
  }
}

// --- Image ---

TEST(IVemOverlayContents, ImageIsStoredWithPixelsOfItsOwn) {
  IVemOverlay overlay = FullOverlay();
  const IVemOverlay sharing(overlay);
  VemPoint point(1.5, 2.5);
  VemImage image = ImageOf("##.\n..#\n");
  overlay.SetImage(point, image);
  image.Mat().setTo(0);
  EXPECT_EQ(overlay.OverlayType(), 18);
  ExpectValues(overlay, {1.5, 2.5});
  EXPECT_EQ(Picture(overlay.Image), "##.\n..#\n");
  EXPECT_EQ(overlay.Width, 31);
  ExpectRuns(overlay, 33, 34, 35);
  ExpectPenAndBrush(overlay);
  ExpectFullOverlay(sharing);
}

TEST(IVemOverlayContents, ImageIsReadIntoFreshPixels) {
  IVemOverlay overlay;
  VemPoint point(16777217.0, 16777219.0);
  VemImage image = ImageOf("##.\n..#\n");
  overlay.SetImage(point, image);
  VemPoint place;
  VemImage target = ImageOf("...\n...\n");
  VemImage sharing = target;
  EXPECT_TRUE((overlay.*kGetImage)(&place, &target));
  EXPECT_EQ(place.x, 16777216.0);
  EXPECT_EQ(place.y, 16777220.0);
  EXPECT_EQ(Picture(target.Mat()), "##.\n..#\n");
  EXPECT_EQ(Picture(sharing.Mat()), "...\n...\n");
  target.Mat().setTo(0);
  EXPECT_EQ(Picture(overlay.Image), "##.\n..#\n");
}

TEST(IVemOverlayContents, EmptyImageIsTaken) {
  IVemOverlay overlay = FullOverlay();
  VemPoint point(1, 2);
  VemImage empty;
  overlay.SetImage(point, empty);
  VemImage target = ImageOf("#\n");
  EXPECT_TRUE(overlay.GetImage(&point, &target));
  EXPECT_EQ(target.Width(), 0);
  EXPECT_EQ(target.ImageData(), nullptr);
}

TEST(IVemOverlayContents, PixelsOutliveTheirKind) {
  IVemOverlay overlay;
  VemPoint point(1, 2);
  VemImage image = ImageOf("#.\n");
  overlay.SetImage(point, image);
  overlay.SetPoint(VemPoint(3, 4));
  VemPoint place(-1, -2);
  VemImage target = ImageOf(".#\n");
  EXPECT_FALSE(overlay.GetImage(&place, &target));
  EXPECT_EQ(place.x, -1);
  EXPECT_EQ(Picture(target.Mat()), ".#\n");
  EXPECT_EQ(Picture(overlay.Image), "#.\n");
  image = ImageOf("###\n");
  overlay.SetImage(point, image);
  EXPECT_EQ(Picture(overlay.Image), "###\n");
}

TEST(IVemOverlayContents, ImageIsReadWithoutAPlace) {
  IVemOverlay overlay;
  overlay.Type = VemOverlayImage;
  overlay.Image = Raster("#.\n");
  VemPoint place;
  VemImage target;
  EXPECT_TRUE(overlay.GetImage(&place, &target));
  EXPECT_EQ(Picture(target.Mat()), "#.\n");
}

// --- Region ---

TEST(IVemOverlayContents, RegionIsStored) {
  IVemOverlay overlay = FullOverlay();
  VemRegion region = RegionOf(7, 8, 1, 2, 3);
  overlay.SetRegion(region);
  region = RegionOf(9, 9, 4, 4, 4);
  EXPECT_EQ(overlay.OverlayType(), 19);
  ExpectValues(overlay, {});
  EXPECT_EQ(overlay.Width, 7);
  EXPECT_EQ(overlay.Height, 8);
  ExpectRuns(overlay, 1, 2, 3);
  EXPECT_EQ(Picture(overlay.Image), "#.#\n.#.\n");
  ExpectPenAndBrush(overlay);

  VemRegion read = RegionOf(9, 9, 4, 4, 4);
  EXPECT_TRUE((overlay.*kGetRegion)(&read));
  ExpectRegion(read, 7, 8, {{1, 2, 3}});
}

TEST(IVemOverlayContents, RegionOfAnotherKindIsNotRead) {
  IVemOverlay overlay = FullOverlay();
  VemRegion region = RegionOf(9, 9, 4, 5, 6);
  EXPECT_FALSE(overlay.GetRegion(&region));
  ExpectRegion(region, 9, 9, {{4, 5, 6}});
}

// --- From other objects ---

struct ShapeCase {
  const char* name;
  VemOverlayType type;
  std::vector<VemVar> values;
  std::function<void(VemROI&)> generate;
};

VemPointArray Triangle() {
  VemPointArray points;
  for (VemPoint point : {VemPoint(1, 2), VemPoint(3, 4), VemPoint(5, 7)}) points.Append(point);
  return points;
}

std::vector<ShapeCase> ShapeCases() {
  static VemPoint p(1, 2), q(3, 5);
  static VemPointArray points = Triangle();
  const std::vector<VemVar> triangle = {2.0, 1.0, 4.0, 3.0, 7.0, 5.0};
  return {
      {"Rect1", VemOverlayRect1, {2.0, 1.0, 5.0, 3.0}, [](VemROI& r) { r.GenRect1(p, q); }},
      {"Circle", VemOverlayCircle, {2.0, 1.0, 6.0}, [](VemROI& r) { r.GenCircle(p, 6); }},
      {"Torus",
       VemOverlayTorus,
       {2.0, 1.0, 6.0, 7.0, 8.0, 9.0},
       [](VemROI& r) { r.GenTorus(p, 6, 7, 8, 9); }},
      {"Polygon", VemOverlayPolygon, triangle, [](VemROI& r) { r.GenPolygon(points); }},
      {"Irregular", VemOverlayIrregular, triangle, [](VemROI& r) { r.GenIrregular(points); }},
      {"Rect2",
       VemOverlayRect2,
       {2.0, 1.0, 6.0, 7.0, 8.0},
       [](VemROI& r) { r.GenRect2(p, 6, 7, 8); }},
      {"Line", VemOverlayLine, {2.0, 1.0, 5.0, 3.0}, [](VemROI& r) { r.GenLine(p, q); }},
      {"Ellipse",
       VemOverlayEllipse,
       {2.0, 1.0, 6.0, 7.0, 8.0},
       [](VemROI& r) { r.GenEllipse(p, 6, 7, 8); }},
      {"Arc", VemOverlayArc, {2.0, 1.0, 6.0, 7.0, 8.0}, [](VemROI& r) { r.GenArc(p, 6, 7, 8); }},
      {"Point", VemOverlayPoint, {1.0, 2.0}, [](VemROI& r) { r.GenPoint(p); }},
      {"Mask",
       VemOverlayRegion,
       {},
       [](VemROI& r) {
         VemVarArray row(1);
         r.GenMask(row, row, row, 4, 4);
       }},
  };
}

TEST(IVemOverlayContents, ShapeGivesKindAndValues) {
  for (const ShapeCase& c : ShapeCases()) {
    SCOPED_TRACE(c.name);
    VemROI roi;
    c.generate(roi);
    IVemOverlay overlay = FullOverlay();
    overlay.FromROI(roi);
    roi.Reset();
    EXPECT_EQ(overlay.OverlayType(), c.type);
    ExpectValues(overlay, c.values);
    ExpectRest(overlay);
  }
}

TEST(IVemOverlayContents, NoShapeLeavesTheValues) {
  IVemOverlay overlay = FullOverlay();
  overlay.FromROI(VemROI());
  EXPECT_EQ(overlay.OverlayType(), 20);
  ExpectValues(overlay, {2.0, 1.0, 3.0});
  ExpectRest(overlay);
}

TEST(IVemOverlayContents, ArcOfAShapeReadsWithXAndYExchanged) {
  VemROI roi;
  VemPoint center(1, 2);
  roi.GenArc(center, 3, 4, 5);
  IVemOverlay overlay;
  overlay.FromROI(roi);
  EXPECT_EQ(KindOf(VemOverlayArc).get(overlay), (Reading{true, {2, 1, 3, 4, 5}}));
}

TEST(IVemOverlayContents, MaskComesWithoutItsRuns) {
  VemROI roi;
  VemVarArray row(1);
  roi.GenMask(row, row, row, 4, 4);
  IVemOverlay fresh;
  fresh.FromROI(roi);
  VemRegion region = RegionOf(9, 9, 4, 5, 6);
  EXPECT_TRUE(fresh.GetRegion(&region));
  ExpectRegion(region, 0, 0, {});
  IVemOverlay full = FullOverlay();
  full.FromROI(roi);
  EXPECT_TRUE(full.GetRegion(&region));
  ExpectRegion(region, 31, 32, {{33, 34, 35}});
}

VemContour ContourOf(VemPointArray points) {
  VemContour contour;
  contour.FromPointArray(points);
  return contour;
}

TEST(IVemOverlayContents, ContourIsAddedToTheValues) {
  IVemOverlay overlay;
  const VemContour contour = ContourOf(Triangle());
  overlay.FromContour(contour);
  EXPECT_EQ(overlay.OverlayType(), 15);
  ExpectValues(overlay, {2.0, 1.0, 4.0, 3.0, 7.0, 5.0});
  overlay.FromContour(contour);
  EXPECT_EQ(KindOf(VemOverlayIrregular).get(overlay),
            (Reading{true, {1, 2, 3, 4, 5, 7, 1, 2, 3, 4, 5, 7}}));

  IVemOverlay circle = FullOverlay();
  circle.FromContour(contour);
  EXPECT_EQ(circle.OverlayType(), 15);
  ExpectValues(circle, {2.0, 1.0, 3.0, 2.0, 1.0, 4.0, 3.0, 7.0, 5.0});
  ExpectRest(circle);
}

TEST(IVemOverlayContents, ShortContourIsTaken) {
  IVemOverlay overlay;
  overlay.FromContour(VemContour());
  EXPECT_EQ(overlay.OverlayType(), 15);
  VemPointArray points = Triangle();
  EXPECT_FALSE(overlay.GetIrregular(&points));
  EXPECT_EQ(points.Length(), 3);
  points.Remove(0);
  overlay.FromContour(ContourOf(points));
  EXPECT_FALSE(overlay.GetIrregular(&points));
  EXPECT_EQ(points.Length(), 2);
}

TEST(IVemOverlayContents, UnknownShapeLeavesTheValues) {
  VemROI roi;
  IVemROIPara* para = nullptr;
  std::memcpy(&para, &roi, sizeof(para));  // A handle is one pointer.
  for (const int type : {-1, 12, 99}) {
    para->Type = static_cast<VemROIType>(type);
    IVemOverlay overlay = FullOverlay();
    const VemVarArray values = overlay.Params;
    overlay.FromROI(roi);
    EXPECT_EQ(overlay.OverlayType(), VemOverlayNone);
    EXPECT_TRUE(Same(overlay.Params, values));
    EXPECT_GT(values.Length(), 0);
  }
}

}  // namespace
