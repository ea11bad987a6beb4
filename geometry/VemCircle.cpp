#include "VemCircle.h"

#include <cstddef>
#include <type_traits>

static_assert(offsetof(VemCircle, center) == 0 && offsetof(VemCircle, radius) == 16 &&
                  sizeof(VemCircle) == 24,
              "the centre, then the radius");
static_assert(std::is_trivially_copyable<VemCircle>::value, "a flat value");

VemCircle::VemCircle(VemPoint centerPoint, double radiusValue)
    : center(centerPoint), radius(radiusValue) {}

VemCircle::VemCircle(double x, double y, double radiusValue) : center(x, y), radius(radiusValue) {}

double VemCircle::Perimeter() { return 6.2831852 * radius; }
double VemCircle::Area() { return radius * (3.1415926 * radius); }
