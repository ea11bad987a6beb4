#ifndef VEM_VEM_VALUE_OPERATORS_H_
#define VEM_VEM_VALUE_OPERATORS_H_

#include <cstddef>
#include <cstring>
#include <string>
#include <type_traits>
#include <utility>
#if __cplusplus >= 201703L
#include <string_view>
#endif

#include "VemVar.h"

/// The operators of a VemVar beside C++ numbers and texts, as vem/value.h has them.
///
/// They stand in the global namespace, where the compiler looks for those of a VemVar from every
/// other one. They take a VemVar itself and a number or a text itself, nothing that converts:
///
/// - `==`, `!=`, `<`, `<=`, `>`, `>=` compare a value with a number as C++ compares the `long` or
///   the `double` that the value holds with that number: beside a float an integer becomes a float,
///   beside a `long double` nothing is rounded. But an integer and an unsigned one, `__int128` and
///   enumerations among them, are compared by what they are. With a text they compare byte by byte.
///   A value of another kind equals nothing: `==` is false, `!=` true, every order false.
/// - `+`, `-`, `*`, `/` with a number give an integer from two integers, which wraps to 64 bits,
///   else a double. `%` is for integers alone. A value that is no number gives nothing. As in C++,
///   dividing an integer by the integer 0, or the smallest by -1, is a fault of the processor.
/// - `+` of a value and a text joins the two to a text with its terminator. It gives nothing where
///   the value is no text, and for a text with a zero byte within, which no value can hold.
/// - `-value`, `+=`, `-=`, `*=`, `/=`, `%=` follow from these. With another value on the right they
///   do what they do with the number or the text that it holds: `a -= b` subtracts a double and
///   `a += b` joins texts, where `a - b` gives nothing and `a + b` a text without a terminator.
/// - `<`, `<=`, `>`, `>=` of two values order numbers as above and texts by bytes; between other
///   kinds they are false.
///
/// `==`, `!=` and arithmetic of two VemVar are the class's own, with the rules told there. Most of
/// the rest does not compile without this header. What does, and has another meaning then: a text
/// on the left of `==` or `!=` (before C++20), and `<`, `<=`, `>`, `>=` between a value and a text,
/// compare addresses without it. A `const char*` on the left of `+` stays pointer arithmetic. An
/// array of `char` ends at its first zero byte, or where the array ends.

