#ifndef VEM_CIRCLE_H_
#define VEM_CIRCLE_H_

#include "VemExport.h"
#include "VemPoint.h"

/// A circle by centre and radius, in pixels.
///
/// A flat value. Nothing is checked: a radius may be zero, negative or no number, and the
/// measurements take it as it is. Nothing throws. Use an object from one thread at a time; reading
/// it from several at once is safe.
class VEM_EXPORT VemCircle {
 public:
  VemCircle();                                             ///< Around the origin, with radius 1.
  VemCircle(const VemCircle& other) = default;             ///< Copies both fields.
  VemCircle(VemPoint centerPoint, double radiusValue);     ///< Around a point.
  VemCircle(double x, double y, double radiusValue);       ///< Around (x, y).
  VemCircle& operator=(const VemCircle& other) = default;  ///< Copies both fields.
  ~VemCircle() = default;

  double Perimeter();  ///< 6.2831852 times the radius; negative for a negative radius.
  double Area();       ///< radius * (3.1415926 * radius).

  VemPoint center;  ///< The centre.
  double radius;    ///< The radius.
};

VEM_INLINE VemCircle::VemCircle() : radius(1.0) {}

#endif  // VEM_CIRCLE_H_
