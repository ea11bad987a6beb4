#ifndef VEM_VEM_SHAPES_H_
#define VEM_VEM_SHAPES_H_

#include <cstddef>
#include <limits>
#include <string>

#include "VemOverlayType.h"
#include "VemPoint.h"
#include "VemROIType.h"
#include "VemTuple.h"
#include "VemVar.h"

/// The shapes that regions of interest and overlays keep as numbers: their names, the members that
/// the numbers stand for, in stored order, and what a generator stores of them.

/// @cond
namespace vem {
namespace detail {

// What one member of a shape is, and so how it is stored and what it must be.
enum class member {
  none,
  point,          // a point, stored y before x
  point_x_first,  // a point, stored x before y
  length,         // a number above 0
  sweep,          // a number of at least 0
  number,         // any number
  rake_mode,      // an integer from 0 to 3
  spoke_mode,     // 4 or 5
  count,          // an integer of at least 2
  chain           // all points, of which there are at least 3, each stored y before x
};

// What the stored numbers of a shape must be to each other.
enum class relation {
  none,
  distinct,  // two points that differ
  ordered,   // two points, the second greater in x and in y
  nested     // after a point, two radii, the second greater
};

// Stands for the type that a class has not.
constexpr int no_type = -1;

struct shape {
  struct part {
    const char* key;
    member kind;
  };

  int roi;
  int overlay;
  const char* name;
  relation rule;
  part parts[7];
};

struct shape_list {
  const shape* begin() const { return first; }
  const shape* end() const { return first + count; }

  const shape* first;
  std::size_t count;
};

// An arc's center is stored in either order.
inline shape_list shapes() {
  typedef shape::part part;
  static constexpr part at = {"point", member::point_x_first};
  static constexpr part p1 = {"p1", member::point}, p2 = {"p2", member::point};
  static constexpr part center = {"center", member::point};
  static constexpr part center_x_first = {"center", member::point_x_first};
  static constexpr part radius = {"radius", member::length};
  static constexpr part radius1 = {"radius1", member::length},
                        radius2 = {"radius2", member::length};
  static constexpr part inner = {"inner_radius", member::length};
  static constexpr part outer = {"outer_radius", member::length};
  static constexpr part length1 = {"length1", member::length},
                        length2 = {"length2", member::length};
  static constexpr part angle = {"angle", member::number}, start = {"start_angle", member::number};
  static constexpr part sweep = {"sweep_angle", member::sweep};
  static constexpr part points = {"points", member::chain};
  static constexpr part rake = {"mode", member::rake_mode}, spoke = {"mode", member::spoke_mode};
  static constexpr part count = {"count", member::count};
  // clang-format off
  static constexpr shape all[] = {
      {VemROIPoint, VemOverlayPoint, "point", relation::none, {at}},
      {VemROILine, VemOverlayLine, "line", relation::distinct, {p1, p2}},
      {no_type, VemOverlayArrowLine, "arrow_line", relation::distinct, {p1, p2}},
      {VemROIRect1, VemOverlayRect1, "rect1", relation::ordered, {p1, p2}},
      {no_type, VemOverlayRakeRect1, "rake_rect1", relation::ordered, {p1, p2, rake, count}},
      {VemROIRect2, VemOverlayRect2, "rect2", relation::none, {center, length1, length2, angle}},
      {no_type, VemOverlayRakeRect2, "rake_rect2", relation::none,
       {center, length1, length2, angle, rake, count}},
      {VemROICircle, VemOverlayCircle, "circle", relation::none, {center, radius}},
      {VemROIEllipse, VemOverlayEllipse, "ellipse", relation::none,
       {center, radius1, radius2, angle}},
      {VemROITorus, VemOverlayTorus, "torus", relation::nested,
       {center, inner, outer, start, sweep}},
      {no_type, VemOverlaySpokeTorus, "spoke_torus", relation::nested,
       {center, inner, outer, start, sweep, spoke, count}},
      {VemROIArc, no_type, "arc", relation::none, {center, radius, start, sweep}},
      {no_type, VemOverlayArc, "arc", relation::none, {center_x_first, radius, start, sweep}},
      {VemROIPolygon, VemOverlayPolygon, "polygon", relation::none, {points}},
      {no_type, VemOverlayPolyLine, "poly_line", relation::none, {points}},
      {VemROIIrregular, VemOverlayIrregular, "irregular", relation::none, {points}}};
  // clang-format on
  return {all, sizeof all / sizeof all[0]};
}

// The shape of a type, which is `&shape::roi` or `&shape::overlay`; null where it is none.
inline const shape* find_shape(int shape::*type_of, int type) {
  for (const shape& s : shapes()) {
    if (s.*type_of == type) return &s;
  }
  return nullptr;
}
inline const shape* find_shape(int shape::*type_of, const std::string& name) {
  for (const shape& s : shapes()) {
    if (s.*type_of != no_type && name == s.name) return &s;
  }
  return nullptr;
}

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

// The numbers that a member is stored as; a chain may be more.
inline int stored_count(member kind) { return kind == member::chain ? 6 : is_point(kind) ? 2 : 1; }

// The point that a member is, from its first number on.
inline VemPoint stored_point(member kind, const VemVarArray& numbers, int index) {
  const double first = numbers[index].D();
  const double second = numbers[index + 1].D();
  return kind == member::point_x_first ? VemPoint(first, second) : VemPoint(second, first);
}

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

// Whether the numbers are what the generator of the shape stores.
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

}  // namespace detail
}  // namespace vem
/// @endcond

#endif  // VEM_VEM_SHAPES_H_
