#ifndef VEM_V_CODE_ARRAY_H_
#define VEM_V_CODE_ARRAY_H_

#include <vector>

#include "VemExport.h"
#include "VemVCode.h"

/// An ordered list of V codes.
///
/// An index is in range when it is not negative and below Length(). An operation that tests its
/// index does nothing on a bad one; nothing is reported. Records go in and come out as deep copies,
/// but for the reference that the non-const operator[] gives. What throws is the allocator alone.
///
/// Replacing an element by itself, exchanging it with itself or selecting it into itself assigns it
/// to itself, which a record that holds a text must not be.
///
/// Reading a copy copies the whole record; the non-const operator[] reads in place.
///
/// No argument is changed, though its reference is not const. Pointers to write through must not be
/// null. A reference to an element lives until the array grows, loses an element, is assigned to or
/// ends.
///
/// After a throw the array is as before, with these exceptions. Where an assignment fails in the
/// copy that it returns, it is done. Remove, Replace and Swap, and Insert where there is room,
/// assign elements over elements: where that fails, every element is sound, but one may stand twice
/// or have taken over a part of another.
///
/// Use an array from one thread at a time; reading it from several at once is safe.
class VEM_EXPORT VemVCodeArray {
 public:
  VemVCodeArray();                            ///< Empty.
  VemVCodeArray(const VemVCodeArray& other);  ///< A deep copy.
  /// Makes the contents a copy of `other`'s and returns a further copy by value, not this array.
  /// That copy is made whether it is taken or not, and when the source is the object itself, which
  /// stays as it is.
  VemVCodeArray operator=(const VemVCodeArray& other);
  ~VemVCodeArray();

  void Append(VemVCode& value);  ///< Adds a copy at the end.
  /// Adds copies of all elements; itself: it doubles. Room is made once for both lengths, and at
  /// least twice as much as there was, so that many short appends stay linear in time.
  void Append(VemVCodeArray& values);
  /// Inserts a copy before the record at `index`. Length() is out of range: nothing is ever added
  /// at the end, nor to an empty array.
  void Insert(int index, VemVCode& value);
  void Remove(int index);                    ///< Removes the record at `index`.
  void Replace(int index, VemVCode& value);  ///< Assigns over the record at `index`.
  void Swap(int i, int j);                   ///< Exchanges two records, both in range.
  void Clear();                              ///< Empties the array and gives its storage back.

  int Length() const;  ///< The number of records.
  /// Assigns the record at `index` to `*out`; out of range, `*out` stays as it was.
  void Select(int index, VemVCode* out) const;

  /// The record itself. Out of range: an invalid reference, which faults when touched.
  VemVCode& operator[](int index);
  /// A copy of the record. Out of range: indeterminate.
  VemVCode operator[](int index) const;

 private:
  std::vector<VemVCode>* store_;
};

#endif  // VEM_V_CODE_ARRAY_H_
