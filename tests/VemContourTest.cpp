#include "VemContour.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <random>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "support/OutlineReference.h"
#include "support/PrivateAccess.h"
#include "support/Support.h"

struct PrivateVemContour {
  using Type = std::vector<cv::Point2d>* VemContour::*;
  friend Type PrivateOf(PrivateVemContour);
};
template struct PrivateAccess<PrivateVemContour, &VemContour::store_>;

struct PrivateVemContourPoints {
  using Type = std::vector<VemPoint>* VemPointArray::*;
  friend Type PrivateOf(PrivateVemContourPoints);
};
template struct PrivateAccess<PrivateVemContourPoints, &VemPointArray::store_>;

namespace {

static_assert(sizeof(VemContour) == sizeof(void*), "a handle is one pointer");
static_assert(!std::is_polymorphic<VemContour>::value, "no virtual operations");
static_assert(std::is_same<decltype(std::declval<VemContour&>() = std::declval<VemContour&>()),
                           VemContour&>::value,
              "assignment returns a reference to the contour");

VemPointArray Array(const Chain& points) {
  VemPointArray array;
  for (const cv::Point2d& p : points) {
    VemPoint point(p.x, p.y);
    array.Append(point);
  }
  return array;
}

Chain PointsIn(const VemPointArray& array) {
  Chain points;
  for (int i = 0; i < array.Length(); ++i) points.emplace_back(array[i].x, array[i].y);
  return points;
}

const Chain kTriangle = {{0, 0}, {4, 0}, {0, 3}};
const Chain kOther = {{7.5, -1}, {2, 2.25}};

// --- The points -------------------------------------------------------------------------------

TEST(VemContour, DefaultIsEmpty) {
  const VemContour contour;
  EXPECT_EQ(contour.Length(), 0);
  EXPECT_EQ(contour.Perimeter(), 0.0);
  EXPECT_EQ(contour.Area(), 0.0);
  EXPECT_EQ(PointsOf(contour), Chain());
}

TEST(VemContour, PointsComeBackAsTheyWent) {
  const Chain points = {{0.1, -0.2}, {1e300, -1e-300}, {-7, kInfinity}, {0.1, -0.2}};
  VemPointArray in = Array(points);
  VemContour contour;
  contour.FromPointArray(in);
  EXPECT_EQ(contour.Length(), 4);
  EXPECT_EQ(PointsIn(in), points);
  VemPointArray out;
  contour.ToPointArray(&out);
  EXPECT_EQ(PointsIn(out), points);
  EXPECT_EQ(contour.Length(), 4);
}

TEST(VemContour, FromPointArrayReplacesThePoints) {
  VemContour contour = ContourOf({{1, 1}, {2, 2}, {3, 3}, {4, 4}});
  VemPointArray other = Array(kOther);
  contour.FromPointArray(other);
  EXPECT_EQ(PointsOf(contour), kOther);
  VemPointArray none;
  contour.FromPointArray(none);
  EXPECT_EQ(contour.Length(), 0);
  EXPECT_EQ(contour.Area(), 0.0);
}

TEST(VemContour, ToPointArrayLeavesOnlyTheContoursPoints) {
  VemContour contour = ContourOf(kTriangle);
  VemPointArray out = Array({{9, 9}, {8, 8}, {7, 7}, {6, 6}, {5, 5}});
  contour.ToPointArray(&out);
  EXPECT_EQ(PointsIn(out), kTriangle);
  VemContour none;
  none.ToPointArray(&out);
  EXPECT_EQ(out.Length(), 0);
}

// The array's own storage is given back first, and grows again point by point.
TEST(VemContour, ToPointArrayKeepsNoStorage) {
  VemContour contour = ContourOf(kTriangle);
  VemPointArray out;
  for (int i = 0; i < 100; ++i) {
    VemPoint point(i, i);
    out.Append(point);
  }
  contour.ToPointArray(&out);
  EXPECT_EQ(PointsIn(out), kTriangle);
  EXPECT_EQ((out.*PrivateOf(PrivateVemContourPoints()))->capacity(), 4u);
  VemContour none;
  none.ToPointArray(&out);
  EXPECT_EQ((out.*PrivateOf(PrivateVemContourPoints()))->capacity(), 0u);
}

TEST(VemContour, PointsAreCopiedInAndOut) {
  VemPointArray in = Array(kTriangle);
  VemContour contour;
  contour.FromPointArray(in);
  in[0].x = 99;
  in.Remove(1);
  EXPECT_EQ(PointsOf(contour), kTriangle);
  VemPointArray out;
  contour.ToPointArray(&out);
  out[2].y = 99;
  EXPECT_EQ(PointsOf(contour), kTriangle);
}

// --- Copies -----------------------------------------------------------------------------------

TEST(VemContour, CopiesAreDeep) {
  VemContour source = ContourOf(kTriangle);
  VemContour copy(source);
  VemContour assigned = ContourOf({{1, 1}, {2, 2}, {3, 3}, {4, 4}});
  EXPECT_EQ(&(assigned = source), &assigned);
  VemPointArray other = Array(kOther);
  source.FromPointArray(other);
  EXPECT_EQ(PointsOf(copy), kTriangle);
  EXPECT_EQ(PointsOf(assigned), kTriangle);
  EXPECT_EQ(PointsOf(source), kOther);
}

TEST(VemContour, CopyOutlivesItsSource) {
  VemContour assigned;
  VemContour* source = new VemContour(ContourOf(kTriangle));
  const VemContour copy(*source);
  assigned = *source;
  delete source;
  EXPECT_EQ(PointsOf(copy), kTriangle);
  EXPECT_EQ(PointsOf(assigned), kTriangle);
}

TEST(VemContour, EmptyContourEmptiesItsTarget) {
  const VemContour none;
  VemContour target = ContourOf(kTriangle);
  target = none;
  EXPECT_EQ(target.Length(), 0);
  EXPECT_EQ(VemContour(none).Length(), 0);
}

TEST(VemContour, SelfAssignmentChangesNothing) {
  VemContour contour = ContourOf(kTriangle);
  const VemContour& self = contour;
  EXPECT_EQ(&(contour = self), &contour);
  EXPECT_EQ(PointsOf(contour), kTriangle);
}

TEST(VemContour, EachHandleHasAStoreOfItsOwn) {
  const auto store = PrivateOf(PrivateVemContour());
  VemContour source = ContourOf(kTriangle);
  VemContour copy(source);
  VemContour assigned;
  const std::vector<cv::Point2d>* const before = assigned.*store;
  assigned = source;
  EXPECT_NE(VemContour().*store, nullptr);
  EXPECT_NE(copy.*store, source.*store);
  EXPECT_EQ(assigned.*store, before);
}

TEST(VemContour, DestructorAllowsAMissingStore) {
  const auto store = PrivateOf(PrivateVemContour());
  VemContour contour;
  delete (contour.*store);
  contour.*store = nullptr;
  EXPECT_EQ(contour.*store, nullptr);
}

// --- Perimeter and area -----------------------------------------------------------------------

// The distance, and the two measures, in the order in which they are told.
double Distance(const cv::Point2d& a, const cv::Point2d& b) {
  return std::sqrt((a.x - b.x) * (a.x - b.x) + (a.y - b.y) * (a.y - b.y));
}

double PlainPerimeter(const Chain& points) {
  double sum = 0.0;
  for (int i = 1; i <= static_cast<int>(points.size()) - 1; ++i) {
    const auto at = static_cast<std::size_t>(i);
    sum = sum + Distance(points[at - 1], points[at]);
  }
  return sum;
}

double PlainArea(const Chain& points) {
  double sum = 0.0;
  for (int i = 1; i < static_cast<int>(points.size()) - 1; ++i) {
    const cv::Point2d& here = points[static_cast<std::size_t>(i)];
    const cv::Point2d& next = points[static_cast<std::size_t>(i) + 1];
    const double a = Distance(next, here);
    const double b = Distance(next, points[0]);
    const double c = Distance(here, points[0]);
    double s = a + b;
    s = s + c;
    s = s * 0.5;
    if (std::fabs(s - a) < 0.001) continue;
    if (std::fabs(s - b) < 0.001) continue;
    if (std::fabs(s - c) < 0.001) continue;
    double product = s * (s - a);
    product = product * (s - b);
    product = product * (s - c);
    sum = sum + std::sqrt(product);
  }
  return sum;
}

struct MeasureCase {
  const char* name;
  Chain points;
  double perimeter;
  double area;
};

const MeasureCase kMeasureCases[] = {
    {"NoPoint", {}, 0, 0},
    {"OnePoint", {{3, 4}}, 0, 0},
    {"TwoPoints", {{1, 1}, {4, 5}}, 5, 0},
    {"TriangleLacksItsClosingEdge", {{0, 0}, {4, 0}, {0, 3}}, 9, 6},
    {"TriangleClosed", {{0, 0}, {4, 0}, {0, 3}, {0, 0}}, 12, 6},
    {"TriangleTurningTheOtherWay", {{0, 0}, {0, 3}, {4, 0}}, 8, 6},
    {"Square", {{0, 0}, {10, 0}, {10, 10}, {0, 10}}, 30, 100},
    {"SquareTurningTheOtherWay", {{0, 0}, {0, 10}, {10, 10}, {10, 0}}, 30, 100},
    {"SquareClosed", {{0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 0}}, 40, 100},
    {"SquareAwayFromTheOrigin", {{-5, 7}, {5, 7}, {5, 17}, {-5, 17}}, 30, 100},
    {"OnALine", {{0, 0}, {1, 0}, {2, 0}}, 2, 0},
    {"OnALineFirstPointBetween", {{1, 0}, {0, 0}, {2, 0}}, 3, 0},
    {"OnALineLastPointBetween", {{0, 0}, {2, 0}, {1, 0}}, 3, 0},
    {"OnePointThrice", {{2, 2}, {2, 2}, {2, 2}}, 0, 0},
    {"TinySquare", {{0, 0}, {0.001, 0}, {0.001, 0.001}, {0, 0.001}}, 0.003, 0},
    {"SmallSquareThatCounts", {{0, 0}, {0.01, 0}, {0.01, 0.01}, {0, 0.01}}, 0.03, 0.0001},
    {"ConcaveCountsTrianglesOutside",
     {{0, 0}, {4, 0}, {4, 4}, {2, 1}, {0, 4}},
     8 + std::sqrt(13.0) * 2,
     14},
    {"BackAndForthCountsTwice", {{0, 0}, {4, 0}, {0, 3}, {4, 0}}, 14, 12},
};

TEST(VemContour, PerimeterIsOpenAndAreaAFanOfUnsignedTriangles) {
  for (const MeasureCase& c : kMeasureCases) {
    SCOPED_TRACE(c.name);
    const VemContour contour = ContourOf(c.points);
    EXPECT_NEAR(contour.Perimeter(), c.perimeter, 1e-12);
    EXPECT_NEAR(contour.Area(), c.area, 1e-12);
  }
}

TEST(VemContour, WholeMeasuresAreExact) {
  EXPECT_EQ(ContourOf({{0, 0}, {4, 0}, {0, 3}}).Perimeter(), 9.0);
  EXPECT_EQ(ContourOf({{0, 0}, {4, 0}, {0, 3}}).Area(), 6.0);
  EXPECT_EQ(ContourOf({{0, 0}, {10, 0}, {10, 10}, {0, 10}}).Perimeter(), 30.0);
  EXPECT_EQ(ContourOf({{0, 0}, {1, 0}, {2, 0}}).Area(), 0.0);
  EXPECT_EQ(ContourOf({{0, 0}, {0.001, 0}, {0.001, 0.001}, {0, 0.001}}).Area(), 0.0);
}

TEST(VemContour, EdgesOfOtherTrianglesDoNotShareADeadZone) {
  // The flat triangle in the middle drops out, those around it stay.
  EXPECT_NEAR(ContourOf({{0, 0}, {4, 0}, {0, 3}, {0, 6}, {4, 6}}).Area(), 6 + 12, 1e-12);
}

// A triangle counts nothing when its half perimeter is less than 0.001 away from a side. In each
// of these, one side alone is that near, or just not.
struct DeadZoneCase {
  const char* name;
  Chain points;
  double area;
};

const DeadZoneCase kDeadZoneCases[] = {
    // Side a lies opposite the first point, b opposite the second, c opposite the third. At a
    // height of 0.141 the gap is 0.000994, at 0.142 it is 0.001008.
    {"ANear", {{0, 0.141}, {-10, 0}, {10, 0}}, 0},
    {"ANotNear", {{0, 0.142}, {-10, 0}, {10, 0}}, 1.42},
    {"BNear", {{-10, 0}, {0, 0.141}, {10, 0}}, 0},
    {"BNotNear", {{-10, 0}, {0, 0.142}, {10, 0}}, 1.42},
    {"CNear", {{-10, 0}, {10, 0}, {0, 0.141}}, 0},
    {"CNotNear", {{-10, 0}, {10, 0}, {0, 0.142}}, 1.42},
    // The limit is a length, not a ratio: the same shapes ten times as large count.
    {"ANearButLarger", {{0, 1.41}, {-100, 0}, {100, 0}}, 141},
    {"BNearButLarger", {{-100, 0}, {0, 1.41}, {100, 0}}, 141},
    {"CNearButLarger", {{-100, 0}, {100, 0}, {0, 1.41}}, 141},
    // And a shape that is not thin at all counts nothing once it is small.
    {"EquilateralNear", {{0, 0}, {0.00199, 0}, {0.000995, 0.0017234}}, 0},
};

TEST(VemContour, TrianglesInTheDeadZoneCountNothing) {
  for (const DeadZoneCase& c : kDeadZoneCases) {
    SCOPED_TRACE(c.name);
    if (c.area == 0) {
      EXPECT_EQ(ContourOf(c.points).Area(), 0.0);
    } else {
      EXPECT_NEAR(ContourOf(c.points).Area(), c.area, 1e-9);
    }
  }
}

TEST(VemContour, DeadZoneEndsBelowItsLimit) {
  // Right triangles whose half perimeter is exactly 0.001 from their longest side.
  const DeadZoneCase cases[] = {
      {"A", {{0, 0}, {0.0028229338776676769, 0}, {0, 0.0044303289173952837}}, 6.2533e-6},
      {"B", {{0.0045365604807605063, 0}, {0, 0}, {0, 0.0027884692737152311}}, 6.3250e-6},
      {"C", {{0, 0.0023983005742282799}, {0.0070213334587203545, 0}, {0, 0}}, 8.4196e-6},
  };
  for (const DeadZoneCase& c : cases) {
    SCOPED_TRACE(c.name);
    const double a = Distance(c.points[2], c.points[1]);
    const double b = Distance(c.points[2], c.points[0]);
    const double side = Distance(c.points[1], c.points[0]);
    ASSERT_EQ((a + b + side) * 0.5 - std::max({a, b, side}), 0.001);
    EXPECT_NEAR(ContourOf(c.points).Area(), c.area, 1e-9);
  }
}

TEST(VemContour, NotANumberGoesThrough) {
  for (std::size_t i = 0; i < 4; ++i) {
    Chain points = {{0, 0}, {10, 0}, {10, 10}, {0, 10}};
    points[i].x = kNaN;
    EXPECT_TRUE(std::isnan(ContourOf(points).Perimeter())) << i;
    EXPECT_TRUE(std::isnan(ContourOf(points).Area())) << i;
    points[i] = {0, kNaN};
    EXPECT_TRUE(std::isnan(ContourOf(points).Perimeter())) << i;
    EXPECT_TRUE(std::isnan(ContourOf(points).Area())) << i;
  }
  EXPECT_EQ(ContourOf({{kNaN, kNaN}}).Perimeter(), 0.0);
  EXPECT_EQ(ContourOf({{kNaN, kNaN}, {kNaN, 0}}).Area(), 0.0);
}

bool SameBits(double a, double b) { return std::memcmp(&a, &b, sizeof(a)) == 0; }

TEST(VemContour, RandomChainsMeasureAsThePlainLoops) {
  std::mt19937 random(20240611);
  int counted = 0;
  int dropped = 0;
  int undefined = 0;
  for (int i = 0; i < 20000; ++i) {
    // Far out, rounding alone takes points on a line out of the dead zone, on either side.
    const double scales[] = {0.002, 0.01, 1, 100, 1e5, 1e13};
    const double scale = scales[random() % 6];
    std::uniform_real_distribution<double> coordinate(-scale, scale);
    const bool onALine = random() % 4 == 0;
    const double slope = coordinate(random) / scale;
    Chain points(random() % 12);
    for (cv::Point2d& p : points) {
      p.x = coordinate(random);
      p.y = onALine ? slope * p.x : coordinate(random);
    }
    const VemContour contour = ContourOf(points);
    const double area = PlainArea(points);
    ASSERT_TRUE(SameBits(contour.Perimeter(), PlainPerimeter(points)))
        << testing::PrintToString(points);
    if (std::isnan(area)) {
      ASSERT_TRUE(std::isnan(contour.Area())) << testing::PrintToString(points);
      ++undefined;
    } else {
      ASSERT_TRUE(SameBits(contour.Area(), area)) << testing::PrintToString(points);
      ++(area > 0 ? counted : dropped);
    }
  }
  EXPECT_GT(counted, 1000);
  EXPECT_GT(dropped, 1000);
  EXPECT_GT(undefined, 100);
}

TEST(VemContour, DirectionOfAChainDoesNotMatter) {
  std::mt19937 random(7);
  std::uniform_int_distribution<int> coordinate(-50, 50);
  for (int i = 0; i < 500; ++i) {
    Chain points(3 + random() % 8);
    for (cv::Point2d& p : points) p = cv::Point2d(coordinate(random), coordinate(random));
    Chain reversed = points;
    std::reverse(reversed.begin() + 1, reversed.end());
    ASSERT_NEAR(ContourOf(points).Area(), ContourOf(reversed).Area(), 1e-7);
  }
}

}  // namespace
