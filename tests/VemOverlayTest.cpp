#include "VemOverlay.h"

#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

#include "support/HeapCounter.h"
#include "support/OverlayCases.h"
#include "support/OverlayKinds.h"
#include "support/OverlayRecords.h"
#include "support/Support.h"

namespace {

static_assert(sizeof(VemOverlay) == sizeof(void*), "a handle is one pointer");
static_assert(!std::is_polymorphic<VemOverlay>::value, "no virtual operations");

// No reader is const.
constexpr int (VemOverlay::*kOverlayType)() = &VemOverlay::OverlayType;
constexpr bool (VemOverlay::*kGetText)(VemPoint*, VemVar*, VemFont*) = &VemOverlay::GetText;
constexpr bool (VemOverlay::*kGetImage)(VemPoint*, VemImage*) = &VemOverlay::GetImage;
constexpr bool (VemOverlay::*kGetRegion)(VemRegion*) = &VemOverlay::GetRegion;
constexpr int (VemOverlay::*kGetPen)(long*, long*, long*, long*) = &VemOverlay::GetPen;
constexpr int (VemOverlay::*kGetBrush)(long*, long*, long*, long*) = &VemOverlay::GetBrush;

VemOverlay FullHandle() {
  VemOverlay overlay;
  Impl(overlay) = FullOverlay();
  return overlay;
}

TEST(VemOverlay, GivesAllItsBlocksBack) {
  const auto use = [] {
    const VemOverlay overlay = FullHandle();
    const VemOverlay copy(overlay);
    VemOverlay assigned;
    assigned = copy;
    EXPECT_EQ(assigned.OverlayType(), Impl(assigned).Type);
  };
  use();
  const HeapCounter heap;
  use();
  EXPECT_EQ(heap.Kept(), 0);
}

// --- The kinds that are told by numbers ---

TEST(VemOverlay, GeneratorsStoreTheirValues) {
  for (const StoredCase& c : kStoredCases) {
    SCOPED_TRACE(c.name);
    VemOverlay overlay = FullHandle();
    KindOf(c.type).gen(overlay, c.arguments);
    EXPECT_EQ((overlay.*kOverlayType)(), c.type);
    ExpectValues(Impl(overlay), c.values);
    ExpectRest(Impl(overlay));
  }
}

TEST(VemOverlay, RefusedElementIsNone) {
  for (const RefusedCase& c : kRefusedCases) {
    SCOPED_TRACE(c.name);
    VemOverlay overlay = FullHandle();
    KindOf(c.type).gen(overlay, c.arguments);
    EXPECT_EQ(overlay.OverlayType(), VemOverlayNone);
    ExpectValues(Impl(overlay), {});
    ExpectRest(Impl(overlay));
  }
}

TEST(VemOverlay, ReadersWriteThenTest) {
  for (const ReadCase& c : kReadCases) {
    SCOPED_TRACE(c.name);
    VemOverlay overlay;
    Impl(overlay).Type = c.type;
    Impl(overlay).Params = ArrayOf(c.values);
    EXPECT_EQ(KindOf(c.type).read(overlay), c.expected);
  }
}

// The outputs of a reader as they are when the element is of another kind: points and whole numbers
// stay, doubles that the handle reads through locals become 0.
const std::pair<VemOverlayType, Reading> kOtherKindCases[] = {
    {VemOverlayPoint, {true, {-1, -2}}},
    {VemOverlayArrowLine, {false, {-1, -2, -3, -4}}},
    {VemOverlayLine, {false, {-1, -2, -3, -4}}},
    {VemOverlayRect1, {false, {-1, -2, -3, -4}}},
    {VemOverlayRakeRect1, {false, {-1, -2, -3, -4, -5, -6}}},
    {VemOverlayCircle, {false, {-1, -2, 0}}},
    {VemOverlayEllipse, {false, {-1, -2, 0, 0, 0}}},
    {VemOverlayPolygon, {false, {-1, -2}}},
    {VemOverlayPolyLine, {false, {-1, -2}}},
    {VemOverlayRect2, {false, {-1, -2, 0, 0, 0}}},
    {VemOverlayRakeRect2, {false, {-1, -2, 0, 0, 0, -6, -7}}},
    {VemOverlayTorus, {false, {-1, -2, 0, 0, 0, 0}}},
    {VemOverlaySpokeTorus, {false, {-1, -2, 0, 0, 0, 0, -7, -8}}},
    {VemOverlayArc, {false, {-1, -2, 0, 0, 0}}},
    {VemOverlayIrregular, {false, {-1, -2}}},
};

TEST(VemOverlay, ReadersOfAnotherKind) {
  for (int type = 0; type <= 21; ++type) {
    SCOPED_TRACE(type);
    VemOverlay overlay;
    Impl(overlay).Type = static_cast<VemOverlayType>(type);
    Impl(overlay).Params = ArrayOf({1, 2, 3, 4, 5, 6, 4, 2, 9});
    for (const auto& [kind, expected] : kOtherKindCases) {
      SCOPED_TRACE(KindOf(kind).name);
      if (kind == type) continue;
      EXPECT_EQ(KindOf(kind).read(overlay), expected);
    }
  }
}

TEST(VemOverlay, ReadersWithoutValues) {
  for (const auto& [kind, expected] : kOtherKindCases) {
    SCOPED_TRACE(KindOf(kind).name);
    VemOverlay overlay;
    Impl(overlay).Type = kind;
    EXPECT_EQ(KindOf(kind).read(overlay), expected);
  }
}

// Unlike the implementation's, the test is on numbers that lie apart.
TEST(VemOverlay, NumbersAreReadApart) {
  VemOverlay overlay;
  VemPoint center(1, 2);
  overlay.GenTorus(center, 3, 4, 5, 6);
  double radius = 0;
  double start = 0;
  double sweep = 0;
  EXPECT_TRUE(overlay.GetTorus(&center, &radius, &radius, &start, &sweep));
  EXPECT_EQ(radius, 4);
}

// --- Text, image, region ---

TEST(VemOverlay, Text) {
  VemOverlay overlay = FullHandle();
  VemPoint point(1.5, 16777217.0);
  VemVar name("Mono");
  VemFont font(name, 12);
  font.Flag0 = 9;
  font.Flag2 = 200;
  overlay.GenText(point, "label", font);
  EXPECT_EQ(overlay.OverlayType(), 16);
  ExpectValues(Impl(overlay), {16777217.0, 1.5, "label", 12L, 500L, 0, 200, 0, "Mono"});

  VemPoint place;
  VemVar text(7);
  VemFont read;
  read.Flag0 = 77;
  EXPECT_TRUE((overlay.*kGetText)(&place, &text, &read));
  EXPECT_EQ(place.x, 1.5);
  EXPECT_EQ(place.y, 16777216.0);
  EXPECT_TRUE(Same(text, "label"));
  EXPECT_TRUE(Same(read.Name, "Mono"));
  EXPECT_EQ(read.Size, 12);
  EXPECT_EQ(read.Weight, 500);
  EXPECT_EQ(read.Flag0, 77);
  EXPECT_EQ(read.Flag1, 0);
  EXPECT_EQ(read.Flag2, 200);
  EXPECT_EQ(read.Flag3, 0);
}

TEST(VemOverlay, TextIsReadWithoutAFont) {
  VemOverlay overlay;
  VemPoint point(1, 2);
  VemFont font;
  overlay.GenText(point, "label", font);
  VemPoint place;
  VemVar text;
  EXPECT_TRUE(overlay.GetText(&place, &text, nullptr));
  EXPECT_EQ(place.y, 2);
  EXPECT_TRUE(Same(text, "label"));
}

TEST(VemOverlay, TextOfAnotherKindStays) {
  VemOverlay overlay = FullHandle();
  VemPoint place(-1, -2);
  VemVar text("old");
  VemFont font;
  EXPECT_TRUE(overlay.GetText(&place, &text, &font));
  EXPECT_EQ(place.x, -1);
  EXPECT_TRUE(Same(text, "old"));
  EXPECT_TRUE(Same(font.Name, "Times"));

  Impl(overlay).Type = VemOverlayText;
  Impl(overlay).Params = ArrayOf({1, 2, 3, 4, 5, 6, 7, 8, 9});
  EXPECT_TRUE(overlay.GetText(&place, &text, &font));
  EXPECT_EQ(place.x, 2);
  EXPECT_TRUE(Same(text, "old"));
  EXPECT_EQ(font.Size, 4);
}

TEST(VemOverlay, Image) {
  VemOverlay overlay;
  VemPoint point(1.5, 2.5);
  VemImage image = ImageOf("#.\n");
  overlay.GenImage(point, image);
  image.Mat().setTo(0);
  EXPECT_EQ(overlay.OverlayType(), 18);
  VemPoint place;
  VemImage read;
  EXPECT_TRUE((overlay.*kGetImage)(&place, &read));
  EXPECT_EQ(place.x, 1.5);
  EXPECT_EQ(place.y, 2.5);
  EXPECT_EQ(Picture(read.Mat()), "#.\n");
  read.Mat().setTo(0);
  EXPECT_EQ(Picture(Impl(overlay).Image), "#.\n");
}

TEST(VemOverlay, ImageOfAnotherKindStays) {
  VemOverlay overlay = FullHandle();
  VemPoint place(-1, -2);
  VemImage read = ImageOf("##\n");
  EXPECT_TRUE(overlay.GetImage(&place, &read));
  EXPECT_EQ(place.x, -1);
  EXPECT_EQ(Picture(read.Mat()), "##\n");
}

TEST(VemOverlay, Region) {
  VemOverlay overlay;
  VemRegion region = RegionOf(7, 8, 1, 2, 3);
  overlay.GenRegion(region);
  region = RegionOf(9, 9, 4, 4, 4);
  EXPECT_EQ(overlay.OverlayType(), 19);
  EXPECT_TRUE((overlay.*kGetRegion)(&region));
  ExpectRegion(region, 7, 8, {{1, 2, 3}});
}

TEST(VemOverlay, RegionOfAnotherKindStays) {
  VemOverlay overlay = FullHandle();
  VemRegion region = RegionOf(9, 9, 4, 5, 6);
  EXPECT_TRUE(overlay.GetRegion(&region));
  ExpectRegion(region, 9, 9, {{4, 5, 6}});
}

// --- Forwarding of the rest ---

TEST(VemOverlay, FromROI) {
  VemROI roi;
  VemPoint p1(1, 2);
  VemPoint p2(3, 5);
  roi.GenRect1(p1, p2);
  VemOverlay overlay = FullHandle();
  overlay.FromROI(roi);
  EXPECT_EQ(KindOf(VemOverlayRect1).read(overlay), (Reading{true, {1, 2, 3, 5}}));
  overlay.FromROI(VemROI());
  EXPECT_EQ(overlay.OverlayType(), 20);
  ExpectValues(Impl(overlay), {2.0, 1.0, 5.0, 3.0});
  ExpectRest(Impl(overlay));
}

TEST(VemOverlay, FromContour) {
  VemPointArray points;
  for (VemPoint point : {VemPoint(1, 2), VemPoint(3, 4), VemPoint(5, 7)}) points.Append(point);
  VemContour contour;
  contour.FromPointArray(points);
  VemOverlay overlay;
  overlay.FromContour(contour);
  overlay.FromContour(contour);
  EXPECT_EQ(KindOf(VemOverlayIrregular).read(overlay),
            (Reading{true, {1, 2, 3, 4, 5, 7, 1, 2, 3, 4, 5, 7}}));
}

TEST(VemOverlay, PenAndBrush) {
  VemOverlay overlay;
  long a = 0, b = 0, c = 0, d = 0;
  EXPECT_EQ((overlay.*kGetPen)(&a, &b, &c, &d), 1);
  EXPECT_EQ(std::vector<long>({a, b, c, d}), std::vector<long>({0, 0, 255, 1}));
  EXPECT_EQ((overlay.*kGetBrush)(&a, &b, &c, &d), 1);
  EXPECT_EQ(std::vector<long>({a, b, c, d}), std::vector<long>({227, 224, 184, 0}));
  overlay.SetPen(1, 2, 4294967299L, -4);
  overlay.SetBrush(5, 6, 7, 2147483648L);
  EXPECT_EQ(overlay.GetPen(&a, &b, &c, &d), 1);
  EXPECT_EQ(std::vector<long>({a, b, c, d}), std::vector<long>({1, 2, 3, -4}));
  EXPECT_EQ(overlay.GetBrush(&a, &b, &c, &d), 1);
  EXPECT_EQ(std::vector<long>({a, b, c, d}), std::vector<long>({5, 6, 7, -2147483648L}));
  EXPECT_TRUE(Impl(overlay).isRedrawPen());
  EXPECT_TRUE(Impl(overlay).isRedrawBrush());
}

TEST(VemOverlay, Reset) {
  VemOverlay overlay = FullHandle();
  overlay.Reset();
  EXPECT_EQ(overlay.OverlayType(), 20);
  EXPECT_TRUE(Impl(overlay).Image.empty());
  EXPECT_EQ(Impl(overlay).Rows.Length(), 0);
  EXPECT_EQ(Impl(overlay).Width, 31);
  ExpectPenAndBrush(Impl(overlay));
}

// --- Construction and copies ---

TEST(VemOverlay, StartsWithoutElement) {
  VemOverlay overlay;
  EXPECT_EQ(overlay.OverlayType(), 20);
  EXPECT_FALSE(Impl(overlay).RedrawPen);
  EXPECT_FALSE(Impl(overlay).RedrawBrush);
}

TEST(VemOverlay, CopiesShareNothing) {
  VemOverlay source = FullHandle();
  VemOverlay copy(source);
  VemOverlay assigned;
  VemOverlay& returned = assigned = source;
  EXPECT_EQ(&returned, &assigned);
  EXPECT_NE(&Impl(copy), &Impl(source));
  EXPECT_NE(&Impl(assigned), &Impl(source));
  Impl(source).Image.setTo(0);
  Impl(source).Params[0] = VemVar(9);
  Impl(source).Rows[0] = VemVar(9);
  source.Reset();
  ExpectFullOverlay(Impl(copy));
  ExpectFullOverlay(Impl(assigned));
}

TEST(VemOverlay, AssignmentWorksInPlace) {
  VemOverlay target = FullHandle();
  const IVemOverlay* impl = &Impl(target);
  target = VemOverlay();
  EXPECT_EQ(&Impl(target), impl);
  EXPECT_EQ(target.OverlayType(), 20);
  EXPECT_TRUE(Impl(target).Image.empty());
}

TEST(VemOverlay, AssignmentToItselfChangesNothing) {
  VemOverlay overlay = FullHandle();
  const VemOverlay& same = overlay;
  overlay = same;
  ExpectFullOverlay(Impl(overlay));
}

}  // namespace
