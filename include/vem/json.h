#ifndef VEM_VEM_JSON_H_
#define VEM_VEM_JSON_H_

#include <cstring>
#include <nlohmann/json.hpp>
#include <string>
#include <type_traits>
#include <utility>

#include "vem/json_forms.h"
#include "vem/json_node.h"
#include "vem/json_overlays.h"
#include "vem/json_rasters.h"
#include "vem/json_regions.h"
#include "vem/json_results.h"
#include "vem/json_shapes.h"
#include "vem/json_values.h"

/// Every class but VemRLC, whose results are plain lists, to JSON and back, through nlohmann-json;
/// needs OpenCV's core, for pixels:
///
///     nlohmann::json document = vem::to_json(roi);
///     VemROI again = vem::from_json<VemROI>(document);
///
/// A document is an object that tells its "version", its "class" and the fields of the value:
///
///     {"version": 1, "class": "VemROI", "type": "circle", "center": [120, 80], "radius": 30.5}
///
/// Points are lists, x before y. Where a number is expected, "nan", "-nan", "inf", "-inf" and
/// "nan:7ff8000000000001" (all bits of a NaN) are numbers too; a control value that is one stands
/// as `{"double": "nan"}`, and a text that is not UTF-8 as `{"bytes": "..."}` in base64. Pixels are
/// base64 beside their size, channels and depth. A coordinate may be written as any number, and is
/// the nearest that its type has, as 0.1 is; beyond 2^53 so are integers.
///
/// `nlohmann::json(roi)` and `document.get<VemROI>()` do the same, so that the classes may stand in
/// a caller's own documents and containers, `ordered_json` among them.
///
/// What is read back is what was written: kinds of control values, all bits of doubles, coordinates
/// that the readers of the classes round. Not written are pixels and runs that an overlay or a
/// region of interest carries along under a type that does not show them.

namespace vem {

/// The version of the documents that to_json writes.
constexpr int json_version = 1;

namespace json_detail {

template <typename T>
class has_name {
  template <typename U>
  static auto test(int) -> decltype(form<U>::name(), std::true_type());
  template <typename U>
  static std::false_type test(...);

 public:
  static constexpr bool value = decltype(test<T>(0))::value;
};

inline void test_head(const node& document, const char* name) {
  if (!document.value().is_object()) document.fail("expected an object");
  const json& value = document.value();
  const json::const_iterator version = value.find("version");
  if (version == value.end()) document.fail("version", "is missing");
  if (!version->is_number_integer() || *version != json_version) {
    document.fail("version", "expected version " + std::to_string(json_version));
  }
  const json::const_iterator told = value.find("class");
  if (told != value.end() && !is_named(*told, name)) {
    document.fail("class", std::string("expected \"") + name + '"');
  }
}

template <typename T>
void read_document(const node& document, T& value) {
  test_head(document, form<T>::name());
  if (form<T>::key() == nullptr) return form<T>::read(document, value);
  object_reader object(document);
  form<T>::read(object[form<T>::key()], value);
  object.finish();
}

// By memory: what points into an object of the library stands behind it, never in it. Assigning
// could throw halfway, would keep a region's outlines, and would lose a custom structure's values.
template <typename T>
void exchange(T& a, T& b) {
  unsigned char bytes[sizeof(T)];
  std::memcpy(bytes, static_cast<const void*>(&a), sizeof(T));
  std::memcpy(static_cast<void*>(&a), static_cast<const void*>(&b), sizeof(T));
  std::memcpy(static_cast<void*>(&b), bytes, sizeof(T));
}

}  // namespace json_detail

/// Whether T is a class of the library that stands in JSON, as `value`.
template <typename T>
struct is_json_class : std::integral_constant<bool, json_detail::has_name<T>::value> {};

/// The document of a value. Raises `std::invalid_argument` for what no document can tell: a raster
/// of more than two dimensions or of no known depth, a matrix of several channels, and what no
/// operation of the class stores, but who writes through vem::parts: numbers of a shape that no
/// generator has, lists of a region array that are not of one length.
template <typename T>
nlohmann::json to_json(const T& value) {
  static_assert(is_json_class<T>::value, "vem::to_json takes the classes of the library");
  using form = json_detail::form<T>;
  nlohmann::json written = form::write(value);
  nlohmann::json document = nlohmann::json::object();
  if (form::key() == nullptr) {
    document = std::move(written);
  } else {
    document[form::key()] = std::move(written);
  }
  document["version"] = json_version;
  document["class"] = form::name();
  return document;
}

/// Reads a document into `value`, which stays as it was where anything is thrown. Raises
/// json_error, a `std::invalid_argument`, with the place of the first fault: a field that is
/// missing, of the wrong kind or refused by the class, or one that is not known. "version" must be
/// there; "class" may be left out. Memory is asked for only as much as the document itself takes,
/// times a constant.
template <typename T>
typename std::enable_if<is_json_class<T>::value>::type from_json(const nlohmann::json& document,
                                                                 T& value) {
  T fresh;
  json_detail::read_document(json_detail::node(document), fresh);
  json_detail::exchange(fresh, value);
}

/// The value of a document. A VemMorphStructure must be read this way into a new object only, or
/// else by the form above: assigning it loses values of a custom one.
template <typename T>
T from_json(const nlohmann::json& document) {
  static_assert(is_json_class<T>::value, "vem::from_json gives the classes of the library");
  T value;
  json_detail::read_document(json_detail::node(document), value);
  return value;
}

}  // namespace vem

/// @cond
namespace nlohmann {

// Its other kinds of documents take over what there is for a plain one.
template <typename T>
struct adl_serializer<T, typename std::enable_if<vem::is_json_class<T>::value>::type> {
  template <typename Document>
  static void to_json(Document& document, const T& value) {
    document = vem::to_json(value);
  }
  template <typename Document>
  static void from_json(const Document& document, T& value) {
    vem::from_json(document, value);
  }
};

}  // namespace nlohmann
/// @endcond

#endif  // VEM_VEM_JSON_H_
