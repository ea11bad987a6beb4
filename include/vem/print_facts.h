#ifndef VEM_VEM_PRINT_FACTS_H_
#define VEM_VEM_PRINT_FACTS_H_

#include <cstddef>
#include <cstring>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "Vem3DPoint.h"
#include "VemContour.h"
#include "VemFont.h"
#include "VemImage.h"
#include "VemOverlay.h"
#include "VemPoint.h"
#include "VemPointArray.h"
#include "VemROI.h"
#include "VemRegion.h"
#include "VemTuple.h"
#include "vem/make_regions.h"
#include "vem/range.h"
#include "vem/value.h"

/// What can be read of a region, a region of interest and an overlay, in one form: it is printed,
/// compared and hashed from here.

/// @cond
namespace vem {
namespace detail {

// A number, or the two of a point, under the name that it bears.
struct fact {
  const char* name;
  bool is_point;
  double first, second;
};

struct facts {
  int type;
  const char* kind;
  std::vector<fact> numbers;
  bool is_chain;
  std::vector<VemPoint> points;
  bool has_runs;
  runs_draft runs;
  VemVarArray values;
  VemImage image;
  std::vector<long> style;

  explicit facts(int kind_of_shape)
      : type(kind_of_shape),
        kind("none"),
        is_chain(false),
        has_runs(false),
        runs(runs_draft{VemVarArray(), VemVarArray(), VemVarArray(), 0, 0}) {}

