#include "IVemROIPara.h"

#include <cmath>
#include <csignal>
#include <vector>

#include <gtest/gtest.h>

#include "support/RoiShapes.h"

namespace {

// --- Truncation -------------------------------------------------------------------------------

TEST(IVemROIParaRunMask, ReferenceTruncatesAsTheProcessorDoes) {
  EXPECT_EQ(Truncated(2.9), 2);
  EXPECT_EQ(Truncated(-2.9), -2);
  EXPECT_EQ(Truncated(2147483647.5), 2147483647);
  EXPECT_EQ(Truncated(2147483648.0), kSmallest);
  EXPECT_EQ(Truncated(-2147483648.5), kSmallest);
  EXPECT_EQ(Truncated(-1e300), kSmallest);
  EXPECT_EQ(Truncated(kNaN), kSmallest);
  EXPECT_EQ(Truncated(kInfinity), kSmallest);
}

// --- What all shapes share --------------------------------------------------------------------

struct AnyCase {
  const char* name;
  VemROIType type;
  Doubles params;
};

TEST(IVemROIParaRunMask, FailureZeroesTheCanvas) {
  const AnyCase kCases[] = {
      {"Rect1LeftOfOrigin", VemROIRect1, {0, -5, 5, -1}},
      {"Rect1AboveOrigin", VemROIRect1, {-5, 0, -1, 5}},
      {"CircleLeftOfOrigin", VemROICircle, {9, -4, 3}},
      {"CircleAboveOrigin", VemROICircle, {-4, 9, 3}},
      {"TorusLeftOfOrigin", VemROITorus, {9, -6, 3, 5, 0, 360}},
      {"TorusAboveOrigin", VemROITorus, {-6, 9, 3, 5, 0, 360}},
      {"PolygonLeftOfOrigin", VemROIPolygon, {0, -9, 5, -9, 5, -2}},
      {"PolygonAboveOrigin", VemROIPolygon, {-9, 0, -9, 5, -2, 5}},
      {"IrregularLeftOfOrigin", VemROIIrregular, {0, -9, 5, -9, 5, -2}},
      {"IrregularAboveOrigin", VemROIIrregular, {-9, 0, -9, 5, -2, 5}},
      {"Rect2LeftOfOrigin", VemROIRect2, {9, -5, 6, 4, 0}},
      {"Rect2AboveOrigin", VemROIRect2, {-4, 9, 6, 4, 0}},
      {"Rect2TurnedLeftOfOrigin", VemROIRect2, {9, -9, 6, 4, 30}},
      {"LineLeftOfOrigin", VemROILine, {0, -5, 5, -1}},
      {"LineAboveOrigin", VemROILine, {-5, 0, -1, 5}},
      {"VerticalLineLeftOfOrigin", VemROILine, {0, -5, 5, -5}},
      {"EllipseLeftOfOrigin", VemROIEllipse, {9, -7, 5, 3, 0}},
      {"EllipseAboveOrigin", VemROIEllipse, {-5, 9, 5, 3, 0}},
      {"ArcLeftOfOrigin", VemROIArc, {9, -4, 3, 0, 90}},
      {"ArcAboveOrigin", VemROIArc, {-4, 9, 3, 0, 90}},
  };
  for (const AnyCase& c : kCases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(MaskOf(c.type, c.params), kNoRunMask);
  }
}

// The last place at which a shape is still kept, though no pixel of it may be left.
TEST(IVemROIParaRunMask, ShapesThatJustReachTheOriginAreKept) {
  const struct {
    AnyCase shape;
    int width;
    int height;
  } kCases[] = {
      {{"Rect1", VemROIRect1, {-5, -5, 0, 0}}, 1, 1},
      {{"Rect1Fraction", VemROIRect1, {-5, -5, -0.9, -0.9}}, 1, 1},
      {{"Circle", VemROICircle, {-3, -3, 3}}, 0, 0},
      {{"Torus", VemROITorus, {-5, -5, 3, 5, 0, 360}}, 1, 1},
      {{"Polygon", VemROIPolygon, {-9, -9, -1, -9, -9, -1}}, 1, 1},
      {{"Irregular", VemROIIrregular, {-9, -9, -1, -9, -9, -1}}, 1, 1},
      {{"Rect2", VemROIRect2, {-3, -4, 6, 4, 0}}, 1, 1},
      {{"Line", VemROILine, {-5, -5, 0, 0}}, 1, 1},
      {{"Ellipse", VemROIEllipse, {-4, -6, 5, 3, 0}}, 1, 1},
      {{"Arc", VemROIArc, {-3, -3, 3, 0, 90}}, 1, 1},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.shape.name);
    const RunMask mask = MaskOf(c.shape.type, c.shape.params);
    EXPECT_TRUE(mask.result);
    EXPECT_EQ(mask.width, c.width);
    EXPECT_EQ(mask.height, c.height);
  }
}

