#include "vem/region.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace {

using vem::pixel_box;
using vem::pixel_run;
using vem::pixel_set;

constexpr int kMin = std::numeric_limits<int>::min();
constexpr int kMax = std::numeric_limits<int>::max();

class Random {
 public:
  explicit Random(std::uint32_t seed) : state_(seed) {}
  int operator()(int below) {
    state_ = state_ * 1664525u + 1013904223u;
    return static_cast<int>((static_cast<std::uint64_t>(state_) * static_cast<unsigned>(below)) >>
                            32);
  }

 private:
  std::uint32_t state_;
};

// The slow twin: every pixel by itself, row before column.
using Pixels = std::set<std::pair<int, int>>;

Pixels PixelsOf(const std::vector<pixel_run>& runs) {
  Pixels pixels;
  for (const pixel_run& run : runs) {
    for (long c = run.first_column; c <= run.last_column; ++c) {
      pixels.insert({run.row, static_cast<int>(c)});
    }
  }
  return pixels;
}

// The one normal form of these pixels, found pixel by pixel.
std::vector<pixel_run> NormalForm(const Pixels& pixels) {
  std::vector<pixel_run> runs;
  for (const std::pair<int, int>& p : pixels) {
    if (!runs.empty() && runs.back().row == p.first &&
        static_cast<long>(runs.back().last_column) + 1 == p.second) {
      ++runs.back().last_column;
    } else {
      runs.push_back({p.first, p.second, p.second});
    }
  }
  return runs;
}

VemRegion RegionOf(const std::vector<pixel_run>& runs, int width, int height) {
  VemVarArray rows;
  VemVarArray firsts;
  VemVarArray lasts;
  for (const pixel_run& run : runs) {
    rows.Append(run.row);
    firsts.Append(run.first_column);
    lasts.Append(run.last_column);
  }
  VemRegion region;
  region.CreateRegion(width, height, rows, firsts, lasts);
  return region;
}

struct NormalCase {
  const char* name;
  std::vector<pixel_run> runs;
  std::vector<pixel_run> expected;
};

const NormalCase kNormalCases[] = {
    {"Nothing", {}, {}},
    {"BackwardRun", {{0, 5, 4}}, {}},
    {"Sorted", {{0, 1, 2}, {1, 0, 0}}, {{0, 1, 2}, {1, 0, 0}}},
    {"OutOfOrder", {{1, 0, 0}, {0, 4, 5}, {0, 1, 2}}, {{0, 1, 2}, {0, 4, 5}, {1, 0, 0}}},
    {"Touching", {{0, 3, 4}, {0, 1, 2}}, {{0, 1, 4}}},
    {"Overlapping", {{0, 1, 9}, {0, 3, 4}, {0, 8, 12}}, {{0, 1, 12}}},
    {"Twice", {{2, 3, 4}, {2, 3, 4}}, {{2, 3, 4}}},
    {"Negative", {{0, 0, 1}, {-1, -5, -3}, {0, -2, -1}}, {{-1, -5, -3}, {0, -2, 1}}},
    {"EndsOfRowsNeverTouch", {{3, kMin, kMin}, {2, 7, kMax}}, {{2, 7, kMax}, {3, kMin, kMin}}},
    {"WholeRows",
     {{kMax, kMin, kMax}, {kMin, kMin, kMax}},
     {{kMin, kMin, kMax}, {kMax, kMin, kMax}}},
    {"LastPixelOfAll", {{kMax, kMax, kMax}, {kMax, kMax, kMax}}, {{kMax, kMax, kMax}}},
};

TEST(VemRegionSet, RunsComeIntoNormalForm) {
  for (const NormalCase& c : kNormalCases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(pixel_set(c.runs).runs(), c.expected);
    EXPECT_EQ(pixel_set(RegionOf(c.runs, 1, 1)).runs(), c.expected);
    EXPECT_EQ(pixel_set(c.runs).run_count(), c.expected.size());
    EXPECT_EQ(pixel_set(c.runs).empty(), c.expected.empty());
  }
}

