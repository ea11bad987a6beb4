#ifndef VEM_VEM_JSON_VALUES_H_
#define VEM_VEM_JSON_VALUES_H_

#include <initializer_list>
#include <string>

#include "Vem2DVarArray.h"
#include "Vem3DPoint.h"
#include "Vem3DPointArray.h"
#include "VemCircle.h"
#include "VemContour.h"
#include "VemContourArray.h"
#include "VemFont.h"
#include "VemLine.h"
#include "VemPoint.h"
#include "VemPointArray.h"
#include "VemTuple.h"
#include "VemVar.h"
#include "vem/array_traits.h"
#include "vem/json_forms.h"
#include "vem/json_node.h"
#include "vem/json_numbers.h"
#include "vem/json_texts.h"

/// How values, points, lines, circles, contours and fonts stand in JSON.

namespace vem {
namespace json_detail {

/// An integer, a double and a text are a JSON integer, number with a dot or an exponent, and
/// string; nothing is null. `{"double": "nan"}` is a double that JSON has not, `{"bytes": "/w=="}`
/// a text that is not UTF-8.
template <>
struct form<VemVar> {
  static const char* name() { return "VemVar"; }
  static const char* key() { return "value"; }

  static json write(const VemVar& value) {
    switch (value.ValType()) {
      case VemVarLong:
        return json(value.L());
      case VemVarDouble:
        return write_double(value.D());
      case VemVarString:
        return write_text(value.S());
      default:
        return json(nullptr);
    }
  }

  static void read(const node& place, VemVar& value) {
    const json& from = place.value();
    if (from.is_null()) {
      value = VemVar();
    } else if (from.is_number_integer()) {
      value = VemVar(read_integer<long>(place));
    } else if (from.is_number()) {
      value = VemVar(read_number<double>(place));
    } else if (from.is_string()) {
      value = VemVar(read_text(place).c_str());
    } else if (from.is_object()) {
      read_object(place, value);
    } else {
      place.fail("expected a number, a text or null");
    }
  }

 private:
  static json write_double(double number) {
    if (is_finite(number)) return json(number);
    json named = json::object();
    named["double"] = name_of(number);
    return named;
  }

  static void read_object(const node& place, VemVar& value) {
    if (place.value().find("bytes") != place.value().end()) {
      value = VemVar(read_text(place).c_str());
      return;
    }
    object_reader object(place);
    value = VemVar(read_number<double>(object["double"]));
    object.finish();
  }
};

inline list_names names_of(list_of<VemVarArray>) { return {"VemVarArray", "values"}; }
inline list_names names_of(list_of<Vem2DVarArray>) { return {"Vem2DVarArray", "rows"}; }
inline list_names names_of(list_of<VemPointArray>) { return {"VemPointArray", "points"}; }
inline list_names names_of(list_of<Vem3DPointArray>) { return {"Vem3DPointArray", "points"}; }
inline list_names names_of(list_of<VemContourArray>) { return {"VemContourArray", "contours"}; }

inline json write_numbers(std::initializer_list<double> numbers) {
  json list = json::array();
  for (double number : numbers) list.push_back(write_number(number));
  return list;
}

/// A point is the list of its coordinates.
template <>
struct form<VemPoint> {
  static const char* name() { return "VemPoint"; }
  static const char* key() { return "point"; }

  static json write(const VemPoint& point) { return write_numbers({point.x, point.y}); }
  static void read(const node& place, VemPoint& point) {
    if (place.size() != 2) place.fail("expected x and y");
    point.x = read_number<double>(place[0]);
    point.y = read_number<double>(place[1]);
  }
};

template <>
struct form<Vem3DPoint> {
  static const char* name() { return "Vem3DPoint"; }
  static const char* key() { return "point"; }

  static json write(const Vem3DPoint& point) { return write_numbers({point.x, point.y, point.z}); }
  static void read(const node& place, Vem3DPoint& point) {
    if (place.size() != 3) place.fail("expected x, y and z");
    point.x = read_number<double>(place[0]);
    point.y = read_number<double>(place[1]);
    point.z = read_number<double>(place[2]);
  }
};

template <>
struct form<VemLine> : record_form<VemLine> {
  static const char* name() { return "VemLine"; }
  template <typename Fields, typename Record>
  static void fields(Fields& field, Record& line) {
    field("start", line.start)("end", line.end);
  }
};

template <>
struct form<VemCircle> : record_form<VemCircle> {
  static const char* name() { return "VemCircle"; }
  template <typename Fields, typename Record>
  static void fields(Fields& field, Record& circle) {
    field("center", circle.center)("radius", circle.radius);
  }
};

template <>
struct form<VemContour> {
  static const char* name() { return "VemContour"; }
  static const char* key() { return "points"; }

  static json write(const VemContour& contour) {
    return form<VemPointArray>::write(detail::points_of<VemPointArray>(contour));
  }
  static void read(const node& place, VemContour& contour) {
    VemPointArray points;
    form<VemPointArray>::read(place, points);
    contour.FromPointArray(points);
  }
};

template <>
struct form<VemFont> : record_form<VemFont> {
  static const char* name() { return "VemFont"; }
  template <typename Fields, typename Record>
  static void fields(Fields& field, Record& font) {
    field("name", font.Name)("size", font.Size)("weight", font.Weight);
    field("flag0", font.Flag0)("flag1", font.Flag1)("flag2", font.Flag2)("flag3", font.Flag3);
  }
};

}  // namespace json_detail
}  // namespace vem

#endif  // VEM_VEM_JSON_VALUES_H_
