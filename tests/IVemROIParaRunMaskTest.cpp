#include "IVemROIPara.h"

#include <algorithm>
#include <cmath>
#include <csignal>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/RunMaskReference.h"
#include "support/Support.h"

namespace {

using Doubles = std::vector<double>;
using Runs = std::vector<Run>;

// What the canvas holds before a call.
constexpr int kWidthBefore = -7;
constexpr int kHeightBefore = -9;

constexpr int kSmallest = -2147483647 - 1;

IVemROIPara Shape(VemROIType type, const Doubles& params) {
  IVemROIPara para;
  para.Type = type;
  para.Width = 12;
  para.Height = 34;
  para.Rows = VemVarArray(1);
  para.FirstColumns = VemVarArray(2);
  para.LastColumns = VemVarArray(3);
  for (double param : params) para.Params.Append(VemVar(param));
  return para;
}

// The mask of a shape, taken into arrays that hold something already.
RunMask MaskOf(const IVemROIPara& para) {
  VemVarArray rows(70);
  VemVarArray firstColumns("old");
  VemVarArray lastColumns(7.5);
  RunMask mask{false, {}, kWidthBefore, kHeightBefore};
  mask.result = para.GetMask(&rows, &firstColumns, &lastColumns, &mask.width, &mask.height);
  mask.runs = RunsOf(rows, firstColumns, lastColumns);
  return mask;
}

RunMask MaskOf(VemROIType type, const Doubles& params) {
  const IVemROIPara para = Shape(type, params);
  const RunMask mask = MaskOf(para);
  EXPECT_EQ(para.Type, type);
  EXPECT_EQ(para.Params.Length(), static_cast<int>(params.size()));
  return mask;
}

RunMask Made(const Runs& runs, int width, int height) { return {true, runs, width, height}; }

const RunMask kFailed{false, {}, 0, 0};

// The drawing on the canvas that comes with the runs.
std::string PictureOf(const RunMask& mask) { return Picture(mask.runs, mask.width, mask.height); }

struct MaskCase {
  const char* name;
  Doubles params;  // In stored order: y before x.
  RunMask expected;
};

void ExpectMasks(VemROIType type, const std::vector<MaskCase>& cases) {
  for (const MaskCase& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(MaskOf(type, c.params), c.expected);
  }
}

// --- The plain reference, at random -----------------------------------------------------------

class Random {
 public:
  explicit Random(unsigned seed) : engine_(seed) {}

  int Int(int low, int high) { return std::uniform_int_distribution<int>(low, high)(engine_); }
  double Real(double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(engine_);
  }
  bool OneIn(int n) { return Int(1, n) == 1; }
  // A whole number as often as one with a fraction.
  double Number(double low, double high) {
    const double value = Real(low, high);
    return OneIn(2) ? std::trunc(value) : value;
  }
  double Pick(const Doubles& values) {
    return values[static_cast<std::size_t>(Int(0, static_cast<int>(values.size()) - 1))];
  }
  // Around the origin, so that shapes lie partly or wholly outside, or further in.
  double Coordinate() { return OneIn(3) ? Number(-60, 20) : Number(-20, 90); }
  double Size() { return OneIn(3) ? Real(0.01, 4) : Number(1, 45); }
  double Angle() {
    switch (Int(0, 4)) {
      case 0:
        return 90 * Int(-9, 9);
      case 1:
        return 90 * Int(-9, 9) + Pick({-1, -0.9, -0.5, -0.1, 0.1, 0.5, 0.9, 1});
      case 2:
        return 45 * Int(-9, 9);
      default:
        return Number(-800, 800);
    }
  }
  double Sweep() {
    if (OneIn(2)) return Pick({0, 0.5, 1, 358, 358.5, 359, 359.9, 360, 361, 720, 1000});
    return Number(0, 400);
  }

