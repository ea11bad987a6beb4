#ifndef VEM_VEM_VALUE_H_
#define VEM_VEM_VALUE_H_

#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <stdexcept>
#include <string>
#include <type_traits>
#if __cplusplus >= 201703L
#include <string_view>
#endif

#include "VemVar.h"

/// Control values in C++: `VemVar` in and out of C++ numbers and texts.
///
/// A number is here any arithmetic type or unscoped enumeration, a text any of `const char*`, an
/// array of `char`, `std::string` and, from C++17 on, `std::string_view`. The text of a value ends
/// at its first zero byte; the text of a sum of two VemVar has none, and must not come here.
namespace vem {

/// What get throws: the value is of another kind, or a number that the type asked for has not.
class bad_value_access : public std::runtime_error {
 public:
  /// `message` tells what was asked for and what there was.
  explicit bad_value_access(const std::string& message) : std::runtime_error(message) {}
};

/// What stands for nothing where a type is called for, as in a visitor.
struct none_t {};

/// @cond
namespace detail {

template <class T>
using plain = typename std::remove_cv<typename std::remove_reference<T>::type>::type;

template <bool kCondition, class T = void>
using if_true = typename std::enable_if<kCondition, T>::type;

template <class T>
struct is_number : std::integral_constant<bool, std::is_arithmetic<T>::value ||
                                                    (std::is_enum<T>::value &&
                                                     std::is_convertible<T, long long>::value)> {};

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

inline text_span span_of(const char* text) {
  return text_span{text, text == nullptr ? 0 : std::strlen(text)};
}
inline text_span span_of(const std::string& text) { return text_span{text.data(), text.size()}; }
#if __cplusplus >= 201703L
inline text_span span_of(std::string_view text) { return text_span{text.data(), text.size()}; }
#endif

inline bool is_numeric(const VemVar& value) {
  return value.ValType() == VemVarLong || value.ValType() == VemVarDouble;
}

// The shortest digits that read back as the same number.
inline std::string digits(double number) {
  char text[32];
  for (int precision = 15; precision <= 17; ++precision) {
    std::snprintf(text, sizeof text, "%.*g", precision, number);
    if (std::strtod(text, nullptr) >= number && std::strtod(text, nullptr) <= number) break;
  }
  return text;
}

inline std::string quoted(const std::string& text) {
  const std::size_t limit = 40;
  return text.size() <= limit ? '"' + text + '"' : '"' + text.substr(0, limit) + "...\"";
}

inline std::string describe(const VemVar& value) {
  switch (value.ValType()) {
    case VemVarLong:
      return "the integer " + std::to_string(value.L());
    case VemVarDouble:
      return "the double " + digits(value.D());
    case VemVarString:
      return "the text " + quoted(value.S());
    default:
      return "nothing";
  }
}

[[noreturn]] inline void fail_access(const std::string& asked, const VemVar& value) {
  throw bad_value_access("vem::get: asked for " + asked + ", the value is " + describe(value));
}

// Whether an integer fits another type of integers.
template <class T>
bool fits(long number) {
  return std::is_signed<T>::value
             ? sizeof(T) >= sizeof(long) ||
                   (number >= static_cast<long>(std::numeric_limits<T>::min()) &&
                    number <= static_cast<long>(std::numeric_limits<T>::max()))
             : number >= 0 && static_cast<unsigned long>(number) <=
                                  static_cast<unsigned long>(std::numeric_limits<T>::max());
}

// How a type is read: `holds`, `read` where it holds, and `name` for who reads it in vain.
template <class T, class = void>
struct reader {
  static const bool known = false;
};

template <class T>
struct reader<T, if_true<std::is_integral<T>::value && !std::is_same<T, bool>::value>> {
  static const bool known = true;
  static bool holds(const VemVar& value) {
    return value.ValType() == VemVarLong && fits<T>(value.L());
  }
  static T read(const VemVar& value) { return static_cast<T>(value.L()); }
  static std::string name() {
    return "an integer from " + std::to_string(std::numeric_limits<T>::min()) + " to " +
           std::to_string(std::numeric_limits<T>::max());
  }
};

template <class T>
struct reader<T, if_true<std::is_floating_point<T>::value>> {
  static const bool known = true;
  static bool holds(const VemVar& value) { return is_numeric(value); }
  static T read(const VemVar& value) { return static_cast<T>(value.D()); }
  static std::string name() { return "a number"; }
};
template <>
inline float reader<float>::read(const VemVar& value) {
  return value.F();
}

template <class T>
struct reader<T, if_true<is_text<T>::value && !std::is_same<T, char*>::value>> {
  static const bool known = true;
  static bool holds(const VemVar& value) { return value.ValType() == VemVarString; }
  static T read(const VemVar& value) { return T(value.S()); }
  static std::string name() { return "a text"; }
};

}  // namespace detail
/// @endcond

/// Whether get can read the value as a `T`.
template <class T>
bool holds(const VemVar& value) {
  static_assert(detail::reader<T>::known,
                "vem::holds: ask for an integer other than bool, a floating-point number, "
                "std::string, std::string_view or const char*");
  return detail::reader<T>::holds(value);
}

/// The value as a `T`; `bad_value_access` where it is none.
///
/// An integer type takes an integer that it has, never a double. A floating-point type takes a
/// double or an integer, rounded to it where need be. A text type takes a text: `std::string` as a
/// copy, `const char*` and `std::string_view` as a view that lives as long as the value's text.
template <class T>
T get(const VemVar& value) {
  static_assert(detail::reader<T>::known,
                "vem::get: ask for an integer other than bool, a floating-point number, "
                "std::string, std::string_view or const char*");
  if (!detail::reader<T>::holds(value)) detail::fail_access(detail::reader<T>::name(), value);
  return detail::reader<T>::read(value);
}

/// The value as get gives it, or `other` where get would throw. The type is that of `other`.
template <class T>
T get_or(const VemVar& value, T other) {
  return holds<T>(value) ? detail::reader<T>::read(value) : other;
}
/// The same for a text, copied.
inline std::string get_or(const VemVar& value, const char* other) {
  return get_or<std::string>(value, std::string(other));
}

}  // namespace vem

#endif  // VEM_VEM_VALUE_H_
