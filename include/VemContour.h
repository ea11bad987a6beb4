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
/// Nothing is reported; what throws is the allocator alone. Use a contour from one thread at a
/// time; reading it from several at once is safe.
class VEM_EXPORT VemContour {
 public:
  VemContour();                                    ///< No points.
  VemContour(const VemContour& other);             ///< A deep copy.
  VemContour& operator=(const VemContour& other);  ///< Replaces the points by copies.
  ~VemContour();

  /// Replaces the points by copies of the array's.
  void FromPointArray(VemPointArray& in);
  /// Empties `*out` and appends the points to it. `out` must not be null.
  void ToPointArray(VemPointArray* out);

  int Length() const;  ///< The number of points.

  /// The sum of the distances between neighbouring points, 0.0 below two points. The edge from the
  /// last point back to the first does not count.
  double Perimeter() const;

  /// The sum of the triangles that the first point makes with each further edge, unsigned.
  ///
  /// Every triangle adds, whichever way it turns, so a concave chain may get more than its true
  /// area; the result does not depend on the direction of the chain, and the edge back to the first
  /// point needs no extra point. A triangle whose half perimeter comes within 0.001 pixels of one
  /// of its sides counts nothing, and so does every chain that small. NaN coordinates give NaN.
  double Area() const;

 private:
  friend class IVemOverlay;
  friend class VemContourArray;

  std::vector<cv::Point_<double>>* store_;
};

#endif  // VEM_CONTOUR_H_
