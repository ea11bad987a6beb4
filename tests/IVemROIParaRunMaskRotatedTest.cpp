#include "IVemROIPara.h"

#include <algorithm>
#include <string>

#include <gtest/gtest.h>

#include "support/RoiShapes.h"

namespace {

// --- Rotated rectangles -----------------------------------------------------------------------

TEST(IVemROIParaRunMaskRotated, Rect2AtRightAnglesHasEqualRows) {
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

TEST(IVemROIParaRunMaskRotated, Rect2Tilted) {
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
TEST(IVemROIParaRunMaskRotated, Rect2At89Point9FollowsItsEdges) {
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
TEST(IVemROIParaRunMaskRotated, Rect2WithEdgesThatBecameStraight) {
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
TEST(IVemROIParaRunMaskRotated, Rect2RoundsEachStepByItself) {
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
TEST(IVemROIParaRunMaskRotated, Rect2PrefersTheCornerWhereAScanBegins) {
  const RunMask mask = MaskOf(VemROIRect2, {-3, 23, 3.11809, 46.6292, 164.986});
  ASSERT_EQ(mask.runs.size(), 20u);
  EXPECT_EQ(mask.runs.front(), (::Run{0, 20, 23}));
  EXPECT_EQ(mask.runs[10], (::Run{10, 17, 20}));
}

// Where floats are whole numbers, or only the even ones.
TEST(IVemROIParaRunMaskRotated, FarRect2MatchesReference) {
  Dice random(78);
  for (int i = 0; i < 2000; ++i) {
    const Doubles params = {16777216.0 + random.Int(-30, 30), 16777216.0 + random.Int(-30, 30),
                            random.Size(), random.Size(), random.Turn()};
    ASSERT_EQ(MaskOf(VemROIRect2, params),
              ReferenceRunMask(VemROIRect2, params, kWidthBefore, kHeightBefore))
        << ::testing::PrintToString(params);
  }
}

TEST(IVemROIParaRunMaskRotated, Rect2MatchesReference) {
  ExpectReferenceAtRandom(VemROIRect2, 20000, [](Dice& r) {
    const double y = r.Near();
    const double x = r.Near();
    const double length1 = 2 * r.Size();
    const double length2 = 2 * r.Size();
    return Doubles{y, x, length1, length2, r.Turn()};
  });
}

// --- Ellipses ---------------------------------------------------------------------------------

TEST(IVemROIParaRunMaskRotated, EllipseAlongTheAxes) {
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

TEST(IVemROIParaRunMaskRotated, EllipseTurnsCounterClockwise) {
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

TEST(IVemROIParaRunMaskRotated, EllipseFromLeftAndAbove) {
  EXPECT_EQ(MaskOf(VemROIEllipse, {0, 0, 4, 2, 30}), Made({{0, 0, 3}, {1, 0, 2}, {2, 0, 0}}, 7, 6));
}

// In the uppermost row these ellipses are touched in one point, which is no run: there the solved
// equation has a discriminant of exactly 0, unless a product and a sum are rounded at once.
TEST(IVemROIParaRunMaskRotated, EllipseRoundsEachStepByItself) {
  ExpectMasks(
      VemROIEllipse,
      {
          {"Wide", {19, 24, 3, 2, 900}, Made({{18, 21, 26}, {19, 20, 27}, {20, 21, 26}}, 29, 23)},
          {"Flat", {19, 20, 1, 5, -630}, Made({{19, 15, 24}}, 27, 22)},
      });
}

// The box around the ellipse ends next to a whole number; with a product and a difference rounded
// at once, it would be a column wider.
TEST(IVemROIParaRunMaskRotated, EllipseBoxRoundsEachStepByItself) {
  const struct {
    Doubles params;
    int width;
    int height;
  } kCases[] = {
      {{0, 29, 8, 58, 57}, 84, 41}, {{-19, 27, 8, 58, 57}, 82, 22}, {{-34, 25, 58, 8, 33}, 80, 7}};
  for (const auto& c : kCases) {
    const RunMask mask = MaskOf(VemROIEllipse, c.params);
    EXPECT_EQ(mask.width, c.width) << ::testing::PrintToString(c.params);
    EXPECT_EQ(mask.height, c.height) << ::testing::PrintToString(c.params);
  }
}

// Foci so far apart that the last digits of pi move them.
TEST(IVemROIParaRunMaskRotated, LongEllipseMatchesReference) {
  Dice random(77);
  for (int i = 0; i < 500; ++i) {
    const Doubles params = {random.Number(0, 50), random.Number(0, 50), random.Real(1e4, 1e6),
                            random.Real(1, 20), 180.0 * random.Int(-4, 4)};
    ASSERT_EQ(MaskOf(VemROIEllipse, params),
              ReferenceRunMask(VemROIEllipse, params, kWidthBefore, kHeightBefore))
        << ::testing::PrintToString(params);
  }
}

TEST(IVemROIParaRunMaskRotated, EllipseMatchesReference) {
  ExpectReferenceAtRandom(VemROIEllipse, 20000, [](Dice& r) {
    const double y = r.Near();
    const double x = r.Near();
    const double radius1 = r.Size();
    const double radius2 = r.OneIn(6) ? radius1 : r.Size();
    // Beyond some 10313 degrees, 180 is taken off the angle in radians.
    const double angle = r.OneIn(4) ? r.Number(10300, 40000) : r.Turn();
    return Doubles{y, x, radius1, radius2, angle};
  });
}

}  // namespace
