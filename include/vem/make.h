#ifndef VEM_VEM_MAKE_H_
#define VEM_VEM_MAKE_H_

#include <initializer_list>
#include <string>
#if __cplusplus >= 201703L
#include <optional>
#endif

#include "IVemROIPara.h"
#include "VemContour.h"
#include "VemContourArray.h"
#include "VemFont.h"
#include "VemImage.h"
#include "VemLine.h"
#include "VemOverlay.h"
#include "VemPoint.h"
#include "VemPointArray.h"
#include "VemROI.h"
#include "VemRegion.h"
#include "vem/array_traits.h"
#include "vem/make_drafts.h"
#include "vem/make_regions.h"
#include "vem/parts.h"
#include "vem/range.h"
#include "vem/value.h"

/// Shapes, overlays, masks and fonts by value, from expressions:
///
///     VemROI part = vem::rect2({120, 80}, 200, 40, 30);
///     VemOverlay shown = vem::rect2<VemOverlay>({120, 80}, 200, 40, 30);
///     if (auto maybe = vem::try_circle(center, radius)) ...
///
/// A shape is a VemROI, or a VemOverlay where that is asked for. What a generator of the class
/// refuses throws `std::invalid_argument`, whose text tells the reason: "vem::rect2: length1 is 0,
/// not above 0". From C++17 on, `try_...` gives an empty `std::optional` instead. Coordinates are
/// pixels, x before y, angles degrees, as the classes have them. Regions are in vem/make_regions.h,
/// which comes along.
namespace vem {

/// @cond
namespace detail {

// An arc's center stands y before x in a region of interest, x before y in an overlay.
inline VemOverlay shown_as(const VemROI& roi, std::string* reason) {
  const IVemROIPara& from = parts(roi);
  VemOverlay overlay;
  *reason = unless_shape(roi);
  if (!reason->empty()) return overlay;
  if (from.Type == VemROIMask) {
    VemRegion region = region_of(roi);
    overlay.GenRegion(region);
  } else if (from.Type == VemROIArc && from.Params.Length() == 5) {
    VemPoint center(from.Params[1].D(), from.Params[0].D());
    overlay.GenArc(center, from.Params[2].D(), from.Params[3].D(), from.Params[4].D());
  } else {
    overlay.FromROI(roi);
  }
  return overlay;
}
inline VemOverlay shown_as(const VemRegion& region, std::string*) {
  VemRegion copy(region);
  VemOverlay overlay;
  overlay.GenRegion(copy);
  return overlay;
}
inline VemOverlay shown_as(const VemContour& contour, std::string* reason) {
  irregular_draft chain(points_of<VemPointArray>(contour));
  return shape_of<VemOverlay>(chain, reason);
}

template <class Source>
VemOverlay made_overlay(const Source& source) {
  return made_or_throw<VemOverlay>("overlay_of",
                                   [&](std::string* reason) { return shown_as(source, reason); });
}

#if __cplusplus >= 201703L
template <class Source>
std::optional<VemOverlay> tried_overlay(const Source& source) {
  return made_or_nothing([&](std::string* reason) { return shown_as(source, reason); });
}
#endif

}  // namespace detail
/// @endcond

/// A point.
template <class Shape = VemROI>
Shape point(const VemPoint& at) {
  return detail::made_shape<Shape>(detail::point_draft{at});
}

/// A rectangle from its upper left to its lower right corner. Refused unless `p2` is greater in x
/// and in y.
template <class Shape = VemROI>
Shape rect1(const VemPoint& p1, const VemPoint& p2) {
  return detail::made_shape<Shape>(detail::rect1_draft{{p1, p2}});
}

/// A circle; the radius must be above 0.
template <class Shape = VemROI>
Shape circle(const VemPoint& center, double radius) {
  return detail::made_shape<Shape>(detail::circle_draft{center, radius});
}

/// A rotated ellipse by its semi-axes, the first along the direction `angle`; both must be above 0.
template <class Shape = VemROI>
Shape ellipse(const VemPoint& center, double radius1, double radius2, double angle) {
  return detail::made_shape<Shape>(detail::ellipse_draft{center, radius1, radius2, angle});
}

/// A rotated rectangle by its full sides, the first along the direction `angle`; both must be above
/// 0.
template <class Shape = VemROI>
Shape rect2(const VemPoint& center, double length1, double length2, double angle) {
  return detail::made_shape<Shape>(detail::rect2_draft{center, length1, length2, angle});
}

/// A ring, from `start_angle` on for `sweep_angle` degrees. The radii must be above 0 and the outer
/// one the greater; the sweep must not be negative.
template <class Shape = VemROI>
Shape torus(const VemPoint& center, double inner_radius, double outer_radius, double start_angle,
            double sweep_angle) {
  return detail::made_shape<Shape>(
      detail::torus_draft{center, inner_radius, outer_radius, start_angle, sweep_angle});
}

/// A segment between two points that must differ; also as a VemLine.
template <class Shape = VemROI>
Shape line(const VemPoint& p1, const VemPoint& p2) {
  return detail::made_shape<Shape>(detail::line_draft{{p1, p2}});
}

/// An arc, from `start_angle` on for `sweep_angle` degrees. The radius must be above 0, the sweep
/// not negative.
template <class Shape = VemROI>
Shape arc(const VemPoint& center, double radius, double start_angle, double sweep_angle) {
  return detail::made_shape<Shape>(detail::arc_draft{center, radius, start_angle, sweep_angle});
}

/// A polygon of at least 3 points, as a list or any range; the closing point is not listed.
template <class Shape = VemROI, class Points>
Shape polygon(const Points& points) {
  return detail::made_shape<Shape>(detail::polygon_draft(vem::to<VemPointArray>(points)));
}
/// The same of a list.
template <class Shape = VemROI>
Shape polygon(std::initializer_list<VemPoint> points) {
  return detail::made_shape<Shape>(detail::polygon_draft(vem::to<VemPointArray>(points)));
}

/// A chain of at least 3 listed points, as a list or any range.
template <class Shape = VemROI, class Points>
Shape irregular(const Points& points) {
  return detail::made_shape<Shape>(detail::irregular_draft(vem::to<VemPointArray>(points)));
}
/// The same of a list.
template <class Shape = VemROI>
Shape irregular(std::initializer_list<VemPoint> points) {
  return detail::made_shape<Shape>(detail::irregular_draft(vem::to<VemPointArray>(points)));
}

/// An overlay: a segment with an arrow head, between two points that must differ.
inline VemOverlay arrow_line(const VemPoint& p1, const VemPoint& p2) {
  return detail::made_shape<VemOverlay>(detail::arrow_line_draft{{p1, p2}});
}

/// An overlay: a rake in a rectangle as of rect1, of a mode from 0 to 3 and a count of at least 2.
inline VemOverlay rake_rect1(const VemPoint& p1, const VemPoint& p2, int mode, int count) {
  return detail::made_shape<VemOverlay>(detail::rake_rect1_draft{{p1, p2}, mode, count});
}

/// An overlay: a rake in a rectangle as of rect2, of a mode from 0 to 3 and a count of at least 2.
inline VemOverlay rake_rect2(const VemPoint& center, double length1, double length2, double angle,
                             int mode, int count) {
  return detail::made_shape<VemOverlay>(
      detail::rake_rect2_draft{{center, length1, length2, angle}, mode, count});
}

/// An overlay: spokes in a ring as of torus, of mode 4 or 5 and a count of at least 2.
inline VemOverlay spoke_torus(const VemPoint& center, double inner_radius, double outer_radius,
                              double start_angle, double sweep_angle, int mode, int count) {
  return detail::made_shape<VemOverlay>(detail::spoke_torus_draft{
      {center, inner_radius, outer_radius, start_angle, sweep_angle}, mode, count});
}

/// An overlay: an open chain of segments, of at least 3 points, as a list or any range.
template <class Points>
VemOverlay poly_line(const Points& points) {
  return detail::made_shape<VemOverlay>(detail::poly_line_draft(vem::to<VemPointArray>(points)));
}
/// The same of a list.
inline VemOverlay poly_line(std::initializer_list<VemPoint> points) {
  return detail::made_shape<VemOverlay>(detail::poly_line_draft(vem::to<VemPointArray>(points)));
}

/// An overlay: a text at a position. The font's Flag0 is not kept.
inline VemOverlay text(const VemPoint& at, const char* text, const VemFont& font = VemFont()) {
  return detail::made_shape<VemOverlay>(detail::text_draft{at, detail::span_of(text), font});
}
/// The same; a text with a zero byte within is refused.
inline VemOverlay text(const VemPoint& at, const std::string& text,
                       const VemFont& font = VemFont()) {
  return detail::made_shape<VemOverlay>(detail::text_draft{at, detail::span_of(text), font});
}

/// A mask: runs on a canvas that must be at least 2 by 2, each list any range of integers. Lists
/// that differ in length are refused.
template <class Rows, class FirstColumns, class LastColumns>
VemROI mask(const Rows& rows, const FirstColumns& first_columns, const LastColumns& last_columns,
            int width, int height) {
  return detail::made_shape<VemROI>(
      detail::mask_draft{detail::runs_of_ranges(rows, first_columns, last_columns, width, height)});
}
/// A mask of the canvas and the runs of a region.
inline VemROI mask(const VemRegion& region) {
  return detail::made_shape<VemROI>(detail::mask_draft{detail::runs_of_region(region)});
}
/// A mask of the pixels that contours cover when they are filled, even-odd over all of them.
inline VemROI mask(const VemContourArray& contours, int width, int height) {
  return detail::made_shape<VemROI>(detail::contour_mask_draft{contours, width, height});
}

/// An overlay that shows what a region of interest covers: its shape, or the runs of a mask, which
/// VemOverlay::FromROI leaves out; an arc with its center as it is, which FromROI turns round.
/// Refused are no shape, and one without numbers.
inline VemOverlay overlay_of(const VemROI& roi) { return detail::made_overlay(roi); }
/// An overlay of a region: its canvas and its runs.
inline VemOverlay overlay_of(const VemRegion& region) { return detail::made_overlay(region); }
/// An overlay of a contour: an irregular chain, of at least 3 points as every chain.
inline VemOverlay overlay_of(const VemContour& contour) { return detail::made_overlay(contour); }
/// An overlay of an image at a position; the pixels are copied.
inline VemOverlay overlay_of(const VemImage& image, const VemPoint& at) {
  VemImage shared(image);
  VemPoint point(at);
  VemOverlay overlay;
  overlay.GenImage(point, shared);
  return overlay;
}

/// The overlay with another pen: three color components and a width.
inline VemOverlay with_pen(VemOverlay overlay, long color0, long color1, long color2,
                           long width = 1) {
  overlay.SetPen(color0, color1, color2, width);
  return overlay;
}
/// The overlay with another brush: three color components and a mode.
inline VemOverlay with_brush(VemOverlay overlay, long color0, long color1, long color2,
                             long mode = 0) {
  overlay.SetBrush(color0, color1, color2, mode);
  return overlay;
}

/// A font of a name, a size and a weight, all flags 0. A name with a zero byte within is refused.
inline VemFont font(const std::string& name, long size, long weight = 500) {
  return detail::made_shape<VemFont>(detail::font_draft{name, size, weight});
}

#if __cplusplus >= 201703L

/// What point makes, or nothing.
template <class Shape = VemROI>
std::optional<Shape> try_point(const VemPoint& at) {
  return detail::tried_shape<Shape>(detail::point_draft{at});
}

/// What rect1 makes, or nothing.
template <class Shape = VemROI>
std::optional<Shape> try_rect1(const VemPoint& p1, const VemPoint& p2) {
  return detail::tried_shape<Shape>(detail::rect1_draft{{p1, p2}});
}

/// What circle makes, or nothing.
template <class Shape = VemROI>
std::optional<Shape> try_circle(const VemPoint& center, double radius) {
  return detail::tried_shape<Shape>(detail::circle_draft{center, radius});
}

/// What ellipse makes, or nothing.
template <class Shape = VemROI>
std::optional<Shape> try_ellipse(const VemPoint& center, double radius1, double radius2,
                                 double angle) {
  return detail::tried_shape<Shape>(detail::ellipse_draft{center, radius1, radius2, angle});
}

/// What rect2 makes, or nothing.
template <class Shape = VemROI>
std::optional<Shape> try_rect2(const VemPoint& center, double length1, double length2,
                               double angle) {
  return detail::tried_shape<Shape>(detail::rect2_draft{center, length1, length2, angle});
}

/// What torus makes, or nothing.
template <class Shape = VemROI>
std::optional<Shape> try_torus(const VemPoint& center, double inner_radius, double outer_radius,
                               double start_angle, double sweep_angle) {
  return detail::tried_shape<Shape>(
      detail::torus_draft{center, inner_radius, outer_radius, start_angle, sweep_angle});
}

/// What line makes, or nothing.
template <class Shape = VemROI>
std::optional<Shape> try_line(const VemPoint& p1, const VemPoint& p2) {
  return detail::tried_shape<Shape>(detail::line_draft{{p1, p2}});
}

/// What arc makes, or nothing.
template <class Shape = VemROI>
std::optional<Shape> try_arc(const VemPoint& center, double radius, double start_angle,
                             double sweep_angle) {
  return detail::tried_shape<Shape>(detail::arc_draft{center, radius, start_angle, sweep_angle});
}

/// What polygon makes, or nothing.
template <class Shape = VemROI, class Points>
std::optional<Shape> try_polygon(const Points& points) {
  return detail::tried_shape<Shape>(detail::polygon_draft(vem::to<VemPointArray>(points)));
}
/// What polygon makes, or nothing.
template <class Shape = VemROI>
std::optional<Shape> try_polygon(std::initializer_list<VemPoint> points) {
  return detail::tried_shape<Shape>(detail::polygon_draft(vem::to<VemPointArray>(points)));
}

/// What irregular makes, or nothing.
template <class Shape = VemROI, class Points>
std::optional<Shape> try_irregular(const Points& points) {
  return detail::tried_shape<Shape>(detail::irregular_draft(vem::to<VemPointArray>(points)));
}
/// What irregular makes, or nothing.
template <class Shape = VemROI>
std::optional<Shape> try_irregular(std::initializer_list<VemPoint> points) {
  return detail::tried_shape<Shape>(detail::irregular_draft(vem::to<VemPointArray>(points)));
}

/// What arrow_line makes, or nothing.
inline std::optional<VemOverlay> try_arrow_line(const VemPoint& p1, const VemPoint& p2) {
  return detail::tried_shape<VemOverlay>(detail::arrow_line_draft{{p1, p2}});
}

/// What rake_rect1 makes, or nothing.
inline std::optional<VemOverlay> try_rake_rect1(const VemPoint& p1, const VemPoint& p2, int mode,
                                                int count) {
  return detail::tried_shape<VemOverlay>(detail::rake_rect1_draft{{p1, p2}, mode, count});
}

/// What rake_rect2 makes, or nothing.
inline std::optional<VemOverlay> try_rake_rect2(const VemPoint& center, double length1,
                                                double length2, double angle, int mode, int count) {
  return detail::tried_shape<VemOverlay>(
      detail::rake_rect2_draft{{center, length1, length2, angle}, mode, count});
}

/// What spoke_torus makes, or nothing.
inline std::optional<VemOverlay> try_spoke_torus(const VemPoint& center, double inner_radius,
                                                 double outer_radius, double start_angle,
                                                 double sweep_angle, int mode, int count) {
  return detail::tried_shape<VemOverlay>(detail::spoke_torus_draft{
      {center, inner_radius, outer_radius, start_angle, sweep_angle}, mode, count});
}

/// What poly_line makes, or nothing.
template <class Points>
std::optional<VemOverlay> try_poly_line(const Points& points) {
  return detail::tried_shape<VemOverlay>(detail::poly_line_draft(vem::to<VemPointArray>(points)));
}
/// What poly_line makes, or nothing.
inline std::optional<VemOverlay> try_poly_line(std::initializer_list<VemPoint> points) {
  return detail::tried_shape<VemOverlay>(detail::poly_line_draft(vem::to<VemPointArray>(points)));
}

/// What text makes, or nothing.
inline std::optional<VemOverlay> try_text(const VemPoint& at, const char* text,
                                          const VemFont& font = VemFont()) {
  return detail::tried_shape<VemOverlay>(detail::text_draft{at, detail::span_of(text), font});
}
/// What text makes, or nothing.
inline std::optional<VemOverlay> try_text(const VemPoint& at, const std::string& text,
                                          const VemFont& font = VemFont()) {
  return detail::tried_shape<VemOverlay>(detail::text_draft{at, detail::span_of(text), font});
}

/// What overlay_of makes, or nothing.
inline std::optional<VemOverlay> try_overlay_of(const VemROI& roi) {
  return detail::tried_overlay(roi);
}
/// What overlay_of makes, or nothing.
inline std::optional<VemOverlay> try_overlay_of(const VemContour& contour) {
  return detail::tried_overlay(contour);
}

/// What font makes, or nothing.
inline std::optional<VemFont> try_font(const std::string& name, long size, long weight = 500) {
  return detail::tried_shape<VemFont>(detail::font_draft{name, size, weight});
}

/// What mask makes, or nothing.
template <class Rows, class FirstColumns, class LastColumns>
std::optional<VemROI> try_mask(const Rows& rows, const FirstColumns& first_columns,
                               const LastColumns& last_columns, int width, int height) {
  return detail::tried_shape<VemROI>(
      detail::mask_draft{detail::runs_of_ranges(rows, first_columns, last_columns, width, height)});
}
/// What mask makes, or nothing.
inline std::optional<VemROI> try_mask(const VemRegion& region) {
  return detail::tried_shape<VemROI>(detail::mask_draft{detail::runs_of_region(region)});
}
/// What mask makes, or nothing.
inline std::optional<VemROI> try_mask(const VemContourArray& contours, int width, int height) {
  return detail::tried_shape<VemROI>(detail::contour_mask_draft{contours, width, height});
}

#endif

}  // namespace vem

#endif  // VEM_VEM_MAKE_H_
