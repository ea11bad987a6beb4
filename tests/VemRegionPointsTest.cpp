#include "VemRegion.h"

#include <climits>
#include <cstddef>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

#include "support/Regions.h"

// Regions from points.

namespace {

using Runs = std::vector<::Run>;
using Points = std::vector<VemPoint>;

VemRegion FromPoints(const Points& points) {
  VemPointArray array = PointArray(points);
  return VemRegion(array);
}
VemRegion FromPoints(int width, int height, const Points& points) {
  VemPointArray array = PointArray(points);
  return VemRegion(width, height, array);
}

// Such a region has no outlines.
void ExpectRegion(VemRegion& region, int width, int height, const Runs& runs) {
  EXPECT_EQ(ValueOf(region), (RegionValue{width, height, runs, {}}));
}

// The smallest integer stands for what no int holds.
int Truncated(double value) {
  return value > -2147483649.0 && value < 2147483648.0 ? static_cast<int>(value) : INT_MIN;
}

// A plain set of pixels with a slow search for its components.
class PlainRegion {
 public:
  PlainRegion(int width, int height, const Points& points)
      : width_(width), height_(height), labels_(static_cast<std::size_t>(width * height), kNone) {
    for (const VemPoint& point : points) {
      const int row = Truncated(point.y);
      const int column = Truncated(point.x);
      if (IsInside(row, column)) Label(row, column) = kUnlabelled;
    }
    for (int row = 0; row < height; ++row) {
      for (int column = 0; column < width; ++column) {
        if (Label(row, column) == kUnlabelled) Fill(row, column, components_++);
      }
    }
  }

  Runs ComponentRuns() {
    Runs runs;
    for (int component = 0; component < components_; ++component) {
      for (int row = 0; row < height_; ++row) AppendRuns(row, component, runs);
    }
    return runs;
  }

 private:
  static constexpr int kNone = -1;
  static constexpr int kUnlabelled = -2;

  bool IsInside(int row, int column) const {
    return row >= 0 && row < height_ && column >= 0 && column < width_;
  }

  int& Label(int row, int column) {
    return labels_[static_cast<std::size_t>(row * width_ + column)];
  }

  void Fill(int row, int column, int component) {
    std::vector<std::pair<int, int>> open = {{row, column}};
    while (!open.empty()) {
      const auto [y, x] = open.back();
      open.pop_back();
      if (!IsInside(y, x) || Label(y, x) != kUnlabelled) continue;
      Label(y, x) = component;
      for (int dy = -1; dy <= 1; ++dy) {
        for (int dx = -1; dx <= 1; ++dx) open.emplace_back(y + dy, x + dx);
      }
    }
  }

  void AppendRuns(int row, int component, Runs& runs) {
    bool open = false;
    for (int column = 0; column < width_; ++column) {
      const bool set = Label(row, column) == component;
      if (set && !open) runs.push_back({row, column, column});
      if (set) runs.back().LastColumn = column;
      open = set;
    }
  }

