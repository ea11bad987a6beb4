#include "coder/RunTracer.h"

#include <climits>
#include <random>

#include <gtest/gtest.h>

#include "support/Support.h"

namespace {

struct Traced {
  std::vector<cv::Point> points;
  std::vector<int> pointStarts;
  std::vector<cv::Vec4i> hierarchy;
  std::vector<int> runStarts;
};

Traced Trace(std::vector<::Run> runs) {
  Traced traced;
  TraceRuns({traced.points, traced.pointStarts, traced.hierarchy, runs, traced.runStarts});
  return traced;
}

std::vector<::Run> RunsOf(cv::Mat raster) {
  VemRLC coder;
  coder.Calc(raster, true);
  return coder.FillRuns;
}

cv::Mat Noise(std::mt19937& random) {
  cv::Mat raster(1 + static_cast<int>(random() % 20), 1 + static_cast<int>(random() % 20), CV_8UC1);
  const int percent = static_cast<int>(random() % 101);
  for (int row = 0; row < raster.rows; ++row) {
    for (int column = 0; column < raster.cols; ++column) {
      raster.at<unsigned char>(row, column) = static_cast<int>(random() % 100) < percent ? 255 : 0;
    }
  }
  return raster;
}

TEST(RunTracer, NoRunsHaveNoOutlines) {
  const Traced traced = Trace({});
  EXPECT_TRUE(traced.points.empty());
  EXPECT_TRUE(traced.pointStarts.empty());
  EXPECT_TRUE(traced.hierarchy.empty());
  EXPECT_TRUE(traced.runStarts.empty());
}

TEST(RunTracer, RowsMayBeMissing) {
  const Traced traced = Trace({{0, 3, 5}, {2, 3, 5}, {3, 4, 4}, {900, 3, 3}});
  EXPECT_EQ(traced.pointStarts, (std::vector<int>{0, 2, 5, 6}));
  EXPECT_EQ(traced.points,
            (std::vector<cv::Point>{{3, 0}, {5, 0}, {3, 2}, {4, 3}, {5, 2}, {3, 900}}));
  EXPECT_EQ(traced.runStarts, (std::vector<int>{0, 1, 3, 4}));
}

TEST(RunTracer, OutlinesMoveWithTheirRuns) {
  const cv::Point kMoves[] = {{-7, -3}, {2147483600, 2147483600}, {-2147483600, -2147483600}};
  std::mt19937 random(1);
  for (int i = 0; i < 500; ++i) {
    const std::vector<::Run> runs = RunsOf(Noise(random));
    const Traced expected = Trace(runs);
    for (const cv::Point& move : kMoves) {
      std::vector<::Run> moved = runs;
      for (::Run& run : moved) {
        run = {run.Row + move.y, run.FirstColumn + move.x, run.LastColumn + move.x};
      }
      Traced traced = Trace(moved);
      for (cv::Point& point : traced.points) point -= move;
      ASSERT_EQ(traced.points, expected.points);
      ASSERT_EQ(traced.pointStarts, expected.pointStarts);
      ASSERT_EQ(traced.hierarchy, expected.hierarchy);
      ASSERT_EQ(traced.runStarts, expected.runStarts);
    }
  }
}

TEST(RunTracer, RunsMayBeAsLongAsNumbersAllow) {
  const int far = 2147483600;
  const Traced traced = Trace({{0, -far, far}, {1, -far, -far + 1}, {1, far - 1, far}});
  EXPECT_EQ(traced.points, (std::vector<cv::Point>{{-far, 0},
                                                   {-far, 1},
                                                   {-far + 1, 1},
                                                   {-far + 2, 0},
                                                   {far - 2, 0},
                                                   {far - 1, 1},
                                                   {far, 1},
                                                   {far, 0}}));
}

TEST(RunTracer, RowsMayBeTheFirstAndTheLastNumbersThereAre) {
  for (const int first : {INT_MIN, INT_MAX - 4}) {
    const Traced traced = Trace({{first, 0, 9},
                                 {first + 1, 0, 2},
                                 {first + 1, 7, 9},
                                 {first + 2, 0, 2},
                                 {first + 2, 7, 9},
                                 {first + 3, 0, 2},
                                 {first + 3, 7, 9},
                                 {first + 4, 0, 9}});
    EXPECT_EQ(traced.pointStarts, (std::vector<int>{0, 4, 12}));
    EXPECT_EQ(traced.points, (std::vector<cv::Point>{{0, first},
                                                     {0, first + 4},
                                                     {9, first + 4},
                                                     {9, first},
                                                     {2, first + 1},
                                                     {3, first},
                                                     {6, first},
                                                     {7, first + 1},
                                                     {7, first + 3},
                                                     {6, first + 4},
                                                     {3, first + 4},
                                                     {2, first + 3}}));
    EXPECT_EQ(traced.hierarchy, (std::vector<cv::Vec4i>{{-1, -1, 1, -1}, {-1, -1, -1, 0}}));
  }
}

// A hole may begin at any height of a straight wall, and finds its parent there.
TEST(RunTracer, HolesBeginAnywhereAlongAWall) {
  for (int height = 1; height < 9; ++height) {
    for (int above = 0; above < 7; ++above) {
      SCOPED_TRACE(testing::Message() << height << " rows, " << above << " above");
      std::vector<::Run> runs = {{0, 0, 8}};
      for (int row = 1; row <= above; ++row) runs.push_back({row, 0, 8});
      for (int row = 1; row <= height; ++row) {
        runs.push_back({above + row, 0, 1});
        runs.push_back({above + row, 5, 8});
      }
      const int bottom = above + height + 1;
      runs.push_back({bottom, 0, 8});
      const Traced traced = Trace(runs);
      std::vector<cv::Point> expected = {{0, 0}, {0, bottom}, {8, bottom}, {8, 0}};
      expected.insert(expected.end(), {{1, above + 1}, {2, above}, {4, above}, {5, above + 1}});
      if (height > 1) expected.push_back({5, bottom - 1});
      expected.insert(expected.end(), {{4, bottom}, {2, bottom}});
      if (height > 1) expected.push_back({1, bottom - 1});
      EXPECT_EQ(traced.points, expected);
      EXPECT_EQ(traced.hierarchy, (std::vector<cv::Vec4i>{{-1, -1, 1, -1}, {-1, -1, -1, 0}}));
    }
  }
}

// The border of the comb's hole comes back to the hole's first pixel from the south-west and leaves
// it north-eastward, after more vertices than are gathered at a time.
TEST(RunTracer, LongHolesPassStraightThroughTheirFirstPixel) {
  const int last = 1001;
  std::vector<::Run> runs = {{0, 0, last}, {1, 0, 2}, {1, last, last}, {2, 0, 1}};
  for (int tooth = 5; tooth < last; tooth += 2) runs.push_back({2, tooth, tooth});
  runs.push_back({2, last, last});
  runs.push_back({3, 0, last});
  const Traced traced = Trace(runs);
  std::vector<cv::Point> hole = {{3, 0}, {last - 1, 0}, {last, 1}, {last, 2}};
  for (int tooth = last - 1; tooth > 4; --tooth) hole.push_back({tooth, 3 - tooth % 2});
  hole.insert(hole.end(), {{4, 3}, {2, 3}, {1, 2}});
  ASSERT_EQ(traced.pointStarts.size(), 3u);
  EXPECT_EQ(
      std::vector<cv::Point>(traced.points.begin() + traced.pointStarts[1], traced.points.end()),
      hole);
}

}  // namespace