TEST(IVemROIParaRunMask, NoShapeFailsAndLeavesTheCanvas) {
  EXPECT_EQ(MaskOf(VemROINone, {}), (RunMask{false, {}, kWidthBefore, kHeightBefore}));
}

TEST(IVemROIParaRunMask, PointHasNoRunsAndLeavesTheCanvas) {
  EXPECT_EQ(MaskOf(VemROIPoint, {1, 2}), Made({}, kWidthBefore, kHeightBefore));
  EXPECT_EQ(MaskOf(VemROIPoint, {-1, -2}), Made({}, kWidthBefore, kHeightBefore));
}

TEST(IVemROIParaRunMask, UnknownTypesHaveNoRunsAndLeaveTheCanvas) {
  for (int type : {12, 13, 1000, 2147483647}) {
    SCOPED_TRACE(type);
    EXPECT_EQ(MaskOf(static_cast<VemROIType>(type), {1, 2, 3, 4, 5, 6}),
              Made({}, kWidthBefore, kHeightBefore));
  }
}

// The generators from points leave an old type over no numbers. What the mask is has no meaning,
// but it must not fault; a line would, being vertical.
TEST(IVemROIParaRunMask, ShapesWithoutNumbersDoNotFault) {
  for (VemROIType type : {VemROIRect1, VemROICircle, VemROITorus, VemROIPolygon, VemROIIrregular,
                          VemROIRect2, VemROILine, VemROIEllipse, VemROIArc}) {
    SCOPED_TRACE(type);
    MaskOf(type, {});
  }
}

// --- Masks ------------------------------------------------------------------------------------

TEST(IVemROIParaRunMask, MaskComesBackUnclipped) {
  IVemROIPara para = Shape(VemROIMask, {});
  para.Width = 640;
  para.Height = 480;
  const Runs runs = {{9, -5, 3}, {-2, 4, 1000}, {9, 2, 5}, {700, 0, 0}};
  para.Rows.Clear();
  para.FirstColumns.Clear();
  para.LastColumns.Clear();
  for (const ::Run& run : runs) {
    para.Rows.Append(run.Row);
    para.FirstColumns.Append(run.FirstColumn);
    para.LastColumns.Append(run.LastColumn);
  }
  EXPECT_EQ(MaskOf(para), Made(runs, 640, 480));
  EXPECT_EQ(RunsOf(para.Rows, para.FirstColumns, para.LastColumns), runs);
}

TEST(IVemROIParaRunMask, MaskArraysAreAssignedAsTheyAre) {
  IVemROIPara para = Shape(VemROIMask, {});
  para.Rows = VemVarArray(1.5);
  para.FirstColumns = VemVarArray("text");
  para.LastColumns = VemVarArray();
  VemVarArray rows(70);
  VemVarArray firstColumns(71);
  VemVarArray lastColumns(72);
  int width = kWidthBefore;
  int height = kHeightBefore;
  EXPECT_TRUE(para.GetMask(&rows, &firstColumns, &lastColumns, &width, &height));
  EXPECT_TRUE(Same(rows, VemVarArray(1.5)));
  EXPECT_TRUE(Same(firstColumns, VemVarArray("text")));
  EXPECT_EQ(lastColumns.Length(), 0);
  EXPECT_EQ(width, 12);
  EXPECT_EQ(height, 34);
}

TEST(IVemROIParaRunMask, MaskNeedsACanvasThatIsNotNegative) {
  const struct {
    const char* name;
    int width;
    int height;
    RunMask expected;
  } kCases[] = {
      {"Plain", 640, 480, Made({{1, 2, 3}}, 640, 480)},
      {"Zero", 0, 0, Made({{1, 2, 3}}, 0, 0)},
      {"WidthNegative", -1, 480, kNoRunMask},
      {"HeightNegative", 640, -1, kNoRunMask},
      {"BothNegative", kSmallest, kSmallest, kNoRunMask},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.name);
    IVemROIPara para = Shape(VemROIMask, {});
    para.Width = c.width;
    para.Height = c.height;
    EXPECT_EQ(MaskOf(para), c.expected);
  }
}

