#ifndef VEM_VEM_JSON_VALUES_H_
#define VEM_VEM_JSON_VALUES_H_

#include <cstddef>
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
#include "vem/json_node.h"

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

template <>
struct form<VemVarArray> {
  static const char* name() { return "VemVarArray"; }
  static const char* key() { return "values"; }

  static json write(const VemVarArray& array) {
    json list = json::array();
    for (int i = 0; i < array.Length(); ++i) list.push_back(form<VemVar>::write(array[i]));
    return list;
  }
  static void read(const node& place, VemVarArray& array) {
    array.Clear();
    const std::size_t size = place.size();
    for (std::size_t i = 0; i < size; ++i) {
      VemVar value;
      form<VemVar>::read(place[i], value);
      array.Append(value);
    }
  }
};

template <>
struct form<Vem2DVarArray> : array_form<Vem2DVarArray, VemVarArray> {
  static const char* name() { return "Vem2DVarArray"; }
  static const char* key() { return "rows"; }
};

/// A point is the list of its coordinates.
template <>
struct form<VemPoint> {
  static const char* name() { return "VemPoint"; }
  static const char* key() { return "point"; }

  static json write(const VemPoint& point) {
    json list = json::array();
    list.push_back(write_number(point.x));
    list.push_back(write_number(point.y));
    return list;
  }
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

  static json write(const Vem3DPoint& point) {
    json list = json::array();
    list.push_back(write_number(point.x));
    list.push_back(write_number(point.y));
    list.push_back(write_number(point.z));
    return list;
  }
  static void read(const node& place, Vem3DPoint& point) {
    if (place.size() != 3) place.fail("expected x, y and z");
    point.x = read_number<double>(place[0]);
    point.y = read_number<double>(place[1]);
    point.z = read_number<double>(place[2]);
  }
};

template <>
struct form<VemPointArray> : array_form<VemPointArray, VemPoint> {
  static const char* name() { return "VemPointArray"; }
  static const char* key() { return "points"; }
};

template <>
struct form<Vem3DPointArray> : array_form<Vem3DPointArray, Vem3DPoint> {
  static const char* name() { return "Vem3DPointArray"; }
  static const char* key() { return "points"; }
};

template <>
struct form<VemLine> : record_form<VemLine> {
  static const char* name() { return "VemLine"; }
  template <typename Fields, typename Record>
  static void fields(Fields& field, Record& line) {
    field("start", line.start);
    field("end", line.end);
  }
};

template <>
struct form<VemCircle> : record_form<VemCircle> {
  static const char* name() { return "VemCircle"; }
  template <typename Fields, typename Record>
  static void fields(Fields& field, Record& circle) {
    field("center", circle.center);
    field("radius", circle.radius);
  }
};

template <>
struct form<VemContour> {
  static const char* name() { return "VemContour"; }
  static const char* key() { return "points"; }

  static json write(const VemContour& contour) {
    VemPointArray points;
    const_cast<VemContour&>(contour).ToPointArray(&points);  // It changes nothing of the contour.
    return form<VemPointArray>::write(points);
  }
  static void read(const node& place, VemContour& contour) {
    VemPointArray points;
    form<VemPointArray>::read(place, points);
    contour.FromPointArray(points);
  }
};

template <>
struct form<VemContourArray> : array_form<VemContourArray, VemContour> {
  static const char* name() { return "VemContourArray"; }
  static const char* key() { return "contours"; }
};

template <>
struct form<VemFont> : record_form<VemFont> {
  static const char* name() { return "VemFont"; }
  template <typename Fields, typename Record>
  static void fields(Fields& field, Record& font) {
    field("name", font.Name);
    field("size", font.Size);
    field("weight", font.Weight);
    field("flag0", font.Flag0);
    field("flag1", font.Flag1);
    field("flag2", font.Flag2);
    field("flag3", font.Flag3);
  }
};

}  // namespace json_detail
}  // namespace vem

#endif  // VEM_VEM_JSON_VALUES_H_
