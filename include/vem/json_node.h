#ifndef VEM_VEM_JSON_NODE_H_
#define VEM_VEM_JSON_NODE_H_

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "vem/array_traits.h"

/// What the readers and writers of vem/json.h stand on: places in a document, errors that name
/// them, numbers, texts and bytes.

namespace vem {

/// A document that can't be read. what() is the place of the fault as a JSON pointer, then what was
/// expected there: "/overlays/3/font/size: expected an integer". A fault of the whole document has
/// no place: "expected an object".
class json_error : public std::invalid_argument {
 public:
  /// A fault at `path`, a JSON pointer or empty.
  json_error(const std::string& path, const std::string& reason)
      : std::invalid_argument(path.empty() ? reason : path + ": " + reason), length_(path.size()) {}

  /// The place as a JSON pointer; empty for the whole document.
  std::string path() const { return std::string(what(), length_); }

 private:
  std::size_t length_;
};

namespace json_detail {

using nlohmann::json;

/// A value in a document, and how it was reached. A node refers to the one above it, which must
/// live longer: never keep the last node of a chain of calls.
class node {
 public:
  explicit node(const json& document) : value_(document), above_(nullptr), key_(), index_(0) {}
  node(const json& value, const node& above, const char* key)
      : value_(value), above_(&above), key_(key), index_(0) {}
  node(const json& value, const node& above, std::size_t index)
      : value_(value), above_(&above), key_(nullptr), index_(index) {}

  const json& value() const { return value_; }
  bool is_document() const { return above_ == nullptr; }

  [[noreturn]] void fail(const std::string& reason) const { throw json_error(path(), reason); }
  /// Fails on a member of this object, which need not be there.
  [[noreturn]] void fail(const std::string& key, const std::string& reason) const {
    throw json_error(path() + '/' + escaped(key), reason);
  }

  /// The number of elements of a list.
  std::size_t size() const {
    if (!value_.is_array()) fail("expected a list");
    return value_.size();
  }
  /// An element of a list, below its size.
  node operator[](std::size_t index) const { return node(value_[index], *this, index); }

 private:
  std::string path() const {
    if (is_document()) return std::string();
    return above_->path() + '/' + (key_ != nullptr ? escaped(key_) : std::to_string(index_));
  }
  static std::string escaped(const std::string& key) {
    std::string result;
    for (char c : key) {
      if (c == '~') {
        result += "~0";
      } else if (c == '/') {
        result += "~1";
      } else {
        result += c;
      }
    }
    return result;
  }

  const json& value_;
  const node* above_;
  const char* key_;
  std::size_t index_;
};

/// An object whose members are asked for by name; those that nobody asks for are a fault.
class object_reader {
 public:
  explicit object_reader(const node& place) : place_(place) {
    if (!place.value().is_object()) place.fail("expected an object");
    if (!place.is_document()) return;
    asked_.push_back("version");
    asked_.push_back("class");
  }

  bool has(const char* key) {
    asked_.push_back(key);
    return place_.value().find(key) != place_.value().end();
  }
  node operator[](const char* key) {
    asked_.push_back(key);
    const json::const_iterator found = place_.value().find(key);
    if (found == place_.value().end()) place_.fail(key, "is missing");
    return node(*found, place_, key);
  }
  void finish() const {
    for (json::const_iterator i = place_.value().begin(); i != place_.value().end(); ++i) {
      if (!was_asked(i.key())) place_.fail(i.key(), "is no field of this object");
    }
  }

 private:
  bool was_asked(const std::string& key) const {
    for (const char* asked : asked_) {
      if (key == asked) return true;
    }
    return false;
  }

