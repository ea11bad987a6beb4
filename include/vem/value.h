#ifndef VEM_VEM_VALUE_H_
#define VEM_VEM_VALUE_H_

#include <climits>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#if __cplusplus >= 201703L
#include <string_view>
#endif

#include "VemVar.h"
#include "vem/value_operators.h"

/// Control values in C++: `VemVar` in and out of C++ numbers and texts, compared and calculated
/// with them.
///
/// A number is here any arithmetic type or unscoped enumeration, a text any of `const char*`, an
/// array of `char`, `std::string` and, from C++17 on, `std::string_view`. The text of a value ends
/// at its first zero byte; the text of a sum of two VemVar has none, and must not come here.
///
/// The operators stand in vem/value_operators.h, which comes along.
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

inline double read_back(const char* text, double) { return std::strtod(text, nullptr); }
inline float read_back(const char* text, float) { return std::strtof(text, nullptr); }

// The shortest digits that read back as the same number, with a point whatever the locale has in
// its place. Only of the smallest numbers fewer digits than the type always keeps may do.
template <class T>
std::string digits(T number) {
  typedef std::numeric_limits<T> limits;
  char text[64];
  const bool small = number < limits::min() && number > -limits::min();
  for (int precision = small ? 1 : limits::digits10; precision <= limits::max_digits10;
       ++precision) {
    std::snprintf(text, sizeof text, "%.*g", precision, static_cast<double>(number));
    const T back = read_back(text, number);
    if (back >= number && back <= number) break;
  }
  std::string shown = text;
  const std::size_t point = shown.find_first_not_of("+-0123456789e");
  const std::size_t behind = shown.find_first_of("0123456789", point);
  if (point != std::string::npos && behind != std::string::npos) {
    shown.replace(point, behind - point, ".");
  }
  return shown;
}

// An integer of any width.
template <class T>
std::string decimal(T number) {
  std::string shown;
  for (T rest = number; shown.empty() || rest != 0; rest = static_cast<T>(rest / 10)) {
    const int digit = static_cast<int>(rest % 10);
    shown.insert(shown.begin(), static_cast<char>('0' + (digit < 0 ? -digit : digit)));
  }
  return number < T(0) ? '-' + shown : shown;
}

// A text in quotes, its own quotes and what does not print escaped.
inline std::string quoted(const std::string& text) {
  std::string shown = "\"";
  for (char c : text) {
    const unsigned code = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
      shown += {'\\', c};
    } else if (c == '\n') {
      shown += "\\n";
    } else if (c == '\t') {
      shown += "\\t";
    } else if (code < 32 || code == 127) {
      const char octal[] = {'\\', static_cast<char>('0' + code / 64),
                            static_cast<char>('0' + code / 8 % 8),
                            static_cast<char>('0' + code % 8)};
      shown.append(octal, sizeof octal);
    } else {
      shown += c;
    }
  }
  return shown + '"';
}

// The beginning of a text, in whole characters of UTF-8.
inline std::string beginning(const std::string& text) {
  std::size_t length = 40;
  if (text.size() <= length) return quoted(text);
  while (length > 37 && (static_cast<unsigned char>(text[length]) & 0xc0) == 0x80) --length;
  std::string shown = quoted(text.substr(0, length));
  return shown.insert(shown.size() - 1, "...");
}

inline std::string describe(const VemVar& value) {
  switch (value.ValType()) {
    case VemVarLong:
      return "the integer " + std::to_string(value.L());
    case VemVarDouble:
      return "the double " + digits(value.D());
    case VemVarString:
      return "the text " + beginning(value.S());
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
  const VemVar value(number);
  return order_with(value, std::numeric_limits<T>::min()) != kLess &&
         order_with(value, std::numeric_limits<T>::max()) != kGreater;
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
    return "an integer from " + decimal(std::numeric_limits<T>::min()) + " to " +
           decimal(std::numeric_limits<T>::max());
  }
};

template <class T>
struct reader<T, if_true<std::is_floating_point<T>::value>> {
  static const bool known = true;
  static bool holds(const VemVar& value) { return is_numeric(value); }
  static T read(const VemVar& value) {
    return value.ValType() == VemVarLong ? static_cast<T>(value.L()) : static_cast<T>(value.D());
  }
  static std::string name() { return "a number"; }
};

template <class T>
struct reader<T, if_true<is_text<T>::value && !std::is_same<T, char*>::value>> {
  static const bool known = true;
  static bool holds(const VemVar& value) { return value.ValType() == VemVarString; }
  static T read(const VemVar& value) { return T(value.S()); }
  static std::string name() { return "a text"; }
};

