#ifndef VEM_VAR_H_
#define VEM_VAR_H_

/// @file
/// The control value and its kinds.

#include "VemExport.h"

/// What a VemVar holds.
enum VemVarType : int {
  VemVarLong = 0,    ///< a 64-bit signed integer
  VemVarDouble = 1,  ///< a double
  VemVarString = 2,  ///< a text of its own
  VemVarNone = 3     ///< nothing
};

/// A control value: one integer, one double, one text, or nothing.
///
/// Run tables, coordinates, overlay data and the text fields of results all travel as control
/// values. A value never parses and never formats: a text does not become a number, nor a number a
/// text. A text is owned by its value alone; numbers take no heap.
///
/// Nothing is reported. A reader of the wrong kind has no meaningful result (0, 0.0 or ""), and an
/// operator that has no result for its operands gives a value of kind VemVarNone. What throws is
/// the allocator alone.
///
/// Use a value from one thread at a time; reading it from several at once is safe.
class VEM_EXPORT VemVar {
 public:
  VemVar();              ///< Nothing: the kind is VemVarNone.
  VemVar(long value);    ///< An integer.
  VemVar(int value);     ///< An integer.
  VemVar(double value);  ///< A double.
  VemVar(float value);   ///< A double.
  /// A copy of the zero-terminated `text`. A null pointer faults.
  VemVar(const char* text);

  VemVar(const VemVar& other);  ///< A deep copy: a text gets a block of its own.
  /// CopyCtrlVal, with its hazard: a text must not be assigned to itself.
  VemVar& operator=(const VemVar& other);
  ~VemVar();

  /// Releases the own text and takes over a deep copy of `other`.
  ///
  /// Assigning to itself is not tested: a text is released before it is read.
  void CopyCtrlVal(const VemVar& other);

  /// Releases the own text and changes nothing else. The body of the destructor: afterwards a value
  /// that held a text must not be touched, not even destroyed.
  void ClearCtrlVal();

  /// The kind of the value, one of VemVarType.
  int ValType() const;

  /// The number as a double.
  double D() const;
  /// The number as a 64-bit integer, a double truncated toward zero. A double that does not fit, or
  /// is no number, gives the smallest integer.
  long L() const;
  /// The number as a 32-bit integer: the low 32 bits of an integer; a double truncated toward zero
  /// straight to 32 bits. A double that does not fit, or is no number, gives the smallest integer.
  int I() const;
  /// The number as a float, rounded once.
  float F() const;
  /// The text itself, no copy: it lives until this value is assigned to or destroyed, and is never
  /// released by the caller. The text of a sum has no terminator.
  const char* S() const;

  operator double() const;       ///< Same as D().
  operator long() const;         ///< Same as L().
  operator int() const;          ///< Same as I().
  operator const char*() const;  ///< Same as S().

  /// The sum; integers wrap. Of two texts: the bytes of both, one behind the other, without a
  /// terminator and without a record of their length, so the result is not fit to be copied,
  /// compared or read as a text. Of a text and a number: a double without meaning. With
  /// VemVarNone on either side: nothing.
  VemVar operator+(const VemVar& right) const;
  /// The difference; integers wrap. Defined for a number on the left and an integer on the right,
  /// also for a number on the left and nothing on the right (the left number as a double). A double
  /// on the right gives nothing. A number less a text is a double without meaning. A text or
  /// nothing on the left gives nothing.
  VemVar operator-(const VemVar& right) const;
  /// The product of two numbers; integers wrap. Anything else gives nothing.
  VemVar operator*(const VemVar& right) const;
  /// The quotient of two numbers, truncated toward zero for two integers. Anything else gives
  /// nothing. Dividing an integer by the integer 0, or the smallest integer by -1, is a fault of
  /// the processor (SIGFPE); dividing by 0.0 is not.
  VemVar operator/(const VemVar& right) const;
  /// The remainder, with the sign of the dividend, where at least one side is an integer. The other
  /// side enters with its 64 bits taken as an integer, never converted: 7 % 2.0 divides 7 by the
  /// bit pattern of 2.0. Without an integer: nothing. A divisor of 0, VemVarNone and 0.0 among
  /// them, and the smallest integer by -1, are faults of the processor.
  VemVar operator%(const VemVar& right) const;

