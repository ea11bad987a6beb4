#ifndef VEM_VEM_JSON_NUMBERS_H_
#define VEM_VEM_JSON_NUMBERS_H_

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <nlohmann/json.hpp>
#include <string>

#include "vem/json_node.h"

/// Numbers in a document, those too that JSON has not.

namespace vem {
namespace json_detail {

template <typename T>
T read_integer(const node& place, T least = std::numeric_limits<T>::min(),
               T most = std::numeric_limits<T>::max()) {
  const json& value = place.value();
  if (value.is_number_unsigned()) {
    const std::uint64_t number = value.get<std::uint64_t>();
    if (number <= static_cast<std::uint64_t>(std::numeric_limits<T>::max())) {
      const T result = static_cast<T>(number);
      if (result >= least && result <= most) return result;
    }
  } else if (value.is_number_integer()) {
    const std::int64_t number = value.get<std::int64_t>();
    if (number >= 0 ? static_cast<std::uint64_t>(number) <=
                          static_cast<std::uint64_t>(std::numeric_limits<T>::max())
                    : std::is_signed<T>::value &&
                          number >= static_cast<std::int64_t>(std::numeric_limits<T>::min())) {
      const T result = static_cast<T>(number);
      if (result >= least && result <= most) return result;
    }
  } else {
    place.fail("expected an integer");
  }
  place.fail("expected an integer from " + std::to_string(least) + " to " + std::to_string(most));
}

/// The bits of a floating-point number, and how many hexadecimal digits they are.
template <typename T>
struct float_bits;
template <>
struct float_bits<double> {
  using type = std::uint64_t;
  static constexpr type infinity() { return 0x7ff0000000000000u; }
  static constexpr type quiet() { return 0x7ff8000000000000u; }
};
template <>
struct float_bits<float> {
  using type = std::uint32_t;
  static constexpr type infinity() { return 0x7f800000u; }
  static constexpr type quiet() { return 0x7fc00000u; }
};

template <typename T>
constexpr typename float_bits<T>::type sign_bit() {
  return typename float_bits<T>::type{1} << (8 * sizeof(T) - 1);
}

template <typename T>
typename float_bits<T>::type bits_of(T number) {
  typename float_bits<T>::type bits = 0;
  std::memcpy(&bits, &number, sizeof bits);
  return bits;
}

// By its bits, so that no flag of the compiler can make a NaN finite.
template <typename T>
bool is_finite(T number) {
  return (bits_of(number) & float_bits<T>::infinity()) != float_bits<T>::infinity();
}

/// The name of a number that JSON has not: "inf", "-inf", "nan", "-nan", and for a NaN with other
/// bits than the plain ones "nan:" with all bits in hexadecimal.
template <typename T>
std::string name_of(T number) {
  const typename float_bits<T>::type bits = bits_of(number);
  if (bits == float_bits<T>::infinity()) return "inf";
  if (bits == (float_bits<T>::infinity() | sign_bit<T>())) return "-inf";
  if (bits == float_bits<T>::quiet()) return "nan";
  if (bits == (float_bits<T>::quiet() | sign_bit<T>())) return "-nan";
  std::string name = "nan:";
  for (std::size_t i = 2 * sizeof bits; i-- > 0;) name += "0123456789abcdef"[bits >> (4 * i) & 15];
  return name;
}

template <typename T>
T number_of(typename float_bits<T>::type bits) {
  T number = 0;
  std::memcpy(&number, &bits, sizeof number);
  return number;
}

/// The NaN with the bits that stand behind "nan:".
template <typename T>
T named_nan(const node& place, const std::string& name) {
  using bits_type = typename float_bits<T>::type;
  bits_type bits = 0;
  for (std::size_t i = 4; i < name.size(); ++i) {
    const char c = name[i];
    const bool letter = c >= 'a' && c <= 'f';
    if (!letter && (c < '0' || c > '9')) place.fail("expected hexadecimal digits behind \"nan:\"");
    bits =
        static_cast<bits_type>(bits << 4 | static_cast<bits_type>(letter ? c - 'a' + 10 : c - '0'));
  }
  const bits_type infinity = float_bits<T>::infinity();
  if (name.size() != 4 + 2 * sizeof bits || (bits & ~sign_bit<T>()) <= infinity) {
    place.fail("expected the bits of a NaN behind \"nan:\"");
  }
  return number_of<T>(bits);
}

template <typename T>
T read_named(const node& place) {
  const std::string& name = place.value().get_ref<const json::string_t&>();
  if (name == "inf") return std::numeric_limits<T>::infinity();
  if (name == "-inf") return -std::numeric_limits<T>::infinity();
  if (name == "nan") return number_of<T>(float_bits<T>::quiet());
  if (name == "-nan") return number_of<T>(float_bits<T>::quiet() | sign_bit<T>());
  if (name.compare(0, 4, "nan:") != 0) place.fail("expected a number");
  return named_nan<T>(place, name);
}

template <typename T>
json write_number(T number) {
  if (is_finite(number)) return json(static_cast<double>(number));
  return json(name_of(number));
}

template <typename T>
T read_number(const node& place) {
  if (place.value().is_string()) return read_named<T>(place);
  if (!place.value().is_number()) place.fail("expected a number");
  const double number = place.value().get<double>();
  const double limit = static_cast<double>(std::numeric_limits<T>::max());
  if (is_finite(number) && (number > limit || number < -limit)) {
    place.fail("expected a number that 32 bits can hold");
  }
  return static_cast<T>(number);
}

}  // namespace json_detail
}  // namespace vem

#endif  // VEM_VEM_JSON_NUMBERS_H_
