#ifndef VEM_VEM_PRINT_H_
#define VEM_VEM_PRINT_H_

#include <cmath>
#include <cstddef>
#include <cstring>
#include <functional>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <type_traits>

#include "Vem3DPoint.h"
#include "VemCircle.h"
#include "VemLine.h"
#include "VemOverlay.h"
#include "VemPoint.h"
#include "VemROI.h"
#include "VemRegion.h"
#include "VemRegionData.h"
#include "vem/make_regions.h"
#include "vem/parts.h"
#include "vem/print_facts.h"
#include "vem/print_lines.h"
#include "vem/range.h"
#include "vem/runs.h"
#include "vem/value.h"

/// Every class but VemRLC, whose results are plain lists, on a stream, in a failed test and in fmt;
/// equality and hashes; masks in characters.
///
/// `out << value` prints in one line. A text alone stands as it is, within a list in quotes with
/// its own quotes and what does not print escaped; nothing is "none". Numbers have the shortest
/// digits that read back, unless the stream has a precision or a notation of its own; its width is
/// that of the whole line. Fields that nothing writes by default, as the numbers of code records,
/// are not printed. GoogleTest takes the same, and draws small regions and regions of interest; a
/// test program includes this header wherever it compares these classes, or nowhere. Where
/// fmt/core.h or fmt/format.h is included before this header, `fmt::format("{:>20}", value)` works
/// for every class too.
///
/// It reads overlays and regions where they stand, and so needs OpenCV's include path.
///
/// `==` and `!=` compare points, lines, circles, contours, regions, regions of interest, overlays
/// and the arrays of these by all that can be read of them: regions by canvas and runs in their
/// order, not by pixels, and without their outlines; shapes by kind and by their numbers as they
/// were set, which the readers round; overlays by pen, brush, text, font and pixels too. What an
/// object carries along under a type that does not show it is not compared. NaN equals nothing.
/// Feature points have none, for their constructors leave fields unset. `std::hash` is there for
/// points, regions, regions of interest and overlays.
///
/// The operators stand in the global namespace, where the compiler looks for those of a global
/// class. They are templates: one of a program's own for the same class is the better match.
namespace vem {

/// @cond
namespace detail {
constexpr std::size_t most_characters = std::size_t{1} << 28;
}  // namespace detail
/// @endcond

/// The pixels of a region on its canvas, a line for each row: '#' is inside, '.' is not. What lies
/// outside the canvas is left out. A canvas of more than 2^28 characters, ends of lines among them,
/// throws `std::invalid_argument`.
inline std::string drawing(const VemRegion& region) {
  const VemRegionData& data = parts(region);
  if (data.Width <= 0 || data.Height <= 0) return std::string();
  const std::size_t line = static_cast<std::size_t>(data.Width) + 1;
  const std::size_t height = static_cast<std::size_t>(data.Height);
  if (height > detail::most_characters / line) {
    throw std::invalid_argument("vem::drawing: the canvas is " + std::to_string(data.Width) +
                                " by " + std::to_string(data.Height) + ", more than " +
                                std::to_string(detail::most_characters) + " characters");
  }
  std::string picture(line * height, '.');
  for (std::size_t row = 1; row <= height; ++row) picture[row * line - 1] = '\n';
  const auto draw = [&picture, line](int row, int first, int last) {
    std::memset(&picture[static_cast<std::size_t>(row) * line + static_cast<std::size_t>(first)],
                '#', static_cast<std::size_t>(last - first) + 1);
  };
  detail::for_each_run(data.Rows, data.FirstColumns, data.LastColumns,
                       detail::clip(data.Width, data.Height, draw));
  return picture;
}
/// The pixels of a region of interest, as region_of takes it; `std::invalid_argument` as there.
inline std::string drawing(const VemROI& roi) { return drawing(region_of(roi)); }

/// @cond
namespace detail {

template <class T, class... List>
struct is_one_of : std::false_type {};
template <class T, class First, class... Rest>
struct is_one_of<T, First, Rest...>
    : std::conditional<std::is_same<T, First>::value, std::true_type, is_one_of<T, Rest...>>::type {
};

template <class T>
using is_printed =
    is_one_of<T, VemVar, VemVarArray, Vem2DVarArray, VemPoint, VemPointArray, Vem3DPoint,
              Vem3DPointArray, VemLine, VemCircle, VemContour, VemContourArray, VemFeaturePoint,
              VemFeaturePointArray, VemFeatureDescriptor, VemImage, VemImageArray, VemMatrix,
              VemMatrixArray, VemMorphStructure, VemRegion, VemRegionArray, VemROI, VemROIArray,
              VemFont, VemOverlay, VemOverlayPath, Vem1DCode, Vem1DCodeArray, VemDMCode,
              VemDMCodeArray, VemQRCode, VemQRCodeArray, VemPDF417Code, VemPDF417CodeArray,
              VemVCode, VemVCodeArray, VemScratchFeature, VemScratchGroup, VemScratchLayer,
              VemScratchLayerArray, VemScratchPrecessing>;

template <class T>
using is_compared = is_one_of<T, VemPoint, Vem3DPoint, VemLine, VemCircle, VemPointArray,
                              Vem3DPointArray, VemContour, VemContourArray, VemRegion,
                              VemRegionArray, VemROI, VemROIArray, VemOverlay, VemOverlayPath>;

// --- Comparing, as far as vem/print_facts.h does not ---

inline bool same(const VemLine& a, const VemLine& b) {
  return same(a.start, b.start) && same(a.end, b.end);
}
inline bool same(const VemCircle& a, const VemCircle& b) {
  return same(a.center, b.center) && same(a.radius, b.radius);
}
template <class A>
if_true<is_array_class<A>::value, bool> same(const A& a, const A& b) {
  return same_elements(a, b);
}

// --- A line in a field ---

// The whole line as a stream would print it that has no width.
template <class T>
std::string text_as(const std::ostream& out, const T& value) {
  std::ostringstream line;
  line.copyfmt(out);
  line.exceptions(std::ios_base::goodbit);
  line.width(0);
  print_to(line, value);
  return line.str();
}

// --- What GoogleTest shows ---

// A picture of what is small.
inline std::string small_drawing(const VemRegion& region) {
  const bool small =
      region.Width() > 0 && region.Width() <= 100 && region.Height() > 0 && region.Height() <= 60;
  return small ? '\n' + drawing(region) : std::string();
}
// Large numbers could make a shape of many runs.
inline std::string small_drawing(const VemROI& roi) {
  for (const VemVar& number : parts(roi).Params) {
    if (!(std::fabs(number.D()) <= 1000)) return std::string();
  }
  std::string reason;
  const VemRegion region = coded(roi, &reason);
  return reason.empty() ? small_drawing(region) : std::string();
}

}  // namespace detail
/// @endcond

}  // namespace vem