  /// Whether two numbers or two texts are the same. An integer is compared with a double as a
  /// double. Values of different kinds, and VemVarNone on either side, are not equal.
  bool operator==(const VemVar& right) const;
  /// Whether two numbers or two texts differ. Not the opposite of ==: values of different kinds,
  /// and VemVarNone on either side, are not unequal either.
  bool operator!=(const VemVar& right) const;

 private:
  union Payload {
    explicit Payload(long value) : l(value) {}
    explicit Payload(double value) : d(value) {}

    long l;
    double d;
    char* s;
  };

  struct OwnBlock {
    char* bytes;
  };
  explicit VemVar(OwnBlock block) : type_(VemVarString), value_(0L) { value_.s = block.bytes; }

  friend class VemVarArray;
  struct Taken {
    VemVar& value;
  };
  explicit VemVar(Taken from) : type_(from.value.type_), value_(from.value.value_) {
    from.value.type_ = VemVarNone;
    from.value.value_.l = 0;
  }

  // Pure, so that a loop over values keeps what it has read when it calls them.
  double ConvertToDouble() const __attribute__((pure));
  long ConvertToLong() const __attribute__((pure));
  int ConvertToInt() const __attribute__((pure));
  void CopyText(const char* text);
  void ReleaseText();
  // Not told of the value, whose address else kept it from a register.
  static void ReleaseText(char* text);
  long RawLong() const;
  double RawDouble() const;
  double Number() const;

  VemVarType type_;
  Payload value_;
};

VEM_INLINE VemVar::VemVar() : type_(VemVarNone), value_(0L) {}
VEM_INLINE VemVar::VemVar(long value) : type_(VemVarLong), value_(value) {}
VEM_INLINE VemVar::VemVar(int value) : type_(VemVarLong), value_(static_cast<long>(value)) {}
VEM_INLINE VemVar::VemVar(double value) : type_(VemVarDouble), value_(value) {}
VEM_INLINE VemVar::VemVar(float value) : type_(VemVarDouble), value_(static_cast<double>(value)) {}

VEM_INLINE VemVar::VemVar(const VemVar& other) : type_(other.type_), value_(other.value_) {
  if (type_ == VemVarString) CopyText(other.value_.s);
}
VEM_INLINE VemVar& VemVar::operator=(const VemVar& other) {
  CopyCtrlVal(other);
  return *this;
}
VEM_INLINE VemVar::~VemVar() { ClearCtrlVal(); }

VEM_INLINE void VemVar::CopyCtrlVal(const VemVar& other) {
  ClearCtrlVal();
  if (other.type_ == VemVarString) {
    CopyText(other.value_.s);
  } else {
    type_ = other.type_;
    value_ = other.value_;
  }
}

VEM_INLINE void VemVar::ClearCtrlVal() {
  if (type_ == VemVarString) ReleaseText(value_.s);
}

VEM_INLINE int VemVar::ValType() const { return type_; }

VEM_INLINE double VemVar::D() const { return type_ == VemVarDouble ? value_.d : ConvertToDouble(); }
VEM_INLINE long VemVar::L() const { return type_ == VemVarLong ? value_.l : ConvertToLong(); }
VEM_INLINE int VemVar::I() const {
  return type_ == VemVarLong ? static_cast<int>(value_.l) : ConvertToInt();
}

VEM_INLINE VemVar::operator double() const { return D(); }
VEM_INLINE VemVar::operator long() const { return L(); }
VEM_INLINE VemVar::operator int() const { return I(); }
VEM_INLINE VemVar::operator const char*() const { return S(); }

#endif  // VEM_VAR_H_