/// @cond
namespace vem {
namespace detail {

template <class T>
using plain = typename std::remove_cv<typename std::remove_reference<T>::type>::type;

template <bool kCondition, class T = void>
using if_true = typename std::enable_if<kCondition, T>::type;

// Whatever is compared anywhere is asked about: of a class no more than that it is none.
template <class T>
struct is_number : std::conditional<std::is_enum<T>::value, std::is_convertible<T, long long>,
                                    std::is_arithmetic<T>>::type {};

template <class T>
struct is_text : std::false_type {};
template <>
struct is_text<const char*> : std::true_type {};
template <>
struct is_text<char*> : std::true_type {};
template <std::size_t kSize>
struct is_text<char[kSize]> : std::true_type {};
template <>
struct is_text<std::string> : std::true_type {};
#if __cplusplus >= 201703L
template <>
struct is_text<std::string_view> : std::true_type {};
#endif

// The bytes of a text, whatever holds them. A null pointer has no bytes, not even none.
struct text_span {
  const char* bytes;
  std::size_t length;
};

template <class T>
if_true<std::is_same<T, const char*>::value || std::is_same<T, char*>::value, text_span> span_of(
    const T& text) {
  return text_span{text, text == nullptr ? 0 : std::strlen(text)};
}
template <std::size_t kSize>
text_span span_of(const char (&text)[kSize]) {
  const void* const zero = std::memchr(text, '\0', kSize);
  return text_span{text, zero == nullptr
                             ? kSize
                             : static_cast<std::size_t>(static_cast<const char*>(zero) - text)};
}
inline text_span span_of(const std::string& text) { return text_span{text.data(), text.size()}; }
#if __cplusplus >= 201703L
inline text_span span_of(std::string_view text) {
  return text_span{text.empty() ? "" : text.data(), text.size()};
}
#endif

inline bool is_numeric(const VemVar& value) {
  return value.ValType() == VemVarLong || value.ValType() == VemVarDouble;
}

// What stands beside a value in an operator.
template <class V, class T, class Result>
using beside_number = if_true<std::is_same<V, VemVar>::value && is_number<T>::value, Result>;
template <class V, class T, class Result>
using beside_text = if_true<std::is_same<V, VemVar>::value && is_text<T>::value, Result>;
template <class V, class T, class Result>
using beside_operand =
    if_true<std::is_same<V, VemVar>::value && (is_number<T>::value || is_text<T>::value), Result>;

enum order : int { kLess, kEqual, kGreater, kUnordered };

inline order reversed(order found) {
  return found == kLess ? kGreater : found == kGreater ? kLess : found;
}

template <class T>
order order_of(T a, T b) {
  return a < b ? kLess : b < a ? kGreater : a <= b ? kEqual : kUnordered;
}

inline order order_of(text_span a, text_span b) {
  if (a.bytes == nullptr || b.bytes == nullptr) return kUnordered;
  const int first = std::memcmp(a.bytes, b.bytes, a.length < b.length ? a.length : b.length);
  return first == 0 ? order_of(a.length, b.length) : order_of(first, 0);
}

// What a number is in an expression: an enumeration is an integer then.
template <class T>
using promoted = decltype(+std::declval<T>());

// As C++ compares the two, in the type that holds both.
template <class A, class B>
order order_of_numbers(A a, B b) {
  typedef typename std::common_type<A, B>::type both;
  return order_of<both>(static_cast<both>(a), static_cast<both>(b));
}

template <class T>
struct is_unsigned_integer
    : std::integral_constant<bool, std::is_integral<T>::value && !std::is_signed<T>::value> {};

template <class T>
order order_of_integer(long value, T number, std::true_type /*unsigned*/) {
  return value < 0 ? kLess : order_of_numbers(static_cast<unsigned long>(value), number);
}
template <class T>
order order_of_integer(long value, T number, std::false_type /*unsigned*/) {
  return order_of_numbers(value, number);
}

template <class T>
order order_with(const VemVar& value, const T& other, std::true_type /*number*/) {
  typedef promoted<T> number;
  if (value.ValType() == VemVarLong) {
    return order_of_integer<number>(value.L(), other, is_unsigned_integer<number>());
  }
  return value.ValType() == VemVarDouble ? order_of_numbers(value.D(), static_cast<number>(other))
                                         : kUnordered;
}
template <class T>
order order_with(const VemVar& value, const T& text, std::false_type /*number*/) {
  if (value.ValType() != VemVarString) return kUnordered;
  return order_of(span_of(value.S()), span_of(text));
}

// How a value stands to a number or a text.
template <class T>
order order_with(const VemVar& value, const T& other) {
  return order_with(value, other, is_number<T>());
}

// How two values stand to each other, an integer beside a double taken as a double.
inline order order_between(const VemVar& a, const VemVar& b) {
  if (b.ValType() == VemVarLong) return order_with(a, b.L());
  if (b.ValType() == VemVarDouble) return order_with(a, b.D());
  return b.ValType() == VemVarString ? order_with(a, b.S()) : kUnordered;
}

// A number as an operand: an integer wraps to 64 bits, any other number becomes a double.
template <class T>
VemVar operand(T number, std::true_type /*floating*/) {
  return VemVar(static_cast<double>(number));
}
template <class T>
VemVar operand(T number, std::false_type /*floating*/) {
  return VemVar(static_cast<long>(number));
}
template <class T>
VemVar operand(T number) {
  return operand(number, std::is_floating_point<T>());
}
inline const VemVar& operand(const VemVar& value) { return value; }

// The difference also of doubles, which VemVar refuses.
inline VemVar difference(const VemVar& a, const VemVar& b) {
  if (!is_numeric(a) || !is_numeric(b)) return VemVar();
  return b.ValType() == VemVarLong ? a - b : VemVar(a.D() - b.D());
}

inline VemVar remainder(const VemVar& a, const VemVar& b) {
  return a.ValType() == VemVarLong && b.ValType() == VemVarLong ? a % b : VemVar();
}

inline VemVar sum(const VemVar& a, const VemVar& b) {
  return is_numeric(a) && is_numeric(b) ? a + b : VemVar();
}

inline VemVar joined(text_span left, text_span right) {
  if (left.bytes == nullptr || right.bytes == nullptr) return VemVar();
  const std::string text = std::string(left.bytes, left.length).append(right.bytes, right.length);
  return text.find('\0') == std::string::npos ? VemVar(text.c_str()) : VemVar();
}

inline text_span text_in(const VemVar& value) {
  return span_of(value.ValType() == VemVarString ? value.S() : nullptr);
}

// The sum of what two values hold.
inline VemVar sum_or_text(const VemVar& a, const VemVar& b) {
  return b.ValType() == VemVarString ? joined(text_in(a), text_in(b)) : sum(a, b);
}

}  // namespace detail
}  // namespace vem