  void put(const char* name, double number) { numbers.push_back(fact{name, false, number, 0}); }
  void put(const char* name, const VemPoint& at) {
    numbers.push_back(fact{name, true, at.x, at.y});
  }
  void put(const VemPointArray& chain) {
    is_chain = true;
    points = to_vector(chain);
  }
};

// The readers of the numbers, which are the same for both handles. The overlay's are not const, but
// change nothing.
template <class Shape>
void read_corners(Shape& shape, facts& found) {
  VemPoint p1, p2;
  found.kind = "rect1";
  shape.GetRect1(&p1, &p2);
  found.put("p1", p1);
  found.put("p2", p2);
}
template <class Shape>
void read_line(Shape& shape, facts& found) {
  VemPoint p1, p2;
  found.kind = "line";
  shape.GetLine(&p1, &p2);
  found.put("p1", p1);
  found.put("p2", p2);
}
template <class Shape>
void read_point(Shape& shape, facts& found) {
  VemPoint at;
  found.kind = "point";
  shape.GetPoint(&at);
  found.put("at", at);
}
template <class Shape>
void read_circle(Shape& shape, facts& found) {
  VemPoint center;
  double radius = 0;
  found.kind = "circle";
  shape.GetCircle(&center, &radius);
  found.put("center", center);
  found.put("radius", radius);
}
template <class Shape>
void read_ellipse(Shape& shape, facts& found) {
  VemPoint center;
  double radius1 = 0, radius2 = 0, angle = 0;
  found.kind = "ellipse";
  shape.GetEllipse(&center, &radius1, &radius2, &angle);
  found.put("center", center);
  found.put("radius1", radius1);
  found.put("radius2", radius2);
  found.put("angle", angle);
}
inline void put_rect2(const VemPoint& center, double length1, double length2, double angle,
                      facts& found) {
  found.put("center", center);
  found.put("length1", length1);
  found.put("length2", length2);
  found.put("angle", angle);
}
template <class Shape>
void read_rect2(Shape& shape, facts& found) {
  VemPoint center;
  double length1 = 0, length2 = 0, angle = 0;
  found.kind = "rect2";
  shape.GetRect2(&center, &length1, &length2, &angle);
  put_rect2(center, length1, length2, angle, found);
}
inline void put_torus(const VemPoint& center, double inner, double outer, double start,
                      double sweep, facts& found) {
  found.put("center", center);
  found.put("inner_radius", inner);
  found.put("outer_radius", outer);
  found.put("start_angle", start);
  found.put("sweep_angle", sweep);
}
template <class Shape>
void read_torus(Shape& shape, facts& found) {
  VemPoint center;
  double inner = 0, outer = 0, start = 0, sweep = 0;
  found.kind = "torus";
  shape.GetTorus(&center, &inner, &outer, &start, &sweep);
  put_torus(center, inner, outer, start, sweep, found);
}
template <class Shape>
void read_arc(Shape& shape, facts& found) {
  VemPoint center;
  double radius = 0, start = 0, sweep = 0;
  found.kind = "arc";
  shape.GetArc(&center, &radius, &start, &sweep);
  found.put("center", center);
  found.put("radius", radius);
  found.put("start_angle", start);
  found.put("sweep_angle", sweep);
}
template <class Shape>
void read_polygon(Shape& shape, facts& found) {
  VemPointArray points;
  found.kind = "polygon";
  shape.GetPolygon(&points);
  found.put(points);
}
template <class Shape>
void read_irregular(Shape& shape, facts& found) {
  VemPointArray points;
  found.kind = "irregular";
  shape.GetIrregular(&points);
  found.put(points);
}

inline facts facts_of(const VemROI& roi) {
  VemROI& shape = const_cast<VemROI&>(roi);
  facts found(roi.ROIType());
  switch (roi.ROIType()) {
    case VemROIRect1:
      read_corners(shape, found);
      break;
    case VemROICircle:
      read_circle(shape, found);
      break;
    case VemROITorus:
      read_torus(shape, found);
      break;
    case VemROINone:
      break;
    case VemROIPolygon:
      read_polygon(shape, found);
      break;
    case VemROIIrregular:
      read_irregular(shape, found);
      break;
    case VemROIRect2:
      read_rect2(shape, found);
      break;
    case VemROILine:
      read_line(shape, found);
      break;
    case VemROIEllipse:
      read_ellipse(shape, found);
      break;
    case VemROIArc:
      read_arc(shape, found);
      break;
    case VemROIPoint:
      read_point(shape, found);
      break;
    case VemROIMask:
      found.kind = "mask";
      found.has_runs = true;
      roi.GetMask(&found.runs.rows, &found.runs.first_columns, &found.runs.last_columns,
                  &found.runs.width, &found.runs.height);
      break;
  }
  return found;
}

inline facts facts_of(const VemRegion& region) {
  facts found(0);
  found.kind = "region";
  found.has_runs = true;
  found.runs = runs_of_region(region);
  return found;
}

inline void read_text(VemOverlay& overlay, facts& found) {
  VemPoint at;
  VemVar text;
  VemFont font;
  found.kind = "text";
  overlay.GetText(&at, &text, &font);
  found.put("at", at);
  found.put("size", static_cast<double>(font.Size));
  found.put("weight", static_cast<double>(font.Weight));
  found.put("flag1", font.Flag1);
  found.put("flag2", font.Flag2);
  found.put("flag3", font.Flag3);
  found.values.Append(text);
  found.values.Append(font.Name);
}

inline void read_more(VemOverlay& overlay, facts& found) {
  VemPoint p1, p2;
  VemPointArray points;
  VemRegion region;
  double a = 0, b = 0, c = 0, d = 0;
  int mode = 0, count = 0;
  switch (found.type) {
    case VemOverlayArrowLine:
      found.kind = "arrow_line";
      overlay.GetArrowLine(&p1, &p2);
      found.put("p1", p1);
      found.put("p2", p2);
      break;
    case VemOverlayRakeRect1:
      found.kind = "rake_rect1";
      overlay.GetRakeRect1(&p1, &p2, &mode, &count);
      found.put("p1", p1);
      found.put("p2", p2);
      found.put("mode", mode);
      found.put("count", count);
      break;
    case VemOverlayRakeRect2:
      found.kind = "rake_rect2";
      overlay.GetRakeRect2(&p1, &a, &b, &c, &mode, &count);
      put_rect2(p1, a, b, c, found);
      found.put("mode", mode);
      found.put("count", count);
      break;
    case VemOverlaySpokeTorus:
      found.kind = "spoke_torus";
      overlay.GetSpokeTorus(&p1, &a, &b, &c, &d, &mode, &count);
      put_torus(p1, a, b, c, d, found);
      found.put("mode", mode);
      found.put("count", count);
      break;
    case VemOverlayPolyLine:
      found.kind = "poly_line";
      overlay.GetPolyLine(&points);
      found.put(points);
      break;
    case VemOverlayText:
      read_text(overlay, found);
      break;
    case VemOverlayImage:
      found.kind = "image";
      overlay.GetImage(&p1, &found.image);
      found.put("at", p1);
      break;
    case VemOverlayRegion:
      overlay.GetRegion(&region);
      found.kind = "region";
      found.has_runs = true;
      found.runs = runs_of_region(region);
      break;
    default:
      break;
  }
}

inline facts facts_of(const VemOverlay& handle) {
  VemOverlay& overlay = const_cast<VemOverlay&>(handle);
  facts found(overlay.OverlayType());
  switch (found.type) {
    case VemOverlayPoint:
      read_point(overlay, found);
      break;
    case VemOverlayLine:
      read_line(overlay, found);
      break;
    case VemOverlayRect1:
      read_corners(overlay, found);
      break;
    case VemOverlayCircle:
      read_circle(overlay, found);
      break;
    case VemOverlayEllipse:
      read_ellipse(overlay, found);
      break;
    case VemOverlayPolygon:
      read_polygon(overlay, found);
      break;
    case VemOverlayRect2:
      read_rect2(overlay, found);
      break;
    case VemOverlayTorus:
      read_torus(overlay, found);
      break;
    case VemOverlayArc:
      read_arc(overlay, found);
      break;
    case VemOverlayIrregular:
      read_irregular(overlay, found);
      break;
    default:
      read_more(overlay, found);
      break;
  }
  found.style.resize(8);
  overlay.GetPen(&found.style[0], &found.style[1], &found.style[2], &found.style[3]);
  overlay.GetBrush(&found.style[4], &found.style[5], &found.style[6], &found.style[7]);
  return found;
}

// --- Whether they are the same ---

inline bool same(double a, double b) { return a <= b && a >= b; }
inline bool same(const VemPoint& a, const VemPoint& b) { return same(a.x, b.x) && same(a.y, b.y); }
inline bool same(const fact& a, const fact& b) {
  return same(a.first, b.first) && same(a.second, b.second);
}
// Of one kind, and nothing is nothing.
inline bool same(const VemVar& a, const VemVar& b) {
  return a.ValType() == b.ValType() && (a.ValType() == VemVarNone || a == b);
}

inline bool same(const Vem3DPoint& a, const Vem3DPoint& b) {
  return same(a.x, b.x) && same(a.y, b.y) && same(a.z, b.z);
}
inline bool same(const VemContour& a, const VemContour& b);
inline bool same(const VemRegion& a, const VemRegion& b);
inline bool same(const VemROI& a, const VemROI& b);
inline bool same(const VemOverlay& a, const VemOverlay& b);

template <class Elements>
bool same_elements(const Elements& a, const Elements& b) {
  using std::begin;
  using std::end;
  if (end(a) - begin(a) != end(b) - begin(b)) return false;
  auto other = begin(b);
  const auto last = end(a);
  for (auto i = begin(a); i != last; ++i, ++other) {
    if (!same(*i, *other)) return false;
  }
  return true;
}

inline std::size_t row_bytes(const VemImage& image) {
  static const std::size_t sizes[] = {1, 1, 2, 2, 4, 4, 8};
  return static_cast<std::size_t>(image.Width()) * static_cast<std::size_t>(image.Channels()) *
         sizes[image.BitDepth() % 7];
}
inline const unsigned char* row_of(const VemImage& image, int row) {
  return VemImage(image).ImageData() + static_cast<std::ptrdiff_t>(row) * image.Step();
}

inline bool same(const VemImage& a, const VemImage& b) {
  if (a.Width() != b.Width() || a.Height() != b.Height() || a.Channels() != b.Channels() ||
      a.BitDepth() != b.BitDepth()) {
    return false;
  }
  for (int row = 0; row < a.Height(); ++row) {
    if (std::memcmp(row_of(a, row), row_of(b, row), row_bytes(a)) != 0) return false;
  }
  return true;
}

inline bool same(const runs_draft& a, const runs_draft& b) {
  return a.width == b.width && a.height == b.height && same_elements(a.rows, b.rows) &&
         same_elements(a.first_columns, b.first_columns) &&
         same_elements(a.last_columns, b.last_columns);
}

inline bool same(const facts& a, const facts& b) {
  return a.type == b.type && same_elements(a.numbers, b.numbers) &&
         same_elements(a.points, b.points) && same(a.runs, b.runs) &&
         same_elements(a.values, b.values) && a.style == b.style && same(a.image, b.image);
}

inline bool same(const VemContour& a, const VemContour& b) {
  return same_elements(to_vector(a), to_vector(b));
}
inline bool same(const VemRegion& a, const VemRegion& b) { return same(facts_of(a), facts_of(b)); }
inline bool same(const VemROI& a, const VemROI& b) { return same(facts_of(a), facts_of(b)); }
inline bool same(const VemOverlay& a, const VemOverlay& b) {
  return same(facts_of(a), facts_of(b));
}
// --- A number that is the same for the same ---

class hasher {
 public:
  hasher() : sum_(0) {}

