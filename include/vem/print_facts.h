#ifndef VEM_VEM_PRINT_FACTS_H_
#define VEM_VEM_PRINT_FACTS_H_

#include <cstddef>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include <opencv2/core.hpp>

#include "IVemOverlay.h"
#include "IVemROIPara.h"
#include "Vem3DPoint.h"
#include "VemContour.h"
#include "VemOverlay.h"
#include "VemOverlayType.h"
#include "VemPoint.h"
#include "VemPointArray.h"
#include "VemROI.h"
#include "VemROIType.h"
#include "VemRegion.h"
#include "VemRegionData.h"
#include "VemTuple.h"
#include "vem/array_traits.h"
#include "vem/parts.h"
#include "vem/range.h"
#include "vem/shapes.h"
#include "vem/value.h"

/// What a region, a region of interest and an overlay hold, in one form: it is printed, compared
/// and hashed from here.

/// @cond
namespace vem {
namespace detail {

// Runs where they stand; no lists where an object shows none.
struct runs_in_place {
  const VemVarArray* rows;
  const VemVarArray* first_columns;
  const VemVarArray* last_columns;
  int width, height;
};

template <class Object>
runs_in_place runs_in(const Object& object) {
  return {&object.Rows, &object.FirstColumns, &object.LastColumns, object.Width, object.Height};
}

// Refers to the object that it is of: what its type shows of it, not what it carries along.
struct facts {
  int type;
  const char* kind;
  const shape* form;           // Null where the numbers, if any, are of no shape.
  const VemVarArray* numbers;  // As they are stored; null where there are none to be shown.
  runs_in_place runs;
  const cv::Mat* image;
  std::vector<int> style;

  explicit facts(int type_of_object)
      : type(type_of_object),
        kind("none"),
        form(nullptr),
        numbers(nullptr),
        runs(runs_in_place{nullptr, nullptr, nullptr, 0, 0}),
        image(nullptr) {}

  void put(const shape* found, const VemVarArray& stored) {
    if (found == nullptr) return;
    kind = found->name;
    form = found;
    numbers = &stored;
  }
};

inline facts facts_of(const VemROI& roi) {
  const IVemROIPara& from = parts(roi);
  facts found(from.Type);
  if (from.Type == VemROIMask) {
    found.kind = "mask";
    found.runs = runs_in(from);
  } else {
    found.put(find_shape(&shape::roi, from.Type), from.Params);
  }
  return found;
}

inline facts facts_of(const VemRegion& region) {
  facts found(0);
  found.kind = "region";
  found.runs = runs_in(parts(region));
  return found;
}

inline facts facts_of(const VemOverlay& overlay) {
  const IVemOverlay& from = parts(overlay);
  facts found(from.Type);
  if (from.Type == VemOverlayText) {
    found.kind = "text";
    found.numbers = &from.Params;
  } else if (from.Type == VemOverlayImage) {
    found.kind = "image";
    found.numbers = &from.Params;
    found.image = &from.Image;
  } else if (from.Type == VemOverlayRegion) {
    found.kind = "region";
    found.runs = runs_in(from);
  } else {
    found.put(find_shape(&shape::overlay, from.Type), from.Params);
  }
  found.style = {from.PenColor0,   from.PenColor1,   from.PenColor2,   from.PenWidth,
                 from.BrushColor0, from.BrushColor1, from.BrushColor2, from.BrushMode};
  return found;
}

// --- Whether they are the same ---

inline bool same(double a, double b) { return a <= b && a >= b; }
inline bool same(const VemPoint& a, const VemPoint& b) { return same(a.x, b.x) && same(a.y, b.y); }
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

// Of objects of one type: both are there, or neither.
inline bool same(const VemVarArray* a, const VemVarArray* b) {
  return a == nullptr || same_elements(*a, *b);
}
inline bool same(const runs_in_place& a, const runs_in_place& b) {
  return a.width == b.width && a.height == b.height && same(a.rows, b.rows) &&
         same(a.first_columns, b.first_columns) && same(a.last_columns, b.last_columns);
}

// The rows of a raster of any number of dimensions, the last of which lies along them. By the
// fields of a matrix, so that nothing of OpenCV is linked.
class raster_rows {
 public:
  explicit raster_rows(const cv::Mat& raster)
      : raster_(raster), count_(1), bytes_(static_cast<std::size_t>(CV_ELEM_SIZE(raster.flags))) {
    for (int i = 0; i + 1 < raster.dims; ++i) count_ *= size(i);
    bytes_ *= raster.dims > 0 ? size(raster.dims - 1) : 0;
  }

  std::size_t count() const { return bytes_ > 0 ? count_ : 0; }
  std::size_t bytes() const { return bytes_; }
  const unsigned char* operator[](std::size_t index) const {
    const unsigned char* row = raster_.data;
    for (int i = raster_.dims - 1; i-- > 0; index /= size(i)) {
      row += index % size(i) * raster_.step.p[i];
    }
    return row;
  }

 private:
  std::size_t size(int i) const { return static_cast<std::size_t>(raster_.size.p[i]); }

  const cv::Mat& raster_;
  std::size_t count_, bytes_;
};

inline bool same(const cv::Mat& a, const cv::Mat& b) {
  if (a.dims != b.dims || CV_MAT_TYPE(a.flags) != CV_MAT_TYPE(b.flags)) return false;
  for (int i = 0; i < a.dims; ++i) {
    if (a.size.p[i] != b.size.p[i]) return false;
  }
  const raster_rows left(a), right(b);
  for (std::size_t row = 0; row < left.count(); ++row) {
    if (std::memcmp(left[row], right[row], left.bytes()) != 0) return false;
  }
  return true;
}

inline bool same(const facts& a, const facts& b) {
  return a.type == b.type && same(a.numbers, b.numbers) && same(a.runs, b.runs) &&
         a.style == b.style && (a.image == nullptr || same(*a.image, *b.image));
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
  void put(const VemVarArray* values) {
    if (values == nullptr) return;
    put(values->Length());
    for (const VemVar& value : *values) put(value);
  }
  void put(const cv::Mat& image) {
    for (int i = 0; i < image.dims; ++i) put(image.size.p[i]);
    const raster_rows rows(image);
    for (std::size_t row = 0; row < rows.count(); ++row) {
      const unsigned char* const bytes = rows[row];
      std::size_t sum = 14695981039346656037u;
      for (std::size_t i = 0; i < rows.bytes(); ++i) sum = (sum ^ bytes[i]) * 1099511628211u;
      put(sum);
    }
  }
  void put(const facts& all) {
    put(all.type);
    put(all.numbers);
    put(all.runs.width);
    put(all.runs.height);
    put(all.runs.rows);
    put(all.runs.first_columns);
    put(all.runs.last_columns);
    if (all.image != nullptr) put(*all.image);
    for (int part : all.style) put(part);
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
