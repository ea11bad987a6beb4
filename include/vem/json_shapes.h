#ifndef VEM_VEM_JSON_SHAPES_H_
#define VEM_VEM_JSON_SHAPES_H_

#include <cstddef>
#include <stdexcept>
#include <string>

#include "IVemROIPara.h"
#include "VemPoint.h"
#include "VemROI.h"
#include "VemROIArray.h"
#include "VemROIType.h"
#include "VemTuple.h"
#include "VemVar.h"
#include "vem/json_forms.h"
#include "vem/json_node.h"
#include "vem/json_numbers.h"
#include "vem/json_values.h"
#include "vem/parts.h"
#include "vem/shapes.h"

/// How shapes told by numbers stand in JSON, and with them regions of interest.

namespace vem {
namespace json_detail {

using detail::find_shape;
using detail::fits;
using detail::is_integer;
using detail::is_point;
using detail::least;
using detail::member;
using detail::most;
using detail::relation;
using detail::shape;
using detail::stored_count;
using detail::stored_point;

// --- From numbers to members ---

inline json write_chain(const VemVarArray& numbers) {
  json list = json::array();
  for (int i = 0; i < numbers.Length(); i += 2) {
    list.push_back(form<VemPoint>::write(stored_point(member::chain, numbers, i)));
  }
  return list;
}

inline json write_member(member kind, const VemVarArray& numbers, int index) {
  if (kind == member::chain) return write_chain(numbers);
  if (is_point(kind)) return form<VemPoint>::write(stored_point(kind, numbers, index));
  return is_integer(kind) ? json(numbers[index].L()) : write_number(numbers[index].D());
}

/// The members of a shape. One that has lost its numbers is written as an empty list of them.
inline void write_shape(const shape& s, const VemVarArray& numbers, json& object) {
  object["type"] = s.name;
  if (numbers.Length() == 0) {
    object["numbers"] = json::array();
    return;
  }
  if (!fits(s, numbers)) {
    throw std::invalid_argument(std::string("vem::to_json: numbers that no ") + s.name + " has");
  }
  int next = 0;
  for (const shape::part& part : s.parts) {
    if (part.kind == member::none) break;
    object[part.key] = write_member(part.kind, numbers, next);
    next += stored_count(part.kind);
  }
}

// --- From members to numbers ---

inline void append_point(VemVarArray& numbers, double first, double second) {
  numbers.Append(VemVar(first));
  numbers.Append(VemVar(second));
}

inline void read_chain(const node& place, VemVarArray& numbers) {
  const std::size_t size = place.size();
  if (size < 3) place.fail("expected at least 3 points");
  for (std::size_t i = 0; i < size; ++i) {
    VemPoint point;
    form<VemPoint>::read(place[i], point);
    append_point(numbers, point.y, point.x);
  }
}

inline void read_member(const node& place, member kind, VemVarArray& numbers) {
  if (kind == member::chain) {
    read_chain(place, numbers);
  } else if (is_point(kind)) {
    VemPoint point;
    form<VemPoint>::read(place, point);
    if (kind == member::point) {
      append_point(numbers, point.y, point.x);
    } else {
      append_point(numbers, point.x, point.y);
    }
  } else if (is_integer(kind)) {
    numbers.Append(VemVar(read_integer(place, least(kind), most(kind))));
  } else {
    const VemVar value(read_number<double>(place));
    if (!fits(kind, value)) {
      place.fail(kind == member::length ? "expected a number above 0"
                                        : "expected a number of at least 0");
    }
    numbers.Append(value);
  }
}

inline void test_relation(const node& place, const shape& s, const VemVarArray& numbers) {
  if (fits(s.rule, numbers)) return;
  switch (s.rule) {
    case relation::distinct:
      place.fail("p2", "expected a point other than p1");
    case relation::ordered:
      place.fail("p2", "expected a point greater than p1 in x and in y");
    default:
      place.fail("outer_radius", "expected a radius above the inner one");
  }
}

/// Reads the members of a shape, which must pass its generator's test; or its numbers as they are
/// stored, which must, too, unless there are none.
inline void read_shape(const node& place, const shape& s, object_reader& object,
                       VemVarArray& numbers) {
  numbers.Clear();
  if (object.has("numbers")) {
    const node list = object["numbers"];
    form<VemVarArray>::read(list, numbers);
    if (numbers.Length() > 0 && !fits(s, numbers)) {
      list.fail(std::string("expected the numbers of a shape \"") + s.name + "\", or none");
    }
    return;
  }
  for (const shape::part& part : s.parts) {
    if (part.kind == member::none) break;
    read_member(object[part.key], part.kind, numbers);
  }
  test_relation(place, s, numbers);
}

inline std::string read_type(const node& place) {
  if (!place.value().is_string()) place.fail("expected the name of a type");
  return place.value().get<std::string>();
}

// --- Runs ---

/// Three lists of integers, side by side.
template <typename Runs>
void write_runs(const Runs& runs, json& object) {
  object["width"] = runs.Width;
  object["height"] = runs.Height;
  object["rows"] = form<VemVarArray>::write(runs.Rows);
  object["first_columns"] = form<VemVarArray>::write(runs.FirstColumns);
  object["last_columns"] = form<VemVarArray>::write(runs.LastColumns);
}

template <typename Runs>
void read_runs(object_reader& object, Runs& runs) {
  runs.Width = read_integer<int>(object["width"]);
  runs.Height = read_integer<int>(object["height"]);
  form<VemVarArray>::read(object["rows"], runs.Rows);
  form<VemVarArray>::read(object["first_columns"], runs.FirstColumns);
  form<VemVarArray>::read(object["last_columns"], runs.LastColumns);
}

// --- Regions of interest ---

/// A region of interest is its "type" and the members of that shape, or the runs of a mask.
template <>
struct form<VemROI> {
  static const char* name() { return "VemROI"; }
  static const char* key() { return nullptr; }