 private:
  std::mt19937 engine_;
};

void ExpectReferenceAtRandom(VemROIType type, int count,
                             const std::function<Doubles(Random&)>& generate) {
  Random random(20240u + static_cast<unsigned>(type));
  int failed = 0;
  int filled = 0;
  for (int i = 0; i < count; ++i) {
    const Doubles params = generate(random);
    const RunMask expected = ReferenceRunMask(type, params, kWidthBefore, kHeightBefore);
    ASSERT_EQ(MaskOf(type, params), expected) << ::testing::PrintToString(params);
    if (!expected.result) ++failed;
    if (!expected.runs.empty()) ++filled;
  }
  // Both the shapes that fail and those with runs are really among them.
  EXPECT_GT(failed, count / 50);
  EXPECT_GT(filled, count / 5);
}

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
    EXPECT_EQ(MaskOf(c.type, c.params), kFailed);
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
      {"WidthNegative", -1, 480, kFailed},
      {"HeightNegative", 640, -1, kFailed},
      {"BothNegative", kSmallest, kSmallest, kFailed},
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
  ExpectReferenceAtRandom(VemROIRect1, 4000, [](Random& r) {
    const double y = r.Coordinate();
    const double x = r.Coordinate();
    return Doubles{y, x, y + r.Number(-50, 50), x + r.Number(-50, 50)};
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
          {"RadiusDoesNotFit", {5, 5, 1e10}, kFailed},
          {"RadiusBelow1IsZero", {5, 5, 0.5}, Made({}, 5, 5)},
          {"FromLeftAndAbove", {0, 0, 3}, Made({{0, 0, 3}, {1, 0, 2}}, 3, 3)},
          // 50000 squared does not fit into 32 bits and comes out negative.
          {"SquareWraps", {-50000, 0, 50003}, Made({{0, 0, 50003}, {1, 0, 50003}}, 50003, 3)},
      });
}

TEST(IVemROIParaRunMask, CircleMatchesReference) {
  ExpectReferenceAtRandom(VemROICircle, 4000, [](Random& r) {
    const double y = r.Coordinate();
    const double x = r.Coordinate();
    return Doubles{y, x, r.Size()};
  });
}

// --- Rotated rectangles -----------------------------------------------------------------------

// The run (first, last) in each row from `firstRow` to `lastRow`.
Runs EqualRows(int firstRow, int lastRow, int first, int last) {
  Runs runs;
  for (int row = firstRow; row <= lastRow; ++row) runs.push_back({row, first, last});
  return runs;
}

TEST(IVemROIParaRunMask, Rect2AtRightAnglesHasEqualRows) {
  ExpectMasks(
      VemROIRect2,
      {
          {"0", {10, 10, 10, 4, 0}, Made(EqualRows(8, 12, 5, 15), 17, 14)},
          {"CenterLosesItsFraction", {10.9, 10.9, 10, 4, 0}, Made(EqualRows(8, 12, 5, 15), 17, 14)},
          {"90", {10, 10, 10, 4, 90}, Made(EqualRows(5, 15, 8, 12), 14, 17)},
          {"Minus90", {10, 10, 10, 4, -90}, Made(EqualRows(5, 15, 8, 12), 14, 17)},
          // The top and the left corner are both at the left.
          {"180", {10, 10, 10, 4, 180}, Made(EqualRows(8, 12, 5, 5), 17, 14)},
          {"90AndAHalf", {6, 6, 6, 4, 90.5}, Made(EqualRows(2, 9, 3, 7), 10, 11)},
          {"FromLeft", {3, -3, 6, 4, 0}, Made(EqualRows(1, 5, 0, 0), 2, 7)},
          {"LastColumnStaysNegative", {3, -4, 6, 4, 0}, Made(EqualRows(1, 5, 0, -1), 1, 7)},
          {"FromAbove", {-1, 5, 6, 4, 0}, Made(EqualRows(0, 1, 2, 8), 10, 3)},
          {"CenterIsReadAsFloat",
           {5, 16777217, 4, 2, 0},
           Made(EqualRows(4, 6, 16777214, 16777218), 16777220, 8)},
          // With the full pi, rows 98 to 102.
          {"ShortenedPi",
           {100, 10, 4e7, 4, 180},
           Made(EqualRows(96, 103, 0, -19999990), 20000012, 105)},
          {"AngleIsReadAsFloat",
           {100, 10, 4e7, 4, 180.000001},
           Made(EqualRows(96, 103, 0, -19999990), 20000012, 105)},
      });
}

