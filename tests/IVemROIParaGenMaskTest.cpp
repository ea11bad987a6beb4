#include "IVemROIPara.h"

#include <climits>

#include <gtest/gtest.h>

#include "support/RoiRasters.h"

namespace {

// --- GenMask from runs ------------------------------------------------------------------------

struct CanvasCase {
  int width;
  int height;
  bool accepted;
};

const CanvasCase kCanvasCases[] = {
    {2, 2, true},   {1, 2, false},  {2, 1, false},      {1, 1, false},       {0, 9, false},
    {9, 0, false},  {-5, 9, false}, {9, -5, false},     {INT_MIN, 9, false}, {9, INT_MIN, false},
    {640, 2, true}, {2, 480, true}, {INT_MAX, 2, true}, {1, 480, false},     {640, 1, false},
    {2, 9, true},   {9, 2, true},
};

TEST(IVemROIParaGenMask, RunMaskNeedsACanvasOf2By2) {
  for (const CanvasCase& c : kCanvasCases) {
    SCOPED_TRACE(testing::Message() << c.width << " by " << c.height);
    Triple triple({{0, 0, 1}});
    IVemROIPara para = Circle();
    para.GenMask(triple.rows, triple.firsts, triple.lasts, c.width, c.height);
    VemROI roi;
    VemPoint point(1, 2);
    roi.GenPoint(point);
    roi.GenMask(triple.rows, triple.firsts, triple.lasts, c.width, c.height);
    if (c.accepted) {
      ExpectMask(para, {{0, 0, 1}}, c.width, c.height);
      ExpectMask(roi, {{0, 0, 1}}, c.width, c.height);
    } else {
      ExpectNone(para);
      EXPECT_EQ(roi.ROIType(), VemROINone);
    }
  }
}

TEST(IVemROIParaGenMask, RunMaskNeedsArraysOfOneLength) {
  const VemVarArray arrays[] = {Values({}), Values({1}), Values({1, 2})};
  for (const VemVarArray& rows : arrays) {
    for (const VemVarArray& firsts : arrays) {
      for (const VemVarArray& lasts : arrays) {
        SCOPED_TRACE(testing::Message() << rows.Length() << firsts.Length() << lasts.Length());
        VemVarArray a(rows);
        VemVarArray b(firsts);
        VemVarArray c(lasts);
        IVemROIPara para = Circle();
        para.GenMask(a, b, c, 8, 9);
        VemROI roi;
        roi.GenMask(a, b, c, 8, 9);
        if (rows.Length() == firsts.Length() && rows.Length() == lasts.Length()) {
          EXPECT_TRUE(para.IsMask());
          EXPECT_EQ(para.Rows.Length(), rows.Length());
          EXPECT_EQ(roi.ROIType(), VemROIMask);
        } else {
          ExpectNone(para);
          EXPECT_EQ(roi.ROIType(), VemROINone);
        }
      }
    }
  }
}

TEST(IVemROIParaGenMask, RunMaskExistsWithoutRuns) {
  Triple none;
  IVemROIPara para = Circle();
  para.GenMask(none.rows, none.firsts, none.lasts, 2, 2);
  ExpectMask(para, {}, 2, 2);
}

TEST(IVemROIParaGenMask, RunMaskLooksAtNoRun) {
  const Runs runs = {{3, 1000, 1000}, {-4, -9, 99}, {0, 5, 2}, {INT_MAX, INT_MIN, INT_MAX},
                     {0, 0, 4},       {0, 0, 4}};
  Triple triple(runs);
  IVemROIPara para;
  para.GenMask(triple.rows, triple.firsts, triple.lasts, 10, 10);
  ExpectMask(para, runs, 10, 10);
  VemROI roi;
  roi.GenMask(triple.rows, triple.firsts, triple.lasts, 10, 10);
  ExpectMask(roi, runs, 10, 10);
}

TEST(IVemROIParaGenMask, RunMaskCopiesTheArraysWhateverTheyHold) {
  VemVarArray rows("text");
  VemVarArray firsts(2.75);
  VemVarArray lasts{VemVar()};
  IVemROIPara para;
  para.GenMask(rows, firsts, lasts, 4, 5);
  rows[0] = VemVar(1);
  firsts.Clear();
  lasts[0] = VemVar(2);
  EXPECT_TRUE(Same(para.Rows, VemVarArray("text")));
  EXPECT_TRUE(Same(para.FirstColumns, VemVarArray(2.75)));
  EXPECT_TRUE(Same(para.LastColumns, VemVarArray(VemVar())));
}

TEST(IVemROIParaGenMask, RunMaskReplacesAMask) {
  Triple first({{0, 0, 1}, {1, 1, 2}, {2, 2, 3}});
  Triple second({{7, 8, 9}});
  IVemROIPara para;
  para.GenMask(first.rows, first.firsts, first.lasts, 30, 40);
  para.GenMask(second.rows, second.firsts, second.lasts, 10, 20);
  ExpectMask(para, {{7, 8, 9}}, 10, 20);
  para.GenMask(second.rows, second.firsts, second.lasts, 10, 1);
  ExpectNone(para);
}

TEST(IVemROIParaGenMask, GenMaskFromTheObjectsOwnArraysIsEmpty) {
  IVemROIPara para;
  VemVarArray rows(1), firstColumns(2), lastColumns(3);
  para.GenMask(rows, firstColumns, lastColumns, 5, 5);
  para.GenMask(para.Rows, para.FirstColumns, para.LastColumns, 5, 5);
  EXPECT_EQ(para.ROIType(), VemROIMask);
  EXPECT_EQ(para.Rows.Length(), 0);
}

// --- GenMask from contours --------------------------------------------------------------------

TEST(IVemROIParaGenMask, ContourMaskNeedsACanvasOf2By2) {
  for (const CanvasCase& c : kCanvasCases) {
    if (c.width > 1000) continue;
    SCOPED_TRACE(testing::Message() << c.width << " by " << c.height);
    VemContourArray contours = ContoursOf({{{0, 0}, {1, 0}}});
    IVemROIPara para = Circle();
    para.GenMask(contours, c.width, c.height);
    VemROI roi;
    VemPoint point(1, 2);
    roi.GenPoint(point);
    roi.GenMask(contours, c.width, c.height);
    if (c.accepted) {
      ExpectMask(para, {{0, 0, 1}}, c.width, c.height);
      ExpectMask(roi, {{0, 0, 1}}, c.width, c.height);
    } else {
      ExpectNone(para);
      EXPECT_EQ(roi.ROIType(), VemROINone);
    }
  }
}

TEST(IVemROIParaGenMask, ContourMaskHoldsWhatThePaintedContoursCover) {
  const struct {
    const char* name;
    Chains contours;
    Runs runs;
  } cases[] = {
      {"NoContours", {}, {}},
      {"EmptyContour", {{}}, {}},
      {"Outside", {{{20, 1}, {24, 1}, {22, 9}}}, {}},
      {"Square", {kSquare}, {{1, 1, 4}, {2, 1, 4}, {3, 1, 4}}},
      {"PartOutsideIsLost", {{{-3, -2}, {2, -2}, {2, 1}, {-3, 1}}}, {{0, 0, 2}, {1, 0, 2}}},
      {"PartBeyondIsLost", {{{6, 4}, {12, 4}, {12, 12}, {6, 12}}}, {{4, 6, 7}, {5, 6, 7}}},
      {"RunsOfOneRowStandByColumn",
       {{{5, 1}, {6, 1}}, {{0, 1}, {1, 1}}, {{3, 0}}},
       {{0, 3, 3}, {1, 0, 1}, {1, 5, 6}}},
      {"TouchingRunsAreOne", {{{0, 1}, {1, 1}}, {{2, 1}, {3, 1}}}, {{1, 0, 3}}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    VemContourArray contours = ContoursOf(c.contours);
    IVemROIPara para = Circle();
    para.GenMask(contours, 8, 6);
    ExpectMask(para, c.runs, 8, 6);
    VemROI roi;
    roi.GenMask(contours, 8, 6);
    ExpectMask(roi, c.runs, 8, 6);
    EXPECT_EQ(PointsOf(contours), c.contours);
  }
}

TEST(IVemROIParaGenMask, ContourMaskReplacesAMask) {
  Triple old({{0, 0, 1}, {1, 1, 2}, {2, 2, 3}, {7, 7, 7}});
  IVemROIPara para;
  para.GenMask(old.rows, old.firsts, old.lasts, 30, 40);
  VemContourArray contours = ContoursOf({kSquare});
  para.GenMask(contours, 10, 20);
  ExpectMask(para, {{1, 1, 4}, {2, 1, 4}, {3, 1, 4}}, 10, 20);
  VemContourArray none;
  para.GenMask(none, 5, 6);
  ExpectMask(para, {}, 5, 6);
  para.GenMask(contours, 1, 6);
  ExpectNone(para);
}

TEST(IVemROIParaGenMask, ContourMaskNeedsNoRasterOfItsCanvas) {
  VemContourArray contours = ContoursOf({{{0, 0}, {2, 0}, {2, 1}, {0, 1}}, {{2e9, 3}}});
  IVemROIPara para = Circle();
  para.GenMask(contours, INT_MAX, INT_MAX);
  ExpectMask(para, {{0, 0, 2}, {1, 0, 2}, {3, 2000000000, 2000000000}}, INT_MAX, INT_MAX);
}

}  // namespace