/// Prints in one line.
template <class T>
vem::detail::if_true<vem::detail::is_printed<T>::value, std::ostream&> operator<<(std::ostream& out,
                                                                                  const T& value) {
  const bool is_one_piece = std::is_same<T, VemVar>::value;
  if (!is_one_piece && out.width() != 0) return out << vem::detail::text_as(out, value);
  vem::detail::print_to(out, value);
  return out;
}

/// What a failed test shows of a value: a text in quotes.
inline void PrintTo(const VemVar& value, std::ostream* out) {
  vem::detail::print_element(*out, value);
}
/// What a failed test shows of a region: a small one as a drawing too.
inline void PrintTo(const VemRegion& region, std::ostream* out) {
  *out << region << vem::detail::small_drawing(region);
}
/// What a failed test shows of a region of interest: the pixels of a small one as a drawing too.
inline void PrintTo(const VemROI& roi, std::ostream* out) {
  *out << roi << vem::detail::small_drawing(roi);
}

/// Whether two are the same in all that can be read of them.
template <class T>
vem::detail::if_true<vem::detail::is_compared<T>::value, bool> operator==(const T& a, const T& b) {
  return vem::detail::same(a, b);
}
/// Whether they are not the same.
template <class T>
vem::detail::if_true<vem::detail::is_compared<T>::value, bool> operator!=(const T& a, const T& b) {
  return !(a == b);
}

namespace std {

/// The same for points that are ==.
template <>
struct hash<VemPoint> {
  /// The hash.
  size_t operator()(const VemPoint& point) const { return vem::detail::hash_of(point); }
};
/// The same for points that are ==.
template <>
struct hash<Vem3DPoint> {
  /// The hash.
  size_t operator()(const Vem3DPoint& point) const {
    vem::detail::hasher all;
    all.put(VemPoint(point.x, point.y));
    all.put(point.z);
    return all.sum();
  }
};
/// The same for regions that are ==.
template <>
struct hash<VemRegion> {
  /// The hash.
  size_t operator()(const VemRegion& region) const {
    return vem::detail::hash_of(vem::detail::facts_of(region));
  }
};
/// The same for regions of interest that are ==.
template <>
struct hash<VemROI> {
  /// The hash.
  size_t operator()(const VemROI& roi) const {
    return vem::detail::hash_of(vem::detail::facts_of(roi));
  }
};
/// The same for overlays that are ==.
template <>
struct hash<VemOverlay> {
  /// The hash.
  size_t operator()(const VemOverlay& overlay) const {
    return vem::detail::hash_of(vem::detail::facts_of(overlay));
  }
};

}  // namespace std