TEST(VemRegionSet, OfUnequalListsTheShortestCounts) {
  VemVarArray rows;
  rows.Append(1);
  rows.Append(2.9);
  rows.Append(3);
  VemVarArray firsts;
  firsts.Append(0);
  firsts.Append(4);
  VemVarArray lasts;
  for (int i = 0; i < 5; ++i) lasts.Append(5);
  VemRegion region;
  region.SetRuns(rows, firsts, lasts);
  EXPECT_EQ(pixel_set(region).runs(), (std::vector<pixel_run>{{1, 0, 5}, {2, 4, 5}}));
}

TEST(VemRegionSet, RegionsComeBack) {
  const std::vector<pixel_run> runs = {{1, 2, 3}, {4, 0, 9}};
  VemRegion region = pixel_set(runs).to_region(20, 10);
  EXPECT_EQ(region.Width(), 20);
  EXPECT_EQ(region.Height(), 10);
  VemVarArray rows;
  VemVarArray firsts;
  VemVarArray lasts;
  region.GetRegionRuns(&rows, &firsts, &lasts);
  ASSERT_EQ(rows.Length(), 2);
  EXPECT_EQ(rows[1].L(), 4);
  EXPECT_EQ(firsts[1].L(), 0);
  EXPECT_EQ(lasts[1].L(), 9);
  EXPECT_EQ(rows[1].ValType(), VemVarLong);
  EXPECT_EQ(pixel_set(region).runs(), runs);
}

TEST(VemRegionSet, RegionsOfTheSamePixelsAreTheSame) {
  const VemRegion whole = RegionOf({{0, 0, 9}}, 10, 1);
  const VemRegion pieces = RegionOf({{0, 5, 9}, {0, 0, 6}}, 30, 30);
  const VemRegion other = RegionOf({{0, 0, 8}}, 10, 1);
  EXPECT_TRUE(vem::same_pixels(whole, pieces));
  EXPECT_FALSE(vem::same_pixels(whole, other));
  EXPECT_TRUE(pixel_set(whole) == pixel_set(pieces));
  EXPECT_TRUE(pixel_set(whole) != pixel_set(other));
}

// --- Every pair of sets of 3 by 3 pixels, around the origin and in the corners of all ---

constexpr int kSide = 3;
constexpr int kSets = 1 << (kSide * kSide);

struct Corner {
  int row;
  int column;
};
const Corner kCorners[] = {{0, 0}, {-1, -1}, {kMin, kMin}, {kMax - 2, kMax - 2}, {5, kMax - 2}};

// The set of the bits, from runs that overlap and stand backward.
pixel_set SetOf(int bits, const Corner& corner) {
  std::vector<pixel_run> runs;
  for (int i = kSide * kSide - 1; i >= 0; --i) {
    if ((bits >> i & 1) == 0) continue;
    const int row = corner.row + i / kSide;
    const int column = corner.column + i % kSide;
    runs.push_back({row, column, column});
    if (i % kSide > 0 && (bits >> (i - 1) & 1) != 0) runs.push_back({row, column - 1, column});
  }
  return pixel_set(runs);
}

int BitsOf(const pixel_set& set, const Corner& corner) {
  int bits = 0;
  for (const pixel_run& run : set.runs()) {
    for (long c = run.first_column; c <= run.last_column; ++c) {
      const long row = static_cast<long>(run.row) - corner.row;
      const long column = c - corner.column;
      if (row < 0 || row >= kSide || column < 0 || column >= kSide) return -1;
      bits |= 1 << (row * kSide + column);
    }
  }
  return bits;
}

TEST(VemRegionSet, EveryPairOfSmallSetsIsCombinedRightly) {
  for (const Corner& corner : kCorners) {
    SCOPED_TRACE(testing::Message() << corner.row << ", " << corner.column);
    std::vector<pixel_set> sets;
    for (int bits = 0; bits < kSets; ++bits) {
      sets.push_back(SetOf(bits, corner));
      ASSERT_EQ(BitsOf(sets.back(), corner), bits);
    }
    for (int a = 0; a < kSets; ++a) {
      for (int b = 0; b < kSets; ++b) {
        const pixel_set& x = sets[static_cast<std::size_t>(a)];
        const pixel_set& y = sets[static_cast<std::size_t>(b)];
        // Equal to the set of the expected bits: the results are in normal form as well.
        ASSERT_TRUE((x | y) == sets[static_cast<std::size_t>(a | b)]) << a << ' ' << b;
        ASSERT_TRUE((x & y) == sets[static_cast<std::size_t>(a & b)]) << a << ' ' << b;
        ASSERT_TRUE((x - y) == sets[static_cast<std::size_t>(a & ~b)]) << a << ' ' << b;
        ASSERT_TRUE((x ^ y) == sets[static_cast<std::size_t>(a ^ b)]) << a << ' ' << b;
        ASSERT_EQ(x == y, a == b);
      }
    }
  }
}

