#include "VemCircle.h"

#include <cmath>
#include <cstddef>
#include <type_traits>

#include <gtest/gtest.h>

#include "support/Support.h"

namespace {

static_assert(offsetof(VemCircle, center) == 0 && offsetof(VemCircle, radius) == 16);
static_assert(sizeof(VemCircle) == 24);
static_assert(std::is_trivially_copyable_v<VemCircle> && !std::is_polymorphic_v<VemCircle>);
static_assert(std::is_same_v<decltype(&VemCircle::Perimeter), double (VemCircle::*)()>);
static_assert(std::is_same_v<decltype(&VemCircle::Area), double (VemCircle::*)()>);

void ExpectCircle(const VemCircle& circle, double x, double y, double radius) {
  EXPECT_EQ(circle.center.x, x);
  EXPECT_EQ(circle.center.y, y);
  EXPECT_EQ(circle.radius, radius);
}

TEST(VemCircle, DefaultIsTheUnitCircle) { ExpectCircle(VemCircle(), 0, 0, 1); }

TEST(VemCircle, TakesAnyRadius) {
  for (const double radius : {0.0, 2.5, -3.0, kInfinity, -1e300}) {
    ExpectCircle(VemCircle(VemPoint(4, -7), radius), 4, -7, radius);
    ExpectCircle(VemCircle(4, -7, radius), 4, -7, radius);
  }
  EXPECT_TRUE(std::isnan(VemCircle(1, 2, kNaN).radius));
}

TEST(VemCircle, CopiesAndAssignmentsCopyBothFields) {
  const VemCircle circle(1, 2, 3);
  const VemCircle copy(circle);
  ExpectCircle(copy, 1, 2, 3);
  VemCircle target;
  VemCircle& result = (target = circle);
  EXPECT_EQ(&result, &target);
  ExpectCircle(target, 1, 2, 3);
  const VemCircle& alias = target;
  target = alias;
  ExpectCircle(target, 1, 2, 3);
}

struct MeasureCase {
  const char* name;
  double radius, perimeter, area;
};

const MeasureCase kMeasureCases[] = {
    {"Unit", 1, 6.2831852, 3.1415926},
    {"Zero", 0, 0, 0},
    {"Negative", -1, -6.2831852, 3.1415926},
    {"Half", 2.5, 15.707963, 19.63495375},
    // The squared radius would give 0.282743334.
    {"AreaMultipliesPiFirst", 0.3, 1.8849555599999999, 0.28274333399999996},
    {"Infinite", kInfinity, kInfinity, kInfinity},
};

TEST(VemCircle, MeasuresWithAShortPi) {
  for (const MeasureCase& c : kMeasureCases) {
    SCOPED_TRACE(c.name);
    VemCircle circle(8, 9, c.radius);
    EXPECT_EQ(circle.Perimeter(), c.perimeter);
    EXPECT_EQ(circle.Area(), c.area);
  }
  EXPECT_TRUE(std::isnan(VemCircle(0, 0, kNaN).Perimeter()));
  EXPECT_TRUE(std::isnan(VemCircle(0, 0, kNaN).Area()));
}

}  // namespace