  int width_;
  int height_;
  int components_ = 0;
  std::vector<int> labels_;
};

// The canvas that holds the points, by their largest coordinates one after the other.
std::pair<int, int> PlainCanvas(const Points& points) {
  int largestX = Truncated(points.front().x);
  int largestY = Truncated(points.front().y);
  for (const VemPoint& point : points) {
    if (point.x > largestX) largestX = Truncated(point.x);
    if (point.y > largestY) largestY = Truncated(point.y);
  }
  if (largestX < 1 || largestY < 1) return {0, 0};
  return {largestX + 1, largestY + 1};
}

void ExpectPlainRegion(int width, int height, const Points& points) {
  VemRegion region = FromPoints(width, height, points);
  ASSERT_NO_FATAL_FAILURE(
      ExpectRegion(region, width, height, PlainRegion(width, height, points).ComponentRuns()));
}

void ExpectPlainInferredRegion(const Points& points) {
  VemRegion region = FromPoints(points);
  const auto [width, height] = PlainCanvas(points);
  ExpectRegion(region, width, height, PlainRegion(width, height, points).ComponentRuns());
}

struct PointsCase {
  const char* name;
  Points points;
  int width, height;
  Runs runs;
};

const PointsCase kInferredPointsCases[] = {
    {"OnePoint", {{1, 1}}, 2, 2, {{1, 1, 1}}},
    {"FractionsAreCut", {{2.9, 3.9}}, 3, 4, {{3, 2, 2}}},
    {"FractionsBelowOneAreRowAndColumn0", {{0.9, 0.1}, {3.5, 2.5}}, 4, 3, {{0, 0, 0}, {2, 3, 3}}},
    {"AboveMinusOneIsColumn0", {{3, 1}, {-0.5, 2.0}}, 4, 3, {{1, 3, 3}, {2, 0, 0}}},
    {"AboveMinusOneIsRow0", {{1, 3}, {2.0, -0.9}}, 3, 4, {{0, 2, 2}, {3, 1, 1}}},
    {"MinusOneIsSkipped", {{3, 1}, {-1.0, 2.0}, {2.0, -1.0}}, 4, 3, {{1, 3, 3}}},
    {"NegativeFirst", {{-7, -9}, {1, 2}}, 2, 3, {{2, 1, 1}}},
    {"SkippedPointsGiveTheCanvas", {{5, -1}, {-1, 3}}, 6, 4, {}},
    {"LargestFirst", {{4, 3}, {1, 1}}, 5, 4, {{1, 1, 1}, {3, 4, 4}}},
    {"LargestInDifferentPoints", {{1, 1}, {4, 0}, {0, 3}}, 5, 4, {{0, 4, 4}, {1, 1, 1}, {3, 0, 0}}},
    {"DuplicatesAndNeighboursMerge",
     {{2, 1}, {1, 1}, {2, 1}, {3, 1}, {1.5, 1.5}},
     4,
     2,
     {{1, 1, 3}}},
    {"Row0AndColumn0BesideOthers", {{0, 0}, {1, 1}}, 2, 2, {{0, 0, 0}, {1, 1, 1}}},

    {"AllInRow0", {{5, 0}, {9, 0}}, 0, 0, {}},
    {"AllBelowRow1", {{5, 0.99}, {9, -3}}, 0, 0, {}},
    {"AllInColumn0", {{0, 5}}, 0, 0, {}},
    {"AllLeftOfColumn1", {{0.99, 5}, {-4, 8}}, 0, 0, {}},
    {"Row0ThoughOneIsBeyondTheOtherCanvas", {{3, 0}, {0, 0}}, 0, 0, {}},
    {"Origin", {{0, 0}}, 0, 0, {}},
    {"AllNegative", {{-3, -5}, {-1, -1}}, 0, 0, {}},

    // What no int holds makes the largest coordinate so far the smallest integer.
    {"InfinityLast", {{5, 5}, {kInfinity, 3}}, 0, 0, {}},
    {"InfinityLastInY", {{5, 5}, {3, kInfinity}}, 0, 0, {}},
    {"InfinityBeforeSmaller", {{5, 5}, {kInfinity, 3}, {2, 2}}, 3, 6, {{2, 2, 2}}},
    {"InfinityBeforeSmallerInY", {{5, 5}, {3, kInfinity}, {2, 2}}, 6, 3, {{2, 2, 2}}},
    {"InfinityBeforeColumn0", {{5, 5}, {kInfinity, 3}, {0, 2}}, 0, 0, {}},
    {"InfinityBeforeLarger", {{2, 2}, {kInfinity, 1}, {4, 3}}, 5, 4, {{2, 2, 2}, {3, 4, 4}}},
    {"InfinityFirst", {{kInfinity, 1}, {2, 3}}, 3, 4, {{3, 2, 2}}},
    {"EnormousBeforeSmaller", {{5, 5}, {1e300, 3}, {2, 2}}, 3, 6, {{2, 2, 2}}},
    {"BeyondTheLargestInteger", {{5, 5}, {2147483648.0, 3}, {2, 2}}, 3, 6, {{2, 2, 2}}},
    {"BeyondTheLargestIntegerInY", {{5, 5}, {3, 2147483648.0}, {2, 2}}, 6, 3, {{2, 2, 2}}},
    {"BeyondAnUnsignedInteger", {{5, 5}, {4294967297.0, 3}, {2, 2}}, 3, 6, {{2, 2, 2}}},
    {"MinusInfinity", {{2, 3}, {-kInfinity, 1}, {1, -kInfinity}}, 3, 4, {{3, 2, 2}}},
    {"MinusInfinityFirst", {{-kInfinity, -kInfinity}, {2, 3}}, 3, 4, {{3, 2, 2}}},
    {"BelowTheSmallestInteger", {{2, 3}, {-4294967295.0, 1}, {1, -1e300}}, 3, 4, {{3, 2, 2}}},
    {"NaNFirst", {{kNaN, kNaN}, {2, 3}}, 3, 4, {{3, 2, 2}}},
    {"NaNLater", {{2, 3}, {kNaN, 1}, {1, kNaN}}, 3, 4, {{3, 2, 2}}},
    {"NaNAlone", {{kNaN, 5}}, 0, 0, {}},
};

TEST(VemRegionPoints, PointsGiveTheCanvas) {
  for (const PointsCase& c : kInferredPointsCases) {
    SCOPED_TRACE(c.name);
    VemRegion region = FromPoints(c.points);
    ExpectRegion(region, c.width, c.height, c.runs);
  }
}

TEST(VemRegionPoints, NoPointsGiveTheEmptyRegionOrTheStatedCanvas) {
  VemRegion inferred = FromPoints({});
  EXPECT_EQ(ValueOf(inferred), RegionValue());
  VemRegion stated = FromPoints(4, 2, {});
  ExpectRegion(stated, 4, 2, {});
}

const PointsCase kStatedPointsCases[] = {
    {"Row0", {{0, 0}, {1, 0}}, 3, 3, {{0, 0, 1}}},
    {"Column0", {{0, 1}, {0, 2}}, 3, 3, {{1, 0, 0}, {2, 0, 0}}},
    {"BeyondTheCanvasIsSkipped", {{3, 0}, {0, 0}}, 3, 3, {{0, 0, 0}}},
    {"LastColumnAndRow", {{2, 2}, {3, 2}, {2, 3}}, 3, 3, {{2, 2, 2}}},
    {"FractionsAreCut", {{2.99, 2.99}, {3.0, 1.0}}, 3, 3, {{2, 2, 2}}},
    {"AboveMinusOneIs0", {{-0.5, 2.0}, {2.0, -0.99}}, 3, 3, {{0, 2, 2}, {2, 0, 0}}},
    {"MinusOneIsSkipped", {{-1.0, 2.0}, {2.0, -1.0}}, 3, 3, {}},
    {"WidthBeforeHeight", {{4, 1}, {1, 4}}, 5, 2, {{1, 4, 4}}},
    {"OnePixel", {{0, 0}, {1, 0}, {0, 1}}, 1, 1, {{0, 0, 0}}},
    {"AllSkipped", {{9, 9}, {-4, 1}, {1, -4}}, 4, 2, {}},
    {"LargerThanThePoints", {{1, 1}}, 100, 50, {{1, 1, 1}}},
    {"DuplicatesAndNeighboursMerge", {{2, 1}, {1, 1}, {2, 1}, {3, 1}}, 9, 9, {{1, 1, 3}}},
    {"NotFinite",
     {{kInfinity, 0}, {0, kInfinity}, {-kInfinity, 0}, {0, -kInfinity}, {kNaN, 0}, {0, kNaN}},
     3,
     3,
     {}},
    {"Enormous",
     {{1e300, 0},
      {0, 1e300},
      {-1e300, 0},
      {0, -1e300},
      {2147483648.0, 1},
      {1, 2147483647.0},
      {4294967297.0, 1},
      {1, 4294967297.0},
      {-4294967295.0, 1},
      {1, -4294967295.0}},
     3,
     3,
     {}},
};

TEST(VemRegionPoints, PointsOnAStatedCanvas) {
  for (const PointsCase& c : kStatedPointsCases) {
    SCOPED_TRACE(c.name);
    VemRegion region = FromPoints(c.width, c.height, c.points);
    ExpectRegion(region, c.width, c.height, c.runs);
  }
}

Points PointsOf(const std::string& picture) {
  const cv::Mat raster = Raster(picture);
  Points points;
  for (int row = 0; row < raster.rows; ++row) {
    for (int column = 0; column < raster.cols; ++column) {
      if (raster.at<unsigned char>(row, column) != 0) points.emplace_back(column, row);
    }
  }
  return points;
}

TEST(VemRegionPoints, RunsOfPointsStandComponentByComponent) {
  const Points points = PointsOf(
      "#..#..#\n"
      "#.....#\n"
      "#######\n"
      ".......\n"
      ".#.....\n"
      "..##...\n"
      ".#..#..\n");
  const Runs runs = {{0, 0, 0}, {0, 6, 6}, {1, 0, 0}, {1, 6, 6}, {2, 0, 6},
                     {0, 3, 3}, {4, 1, 1}, {5, 2, 3}, {6, 1, 1}, {6, 4, 4}};
  VemRegion stated = FromPoints(7, 7, points);
  ExpectRegion(stated, 7, 7, runs);
  VemRegion inferred = FromPoints(points);
  ExpectRegion(inferred, 7, 7, runs);
}

TEST(VemRegionPoints, OrderOfPointsDoesNotMatter) {
  Points points = PointsOf(
      "##.#\n"
      "...#\n"
      "##.#\n");
  const Points ordered = points;
  const Runs runs = {{0, 0, 1}, {0, 3, 3}, {1, 3, 3}, {2, 3, 3}, {2, 0, 1}};
  std::mt19937 random(3);
  for (int i = 0; i < 20; ++i) {
    std::shuffle(points.begin(), points.end(), random);
    VemRegion stated = FromPoints(4, 3, points);
    ExpectRegion(stated, 4, 3, runs);
    VemRegion inferred = FromPoints(points);
    ExpectRegion(inferred, 4, 3, runs);
  }
}

TEST(VemRegionPoints, EverySetOfPointsOn4By3) {
  for (unsigned set = 0; set < 1U << 12; ++set) {
    SCOPED_TRACE(set);
    Points points;
    for (int i = 0; i < 12; ++i) {
      if ((set >> i & 1U) != 0) points.emplace_back(i % 4, i / 4);
    }
    ExpectPlainRegion(4, 3, points);
    if (!points.empty()) ExpectPlainInferredRegion(points);
    if (HasFailure()) return;
  }
}

// A coordinate from -1.5 to `end`, in quarters; every 25th cannot be a column or row.
double Coordinate(std::mt19937& random, int end) {
  static const double kOdd[] = {kNaN,   kInfinity,    -kInfinity,   1e300,
                                -1e300, 2147483648.0, 4294967297.0, -4294967295.0};
  if (random() % 25 == 0) return kOdd[random() % 8];
  return static_cast<double>(random() % static_cast<unsigned>(4 * end + 6)) / 4.0 - 1.5;
}

TEST(VemRegionPoints, RandomPointsAreThoseOfThePlainRegion) {
  std::mt19937 random(20240607);
  for (int i = 0; i < 3000; ++i) {
    SCOPED_TRACE(i);
    const bool wide = i % 10 == 0;
    const int width = 1 + static_cast<int>(random() % (wide ? 200U : 12U));
    const int height = 1 + static_cast<int>(random() % 12U);
    const auto count = 1 + random() % static_cast<unsigned>(width * height * 2);
    Points points;
    for (auto k = count; k > 0; --k) {
      const double x = Coordinate(random, width);
      points.emplace_back(x, Coordinate(random, height));
    }
    ExpectPlainRegion(width, height, points);
    ExpectPlainInferredRegion(points);
    if (HasFailure()) return;
  }
}

TEST(VemRegionPoints, CanvasThatWrapsRaises) {
  const VemPoint kPoints[] = {{2147483647, 5}, {5, 2147483647}};
  for (VemPoint point : kPoints) {
    VemPointArray points;
    points.Append(point);
    EXPECT_THROW(VemRegion region(points), cv::Exception);
  }
}

TEST(VemRegionPoints, CanvasBeyondMemoryRaises) {
#ifdef VEM_SANITIZED
  GTEST_SKIP() << "the address sanitizer ends the process instead";
#endif
  VemPoint corner(2147483646, 2147483646);
  VemPointArray points;
  points.Append(corner);
  EXPECT_THROW(VemRegion region(points), cv::Exception);
  VemPointArray none;
  EXPECT_THROW(VemRegion(INT_MAX, INT_MAX, none), cv::Exception);
}

}  // namespace
