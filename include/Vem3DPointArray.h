#ifndef VEM_3D_POINT_ARRAY_H_
#define VEM_3D_POINT_ARRAY_H_

#include <vector>

#include "Vem3DPoint.h"
#include "VemExport.h"

/// An ordered list of points in space.
///
/// An index is in range when it is not negative and below Length(). An operation that tests its
/// index does nothing on a bad one; nothing is reported. Points go in and come out as copies, but
/// for the reference that the non-const operator[] gives. What throws is the allocator alone.
///
/// No argument is changed, though its reference is not const. Pointers to write through must not be
/// null. A reference to an element lives until the array grows, loses an element, is assigned to or
/// ends. After a throw the array is as before; but where an assignment fails in the copy that it
/// returns, it is done.
///
/// Use an array from one thread at a time; reading it from several at once is safe.
class VEM_EXPORT Vem3DPointArray {
 public:
  Vem3DPointArray();                              ///< Empty.
  Vem3DPointArray(const Vem3DPointArray& other);  ///< A deep copy.
  /// Makes the contents a copy of `other`'s and returns a further copy by value, not this array.
  /// That copy is made whether it is taken or not, and when the source is the object itself, which
  /// stays as it is.
  Vem3DPointArray operator=(const Vem3DPointArray& other);
  ~Vem3DPointArray();

  void Append(Vem3DPoint& value);        ///< Adds a copy at the end.
  void Append(Vem3DPointArray& values);  ///< Adds copies of all elements; itself: it doubles.
  /// Inserts a copy before the element at `index`. Length() is out of range: nothing is ever added
  /// at the end, nor to an empty array.
  void Insert(int index, Vem3DPoint& value);
  void Remove(int index);                      ///< Removes the element at `index`.
  void Replace(int index, Vem3DPoint& value);  ///< Assigns over the element at `index`.
  void Swap(int i, int j);                     ///< Exchanges two elements, both in range.
  void Clear();                                ///< Empties the array and gives its storage back.

  int Length() const;  ///< The number of elements.
  /// Assigns the element at `index` to `*out`; out of range, `*out` stays as it was.
  void Select(int index, Vem3DPoint* out) const;

  /// The element itself. Out of range: an invalid reference, which faults when touched.
  Vem3DPoint& operator[](int index);
  /// A copy of the element. Out of range: indeterminate.
  Vem3DPoint operator[](int index) const;

 private:
  std::vector<Vem3DPoint>* store_;
};

#endif  // VEM_3D_POINT_ARRAY_H_
