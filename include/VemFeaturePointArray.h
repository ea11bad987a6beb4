#ifndef VEM_FEATURE_POINT_ARRAY_H_
#define VEM_FEATURE_POINT_ARRAY_H_

#include <vector>

#include "VemExport.h"
#include "VemFeaturePoint.h"

/// An ordered list of key points.
///
/// An index is in range when it is not negative and below Length(). An operation that tests its
/// index does nothing on a bad one; nothing is reported. Points go in and come out as copies,
/// but for the reference that the non-const operator[] gives. What throws is the allocator alone.
///
/// No argument is changed, though its reference is not const. Pointers to write through must not be
/// null. A reference to an element lives until the array grows, loses an element, is assigned to or
/// ends. After a throw the array is as before; but where an assignment fails in the copy that it
/// returns, it is done.
///
/// Use an array from one thread at a time; reading it from several at once is safe.
class VEM_EXPORT VemFeaturePointArray {
 public:
  VemFeaturePointArray();                                   ///< Empty.
  VemFeaturePointArray(const VemFeaturePointArray& other);  ///< A deep copy.
  /// Makes the contents a copy of `other`'s and returns a further copy by value, not this array.
  /// That copy is made whether it is taken or not, and when the source is the object itself, which
  /// stays as it is.
  VemFeaturePointArray operator=(const VemFeaturePointArray& other);
  ~VemFeaturePointArray();

  void Append(VemFeaturePoint& value);  ///< Adds a copy at the end.
  /// Adds copies of all elements; itself: it doubles. Room is made once for both lengths, and at
  /// least twice as much as there was, so that many short appends stay linear in time.
  void Append(VemFeaturePointArray& values);
  /// Inserts a copy before the point at `index`. Length() is out of range: nothing is ever added at
  /// the end, nor to an empty array.
  void Insert(int index, VemFeaturePoint& value);
  void Remove(int index);                           ///< Removes the point at `index`.
  void Replace(int index, VemFeaturePoint& value);  ///< Assigns over the point at `index`.
  void Swap(int i, int j);                          ///< Exchanges two points, both in range.
  void Clear();  ///< Empties the array and gives its storage back.

  int Length() const;  ///< The number of points.
  /// Assigns the point at `index` to `*out`; out of range, `*out` stays as it was.
  void Select(int index, VemFeaturePoint* out) const;

  /// The point itself. Out of range: an invalid reference, which faults when touched.
  VemFeaturePoint& operator[](int index);
  /// A copy of the point. Out of range: indeterminate.
  VemFeaturePoint operator[](int index) const;

 private:
  std::vector<VemFeaturePoint>* store_;
};

#endif  // VEM_FEATURE_POINT_ARRAY_H_