  void put(std::size_t part) { sum_ ^= part + 0x9e3779b97f4a7c15u + (sum_ << 6) + (sum_ >> 2); }
  void put(long number) { put(std::hash<long>()(number)); }
  void put(int number) { put(long{number}); }
  // Both zeros are the same.
  void put(double number) { put(std::hash<double>()(same(number, 0) ? 0.0 : number)); }
  void put(const VemPoint& point) {
    put(point.x);
    put(point.y);
  }
  void put(const VemVar& value) {
    put(value.ValType());
    if (value.ValType() == VemVarLong) put(value.L());
    if (value.ValType() == VemVarDouble) put(value.D());
    if (value.ValType() == VemVarString) put(std::hash<std::string>()(value.S()));
  }
  void put(const VemVarArray& values) {
    put(values.Length());
    for (const VemVar& value : values) put(value);
  }
  void put(const VemImage& image) {
    put(image.Width());
    put(image.Height());
    for (int row = 0; row < image.Height(); ++row) {
      const unsigned char* const bytes = row_of(image, row);
      std::size_t sum = 14695981039346656037u;
      for (std::size_t i = 0; i < row_bytes(image); ++i) sum = (sum ^ bytes[i]) * 1099511628211u;
      put(sum);
    }
  }
  void put(const facts& all) {
    put(all.type);
    for (const fact& one : all.numbers) put(VemPoint(one.first, one.second));
    for (const VemPoint& point : all.points) put(point);
    put(all.runs.width);
    put(all.runs.height);
    put(all.runs.rows);
    put(all.runs.first_columns);
    put(all.runs.last_columns);
    put(all.values);
    put(all.image);
    for (long part : all.style) put(part);
  }

  std::size_t sum() const { return sum_; }

 private:
  std::size_t sum_;
};

template <class T>
std::size_t hash_of(const T& value) {
  hasher all;
  all.put(value);
  return all.sum();
}

}  // namespace detail
}  // namespace vem
/// @endcond

#endif  // VEM_VEM_PRINT_FACTS_H_