  const node& place_;
  std::vector<const char*> asked_;
};

// Compared as a text: json's own == with a literal ends the process where memory is short.
inline bool is_named(const json& value, const char* name) {
  return value.is_string() && value.get_ref<const json::string_t&>() == name;
}

// --- Bytes as base64: the plain alphabet, padded, without line breaks ---

inline std::string encode(const unsigned char* bytes, std::size_t count) {
  static const char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  text.resize((count + 2) / 3 * 4, '=');
  std::size_t to = 0;
  for (std::size_t i = 0; i < count; i += 3) {
    const std::size_t left = count - i;
    const unsigned bits = unsigned{bytes[i]} << 16 | (left > 1 ? unsigned{bytes[i + 1]} << 8 : 0u) |
                          (left > 2 ? unsigned{bytes[i + 2]} : 0u);
    text[to] = kDigits[bits >> 18];
    text[to + 1] = kDigits[bits >> 12 & 63];
    if (left > 1) text[to + 2] = kDigits[bits >> 6 & 63];
    if (left > 2) text[to + 3] = kDigits[bits & 63];
    to += 4;
  }
  return text;
}

/// The value of a digit, or 64.
inline unsigned digit(char c) {
  if (c >= 'A' && c <= 'Z') return static_cast<unsigned>(c - 'A');
  if (c >= 'a' && c <= 'z') return static_cast<unsigned>(c - 'a') + 26;
  if (c >= '0' && c <= '9') return static_cast<unsigned>(c - '0') + 52;
  if (c == '+') return 62;
  return c == '/' ? 63 : 64;
}

/// Bytes in base64, not yet decoded.
class encoded_bytes {
 public:
  explicit encoded_bytes(const node& place) : place_(place) {
    if (!place.value().is_string()) place.fail("expected bytes in base64");
    text_ = place.value().get_ptr<const json::string_t*>();
    if (text_->size() % 4 != 0) place.fail("expected base64 with its padding");
    padding_ = 0;
    while (padding_ < 2 && padding_ < text_->size() && end(padding_) == '=') ++padding_;
  }

  std::size_t size() const { return text_->size() / 4 * 3 - padding_; }

  /// Writes size() bytes.
  void decode(unsigned char* bytes) const {
    for (std::size_t i = 0, left = size(); i < text_->size(); i += 4) {
      const std::size_t count = left < 3 ? left : 3;
      const unsigned bits = quantum(i, count);
      for (std::size_t k = 0; k < count; ++k) *bytes++ = (bits >> (16 - 8 * k)) & 255;
      left -= count;
    }
  }

 private:
  char end(std::size_t index) const { return (*text_)[text_->size() - 1 - index]; }

  unsigned quantum(std::size_t from, std::size_t count) const {
    unsigned bits = 0;
    for (std::size_t k = 0; k < 4; ++k) {
      const unsigned value = k <= count ? digit((*text_)[from + k]) : 0u;
      if (value > 63) place_.fail("expected base64");
      bits = bits << 6 | value;
    }
    if ((bits & ((1u << (24 - 8 * count)) - 1)) != 0) place_.fail("expected base64");
    return bits;
  }

