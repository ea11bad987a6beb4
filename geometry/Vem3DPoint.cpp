#include "Vem3DPoint.h"

#include <cstddef>
#include <type_traits>

static_assert(offsetof(Vem3DPoint, x) == 0 && offsetof(Vem3DPoint, y) == 8 &&
                  offsetof(Vem3DPoint, z) == 16 && sizeof(Vem3DPoint) == 24,
              "three doubles and nothing else");
static_assert(std::is_trivially_copyable<Vem3DPoint>::value, "arrays of points move as memory");

// Out of line, so that a caller's own compiler options can't fuse a sum with what surrounds it.

Vem3DPoint Vem3DPoint::operator+(const Vem3DPoint& right) const {
  return Vem3DPoint(x + right.x, y + right.y, z + right.z);
}

Vem3DPoint Vem3DPoint::operator-(const Vem3DPoint& right) const {
  return Vem3DPoint(x - right.x, y - right.y, z - right.z);
}
