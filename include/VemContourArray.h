#ifndef VEM_CONTOUR_ARRAY_H_
#define VEM_CONTOUR_ARRAY_H_

#include <vector>

#include "VemContour.h"
#include "VemExport.h"

/// An ordered list of contours.
///
/// An index is in range when it is not negative and below Length(). An operation that tests its
/// index does nothing on a bad one; nothing is reported. Contours go in and come out as copies.
/// What throws is the allocator alone.
///
/// No argument is changed, though its reference is not const. Pointers to write through must not be
/// null. After a throw the array is as before.
///
/// Use an array from one thread at a time; reading it from several at once is safe.
class VEM_EXPORT VemContourArray {
 public:
  VemContourArray();                              ///< Empty.
  VemContourArray(const VemContourArray& other);  ///< A deep copy.
  /// Makes the contents a deep copy of `other`'s. Assigned to itself, an array stays as it is.
  VemContourArray& operator=(const VemContourArray& other);
  ~VemContourArray();

  void Append(VemContour& value);        ///< Adds a copy at the end.
  void Append(VemContourArray& values);  ///< Adds copies of all elements; itself: it doubles.
  /// Inserts a copy before the element at `index`. Length() is out of range: nothing is ever added
  /// at the end, nor to an empty array.
  void Insert(int index, VemContour& value);
  void Remove(int index);                      ///< Removes the element at `index`; copies no point.
  void Replace(int index, VemContour& value);  ///< Assigns over the element at `index`.
  void Swap(int i, int j);                     ///< Exchanges two elements, both in range.
  void Clear();                                ///< Empties the array and gives its storage back.

  int Length() const;  ///< The number of contours.
  /// Assigns the element at `index` to `*out`; out of range, `*out` stays as it was.
  void Select(int index, VemContour* out) const;
  /// A copy of the element. Out of range: indeterminate.
  VemContour operator[](int index) const;

 private:
  friend class IVemROIPara;

  std::vector<std::vector<cv::Point_<double>>>* store_;
};

#endif  // VEM_CONTOUR_ARRAY_H_
