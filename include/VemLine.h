#ifndef VEM_LINE_H_
#define VEM_LINE_H_

#include "VemExport.h"
#include "VemPoint.h"

/// A directed segment between two points, in pixels: x grows with the columns, y with the rows,
/// downward.
///
/// A flat value. Both constructors from numbers refuse a line without length: two points that are
/// equal, x with x and y with y, are dropped, and the line runs from the origin to the origin. A
/// NaN equals nothing, so such points are kept. Writing to the fields is not checked.
///
/// Nothing throws. Use an object from one thread at a time; reading it from several at once is
/// safe.
class VEM_EXPORT VemLine {
 public:
  VemLine();                                            ///< From the origin to the origin.
  VemLine(const VemLine& other) = default;              ///< Copies both ends.
  VemLine(VemPoint startPoint, VemPoint endPoint);      ///< From one point to the other.
  VemLine(double x1, double y1, double x2, double y2);  ///< From (x1, y1) to (x2, y2).
  VemLine& operator=(const VemLine& other) = default;   ///< Copies both ends.
  ~VemLine() = default;

  /// The distance between the two ends, the root of the sum of the squared differences: infinite
  /// where a difference is beyond about 1e154, whose square overflows, and 0 or too short or too
  /// long where all are below about 1e-154, whose squares vanish or lose digits. Ends that are not
  /// finite give an infinity or NaN.
  double Length();

  /// The angle between the direction from start to end and the direction of growing y, in degrees,
  /// 0 to 180.
  ///
  /// It does not tell the two sides apart: the sign of the difference in x has no influence. A line
  /// along x, whose ends have the same y and another x, gives exactly 90.0. Everything else is
  /// 180.0 times the arc cosine of the difference in y over Length(), divided by 3.1415926 last:
  /// with this pi, a line straight against growing y gives 180.00000307, not 180. Otherwise
  /// indeterminate when Length() is 0.
  ///
  /// NaN where that ratio is none, or not from -1 to 1: ends that are NaN or infinite in y, and
  /// lines of less than about 1e-154 pixels, whose Length() may come out shorter than they are. A
  /// line that overflows Length() counts as one across.
  double VerticalAngle();
  /// The angle between the direction from start to end and the direction of growing x, in degrees,
  /// 0 to 180: the mirror of VerticalAngle, with x and y exchanged.
  double HorizonalAngle();

  /// Writes the point halfway between the ends, half of the sum of their coordinates: the sum may
  /// overflow. `out` must not be null; it may be an end of this line.
  void MidPoint(VemPoint* out);

  VemPoint start;  ///< First end point.
  VemPoint end;    ///< Second end point.
};

VEM_INLINE VemLine::VemLine() {}

#endif  // VEM_LINE_H_
