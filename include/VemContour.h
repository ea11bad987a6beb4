#ifndef VEM_CONTOUR_H_
#define VEM_CONTOUR_H_

#include <vector>

#include "VemExport.h"
#include "VemPointArray.h"

namespace cv {
template <typename T>
class Point_;
}  // namespace cv

/// An ordered chain of points in pixels, x growing with the columns, y with the rows.
///
/// A chain is open: whoever wants its closing edge repeats the first point at the end. Points go in
/// and come out as a whole, through a VemPointArray; what goes in or comes out is a copy.
///
/// Nothing is reported; no argument is changed, and what throws is the allocator alone: the contour
/// is then as it was. Use a contour from one thread at a time; reading it from several at once is
/// safe.
class VEM_EXPORT VemContour {
 public:
  VemContour();                         ///< No points.
  VemContour(const VemContour& other);  ///< A deep copy.
  /// Replaces the points by copies. Assigned to itself, a contour stays as it is.
  VemContour& operator=(const VemContour& other);
  ~VemContour();

  /// Replaces the points by copies of the array's.
  void FromPointArray(VemPointArray& in);
  /// Empties `*out`, whose storage is given back, and appends the points one by one: after a throw
  /// it holds the first of them. `out` must not be null.
  void ToPointArray(VemPointArray* out);

  int Length() const;  ///< The number of points.

  /// The sum of the distances between neighbouring points, in pixels; 0.0 below two points. The
  /// edge from the last point back to the first does not count. Coordinates that are not finite
  /// give an infinity or NaN, and differences beyond about 1e154, whose squares overflow, an
  /// infinity.
  double Perimeter() const;

  /// The sum of the triangles that the first point makes with each further edge, unsigned, in
  /// square pixels; 0.0 below three points.
  ///
  /// Every triangle adds, whichever way it turns, so a concave chain may get more than its true
  /// area. The edge back to the first point needs no extra point. The other way around, from the
  /// same first point, a chain has the same area but for rounding. A triangle whose half perimeter
  /// comes within 0.001 pixels of one of its sides counts nothing, and so does every chain that
  /// small.
  ///
  /// Coordinates that are not finite give NaN. Finite ones may as well: from about 1e13 pixels on,
  /// where rounding makes a thin triangle's sides too short to meet, and from about 1e154, where
  /// their squares overflow. Between these, triangles from about 1e77 pixels on give an infinity.
  double Area() const;

 private:
  friend class IVemOverlay;
  friend class VemContourArray;

  std::vector<cv::Point_<double>>* store_;
};

#endif  // VEM_CONTOUR_H_
