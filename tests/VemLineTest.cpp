#include "VemLine.h"

#include <cmath>
#include <cstddef>
#include <limits>
#include <random>
#include <type_traits>

#include <gtest/gtest.h>

#include "support/Support.h"

namespace {

static_assert(offsetof(VemLine, start) == 0 && offsetof(VemLine, end) == sizeof(VemPoint));
static_assert(sizeof(VemLine) == 2 * sizeof(VemPoint));
static_assert(std::is_trivially_copyable_v<VemLine> && !std::is_polymorphic_v<VemLine>);
static_assert(std::is_same_v<decltype(&VemLine::Length), double (VemLine::*)()>);
static_assert(std::is_same_v<decltype(&VemLine::VerticalAngle), double (VemLine::*)()>);
static_assert(std::is_same_v<decltype(&VemLine::HorizonalAngle), double (VemLine::*)()>);
static_assert(std::is_same_v<decltype(&VemLine::MidPoint), void (VemLine::*)(VemPoint*)>);

constexpr double kTiny = 1e-200;  // Its square is 0.

void ExpectEnds(const VemLine& line, double x1, double y1, double x2, double y2) {
  EXPECT_EQ(line.start.x, x1);
  EXPECT_EQ(line.start.y, y1);
  EXPECT_EQ(line.end.x, x2);
  EXPECT_EQ(line.end.y, y2);
}

TEST(VemLine, DefaultRunsFromTheOriginToTheOrigin) { ExpectEnds(VemLine(), 0, 0, 0, 0); }

struct EndsCase {
  const char* name;
  double x1, y1, x2, y2;
  bool kept;
};

const EndsCase kEndsCases[] = {
    {"Different", 1, 2, 3, 4, true},
    {"SameX", 5, 2, 5, 4, true},
    {"SameY", 1, 5, 3, 5, true},
    {"SamePoint", 5, 5, 5, 5, false},
    {"SamePointOfDifferentCoordinates", -3, 8, -3, 8, false},
    {"Crossed", 1, 2, 2, 1, true},
    {"Origin", 0, 0, 0, 0, false},
    {"MinusZeroEqualsZero", -0.0, 4, 0.0, 4, false},
    {"NeighbouringNumbers", 1, 2, 1 + std::numeric_limits<double>::epsilon(), 2, true},
    {"TooShortForItsLength", kTiny, 0, 0, kTiny, true},
    {"SameInfinities", kInfinity, -kInfinity, kInfinity, -kInfinity, false},
    {"OppositeInfinities", kInfinity, 1, -kInfinity, 1, true},
};

TEST(VemLine, EqualEndsBecomeTheOrigin) {
  for (const EndsCase& c : kEndsCases) {
    SCOPED_TRACE(c.name);
    for (const VemLine& line :
         {VemLine(VemPoint(c.x1, c.y1), VemPoint(c.x2, c.y2)), VemLine(c.x1, c.y1, c.x2, c.y2)}) {
      if (c.kept) {
        ExpectEnds(line, c.x1, c.y1, c.x2, c.y2);
      } else {
        ExpectEnds(line, 0, 0, 0, 0);
        EXPECT_FALSE(std::signbit(line.start.x));
      }
    }
  }
}

TEST(VemLine, NaNMakesEndsUnequal) {
  for (const VemLine& line :
       {VemLine(kNaN, 5, kNaN, 5), VemLine(VemPoint(kNaN, 5), VemPoint(kNaN, 5))}) {
    EXPECT_TRUE(std::isnan(line.start.x));
    EXPECT_TRUE(std::isnan(line.end.x));
    EXPECT_EQ(line.start.y, 5);
    EXPECT_EQ(line.end.y, 5);
  }
  ExpectEnds(VemLine(7, 5, 7, 5), 0, 0, 0, 0);
}

TEST(VemLine, CopiesAndAssignmentsCopyBothEnds) {
  const VemLine line(1, 2, 3, 4);
  const VemLine copy(line);
  ExpectEnds(copy, 1, 2, 3, 4);
  VemLine target(5, 6, 7, 8);
  VemLine& result = (target = line);
  EXPECT_EQ(&result, &target);
  ExpectEnds(target, 1, 2, 3, 4);
  const VemLine& alias = target;
  target = alias;
  ExpectEnds(target, 1, 2, 3, 4);
}

// Fields are written without a test, so equal ends may stand in a line, and may be copied.
TEST(VemLine, WrittenFieldsAreKept) {
  VemLine line;
  line.start = VemPoint(5, 5);
  line.end = VemPoint(5, 5);
  const VemLine copy(line);
  ExpectEnds(copy, 5, 5, 5, 5);
}

struct MeasureCase {
  const char* name;
  double x1, y1, x2, y2;
  double length, vertical, horizontal;
};

const MeasureCase kMeasureCases[] = {
    {"RightAndDown", 0, 0, 3, 4, 5, 36.86989827477667, 53.13010326045784},
    {"LeftAndDown", 0, 0, -3, 4, 5, 36.86989827477667, 126.86989981001119},
    {"RightAndUp", 0, 0, 3, -4, 5, 143.13010479569235, 53.13010326045784},
    {"LeftAndUp", 0, 0, -3, -4, 5, 143.13010479569235, 126.86989981001119},
    {"EndsSwapped", 3, 4, 0, 0, 5, 143.13010479569235, 126.86989981001119},
    {"Diagonal", 0, 0, 1, 1, 1.4142135623730951, 45.00000076761727, 45.00000076761727},
    {"AwayFromTheOrigin", -2.5, 7, 4, -1.25, 10.502975768800002, 141.76617724082334,
     51.76617570558882},
    {"Right", 0, 0, 10, 0, 10, 90.0, 0.0},
    {"Left", 10, 0, 0, 0, 10, 90.0, 180.00000307046903},
    {"Down", 0, 0, 0, 10, 10, 0.0, 90.0},
    {"Up", 0, 10, 0, 0, 10, 180.00000307046903, 90.0},
};

TEST(VemLine, MeasuresLengthAndAngles) {
  for (const MeasureCase& c : kMeasureCases) {
    SCOPED_TRACE(c.name);
    VemLine line(c.x1, c.y1, c.x2, c.y2);
    EXPECT_DOUBLE_EQ(line.Length(), c.length);
    EXPECT_DOUBLE_EQ(line.VerticalAngle(), c.vertical);
    EXPECT_DOUBLE_EQ(line.HorizonalAngle(), c.horizontal);
  }
}

TEST(VemLine, AnglesAcrossAnAxisAreExact) {
  for (const double to : {-1e300, -10.0, -1e-300, 1e-300, 0.1, 10.0, 1e300}) {
    EXPECT_EQ(VemLine(0, 7, to, 7).VerticalAngle(), 90.0);
    EXPECT_EQ(VemLine(7, 0, 7, to).HorizonalAngle(), 90.0);
  }
  EXPECT_EQ(VemLine(0, 0, 3, 4).Length(), 5.0);
  EXPECT_EQ(VemLine(0, 0, 0, 10).VerticalAngle(), 0.0);
  EXPECT_EQ(VemLine(0, 0, 10, 0).HorizonalAngle(), 0.0);
  EXPECT_DOUBLE_EQ(VemLine(0, 3, 10, 3.000000000000001).VerticalAngle(), 90.00000153523452);
}

// The right angle is found before the length is looked at.
TEST(VemLine, TinyLinesAlongAnAxisHaveTheirRightAngle) {
  VemLine right(0, 0, kTiny, 0);
  EXPECT_EQ(right.Length(), 0.0);
  EXPECT_EQ(right.VerticalAngle(), 90.0);
  VemLine down(0, 0, 0, kTiny);
  EXPECT_EQ(down.Length(), 0.0);
  EXPECT_EQ(down.HorizonalAngle(), 90.0);
}

TEST(VemLine, WithoutLengthTheAnglesAreHarmless) {
  VemLine line;
  EXPECT_EQ(line.Length(), 0.0);
  EXPECT_FALSE(std::isnan(line.VerticalAngle()));
  EXPECT_FALSE(std::isnan(line.HorizonalAngle()));
}

// The squares round to multiples of the smallest number, and the line's length comes out shorter
// than the line. The ratio is taken as it is.
TEST(VemLine, LinesShorterThanTheyAreHaveNoAngle) {
  constexpr double kShort = 3.3e-162;
  VemLine down(0, 0, 0, kShort);
  EXPECT_LT(down.Length(), kShort);
  EXPECT_GT(down.Length(), 0.0);
  EXPECT_TRUE(std::isnan(down.VerticalAngle()));
  EXPECT_TRUE(std::isnan(VemLine(0, kShort, 0, 0).VerticalAngle()));
  EXPECT_TRUE(std::isnan(VemLine(0, 0, kShort, 0).HorizonalAngle()));
  EXPECT_TRUE(std::isnan(VemLine(kShort, 0, 0, 0).HorizonalAngle()));
}

TEST(VemLine, NotANumberPassesThrough) {
  VemLine line(kNaN, 0, 1, 1);
  EXPECT_TRUE(std::isnan(line.Length()));
  EXPECT_TRUE(std::isnan(line.VerticalAngle()));
  EXPECT_TRUE(std::isnan(line.HorizonalAngle()));
  EXPECT_EQ(VemLine(kNaN, 1, 2, 1).VerticalAngle(), 90.0);
  EXPECT_EQ(VemLine(0, 0, kInfinity, 1).Length(), kInfinity);
}

// Multiplied before it is divided; each step rounds once.
TEST(VemLine, AnglesAreTakenStepByStep) {
  std::mt19937 random(20240611);
  std::uniform_real_distribution<double> coordinate(-1000, 1000);
  for (int i = 0; i < 10000; ++i) {
    VemLine line(coordinate(random), coordinate(random), coordinate(random), coordinate(random));
    const double dx = line.end.x - line.start.x;
    const double dy = line.end.y - line.start.y;
    const double squaredX = dx * dx;
    const double squaredY = dy * dy;
    const double length = std::sqrt(squaredX + squaredY);
    const double vertical = 180.0 * std::acos(dy / length);
    const double horizontal = 180.0 * std::acos(dx / length);
    ASSERT_EQ(line.Length(), length);
    ASSERT_EQ(line.VerticalAngle(), vertical / 3.1415926);
    ASSERT_EQ(line.HorizonalAngle(), horizontal / 3.1415926);
  }
}

TEST(VemLine, MidPointIsHalfTheSumOfTheEnds) {
  VemPoint middle(9, 9);
  VemLine(2, 2, 4, 6).MidPoint(&middle);
  EXPECT_EQ(middle.x, 3);
  EXPECT_EQ(middle.y, 4);
  VemLine(-5, 1, 5, 2).MidPoint(&middle);
  EXPECT_EQ(middle.x, 0);
  EXPECT_EQ(middle.y, 1.5);
  // The sum is taken first, and overflows.
  VemLine(1.7e308, 0, 1.7e308, 1).MidPoint(&middle);
  EXPECT_EQ(middle.x, kInfinity);
}

TEST(VemLine, MidPointMayBeAnEndOfTheLine) {
  VemLine line(2, 2, 4, 6);
  line.MidPoint(&line.start);
  ExpectEnds(line, 3, 4, 4, 6);
}

}  // namespace
