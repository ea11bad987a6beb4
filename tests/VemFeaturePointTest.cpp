#include "VemFeaturePoint.h"

#include <cstddef>
#include <cstring>
#include <new>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

namespace {

static_assert(sizeof(VemFeaturePoint) == 32);
static_assert(std::is_trivially_copyable_v<VemFeaturePoint>);
static_assert(!std::is_convertible_v<float, VemFeaturePoint>);
static_assert(std::is_same_v<decltype(VemFeaturePoint::ValueF), float>);
static_assert(std::is_same_v<decltype(VemFeaturePoint::IntValue), int>);
static_assert(std::is_same_v<
              decltype(std::declval<VemFeaturePoint&>() = std::declval<const VemFeaturePoint&>()),
              VemFeaturePoint&>);

// What every field reads as until it is written.
constexpr int kUnwrittenBits = 0x40404040;
float Unwritten() {
  float value;
  std::memcpy(&value, &kUnwrittenBits, sizeof(value));
  return value;
}

// A point built over memory of which every byte is the same.
template <typename... Arguments>
VemFeaturePoint BuiltFrom(Arguments... arguments) {
  alignas(VemFeaturePoint) unsigned char memory[sizeof(VemFeaturePoint)];
  std::memset(memory, 0x40, sizeof(memory));
  return *new (memory) VemFeaturePoint(arguments...);
}

void ExpectPoint(const VemFeaturePoint& point, float x, float y, float c, float d, float e, float f,
                 float g, int n) {
  EXPECT_EQ(point.x, x);
  EXPECT_EQ(point.y, y);
  EXPECT_EQ(point.ValueC, c);
  EXPECT_EQ(point.ValueD, d);
  EXPECT_EQ(point.ValueE, e);
  EXPECT_EQ(point.ValueF, f);
  EXPECT_EQ(point.ValueG, g);
  EXPECT_EQ(point.IntValue, n);
}

TEST(VemFeaturePoint, ConstructorsWriteOnlyWhatTheyAreGiven) {
  const float no = Unwritten();
  ExpectPoint(BuiltFrom(), no, no, no, no, no, no, no, kUnwrittenBits);
  ExpectPoint(BuiltFrom(1.f, 2.f, 3.f), 1, 2, no, no, no, no, 3, kUnwrittenBits);
  ExpectPoint(BuiltFrom(1.f, 2.f, 3.f, 4, 5.f), 1, 2, no, no, 3, no, 5, 4);
  ExpectPoint(BuiltFrom(1.f, 2.f, 3.f, 4.f, 5.f, 6, 7.f), 1, 2, 3, 4, 5, no, 7, 6);
}

TEST(VemFeaturePoint, TakesPlainNumbers) {
  const VemFeaturePoint three(1, 2, 3);
  EXPECT_EQ(three.ValueG, 3);
  const VemFeaturePoint five(1, 2, 3, 4, 5);
  EXPECT_EQ(five.ValueE, 3);
  EXPECT_EQ(five.IntValue, 4);
  const VemFeaturePoint seven(1, 2, 3, 4, 5, 6, 7);
  EXPECT_EQ(seven.ValueC, 3);
  EXPECT_EQ(seven.IntValue, 6);
}

TEST(VemFeaturePoint, CopiesAndAssignmentsCarryAllFields) {
  VemFeaturePoint point(1, 2, 3, 4, 5, 6, 7);
  point.ValueF = 8;
  const VemFeaturePoint copy(point);
  ExpectPoint(copy, 1, 2, 3, 4, 5, 8, 7, 6);
  VemFeaturePoint target(9, 9, 9, 9, 9, 9, 9);
  VemFeaturePoint& result = (target = point);
  EXPECT_EQ(&result, &target);
  ExpectPoint(target, 1, 2, 3, 4, 5, 8, 7, 6);
  const VemFeaturePoint& alias = target;
  target = alias;
  ExpectPoint(target, 1, 2, 3, 4, 5, 8, 7, 6);
}

}  // namespace