TEST(VemRegionSet, AssigningFormsWorkOntoThemselves) {
  pixel_set set(std::vector<pixel_run>{{0, 1, 5}});
  const pixel_set& itself = set;
  const pixel_set kept = set;
  set |= itself;
  EXPECT_TRUE(set == kept);
  set &= itself;
  EXPECT_TRUE(set == kept);
  set ^= pixel_set(std::vector<pixel_run>{{0, 3, 3}});
  EXPECT_EQ(set.runs(), (std::vector<pixel_run>{{0, 1, 2}, {0, 4, 5}}));
  set -= itself;
  EXPECT_TRUE(set.empty());
}

TEST(VemRegionSet, EverySmallSetHasItsComplement) {
  // Canvases that cut the set, hold it, and are nothing.
  for (const Corner& corner : {Corner{0, 0}, Corner{-1, -1}, Corner{1, 1}, Corner{2, -2}}) {
    for (int bits = 0; bits < kSets; ++bits) {
      const pixel_set set = SetOf(bits, corner);
      const Pixels pixels = PixelsOf(set.runs());
      for (int width = -1; width <= 5; ++width) {
        for (int height = 0; height <= 4; ++height) {
          Pixels expected;
          for (int row = 0; row < height; ++row) {
            for (int column = 0; column < width; ++column) {
              if (pixels.count({row, column}) == 0) expected.insert({row, column});
            }
          }
          ASSERT_EQ(set.complement(width, height).runs(), NormalForm(expected))
              << bits << ' ' << width << ' ' << height;
        }
      }
    }
  }
}

TEST(VemRegionSet, ComplementsReachTheLastColumn) {
  const pixel_set set(std::vector<pixel_run>{{0, 5, kMax}, {1, kMin, 3}, {2, kMin, kMax}});
  EXPECT_EQ(set.complement(kMax, 4).runs(),
            (std::vector<pixel_run>{{0, 0, 4}, {1, 4, kMax - 1}, {3, 0, kMax - 1}}));
  EXPECT_EQ(pixel_set::canvas(3, 2).runs(), (std::vector<pixel_run>{{0, 0, 2}, {1, 0, 2}}));
  EXPECT_TRUE(pixel_set::canvas(0, 2).empty());
}

// --- Larger sets at random ---

std::vector<pixel_run> RandomRuns(Random& random, int count, int side) {
  std::vector<pixel_run> runs;
  for (int i = 0; i < count; ++i) {
    const int first = random(side) - side / 4;
    runs.push_back({random(side) - side / 4, first, first + random(9) - 1});
  }
  return runs;
}

template <typename Include>
std::vector<pixel_run> Combined(const Pixels& a, const Pixels& b, const Include& include) {
  Pixels all = a;
  all.insert(b.begin(), b.end());
  Pixels kept;
  for (const std::pair<int, int>& p : all) {
    if (include(a.count(p) > 0, b.count(p) > 0)) kept.insert(p);
  }
  return NormalForm(kept);
}

TEST(VemRegionSet, RandomSetsAreCombinedRightly) {
  Random random(1);
  for (int round = 0; round < 1500; ++round) {
    SCOPED_TRACE(round);
    const int side = 4 + random(30);
    const std::vector<pixel_run> x = RandomRuns(random, random(60), side);
    const std::vector<pixel_run> y = RandomRuns(random, random(60), side);
    const Pixels a = PixelsOf(x);
    const Pixels b = PixelsOf(y);
    const pixel_set p(RegionOf(x, side, side));
    const pixel_set q(y);
    ASSERT_EQ(p.runs(), NormalForm(a));
    ASSERT_EQ((p | q).runs(), Combined(a, b, [](bool u, bool v) { return u || v; }));
    ASSERT_EQ((p & q).runs(), Combined(a, b, [](bool u, bool v) { return u && v; }));
    ASSERT_EQ((p - q).runs(), Combined(a, b, [](bool u, bool v) { return u && !v; }));
    ASSERT_EQ((p ^ q).runs(), Combined(a, b, [](bool u, bool v) { return u != v; }));
    for (int i = 0; i < 50; ++i) {
      const int column = random(side + 4) - side / 4 - 2;
      const int row = random(side + 4) - side / 4 - 2;
      ASSERT_EQ(p.contains(column, row), a.count({row, column}) > 0);
    }
  }
}