TEST(IVemROIParaRunMask, Rect2Tilted) {
  EXPECT_EQ(PictureOf(MaskOf(VemROIRect2, {6, 6, 8, 4, 45})),
            "............\n"
            ".......#....\n"
            "......###...\n"
            ".....#####..\n"
            "....#######.\n"
            "...#######..\n"
            "..#######...\n"
            ".#######....\n"
            "..#####.....\n"
            "...###......\n"
            "....#.......\n"
            "............\n");
  EXPECT_EQ(PictureOf(MaskOf(VemROIRect2, {6, 7, 10, 5, 30})),
            "..............\n"
            "..........#...\n"
            "........###...\n"
            "......######..\n"
            ".....#######..\n"
            "...##########.\n"
            ".##########...\n"
            ".########.....\n"
            "..######......\n"
            "..####........\n"
            "...#..........\n"
            "..............\n");
}

// Nearly upright, but told by its edges; the angle of 90.5 takes the upright way.
TEST(IVemROIParaRunMask, Rect2At89Point9FollowsItsEdges) {
  EXPECT_EQ(PictureOf(MaskOf(VemROIRect2, {6, 6, 6, 4, 89.9})),
            "..........\n"
            "..........\n"
            "....#.....\n"
            "....#####.\n"
            "....#####.\n"
            "...######.\n"
            "...#####..\n"
            "...#####..\n"
            "...#####..\n"
            ".......#..\n"
            "..........\n");
}

// Corners that agree in x or y once truncated: edges of slope 0, infinite or no slope.
TEST(IVemROIParaRunMask, Rect2WithEdgesThatBecameStraight) {
  ExpectMasks(VemROIRect2,
              {
                  {"Tiny", {5, 5, 0.5, 0.5, 45}, Made({{4, 0, kSmallest}, {5, 0, 4}}, 7, 7)},
                  {"SlopeIsTakenInDouble",
                   {-10294796, 99, 196975927, 5, 6},
                   Made({{0, 0, -97948359}, {1, 0, -97948367}}, 97948530, 3)},
              });
}

// The rows of these masks hang on the last bit of an intercept: a product and a difference that are
// rounded at once, not one after the other, move a run by a column.
TEST(IVemROIParaRunMask, Rect2RoundsEachStepByItself) {
  const struct {
    const char* name;
    Doubles params;
    ::Run run;
  } kCases[] = {
      {"LastColumn52",
       {-1.0000001000000001, 40.260995850122718, 45.932027674419146, 32.862080213020832,
        10321.687010673792},
       {10, 14, 52}},
      {"FirstColumn2", {33.5, -9.5, 3, 230.40252192827435, 645}, {28, 2, 14}},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.name);
    const Runs runs = MaskOf(VemROIRect2, c.params).runs;
    EXPECT_NE(std::find(runs.begin(), runs.end(), c.run), runs.end());
  }
}

// The corners are (27, -25), (15, 19), (18, 19), (30, -25). Of the two lowest ones the third is
// taken, where that scan begins; with the second the lower edge would have no length.
TEST(IVemROIParaRunMask, Rect2PrefersTheCornerWhereAScanBegins) {
  const RunMask mask = MaskOf(VemROIRect2, {-3, 23, 3.11809, 46.6292, 164.986});
  ASSERT_EQ(mask.runs.size(), 20u);
  EXPECT_EQ(mask.runs.front(), (::Run{0, 20, 23}));
  EXPECT_EQ(mask.runs[10], (::Run{10, 17, 20}));
}

// Where floats are whole numbers, or only the even ones.
TEST(IVemROIParaRunMask, FarRect2MatchesReference) {
  Random random(78);
  for (int i = 0; i < 2000; ++i) {
    const Doubles params = {16777216.0 + random.Int(-30, 30), 16777216.0 + random.Int(-30, 30),
                            random.Size(), random.Size(), random.Angle()};
    ASSERT_EQ(MaskOf(VemROIRect2, params),
              ReferenceRunMask(VemROIRect2, params, kWidthBefore, kHeightBefore))
        << ::testing::PrintToString(params);
  }
}

