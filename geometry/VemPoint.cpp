#include "VemPoint.h"

#include <cstddef>
#include <type_traits>

static_assert(offsetof(VemPoint, x) == 0 && offsetof(VemPoint, y) == 8 && sizeof(VemPoint) == 16,
              "the layout of cv::Point_<double>");
static_assert(std::is_trivially_copyable<VemPoint>::value, "arrays of points move as memory");

// Out of line, so that a caller's own compiler options can't fuse a sum with what surrounds it.

VemPoint VemPoint::operator+(const VemPoint& right) const {
  return VemPoint(x + right.x, y + right.y);
}

VemPoint VemPoint::operator-(const VemPoint& right) const {
  return VemPoint(x - right.x, y - right.y);
}
