#ifndef VEM_TUPLE_H_
#define VEM_TUPLE_H_

#include <cstddef>
#include <new>

#include "VemExport.h"
#include "VemVar.h"

/// Where a VemVarArray keeps its elements: in a block from `First` to `Limit`, filled up to `Last`.
/// The block is the array's; a caller has no way to it.
struct VemVarStore {
  VemVar* First;  ///< The first element, or null where there is no block.
  VemVar* Last;   ///< Behind the last element.
  VemVar* Limit;  ///< The end of the block.
};

/// An ordered list of control values, mixed in kind as the caller likes: the system's list of
/// numbers. Run tables, coordinate lists and overlay data are such arrays.
///
/// An index is in range when it is not negative and below Length(). Whatever goes in or comes out
/// is a deep copy, but for the reference that the non-const operator[] gives.
///
/// Nothing is reported: an operation that tests its index does nothing on a bad one. What throws is
/// the allocator alone, and after a throw the array is as before; but Insert where there is room,
/// Remove, Replace and Swap assign elements over elements: where a text can't be copied, the
/// element that was to take it is of kind VemVarNone, and one may stand twice.
///
/// Use an array from one thread at a time; reading it from several at once is safe.
class VEM_EXPORT VemVarArray {
 public:
  VemVarArray();                                     ///< Empty.
  VemVarArray(long value);                           ///< One element, that integer; never a count.
  VemVarArray(int value);                            ///< One element, that integer; never a count.
  VemVarArray(double value);                         ///< One element, that double.
  VemVarArray(float value);                          ///< One element, the value as a double.
  VemVarArray(const char* text);                     ///< One element, a copy of the text.
  VemVarArray(const VemVar& value);                  ///< One element, a copy of the value.
  VemVarArray(const VemVarArray& other);             ///< A deep copy.
  VemVarArray& operator=(const VemVarArray& other);  ///< Copy.
  ~VemVarArray();

  /// Makes the contents a deep copy of `other`'s. Copying an array onto itself changes nothing.
  void Copy(const VemVarArray& other);

  /// Adds a copy at the end, in amortised constant time.
  void Append(const VemVar& value);
  /// Adds the value itself at the end, so that the text of a temporary is not copied again.
  /// Afterwards `value` is nothing, also where memory runs out.
  void Append(VemVar&& value);
  /// Inserts a copy before the element at `index`, which must be in range: Length() is not, so
  /// nothing is ever added at the end, nor to an empty array.
  void Insert(int index, const VemVar& value);
  /// Removes the element at `index`; out of range, nothing happens.
  void Remove(int index);
  /// Assigns `value` over the element at `index`; out of range, nothing happens. An element that is
  /// a text must not be replaced by itself.
  void Replace(int index, const VemVar& value);
  /// Exchanges two elements; with either index out of range, nothing happens. A text must not be
  /// exchanged with itself.
  void Swap(int i, int j);
  /// Puts the elements in the opposite order.
  void Invert();
  /// Empties the array and gives its storage back.
  void Clear();
  /// Gives up the array itself. Final: afterwards the object must not be touched, not even
  /// destroyed. To empty an array, call Clear.
  void Reset();

  /// The number of elements.
  int Length() const;
  /// Assigns the element at `index` to `*out`; out of range, `*out` stays as it was. A text
  /// must not be selected into itself.
  void Select(int index, VemVar* out) const;
  /// The first position from `start` on whose element is == `value`, or -1. As VemVar's == has it,
  /// a value of kind VemVarNone is never found, and the integer 1 finds 1.0. `start` must not be
  /// negative.
  int IndexOf(const VemVar& value, int start = 0);

  /// The element itself. Out of range: an invalid reference, which faults when touched.
  VemVar& operator[](int index);
  /// A copy of the element. Out of range: indeterminate.
  VemVar operator[](int index) const;
  /// This array's elements, then those of `right`; no element is added to another.
  VemVarArray operator+(const VemVarArray& right) const;
  /// The opposite of !=. Elements that VemVar holds to be neither equal nor unequal count as the
  /// same here, as two of kind VemVarNone do, or "1" and the integer 1.
  bool operator==(const VemVarArray& right) const;
  /// Whether the lengths differ, or two elements at one position are != by VemVar's operator. A NaN
  /// makes an array differ from every array, itself included.
  bool operator!=(const VemVarArray& right) const;

 private:
  friend class RunTriple;

  bool Contains(int index) const;
  void Take(VemVar& value);
  static VemVar& Invalid() __attribute__((const, cold));

  VemVarStore* store_;
};

// Without room the value is copied or taken first: it may be an element of the block that is left.
// And only that copy's address is told, so that the value itself may stay in registers.
VEM_INLINE void VemVarArray::Append(const VemVar& value) {
  if (store_->Last == store_->Limit) {
    VemVar copy(value);
    return Take(copy);
  }
  new (store_->Last) VemVar(value);
  ++store_->Last;
}

VEM_INLINE void VemVarArray::Append(VemVar&& value) {
  if (store_->Last == store_->Limit) {
    VemVar taken(VemVar::Taken{value});
    return Take(taken);
  }
  new (store_->Last) VemVar(VemVar::Taken{value});
  ++store_->Last;
}

VEM_INLINE int VemVarArray::Length() const {
  return static_cast<int>(store_->Last - store_->First);
}

// As two tests, which a compiler leaves out where a loop's own say the same.
inline bool VemVarArray::Contains(int index) const { return index >= 0 && index < Length(); }

VEM_INLINE VemVar& VemVarArray::operator[](int index) {
  if (Contains(index)) return store_->First[index];
  return Invalid();
}
VEM_INLINE VemVar VemVarArray::operator[](int index) const {
  return Contains(index) ? VemVar(store_->First[index]) : VemVar();
}

#endif  // VEM_TUPLE_H_