// --- Points, measures, shifts ---

TEST(VemRegionSet, PointsAreTruncated) {
  const pixel_set set(std::vector<pixel_run>{{2, 3, 3}, {0, 0, 0}, {-2, kMin, kMin}});
  EXPECT_TRUE(set.contains(3, 2));
  EXPECT_FALSE(set.contains(2, 3));
  EXPECT_TRUE(set.contains(VemPoint(3.9, 2.9)));
  EXPECT_FALSE(set.contains(VemPoint(2.9, 2.9)));
  EXPECT_TRUE(set.contains(VemPoint(-0.9, 0.9)));
  EXPECT_FALSE(set.contains(VemPoint(-1.0, 0)));
  EXPECT_TRUE(set.contains(VemPoint(-2147483648.5, -2)));
  EXPECT_FALSE(set.contains(VemPoint(-2147483649.0, -2)));
  EXPECT_FALSE(set.contains(VemPoint(std::nan(""), 0)));
  EXPECT_FALSE(set.contains(VemPoint(0, std::numeric_limits<double>::infinity())));
  EXPECT_FALSE(pixel_set().contains(0, 0));

  EXPECT_TRUE(set.contains(3.9, 2.9));
  EXPECT_TRUE(set.contains(-0.9F, 0));
  EXPECT_FALSE(set.contains(0, -1.0));
  EXPECT_FALSE(set.contains(4294967299.0, 2));
  EXPECT_FALSE(set.contains(std::nan(""), 0.0));
}

TEST(VemRegionSet, NoPixelsHaveNoCentre) {
  EXPECT_EQ(pixel_set().area(), 0);
  EXPECT_EQ(pixel_set().bounding_box(), (pixel_box{0, 0, -1, -1}));
  EXPECT_EQ(pixel_set().sums().xx, 0);
  EXPECT_TRUE(std::isnan(pixel_set().center().x));
  EXPECT_TRUE(std::isnan(pixel_set().spread().xy));
  EXPECT_TRUE(pixel_set().shifted(kMax, kMin).empty());
}

TEST(VemRegionSet, RandomSetsAreMeasuredRightly) {
  Random random(2);
  for (int round = 0; round < 400; ++round) {
    SCOPED_TRACE(round);
    const int dx = random(60000) - 30000;
    const int dy = random(60000) - 30000;
    const pixel_set at_origin(RandomRuns(random, 1 + random(40), 4 + random(30)));
    const pixel_set set = at_origin.shifted(dx, dy);
    const Pixels pixels = PixelsOf(set.runs());
    if (pixels.empty()) continue;
    vem::pixel_sums sums = {};
    pixel_box box = {kMax, kMax, kMin, kMin};
    for (const std::pair<int, int>& p : pixels) {
      const std::int64_t x = p.second;
      const std::int64_t y = p.first;
      ++sums.count;
      sums.x += x;
      sums.y += y;
      sums.xx += x * x;
      sums.xy += x * y;
      sums.yy += y * y;
      box = {std::min(box.left, p.second), std::min(box.top, p.first),
             std::max(box.right, p.second), std::max(box.bottom, p.first)};
    }
    ASSERT_EQ(set.area(), sums.count);
    ASSERT_EQ(set.bounding_box(), box);
    const vem::pixel_sums told = set.sums();
    ASSERT_EQ(told.count, sums.count);
    ASSERT_EQ(told.x, sums.x);
    ASSERT_EQ(told.y, sums.y);
    ASSERT_EQ(told.xx, sums.xx);
    ASSERT_EQ(told.xy, sums.xy);
    ASSERT_EQ(told.yy, sums.yy);

    long double x = 0, y = 0, xx = 0, xy = 0, yy = 0;
    for (const std::pair<int, int>& p : pixels) {
      x += p.second;
      y += p.first;
    }
    const long double n = static_cast<long double>(pixels.size());
    x /= n;
    y /= n;
    for (const std::pair<int, int>& p : pixels) {
      xx += (p.second - x) * (p.second - x) / n;
      xy += (p.second - x) * (p.first - y) / n;
      yy += (p.first - y) * (p.first - y) / n;
    }
    ASSERT_NEAR(set.center().x, static_cast<double>(x), 1e-11);
    ASSERT_NEAR(set.center().y, static_cast<double>(y), 1e-11);
    ASSERT_NEAR(set.spread().xx, static_cast<double>(xx), 1e-12);
    ASSERT_NEAR(set.spread().xy, static_cast<double>(xy), 1e-12);
    ASSERT_NEAR(set.spread().yy, static_cast<double>(yy), 1e-12);
    const vem::pixel_measures measures = set.measures();
    ASSERT_EQ(measures.area, sums.count);
    ASSERT_EQ(measures.center.x, set.center().x);
    ASSERT_EQ(measures.spread.xy, set.spread().xy);
  }
}

