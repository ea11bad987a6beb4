#ifndef VEM_VEM_JSON_FORMS_H_
#define VEM_VEM_JSON_FORMS_H_

#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <type_traits>

#include "vem/array_traits.h"
#include "vem/json_node.h"
#include "vem/json_numbers.h"

/// How the classes stand in a document: the forms that records and arrays share.

namespace vem {
namespace json_detail {

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

#endif  // VEM_VEM_JSON_FORMS_H_
