#ifndef VEM_POINT_H_
#define VEM_POINT_H_

#include "VemExport.h"

/// A point in the plane, in pixels: x grows with the columns, y with the rows, downward.
///
/// A flat value of two doubles, in the layout of `cv::Point_<double>`. Nothing is checked: an
/// infinity or a NaN passes through. Nothing throws. Use an object from one thread at a time;
/// reading it from several at once is safe.
class VEM_EXPORT VemPoint {
 public:
  VemPoint();                                            ///< The origin.
  VemPoint(double xValue, double yValue);                ///< The point (x, y).
  VemPoint(const VemPoint& other) = default;             ///< Copies both fields.
  VemPoint& operator=(const VemPoint& other) = default;  ///< Copies both fields.
  ~VemPoint() = default;

  /// Overwrites both coordinates.
  void Reset(double xValue, double yValue);

  /// The sum by coordinate, each rounded once.
  VemPoint operator+(const VemPoint& right) const;
  /// The difference by coordinate, each rounded once.
  VemPoint operator-(const VemPoint& right) const;

  double x;  ///< Horizontal coordinate.
  double y;  ///< Vertical coordinate.
};

VEM_INLINE VemPoint::VemPoint() : x(0.0), y(0.0) {}
VEM_INLINE VemPoint::VemPoint(double xValue, double yValue) : x(xValue), y(yValue) {}

VEM_INLINE void VemPoint::Reset(double xValue, double yValue) {
  x = xValue;
  y = yValue;
}

#endif  // VEM_POINT_H_
