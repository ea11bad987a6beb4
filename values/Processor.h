#ifndef VALUES_PROCESSOR_H_
#define VALUES_PROCESSOR_H_

// Number conversions and divisions exactly as the processor does them, whatever a compiler would
// make of the cases that C++ leaves undefined. Written as instructions, since compilers fold even
// the intrinsics of a constant infinity or NaN to other values.

/// Truncates toward zero; an infinity, a NaN or a number out of range gives the smallest integer.
inline int TruncateToInt(double value) {
  int result;
  asm("cvttsd2si %1, %0" : "=r"(result) : "x"(value));
  return result;
}

inline int TruncateToInt(float value) {
  int result;
  asm("cvttss2si %1, %0" : "=r"(result) : "x"(value));
  return result;
}

inline long TruncateToLong(double value) {
  long result;
  asm("cvttsd2si %1, %0" : "=r"(result) : "x"(value));
  return result;
}

/// Rounds to the nearest integer, halves to the even one; an infinity, a NaN or a number out of
/// range gives the smallest integer.
inline int RoundToInt(double value) {
  int result;
  asm("cvtsd2si %1, %0" : "=r"(result) : "x"(value));
  return result;
}

inline int RoundToInt(float value) {
  int result;
  asm("cvtss2si %1, %0" : "=r"(result) : "x"(value));
  return result;
}

/// A quotient toward zero and its remainder, with the sign of the dividend.
template <typename T>
struct Division {
  T quotient;
  T remainder;
};

/// Divides in the processor, which raises SIGFPE for a zero divisor and for the smallest integer by
/// -1.
inline Division<long> Divide(long dividend, long divisor) {
  Division<long> result;
  asm volatile("cqto\n\tidivq %3"
               : "=&a"(result.quotient), "=&d"(result.remainder)
               : "0"(dividend), "r"(divisor)
               : "cc");
  return result;
}

inline Division<int> Divide(int dividend, int divisor) {
  Division<int> result;
  asm volatile("cltd\n\tidivl %3"
               : "=&a"(result.quotient), "=&d"(result.remainder)
               : "0"(dividend), "r"(divisor)
               : "cc");
  return result;
}

// Integer sums, differences and products that wrap in two's complement.

inline int WrapAdd(int left, int right) {
  return static_cast<int>(static_cast<unsigned>(left) + static_cast<unsigned>(right));
}

inline int WrapSubtract(int left, int right) {
  return static_cast<int>(static_cast<unsigned>(left) - static_cast<unsigned>(right));
}

inline int WrapMultiply(int left, int right) {
  return static_cast<int>(static_cast<unsigned>(left) * static_cast<unsigned>(right));
}

inline long WrapAdd(long left, long right) {
  return static_cast<long>(static_cast<unsigned long>(left) + static_cast<unsigned long>(right));
}

inline long WrapSubtract(long left, long right) {
  return static_cast<long>(static_cast<unsigned long>(left) - static_cast<unsigned long>(right));
}

inline long WrapMultiply(long left, long right) {
  return static_cast<long>(static_cast<unsigned long>(left) * static_cast<unsigned long>(right));
}

#endif  // VALUES_PROCESSOR_H_