#ifdef FMT_VERSION
/// @cond
namespace vem {
namespace detail {

// A value in fmt: its line, with the fill, alignment, width and precision of a text.
template <class T>
class in_line {
 public:
  template <class Context>
  FMT_CONSTEXPR auto parse(Context& context) -> decltype(context.begin()) {
    return line_.parse(context);
  }
  template <class Context>
  auto format(const T& value, Context& context) const -> decltype(context.out()) {
    const std::string text = text_of(value);
    fmt::formatter<fmt::string_view> line(line_);
    return line.format(fmt::string_view(text.data(), text.size()), context);
  }

 private:
  fmt::formatter<fmt::string_view> line_;
};

}  // namespace detail
}  // namespace vem

namespace fmt {

// clang-format off
template <> struct formatter<VemVar> : vem::detail::in_line<VemVar> {};
template <> struct formatter<VemVarArray> : vem::detail::in_line<VemVarArray> {};
template <> struct formatter<Vem2DVarArray> : vem::detail::in_line<Vem2DVarArray> {};
template <> struct formatter<VemPoint> : vem::detail::in_line<VemPoint> {};
template <> struct formatter<VemPointArray> : vem::detail::in_line<VemPointArray> {};
template <> struct formatter<Vem3DPoint> : vem::detail::in_line<Vem3DPoint> {};
template <> struct formatter<Vem3DPointArray> : vem::detail::in_line<Vem3DPointArray> {};
template <> struct formatter<VemLine> : vem::detail::in_line<VemLine> {};
template <> struct formatter<VemCircle> : vem::detail::in_line<VemCircle> {};
template <> struct formatter<VemContour> : vem::detail::in_line<VemContour> {};
template <> struct formatter<VemContourArray> : vem::detail::in_line<VemContourArray> {};
template <> struct formatter<VemFeaturePoint> : vem::detail::in_line<VemFeaturePoint> {};
template <> struct formatter<VemFeaturePointArray> : vem::detail::in_line<VemFeaturePointArray> {};
template <> struct formatter<VemFeatureDescriptor> : vem::detail::in_line<VemFeatureDescriptor> {};
template <> struct formatter<VemImage> : vem::detail::in_line<VemImage> {};
template <> struct formatter<VemImageArray> : vem::detail::in_line<VemImageArray> {};
template <> struct formatter<VemMatrix> : vem::detail::in_line<VemMatrix> {};
template <> struct formatter<VemMatrixArray> : vem::detail::in_line<VemMatrixArray> {};
template <> struct formatter<VemMorphStructure> : vem::detail::in_line<VemMorphStructure> {};
template <> struct formatter<VemRegion> : vem::detail::in_line<VemRegion> {};
template <> struct formatter<VemRegionArray> : vem::detail::in_line<VemRegionArray> {};
template <> struct formatter<VemROI> : vem::detail::in_line<VemROI> {};
template <> struct formatter<VemROIArray> : vem::detail::in_line<VemROIArray> {};
template <> struct formatter<VemFont> : vem::detail::in_line<VemFont> {};
template <> struct formatter<VemOverlay> : vem::detail::in_line<VemOverlay> {};
template <> struct formatter<VemOverlayPath> : vem::detail::in_line<VemOverlayPath> {};
template <> struct formatter<Vem1DCode> : vem::detail::in_line<Vem1DCode> {};
template <> struct formatter<Vem1DCodeArray> : vem::detail::in_line<Vem1DCodeArray> {};
template <> struct formatter<VemDMCode> : vem::detail::in_line<VemDMCode> {};
template <> struct formatter<VemDMCodeArray> : vem::detail::in_line<VemDMCodeArray> {};
template <> struct formatter<VemQRCode> : vem::detail::in_line<VemQRCode> {};
template <> struct formatter<VemQRCodeArray> : vem::detail::in_line<VemQRCodeArray> {};
template <> struct formatter<VemPDF417Code> : vem::detail::in_line<VemPDF417Code> {};
template <> struct formatter<VemPDF417CodeArray> : vem::detail::in_line<VemPDF417CodeArray> {};
template <> struct formatter<VemVCode> : vem::detail::in_line<VemVCode> {};
template <> struct formatter<VemVCodeArray> : vem::detail::in_line<VemVCodeArray> {};
template <> struct formatter<VemScratchFeature> : vem::detail::in_line<VemScratchFeature> {};
template <> struct formatter<VemScratchGroup> : vem::detail::in_line<VemScratchGroup> {};
template <> struct formatter<VemScratchLayer> : vem::detail::in_line<VemScratchLayer> {};
template <> struct formatter<VemScratchLayerArray> : vem::detail::in_line<VemScratchLayerArray> {};
template <> struct formatter<VemScratchPrecessing> : vem::detail::in_line<VemScratchPrecessing> {};
// clang-format on

}  // namespace fmt
/// @endcond
#endif

#endif  // VEM_VEM_PRINT_H_