// What looks into the text of a value, and so must not outlive it.
template <class T>
struct is_view : std::is_same<plain<T>, const char*> {};
#if __cplusplus >= 201703L
template <>
struct is_view<std::string_view> : std::true_type {};
#endif

// An integer beside a double, without a rounding.
inline order order_exactly(long integer, double number) {
  const double limit = 9223372036854775808.0;
  if (!(number < limit)) return kLess;
  if (number < -limit) return kGreater;
  const long whole = static_cast<long>(number);
  return integer == whole ? order_of(static_cast<double>(whole), number) : order_of(integer, whole);
}

// The place of a kind in the order of all values: nothing, numbers, no numbers, texts.
inline int rank(const VemVar& value) {
  if (value.ValType() == VemVarString) return 3;
  if (value.ValType() == VemVarDouble) return std::isnan(value.D()) ? 2 : 1;
  return value.ValType() == VemVarLong ? 1 : 0;
}

// The calls of a visitor, and what they give.
template <class Visitor, class T>
struct visits {
  template <class V>
  static auto test(int) -> decltype(std::declval<V>()(std::declval<T>()), std::true_type());
  template <class V>
  static std::false_type test(...);
  static const bool value = decltype(test<Visitor>(0))::value;
};

template <class Visitor, class T>
using visited = decltype(std::declval<Visitor>()(std::declval<T>()));

template <class Visitor, bool kTakesAll>
struct visit_result {
  typedef visited<Visitor, long> type;
  static const bool one = std::is_same<type, visited<Visitor, double>>::value &&
                          std::is_same<type, visited<Visitor, const char*>>::value &&
                          std::is_same<type, visited<Visitor, none_t>>::value;
};
template <class Visitor>
struct visit_result<Visitor, false> {
  typedef void type;
  static const bool one = true;
};

template <class Visitor>
struct visits_all
    : std::integral_constant<bool, visits<Visitor, long>::value && visits<Visitor, double>::value &&
                                       visits<Visitor, const char*>::value &&
                                       visits<Visitor, none_t>::value> {};

// A visitor may take an integer as a double, for which no caller is warned.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
template <class Result, class Visitor>
Result visit_as(Visitor&& visitor, const VemVar& value, std::true_type /*takes all*/) {
  switch (value.ValType()) {
    case VemVarLong:
      return std::forward<Visitor>(visitor)(value.L());
    case VemVarDouble:
      return std::forward<Visitor>(visitor)(value.D());
    case VemVarString:
      return std::forward<Visitor>(visitor)(value.S());
    default:
      return std::forward<Visitor>(visitor)(none_t());
  }
}
#pragma GCC diagnostic pop
template <class Result, class Visitor>
Result visit_as(Visitor&&, const VemVar&, std::false_type /*takes all*/);

template <class T>
if_true<std::is_integral<T>::value> test_range(T number) {
  if (order_with(VemVar(LONG_MAX), number) != kLess &&
      order_with(VemVar(LONG_MIN), number) != kGreater) {
    return;
  }
  throw std::out_of_range("vem::value: " + decimal(number) + " is beyond the integers");
}
template <class T>
if_true<!std::is_integral<T>::value> test_range(T) {}

template <class T>
VemVar made(const T& number, std::true_type /*number*/) {
  test_range<promoted<T>>(number);
  return operand(number);
}
template <class T>
VemVar made(const T& text, std::false_type /*number*/) {
  const text_span span = span_of(text);
  if (span.bytes == nullptr) {
    throw std::invalid_argument("vem::value: the text is a null pointer");
  }
  const std::string copy(span.bytes, span.length);
  const std::size_t zero = copy.find('\0');
  if (zero != std::string::npos) {
    throw std::invalid_argument("vem::value: the text has a zero byte at " + std::to_string(zero));
  }
  return VemVar(copy.c_str());
}

}  // namespace detail
/// @endcond

/// A value from a number, of which a floating-point one becomes a double, or from a text;
/// `std::out_of_range` for an integer that 64 bits with a sign can't hold, `std::invalid_argument`
/// for a null pointer and for a text with a zero byte within.
template <class T>
VemVar value(const T& other) {
  static_assert(detail::is_number<T>::value || detail::is_text<T>::value,
                "vem::value: a control value is made of a number, std::string, std::string_view or "
                "const char*");
  return detail::made(other, detail::is_number<T>());
}
/// A copy.
inline VemVar value(const VemVar& other) { return other; }
/// Nothing.
inline VemVar value(none_t) { return VemVar(); }

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
/// copy, `const char*` and `std::string_view` as a view that lives as long as the value's text; of
/// a temporary value a view does not compile, here and below.
template <class T>
T get(const VemVar& value) {
  static_assert(detail::reader<T>::known,
                "vem::get: ask for an integer other than bool, a floating-point number, "
                "std::string, std::string_view or const char*");
  if (!detail::reader<T>::holds(value)) detail::fail_access(detail::reader<T>::name(), value);
  return detail::reader<T>::read(value);
}
/// The same of a temporary.
template <class T>
T get(const VemVar&& value) {
  static_assert(!detail::is_view<T>::value,
                "vem::get: the text of a temporary value is gone with it; ask for std::string");
  return vem::get<T>(value);
}