TEST(IVemROIParaRunMask, Rect2MatchesReference) {
  ExpectReferenceAtRandom(VemROIRect2, 20000, [](Random& r) {
    const double y = r.Coordinate();
    const double x = r.Coordinate();
    const double length1 = 2 * r.Size();
    const double length2 = 2 * r.Size();
    return Doubles{y, x, length1, length2, r.Angle()};
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

TEST(IVemROIParaRunMask, VerticalLineIsAFaultOfTheProcessor) {
  EXPECT_EXIT(MaskWithPlainSignals(VemROILine, {0, 3, 5, 3}), ::testing::KilledBySignal(SIGFPE),
              "");
  EXPECT_EXIT(MaskWithPlainSignals(VemROILine, {0, 3.1, 5, 3.9}), ::testing::KilledBySignal(SIGFPE),
              "");
}

TEST(IVemROIParaRunMask, LineMatchesReference) {
  ExpectReferenceAtRandom(VemROILine, 4000, [](Random& r) {
    const double y1 = r.Coordinate();
    const double x1 = r.Coordinate();
    const double y2 = y1 + r.Number(-90, 90);
    double x2 = x1 + r.Number(-20, 20);
    if (Truncated(x2) == Truncated(x1)) x2 += 2;
    return Doubles{y1, x1, y2, x2};
  });
}

// --- Ellipses ---------------------------------------------------------------------------------

TEST(IVemROIParaRunMask, EllipseAlongTheAxes) {
  EXPECT_EQ(MaskOf(VemROIEllipse, {5, 6, 5, 3, 0}),
            Made({{3, 2, 9}, {4, 1, 10}, {5, 1, 11}, {6, 1, 10}, {7, 2, 9}}, 13, 10));
  const char* const kUpright =
      "..........\n"
      "..........\n"
      "...####...\n"
      "..######..\n"
      "..######..\n"
      "..######..\n"
      "..#######.\n"
      "..######..\n"
      "..######..\n"
      "..######..\n"
      "...####...\n"
      "..........\n"
      "..........\n";
  EXPECT_EQ(PictureOf(MaskOf(VemROIEllipse, {6, 5, 5, 3, 90})), kUpright);
  EXPECT_EQ(PictureOf(MaskOf(VemROIEllipse, {6, 5, 3, 5, 0})), kUpright);
  EXPECT_EQ(PictureOf(MaskOf(VemROIEllipse, {6.9, 5.9, 3, 5, 0})), kUpright);
}

TEST(IVemROIParaRunMask, EllipseTurnsCounterClockwise) {
  EXPECT_EQ(PictureOf(MaskOf(VemROIEllipse, {7, 7, 6, 3, 45})),
            "................\n"
            "................\n"
            "................\n"
            ".......#####....\n"
            ".....#######....\n"
            "....########....\n"
            "...#########....\n"
            "...########.....\n"
            "..#########.....\n"
            "..########......\n"
            "..#######.......\n"
            "..#####.........\n"
            "................\n"
            "................\n"
            "................\n"
            "................\n");
}

TEST(IVemROIParaRunMask, EllipseFromLeftAndAbove) {
  EXPECT_EQ(MaskOf(VemROIEllipse, {0, 0, 4, 2, 30}), Made({{0, 0, 3}, {1, 0, 2}, {2, 0, 0}}, 7, 6));
}

// In the uppermost row these ellipses are touched in one point, which is no run: there the solved
// equation has a discriminant of exactly 0, unless a product and a sum are rounded at once.
TEST(IVemROIParaRunMask, EllipseRoundsEachStepByItself) {
  ExpectMasks(
      VemROIEllipse,
      {
          {"Wide", {19, 24, 3, 2, 900}, Made({{18, 21, 26}, {19, 20, 27}, {20, 21, 26}}, 29, 23)},
          {"Flat", {19, 20, 1, 5, -630}, Made({{19, 15, 24}}, 27, 22)},
      });
}

// Foci so far apart that the last digits of pi move them.
TEST(IVemROIParaRunMask, LongEllipseMatchesReference) {
  Random random(77);
  for (int i = 0; i < 500; ++i) {
    const Doubles params = {random.Number(0, 50), random.Number(0, 50), random.Real(1e4, 1e6),
                            random.Real(1, 20), 180.0 * random.Int(-4, 4)};
    ASSERT_EQ(MaskOf(VemROIEllipse, params),
              ReferenceRunMask(VemROIEllipse, params, kWidthBefore, kHeightBefore))
        << ::testing::PrintToString(params);
  }
}

TEST(IVemROIParaRunMask, EllipseMatchesReference) {
  ExpectReferenceAtRandom(VemROIEllipse, 20000, [](Random& r) {
    const double y = r.Coordinate();
    const double x = r.Coordinate();
    const double radius1 = r.Size();
    const double radius2 = r.OneIn(6) ? radius1 : r.Size();
    // Beyond some 10313 degrees, 180 is taken off the angle in radians.
    const double angle = r.OneIn(4) ? r.Number(10300, 40000) : r.Angle();
    return Doubles{y, x, radius1, radius2, angle};
  });
}

// --- Arcs -------------------------------------------------------------------------------------

TEST(IVemROIParaRunMask, Arc) {
  ExpectMasks(
      VemROIArc,
      {
          {"SweepZero", {10, 10, 5, 0, 0}, Made({{10, 15, 15}}, 16, 16)},
          {"SweepZeroFromAFraction",
           {10, 10, 5, 10.5, 0},
           Made({{9, 14, 14}, {9, 14, 14}}, 16, 16)},
          {"ClosesOnItsStart",
           {10, 10, 5, 0, 4},
           Made({{10, 15, 15}, {9, 14, 14}, {9, 14, 14}, {9, 14, 14}, {10, 15, 15}}, 16, 16)},
          {"FractionsOfTheSweep",
           {10, 10, 5, -10, 2.5},
           Made({{10, 14, 14}, {10, 14, 14}, {10, 14, 14}, {10, 14, 14}}, 16, 16)},
          {"CenterLosesItsFraction", {10.9, 10.9, 5, 0, 0}, Made({{10, 15, 15}}, 16, 16)},
          {"RadiusKeepsItsFraction", {10, 10, 5.75, 0, 0}, Made({{10, 15, 15}}, 16, 16)},
          {"RadiusKeepsItsFractionInTheCanvas", {-1, 10, 0.5, 0, 0}, kFailed},
          {"NegativeColumnsDropped", {10, 0, 5, 180, 0}, Made({}, 6, 16)},
          {"NegativeRowsDropped", {0, 10, 5, 90, 0}, Made({}, 16, 6)},
          // With pi the column would be 100.
          {"ThreePointOneFour",
           {20000, 100, 10000, 90, 0},
           Made({{10000, 107, 107}}, 10101, 30001)},
          {"StartNotANumber", {10, 10, 5, kNaN, 3}, Made({}, 16, 16)},
          {"ColumnBeyondFloat",
           {10, 16777217, 5, 0, 0},
           Made({{10, 16777222, 16777222}}, 16777223, 16)},
          {"RowBeyondFloat", {16777217, 10, 5, 0, 0}, Made({{16777217, 15, 15}}, 16, 16777223)},
          {"RadiusDoesNotFit", {10, 10, 1e10, 0, 0}, Made({}, kSmallest, kSmallest)},
      });
}

// From 2147483640 degrees on there are 8 whole numbers of degrees, then the start again.
TEST(IVemROIParaRunMask, ArcIsSampledUpToTheGreatestInteger) {
  const Runs runs = {{5, 11, 11}, {5, 11, 11}, {5, 10, 10}, {5, 10, 10}, {5, 10, 10},
                     {5, 10, 10}, {5, 10, 10}, {5, 10, 10}, {5, 11, 11}};
  EXPECT_EQ(MaskOf(VemROIArc, {10, 10, 5, 2147483640, 1000}), Made(runs, 16, 16));
  EXPECT_EQ(MaskOf(VemROIArc, {10, 10, 5, 2147483640, 1e6}), Made(runs, 16, 16));
  EXPECT_EQ(MaskOf(VemROIArc, {10, 10, 5, 2147483640, 8}), Made(runs, 16, 16));
}

TEST(IVemROIParaRunMask, ArcMatchesReference) {
  ExpectReferenceAtRandom(VemROIArc, 4000, [](Random& r) {
    const double y = r.Coordinate();
    const double x = r.Coordinate();
    const double start = r.Angle();
    return Doubles{y, x, r.Size(), start, r.Sweep()};
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

Doubles RandomVertices(Random& r) {
  const double y = r.Coordinate();
  const double x = r.Coordinate();
  const double reach = r.OneIn(3) ? 4 : 40;
  Doubles params;
  for (int i = r.Int(3, 9); i > 0; --i) {
    params.push_back(y + r.Number(-reach, reach));
    params.push_back(x + r.Number(-reach, reach));
  }
  return params;
}

TEST(IVemROIParaRunMask, IrregularMatchesReference) {
  ExpectReferenceAtRandom(VemROIIrregular, 4000, RandomVertices);
}

TEST(IVemROIParaRunMask, PolygonMatchesReference) {
  ExpectReferenceAtRandom(VemROIPolygon, 4000, RandomVertices);
}

// --- Rings ------------------------------------------------------------------------------------

const char* const kFullRing =
    "...#####...\n"
    ".#########.\n"
    ".#########.\n"
    "###########\n"
    "#####.#####\n"
    "####...####\n"
    "#####.#####\n"
    "###########\n"
    ".#########.\n"
    ".#########.\n"
    "...#####...\n";

TEST(IVemROIParaRunMask, TorusBeyond358DegreesIsAFullRing) {
  for (double sweep : {359.0, 359.5, 360.0, 720.0}) {
    SCOPED_TRACE(sweep);
    EXPECT_EQ(PictureOf(MaskOf(VemROITorus, {5, 5, 2, 5, 0, sweep})), kFullRing);
    EXPECT_EQ(PictureOf(MaskOf(VemROITorus, {5.9, 5.9, 2.9, 5.9, 33, sweep})), kFullRing);
  }
}

// The gap of a sector of 358 degrees lies just below the axis at the right.
TEST(IVemROIParaRunMask, TorusOf358DegreesIsASector) {
  const struct {
    double sweep;
    bool gap;
  } kCases[] = {{358, true}, {358.9, true}, {359, false}, {360, false}};
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.sweep);
    bool covered = false;
    for (const ::Run& run : MaskOf(VemROITorus, {200, 200, 80, 160, 0, c.sweep}).runs) {
      covered = covered || (run.Row == 202 && run.FirstColumn <= 340 && run.LastColumn >= 340);
    }
    EXPECT_EQ(covered, !c.gap);
  }
}

TEST(IVemROIParaRunMask, TorusSectorsTurnCounterClockwise) {
  EXPECT_EQ(PictureOf(MaskOf(VemROITorus, {8, 8, 3, 8, 0, 90})),
            "........####.....\n"
            "........######...\n"
            "........#######..\n"
            "........########.\n"
            "........########.\n"
            "........#########\n"
            "..........#######\n"
            "...........######\n"
            "...........######\n"
            ".................\n"
            ".................\n"
            ".................\n"
            ".................\n"
            ".................\n"
            ".................\n"
            ".................\n"
            ".................\n");
  EXPECT_EQ(PictureOf(MaskOf(VemROITorus, {6, 6, 3, 6, 135.9, 90.9})),
            ".............\n"
            ".............\n"
            ".##..........\n"
            ".###.........\n"
            "#####........\n"
            "####.........\n"
            "####.........\n"
            "####.........\n"
            "#####........\n"
            ".###.........\n"
            ".##..........\n"
            ".............\n"
            ".............\n");
}

// For a sweep of 0 both chains of points are the centre alone.
TEST(IVemROIParaRunMask, TorusOfSweepZeroHasAPoint) {
  EXPECT_EQ(MaskOf(VemROITorus, {5, 5, 2, 5, 0, 0}), Made({{5, 5, 5}}, 11, 11));
}

TEST(IVemROIParaRunMask, TorusDropsWhatLiesOutside) {
  EXPECT_EQ(MaskOf(VemROITorus, {0, -1, 2, 4, 0, 360}),
            Made({{0, 1, 3}, {1, 0, 3}, {2, 0, 3}, {3, 0, 2}, {4, 0, 1}}, 4, 5));
}

TEST(IVemROIParaRunMask, TorusMatchesReference) {
  ExpectReferenceAtRandom(VemROITorus, 4000, [](Random& r) {
    const double y = r.Coordinate();
    const double x = r.Coordinate();
    const double inner = r.OneIn(3) ? r.Real(0.01, 3) : r.Number(1, 25);
    const double outer = inner + (r.OneIn(3) ? r.Real(0.01, 2) : r.Number(1, 15));
    const double start = r.Angle();
    return Doubles{y, x, inner, outer, start, r.Sweep()};
  });
}

TEST(IVemROIParaRunMask, TorusWithoutSamplesHasNoRuns) {
  EXPECT_EQ(MaskOf(VemROITorus, {5, 5, 2, 5, kNaN, 360}), Made({}, 11, 11));
  EXPECT_EQ(MaskOf(VemROITorus, {5, 5, 2, 5, kNaN, 90}), Made({}, 11, 11));
}

TEST(IVemROIParaRunMask, TorusWithARadiusThatDoesNotFitFails) {
  EXPECT_EQ(MaskOf(VemROITorus, {-1, -1, 3e9, 4e9, 0, 360}), kFailed);
}

}  // namespace