template <class V, class T>
vem::detail::beside_operand<V, T, bool> operator==(const V& value, const T& other) {
  return vem::detail::order_with(value, other) == vem::detail::kEqual;
}
template <class V, class T>
vem::detail::beside_operand<V, T, bool> operator==(const T& other, const V& value) {
  return value == other;
}

template <class V, class T>
vem::detail::beside_operand<V, T, bool> operator!=(const V& value, const T& other) {
  return vem::detail::order_with(value, other) != vem::detail::kEqual;
}
template <class V, class T>
vem::detail::beside_operand<V, T, bool> operator!=(const T& other, const V& value) {
  return value != other;
}

template <class V, class T>
vem::detail::beside_operand<V, T, bool> operator<(const V& value, const T& other) {
  return vem::detail::order_with(value, other) == vem::detail::kLess;
}
template <class V, class T>
vem::detail::beside_operand<V, T, bool> operator<(const T& other, const V& value) {
  return value > other;
}

template <class V, class T>
vem::detail::beside_operand<V, T, bool> operator>(const V& value, const T& other) {
  return vem::detail::order_with(value, other) == vem::detail::kGreater;
}
template <class V, class T>
vem::detail::beside_operand<V, T, bool> operator>(const T& other, const V& value) {
  return value < other;
}

template <class V, class T>
vem::detail::beside_operand<V, T, bool> operator<=(const V& value, const T& other) {
  return value < other || value == other;
}
template <class V, class T>
vem::detail::beside_operand<V, T, bool> operator<=(const T& other, const V& value) {
  return value >= other;
}

template <class V, class T>
vem::detail::beside_operand<V, T, bool> operator>=(const V& value, const T& other) {
  return value > other || value == other;
}
template <class V, class T>
vem::detail::beside_operand<V, T, bool> operator>=(const T& other, const V& value) {
  return value <= other;
}

template <class V>
vem::detail::beside_number<V, int, bool> operator<(const V& a, const V& b) {
  return vem::detail::order_between(a, b) == vem::detail::kLess;
}
template <class V>
vem::detail::beside_number<V, int, bool> operator>(const V& a, const V& b) {
  return b < a;
}
template <class V>
vem::detail::beside_number<V, int, bool> operator<=(const V& a, const V& b) {
  return a < b || vem::detail::order_between(a, b) == vem::detail::kEqual;
}
template <class V>
vem::detail::beside_number<V, int, bool> operator>=(const V& a, const V& b) {
  return b <= a;
}

template <class V, class T>
vem::detail::beside_number<V, T, VemVar> operator+(const V& value, const T& number) {
  return vem::detail::sum(value, vem::detail::operand(number));
}
template <class V, class T>
vem::detail::beside_number<V, T, VemVar> operator+(const T& number, const V& value) {
  return vem::detail::sum(vem::detail::operand(number), value);
}