  const node& place_;
  const json::string_t* text_;
  std::size_t padding_;
};

// --- Texts ---

/// The length of the UTF-8 sequence at `text`, which is zero-terminated, or 0: no byte above 0xf4,
/// no overlong form, no surrogate.
inline std::size_t sequence_length(const unsigned char* text) {
  const unsigned first = text[0];
  if (first < 0x80) return 1;
  const std::size_t length = first < 0xc2   ? 0
                             : first < 0xe0 ? 2
                             : first < 0xf0 ? 3
                             : first < 0xf5 ? 4
                                            : 0;
  if (length == 0) return 0;
  const unsigned low = first == 0xe0 ? 0xa0 : first == 0xf0 ? 0x90 : 0x80;
  const unsigned high = first == 0xed ? 0x9f : first == 0xf4 ? 0x8f : 0xbf;
  if (text[1] < low || text[1] > high) return 0;
  for (std::size_t i = 2; i < length; ++i) {
    if ((text[i] & 0xc0) != 0x80) return 0;
  }
  return length;
}

inline bool is_utf8(const char* text) {
  const unsigned char* at = reinterpret_cast<const unsigned char*>(text);
  while (*at != 0) {
    const std::size_t length = sequence_length(at);
    if (length == 0) return false;
    at += length;
  }
  return true;
}

inline json write_text(const char* text) {
  if (is_utf8(text)) return json(text);
  json bytes = json::object();
  bytes["bytes"] = encode(reinterpret_cast<const unsigned char*>(text), std::strlen(text));
  return bytes;
}

inline std::string decoded_text(const node& place) {
  const encoded_bytes bytes(place);
  std::string text(bytes.size(), ' ');
  if (!text.empty()) bytes.decode(reinterpret_cast<unsigned char*>(&text[0]));
  return text;
}

inline std::string read_text(const node& place) {
  std::string text;
  if (place.value().is_string()) {
    text = place.value().get_ref<const json::string_t&>();
  } else if (place.value().is_object()) {
    object_reader object(place);
    text = decoded_text(object["bytes"]);
    object.finish();
  } else {
    place.fail("expected a text");
  }
  if (text.find('\0') != std::string::npos) place.fail("a text holds no zero byte");
  return text;
}

// --- Numbers ---

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

// --- How the classes stand in a document ---

/// How values of type T stand in JSON: `write` gives the value, `read` makes a new object from one.
///
/// A class has a name(), and a key() under which its value stands in a document of its own, null
/// where the value is an object whose members stand in the document themselves.
template <typename T, typename = void>
struct form {};

template <typename T>
struct integer_form {
  static json write(T number) { return json(number); }
  static void read(const node& place, T& number) { number = read_integer<T>(place); }
};
template <>
struct form<int> : integer_form<int> {};
template <>
struct form<long> : integer_form<long> {};
template <>
struct form<unsigned char> : integer_form<unsigned char> {};
template <>
struct form<std::uint32_t> : integer_form<std::uint32_t> {};
template <>
struct form<std::uint64_t> : integer_form<std::uint64_t> {};

template <typename T>
struct number_form {
  static json write(T number) { return write_number(number); }
  static void read(const node& place, T& number) { number = read_number<T>(place); }
};
template <>
struct form<double> : number_form<double> {};
template <>
struct form<float> : number_form<float> {};

/// Writes the fields that form<T>::fields names.
class field_writer {
 public:
  explicit field_writer(json& object) : object_(object) {}
  template <typename Field>
  field_writer& operator()(const char* key, const Field& field) {
    object_[key] = form<Field>::write(field);
    return *this;
  }

 private:
  json& object_;
};

/// Reads the fields that form<T>::fields names; all must be there.
class field_reader {
 public:
  explicit field_reader(object_reader& object) : object_(object) {}
  template <typename Field>
  field_reader& operator()(const char* key, Field& field) {
    form<Field>::read(object_[key], field);
    return *this;
  }

 private:
  object_reader& object_;
};

/// The form of a record, an object with the members that form<T>::fields names.
template <typename T>
struct record_form {
  static const char* key() { return nullptr; }
  static json write(const T& record) {
    json object = json::object();
    field_writer writer(object);
    form<T>::fields(writer, record);
    return object;
  }
  static void read(const node& place, T& record) {
    object_reader object(place);
    field_reader reader(object);
    form<T>::fields(reader, record);
    object.finish();
  }
};

/// The name of an array class, and the key under which the list stands in a document of its own.
struct list_names {
  const char* name;
  const char* key;
};

/// Stands for an array class where names_of is asked for its names.
template <typename Array>
struct list_of {};

/// The form of an array.
template <typename Array>
struct list_form {
  using element = detail::element_of<Array>;

  static const char* name() { return names_of(list_of<Array>()).name; }
  static const char* key() { return names_of(list_of<Array>()).key; }

  static json write(const Array& array) {
    Array& elements = const_cast<Array&>(array);  // What is not const reads alone, but in place.
    json list = json::array();
    const int count = detail::count_of(array);
    for (int i = 0; i < count; ++i) list.push_back(form<element>::write(elements[i]));
    return list;
  }
  static void read(const node& place, Array& array) {
    array.Clear();
    const std::size_t size = place.size();
    for (std::size_t i = 0; i < size; ++i) {
      element made = element();
      form<element>::read(place[i], made);
      detail::array_traits<Array>::add(array, made);
    }
  }
};

template <typename Array>
struct form<Array, typename std::enable_if<detail::is_array_class<Array>::value>::type>
    : list_form<Array> {};

}  // namespace json_detail
}  // namespace vem

#endif  // VEM_VEM_JSON_NODE_H_
