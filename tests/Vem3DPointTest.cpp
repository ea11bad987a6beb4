#include "Vem3DPoint.h"

#include <cmath>
#include <cstddef>
#include <cstring>
#include <new>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

#include "support/Support.h"

namespace {

using Point = Vem3DPoint;

static_assert(sizeof(Point) == 24 && offsetof(Point, x) == 0 && offsetof(Point, y) == 8 &&
              offsetof(Point, z) == 16);
static_assert(std::is_same_v<decltype(Point::x), double> &&
              std::is_same_v<decltype(Point::y), double> &&
              std::is_same_v<decltype(Point::z), double>);
static_assert(!std::is_polymorphic_v<Point> && std::is_trivially_copyable_v<Point> &&
                  std::is_trivially_destructible_v<Point> && std::is_standard_layout_v<Point>,
              "a flat value");
static_assert(
    std::is_same_v<decltype(std::declval<Point&>() = std::declval<const Point&>()), Point&>);
static_assert(std::is_same_v<decltype(&Point::Reset), void (Point::*)(double, double, double)>);
static_assert(std::is_same_v<decltype(&Point::operator+), Point (Point::*)(const Point&) const>);
static_assert(std::is_same_v<decltype(&Point::operator-), Point (Point::*)(const Point&) const>);
static_assert(!std::is_constructible_v<Point, double, double>, "three coordinates or none");

template <typename T, typename = void>
struct Compares : std::false_type {};
template <typename T>
struct Compares<T, std::void_t<decltype(std::declval<T&>() == std::declval<T&>())>>
    : std::true_type {};
template <typename T, typename = void>
struct Scales : std::false_type {};
template <typename T>
struct Scales<T, std::void_t<decltype(std::declval<T&>() * 2.0)>> : std::true_type {};

static_assert(Compares<double>::value && Scales<double>::value);
static_assert(!Compares<Point>::value && !Scales<Point>::value, "neither comparison nor scaling");

void ExpectPoint(const Point& point, double x, double y, double z) {
  EXPECT_EQ(point.x, x);
  EXPECT_EQ(point.y, y);
  EXPECT_EQ(point.z, z);
}

TEST(Vem3DPoint, DefaultIsTheOrigin) {
  alignas(Point) unsigned char bytes[sizeof(Point)];
  std::memset(bytes, 0xFF, sizeof(bytes));
  const Point* point = new (bytes) Point();
  ExpectPoint(*point, 0.0, 0.0, 0.0);
  EXPECT_FALSE(std::signbit(point->x) || std::signbit(point->y) || std::signbit(point->z));
}

TEST(Vem3DPoint, CopiesAreIndependent) {
  Point source(1, 2, 3);
  const Point copy(source);
  Point assigned(7, 8, 9);
  EXPECT_EQ(&(assigned = source), &assigned);
  source.x = source.y = source.z = 0;
  ExpectPoint(copy, 1, 2, 3);
  ExpectPoint(assigned, 1, 2, 3);
  const Point& alias = assigned;
  assigned = alias;
  ExpectPoint(assigned, 1, 2, 3);
}

TEST(Vem3DPoint, ResetOverwritesAllCoordinates) {
  Point point(1, 2, 3);
  point.Reset(5, 6, 7);
  ExpectPoint(point, 5, 6, 7);
  point.Reset(0.1, kInfinity, -kInfinity);
  ExpectPoint(point, 0.1, kInfinity, -kInfinity);
}

TEST(Vem3DPoint, SumAndDifferenceByCoordinate) {
  const struct {
    const char* name;
    Point left;
    Point right;
    Point sum;
    Point difference;
  } cases[] = {
      {"Integers", {1, 2, 3}, {4, 6, 8}, {5, 8, 11}, {-3, -4, -5}},
      {"OrderMatters", {4, 6, 8}, {1, 2, 3}, {5, 8, 11}, {3, 4, 5}},
      {"OneAxisEach", {1, 0, 0}, {0, 1, 2}, {1, 1, 2}, {1, -1, -2}},
      {"RoundedOnce",
       {0.1, 0.3, 1e16},
       {0.2, 0.1, 1},
       {0.30000000000000004, 0.4, 1e16},
       {-0.1, 0.19999999999999998, 1e16}},
      {"Overflow",
       {1e308, -1e308, 1e308},
       {1e308, -1e308, -1e308},
       {kInfinity, -kInfinity, 0},
       {0, 0, kInfinity}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const Point left(c.left);
    const Point right(c.right);
    const Point sum = left + right;
    const Point difference = left - right;
    ExpectPoint(sum, c.sum.x, c.sum.y, c.sum.z);
    ExpectPoint(difference, c.difference.x, c.difference.y, c.difference.z);
    ExpectPoint(left, c.left.x, c.left.y, c.left.z);
    ExpectPoint(right, c.right.x, c.right.y, c.right.z);
  }
}

TEST(Vem3DPoint, NotANumberPassesThroughItsCoordinateAlone) {
  const Point sum = Point(1, 2, kNaN) + Point(3, 4, 5);
  EXPECT_EQ(sum.x, 4);
  EXPECT_EQ(sum.y, 6);
  EXPECT_TRUE(std::isnan(sum.z));
  const Point difference = Point(kInfinity, 2, 3) - Point(kInfinity, 4, 5);
  EXPECT_TRUE(std::isnan(difference.x));
  EXPECT_EQ(difference.y, -2);
  EXPECT_EQ(difference.z, -2);
}

}  // namespace
