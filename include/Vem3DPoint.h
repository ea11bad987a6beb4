#ifndef VEM_3D_POINT_H_
#define VEM_3D_POINT_H_

#include "VemExport.h"

/// A point in space: a flat value of three doubles, x before y before z. Their unit is their
/// user's: the library gives them none.
///
/// Nothing is checked: an infinity or a NaN passes through. Nothing throws. Use an object from one
/// thread at a time; reading it from several at once is safe.
class VEM_EXPORT Vem3DPoint {
 public:
  Vem3DPoint();                                              ///< The origin.
  Vem3DPoint(double xValue, double yValue, double zValue);   ///< The point (x, y, z).
  Vem3DPoint(const Vem3DPoint& other) = default;             ///< Copies the fields.
  Vem3DPoint& operator=(const Vem3DPoint& other) = default;  ///< Copies the fields.
  ~Vem3DPoint() = default;

  /// Overwrites all coordinates.
  void Reset(double xValue, double yValue, double zValue);

  /// The sum by coordinate, each rounded once.
  Vem3DPoint operator+(const Vem3DPoint& right) const;
  /// The difference by coordinate, each rounded once.
  Vem3DPoint operator-(const Vem3DPoint& right) const;

  double x;  ///< First coordinate.
  double y;  ///< Second coordinate.
  double z;  ///< Third coordinate.
};

VEM_INLINE Vem3DPoint::Vem3DPoint() : x(0.0), y(0.0), z(0.0) {}
VEM_INLINE Vem3DPoint::Vem3DPoint(double xValue, double yValue, double zValue)
    : x(xValue), y(yValue), z(zValue) {}

VEM_INLINE void Vem3DPoint::Reset(double xValue, double yValue, double zValue) {
  x = xValue;
  y = yValue;
  z = zValue;
}

#endif  // VEM_3D_POINT_H_
