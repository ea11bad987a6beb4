#ifndef VEM_VEM_MAKE_DRAFTS_H_
#define VEM_VEM_MAKE_DRAFTS_H_

#include <cstring>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#if __cplusplus >= 201703L
#include <optional>
#endif

#include "VemContourArray.h"
#include "VemFont.h"
#include "VemLine.h"
#include "VemOverlay.h"
#include "VemOverlayType.h"
#include "VemPoint.h"
#include "VemPointArray.h"
#include "VemROI.h"
#include "VemROIType.h"
#include "VemTuple.h"
#include "vem/value.h"

/// What vem/make.h makes shapes of: for each shape its arguments, why they are refused, and the
/// generator that takes them.

/// @cond
namespace vem {
namespace detail {

inline bool has_shape(const VemROI& roi) { return roi.ROIType() != VemROINone; }
inline bool has_shape(VemOverlay& overlay) { return overlay.OverlayType() != VemOverlayNone; }
inline bool has_shape(const VemLine&) { return true; }
inline bool has_shape(const VemFont&) { return true; }

// Reasons, each empty where there is none. Not above also holds for what is no number.
inline std::string unless(bool holds, const std::string& reason) {
  return holds ? std::string() : reason;
}
inline std::string unless_above_zero(const char* name, double number) {
  return unless(number > 0, std::string(name) + " is " + digits(number) + ", not above 0");
}
inline std::string unless_sweep(double sweep) {
  return unless(sweep >= 0, "sweep_angle is " + digits(sweep) + ", not 0 or above");
}
inline std::string unless_between(const char* name, int number, int least, int most) {
  return unless(number >= least && number <= most,
                std::string(name) + " is " + std::to_string(number) + ", not " +
                    std::to_string(least) + " to " + std::to_string(most));
}
inline std::string unless_count(int count) {
  return unless(count >= 2, "count is " + std::to_string(count) + ", not 2 or above");
}
inline std::string unless_whole(const char* name, text_span text) {
  if (text.bytes == nullptr) return std::string("the ") + name + " is a null pointer";
  return unless(std::memchr(text.bytes, '\0', text.length) == nullptr,
                std::string("the ") + name + " has a zero byte within");
}
inline std::string first_of(const std::string& a, const std::string& b,
                            const std::string& c = std::string(),
                            const std::string& d = std::string()) {
  return !a.empty() ? a : !b.empty() ? b : !c.empty() ? c : d;
}

inline std::string shown(const VemPoint& point) {
  return "(" + digits(point.x) + ", " + digits(point.y) + ")";
}

template <class Shape>
struct is_shape : std::integral_constant<bool, std::is_same<Shape, VemROI>::value ||
                                                   std::is_same<Shape, VemOverlay>::value> {};

struct point_draft {
  VemPoint at;
  static const char* name() { return "point"; }
  std::string refusal() const { return std::string(); }
  template <class Shape>
  if_true<is_shape<Shape>::value> generate(Shape& shape) {
    shape.GenPoint(at);
  }
};

struct ends_draft {
  VemPoint p1, p2;
  std::string refusal() const {
    const bool same = p1.x >= p2.x && p1.x <= p2.x && p1.y >= p2.y && p1.y <= p2.y;
    return unless(!same, "both points are " + shown(p1));
  }
};
struct line_draft {
  ends_draft ends;
  static const char* name() { return "line"; }
  std::string refusal() const { return ends.refusal(); }
  template <class Shape>
  if_true<is_shape<Shape>::value> generate(Shape& shape) {
    shape.GenLine(ends.p1, ends.p2);
  }
  void generate(VemLine& line) { line = VemLine(ends.p1, ends.p2); }
};
struct arrow_line_draft {
  ends_draft ends;
  static const char* name() { return "arrow_line"; }
  std::string refusal() const { return ends.refusal(); }
  void generate(VemOverlay& shape) { shape.GenArrowLine(ends.p1, ends.p2); }
};

struct corners_draft {
  VemPoint p1, p2;
  std::string refusal() const {
    return unless(p2.x > p1.x && p2.y > p1.y,
                  "p2 " + shown(p2) + " is not greater than p1 " + shown(p1) + " in x and in y");
  }
};
struct rect1_draft {
  corners_draft corners;
  static const char* name() { return "rect1"; }
  std::string refusal() const { return corners.refusal(); }
  template <class Shape>
  if_true<is_shape<Shape>::value> generate(Shape& shape) {
    shape.GenRect1(corners.p1, corners.p2);
  }
};
struct rake_rect1_draft {
  corners_draft corners;
  int mode, count;
  static const char* name() { return "rake_rect1"; }
  std::string refusal() const {
    return first_of(corners.refusal(), unless_between("mode", mode, 0, 3), unless_count(count));
  }
  void generate(VemOverlay& shape) { shape.GenRakeRect1(corners.p1, corners.p2, mode, count); }
};

struct circle_draft {
  VemPoint center;
  double radius;
  static const char* name() { return "circle"; }
  std::string refusal() const { return unless_above_zero("radius", radius); }
  template <class Shape>
  if_true<is_shape<Shape>::value> generate(Shape& shape) {
    shape.GenCircle(center, radius);
  }
};

struct ellipse_draft {
  VemPoint center;
  double radius1, radius2, angle;
  static const char* name() { return "ellipse"; }
  std::string refusal() const {
    return first_of(unless_above_zero("radius1", radius1), unless_above_zero("radius2", radius2));
  }
  template <class Shape>
  if_true<is_shape<Shape>::value> generate(Shape& shape) {
    shape.GenEllipse(center, radius1, radius2, angle);
  }
};

struct rect2_draft {
  VemPoint center;
  double length1, length2, angle;
  static const char* name() { return "rect2"; }
  std::string refusal() const {
    return first_of(unless_above_zero("length1", length1), unless_above_zero("length2", length2));
  }
  template <class Shape>
  if_true<is_shape<Shape>::value> generate(Shape& shape) {
    shape.GenRect2(center, length1, length2, angle);
  }
};
struct rake_rect2_draft {
  rect2_draft rect;
  int mode, count;
  static const char* name() { return "rake_rect2"; }
  std::string refusal() const {
    return first_of(rect.refusal(), unless_between("mode", mode, 0, 3), unless_count(count));
  }
  void generate(VemOverlay& shape) {
    shape.GenRakeRect2(rect.center, rect.length1, rect.length2, rect.angle, mode, count);
  }
};

struct torus_draft {
  VemPoint center;
  double inner_radius, outer_radius, start_angle, sweep_angle;
  static const char* name() { return "torus"; }
  std::string refusal() const {
    return first_of(unless_above_zero("inner_radius", inner_radius),
                    unless_above_zero("outer_radius", outer_radius),
                    unless(outer_radius > inner_radius, "outer_radius " + digits(outer_radius) +
                                                            " is not greater than inner_radius " +
                                                            digits(inner_radius)),
                    unless_sweep(sweep_angle));
  }
  template <class Shape>
  if_true<is_shape<Shape>::value> generate(Shape& shape) {
    shape.GenTorus(center, inner_radius, outer_radius, start_angle, sweep_angle);
  }
};
struct spoke_torus_draft {
  torus_draft torus;
  int mode, count;
  static const char* name() { return "spoke_torus"; }
  std::string refusal() const {
    return first_of(torus.refusal(), unless_between("mode", mode, 4, 5), unless_count(count));
  }
  void generate(VemOverlay& shape) {
    shape.GenSpokeTorus(torus.center, torus.inner_radius, torus.outer_radius, torus.start_angle,
                        torus.sweep_angle, mode, count);
  }
};

struct arc_draft {
  VemPoint center;
  double radius, start_angle, sweep_angle;
  static const char* name() { return "arc"; }
  std::string refusal() const {
    return first_of(unless_above_zero("radius", radius), unless_sweep(sweep_angle));
  }
  template <class Shape>
  if_true<is_shape<Shape>::value> generate(Shape& shape) {
    shape.GenArc(center, radius, start_angle, sweep_angle);
  }
};

struct chain_draft {
  VemPointArray points;
  std::string refusal() const {
    return unless(points.Length() >= 3,
                  "there are " + std::to_string(points.Length()) + " points, not 3 or more");
  }
};
struct polygon_draft : chain_draft {
  explicit polygon_draft(const VemPointArray& list) : chain_draft{list} {}
  static const char* name() { return "polygon"; }
  template <class Shape>
  if_true<is_shape<Shape>::value> generate(Shape& shape) {
    shape.GenPolygon(points);
  }
};
struct irregular_draft : chain_draft {
  explicit irregular_draft(const VemPointArray& list) : chain_draft{list} {}
  static const char* name() { return "irregular"; }
  template <class Shape>
  if_true<is_shape<Shape>::value> generate(Shape& shape) {
    shape.GenIrregular(points);
  }
};
struct poly_line_draft : chain_draft {
  explicit poly_line_draft(const VemPointArray& list) : chain_draft{list} {}
  static const char* name() { return "poly_line"; }
  void generate(VemOverlay& shape) { shape.GenPolyLine(points); }
};

struct text_draft {
  VemPoint at;
  text_span text;
  VemFont font;
  static const char* name() { return "text"; }
  std::string refusal() const { return unless_whole("text", text); }
  void generate(VemOverlay& shape) { shape.GenText(at, text.bytes, font); }
};

struct font_draft {
  std::string face;
  long size, weight;
  static const char* name() { return "font"; }
  std::string refusal() const { return unless_whole("name", span_of(face)); }
  void generate(VemFont& font) {
    VemVar text(face.c_str());
    font = VemFont(text, size);
    font.Weight = weight;
  }
};

inline std::string unless_canvas(int width, int height, int least) {
  return unless(width >= least && height >= least, "the canvas is " + std::to_string(width) +
                                                       " by " + std::to_string(height) + ", not " +
                                                       std::to_string(least) + " by " +
                                                       std::to_string(least) + " or larger");
}

// Runs on a canvas, as a region and a mask take them.
struct runs_draft {
  VemVarArray rows, first_columns, last_columns;
  int width, height;
  std::string refusal(int least) const {
    return first_of(
        unless(rows.Length() == first_columns.Length() && rows.Length() == last_columns.Length(),
               "there are " + std::to_string(rows.Length()) + " rows, " +
                   std::to_string(first_columns.Length()) + " first columns and " +
                   std::to_string(last_columns.Length()) + " last columns"),
        unless_canvas(width, height, least));
  }
};

struct mask_draft {
  runs_draft runs;
  static const char* name() { return "mask"; }
  std::string refusal() const { return runs.refusal(2); }
  void generate(VemROI& roi) {
    roi.GenMask(runs.rows, runs.first_columns, runs.last_columns, runs.width, runs.height);
  }
};

struct contour_mask_draft {
  VemContourArray contours;
  int width, height;
  static const char* name() { return "mask"; }
  std::string refusal() const { return unless_canvas(width, height, 2); }
  void generate(VemROI& roi) { roi.GenMask(contours, width, height); }
};

// Whether a draft makes a shape of this type.
template <class Draft, class Shape>
struct makes {
  template <class D>
  static auto test(Shape& shape) -> decltype(std::declval<D&>().generate(shape), std::true_type());
  template <class D>
  static std::false_type test(...);
  static const bool value = decltype(test<Draft>(std::declval<Shape&>()))::value;
};

// The shape that a draft makes. Where it is refused, `reason` tells why.
template <class Shape, class Draft>
Shape shape_of(Draft& draft, std::string* reason) {
  static_assert(makes<Draft, Shape>::value,
                "vem: a shape is made as a VemROI or a VemOverlay, a line as a VemLine too");
  Shape shape;
  *reason = draft.refusal();
  if (!reason->empty()) return shape;
  draft.generate(shape);
  if (!has_shape(shape)) *reason = "refused";
  return shape;
}

// What `code` makes; where that leaves a reason, it is thrown.
template <class Result, class Code>
Result made_or_throw(const char* name, Code code) {
  std::string reason;
  Result result = code(&reason);
  if (!reason.empty()) throw std::invalid_argument(std::string("vem::") + name + ": " + reason);
  return result;
}
template <class Shape, class Draft>
Shape made_shape(Draft draft) {
  return made_or_throw<Shape>(draft.name(),
                              [&](std::string* reason) { return shape_of<Shape>(draft, reason); });
}

#if __cplusplus >= 201703L
// What `code` makes, or nothing where that leaves a reason.
template <class Code>
auto made_or_nothing(Code code) -> std::optional<decltype(code(nullptr))> {
  std::string reason;
  auto result = code(&reason);
  if (!reason.empty()) return std::nullopt;
  return result;
}
template <class Shape, class Draft>
std::optional<Shape> tried_shape(Draft draft) {
  return made_or_nothing([&](std::string* reason) { return shape_of<Shape>(draft, reason); });
}
#endif

}  // namespace detail
}  // namespace vem
/// @endcond

#endif  // VEM_VEM_MAKE_DRAFTS_H_
