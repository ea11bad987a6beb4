#ifndef VEM_MATRIX_ARRAY_H_
#define VEM_MATRIX_ARRAY_H_

#include <vector>

#include "VemExport.h"
#include "VemMatrix.h"

/// An ordered list of matrices.
///
/// Unlike a copied matrix, a stored one shares its elements with nothing outside the array: they
/// are cloned on the way in and on the way out, into packed rows. An empty matrix counts like any
/// other.
///
/// An index is in range when it is not negative and below Length(). An operation that tests its
/// index does nothing on a bad one; nothing is reported. What throws is the allocator and OpenCV's
/// copying: unlike a matrix, an array lets that pass, and the header of the clone that failed stays
/// allocated.
///
/// No argument is changed, though its reference is not const. Pointers to write through must not be
/// null. After a throw the array is as before, but after an assignment empty.
///
/// Use an array from one thread at a time; reading it from several at once is safe.
class VEM_EXPORT VemMatrixArray {
 public:
  VemMatrixArray();                             ///< Empty.
  VemMatrixArray(const VemMatrixArray& other);  ///< Clones all matrices.
  /// Destroys the own matrices, then clones `other`'s: assigned to itself, an array becomes empty.
  /// Returns `other`, not this array.
  const VemMatrixArray& operator=(const VemMatrixArray& other);
  ~VemMatrixArray();

  void Append(VemMatrix& value);        ///< Adds a clone at the end.
  void Append(VemMatrixArray& values);  ///< Adds clones of all matrices; itself: it doubles.
  /// Inserts a clone before the matrix at `index`. Length() is out of range: nothing is ever added
  /// at the end, nor to an empty array.
  void Insert(int index, VemMatrix& value);
  void Remove(int index);  ///< Removes the matrix at `index`; copies no element.
  /// Puts a clone in the place of the matrix at `index`, which is not destroyed: it stays
  /// allocated with its elements until the process ends. To give them back, Insert and Remove.
  void Replace(int index, VemMatrix& value);
  void Swap(int i, int j);  ///< Exchanges two matrices, both in range; copies no element.
  void Clear();             ///< Empties the array and gives its storage back.

  int Length() const;  ///< The number of matrices.
  /// Clones the matrix at `index` into `*out`, whose old elements are let go, never written; out
  /// of range, `*out` stays as it was.
  void Select(int index, VemMatrix* out) const;
  /// A clone of the matrix. Out of range: indeterminate.
  VemMatrix operator[](int index) const;

 private:
  std::vector<cv::Mat*>* store_;
};

#endif  // VEM_MATRIX_ARRAY_H_
