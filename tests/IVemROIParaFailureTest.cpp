#include "IVemROIPara.h"

#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

#include "support/HeapCounter.h"
#include "support/RoiShapes.h"

// What a shape and its masks are where memory runs out, block by block.

namespace {

struct ShapeCase {
  const char* name;
  VemROIType type;
  Doubles params;
};

const ShapeCase kShapeCases[] = {
    {"Rect1", VemROIRect1, {2, 3, 40, 50}},
    {"Circle", VemROICircle, {30, 40, 25}},
    {"Ring", VemROITorus, {60, 70, 20, 50, 10, 360}},
    {"Sector", VemROITorus, {60, 70, 20, 50, 10, 100}},
    {"Polygon", VemROIPolygon, {0, 0, 5, 90, 80, 60, 20, 10}},
    {"WidePolygon", VemROIPolygon, {0, 0, 5, 9000, 80, 6000, 20, 10}},
    {"TallPolygon", VemROIPolygon, {0, 0, 5, 90, 2500, 60}},
    {"Irregular", VemROIIrregular, {0, 0, 5, 90, 80, 60}},
    {"Rect2", VemROIRect2, {50, 60, 40, 30, 33}},
    {"Line", VemROILine, {3, 4, 90, 20}},
    {"Ellipse", VemROIEllipse, {60, 70, 40, 30, 20}},
    {"Arc", VemROIArc, {60, 70, 40, 20, 200}},
};

class IVemROIParaFailure : public testing::TestWithParam<ShapeCase> {
 protected:
  void SetUp() override {
    if (!HeapCounter::kCounts) GTEST_SKIP() << "the sanitizer has its own new";
    MakeShape(para_, GetParam().type, GetParam().params);
  }

  IVemROIPara para_;
};

TEST_P(IVemROIParaFailure, RunMasksLeaveEmptyArraysAndTheCanvas) {
  VemVarArray rows;
  VemVarArray firstColumns;
  VemVarArray lastColumns;
  int width = kWidthBefore;
  int height = kHeightBefore;
  const int failures =
      FailAtEachBlock([&] { para_.GetMask(&rows, &firstColumns, &lastColumns, &width, &height); },
                      [&] {
                        EXPECT_EQ(rows.Length(), 0);
                        EXPECT_EQ(firstColumns.Length(), 0);
                        EXPECT_EQ(lastColumns.Length(), 0);
                        EXPECT_EQ(width, kWidthBefore);
                        EXPECT_EQ(height, kHeightBefore);
                      });
  EXPECT_GE(failures, 2);  // Room that one attempt has made, the next need not ask for.
  EXPECT_EQ(RunsOf(rows, firstColumns, lastColumns),
            MaskOf(GetParam().type, GetParam().params).runs);
}

TEST_P(IVemROIParaFailure, OutlinesLeaveAnEmptyArray) {
  VemContourArray contours;
  int width = kWidthBefore;
  int height = kHeightBefore;
  const int failures = FailAtEachBlock([&] { para_.GetMask(&contours, &width, &height); },
                                       [&] { EXPECT_EQ(contours.Length(), 0); });
  EXPECT_GE(failures, 2);
  EXPECT_GE(contours.Length(), 1);
}

INSTANTIATE_TEST_SUITE_P(Shapes, IVemROIParaFailure, testing::ValuesIn(kShapeCases),
                         [](const auto& shape) { return shape.param.name; });

// So many runs that some are in the lists already when memory runs out.
TEST(IVemROIParaFailureOfMasks, MasksFromContoursLeaveNoShape) {
  if (!HeapCounter::kCounts) GTEST_SKIP() << "the sanitizer has its own new";
  VemContourArray contours = ContoursOf({{{0, 0}, {30, 0}, {20, 2500}, {3, 1800}}});
  IVemROIPara para;
  const int failures = FailAtEachBlock([&] { para.GenMask(contours, 40, 2600); },
                                       [&] {
                                         EXPECT_EQ(para.Type, VemROINone);
                                         EXPECT_EQ(para.Rows.Length(), 0);
                                         EXPECT_EQ(para.FirstColumns.Length(), 0);
                                         EXPECT_EQ(para.LastColumns.Length(), 0);
                                       });
  EXPECT_GE(failures, 3);
  EXPECT_EQ(para.Type, VemROIMask);
  EXPECT_EQ(para.Rows.Length(), 2501);
}

struct LongCase {
  const char* name;
  VemROIType type;
  Doubles params;
  int length;
  long blocks;  // One for each array, one for an arc's samples.
};

// Shapes whose room is asked for in one piece, so that one too large for memory fails at once.
TEST(IVemROIParaFailureOfMasks, RoomIsAskedForFirst) {
  if (!HeapCounter::kCounts) GTEST_SKIP() << "the sanitizer has its own new";
  const LongCase cases[] = {
      {"Rect1", VemROIRect1, {0, 0, 19999, 9}, 20000, 3},
      {"Line", VemROILine, {0, 0, 20000, 10}, 20001, 3},
      {"LineUpward", VemROILine, {20000, 0, 0, 10}, 20001, 3},
      {"LineFromFarLeft", VemROILine, {-1e9, -1e9, 1000, 1000}, 1001, 3},
      {"LineMostlyLeft", VemROILine, {0, -999, 2000, 1}, 4, 3},
      {"Arc", VemROIArc, {500, 500, 400, 0, 20000}, 20001, 4},
  };
  for (const LongCase& c : cases) {
    SCOPED_TRACE(c.name);
    IVemROIPara para;
    MakeShape(para, c.type, c.params);
    VemVarArray rows, firstColumns, lastColumns;
    int width = 0;
    int height = 0;
    const HeapCounter counter;
    EXPECT_TRUE(para.GetMask(&rows, &firstColumns, &lastColumns, &width, &height));
    EXPECT_EQ(counter.Taken(), c.blocks);
    EXPECT_EQ(rows.Length(), c.length);
  }
}

// Only who writes the fields can store one.
TEST(IVemROIParaFailureOfMasks, NegativeRadiusRaisesInOneForm) {
  const struct {
    const char* name;
    VemROIType type;
    Doubles params;
    bool runsRaise;
  } cases[] = {
      {"Circle", VemROICircle, {100, 100, -5}, false},
      {"EllipseFirst", VemROIEllipse, {100, 100, -40, 30, 20}, false},
      {"EllipseSecond", VemROIEllipse, {100, 100, 40, -30, 20}, false},
      {"Ring", VemROITorus, {100, 100, 20, -50, 10, 360}, true},
      {"Sector", VemROITorus, {100, 100, 20, -50, 10, 90}, true},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    IVemROIPara para;
    MakeShape(para, c.type, c.params);
    VemVarArray rows, firstColumns, lastColumns;
    VemContourArray contours;
    int width = kWidthBefore;
    int height = kHeightBefore;
    const auto runs = [&] {
      return para.GetMask(&rows, &firstColumns, &lastColumns, &width, &height);
    };
    const auto outlines = [&] { return para.GetMask(&contours, &width, &height); };
    if (c.runsRaise) {
      EXPECT_THROW(runs(), cv::Exception);
    } else {
      EXPECT_THROW(outlines(), cv::Exception);
    }
    EXPECT_EQ(width, kWidthBefore);
    EXPECT_EQ(height, kHeightBefore);
    EXPECT_TRUE(c.runsRaise ? outlines() : runs());
  }
}

}  // namespace
