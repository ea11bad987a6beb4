#ifndef VEM_2D_VAR_ARRAY_H_
#define VEM_2D_VAR_ARRAY_H_

#include <vector>

#include "VemExport.h"
#include "VemTuple.h"

/// An ordered list of rows of control values: a table. Each row is a VemVarArray of its own length,
/// and may be empty; `table[i][j]` reaches an element in place.
///
/// An index is in range when it is not negative and below Length(). An operation that tests its
/// index does nothing on a bad one; nothing is reported. Rows go in and come out as deep copies,
/// but for the reference that the non-const operator[] gives. What throws is the allocator alone.
///
/// Reading a copy copies the whole row; the non-const operator[] reads in place.
///
/// No argument is changed, though its reference is not const. Pointers to write through must not be
/// null. A reference to an element lives until the array grows, loses an element, is assigned to or
/// ends.
///
/// After a throw the array is as before, with these exceptions. Where an assignment fails in the
/// copy that it returns, it is done. Remove, Replace and Swap, and Insert where there is room,
/// assign rows over rows: where that fails, every row is sound, but one may stand twice or have
/// taken over a part of another.
///
/// Use an array from one thread at a time; reading it from several at once is safe.
class VEM_EXPORT Vem2DVarArray {
 public:
  Vem2DVarArray();                            ///< Empty.
  Vem2DVarArray(const Vem2DVarArray& other);  ///< A deep copy.
  /// Makes the contents a copy of `other`'s and returns a further copy by value, not this array.
  /// That copy is made whether it is taken or not, and when the source is the object itself, which
  /// stays as it is.
  Vem2DVarArray operator=(const Vem2DVarArray& other);
  ~Vem2DVarArray();

  void Append(VemVarArray& value);  ///< Adds a copy at the end.
  /// Adds copies of all elements; itself: it doubles. Room is made once for both lengths, and at
  /// least twice as much as there was, so that many short appends stay linear in time.
  void Append(Vem2DVarArray& values);
  /// Inserts a copy before the row at `index`. Length() is out of range: nothing is ever added at
  /// the end, nor to an empty array.
  void Insert(int index, VemVarArray& value);
  void Remove(int index);                       ///< Removes the row at `index`.
  void Replace(int index, VemVarArray& value);  ///< Assigns over the row at `index`.
  void Swap(int i, int j);                      ///< Exchanges two rows, both in range.
  void Clear();                                 ///< Empties the array and gives its storage back.

  int Length() const;  ///< The number of rows.
  /// Assigns the row at `index` to `*out`; out of range, `*out` stays as it was.
  void Select(int index, VemVarArray* out) const;

  /// The row itself. Out of range: an invalid reference, which faults when touched.
  VemVarArray& operator[](int index);
  /// A copy of the row. Out of range: indeterminate.
  VemVarArray operator[](int index) const;

 private:
  std::vector<VemVarArray>* store_;
};

#endif  // VEM_2D_VAR_ARRAY_H_