// --- Rectangles by corners --------------------------------------------------------------------

TEST(IVemROIParaRunMask, Rect1) {
  ExpectMasks(
      VemROIRect1,
      {
          {"Inside", {20, 10, 22, 12}, Made({{20, 10, 12}, {21, 10, 12}, {22, 10, 12}}, 13, 23)},
          {"FromLeft", {1, -5, 2, 3}, Made({{1, 0, 3}, {2, 0, 3}}, 4, 3)},
          {"FromAbove", {-5, 1, 1, 3}, Made({{0, 1, 3}, {1, 1, 3}}, 4, 2)},
          {"CornersInAnyOrder", {2, 3, 1, 1}, Made({{1, 1, 3}, {2, 1, 3}}, 4, 3)},
          {"CornersCrossed", {1, 3, 2, 1}, Made({{1, 1, 3}, {2, 1, 3}}, 4, 3)},
          {"FractionsDropped", {1.9, 1.9, 2.9, 3.9}, Made({{1, 1, 3}, {2, 1, 3}}, 4, 3)},
          {"NegativeFractionsDropped", {-0.9, -0.9, 0.5, 1.5}, Made({{0, 0, 1}}, 2, 1)},
          {"BeyondFloat",
           {0, 16777217, 0.5, 16777219},
           Made({{0, 16777217, 16777219}}, 16777220, 1)},
          {"RightDoesNotFit", {0, 0, 1, 1e10}, Made({{0, 0, 0}, {1, 0, 0}}, 1, 2)},
      });
}

TEST(IVemROIParaRunMask, Rect1MatchesReference) {
  ExpectReferenceAtRandom(VemROIRect1, 4000, [](Dice& r) {
    const double y = r.Near();
    const double x = r.Near();
    // Rows are as many as runs; columns may lie anywhere.
    const double otherX = r.OneIn(4) ? r.Number(-2e9, 2e9) : x + r.Number(-50, 50);
    return Doubles{y, x, r.OneIn(5) ? r.FarBack() : y + r.Number(-50, 50), otherX};
  });
}

// --- Circles ----------------------------------------------------------------------------------

TEST(IVemROIParaRunMask, CircleIsOneRowShorterBelow) {
  EXPECT_EQ(PictureOf(MaskOf(VemROICircle, {5, 5, 4})),
            ".........\n"
            ".........\n"
            "..######.\n"
            ".########\n"
            ".########\n"
            ".########\n"
            ".########\n"
            ".########\n"
            ".........\n");
}

TEST(IVemROIParaRunMask, Circle) {
  const RunMask ofRadius2 = Made({{4, 3, 6}, {5, 3, 7}}, 7, 7);
  ExpectMasks(
      VemROICircle,
      {
          {"Radius2", {5, 5, 2}, ofRadius2},
          {"RadiusLosesItsFraction", {5, 5, 2.9}, ofRadius2},
          {"CenterLosesItsFraction", {5.9, 5.9, 2}, ofRadius2},
          {"Radius1HasNoRuns", {5, 5, 1}, Made({}, 6, 6)},
          {"RadiusDoesNotFit", {5, 5, 1e10}, kNoRunMask},
          {"RadiusBelow1IsZero", {5, 5, 0.5}, Made({}, 5, 5)},
          {"FromLeftAndAbove", {0, 0, 3}, Made({{0, 0, 3}, {1, 0, 2}}, 3, 3)},
          // 50000 squared does not fit into 32 bits and comes out negative.
          {"SquareWraps", {-50000, 0, 50003}, Made({{0, 0, 50003}, {1, 0, 50003}}, 50003, 3)},
      });
}

TEST(IVemROIParaRunMask, CircleMatchesReference) {
  ExpectReferenceAtRandom(VemROICircle, 4000, [](Dice& r) {
    const double y = r.Near();
    const double x = r.Near();
    if (!r.OneIn(4)) return Doubles{y, x, r.Size()};
    // Just the lowest rows of a large one.
    const double radius = r.Number(50, 1e6);
    return Doubles{y - std::trunc(radius), r.Number(-1.2e6, 2e9), radius};
  });
}

// --- Lines ------------------------------------------------------------------------------------

