#ifndef VEM_VEM_JSON_SHAPES_H_
#define VEM_VEM_JSON_SHAPES_H_

#include <cstddef>
#include <limits>
#include <stdexcept>
#include <string>

#include "IVemROIPara.h"
#include "VemOverlayType.h"
#include "VemPoint.h"
#include "VemROI.h"
#include "VemROIArray.h"
#include "VemROIType.h"
#include "VemTuple.h"
#include "VemVar.h"
#include "vem/json_node.h"
#include "vem/json_values.h"
#include "vem/parts.h"

/// How shapes told by numbers stand in JSON: those of regions of interest, and those that overlays
/// share with them.

namespace vem {
namespace json_detail {

/// What one member of a shape is, and so how it is stored and what it must be.
enum class member {
  none,
  point,          ///< a point, stored y before x
  point_x_first,  ///< a point, stored x before y
  length,         ///< a number above 0
  sweep,          ///< a number of at least 0
  number,         ///< any number
  rake_mode,      ///< an integer from 0 to 3
  spoke_mode,     ///< 4 or 5
  count,          ///< an integer of at least 2
  chain           ///< all points, of which there are at least 3, each stored y before x
};

/// What the stored numbers of a shape must be to each other.
enum class relation {
  none,
  distinct,  ///< two points that differ
  ordered,   ///< two points, the second greater in x and in y
  nested     ///< after a point, two radii, the second greater
};

/// A shape by numbers: its type, the name of that in a document, and its members in stored order.
struct shape {
  struct part {
    const char* key;
    member kind;
  };
  static constexpr std::size_t most_parts = 7;

  int type;
  const char* name;
  relation rule;
  part parts[most_parts];
};

struct shape_list {
  const shape* begin() const { return first; }
  const shape* end() const { return first + count; }
  const shape* find(int type) const {
    for (const shape& s : *this) {
      if (s.type == type) return &s;
    }
    return nullptr;
  }
  const shape* find(const std::string& name) const {
    for (const shape& s : *this) {
      if (name == s.name) return &s;
    }
    return nullptr;
  }