/// The value as get gives it, or `other` where get would throw. The type is that of `other`.
template <class T>
T get_or(const VemVar& value, T other) {
  return holds<T>(value) ? detail::reader<T>::read(value) : other;
}
/// The same of a temporary.
template <class T>
T get_or(const VemVar&& value, T other) {
  static_assert(!detail::is_view<T>::value,
                "vem::get_or: the text of a temporary value is gone with it; ask for std::string");
  return vem::get_or<T>(value, other);
}
/// The same for a text, copied.
inline std::string get_or(const VemVar& value, const char* other) {
  return get_or<std::string>(value, std::string(other));
}
/// The same of a temporary.
inline std::string get_or(const VemVar&& value, const char* other) {
  return vem::get_or(value, other);
}
/// The same for a text that may be written.
inline std::string get_or(const VemVar& value, char* other) {
  return vem::get_or(value, static_cast<const char*>(other));
}
/// The same of a temporary.
inline std::string get_or(const VemVar&& value, char* other) { return vem::get_or(value, other); }

/// Calls the visitor with what the value holds, a `long`, a `double`, a `const char*` or a none_t,
/// and returns what it returns. It must take all four, and return one type.
template <class Visitor>
typename detail::visit_result<Visitor, detail::visits_all<Visitor>::value>::type visit(
    Visitor&& visitor, const VemVar& value) {
  typedef detail::visits_all<Visitor> takes_all;
  typedef detail::visit_result<Visitor, takes_all::value> result;
  static_assert(takes_all::value,
                "vem::visit: the visitor takes a long, a double, a const char* and a vem::none_t");
  static_assert(result::one, "vem::visit: the visitor returns one type, whatever it takes");
  const bool can_be_called = takes_all::value && result::one;
  return detail::visit_as<typename result::type>(std::forward<Visitor>(visitor), value,
                                                 std::integral_constant<bool, can_be_called>());
}
/// The same of a temporary, for visitors that return no view.
template <class Visitor>
typename detail::visit_result<Visitor, detail::visits_all<Visitor>::value>::type visit(
    Visitor&& visitor, const VemVar&& value) {
  typedef detail::visit_result<Visitor, detail::visits_all<Visitor>::value> result;
  static_assert(!detail::is_view<typename result::type>::value,
                "vem::visit: the text of a temporary value is gone with it; return std::string");
  return vem::visit(std::forward<Visitor>(visitor), value);
}

/// @cond
namespace detail {

template <class First, class... Rest>
struct overload_set : First, overload_set<Rest...> {
  overload_set(First first, Rest... rest)
      : First(std::move(first)), overload_set<Rest...>(std::move(rest)...) {}
  using First::operator();
  using overload_set<Rest...>::operator();
};
template <class Last>
struct overload_set<Last> : Last {
  explicit overload_set(Last last) : Last(std::move(last)) {}
  using Last::operator();
};

}  // namespace detail
/// @endcond

/// One visitor of several, for each kind the one that takes it best.
template <class... Visitors>
detail::overload_set<Visitors...> overload(Visitors... visitors) {
  return detail::overload_set<Visitors...>(std::move(visitors)...);
}

/// An order of all values, for sorting, sets and maps: nothing, then numbers by value, an integer
/// and a double compared without rounding, then all that is no number, then texts by bytes.
struct less {
  /// Whether `a` stands before `b`.
  bool operator()(const VemVar& a, const VemVar& b) const {
    const int left = detail::rank(a);
    const int right = detail::rank(b);
    if (left != right) return left < right;
    if (left == 0 || left == 2) return false;
    if (a.ValType() == b.ValType()) return detail::order_between(a, b) == detail::kLess;
    return a.ValType() == VemVarLong ? detail::order_exactly(a.L(), b.D()) == detail::kLess
                                     : detail::order_exactly(b.L(), a.D()) == detail::kGreater;
  }
};

}  // namespace vem

#endif  // VEM_VEM_VALUE_H_