// The sums over a rectangle of pixels by their formulas, in integers that hold them.
TEST(VemRegionSet, SumsFitWithin32768PixelsOfTheOrigin) {
  for (int corner : {-32768, 0, 16384}) {
    const int side = corner == -32768 ? 65537 : corner == 0 ? 32769 : 16385;
    const pixel_set set = pixel_set::canvas(side, side).shifted(corner, corner);
    const vem::pixel_sums sums = set.sums();
    const std::int64_t last = corner + side - 1;
    const auto squares = [](std::int64_t n) { return n * (n + 1) * (2 * n + 1) / 6; };
    std::int64_t line_sum = 0;
    std::int64_t line_squares = squares(last);
    for (std::int64_t k = corner; k <= last; ++k) line_sum += k;
    if (corner < 0) line_squares += squares(-corner);
    if (corner > 0) line_squares -= squares(corner - 1);
    EXPECT_EQ(sums.count, std::int64_t{side} * side);
    EXPECT_EQ(sums.x, line_sum * side);
    EXPECT_EQ(sums.xx, line_squares * side);
    EXPECT_EQ(sums.xy, line_sum * line_sum);
    EXPECT_EQ(sums.yy, line_squares * side);
    EXPECT_EQ(set.center().x, corner + (side - 1) / 2.0);
    // The variance of n whole numbers in a row is (n * n - 1) / 12.
    const double variance = (static_cast<double>(side) * side - 1) / 12;
    EXPECT_NEAR(set.spread().xx, variance, variance * 1e-15);
    EXPECT_NEAR(set.spread().xy, 0, 1e-6);
  }
}

TEST(VemRegionSet, SumsThatDoNotFitRaise) {
  const pixel_set far(std::vector<pixel_run>{{kMin, kMin, kMax}});
  EXPECT_EQ(far.area(), std::int64_t{1} << 32);
  EXPECT_THROW(far.sums(), std::overflow_error);
  EXPECT_EQ(far.center().y, kMin);
  EXPECT_EQ(far.center().x, -0.5);
  const double side = 4294967296.0;
  EXPECT_NEAR(far.spread().xx, (side * side - 1) / 12, side);
}

TEST(VemRegionSet, ShiftsKeepWithinTheIntegers) {
  const pixel_set set(std::vector<pixel_run>{{1, 2, 3}, {4, 0, 9}});
  EXPECT_EQ(set.shifted(-5, 7).runs(), (std::vector<pixel_run>{{8, -3, -2}, {11, -5, 4}}));
  EXPECT_EQ(set.shifted(kMax - 9, 0).runs().back().last_column, kMax);
  EXPECT_THROW(set.shifted(kMax - 8, 0), std::overflow_error);
  EXPECT_THROW(set.shifted(0, kMax), std::overflow_error);
  EXPECT_EQ(set.shifted(kMin, 0).runs().front().first_column, kMin + 2);
}

}  // namespace
