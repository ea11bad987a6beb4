#include "IVemROIPara.h"

#include <algorithm>
#include <chrono>
#include <climits>
#include <cmath>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/imgproc.hpp>

#include "VemROI.h"
#include "support/FillReference.h"
#include "support/OutlineReference.h"
#include "support/Support.h"

namespace {

using Runs = std::vector<Run>;
using IntChain = std::vector<cv::Point>;
using IntChains = std::vector<IntChain>;

VemVarArray Values(const std::vector<int>& values) {
  VemVarArray array;
  for (int value : values) array.Append(VemVar(value));
  return array;
}

struct Triple {
  Triple() {}
  explicit Triple(const Runs& runs) {
    for (const Run& run : runs) {
      rows.Append(VemVar(run.Row));
      firsts.Append(VemVar(run.FirstColumn));
      lasts.Append(VemVar(run.LastColumn));
    }
  }

  VemVarArray rows;
  VemVarArray firsts;
  VemVarArray lasts;
};

cv::Mat Paint(const Runs& runs, int width, int height) {
  Triple triple(runs);
  return IVemROIPara().ToMAT(triple.rows, triple.firsts, triple.lasts, width, height);
}

cv::Mat Paint(const Chains& chains, int width, int height) {
  VemContourArray contours = ContoursOf(chains);
  return IVemROIPara().ToMAT(contours, width, height);
}

bool SamePixels(const cv::Mat& a, const cv::Mat& b) {
  return a.type() == b.type() && a.size() == b.size() &&
         (a.empty() || cv::norm(a, b, cv::NORM_INF) == 0);
}

// The maximal runs of a raster, row by row.
Runs PlainRuns(const cv::Mat& raster) {
  Runs runs;
  for (int row = 0; row < raster.rows; ++row) {
    for (int column = 0; column < raster.cols; ++column) {
      if (raster.at<unsigned char>(row, column) == 0) continue;
      const bool goesOn = column > 0 && raster.at<unsigned char>(row, column - 1) != 0;
      if (!goesOn) runs.push_back({row, column, column});
      runs.back().LastColumn = column;
    }
  }
  return runs;
}

struct RunsOfRaster {
  Runs runs;
  int width = -7;
  int height = -9;
};

RunsOfRaster ReadRuns(cv::Mat raster) {
  VemVarArray rows(70);
  VemVarArray firsts("old");
  VemVarArray lasts(7.5);
  RunsOfRaster read;
  IVemROIPara().MatToMask(raster, &rows, &firsts, &lasts, &read.width, &read.height);
  read.runs = RunsOf(rows, firsts, lasts);
  return read;
}

OutlineMask ReadContours(cv::Mat raster) {
  VemContourArray contours = ContoursOf({{{1, 2}, {3, 4}}, {}, {{5, 6}}});
  OutlineMask read{true, {}, -7, -9};
  IVemROIPara().MatToMask(raster, &contours, &read.width, &read.height);
  read.contours = PointsOf(contours);
  return read;
}

cv::Mat Noise(std::mt19937& random, int width, int height, unsigned percent) {
  cv::Mat raster(height, width, CV_8UC1);
  for (int row = 0; row < height; ++row) {
    for (int column = 0; column < width; ++column) {
      raster.at<unsigned char>(row, column) = random() % 100 < percent ? 255 : 0;
    }
  }
  return raster;
}

// A shape that holds something already.
IVemROIPara Circle() {
  IVemROIPara para;
  VemPoint center(5, 6);
  para.GenCircle(center, 3);
  return para;
}

void ExpectNone(const IVemROIPara& para) {
  EXPECT_EQ(para.Type, VemROINone);
  EXPECT_EQ(para.Width, 0);
  EXPECT_EQ(para.Height, 0);
  EXPECT_EQ(para.Params.Length(), 0);
  EXPECT_EQ(para.Rows.Length(), 0);
  EXPECT_EQ(para.FirstColumns.Length(), 0);
  EXPECT_EQ(para.LastColumns.Length(), 0);
}

void ExpectMask(const IVemROIPara& para, const Runs& runs, int width, int height) {
  EXPECT_EQ(para.Type, VemROIMask);
  EXPECT_TRUE(para.IsMask());
  EXPECT_EQ(para.Width, width);
  EXPECT_EQ(para.Height, height);
  EXPECT_EQ(para.Params.Length(), 0);
  EXPECT_EQ(RunsOf(para.Rows, para.FirstColumns, para.LastColumns), runs);
}

// What GetMask gives for the mask behind the handle.
void ExpectMask(const VemROI& roi, const Runs& runs, int width, int height) {
  EXPECT_EQ(roi.ROIType(), VemROIMask);
  Triple out;
  int gotWidth = -1;
  int gotHeight = -1;
  EXPECT_TRUE(roi.GetMask(&out.rows, &out.firsts, &out.lasts, &gotWidth, &gotHeight));
  EXPECT_EQ(RunsOf(out.rows, out.firsts, out.lasts), runs);
  EXPECT_EQ(gotWidth, width);
  EXPECT_EQ(gotHeight, height);
}

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

TEST(IVemROIParaRaster, RunMaskNeedsACanvasOf2By2) {
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

TEST(IVemROIParaRaster, RunMaskNeedsArraysOfOneLength) {
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

TEST(IVemROIParaRaster, RunMaskExistsWithoutRuns) {
  Triple none;
  IVemROIPara para = Circle();
  para.GenMask(none.rows, none.firsts, none.lasts, 2, 2);
  ExpectMask(para, {}, 2, 2);
}

TEST(IVemROIParaRaster, RunMaskLooksAtNoRun) {
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

TEST(IVemROIParaRaster, RunMaskCopiesTheArraysWhateverTheyHold) {
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

TEST(IVemROIParaRaster, RunMaskReplacesAMask) {
  Triple first({{0, 0, 1}, {1, 1, 2}, {2, 2, 3}});
  Triple second({{7, 8, 9}});
  IVemROIPara para;
  para.GenMask(first.rows, first.firsts, first.lasts, 30, 40);
  para.GenMask(second.rows, second.firsts, second.lasts, 10, 20);
  ExpectMask(para, {{7, 8, 9}}, 10, 20);
  para.GenMask(second.rows, second.firsts, second.lasts, 10, 1);
  ExpectNone(para);
}

// --- GenMask from contours --------------------------------------------------------------------

const Chain kSquare = {{1, 1}, {4, 1}, {4, 3}, {1, 3}};

TEST(IVemROIParaRaster, ContourMaskNeedsACanvasOf2By2) {
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

TEST(IVemROIParaRaster, ContourMaskHoldsWhatThePaintedContoursCover) {
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

TEST(IVemROIParaRaster, ContourMaskReplacesAMask) {
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

TEST(IVemROIParaRaster, ContourMaskNeedsNoRasterOfItsCanvas) {
  VemContourArray contours = ContoursOf({{{0, 0}, {2, 0}, {2, 1}, {0, 1}}, {{2e9, 3}}});
  IVemROIPara para = Circle();
  para.GenMask(contours, INT_MAX, INT_MAX);
  ExpectMask(para, {{0, 0, 2}, {1, 0, 2}, {3, 2000000000, 2000000000}}, INT_MAX, INT_MAX);
}

// --- ToMAT from runs --------------------------------------------------------------------------

TEST(IVemROIParaRaster, RunsAreClippedOnAllSides) {
  const struct {
    const char* name;
    Runs runs;
    const char* picture;
  } cases[] = {
      {"NoRuns", {}, ".....\n.....\n.....\n"},
      {"Inside", {{1, 1, 3}}, ".....\n.###.\n.....\n"},
      {"OnePixel", {{2, 4, 4}}, ".....\n.....\n....#\n"},
      {"AnyOrderAndOverlap", {{2, 1, 2}, {0, 0, 1}, {2, 2, 4}}, "##...\n.....\n.####\n"},
      {"Left", {{0, -2, 1}}, "##...\n.....\n.....\n"},
      {"Right", {{0, 3, 5}}, "...##\n.....\n.....\n"},
      {"LeftAndRight", {{1, -1, 5}}, ".....\n#####\n.....\n"},
      {"FarRight", {{1, 1000, 1000}}, ".....\n.....\n.....\n"},
      {"JustRight", {{1, 5, 9}}, ".....\n.....\n.....\n"},
      {"JustLeft", {{1, -9, -1}}, ".....\n.....\n.....\n"},
      {"Above", {{-1, 0, 4}}, ".....\n.....\n.....\n"},
      {"Below", {{3, 0, 4}}, ".....\n.....\n.....\n"},
      {"FirstAboveLast", {{1, 3, 2}, {0, 4, 0}}, ".....\n.....\n.....\n"},
      {"FirstAboveLastOutside", {{1, 9, -9}}, ".....\n.....\n.....\n"},
      {"OutsideThenInside", {{-1, 0, 4}, {3, 0, 4}, {1, 0, 0}}, ".....\n#....\n.....\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const cv::Mat raster = Paint(c.runs, 5, 3);
    EXPECT_EQ(raster.type(), CV_8UC1);
    EXPECT_EQ(Picture(raster), c.picture);
    EXPECT_EQ(cv::countNonZero(raster == 255), cv::countNonZero(raster));
  }
  EXPECT_EQ(Picture(Paint(Runs{{0, -2, 1}}, 10, 1)), "##........\n");
}

void ExpectAtOnce(const std::function<void()>& action) {
  const auto start = std::chrono::steady_clock::now();
  action();
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
}

TEST(IVemROIParaRaster, RunsOverAllIntegersFinishAtOnce) {
  ExpectAtOnce([] {
    EXPECT_EQ(Picture(Paint(Runs{{1, INT_MIN, INT_MAX}}, 4, 3)), "....\n####\n....\n");
    EXPECT_EQ(Picture(Paint(Runs{{1, 2, INT_MAX}}, 4, 3)), "....\n..##\n....\n");
    EXPECT_EQ(Picture(Paint(Runs{{1, INT_MIN, 1}}, 4, 3)), "....\n##..\n....\n");
    EXPECT_EQ(Picture(Paint(Runs{{1, INT_MIN, -1}, {2, 4, INT_MAX}}, 4, 3)), "....\n....\n....\n");
    EXPECT_EQ(Picture(Paint(Runs{{1, INT_MAX, INT_MIN}}, 4, 3)), "....\n....\n....\n");
    EXPECT_EQ(Picture(Paint(Runs{{1, INT_MIN, INT_MIN}, {1, INT_MAX, INT_MAX}}, 4, 3)),
              "....\n....\n....\n");
    EXPECT_EQ(Picture(Paint(Runs{{INT_MIN, 0, 3}, {INT_MAX, 0, 3}}, 4, 3)), "....\n....\n....\n");
    const Runs many(1000, {2, INT_MIN, INT_MAX});
    EXPECT_EQ(Picture(Paint(many, 4, 3)), "....\n....\n####\n");
  });
}

TEST(IVemROIParaRaster, NumberOfRowsGovernsTheRuns) {
  VemVarArray rows = Values({0, 2});
  VemVarArray firsts = Values({1, 0, 0, 0});
  VemVarArray lasts = Values({2, 1, 3});
  IVemROIPara para;
  EXPECT_EQ(Picture(para.ToMAT(rows, firsts, lasts, 4, 4)), ".##.\n....\n##..\n....\n");
  VemVarArray none;
  EXPECT_EQ(Picture(para.ToMAT(none, firsts, lasts, 4, 2)), "....\n....\n");
}

TEST(IVemROIParaRaster, MissingColumnsDoNoHarm) {
  VemVarArray rows = Values({0, 2, 1});
  VemVarArray columns = Values({2});
  IVemROIPara para;
  // What the last two runs paint has no meaning; that they do no harm does.
  const cv::Mat raster = para.ToMAT(rows, columns, columns, 4, 4);
  EXPECT_EQ(Picture(raster.row(0)), "..#.\n");
  EXPECT_EQ(Picture(raster.row(3)), "....\n");
}

TEST(IVemROIParaRaster, RunsAreReadAsIntegers) {
  VemVarArray rows(1.9);
  VemVarArray firsts(-0.9);
  VemVarArray lasts(VemVar(4294967298L));
  EXPECT_EQ(Picture(IVemROIPara().ToMAT(rows, firsts, lasts, 4, 3)), "....\n###.\n....\n");
}

TEST(IVemROIParaRaster, PaintingDoesNotTouchTheObject) {
  IVemROIPara para = Circle();
  const IVemROIPara before = Circle();
  Triple triple({{0, 0, 1}});
  VemContourArray contours = ContoursOf({kSquare});
  cv::Mat raster = para.ToMAT(triple.rows, triple.firsts, triple.lasts, 4, 4);
  para.ToMAT(contours, 4, 4);
  Triple out;
  int width;
  int height;
  para.MatToMask(raster, &out.rows, &out.firsts, &out.lasts, &width, &height);
  para.MatToMask(raster, &contours, &width, &height);
  EXPECT_EQ(para.Type, VemROICircle);
  EXPECT_EQ(para.Width, 0);
  EXPECT_EQ(para.Height, 0);
  EXPECT_TRUE(Same(para.Params, before.Params));
  EXPECT_EQ(para.Rows.Length(), 0);
  EXPECT_EQ(RunsOf(triple.rows, triple.firsts, triple.lasts), (Runs{{0, 0, 1}}));
}

TEST(IVemROIParaRaster, NegativeSizesAreOpenCVsToRefuse) {
  for (const cv::Size& size : {cv::Size(-1, 4), cv::Size(4, -1), cv::Size(INT_MIN, 1)}) {
    EXPECT_THROW(Paint(Runs{{0, 0, 1}}, size.width, size.height), cv::Exception) << size;
    EXPECT_THROW(Paint(Chains{kSquare}, size.width, size.height), cv::Exception) << size;
  }
}

TEST(IVemROIParaRaster, SizeOfZeroGivesAnEmptyRaster) {
  for (const cv::Size& size : {cv::Size(0, 4), cv::Size(4, 0), cv::Size(0, 0)}) {
    const cv::Mat raster = Paint(Runs{{0, 0, 1}}, size.width, size.height);
    EXPECT_EQ(raster.size(), size);
    EXPECT_EQ(raster.type(), CV_8UC1);
  }
}

TEST(IVemROIParaRaster, RandomRunsPaintAsPixelByPixel) {
  std::mt19937 random(17);
  for (int i = 0; i < 2000; ++i) {
    const int width = 1 + static_cast<int>(random() % 30);
    const int height = 1 + static_cast<int>(random() % 20);
    Runs runs(random() % 25);
    for (::Run& run : runs) {
      run.Row = static_cast<int>(random() % 30) - 5;
      run.FirstColumn = static_cast<int>(random() % 60) - 15;
      run.LastColumn = run.FirstColumn + static_cast<int>(random() % 20) - 3;
    }
    ASSERT_EQ(Picture(Paint(runs, width, height)), Picture(runs, width, height));
  }
}

// --- ToMAT from contours ----------------------------------------------------------------------

TEST(IVemROIParaRaster, ContoursAreFilledWithTheirOutlines) {
  const struct {
    const char* name;
    Chains contours;
    const char* picture;
  } cases[] = {
      {"None", {}, "......\n......\n......\n......\n......\n"},
      {"Point", {{{2, 1}}}, "......\n..#...\n......\n......\n......\n"},
      {"Segment", {{{1, 1}, {3, 3}}}, "......\n.#....\n..#...\n...#..\n......\n"},
      {"Square", {kSquare}, "......\n.####.\n.####.\n.####.\n......\n"},
      {"SquareClosed",
       {{{1, 1}, {4, 1}, {4, 3}, {1, 3}, {1, 1}}},
       "......\n.####.\n.####.\n.####.\n......\n"},
      {"HoleIsEvenOddButItsOutlineIsPainted",
       {{{0, 0}, {5, 0}, {5, 4}, {0, 4}}, {{1, 1}, {4, 1}, {4, 3}, {1, 3}}},
       "######\n######\n##..##\n######\n######\n"},
      {"HoleFirst",
       {{{1, 1}, {4, 1}, {4, 3}, {1, 3}}, {{0, 0}, {5, 0}, {5, 4}, {0, 4}}},
       "######\n######\n##..##\n######\n######\n"},
      {"TwiceLeavesTheOutline", {kSquare, kSquare}, "......\n.####.\n.#..#.\n.####.\n......\n"},
      {"ClippedOnAllSides",
       {{{-5, -5}, {20, -5}, {20, 20}, {-5, 20}}},
       "######\n######\n######\n######\n######\n"},
      {"EmptyAmongOthers",
       {{}, kSquare, {}, {{0, 0}}, {}},
       "#.....\n.####.\n.####.\n.####.\n......\n"},
      {"OnlyEmpty", {{}, {}}, "......\n......\n......\n......\n......\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const cv::Mat raster = Paint(c.contours, 6, 5);
    EXPECT_EQ(raster.type(), CV_8UC1);
    EXPECT_EQ(Picture(raster), c.picture);
    EXPECT_EQ(cv::countNonZero(raster == 255), cv::countNonZero(raster));
  }
}

TEST(IVemROIParaRaster, VerticesAreRoundedHalvesToEven) {
  const struct {
    double value;
    int pixel;  // -1 for none.
  } cases[] = {
      {0.5, 0},  {0.501, 1}, {1.5, 2},  {2.5, 2},  {3.5, 4},     {2.499, 2}, {2.501, 3},
      {3.49, 3}, {4.5, 4},   {5.5, -1}, {-0.5, 0}, {-0.501, -1}, {-1, -1},   {4.999, 5},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.value);
    std::string across = "......\n";
    std::string down = ".\n.\n.\n.\n.\n.\n";
    if (c.pixel >= 0) across[static_cast<std::size_t>(c.pixel)] = '#';
    if (c.pixel >= 0) down[2 * static_cast<std::size_t>(c.pixel)] = '#';
    EXPECT_EQ(Picture(Paint(Chains{{{c.value, 0}}}, 6, 1)), across);
    EXPECT_EQ(Picture(Paint(Chains{{{0, c.value}}}, 1, 6)), down);
  }
}

int Rounded(double value) { return static_cast<int>(std::nearbyint(value)); }

IntChains Rounded(const Chains& chains) {
  IntChains rounded;
  for (const Chain& chain : chains) {
    rounded.emplace_back();
    for (const cv::Point2d& p : chain) rounded.back().emplace_back(Rounded(p.x), Rounded(p.y));
  }
  return rounded;
}

TEST(IVemROIParaRaster, RandomContoursPaintAsTheRuleHasThem) {
  std::mt19937 random(23);
  int partly = 0;
  for (int i = 0; i < 1500; ++i) {
    const int width = 1 + static_cast<int>(random() % 70);
    const int height = 1 + static_cast<int>(random() % 50);
    const double reaches[] = {20, 60, 300, 30000};
    Chains chains(1 + random() % 5);
    for (Chain& chain : chains) {
      // One list may have near contours beside far ones.
      const double reach = i % 4 == 0 ? reaches[random() % 4] : reaches[random() % 2];
      std::uniform_real_distribution<double> coordinate(-reach, reach + (reach < 100 ? 40 : 0));
      chain.resize(random() % 9);
      for (cv::Point2d& p : chain) {
        p = cv::Point2d(coordinate(random), coordinate(random));
        if (random() % 2 == 0) p = cv::Point2d(std::trunc(p.x) + 0.5, std::trunc(p.y));
      }
    }
    const cv::Mat expected = FilledByRule(Rounded(chains), width, height);
    ASSERT_TRUE(SamePixels(Paint(chains, width, height), expected))
        << testing::PrintToString(chains) << Picture(expected);
    const int inside = cv::countNonZero(expected);
    partly += inside > 0 && inside < width * height ? 1 : 0;
  }
  EXPECT_GT(partly, 800);
}

// --- Contours that reach far out --------------------------------------------------------------

constexpr double kFarLow = INT_MIN;
constexpr double kFarHigh = INT_MAX;

TEST(IVemROIParaRaster, ContoursOverAllIntegersFinishAtOnce) {
  const Chain everything = {
      {kFarLow, kFarLow}, {kFarHigh, kFarLow}, {kFarHigh, kFarHigh}, {kFarLow, kFarHigh}};
  const struct {
    const char* name;
    Chains contours;
    const char* picture;
  } cases[] = {
      {"Everything", {everything}, "######\n######\n######\n######\n"},
      {"EverythingTwice", {everything, everything}, "......\n......\n......\n......\n"},
      {"FarBelowOnTheRight",
       {{{1e9, 1e9}, {2e9, 1e9}, {2e9, 2e9}, {1e9, 2e9}}},
       "......\n......\n......\n......\n"},
      {"FarAboveOnTheLeft",
       {{{kFarLow, kFarLow}, {-1e9, kFarLow}, {-1e9, -1e9}, {kFarLow, -1e9}}},
       "......\n......\n......\n......\n"},
      {"FarPoint", {{{kFarLow, kFarHigh}}}, "......\n......\n......\n......\n"},
      {"LeftHalf",
       {{{kFarLow, kFarLow}, {2, kFarLow}, {2, kFarHigh}, {kFarLow, kFarHigh}}},
       "###...\n###...\n###...\n###...\n"},
      {"LowerHalf",
       {{{kFarLow, 2}, {kFarHigh, 2}, {kFarHigh, kFarHigh}, {kFarLow, kFarHigh}}},
       "......\n......\n######\n######\n"},
      {"BelowTheDiagonal",
       {{{kFarLow, kFarLow}, {kFarHigh, kFarHigh}, {kFarLow, kFarHigh}}},
       "#.....\n##....\n###...\n####..\n"},
      {"HorizontalSegment", {{{kFarLow, 1}, {kFarHigh, 1}}}, "......\n######\n......\n......\n"},
      {"VerticalSegment", {{{4, kFarLow}, {4, kFarHigh}}}, "....#.\n....#.\n....#.\n....#.\n"},
      {"FromInsideToTheLeft", {{{2, 1}, {kFarLow, 1}}}, "......\n###...\n......\n......\n"},
      {"FarAndNearAreEvenOdd",
       {everything, {{1, 0}, {4, 0}, {4, 3}, {1, 3}}},
       "######\n##..##\n##..##\n######\n"},
      {"NearAndFarAwayAreBothThere",
       {{{1, 0}, {3, 0}, {3, 1}, {1, 1}}, {{1e9, 1e9}, {2e9, 1e9}, {2e9, 2e9}}, {}},
       ".###..\n.###..\n......\n......\n"},
      {"NearFarNear",
       {{{1, 0}, {4, 0}, {4, 3}, {1, 3}}, everything, {{0, 0}}},
       "######\n##..##\n##..##\n######\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    ExpectAtOnce([&] { EXPECT_EQ(Picture(Paint(c.contours, 6, 4)), c.picture); });
  }
}

TEST(IVemROIParaRaster, FarContoursMakeMasksToo) {
  VemContourArray contours = ContoursOf({{{kFarLow, 2}, {kFarHigh, 2}, {0, kFarHigh}}});
  IVemROIPara para;
  ExpectAtOnce([&] { para.GenMask(contours, 6, 4); });
  ExpectMask(para, {{2, 0, 5}, {3, 0, 5}}, 6, 4);
}

TEST(IVemROIParaRaster, FarContoursPaintAsTheRuleHasThem) {
  std::mt19937 random(31);
  std::uniform_real_distribution<double> near(0, 40);
  std::uniform_real_distribution<double> turn(0, 6.283);
  int inside = 0;
  int outside = 0;
  for (int i = 0; i < 400; ++i) {
    // Edges that pass through the canvas, from far out to far out.
    Chains chains(1 + random() % 3);
    for (Chain& chain : chains) {
      const std::size_t edges = 1 + random() % 3;
      for (std::size_t k = 0; k < edges; ++k) {
        const double x = near(random);
        const double y = near(random);
        const double angle = turn(random);
        const double length = std::pow(10.0, 4.5 + static_cast<double>(random() % 9) * 0.6);
        const double dx = std::cos(angle) * length;
        const double dy = std::sin(angle) * length;
        chain.emplace_back(std::trunc(x + dx), std::trunc(y + dy));
        chain.emplace_back(std::trunc(x - dx), std::trunc(y - dy));
      }
      if (random() % 3 == 0) chain.emplace_back(std::trunc(near(random)), 20);
    }
    const cv::Mat raster = Paint(chains, 40, 40);
    ASSERT_TRUE(SamePixels(raster, FilledByRule(Rounded(chains), 40, 40)))
        << testing::PrintToString(chains);
    const int painted = cv::countNonZero(raster);
    inside += painted;
    outside += 40 * 40 - painted;
  }
  EXPECT_GT(inside, 50000);
  EXPECT_GT(outside, 50000);
}

// --- MatToMask --------------------------------------------------------------------------------

TEST(IVemROIParaRaster, RasterIsReadAsRuns) {
  const RunsOfRaster read = ReadRuns(Raster("#..##\n.....\n.#.#.\n#####\n"));
  EXPECT_EQ(read.runs, (Runs{{0, 0, 0}, {0, 3, 4}, {2, 1, 1}, {2, 3, 3}, {3, 0, 4}}));
  EXPECT_EQ(read.width, 5);
  EXPECT_EQ(read.height, 4);
}

TEST(IVemROIParaRaster, RasterIsReadAsClosedContours) {
  EXPECT_EQ(ReadContours(Raster("......\n.####.\n.#..#.\n.####.\n")),
            (OutlineMask{true,
                         {{{1, 1}, {1, 3}, {4, 3}, {4, 1}, {1, 1}},
                          {{1, 2}, {2, 1}, {3, 1}, {4, 2}, {3, 3}, {2, 3}, {1, 2}}},
                         6,
                         4}));
  EXPECT_EQ(ReadContours(Raster("...#\n#...\n")),
            (OutlineMask{true, {{{3, 0}, {3, 0}}, {{0, 1}, {0, 1}}}, 4, 2}));
}

TEST(IVemROIParaRaster, RasterWithoutForegroundGivesItsSizeAlone) {
  const cv::Mat blank = cv::Mat::zeros(7, 9, CV_8UC1);
  const RunsOfRaster read = ReadRuns(blank);
  EXPECT_EQ(read.runs, Runs());
  EXPECT_EQ(read.width, 9);
  EXPECT_EQ(read.height, 7);
  EXPECT_EQ(ReadContours(blank), (OutlineMask{true, {}, 9, 7}));
  const RunsOfRaster none = ReadRuns(cv::Mat());
  EXPECT_EQ(none.runs, Runs());
  EXPECT_EQ(none.width, 0);
  EXPECT_EQ(none.height, 0);
  EXPECT_EQ(ReadContours(cv::Mat()), (OutlineMask{true, {}, 0, 0}));
}

TEST(IVemROIParaRaster, AnyPixelThatIsNotZeroIsForeground) {
  const cv::Mat raster = (cv::Mat_<unsigned char>(2, 5) << 0, 1, 128, 254, 0, 255, 0, 0, 0, 2);
  EXPECT_EQ(ReadRuns(raster).runs, (Runs{{0, 1, 3}, {1, 0, 0}, {1, 4, 4}}));
  EXPECT_EQ(ReadContours(raster).contours, TracedContours(raster));
}

TEST(IVemROIParaRaster, PartOfALargerRasterIsReadAlone) {
  std::mt19937 random(41);
  const cv::Mat large = Noise(random, 50, 40, 60);
  const cv::Mat before = large.clone();
  const cv::Mat part = large(cv::Rect(7, 5, 21, 17));
  EXPECT_EQ(ReadRuns(part).runs, PlainRuns(part));
  EXPECT_EQ(ReadContours(part), (OutlineMask{true, TracedContours(part), 21, 17}));
  EXPECT_TRUE(SamePixels(large, before));
}

// --- Point lists ------------------------------------------------------------------------------

TEST(IVemROIParaRaster, IntegersAreWidenedExactly) {
  const Chains expected = {
      {{1, -2}, {2147483647, -2147483648.0}}, {}, {{16777217, 0}, {5, 6}, {5, 6}}};
  for (std::size_t length : {0U, 2U, 9U}) {
    Chains target(length, Chain(5, cv::Point2d(7, 8)));
    IVemROIPara().VectorI2D({{{1, -2}, {INT_MAX, INT_MIN}}, {}, {{16777217, 0}, {5, 6}, {5, 6}}},
                            target);
    EXPECT_EQ(target, expected);
  }
  Chains target = expected;
  IVemROIPara().VectorI2D({}, target);
  EXPECT_EQ(target, Chains());
}

TEST(IVemROIParaRaster, DoublesAreRoundedHalvesToEven) {
  const struct {
    double value;
    int rounded;
  } cases[] = {
      {0, 0},
      {-0.0, 0},
      {0.5, 0},
      {1.5, 2},
      {2.5, 2},
      {3.5, 4},
      {-0.5, 0},
      {-1.5, -2},
      {-2.5, -2},
      {-3.5, -4},
      {0.49999999, 0},
      {0.50000001, 1},
      {-2.51, -3},
      {-2.49, -2},
      {2.9, 3},
      {-2.9, -3},
      {1e9 + 0.5, 1000000000},
      {1e9 + 1.5, 1000000002},
      {2147483647, INT_MAX},
      {-2147483648.0, INT_MIN},
      {2147483646.5, INT_MAX - 1},
      {1e10, INT_MIN},
      {-1e10, INT_MIN},
      {kInfinity, INT_MIN},
      {-kInfinity, INT_MIN},
      {kNaN, INT_MIN},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.value);
    IntChains target = {{{9, 9}, {9, 9}}, {{9, 9}}};
    IVemROIPara().VectorD2I({{{c.value, 7}, {-8, c.value}}, {}}, target);
    EXPECT_EQ(target, (IntChains{{{c.rounded, 7}, {-8, c.rounded}}, {}}));
  }
  IntChains target = {{{9, 9}}};
  IVemROIPara().VectorD2I({}, target);
  EXPECT_EQ(target, IntChains());
}

TEST(IVemROIParaRaster, PointListsConvertBackAndForth) {
  std::mt19937 random(43);
  IntChains source(50);
  for (IntChain& chain : source) {
    chain.resize(random() % 20);
    for (cv::Point& p : chain) {
      p = cv::Point(static_cast<int>(random()), static_cast<int>(random()));
    }
  }
  IVemROIPara para;
  Chains widened;
  para.VectorI2D(source, widened);
  IntChains back;
  para.VectorD2I(widened, back);
  EXPECT_EQ(back, source);
}

// --- Round trips ------------------------------------------------------------------------------

// Raster to contours, to a mask, to its runs; and raster to runs, to a raster, to runs.
void ExpectRoundTrips(const cv::Mat& raster) {
  const Runs runs = PlainRuns(raster);
  const OutlineMask outlines = ReadContours(raster);
  ASSERT_EQ(outlines, (OutlineMask{true, TracedContours(raster), raster.cols, raster.rows}));
  VemContourArray contours = ContoursOf(outlines.contours);
  VemROI roi;
  roi.GenMask(contours, raster.cols, raster.rows);
  ExpectMask(roi, runs, raster.cols, raster.rows);

  const RunsOfRaster read = ReadRuns(raster);
  ASSERT_EQ(read.runs, runs);
  const cv::Mat painted = Paint(read.runs, read.width, read.height);
  ASSERT_TRUE(SamePixels(painted, raster)) << Picture(painted) << '\n' << Picture(raster);
  ASSERT_EQ(ReadRuns(painted).runs, runs);
}

TEST(IVemROIParaRaster, NoiseComesBack) {
  std::mt19937 random(47);
  for (unsigned percent : {0U, 1U, 5U, 20U, 35U, 50U, 60U, 75U, 90U, 97U, 100U}) {
    for (int i = 0; i < 60; ++i) {
      const int width = 2 + static_cast<int>(random() % 59);
      const int height = 2 + static_cast<int>(random() % 59);
      ExpectRoundTrips(Noise(random, width, height, percent));
      if (HasFailure()) FAIL() << percent << " percent";
    }
  }
}

TEST(IVemROIParaRaster, EverySmallRasterComesBack) {
  for (int bits = 0; bits < 1 << 12; ++bits) {
    cv::Mat raster(3, 4, CV_8UC1);
    for (int i = 0; i < 12; ++i) {
      raster.at<unsigned char>(i / 4, i % 4) = (bits >> i & 1) != 0 ? 255 : 0;
    }
    ExpectRoundTrips(raster);
    if (HasFailure()) FAIL() << Picture(raster);
  }
}

TEST(IVemROIParaRaster, NestedRingsComeBack) {
  for (int step : {1, 2, 3, 5}) {
    cv::Mat squares = cv::Mat::zeros(61, 53, CV_8UC1);
    cv::Mat circles = cv::Mat::zeros(90, 120, CV_8UC1);
    for (int k = 0; k * step < 45; ++k) {
      const cv::Scalar colour(k % 2 == 0 ? 255 : 0);
      const int inset = k * step;
      if (2 * inset < 53) {
        const cv::Rect rect(inset, inset, 53 - 2 * inset, 61 - 2 * inset);
        cv::rectangle(squares, rect, colour, cv::FILLED);
      }
      cv::circle(circles, cv::Point(60, 45), 60 - inset, colour, cv::FILLED);
    }
    ExpectRoundTrips(squares);
    ExpectRoundTrips(circles);
  }
}

TEST(IVemROIParaRaster, ShapesCutByTheBorderComeBack) {
  std::mt19937 random(53);
  for (int i = 0; i < 60; ++i) {
    const int width = i % 10 == 0 ? 400 : 60;
    const int height = i % 10 == 0 ? 300 : 45;
    cv::Mat raster = cv::Mat::zeros(height, width, CV_8UC1);
    for (int k = 0; k < 14; ++k) {
      const cv::Point center(static_cast<int>(random()) % (width + 20),
                             static_cast<int>(random()) % (height + 20));
      const cv::Size axes(1 + static_cast<int>(random() % 30), 1 + static_cast<int>(random() % 15));
      cv::ellipse(raster, center, axes, static_cast<double>(random() % 180), 0, 360,
                  cv::Scalar(k % 3 == 2 ? 0 : 255), k % 4 == 0 ? 1 : cv::FILLED);
    }
    ExpectRoundTrips(raster);
  }
}

TEST(IVemROIParaRaster, GenMaskFromTheObjectsOwnArraysIsEmpty) {
  IVemROIPara para;
  VemVarArray rows(1), firstColumns(2), lastColumns(3);
  para.GenMask(rows, firstColumns, lastColumns, 5, 5);
  para.GenMask(para.Rows, para.FirstColumns, para.LastColumns, 5, 5);
  EXPECT_EQ(para.ROIType(), VemROIMask);
  EXPECT_EQ(para.Rows.Length(), 0);
}

}  // namespace
