#include "IVemROIPara.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include <gtest/gtest.h>

#include "VemROI.h"
#include "support/OutlineReference.h"
#include "support/RoiShapes.h"

namespace {

OutlineMask Outlined(const Chains& contours, int width, int height) {
  return {true, contours, width, height};
}

const OutlineMask kFailed{false, {}, 0, 0};

struct OutlineCase {
  const char* name;
  Doubles params;  // In stored order: y before x.
  OutlineMask expected;
};

void ExpectOutlines(VemROIType type, const std::vector<OutlineCase>& cases) {
  for (const OutlineCase& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(OutlinesOf(type, c.params), c.expected);
  }
}

// --- Shapes that pass their vertices ----------------------------------------------------------

TEST(IVemROIParaOutlines, Rect1PassesItsCornersClosed) {
  ExpectOutlines(
      VemROIRect1,
      {
          {"Inside", {3, 2, 7, 5}, Outlined({{{2, 3}, {5, 3}, {5, 7}, {2, 7}, {2, 3}}}, 6, 8)},
          {"Truncated",
           {3.9, 2.9, 7.9, 5.9},
           Outlined({{{2, 3}, {5, 3}, {5, 7}, {2, 7}, {2, 3}}}, 6, 8)},
          {"TruncatedTowardZero",
           {-0.9, -1.9, 1, 1},
           Outlined({{{-1, 0}, {1, 0}, {1, 1}, {-1, 1}, {-1, 0}}}, 2, 2)},
          {"CornersSwapped",
           {7, 5, 3, 2},
           Outlined({{{5, 7}, {2, 7}, {2, 3}, {5, 3}, {5, 7}}}, 6, 8)},
          {"ReachingInIsNotClipped",
           {-4, -5, 1, 3},
           Outlined({{{-5, -4}, {3, -4}, {3, 1}, {-5, 1}, {-5, -4}}}, 4, 2)},
          {"EndsAtColumnMinus1",
           {0, -3, 2, -1},
           Outlined({{{-3, 0}, {-1, 0}, {-1, 2}, {-3, 2}, {-3, 0}}}, 0, 3)},
          {"EndsAtRowMinus1",
           {-3, 0, -1, 2},
           Outlined({{{0, -3}, {2, -3}, {2, -1}, {0, -1}, {0, -3}}}, 3, 0)},
          {"EndsAtColumnMinus2", {0, -3, 2, -2}, kFailed},
          {"EndsAtRowMinus2", {-3, 0, -2, 2}, kFailed},
          {"NotANumber",
           {kNaN, 0, 2, 2},
           Outlined({{{0, kSmallest}, {2, kSmallest}, {2, 2}, {0, 2}, {0, kSmallest}}}, 3, 3)},
      });
}

TEST(IVemROIParaOutlines, RunFormRefusesARect1ThatEndsAtColumnMinus1) {
  const IVemROIPara para = Shape(VemROIRect1, {0, -3, 2, -1});
  VemVarArray rows;
  VemVarArray firstColumns;
  VemVarArray lastColumns;
  int width = kWidthBefore;
  int height = kHeightBefore;
  EXPECT_FALSE(para.GetMask(&rows, &firstColumns, &lastColumns, &width, &height));
  EXPECT_EQ(width, 0);
  EXPECT_EQ(height, 0);
}

TEST(IVemROIParaOutlines, LinePassesItsEndsOpen) {
  ExpectOutlines(VemROILine,
                 {
                     {"Vertical", {2, 3, 9, 3}, Outlined({{{3, 2}, {3, 9}}}, 4, 10)},
                     {"Flat", {2, 3, 2, 9}, Outlined({{{3, 2}, {9, 2}}}, 10, 3)},
                     {"Backward", {9, 8, 1, 2.9}, Outlined({{{8, 9}, {2, 1}}}, 9, 10)},
                     {"OnePixel", {2.1, 3.1, 2.9, 3.9}, Outlined({{{3, 2}, {3, 2}}}, 4, 3)},
                     {"ReachingIn", {-4, -5, 0, 0}, Outlined({{{-5, -4}, {0, 0}}}, 1, 1)},
                     {"EndsAtColumnMinus1", {0, -5, 4, -1}, kFailed},
                     {"EndsAtRowMinus1", {-5, 0, -1, 4}, kFailed},
                 });
}

TEST(IVemROIParaOutlines, PolygonAndIrregularPassTheirVerticesClosed) {
  for (VemROIType type : {VemROIPolygon, VemROIIrregular}) {
    SCOPED_TRACE(type);
    ExpectOutlines(
        type,
        {
            {"Triangle",
             {1, 2, 3.9, 7.9, 6, 0},
             Outlined({{{2, 1}, {7, 3}, {0, 6}, {2, 1}}}, 9, 8)},
            {"ClosedByTheCallerToo",
             {1, 2, 3, 7, 6, 0, 1, 2},
             Outlined({{{2, 1}, {7, 3}, {0, 6}, {2, 1}, {2, 1}}}, 9, 8)},
            {"OnePixel", {4, 5, 4, 5, 4, 5}, Outlined({{{5, 4}, {5, 4}, {5, 4}, {5, 4}}}, 7, 6)},
            {"ReachingIn",
             {-9, -8, 0, 3, 2, -1},
             Outlined({{{-8, -9}, {3, 0}, {-1, 2}, {-8, -9}}}, 5, 4)},
            {"EndsAtColumnMinus1",
             {0, -3, 4, -1, 2, -2},
             Outlined({{{-3, 0}, {-1, 4}, {-2, 2}, {-3, 0}}}, 1, 6)},
            {"EndsAtRowMinus1",
             {-3, 0, -1, 4, -2, 2},
             Outlined({{{0, -3}, {4, -1}, {2, -2}, {0, -3}}}, 6, 1)},
            {"EndsAtColumnMinus2", {0, -3, 4, -2, 2, -2}, kFailed},
            {"EndsAtRowMinus2", {-3, 0, -2, 4, -2, 2}, kFailed},
        });
  }
}

TEST(IVemROIParaOutlines, Rect2PassesItsCornersClosed) {
  ExpectOutlines(
      VemROIRect2,
      {
          {"Upright",
           {10, 10, 8, 4, 0},
           Outlined({{{14, 12}, {14, 8}, {6, 8}, {6, 12}, {14, 12}}}, 16, 14)},
          {"Turned90",
           {10, 10, 8, 4, 90},
           Outlined({{{12, 6}, {8, 6}, {8, 14}, {12, 14}, {12, 6}}}, 14, 16)},
          // The centre line runs from (13.5, 6.5) to (6.5, 13.5).
          {"Turned45",
           {10, 10, 10, 4, 45},
           Outlined({{{14, 7}, {12, 5}, {5, 12}, {7, 14}, {14, 7}}}, 16, 16)},
          {"CentreTruncated",
           {10.9, 10.9, 8, 4, 0},
           Outlined({{{14, 12}, {14, 8}, {6, 8}, {6, 12}, {14, 12}}}, 16, 14)},
          // The centre goes through a float: 16777217 becomes 16777216, and so does the end of the
          // centre line one pixel further.
          {"CentreAsFloat",
           {10, 16777217, 2, 4, 0},
           Outlined(
               {{{16777216, 12}, {16777216, 8}, {16777215, 8}, {16777215, 12}, {16777216, 12}}},
               16777218, 14)},
          // Half a turn of 3.1415926 falls short of a flat line by 5.4 rows in a hundred million.
          {"ShortPi",
           {100, 0, 2e8, 4, 180},
           Outlined({{{-1e8, 92}, {-1e8, 96}, {1e8, 107}, {1e8, 103}, {-1e8, 92}}}, 100000002,
                    109)},
          {"EndsAtColumnMinus1",
           {10, -5, 8, 4, 0},
           Outlined({{{-1, 12}, {-1, 8}, {-9, 8}, {-9, 12}, {-1, 12}}}, 1, 14)},
          {"EndsAtColumnMinus2", {10, -6, 8, 4, 0}, kFailed},
          {"EndsAtRowMinus2", {-4, 10, 8, 4, 0}, kFailed},
      });
}

// --- Arcs and rings ---------------------------------------------------------------------------

struct SampleCase {
  const char* name;
  Doubles params;
  std::vector<std::size_t> lengths;  // Of the contours.
};

void ExpectLengths(VemROIType type, const std::vector<SampleCase>& cases) {
  for (const SampleCase& c : cases) {
    SCOPED_TRACE(c.name);
    const OutlineMask mask = OutlinesOf(type, c.params);
    EXPECT_TRUE(mask.result);
    std::vector<std::size_t> lengths;
    for (const Chain& contour : mask.contours) lengths.push_back(contour.size());
    EXPECT_EQ(lengths, c.lengths);
    EXPECT_EQ(mask.width, 71);
    EXPECT_EQ(mask.height, 81);
  }
}

TEST(IVemROIParaOutlines, ArcHasASamplePerDegreeAndItsStartAgain) {
  ExpectLengths(VemROIArc, {
                               {"Sweep0", {50, 40, 30, 0, 0}, {1}},
                               {"Sweep0FromAFraction", {50, 40, 30, 10.5, 0}, {2}},
                               {"Sweep0FromANegativeFraction", {50, 40, 30, -10.5, 0}, {1}},
                               {"EndIsNotIncluded", {50, 40, 30, 10, 1}, {2}},
                               {"EndJustPassed", {50, 40, 30, 10, 1.001}, {3}},
                               {"Sweep1FromAFraction", {50, 40, 30, 10.5, 1}, {3}},
                               {"Sweep90", {50, 40, 30, 0, 90}, {91}},
                               {"Sweep90FromBelow", {50, 40, 30, -45, 90}, {91}},
                               {"Sweep360", {50, 40, 30, 0, 360}, {361}},
                               {"Sweep720", {50, 40, 30, 0, 720}, {721}},
                           });
}

TEST(IVemROIParaOutlines, ArcClosesOnItsStart) {
  const Chain quarter = OutlinesOf(VemROIArc, {50, 40, 30, 0, 90}).contours.at(0);
  EXPECT_EQ(quarter[0], cv::Point2d(70, 50));
  EXPECT_EQ(quarter[45], cv::Point2d(61, 28));
  EXPECT_EQ(quarter[89], cv::Point2d(40, 20));
  EXPECT_EQ(quarter[90], cv::Point2d(70, 50));
  // A fraction of the start is lost in all samples but the closing one: at 30.5 degrees the
  // column is 1861, at 30 degrees 1866.
  ExpectOutlines(VemROIArc, {{"FromAFraction",
                              {1000, 1000, 1000, 30.5, 0.25},
                              Outlined({{{1866, 500}, {1861, 492}}}, 2001, 2001)}});
}

TEST(IVemROIParaOutlines, ArcTellsItsOwnSamples) {
  ExpectOutlines(
      VemROIArc,
      {
          {"CentreTruncatedRadiusNot",
           {50.9, 40.9, 10.75, 0, 1},
           Outlined({{{50, 50}, {50, 50}}}, 51, 61)},
          // Where pi is 3.14, half a turn is 1.6 rows short at a radius of 1000.
          {"ShortPi", {2000, 2000, 1000, 180, 0}, Outlined({{{1000, 1998}}}, 3001, 3001)},
          {"OutsideIsNotClipped", {0, -4, 4, 90, 0}, Outlined({{{-3, -3}}}, 1, 5)},
          {"StartIsNotANumber",
           {50, 40, 30, kNaN, 90},
           Outlined({{{kSmallest, kSmallest}}}, 71, 81)},
          {"TouchesColumn0", {50, -30, 30, 0, 0}, Outlined({{{0, 50}}}, 1, 81)},
          {"LeftOfTheOrigin", {50, -30, 29.5, 0, 0}, kFailed},
          {"AboveTheOrigin", {-30, 50, 29.5, 0, 0}, kFailed},
      });
}

TEST(IVemROIParaOutlines, TorusIsTwoContoursOrASector) {
  ExpectLengths(VemROITorus,
                {
                    {"Sweep0", {50, 40, 20, 30, 0, 0}, {1, 1}},
                    {"SweepBelow1", {50, 40, 20, 30, 0, 0.999}, {1, 1}},
                    {"Sweep0FromANegativeFraction", {50, 40, 20, 30, -10.5, 0}, {0, 0}},
                    {"Sweep1", {50, 40, 20, 30, 0, 1}, {5}},
                    {"Sweep90", {50, 40, 20, 30, 0, 90}, {183}},
                    {"Sweep90FromAFraction", {50, 40, 20, 30, 10.5, 90}, {183}},
                    {"Sweep90FromBelowAFraction", {50, 40, 20, 30, -10.5, 90}, {181}},
                    {"Sweep358", {50, 40, 20, 30, 0, 358}, {719}},
                    {"Sweep359", {50, 40, 20, 30, 0, 359}, {721}},
                    {"Sweep359AndAHalf", {50, 40, 20, 30, 0, 359.5}, {721}},
                    {"Sweep360", {50, 40, 20, 30, 0, 360}, {361, 361}},
                    {"Sweep360AndAHalf", {50, 40, 20, 30, 0, 360.5}, {361, 361}},
                    {"Sweep361", {50, 40, 20, 30, 0, 361}, {725}},
                    {"Sweep719", {50, 40, 20, 30, 0, 719}, {1441}},
                    {"Sweep720", {50, 40, 20, 30, 0, 720}, {721, 721}},
                    {"Sweep720AndAHalf", {50, 40, 20, 30, 0, 720.5}, {721, 721}},
                });
}

TEST(IVemROIParaOutlines, TorusTellsItsOwnSamples) {
  ExpectOutlines(
      VemROITorus,
      {
          {"SectorGoesOutAlongTheInnerCircleAndBackAlongTheOuter",
           {30, 30, 10.5, 20.5, 0, 2},
           Outlined({{{40, 30}, {40, 29}, {40, 29}, {50, 29}, {50, 29}, {50, 30}, {40, 30}}}, 51,
                    51)},
          {"SweepDoesNotFit", {30, 30, 10, 20, kNaN, 1e10}, Outlined({{}, {}}, 51, 51)},
          {"WholeHasTheInnerFirst",
           {30, 30, 10.5, 20.5, 0, 0},
           Outlined({{{40, 30}}, {{50, 30}}}, 51, 51)},
          {"CentreTruncated",
           {30.9, 30.9, 10.5, 20.5, 0, 0},
           Outlined({{{40, 30}}, {{50, 30}}}, 51, 51)},
          {"StartTruncated",
           {30, 30, 10.5, 20.5, 0.9, 0},
           Outlined({{{40, 30}}, {{50, 30}}}, 51, 51)},
          // Where pi is 3.14, half a turn is 1.6 rows short at a radius of 1000.
          {"ShortPi",
           {3000, 3000, 1000, 2000, 180, 0},
           Outlined({{{2000, 2998}}, {{1000, 2996}}}, 5001, 5001)},
          {"OutsideIsNotClipped", {0, -4, 2, 4, 90, 0}, Outlined({{{-3, -1}}, {{-3, -3}}}, 1, 5)},
          {"NoSamples", {30, 30, 10, 20, -10.5, 0}, Outlined({{}, {}}, 51, 51)},
          {"StartIsNotANumber", {30, 30, 10, 20, kNaN, 90}, Outlined({{}}, 51, 51)},
          {"StartDoesNotFitAnInteger", {30, 30, 10, 20, -1e10, 90}, Outlined({{}}, 51, 51)},
          {"LeftOfTheOrigin", {30, -20, 10, 19.5, 0, 90}, kFailed},
          {"AboveTheOrigin", {-20, 30, 10, 19.5, 0, 90}, kFailed},
      });
}

// One past the last column is told before it is truncated: a number too large gives the smallest.
TEST(IVemROIParaOutlines, CanvasOfArcsAndRingsIsTruncatedOnce) {
  const Chain inner = {{15, 10}};
  ExpectOutlines(VemROITorus, {
                                  {"LargestThatFits",
                                   {10, 10, 5, 2147483636.0, 0, 0},
                                   Outlined({inner, {{2147483646, 10}}}, 2147483647, 2147483647)},
                                  {"OnePixelMore",
                                   {10, 10, 5, 2147483637.0, 0, 0},
                                   Outlined({inner, {{2147483647, 10}}}, kSmallest, kSmallest)},
                                  {"TwoPixelsMore",
                                   {10, 10, 5, 2147483638.0, 0, 0},
                                   Outlined({inner, {{kSmallest, 10}}}, kSmallest, kSmallest)},
                              });
  ExpectOutlines(VemROIArc, {
                                {"LargestThatFits",
                                 {10, 10, 2147483636.0, 0, 0},
                                 Outlined({{{2147483646, 10}}}, 2147483647, 2147483647)},
                                {"OnePixelMore",
                                 {10, 10, 2147483637.0, 0, 0},
                                 Outlined({{{2147483647, 10}}}, kSmallest, kSmallest)},
                                {"TwoPixelsMore",
                                 {10, 10, 2147483638.0, 0, 0},
                                 Outlined({{{kSmallest, 10}}}, kSmallest, kSmallest)},
                            });
}

// The whole numbers of degrees end at 2147483647.
TEST(IVemROIParaOutlines, SamplesEndAtTheGreatestInteger) {
  ExpectOutlines(VemROIArc, {{"Arc",
                              {10, 10, 5, 2147483645.5, 1000},
                              Outlined({{{10, 5}, {10, 5}, {10, 5}, {10, 5}}}, 16, 16)}});
  const Chain inner = {{10, 5}, {10, 5}, {10, 5}};
  const Chain outer = {{11, 2}, {10, 2}, {10, 2}};
  const Chain sector = {{10, 5}, {10, 5}, {10, 5}, {10, 2}, {10, 2}, {11, 2}, {10, 5}};
  ExpectOutlines(
      VemROITorus,
      {
          {"Sector", {10, 10, 5, 8, 2147483645, 90}, Outlined({sector}, 19, 19)},
          {"Whole", {10, 10, 5, 8, 2147483645, 360}, Outlined({inner, outer}, 19, 19)},
          {"FarBeyond", {10, 10, 5, 8, 2147483645, 3.6e6}, Outlined({inner, outer}, 19, 19)},
      });
}

TEST(IVemROIParaOutlines, TorusOfTwoTurnsGoesRoundTwice) {
  const OutlineMask once = OutlinesOf(VemROITorus, {500, 400, 200, 300, 0, 360});
  const OutlineMask twice = OutlinesOf(VemROITorus, {500, 400, 200, 300, 0, 720});
  ASSERT_EQ(twice.contours.size(), 2U);
  for (std::size_t i = 0; i < 2; ++i) {
    const Chain& contour = twice.contours[i];
    ASSERT_EQ(contour.size(), 721U);
    EXPECT_TRUE(std::equal(once.contours[i].begin(), once.contours[i].end(), contour.begin()));
    // The second turn is 0.18 degrees behind: 360 times 3.14 / 180 is that short of a full turn.
    for (std::size_t k = 0; k < 360; ++k) {
      EXPECT_LT(cv::norm(contour[k + 360] - contour[k]), 3.0);
    }
  }
  EXPECT_LT(cv::norm(once.contours[0][90] - cv::Point2d(400, 300)), 2.0);
  EXPECT_LT(cv::norm(once.contours[1][90] - cv::Point2d(400, 200)), 2.0);
}

// --- Shapes that are painted and traced -------------------------------------------------------

TEST(IVemROIParaOutlines, CircleIsTraced) {
  // ...#.
  // ..###
  // ...#.
  const Chain diamond = {{3, 1}, {2, 2}, {3, 3}, {4, 2}, {3, 1}};
  ExpectOutlines(VemROICircle,
                 {
                     {"Radius1", {2, 3, 1}, Outlined({diamond}, 5, 4)},
                     {"NumbersTruncated", {2.9, 3.9, 1.9}, Outlined({diamond}, 5, 4)},
                     {"Radius0IsOnePixel", {5, 6, 0.5}, Outlined({{{6, 5}, {6, 5}}}, 7, 6)},
                     {"ReachingIn", {0, 0, 1}, Outlined({{{0, 0}, {0, 1}, {1, 0}, {0, 0}}}, 2, 2)},
                     {"TouchesColumn0", {3, -2, 2}, Outlined({{{0, 3}, {0, 3}}}, 1, 6)},
                     {"TouchesRow0", {-2, 3, 2}, Outlined({{{3, 0}, {3, 0}}}, 6, 1)},
                     {"LeftOfTheOrigin", {3, -3, 2}, kFailed},
                     {"AboveTheOrigin", {-3, 3, 2}, kFailed},
                     {"RadiusDoesNotFitAnInteger", {3, 3, 1e10}, kFailed},
                 });
}

TEST(IVemROIParaOutlines, EllipseIsTraced) {
  // Its box, 2 to 8 by 3 to 5, leaves a column and a row to spare.
  // ...######.
  // ..#######.
  // ..#######.
  const OutlineMask flat = Outlined({{{3, 3}, {2, 4}, {2, 5}, {8, 5}, {8, 3}, {3, 3}}}, 10, 7);
  ExpectOutlines(VemROIEllipse, {
                                    {"Whole", {4, 5, 3, 1, 0}, flat},
                                    {"CentreTruncated", {4.9, 5.9, 3, 1, 0}, flat},
                                    {"AlongItsSecondAxis", {4, 5, 1, 3, 90}, flat},
                                });
}

TEST(IVemROIParaOutlines, EllipseLiesAlongItsAngle) {
  for (const auto& [radius1, radius2, angle] :
       {std::array<double, 3>{30, 5, 45}, {5, 30, -45}, {30, 5, -135}, {5, 30, 135}}) {
    const Chain contour =
        OutlinesOf(VemROIEllipse, {50, 50, radius1, radius2, angle}).contours.at(0);
    // The long axis rises to the right.
    for (const cv::Point2d& p : contour) EXPECT_LT(std::abs(p.x - 50 + p.y - 50), 10);
    EXPECT_LT(contour[0].y, 35);
    EXPECT_GT(contour[0].x, 65);
  }
}

// The chord of 5 degrees that leads down from the rightmost point, at column 10 and row 5, ends so
// far out that the products of its lengths need more than 64 bits. It leads 2860/65536 of a column
// to the left in each row.
TEST(IVemROIParaOutlines, EllipseOfAFarCentreEndsAtItsChord) {
  const OutlineMask mask = OutlinesOf(VemROIEllipse, {5, -9999990, 1e7, 1e7, 0});
  ASSERT_TRUE(mask.result);
  VemContourArray contours = ContoursOf(mask.contours);
  IVemROIPara para;
  const cv::Mat painted = para.ToMAT(contours, 12, 1000);
  for (int row = 5; row < painted.rows; ++row) {
    const int last = (10 * 65536 + 32768 - 2860 * (row - 5)) >> 16;
    for (int column = 0; column < painted.cols; ++column) {
      ASSERT_EQ(painted.at<unsigned char>(row, column), column <= last ? 255 : 0)
          << "row " << row << ", column " << column;
    }
  }
}

TEST(IVemROIParaOutlines, EllipseOutsideFails) {
  // A box that ends at -2 is outside, at -1 it leaves a canvas without foreground.
  ExpectOutlines(VemROIEllipse,
                 {
                     {"LeftOfTheOrigin", {50, -12, 10, 10, 0}, kFailed},
                     {"AboveTheOrigin", {-12, 50, 10, 10, 0}, kFailed},
                     {"EndsAtColumnMinus1", {50, -11, 10, 10, 0}, Outlined({}, 1, 62)},
                     {"EndsAtRowMinus1", {-11, 50, 10, 10, 0}, Outlined({}, 62, 1)},
                 });
}

TEST(IVemROIParaOutlines, MaskIsTraced) {
  struct {
    const char* name;
    Runs runs;
    int width;
    int height;
    OutlineMask expected;
  } cases[] = {
      {"NoRuns", {}, 640, 480, Outlined({}, 640, 480)},
      {"NoCanvas", {{0, 0, 3}}, 0, 0, Outlined({}, 0, 0)},
      {"NoColumns", {{0, 0, 3}}, 0, 5, Outlined({}, 0, 5)},
      {"NoRows", {{0, 0, 3}}, 5, 0, Outlined({}, 5, 0)},
      {"NegativeWidth", {{0, 0, 3}}, -1, 5, kFailed},
      {"NegativeHeight", {{0, 0, 3}}, 5, -1, kFailed},
      {"OneRun", {{2, 1, 3}}, 640, 480, Outlined({{{1, 2}, {3, 2}, {1, 2}}}, 640, 480)},
      {"ClippedToItsCanvas",
       {{-1, 0, 5}, {0, -9, 1}, {1, 3, 99}, {2, 5, 9}, {3, 0, 3}},
       5,
       3,
       Outlined({{{0, 0}, {1, 0}, {0, 0}}, {{3, 1}, {4, 1}, {3, 1}}}, 5, 3)},
      // ####
      // #..#
      // ####
      {"HoleFollowsItsOuterBorder",
       {{0, 0, 3}, {1, 0, 0}, {1, 3, 3}, {2, 0, 3}},
       6,
       4,
       Outlined({{{0, 0}, {0, 2}, {3, 2}, {3, 0}, {0, 0}},
                 {{0, 1}, {1, 0}, {2, 0}, {3, 1}, {2, 2}, {1, 2}, {0, 1}}},
                6, 4)},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    IVemROIPara para = Mask(c.runs, c.width, c.height);
    EXPECT_EQ(OutlinesOf(para), c.expected);
  }
}

cv::Mat Painted(const Runs& runs, int width, int height) {
  cv::Mat raster = cv::Mat::zeros(height, width, CV_8UC1);
  for (const Run& run : runs) {
    for (int column = run.FirstColumn; column <= run.LastColumn; ++column) {
      if (run.Row < 0 || run.Row >= height || column < 0 || column >= width) continue;
      raster.at<unsigned char>(run.Row, column) = 255;
    }
  }
  return raster;
}

TEST(IVemROIParaOutlines, RandomMasksAreTraced) {
  Dice dice(99);
  std::size_t most = 0;
  for (int i = 0; i < 2000; ++i) {
    const int width = dice.Int(2, 40);
    const int height = dice.Int(2, 30);
    const int longest = dice.OneIn(3) ? 1 : 12;
    Runs runs(static_cast<std::size_t>(dice.Int(0, width * height / 3)));
    for (::Run& run : runs) {
      run.Row = dice.Int(-2, height + 1);
      run.FirstColumn = dice.Int(-5, width + 4);
      run.LastColumn = run.FirstColumn + dice.Int(-1, longest);
    }
    const OutlineMask expected{true, TracedContours(Painted(runs, width, height)), width, height};
    IVemROIPara para = Mask(runs, width, height);
    ASSERT_EQ(OutlinesOf(para), expected);
    VemROI roi;
    roi.GenMask(para.Rows, para.FirstColumns, para.LastColumns, width, height);
    const VemROI& handle = roi;
    ASSERT_EQ(OutlinesOf(handle), expected);
    most = std::max(most, expected.contours.size());
  }
  EXPECT_GT(most, 30U);
}

// --- What is left -----------------------------------------------------------------------------

TEST(IVemROIParaOutlines, ShapesWithoutOutlinesLeaveTheCanvasAlone) {
  const OutlineMask none{false, {}, kWidthBefore, kHeightBefore};
  const OutlineMask nothing{true, {}, kWidthBefore, kHeightBefore};
  EXPECT_EQ(OutlinesOf(VemROINone, {}), none);
  EXPECT_EQ(OutlinesOf(VemROIPoint, {3, 4}), nothing);
  EXPECT_EQ(OutlinesOf(static_cast<VemROIType>(12), {1, 2, 3, 4}), nothing);
  EXPECT_EQ(OutlinesOf(static_cast<VemROIType>(2147483647), {}), nothing);
  VemROI roi;
  EXPECT_EQ(OutlinesOf(roi), none);
  VemPoint point(3, 4);
  roi.GenPoint(point);
  EXPECT_EQ(OutlinesOf(roi), nothing);
}

// A generator from points drops the numbers of a shape, but not its type, when there are too few.
TEST(IVemROIParaOutlines, ShapesWithoutNumbersDoNoHarm) {
  for (int type = VemROIRect1; type < VemROIMask; ++type) {
    SCOPED_TRACE(type);
    const OutlineMask mask = OutlinesOf(static_cast<VemROIType>(type), {});
    EXPECT_LE(mask.contours.size(), 2U);
    EXPECT_LE(mask.width, 3);
    EXPECT_LE(mask.height, 3);
  }
}

TEST(IVemROIParaOutlines, ShapeIsOnlyRead) {
  const struct {
    VemROIType type;
    Doubles params;
  } shapes[] = {
      {VemROIRect1, {3, 2, 7, 5}},
      {VemROICircle, {9, 9, 4}},
      {VemROITorus, {9, 9, 4, 7, 0, 90}},
      {VemROIPolygon, {1, 2, 3, 7, 6, 0}},
      {VemROINone, {}},
      {VemROIIrregular, {1, 2, 3, 7, 6, 0}},
      {VemROIRect2, {10, 10, 8, 4, 45}},
      {VemROILine, {2, 3, 9, 3}},
      {VemROIEllipse, {10, 10, 8, 4, 45}},
      {VemROIArc, {10, 10, 8, 4, 45}},
      {VemROIPoint, {1, 2}},
      {VemROIMask, {}},
  };
  for (const auto& shape : shapes) {
    SCOPED_TRACE(shape.type);
    IVemROIPara para = Shape(shape.type, shape.params);
    const IVemROIPara before = Shape(shape.type, shape.params);
    OutlinesOf(para);
    EXPECT_EQ(para.Type, shape.type);
    EXPECT_EQ(para.Width, 12);
    EXPECT_EQ(para.Height, 34);
    EXPECT_TRUE(Same(para.Params, before.Params));
    EXPECT_TRUE(Same(para.Rows, before.Rows));
    EXPECT_TRUE(Same(para.FirstColumns, before.FirstColumns));
    EXPECT_TRUE(Same(para.LastColumns, before.LastColumns));
  }
}

}  // namespace
