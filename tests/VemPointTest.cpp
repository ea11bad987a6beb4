#include "VemPoint.h"

#include <cmath>
#include <cstddef>
#include <cstring>
#include <new>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

#include "Vem3DPoint.h"
#include "support/Support.h"

namespace {

static_assert(sizeof(VemPoint) == 16 && offsetof(VemPoint, x) == 0 && offsetof(VemPoint, y) == 8);
static_assert(sizeof(cv::Point_<double>) == sizeof(VemPoint) &&
                  alignof(cv::Point_<double>) == alignof(VemPoint) &&
                  offsetof(cv::Point_<double>, x) == offsetof(VemPoint, x) &&
                  offsetof(cv::Point_<double>, y) == offsetof(VemPoint, y),
              "the layout of an OpenCV point");
static_assert(std::is_same_v<decltype(VemPoint::x), double> &&
              std::is_same_v<decltype(VemPoint::y), double>);
static_assert(!std::is_polymorphic_v<VemPoint> && std::is_trivially_copyable_v<VemPoint> &&
                  std::is_trivially_destructible_v<VemPoint> && std::is_standard_layout_v<VemPoint>,
              "a flat value");
static_assert(std::is_same_v<decltype(std::declval<VemPoint&>() = std::declval<const VemPoint&>()),
                             VemPoint&>);
static_assert(std::is_same_v<decltype(&VemPoint::Reset), void (VemPoint::*)(double, double)>);
static_assert(
    std::is_same_v<decltype(&VemPoint::operator+), VemPoint (VemPoint::*)(const VemPoint&) const>);
static_assert(
    std::is_same_v<decltype(&VemPoint::operator-), VemPoint (VemPoint::*)(const VemPoint&) const>);

template <typename T, typename = void>
struct Compares : std::false_type {};
template <typename T>
struct Compares<T, std::void_t<decltype(std::declval<T&>() == std::declval<T&>())>>
    : std::true_type {};
template <typename T, typename = void>
struct Scales : std::false_type {};
template <typename T>
struct Scales<T, std::void_t<decltype(std::declval<T&>() * 2.0)>> : std::true_type {};

static_assert(Compares<cv::Point2d>::value && Scales<cv::Point2d>::value);
static_assert(!Compares<VemPoint>::value && !Scales<VemPoint>::value,
              "neither comparison nor scaling");
static_assert(!std::is_constructible_v<VemPoint, Vem3DPoint> &&
                  !std::is_constructible_v<Vem3DPoint, VemPoint>,
              "no conversion between the plane and space");

void ExpectPoint(const VemPoint& point, double x, double y) {
  EXPECT_EQ(point.x, x);
  EXPECT_EQ(point.y, y);
}

TEST(VemPoint, DefaultIsTheOrigin) {
  alignas(VemPoint) unsigned char bytes[sizeof(VemPoint)];
  std::memset(bytes, 0xFF, sizeof(bytes));
  const VemPoint* point = new (bytes) VemPoint();
  ExpectPoint(*point, 0.0, 0.0);
  EXPECT_FALSE(std::signbit(point->x) || std::signbit(point->y));
}

TEST(VemPoint, TakesXBeforeY) {
  ExpectPoint(VemPoint(1.5, -2.5), 1.5, -2.5);
  ExpectPoint(VemPoint(kInfinity, -kInfinity), kInfinity, -kInfinity);
  EXPECT_TRUE(std::isnan(VemPoint(kNaN, 1.0).x));
  EXPECT_TRUE(std::isnan(VemPoint(1.0, kNaN).y));
}

TEST(VemPoint, HasTheBytesOfAnOpenCvPoint) {
  const VemPoint point(1.5, -2.5);
  cv::Point_<double> same;
  std::memcpy(static_cast<void*>(&same), &point, sizeof(same));
  EXPECT_EQ(same, cv::Point_<double>(1.5, -2.5));
}

TEST(VemPoint, CopiesAreIndependent) {
  VemPoint source(1, 2);
  const VemPoint copy(source);
  VemPoint assigned(8, 9);
  EXPECT_EQ(&(assigned = source), &assigned);
  source.x = 5;
  source.y = 6;
  ExpectPoint(copy, 1, 2);
  ExpectPoint(assigned, 1, 2);
  const VemPoint& alias = assigned;
  assigned = alias;
  ExpectPoint(assigned, 1, 2);
}

TEST(VemPoint, ResetOverwritesBothCoordinates) {
  VemPoint point(1, 2);
  point.Reset(5, 6);
  ExpectPoint(point, 5, 6);
  point.Reset(-kInfinity, 0.1);
  ExpectPoint(point, -kInfinity, 0.1);
}

TEST(VemPoint, SumAndDifferenceByCoordinate) {
  const struct {
    const char* name;
    VemPoint left;
    VemPoint right;
    VemPoint sum;
    VemPoint difference;
  } cases[] = {
      {"Integers", {1, 2}, {3, 4}, {4, 6}, {-2, -2}},
      {"OrderMatters", {3, 4}, {1, 2}, {4, 6}, {2, 2}},
      {"OneAxis", {1, 0}, {0, 1}, {1, 1}, {1, -1}},
      {"Origin", {1.5, -2.5}, {}, {1.5, -2.5}, {1.5, -2.5}},
      {"RoundedOnce",
       {0.1, 0.3},
       {0.2, 0.1},
       {0.30000000000000004, 0.4},
       {-0.1, 0.19999999999999998}},
      {"Absorbed", {1e16, 1}, {1, 1e16}, {1e16, 1e16}, {1e16, -1e16}},
      {"Overflow", {1e308, -1e308}, {1e308, -1e308}, {kInfinity, -kInfinity}, {0, 0}},
      {"Infinity", {kInfinity, 1}, {1, kInfinity}, {kInfinity, kInfinity}, {kInfinity, -kInfinity}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const VemPoint sum = c.left + c.right;
    const VemPoint difference = c.left - c.right;
    ExpectPoint(sum, c.sum.x, c.sum.y);
    ExpectPoint(difference, c.difference.x, c.difference.y);
  }
}

TEST(VemPoint, OperatorsLeaveTheirOperands) {
  const VemPoint left(1, 2);
  const VemPoint right(3, 4);
  const VemPoint sum = left + right;
  const VemPoint difference = left - right;
  ExpectPoint(left, 1, 2);
  ExpectPoint(right, 3, 4);
  ExpectPoint(sum - difference, 6, 8);
}

TEST(VemPoint, NotANumberPassesThroughItsCoordinateAlone) {
  const VemPoint sum = VemPoint(kNaN, 2) + VemPoint(3, 4);
  EXPECT_TRUE(std::isnan(sum.x));
  EXPECT_EQ(sum.y, 6);
  const VemPoint difference = VemPoint(1, kInfinity) - VemPoint(3, kInfinity);
  EXPECT_EQ(difference.x, -2);
  EXPECT_TRUE(std::isnan(difference.y));
}

}  // namespace
