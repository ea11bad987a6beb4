#include "IVemROIPara.h"

#include <chrono>
#include <climits>
#include <cmath>
#include <functional>
#include <random>
#include <string>

#include <gtest/gtest.h>
#include <opencv2/imgproc.hpp>

#include "support/FillReference.h"
#include "support/RoiRasters.h"

namespace {

// --- ToMAT from runs --------------------------------------------------------------------------

TEST(IVemROIParaPaint, RunsAreClippedOnAllSides) {
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

TEST(IVemROIParaPaint, RunsOverAllIntegersFinishAtOnce) {
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

TEST(IVemROIParaPaint, NumberOfRowsGovernsTheRuns) {
  VemVarArray rows = Values({0, 2});
  VemVarArray firsts = Values({1, 0, 0, 0});
  VemVarArray lasts = Values({2, 1, 3});
  IVemROIPara para;
  EXPECT_EQ(Picture(para.ToMAT(rows, firsts, lasts, 4, 4)), ".##.\n....\n##..\n....\n");
  VemVarArray none;
  EXPECT_EQ(Picture(para.ToMAT(none, firsts, lasts, 4, 2)), "....\n....\n");
}

TEST(IVemROIParaPaint, MissingColumnsDoNoHarm) {
  VemVarArray rows = Values({0, 2, 1});
  VemVarArray columns = Values({2});
  IVemROIPara para;
  // What the last two runs paint has no meaning; that they do no harm does.
  const cv::Mat raster = para.ToMAT(rows, columns, columns, 4, 4);
  EXPECT_EQ(Picture(raster.row(0)), "..#.\n");
  EXPECT_EQ(Picture(raster.row(3)), "....\n");
}

TEST(IVemROIParaPaint, RunsAreReadAsIntegers) {
  VemVarArray rows(1.9);
  VemVarArray firsts(-0.9);
  VemVarArray lasts(VemVar(4294967298L));
  EXPECT_EQ(Picture(IVemROIPara().ToMAT(rows, firsts, lasts, 4, 3)), "....\n###.\n....\n");
}

TEST(IVemROIParaPaint, PaintingDoesNotTouchTheObject) {
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

TEST(IVemROIParaPaint, NegativeSizesAreOpenCVsToRefuse) {
  for (const cv::Size& size : {cv::Size(-1, 4), cv::Size(4, -1), cv::Size(INT_MIN, 1)}) {
    EXPECT_THROW(Paint(Runs{{0, 0, 1}}, size.width, size.height), cv::Exception) << size;
    EXPECT_THROW(Paint(Chains{kSquare}, size.width, size.height), cv::Exception) << size;
  }
}

TEST(IVemROIParaPaint, SizeOfZeroGivesAnEmptyRaster) {
  for (const cv::Size& size : {cv::Size(0, 4), cv::Size(4, 0), cv::Size(0, 0)}) {
    const cv::Mat raster = Paint(Runs{{0, 0, 1}}, size.width, size.height);
    EXPECT_EQ(raster.size(), size);
    EXPECT_EQ(raster.type(), CV_8UC1);
  }
}

TEST(IVemROIParaPaint, RandomRunsPaintAsPixelByPixel) {
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

TEST(IVemROIParaPaint, ContoursAreFilledWithTheirOutlines) {
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

TEST(IVemROIParaPaint, VerticesAreRoundedHalvesToEven) {
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

TEST(IVemROIParaPaint, RandomContoursPaintAsTheRuleHasThem) {
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

TEST(IVemROIParaPaint, ContoursOverAllIntegersFinishAtOnce) {
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

TEST(IVemROIParaPaint, FarContoursMakeMasksToo) {
  VemContourArray contours = ContoursOf({{{kFarLow, 2}, {kFarHigh, 2}, {0, kFarHigh}}});
  IVemROIPara para;
  ExpectAtOnce([&] { para.GenMask(contours, 6, 4); });
  ExpectMask(para, {{2, 0, 5}, {3, 0, 5}}, 6, 4);
}

TEST(IVemROIParaPaint, FarContoursPaintAsTheRuleHasThem) {
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

}  // namespace