TEST(IVemROIParaRunMask, Line) {
  ExpectMasks(
      VemROILine,
      {
          {"WholeSlope",
           {0, 0, 4, 1},
           Made({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}, {4, 1, 1}}, 2, 5)},
          {"WiderThanHigh", {0, 0, 1, 4}, Made({}, 5, 2)},
          {"Horizontal", {3, 0, 3, 4}, Made({}, 5, 4)},
          {"Diagonal", {1, 2, 3, 4}, Made({{1, 2, 2}, {2, 3, 3}, {3, 4, 4}}, 5, 4)},
          {"DiagonalBackward", {3, 4, 1, 2}, Made({{1, 2, 2}, {2, 3, 3}, {3, 4, 4}}, 5, 4)},
          {"Falling", {3, 0, 0, 3}, Made({{0, 3, 3}, {1, 2, 2}, {2, 1, 1}, {3, 0, 0}}, 4, 4)},
          {"SlopeLosesItsFraction",
           {0, 0, 5, 3},
           Made({{0, 0, 0}, {1, 1, 1}, {2, 2, 2}, {3, 3, 3}, {4, 4, 4}, {5, 5, 5}}, 4, 6)},
          {"NegativeSlopeTowardZero",
           {5, 0, 0, 3},
           Made({{0, 5, 5}, {1, 4, 4}, {2, 3, 3}, {3, 2, 2}, {4, 1, 1}, {5, 0, 0}}, 4, 6)},
          {"CoordinatesLoseTheirFraction",
           {1.9, 2.9, 3.9, 4.9},
           Made({{1, 2, 2}, {2, 3, 3}, {3, 4, 4}}, 5, 4)},
          {"FromAbove", {-2, 1, 1, 4}, Made({{0, 3, 3}, {1, 4, 4}}, 5, 2)},
          {"FromLeft", {1, -2, 4, 1}, Made({{3, 0, 0}, {4, 1, 1}}, 2, 5)},
          {"BetweenMinusOneAndZeroIsColumnZero",
           {0, -2, 8, 2},
           Made({{3, 0, 0}, {4, 0, 0}, {5, 0, 0}, {6, 1, 1}, {7, 1, 1}, {8, 2, 2}}, 3, 9)},
      });
}

// The difference to the intercept, rounded to float, jumps at row 64.
TEST(IVemROIParaRunMask, LineIsSolvedInFloat) {
  Runs runs = EqualRows(0, 63, 3, 3);
  for (const ::Run& run : EqualRows(64, 100, 4, 4)) runs.push_back(run);
  EXPECT_EQ(MaskOf(VemROILine, {-1999999872, 0, 100, 4}), Made(runs, 5, 101));
}

// 19 times the slope of -8109112 is half way between two floats and goes to -154073120, so the
// intercept is 113527560 and row 0 just short of column 14. Unrounded, the product would reach it.
TEST(IVemROIParaRunMask, LineRoundsEachStepByItself) {
  EXPECT_EQ(MaskOf(VemROILine, {-40545560, 19, 1, 14}), Made({{0, 13, 13}, {1, 13, 13}}, 20, 2));
}

TEST(IVemROIParaRunMask, LastRowMayBeTheGreatestInteger) {
  const int last = 2147483647;
  const Runs left = {{last - 1, 0, 0}, {last, 0, 0}};
  // The height of the canvas, one more, wraps.
  EXPECT_EQ(MaskOf(VemROILine, {last - 1, 3, last, 4}), Made(left, 5, kSmallest));
  EXPECT_EQ(MaskOf(VemROIRect1, {last - 1, 0, last, 0}), Made(left, 1, kSmallest));
}

// A sanitizer's own handler would turn the signal into an exit.
void MaskWithPlainSignals(VemROIType type, const Doubles& params) {
  std::signal(SIGFPE, SIG_DFL);
  MaskOf(type, params);
}

// As a float, the column lies just beyond the largest integer.
TEST(IVemROIParaRunMask, LineHasNoRunsInColumnsTooLargeForAnInteger) {
  const int last = 2147483647;
  EXPECT_EQ(MaskOf(VemROILine, {0, last - 7, 14, last}), Made({}, kSmallest, 15));
  EXPECT_EQ(MaskOf(VemROILine, {14, last - 7, 0, last}), Made({}, kSmallest, 15));
}

TEST(IVemROIParaRunMask, VerticalLineIsAFaultOfTheProcessor) {
  EXPECT_EXIT(MaskWithPlainSignals(VemROILine, {0, 3, 5, 3}), ::testing::KilledBySignal(SIGFPE),
              "");
  EXPECT_EXIT(MaskWithPlainSignals(VemROILine, {0, 3.1, 5, 3.9}), ::testing::KilledBySignal(SIGFPE),
              "");
}