  const shape* first;
  std::size_t count;
};

inline shape_list roi_shapes() {
  static const shape kShapes[] = {
      {VemROIPoint, "point", relation::none, {{"point", member::point_x_first}}},
      {VemROIRect1, "rect1", relation::ordered, {{"p1", member::point}, {"p2", member::point}}},
      {VemROIRect2,
       "rect2",
       relation::none,
       {{"center", member::point},
        {"length1", member::length},
        {"length2", member::length},
        {"angle", member::number}}},
      {VemROICircle,
       "circle",
       relation::none,
       {{"center", member::point}, {"radius", member::length}}},
      {VemROIEllipse,
       "ellipse",
       relation::none,
       {{"center", member::point},
        {"radius1", member::length},
        {"radius2", member::length},
        {"angle", member::number}}},
      {VemROITorus,
       "torus",
       relation::nested,
       {{"center", member::point},
        {"inner_radius", member::length},
        {"outer_radius", member::length},
        {"start_angle", member::number},
        {"sweep_angle", member::sweep}}},
      {VemROIArc,
       "arc",
       relation::none,
       {{"center", member::point},
        {"radius", member::length},
        {"start_angle", member::number},
        {"sweep_angle", member::sweep}}},
      {VemROILine, "line", relation::distinct, {{"p1", member::point}, {"p2", member::point}}},
      {VemROIPolygon, "polygon", relation::none, {{"points", member::chain}}},
      {VemROIIrregular, "irregular", relation::none, {{"points", member::chain}}}};
  return {kShapes, sizeof kShapes / sizeof kShapes[0]};
}

inline shape_list overlay_shapes() {
  static const shape kShapes[] = {
      {VemOverlayPoint, "point", relation::none, {{"point", member::point_x_first}}},
      {VemOverlayArrowLine,
       "arrow_line",
       relation::distinct,
       {{"p1", member::point}, {"p2", member::point}}},
      {VemOverlayLine, "line", relation::distinct, {{"p1", member::point}, {"p2", member::point}}},
      {VemOverlayRect1, "rect1", relation::ordered, {{"p1", member::point}, {"p2", member::point}}},
      {VemOverlayRakeRect1,
       "rake_rect1",
       relation::ordered,
       {{"p1", member::point},
        {"p2", member::point},
        {"mode", member::rake_mode},
        {"count", member::count}}},
      {VemOverlayCircle,
       "circle",
       relation::none,
       {{"center", member::point}, {"radius", member::length}}},
      {VemOverlayEllipse,
       "ellipse",
       relation::none,
       {{"center", member::point},
        {"radius1", member::length},
        {"radius2", member::length},
        {"angle", member::number}}},
      {VemOverlayPolygon, "polygon", relation::none, {{"points", member::chain}}},
      {VemOverlayPolyLine, "poly_line", relation::none, {{"points", member::chain}}},
      {VemOverlayRect2,
       "rect2",
       relation::none,
       {{"center", member::point},
        {"length1", member::length},
        {"length2", member::length},
        {"angle", member::number}}},
      {VemOverlayRakeRect2,
       "rake_rect2",
       relation::none,
       {{"center", member::point},
        {"length1", member::length},
        {"length2", member::length},
        {"angle", member::number},
        {"mode", member::rake_mode},
        {"count", member::count}}},
      {VemOverlayTorus,
       "torus",
       relation::nested,
       {{"center", member::point},
        {"inner_radius", member::length},
        {"outer_radius", member::length},
        {"start_angle", member::number},
        {"sweep_angle", member::sweep}}},
      {VemOverlaySpokeTorus,
       "spoke_torus",
       relation::nested,
       {{"center", member::point},
        {"inner_radius", member::length},
        {"outer_radius", member::length},
        {"start_angle", member::number},
        {"sweep_angle", member::sweep},
        {"mode", member::spoke_mode},
        {"count", member::count}}},
      {VemOverlayArc,
       "arc",
       relation::none,
       {{"center", member::point_x_first},
        {"radius", member::length},
        {"start_angle", member::number},
        {"sweep_angle", member::sweep}}},
      {VemOverlayIrregular, "irregular", relation::none, {{"points", member::chain}}}};
  return {kShapes, sizeof kShapes / sizeof kShapes[0]};
}

// --- From numbers to members ---

inline bool is_integer(member kind) {
  return kind == member::rake_mode || kind == member::spoke_mode || kind == member::count;
}
inline bool is_point(member kind) { return kind == member::point || kind == member::point_x_first; }
inline int least(member kind) {
  return kind == member::count ? 2 : kind == member::spoke_mode ? 4 : 0;
}
inline int most(member kind) {
  return kind == member::count        ? std::numeric_limits<int>::max()
         : kind == member::spoke_mode ? 5
                                      : 3;
}

/// The numbers that a member is stored as; a chain may be more.
inline int stored_count(member kind) { return kind == member::chain ? 6 : is_point(kind) ? 2 : 1; }

inline bool fits(member kind, const VemVar& value) {
  if (is_integer(kind)) {
    return value.ValType() == VemVarLong && value.L() >= least(kind) && value.L() <= most(kind);
  }
  if (value.ValType() != VemVarDouble) return false;
  if (kind == member::length) return value.D() > 0;
  return kind != member::sweep || value.D() >= 0;
}

inline bool fits(relation rule, const VemVarArray& numbers) {
  switch (rule) {
    case relation::distinct:
      return numbers[0].D() != numbers[2].D() || numbers[1].D() != numbers[3].D();
    case relation::ordered:
      return numbers[2].D() > numbers[0].D() && numbers[3].D() > numbers[1].D();
    case relation::nested:
      return numbers[3].D() > numbers[2].D();
    case relation::none:
      break;
  }
  return true;
}

/// Whether the numbers are what the generator of the shape stores.
inline bool fits(const shape& s, const VemVarArray& numbers) {
  int next = 0;
  for (const shape::part& part : s.parts) {
    if (part.kind == member::none) break;
    int count = stored_count(part.kind);
    if (part.kind == member::chain && numbers.Length() > count && numbers.Length() % 2 == 0) {
      count = numbers.Length();
    }
    if (next + count > numbers.Length()) return false;
    for (; count > 0; --count) {
      if (!fits(part.kind, numbers[next++])) return false;
    }
  }
  return next == numbers.Length() && fits(s.rule, numbers);
}

inline VemPoint stored_point(const VemVarArray& numbers, int index) {
  return VemPoint(numbers[index + 1].D(), numbers[index].D());
}

inline json write_chain(const VemVarArray& numbers) {
  json list = json::array();
  for (int i = 0; i < numbers.Length(); i += 2) {
    list.push_back(form<VemPoint>::write(stored_point(numbers, i)));
  }
  return list;
}

inline json write_member(member kind, const VemVarArray& numbers, int index) {
  switch (kind) {
    case member::chain:
      return write_chain(numbers);
    case member::point:
      return form<VemPoint>::write(stored_point(numbers, index));
    case member::point_x_first:
      return form<VemPoint>::write(VemPoint(numbers[index].D(), numbers[index + 1].D()));
    default:
      return is_integer(kind) ? json(numbers[index].L()) : write_number(numbers[index].D());
  }
}

/// The members of a shape; numbers that no generator stores are written as they are.
inline void write_shape(const shape& s, const VemVarArray& numbers, json& object) {
  if (!fits(s, numbers)) {
    object["numbers"] = form<VemVarArray>::write(numbers);
    return;
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

/// Reads the members of a shape, which must pass its generator's test, or its numbers as they are.
inline void read_shape(const node& place, const shape& s, object_reader& object,
                       VemVarArray& numbers) {
  numbers.Clear();
  if (object.has("numbers")) return form<VemVarArray>::read(object["numbers"], numbers);
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
    } else if (const shape* s = roi_shapes().find(from.Type)) {
      object["type"] = s->name;
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
      const shape* s = roi_shapes().find(type);
      if (s == nullptr) place.fail("type", "is no type of a region of interest");
      read_shape(place, *s, object, to.Params);
      to.Type = static_cast<VemROIType>(s->type);
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

template <>
struct form<VemROIArray> {
  static const char* name() { return "VemROIArray"; }
  static const char* key() { return "rois"; }

  // Through operator[], which gives masks whole.
  static json write(const VemROIArray& array) {
    json list = json::array();
    for (int i = 0; i < array.Length(); ++i) list.push_back(form<VemROI>::write(array[i]));
    return list;
  }
  static void read(const node& place, VemROIArray& array) {
    array_form<VemROIArray, VemROI>::read(place, array);
  }
};

}  // namespace json_detail
}  // namespace vem

#endif  // VEM_VEM_JSON_SHAPES_H_