  static json write(const VemROI& roi) {
    const IVemROIPara& from = parts(roi);
    json object = json::object();
    if (from.Type == VemROINone) {
      object["type"] = "none";
    } else if (from.Type == VemROIMask) {
      object["type"] = "mask";
      write_runs(from, object);
    } else if (const shape* s = find_shape(&shape::roi, from.Type)) {
      write_shape(*s, from.Params, object);
    } else {
      throw std::invalid_argument("vem::to_json: a region of interest of no known type");
    }
    return object;
  }

  static void read(const node& place, VemROI& roi) {
    object_reader object(place);
    const std::string type = read_type(object["type"]);
    IVemROIPara to;
    to.Width = 0;
    to.Height = 0;
    if (type == "mask") {
      read_mask(place, object, to);
    } else if (type != "none") {
      const shape* s = find_shape(&shape::roi, type);
      if (s == nullptr) place.fail("type", "is no type of a region of interest");
      read_shape(place, *s, object, to.Params);
      to.Type = static_cast<VemROIType>(s->roi);
    }
    object.finish();
    parts(roi) = to;
  }

 private:
  static void read_mask(const node& place, object_reader& object, IVemROIPara& to) {
    read_runs(object, to);
    to.Type = VemROIMask;
    if (to.Width < 2) place.fail("width", "expected an integer of at least 2");
    if (to.Height < 2) place.fail("height", "expected an integer of at least 2");
    if (to.FirstColumns.Length() != to.Rows.Length()) {
      place.fail("first_columns", "expected as many as there are rows");
    }
    if (to.LastColumns.Length() != to.Rows.Length()) {
      place.fail("last_columns", "expected as many as there are rows");
    }
  }
};

inline list_names names_of(list_of<VemROIArray>) { return {"VemROIArray", "rois"}; }

}  // namespace json_detail
}  // namespace vem

#endif  // VEM_VEM_JSON_SHAPES_H_