TEST(IVemROIParaRunMask, LineMatchesReference) {
  ExpectReferenceAtRandom(VemROILine, 4000, [](Dice& r) {
    const double y1 = r.Near();
    const double x1 = r.Near();
    const double y2 = r.OneIn(4) ? -r.Number(0, 60000) : y1 + r.Number(-90, 90);
    double x2 = x1 + r.Number(-20, 20);
    if (Truncated(x2) == Truncated(x1)) x2 += 2;
    return Doubles{y1, x1, y2, x2};
  });
}

// --- Irregular shapes and polygons ------------------------------------------------------------

TEST(IVemROIParaRunMask, IrregularListsItsVerticesAndTheFirstAgain) {
  ExpectMasks(
      VemROIIrregular,
      {
          {"Plain", {1, 2, 3, 4, 5, 0}, Made({{1, 2, 2}, {3, 4, 4}, {5, 0, 0}, {1, 2, 2}}, 6, 7)},
          {"FractionsDropped",
           {1.9, 2.9, 3.9, 4.9, 5.9, -0.9},
           Made({{1, 2, 2}, {3, 4, 4}, {5, 0, 0}, {1, 2, 2}}, 6, 7)},
          {"RepeatsStay",
           {1, 1, 1, 1, 1, 1},
           Made({{1, 1, 1}, {1, 1, 1}, {1, 1, 1}, {1, 1, 1}}, 3, 3)},
          {"NegativeVerticesDropped", {-1, 2, 3, 4, 5, -1}, Made({{3, 4, 4}}, 6, 7)},
      });
}

TEST(IVemROIParaRunMask, PolygonIsFilledUpToItsOutline) {
  EXPECT_EQ(PictureOf(MaskOf(VemROIPolygon, {1, 1, 1, 5, 5.9, 5.9, 5, 1})),
            ".......\n"
            ".#####.\n"
            ".#####.\n"
            ".#####.\n"
            ".#####.\n"
            ".#####.\n"
            ".......\n");
  EXPECT_EQ(PictureOf(MaskOf(VemROIPolygon, {0, 0, 0, 6, 6, 6, 3, 3, 6, 0})),
            "#######.\n"
            "#######.\n"
            "#######.\n"
            "#######.\n"
            "###.###.\n"
            "##...##.\n"
            "#.....#.\n"
            "........\n");
  EXPECT_EQ(MaskOf(VemROIPolygon, {4, 3, 4, 3, 4, 3}), Made({{4, 3, 3}}, 5, 6));
}

// Rows above the origin are dropped, runs left of it are not.
TEST(IVemROIParaRunMask, PolygonKeepsRunsLeftOfTheOrigin) {
  EXPECT_EQ(MaskOf(VemROIPolygon, {-4, -6, 4, 4, 5, -6}),
            Made({{0, 0, -1}, {1, 0, 0}, {2, 0, 2}, {3, 0, 3}, {4, 0, 4}, {5, 0, -1}}, 6, 7));
}

Doubles RandomVertices(Dice& r) {
  const double y = r.Near();
  const double x = r.Near();
  const double reach = r.OneIn(3) ? 4 : 40;
  Doubles params;
  for (int i = r.Int(3, 9); i > 0; --i) {
    params.push_back(y + r.Number(-reach, reach));
    params.push_back(x + r.Number(-reach, reach));
  }
  return params;
}

// A last column left of the origin is negative as a whole integer too.
TEST(IVemROIParaRunMask, PolygonStoresNegativeColumnsWhole) {
  const IVemROIPara triangle = Shape(VemROIPolygon, {0, -9, 0, 3, 12, -9});
  VemVarArray rows;
  VemVarArray firstColumns;
  VemVarArray lastColumns;
  int width = 0;
  int height = 0;
  ASSERT_TRUE(triangle.GetMask(&rows, &firstColumns, &lastColumns, &width, &height));
  ASSERT_EQ(rows.Length(), 13);
  for (int row = 0; row < 13; ++row) {
    EXPECT_EQ(rows[row].L(), row);
    EXPECT_EQ(firstColumns[row].L(), 0);
    EXPECT_EQ(lastColumns[row].L(), 3 - row);
  }
}

TEST(IVemROIParaRunMask, IrregularMatchesReference) {
  ExpectReferenceAtRandom(VemROIIrregular, 4000, RandomVertices);
}

TEST(IVemROIParaRunMask, PolygonMatchesReference) {
  ExpectReferenceAtRandom(VemROIPolygon, 4000, RandomVertices);
}

}  // namespace
