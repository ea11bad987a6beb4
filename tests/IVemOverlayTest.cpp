#include "IVemOverlay.h"

#include <climits>
#include <cstddef>
#include <type_traits>

#include <gtest/gtest.h>

#include "support/OverlayCases.h"
#include "support/OverlayKinds.h"
#include "support/OverlayRecords.h"
#include "support/Support.h"

namespace {

static_assert(!std::is_polymorphic<IVemOverlay>::value, "no virtual operations");
// The stated order of the fields, at the places that 32-bit numbers, pointers and a matrix take.
constexpr std::size_t kMat = sizeof(cv::Mat);
static_assert(offsetof(IVemOverlay, Type) == 0, "the stated order");
static_assert(offsetof(IVemOverlay, Params) == 8, "the stated order");
static_assert(offsetof(IVemOverlay, Image) == 16, "the stated order");
static_assert(offsetof(IVemOverlay, Width) == 16 + kMat, "the stated order");
static_assert(offsetof(IVemOverlay, Height) == 20 + kMat, "the stated order");
static_assert(offsetof(IVemOverlay, Rows) == 24 + kMat, "the stated order");
static_assert(offsetof(IVemOverlay, FirstColumns) == 32 + kMat, "the stated order");
static_assert(offsetof(IVemOverlay, LastColumns) == 40 + kMat, "the stated order");
static_assert(offsetof(IVemOverlay, PenColor0) == 48 + kMat, "the stated order");
static_assert(offsetof(IVemOverlay, PenColor1) == 52 + kMat, "the stated order");
static_assert(offsetof(IVemOverlay, PenColor2) == 56 + kMat, "the stated order");
static_assert(offsetof(IVemOverlay, BrushColor0) == 60 + kMat, "the stated order");
static_assert(offsetof(IVemOverlay, BrushColor1) == 64 + kMat, "the stated order");
static_assert(offsetof(IVemOverlay, BrushColor2) == 68 + kMat, "the stated order");
static_assert(offsetof(IVemOverlay, BrushMode) == 72 + kMat, "the stated order");
static_assert(offsetof(IVemOverlay, PenWidth) == 76 + kMat, "the stated order");
static_assert(offsetof(IVemOverlay, RedrawPen) == 80 + kMat, "the stated order");
static_assert(offsetof(IVemOverlay, RedrawBrush) == 81 + kMat, "the stated order");
static_assert(sizeof(IVemOverlay) == 88 + kMat, "no further field");

// Operations that are const, and those that are not.
constexpr int (IVemOverlay::*kOverlayType)() const = &IVemOverlay::OverlayType;
constexpr bool (IVemOverlay::*kIsRedrawPen)() = &IVemOverlay::isRedrawPen;
constexpr bool (IVemOverlay::*kIsRedrawBrush)() = &IVemOverlay::isRedrawBrush;
constexpr int (IVemOverlay::*kGetPen)(long*, long*, long*, long*) = &IVemOverlay::GetPen;
constexpr int (IVemOverlay::*kGetBrush)(long*, long*, long*, long*) = &IVemOverlay::GetBrush;

// --- Fields, construction and copies ---

TEST(IVemOverlay, Default) {
  IVemOverlay overlay;
  EXPECT_EQ((overlay.*kOverlayType)(), 20);
  EXPECT_EQ(overlay.Params.Length(), 0);
  EXPECT_TRUE(overlay.Image.empty());
  EXPECT_EQ(overlay.Width, 0);
  EXPECT_EQ(overlay.Height, 0);
  EXPECT_EQ(overlay.Rows.Length(), 0);
  EXPECT_EQ(overlay.FirstColumns.Length(), 0);
  EXPECT_EQ(overlay.LastColumns.Length(), 0);
  EXPECT_EQ(overlay.PenColor0, 0);
  EXPECT_EQ(overlay.PenColor1, 0);
  EXPECT_EQ(overlay.PenColor2, 255);
  EXPECT_EQ(overlay.PenWidth, 1);
  EXPECT_EQ(overlay.BrushColor0, 227);
  EXPECT_EQ(overlay.BrushColor1, 224);
  EXPECT_EQ(overlay.BrushColor2, 184);
  EXPECT_EQ(overlay.BrushMode, 0);
  EXPECT_FALSE((overlay.*kIsRedrawPen)());
  EXPECT_FALSE((overlay.*kIsRedrawBrush)());
}

TEST(IVemOverlay, CopySharesOnlyThePixels) {
  IVemOverlay source = FullOverlay();
  const IVemOverlay copy(source);
  EXPECT_EQ(copy.Image.data, source.Image.data);
  source.Params[0] = VemVar(9);
  source.Rows[0] = VemVar(9);
  source.Reset();
  ExpectFullOverlay(copy);
}

TEST(IVemOverlay, AssignmentCopiesThePixelsToo) {
  IVemOverlay source = FullOverlay();
  IVemOverlay target;
  IVemOverlay& returned = target = source;
  EXPECT_EQ(&returned, &target);
  EXPECT_NE(target.Image.data, source.Image.data);
  source.Image.setTo(0);
  source.Params[0] = VemVar(9);
  source.FirstColumns[0] = VemVar(9);
  ExpectFullOverlay(target);
}

TEST(IVemOverlay, AssignmentReplacesEveryField) {
  IVemOverlay target = FullOverlay();
  target = IVemOverlay();
  EXPECT_EQ(target.Type, VemOverlayNone);
  EXPECT_EQ(target.Params.Length() + target.Rows.Length() + target.FirstColumns.Length() +
                target.LastColumns.Length(),
            0);
  EXPECT_TRUE(target.Image.empty());
  EXPECT_EQ(target.Width, 0);
  EXPECT_EQ(target.Height, 0);
  EXPECT_EQ(target.PenColor2, 255);
  EXPECT_EQ(target.BrushColor0, 227);
  EXPECT_EQ(target.BrushMode, 0);
  EXPECT_EQ(target.PenWidth, 1);
  EXPECT_FALSE(target.RedrawPen);
  EXPECT_FALSE(target.RedrawBrush);
}

// Of one size and type, so that the pixels could be written in place.
TEST(IVemOverlay, AssignmentLeavesSharedPixelsAlone) {
  IVemOverlay target = FullOverlay();
  const IVemOverlay sharing(target);
  IVemOverlay source = FullOverlay();
  source.Image = Raster("###\n###\n");
  target = source;
  EXPECT_EQ(Picture(target.Image), "###\n###\n");
  ExpectFullOverlay(sharing);
}

TEST(IVemOverlay, AssignmentToItselfChangesNothing) {
  IVemOverlay overlay = FullOverlay();
  const IVemOverlay& same = overlay;
  overlay = same;
  ExpectFullOverlay(overlay);
}

// --- The kinds that are told by numbers ---

TEST(IVemOverlay, SettersStoreTheirValues) {
  for (const StoredCase& c : kStoredCases) {
    SCOPED_TRACE(c.name);
    IVemOverlay overlay = FullOverlay();
    KindOf(c.type).set(overlay, c.arguments);
    EXPECT_EQ(overlay.OverlayType(), c.type);
    ExpectValues(overlay, c.values);
    ExpectRest(overlay);
  }
}

TEST(IVemOverlay, RefusedElementIsNone) {
  for (const RefusedCase& c : kRefusedCases) {
    SCOPED_TRACE(c.name);
    IVemOverlay overlay = FullOverlay();
    KindOf(c.type).set(overlay, c.arguments);
    EXPECT_EQ(overlay.OverlayType(), VemOverlayNone);
    ExpectValues(overlay, {});
    ExpectRest(overlay);
  }
}

TEST(IVemOverlay, ReadersWriteThenTest) {
  for (const ReadCase& c : kReadCases) {
    SCOPED_TRACE(c.name);
    IVemOverlay overlay;
    overlay.Type = c.type;
    overlay.Params = ArrayOf(c.values);
    EXPECT_EQ(KindOf(c.type).get(overlay), c.expected);
    EXPECT_EQ(overlay.Type, c.type);
    ExpectValues(overlay, c.values);
  }
}

TEST(IVemOverlay, EveryReaderIsTested) {
  for (const OverlayKind& kind : OverlayKinds()) {
    SCOPED_TRACE(kind.name);
    int stored = 0;
    int read = 0;
    for (const StoredCase& c : kStoredCases) stored += c.type == kind.type;
    for (const ReadCase& c : kReadCases) read += c.type == kind.type;
    EXPECT_GT(stored, 0);
    EXPECT_GT(read, 0);
  }
}

bool IsUntouched(const Reading& reading) {
  double expected = 0;
  for (const double output : reading.outputs) {
    if (output != --expected) return false;
  }
  return true;
}

TEST(IVemOverlay, ReadersOfAnotherKindWriteNothing) {
  for (int type = 0; type <= 21; ++type) {
    SCOPED_TRACE(type);
    IVemOverlay overlay;
    overlay.Type = static_cast<VemOverlayType>(type);
    overlay.Params = ArrayOf({1, 2, 3, 4, 5, 6, 4, 2, 9});
    for (const OverlayKind& kind : OverlayKinds()) {
      SCOPED_TRACE(kind.name);
      EXPECT_NE(IsUntouched(kind.get(overlay)), kind.type == type);
      if (kind.type != type) {
        EXPECT_FALSE(kind.get(overlay).result);
      }
    }
  }
}

TEST(IVemOverlay, ReadersWithoutValuesWriteNothing) {
  for (const OverlayKind& kind : OverlayKinds()) {
    SCOPED_TRACE(kind.name);
    IVemOverlay overlay;
    overlay.Type = kind.type;
    const Reading reading = kind.get(overlay);
    EXPECT_FALSE(reading.result);
    EXPECT_TRUE(IsUntouched(reading));
  }
}

// The test is on what was written: here the second of two outputs at one place.
TEST(IVemOverlay, ReadersTestTheOutputsThemselves) {
  IVemOverlay overlay;
  overlay.SetTorus(VemPoint(1, 2), 3, 4, 5, 6);
  VemPoint center;
  double radius = 0;
  double start = 0;
  double sweep = 0;
  EXPECT_FALSE(overlay.GetTorus(&center, &radius, &radius, &start, &sweep));
  EXPECT_EQ(radius, 4);
}

TEST(IVemOverlay, CoordinatesOfACircleAreNotRounded) {
  IVemOverlay overlay;
  overlay.SetRect1(VemPoint(16777217.0, 0), VemPoint(16777300.0, 1));
  EXPECT_EQ(KindOf(VemOverlayRect1).get(overlay), (Reading{true, {16777216.0, 0, 16777300.0, 1}}));
  overlay.SetCircle(VemPoint(16777217.0, 0), 1);
  EXPECT_EQ(KindOf(VemOverlayCircle).get(overlay), (Reading{true, {16777217.0, 0, 1}}));
}

// A stored integer becomes a float at once: through a double its last bit would be lost, and the
// tie would go down to 2 to the power 60.
TEST(IVemOverlay, StoredIntegersAreRoundedOnce) {
  constexpr long kStored = (1L << 60) + (1L << 36) + 1;
  constexpr double kRounded = 1152921642045800448.0;
  IVemOverlay overlay;
  overlay.Type = VemOverlayLine;
  for (const long value : {kStored, 0L, 0L, kStored}) overlay.Params.Append(value);
  EXPECT_EQ(KindOf(VemOverlayLine).get(overlay), (Reading{true, {0, kRounded, kRounded, 0}}));
  overlay.Type = VemOverlayPolygon;
  for (const long value : {1L, kStored}) overlay.Params.Append(value);
  VemPointArray points;
  EXPECT_TRUE(overlay.GetPolygon(&points));
  ASSERT_EQ(points.Length(), 3);
  EXPECT_EQ(points[0].y, kRounded);
  EXPECT_EQ(points[1].x, kRounded);
  EXPECT_EQ(points[2].x, kRounded);
  overlay.Type = VemOverlayImage;
  VemPoint place;
  VemImage image;
  EXPECT_TRUE(overlay.GetImage(&place, &image));
  EXPECT_EQ(place.x, kRounded);
}

// --- Pen, brush, reset ---

struct PenCase {
  const char* name;
  long given;
  long kept;
};

const PenCase kPenCases[] = {
    {"Small", 1, 1},
    {"Negative", -1, -1},
    {"LargestInt", INT_MAX, INT_MAX},
    {"SignBitOf32", 2147483648L, INT_MIN},
    {"BeyondLow32", 4294967297L, 1},
    {"Low32Zero", 4294967296L, 0},
    {"Smallest", LONG_MIN, 0},
};

TEST(IVemOverlay, PenAndBrushKeepTheLow32Bits) {
  for (const PenCase& c : kPenCases) {
    SCOPED_TRACE(c.name);
    for (int place = 0; place < 4; ++place) {
      long given[4] = {5, 6, 7, 8};
      std::vector<long> kept = {5, 6, 7, 8};
      given[place] = c.given;
      kept[static_cast<std::size_t>(place)] = c.kept;
      IVemOverlay overlay;
      overlay.SetPen(given[0], given[1], given[2], given[3]);
      EXPECT_TRUE(overlay.isRedrawPen());
      EXPECT_FALSE(overlay.isRedrawBrush());
      EXPECT_EQ(overlay.BrushColor0, 227);
      std::vector<long> read(4);
      EXPECT_EQ((overlay.*kGetPen)(&read[0], &read[1], &read[2], &read[3]), 0);
      EXPECT_EQ(read, kept);

      IVemOverlay brushed;
      brushed.SetBrush(given[0], given[1], given[2], given[3]);
      EXPECT_TRUE(brushed.isRedrawBrush());
      EXPECT_FALSE(brushed.isRedrawPen());
      EXPECT_EQ(brushed.PenColor2, 255);
      EXPECT_EQ((brushed.*kGetBrush)(&read[0], &read[1], &read[2], &read[3]), 0);
      EXPECT_EQ(read, kept);
    }
  }
}

// The pixels go; their type stays.
TEST(IVemOverlay, ResetKeepsCanvasPenAndBrush) {
  IVemOverlay overlay = FullOverlay();
  overlay.Image = cv::Mat(2, 3, CV_16UC3);
  const int type = overlay.Image.type();
  overlay.Reset();
  EXPECT_EQ(overlay.OverlayType(), 20);
  EXPECT_EQ(overlay.Params.Length(), 0);
  EXPECT_TRUE(overlay.Image.empty());
  EXPECT_EQ(overlay.Image.type(), type);
  EXPECT_EQ(overlay.Rows.Length(), 0);
  EXPECT_EQ(overlay.FirstColumns.Length(), 0);
  EXPECT_EQ(overlay.LastColumns.Length(), 0);
  EXPECT_EQ(overlay.Width, 31);
  EXPECT_EQ(overlay.Height, 32);
  ExpectPenAndBrush(overlay);
}

}  // namespace
