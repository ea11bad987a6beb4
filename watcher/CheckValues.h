#ifndef WATCHER_CHECK_VALUES_H_
#define WATCHER_CHECK_VALUES_H_

#include <cstddef>
#include <limits>

#include "VemTuple.h"
#include "VemVar.h"
#include "watcher/Behind.h"
#include "watcher/Report.h"

/// Checks of control values, and of all arrays.
namespace watcher {
namespace checks {

// --- Control values ---

inline const char* KindOf(const VemVar& value) {
  switch (value.ValType()) {
    case VemVarLong:
      return "an integer";
    case VemVarDouble:
      return "a double";
    case VemVarString:
      return "a text";
    default:
      return "nothing";
  }
}

inline bool IsLong(const VemVar& value) { return value.ValType() == VemVarLong; }
inline bool IsNumber(const VemVar& value) {
  return IsLong(value) || value.ValType() == VemVarDouble;
}

inline void AssignText(const Call& call, const VemVar& self, const VemVar& other) {
  if (&self == &other && IsText(self)) call.Tell(Kind::kItself, "a text is assigned to itself");
}

inline void ReadNumber(const Call& call, const VemVar& self) {
  if (!IsNumber(self)) call.Tell(Kind::kOtherKind, "the value is %s, no number", KindOf(self));
}

inline void ReadText(const Call& call, const VemVar& self) {
  if (!IsText(self)) call.Tell(Kind::kOtherKind, "the value is %s, no text", KindOf(self));
}

inline void NoResult(const Call& call, const VemVar& left, const VemVar& right) {
  call.Tell(Kind::kOtherKind, "no result for %s and %s", KindOf(left), KindOf(right));
}

inline bool IsFault(long dividend, long divisor) {
  return divisor == 0 || (divisor == -1 && dividend == std::numeric_limits<long>::min());
}

inline void DivideLong(const Call& call, long dividend, long divisor) {
  if (!IsFault(dividend, divisor)) return;
  call.Tell(Kind::kFault,
            divisor == 0 ? "an integer is divided by 0" : "the smallest integer is divided by -1");
}

// Two texts have a sum.
inline void Plus(const Call& call, const VemVar& left, const VemVar& right) {
  if (IsText(left) && IsText(right)) return;
  if (!IsNumber(left) || !IsNumber(right)) NoResult(call, left, right);
}

// A number less nothing is the number.
inline void Minus(const Call& call, const VemVar& left, const VemVar& right) {
  const bool takes = IsLong(right) || right.ValType() == VemVarNone;
  if (!IsNumber(left) || !takes) NoResult(call, left, right);
}

inline void Times(const Call& call, const VemVar& left, const VemVar& right) {
  if (!IsNumber(left) || !IsNumber(right)) NoResult(call, left, right);
}

inline void Divide(const Call& call, const VemVar& left, const VemVar& right) {
  if (!IsNumber(left) || !IsNumber(right)) return NoResult(call, left, right);
  if (!IsLong(left) || !IsLong(right)) return;
  DivideLong(call, PayloadOf<long>(left), PayloadOf<long>(right));
}

inline void Remainder(const Call& call, const VemVar& left, const VemVar& right) {
  if (!IsLong(left) && !IsLong(right)) return NoResult(call, left, right);
  const long dividend = PayloadOf<long>(left);
  const long divisor = PayloadOf<long>(right);
  if (IsFault(dividend, divisor)) return DivideLong(call, dividend, divisor);
  if (IsLong(left) && IsLong(right)) return;
  call.Tell(Kind::kOtherKind, "the %s side is %s, which enters with its bits",
            IsLong(left) ? "right" : "left", KindOf(IsLong(left) ? right : left));
}

// --- Arrays ---

template <typename Array, typename... Args>
void Index(const Call& call, const Array& self, int index, Args&...) {
  call.InRange(index, SizeOf(self));
}

/// At the end, too.
template <typename Array, typename... Args>
void IndexOrEnd(const Call& call, const Array& self, int index, Args&...) {
  const std::size_t length = SizeOf(self);
  if (index < 0 || static_cast<std::size_t>(index) != length) call.InRange(index, length);
}

template <typename Array>
bool BothInRange(const Call& call, const Array& self, int i, int j) {
  return call.InRange(i, SizeOf(self), 0) && call.InRange(j, SizeOf(self), 1);
}

template <typename Array>
void Swap(const Call& call, const Array& self, int i, int j) {
  BothInRange(call, self, i, j);
}

/// The index is taken to the nearest that an element has.
template <typename Array>
void NotEmpty(const Call& call, const Array& self, int index) {
  if (SizeOf(self) == 0) call.InRange(index, 0);
}

/// A body in a header has looked at the index.
inline void Unseen(const Call& call) {
  call.Tell(Kind::kIndex, "the index is out of range (neither is seen, for the call is inlined)");
}

template <typename Array>
void NotForReading(const Call& call, const Array&, int index) {
  call.Tell(Kind::kIndex, "index %d, of a const array, which gives no element", index);
}

// Of arrays whose elements must not be assigned to themselves where they hold a text.

template <typename Array, typename T>
void ReplaceText(const Call& call, const Array& self, int index, const T& value) {
  if (!call.InRange(index, SizeOf(self))) return;
  if (&value == &ElementOf(self, index) && HoldsText(value)) {
    call.Tell(Kind::kItself, "an element with a text is replaced by itself");
  }
}

template <typename Array>
void SwapText(const Call& call, const Array& self, int i, int j) {
  if (BothInRange(call, self, i, j) && i == j && HoldsText(ElementOf(self, i))) {
    call.Tell(Kind::kItself, "an element with a text is exchanged with itself");
  }
}

template <typename Array, typename T>
void SelectText(const Call& call, const Array& self, int index, const T* out) {
  if (!call.InRange(index, SizeOf(self))) return;
  if (out == &ElementOf(self, index) && HoldsText(*out)) {
    call.Tell(Kind::kItself, "an element with a text is selected into itself");
  }
}

template <typename Array>
void AssignArray(const Call& call, const Array& self, const Array& other) {
  if (&self == &other && SizeOf(self) > 0) {
    call.Tell(Kind::kItself, "assigned to itself, the array becomes empty");
  }
}

inline void IndexOf(const Call& call, const VemVarArray&, const VemVar&, int start) {
  if (start < 0) call.Tell(Kind::kIndex, "start %d is negative", start);
}

}  // namespace checks
}  // namespace watcher

#endif  // WATCHER_CHECK_VALUES_H_