template <class V, class T>
vem::detail::beside_number<V, T, VemVar> operator-(const V& value, const T& number) {
  return vem::detail::difference(value, vem::detail::operand(number));
}
template <class V, class T>
vem::detail::beside_number<V, T, VemVar> operator-(const T& number, const V& value) {
  return vem::detail::difference(vem::detail::operand(number), value);
}

template <class V, class T>
vem::detail::beside_number<V, T, VemVar> operator*(const V& value, const T& number) {
  return value * vem::detail::operand(number);
}
template <class V, class T>
vem::detail::beside_number<V, T, VemVar> operator*(const T& number, const V& value) {
  return vem::detail::operand(number) * value;
}

template <class V, class T>
vem::detail::beside_number<V, T, VemVar> operator/(const V& value, const T& number) {
  return value / vem::detail::operand(number);
}
template <class V, class T>
vem::detail::beside_number<V, T, VemVar> operator/(const T& number, const V& value) {
  return vem::detail::operand(number) / value;
}

template <class V, class T>
vem::detail::beside_number<V, T, VemVar> operator%(const V& value, const T& number) {
  static_assert(!std::is_floating_point<T>::value, "VemVar: % takes integers alone");
  return vem::detail::remainder(value, vem::detail::operand(number));
}
template <class V, class T>
vem::detail::beside_number<V, T, VemVar> operator%(const T& number, const V& value) {
  static_assert(!std::is_floating_point<T>::value, "VemVar: % takes integers alone");
  return vem::detail::remainder(vem::detail::operand(number), value);
}

template <class V, class T>
vem::detail::beside_text<V, T, VemVar> operator+(const V& value, const T& text) {
  return vem::detail::joined(vem::detail::text_in(value), vem::detail::span_of(text));
}
// Not for a pointer on the left, which the value would move.
template <class V, class T>
vem::detail::if_true<std::is_class<T>::value, vem::detail::beside_text<V, T, VemVar>> operator+(
    const T& text, const V& value) {
  return vem::detail::joined(vem::detail::span_of(text), vem::detail::text_in(value));
}
template <class V>
vem::detail::beside_number<V, int, VemVar> operator-(const V& value) {
  return value.ValType() == VemVarDouble ? VemVar(-value.D())
                                         : vem::detail::difference(VemVar(0L), value);
}

template <class V, class T>
vem::detail::beside_operand<V, T, V&> operator+=(V& value, const T& other) {
  return value = value + other;
}
template <class V>
vem::detail::beside_number<V, int, V&> operator+=(V& value, const V& other) {
  return value = vem::detail::sum_or_text(value, other);
}

template <class V, class T>
vem::detail::beside_number<V, T, V&> operator-=(V& value, const T& number) {
  return value = value - number;
}
template <class V>
vem::detail::beside_number<V, int, V&> operator-=(V& value, const V& other) {
  return value = vem::detail::difference(value, other);
}

template <class V, class T>
vem::detail::beside_number<V, T, V&> operator*=(V& value, const T& number) {
  return value = value * number;
}
template <class V>
vem::detail::beside_number<V, int, V&> operator*=(V& value, const V& other) {
  return value = value * other;
}

template <class V, class T>
vem::detail::beside_number<V, T, V&> operator/=(V& value, const T& number) {
  return value = value / number;
}
template <class V>
vem::detail::beside_number<V, int, V&> operator/=(V& value, const V& other) {
  return value = value / other;
}

template <class V, class T>
vem::detail::beside_number<V, T, V&> operator%=(V& value, const T& number) {
  return value = value % number;
}
template <class V>
vem::detail::beside_number<V, int, V&> operator%=(V& value, const V& other) {
  return value = vem::detail::remainder(value, other);
}

/// @endcond

#endif  // VEM_VEM_VALUE_OPERATORS_H_
