#include "VemFeaturePoint.h"

#include <cstddef>
#include <type_traits>

// Detectors write these fields in place.
static_assert(offsetof(VemFeaturePoint, x) == 0);
static_assert(offsetof(VemFeaturePoint, y) == 4);
static_assert(offsetof(VemFeaturePoint, ValueC) == 8);
static_assert(offsetof(VemFeaturePoint, ValueD) == 12);
static_assert(offsetof(VemFeaturePoint, ValueE) == 16);
static_assert(offsetof(VemFeaturePoint, ValueF) == 20);
static_assert(offsetof(VemFeaturePoint, ValueG) == 24);
static_assert(offsetof(VemFeaturePoint, IntValue) == 28);
static_assert(sizeof(VemFeaturePoint) == 32);
static_assert(std::is_trivially_copyable<VemFeaturePoint>::value, "arrays of them move as memory");

// Fields that are not named stay as the memory was: this is meant.

VemFeaturePoint::VemFeaturePoint() {}

VemFeaturePoint::VemFeaturePoint(float xValue, float yValue, float g)
    : x(xValue), y(yValue), ValueG(g) {}

VemFeaturePoint::VemFeaturePoint(float xValue, float yValue, float e, int n, float g)
    : x(xValue), y(yValue), ValueE(e), ValueG(g), IntValue(n) {}

VemFeaturePoint::VemFeaturePoint(float xValue, float yValue, float c, float d, float e, int n,
                                 float g)
    : x(xValue), y(yValue), ValueC(c), ValueD(d), ValueE(e), ValueG(g), IntValue(n) {}
