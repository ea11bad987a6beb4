#include "VemRegion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstddef>
#include <functional>
#include <opencv2/core.hpp>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "support/Regions.h"

// Other code reaches the fields by their places.
static_assert(offsetof(VemRegionData, Width) == 0 && offsetof(VemRegionData, Height) == 4 &&
              offsetof(VemRegionData, Rows) == 8 && offsetof(VemRegionData, FirstColumns) == 16 &&
              offsetof(VemRegionData, LastColumns) == 24 &&
              offsetof(VemRegionData, Hierarchy) == 32 && offsetof(VemRegionData, Contours) == 56 &&
              sizeof(VemRegionData) == 80);

namespace {

using Runs = std::vector<::Run>;
using Points = std::vector<VemPoint>;

static_assert(sizeof(VemRegion) == sizeof(void*), "a handle is one pointer");

VemVarArray Integers(const std::vector<int>& values) {
  VemVarArray array;
  for (const int value : values) array.Append(value);
  return array;
}

VemVarArray Count(int length) {
  return Integers(std::vector<int>(static_cast<std::size_t>(length)));
}

VemPointArray PointArray(const Points& points) {
  VemPointArray array;
  for (VemPoint point : points) array.Append(point);
  return array;
}

VemRegion FromRuns(const Runs& runs, int width, int height) {
  VemVarArray rows, firstColumns, lastColumns;
  for (const ::Run& run : runs) {
    rows.Append(run.Row);
    firstColumns.Append(run.FirstColumn);
    lastColumns.Append(run.LastColumn);
  }
  return VemRegion(width, height, rows, firstColumns, lastColumns);
}

VemRegion FromPoints(const Points& points) {
  VemPointArray array = PointArray(points);
  return VemRegion(array);
}

VemRegion FromPoints(int width, int height, const Points& points) {
  VemPointArray array = PointArray(points);
  return VemRegion(width, height, array);
}

struct Triple {
  VemVarArray rows, firstColumns, lastColumns;
};

Triple TripleOf(VemRegion& region) {
  Triple triple;
  region.GetRegionRuns(&triple.rows, &triple.firstColumns, &triple.lastColumns);
  return triple;
}

void ExpectTriple(VemRegion& region, const VemVarArray& rows, const VemVarArray& firstColumns,
                  const VemVarArray& lastColumns) {
  const Triple triple = TripleOf(region);
  EXPECT_TRUE(Same(triple.rows, rows)) << testing::PrintToString(triple.rows);
  EXPECT_TRUE(Same(triple.firstColumns, firstColumns))
      << testing::PrintToString(triple.firstColumns);
  EXPECT_TRUE(Same(triple.lastColumns, lastColumns)) << testing::PrintToString(triple.lastColumns);
}

void ExpectRegion(VemRegion& region, int width, int height, const Runs& runs) {
  EXPECT_EQ(region.Width(), width);
  EXPECT_EQ(region.Height(), height);
  const Triple triple = TripleOf(region);
  EXPECT_EQ(RunsOf(triple.rows, triple.firstColumns, triple.lastColumns), runs);
}

void ExpectOutlines(VemRegion& region, const Hierarchy& hierarchy, const Contours& contours) {
  EXPECT_EQ(Block(region)->Hierarchy, hierarchy);
  EXPECT_EQ(Block(region)->Contours, contours);
}

void ExpectEmpty(VemRegion& region) {
  ExpectRegion(region, 0, 0, {});
  ExpectOutlines(region, {}, {});
}

TEST(VemRegion, DefaultIsEmpty) {
  VemRegion region;
  ExpectEmpty(region);
}

// --- From run arrays ---

struct InferredCase {
  const char* name;
  std::vector<int> rows, firstColumns, lastColumns;
  int width, height;
};

const InferredCase kInferredCases[] = {
    {"LargestFirst", {4, 2}, {0, 0}, {9, 7}, 10, 5},
    {"LargestLast", {2, 4}, {0, 0}, {7, 9}, 10, 5},
    {"LargestInDifferentRuns", {1, 3, 2}, {0, 0, 0}, {6, 4, 5}, 7, 4},
    {"FirstColumnsDoNotCount", {4, 2}, {100, 200}, {9, 7}, 10, 5},
    {"Origin", {0}, {0}, {0}, 1, 1},
    {"OnlyNegative", {-3, -1}, {-9, -8}, {-2, -7}, 1, 1},
    {"NegativeBesidePositive", {-1, 3}, {-5, -6}, {5, -1}, 6, 4},
    {"UnsortedAndOverlapping", {3, 0, 3, 0}, {1, 0, 1, 2}, {2, 4, 2, 3}, 5, 4},
    {"LargestIntegerWraps", {INT_MAX}, {0}, {INT_MAX}, INT_MIN, INT_MIN},
};

TEST(VemRegion, RunsGiveTheCanvas) {
  for (const InferredCase& c : kInferredCases) {
    SCOPED_TRACE(c.name);
    VemVarArray rows = Integers(c.rows);
    VemVarArray firstColumns = Integers(c.firstColumns);
    VemVarArray lastColumns = Integers(c.lastColumns);
    VemRegion region(rows, firstColumns, lastColumns);
    EXPECT_EQ(region.Width(), c.width);
    EXPECT_EQ(region.Height(), c.height);
    ExpectTriple(region, rows, firstColumns, lastColumns);
    ExpectOutlines(region, {}, {});
  }
}

TEST(VemRegion, RunsAreReadAsIntegersAndStoredAsTheyAre) {
  VemVarArray rows(4.9);
  rows.Append(5000000000.0);  // No int: reads as the smallest integer.
  VemVarArray firstColumns("first");
  firstColumns.Append(7);
  VemVarArray lastColumns(0x100000003L);  // Reads as 3, its low 32 bits.
  lastColumns.Append(2.5);
  VemRegion inferred(rows, firstColumns, lastColumns);
  EXPECT_EQ(inferred.Width(), 4);
  EXPECT_EQ(inferred.Height(), 5);
  ExpectTriple(inferred, rows, firstColumns, lastColumns);

  VemRegion stated(2, 1, rows, firstColumns, lastColumns);
  EXPECT_EQ(stated.Width(), 2);
  EXPECT_EQ(stated.Height(), 1);
  ExpectTriple(stated, rows, firstColumns, lastColumns);
}

TEST(VemRegion, RunArraysOfDifferentLengthsAreRefused) {
  const struct {
    const char* name;
    int rows, firstColumns, lastColumns;
  } cases[] = {
      {"ShortLastColumns", 3, 3, 2}, {"ShortFirstColumns", 3, 2, 3}, {"ShortRows", 2, 3, 3},
      {"NoLastColumns", 1, 1, 0},    {"NoFirstColumns", 1, 0, 1},    {"NoRows", 0, 1, 1},
      {"OnlyRows", 1, 0, 0},         {"OnlyFirstColumns", 0, 1, 0},  {"OnlyLastColumns", 0, 0, 1},
      {"AllDifferent", 1, 2, 3},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    VemVarArray rows = Count(c.rows);
    VemVarArray firstColumns = Count(c.firstColumns);
    VemVarArray lastColumns = Count(c.lastColumns);
    VemRegion inferred(rows, firstColumns, lastColumns);
    ExpectEmpty(inferred);
    VemRegion stated(10, 10, rows, firstColumns, lastColumns);
    ExpectEmpty(stated);
  }
}

TEST(VemRegion, NoRunsAreRefusedOnlyWithoutACanvas) {
  VemVarArray none;
  VemRegion inferred(none, none, none);
  ExpectEmpty(inferred);
  VemRegion stated(7, 3, none, none, none);
  ExpectRegion(stated, 7, 3, {});
}

TEST(VemRegion, StatedCanvasIsKept) {
  const Runs inside = {{2, 0, 6}, {0, 1, 1}};
  VemRegion region = FromRuns(inside, 7, 3);
  ExpectRegion(region, 7, 3, inside);
  ExpectOutlines(region, {}, {});

  const Runs outside = {{-4, -3, 900}, {70, 8, 2}};
  VemRegion small = FromRuns(outside, 1, 1);
  ExpectRegion(small, 1, 1, outside);
}

struct CanvasCase {
  const char* name;
  int width, height;
};

const CanvasCase kRefusedCanvases[] = {
    {"WidthZero", 0, 5},           {"HeightZero", 5, 0},           {"BothZero", 0, 0},
    {"WidthNegative", -1, 5},      {"HeightNegative", 5, -1},      {"BothNegative", -3, -3},
    {"WidthSmallest", INT_MIN, 5}, {"HeightSmallest", 5, INT_MIN},
};

TEST(VemRegion, CanvasBelow1By1IsRefused) {
  for (const CanvasCase& c : kRefusedCanvases) {
    SCOPED_TRACE(c.name);
    VemRegion withRuns = FromRuns({{0, 0, 0}}, c.width, c.height);
    ExpectEmpty(withRuns);
    VemRegion withoutRuns = FromRuns({}, c.width, c.height);
    ExpectEmpty(withoutRuns);
    VemRegion withPoints = FromPoints(c.width, c.height, {{0, 0}, {1, 1}});
    ExpectEmpty(withPoints);
    VemRegion withoutPoints = FromPoints(c.width, c.height, {});
    ExpectEmpty(withoutPoints);
  }
}

// --- From points ---

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

TEST(VemRegion, PointsGiveTheCanvas) {
  for (const PointsCase& c : kInferredPointsCases) {
    SCOPED_TRACE(c.name);
    VemRegion region = FromPoints(c.points);
    ExpectRegion(region, c.width, c.height, c.runs);
    ExpectOutlines(region, {}, {});
  }
}

TEST(VemRegion, NoPointsGiveTheEmptyRegionOrTheStatedCanvas) {
  VemRegion inferred = FromPoints({});
  ExpectEmpty(inferred);
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

TEST(VemRegion, PointsOnAStatedCanvas) {
  for (const PointsCase& c : kStatedPointsCases) {
    SCOPED_TRACE(c.name);
    VemRegion region = FromPoints(c.width, c.height, c.points);
    ExpectRegion(region, c.width, c.height, c.runs);
    ExpectOutlines(region, {}, {});
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

TEST(VemRegion, RunsOfPointsStandComponentByComponent) {
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

TEST(VemRegion, OrderOfPointsDoesNotMatter) {
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

TEST(VemRegion, EverySetOfPointsOn4By3) {
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

TEST(VemRegion, RandomPointsAreThoseOfThePlainRegion) {
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

// --- Setters and readers ---

TEST(VemRegion, SetWidthAndHeightStoreAnyValueAndLeaveTheRest) {
  const Runs runs = {{2, 1, 8}, {0, 3, 3}};
  VemRegion region = FromRuns(runs, 9, 3);
  for (const int size : {4, 1, 0, -7, INT_MAX, INT_MIN}) {
    SCOPED_TRACE(size);
    region.SetWidth(size);
    ExpectRegion(region, size, 3, runs);
    region.SetWidth(9);
    region.SetHeight(size);
    ExpectRegion(region, 9, size, runs);
    region.SetHeight(3);
  }
}

TEST(VemRegion, SetRunsStoresArraysAsTheyAre) {
  const struct {
    const char* name;
    std::vector<int> rows, firstColumns, lastColumns;
  } cases[] = {
      {"EqualLengths", {50, 1}, {2, 3}, {1, 90}},
      {"DifferentLengths", {1, 2, 3}, {4}, {5, 6}},
      {"OnlyRows", {1}, {}, {}},
      {"Negative", {-1}, {-2}, {-3}},
      {"None", {}, {}, {}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    VemVarArray rows = Integers(c.rows);
    VemVarArray firstColumns = Integers(c.firstColumns);
    VemVarArray lastColumns = Integers(c.lastColumns);

    VemRegion set = FromRuns({{0, 0, 4}, {1, 0, 4}}, 5, 2);
    set.SetRuns(rows, firstColumns, lastColumns);
    EXPECT_EQ(set.Width(), 5);
    EXPECT_EQ(set.Height(), 2);
    ExpectTriple(set, rows, firstColumns, lastColumns);

    VemRegion created = FromRuns({{0, 0, 4}, {1, 0, 4}}, 5, 2);
    created.CreateRegion(-6, 0, rows, firstColumns, lastColumns);
    EXPECT_EQ(created.Width(), -6);
    EXPECT_EQ(created.Height(), 0);
    ExpectTriple(created, rows, firstColumns, lastColumns);
  }
}

TEST(VemRegion, CreateRegionTakesWidthBeforeHeight) {
  VemVarArray none;
  VemRegion region;
  region.CreateRegion(8, 3, none, none, none);
  ExpectRegion(region, 8, 3, {});
}

TEST(VemRegion, GetRegionRunsReplacesWhatTheArraysHeld) {
  VemRegion region = FromRuns({{2, 1, 8}, {0, 3, 4}}, 9, 3);
  VemVarArray rows("text");
  VemVarArray firstColumns = Integers({7, 7, 7, 7});
  VemVarArray lastColumns;
  region.GetRegionRuns(&rows, &firstColumns, &lastColumns);
  EXPECT_TRUE(Same(rows, Integers({2, 0})));
  EXPECT_TRUE(Same(firstColumns, Integers({1, 3})));
  EXPECT_TRUE(Same(lastColumns, Integers({8, 4})));

  VemRegion().GetRegionRuns(&rows, &firstColumns, &lastColumns);
  EXPECT_EQ(rows.Length(), 0);
  EXPECT_EQ(firstColumns.Length(), 0);
  EXPECT_EQ(lastColumns.Length(), 0);
}

struct RunsTakerCase {
  const char* name;
  std::function<void(VemRegion&, VemVarArray&, VemVarArray&, VemVarArray&)> take;
};

const RunsTakerCase kRunsTakerCases[] = {
    {"InferringConstructor",
     [](VemRegion& region, VemVarArray& rows, VemVarArray& firstColumns, VemVarArray& lastColumns) {
       region = VemRegion(rows, firstColumns, lastColumns);
     }},
    {"StatingConstructor",
     [](VemRegion& region, VemVarArray& rows, VemVarArray& firstColumns, VemVarArray& lastColumns) {
       region = VemRegion(9, 9, rows, firstColumns, lastColumns);
     }},
    {"SetRuns", [](VemRegion& region, VemVarArray& rows, VemVarArray& firstColumns,
                   VemVarArray& lastColumns) { region.SetRuns(rows, firstColumns, lastColumns); }},
    {"CreateRegion",
     [](VemRegion& region, VemVarArray& rows, VemVarArray& firstColumns, VemVarArray& lastColumns) {
       region.CreateRegion(9, 9, rows, firstColumns, lastColumns);
     }},
};

TEST(VemRegion, RunArraysAreCopiedInAndOut) {
  for (const RunsTakerCase& c : kRunsTakerCases) {
    SCOPED_TRACE(c.name);
    VemVarArray rows(2);
    VemVarArray firstColumns(1);
    VemVarArray lastColumns(8);
    VemRegion region;
    c.take(region, rows, firstColumns, lastColumns);
    for (VemVarArray* array : {&rows, &firstColumns, &lastColumns}) {
      (*array)[0] = VemVar(70);
      array->Append(71);
    }
    ExpectTriple(region, Integers({2}), Integers({1}), Integers({8}));

    Triple out = TripleOf(region);
    for (VemVarArray* array : {&out.rows, &out.firstColumns, &out.lastColumns}) {
      (*array)[0] = VemVar(80);
      array->Append(81);
    }
    ExpectTriple(region, Integers({2}), Integers({1}), Integers({8}));
  }
}

TEST(VemRegion, PointArraysAreLeftAlone) {
  VemPointArray points = PointArray({{2.5, -3.5}, {1.5, 4.5}});
  VemRegion inferred(points);
  VemRegion stated(9, 9, points);
  ASSERT_EQ(points.Length(), 2);
  EXPECT_EQ(points[0].x, 2.5);
  EXPECT_EQ(points[0].y, -3.5);
  EXPECT_EQ(points[1].x, 1.5);
  EXPECT_EQ(points[1].y, 4.5);
}

// --- Copies ---

const Hierarchy kOldHierarchy = {{-1, -1, 1, -1}, {-1, -1, -1, 0}};
const Contours kOldContours = {{{0, 0}, {0, 5}, {5, 5}}, {{1, 2}}};
const Hierarchy kNewHierarchy = {{7, 8, 9, 10}};
const Contours kNewContours = {{{3, 4}, {6, 7}}};

VemRegion WithOutlines(const Hierarchy& hierarchy, const Contours& contours) {
  VemRegion region = FromRuns({{2, 1, 8}, {0, 3, 4}}, 9, 3);
  Block(region)->Hierarchy = hierarchy;
  Block(region)->Contours = contours;
  return region;
}

// Changes whatever a region holds, in place.
void Disturb(VemRegion& region) {
  VemRegionData& data = *Block(region);
  data.Width = data.Height = 77;
  for (VemVarArray* array : {&data.Rows, &data.FirstColumns, &data.LastColumns}) {
    (*array)[0] = VemVar(78);
    array->Append(79);
  }
  data.Hierarchy[0][0] = 80;
  data.Contours[0][0].x = 81;
  data.Contours[0].pop_back();
}

struct OutlineCase {
  const char* name;
  Hierarchy hierarchy;
  Contours contours;
  Hierarchy copiedHierarchy;
  Contours copiedContours;
  Hierarchy assignedHierarchy;  // Over kOldHierarchy and kOldContours.
  Contours assignedContours;
};

const OutlineCase kOutlineCases[] = {
    {"Both", kNewHierarchy, kNewContours, kNewHierarchy, kNewContours, kNewHierarchy, kNewContours},
    {"Neither", {}, {}, {}, {}, kOldHierarchy, kOldContours},
    {"HierarchyAlone", kNewHierarchy, {}, {}, {}, kOldHierarchy, kOldContours},
    {"ContoursAlone", {}, kNewContours, {}, kNewContours, {}, kNewContours},
    {"ContourWithoutPoints", kNewHierarchy, {{}}, kNewHierarchy, {{}}, kNewHierarchy, {{}}},
};

TEST(VemRegion, OutlinesFollowTheSourcesContours) {
  for (const OutlineCase& c : kOutlineCases) {
    SCOPED_TRACE(c.name);
    const Runs runs = {{1, 0, 3}};
    VemRegion source = FromRuns(runs, 4, 2);
    Block(source)->Hierarchy = c.hierarchy;
    Block(source)->Contours = c.contours;

    VemRegion copy(source);
    ExpectRegion(copy, 4, 2, runs);
    ExpectOutlines(copy, c.copiedHierarchy, c.copiedContours);

    VemRegion fresh;
    fresh = source;
    ExpectRegion(fresh, 4, 2, runs);
    ExpectOutlines(fresh, c.copiedHierarchy, c.copiedContours);

    VemRegion target = WithOutlines(kOldHierarchy, kOldContours);
    EXPECT_EQ(&(target = source), &target);
    ExpectRegion(target, 4, 2, runs);
    ExpectOutlines(target, c.assignedHierarchy, c.assignedContours);

    ExpectRegion(source, 4, 2, runs);
    ExpectOutlines(source, c.hierarchy, c.contours);
  }
}

TEST(VemRegion, AssignmentOfAnEmptyRegionKeepsOldOutlines) {
  VemRegion target = WithOutlines(kOldHierarchy, kOldContours);
  target = VemRegion();
  ExpectRegion(target, 0, 0, {});
  ExpectOutlines(target, kOldHierarchy, kOldContours);
}

TEST(VemRegion, AssignmentKeepsAnOldHierarchyWithoutContours) {
  VemRegion target = FromRuns({{0, 0, 0}}, 1, 1);
  Block(target)->Hierarchy = kOldHierarchy;
  target = FromRuns({{1, 2, 3}}, 5, 6);
  ExpectRegion(target, 5, 6, {{1, 2, 3}});
  ExpectOutlines(target, kOldHierarchy, {});
}

TEST(VemRegion, CopiesAreDeep) {
  const Runs runs = {{2, 1, 8}, {0, 3, 4}};
  for (const bool assign : {false, true}) {
    SCOPED_TRACE(assign ? "Assignment" : "CopyConstructor");
    VemRegion source = WithOutlines(kOldHierarchy, kOldContours);
    VemRegion copy = assign ? VemRegion() : VemRegion(source);
    if (assign) copy = source;
    EXPECT_NE(Block(copy), Block(source));

    Disturb(source);
    ExpectRegion(copy, 9, 3, runs);
    ExpectOutlines(copy, kOldHierarchy, kOldContours);

    VemRegion second(copy);
    Disturb(second);
    ExpectRegion(copy, 9, 3, runs);
    ExpectOutlines(copy, kOldHierarchy, kOldContours);
  }
}

TEST(VemRegion, CopyOutlivesItsSource) {
  VemRegion copy;
  {
    const VemRegion source = WithOutlines(kOldHierarchy, kOldContours);
    copy = source;
  }
  ExpectRegion(copy, 9, 3, {{2, 1, 8}, {0, 3, 4}});
  ExpectOutlines(copy, kOldHierarchy, kOldContours);
}

TEST(VemRegion, CopiesKeepArraysOfDifferentLengthsAndKinds) {
  VemVarArray rows("text");
  VemVarArray firstColumns = Integers({1, 2, 3});
  VemVarArray lastColumns;
  VemRegion source;
  source.CreateRegion(-1, -2, rows, firstColumns, lastColumns);
  VemRegion copy(source);
  VemRegion target = FromRuns({{0, 0, 0}}, 1, 1);
  target = source;
  for (VemRegion* region : {&copy, &target}) {
    EXPECT_EQ(region->Width(), -1);
    EXPECT_EQ(region->Height(), -2);
    ExpectTriple(*region, rows, firstColumns, lastColumns);
  }
}

TEST(VemRegion, SelfAssignmentChangesNothing) {
  VemRegion region = WithOutlines(kOldHierarchy, kOldContours);
  const VemRegion& same = region;
  region = same;
  ExpectRegion(region, 9, 3, {{2, 1, 8}, {0, 3, 4}});
  ExpectOutlines(region, kOldHierarchy, kOldContours);
}

TEST(VemRegion, SettersLeaveOutlinesAlone) {
  VemVarArray array = Integers({1, 2});
  VemRegion region = WithOutlines(kOldHierarchy, kOldContours);
  region.SetWidth(1);
  region.SetHeight(2);
  ExpectOutlines(region, kOldHierarchy, kOldContours);
  region.SetRuns(array, array, array);
  ExpectOutlines(region, kOldHierarchy, kOldContours);
  region.CreateRegion(5, 5, array, array, array);
  ExpectOutlines(region, kOldHierarchy, kOldContours);
}

// --- A handle that has lost its block ---

// Its destructor meets the null pointer as well.
struct LostRegion : VemRegion {
  LostRegion() {
    delete Block(*this);
    Block(*this) = nullptr;
  }
};

TEST(VemRegion, DestructorAllowsAMissingBlock) {
  LostRegion region;
  EXPECT_EQ(Block(region), nullptr);
}

TEST(VemRegion, AssignmentMakesAMissingBlock) {
  const VemRegion source = WithOutlines(kOldHierarchy, kOldContours);
  LostRegion region;
  region.VemRegion::operator=(source);
  ExpectRegion(region, 9, 3, {{2, 1, 8}, {0, 3, 4}});
  ExpectOutlines(region, kOldHierarchy, kOldContours);
}

TEST(VemRegion, CanvasThatWrapsRaises) {
  const VemPoint kPoints[] = {{2147483647, 5}, {5, 2147483647}};
  for (VemPoint point : kPoints) {
    VemPointArray points;
    points.Append(point);
    EXPECT_THROW(VemRegion region(points), cv::Exception);
  }
}

TEST(VemRegion, CanvasBeyondMemoryRaises) {
#ifdef __SANITIZE_ADDRESS__
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
