#include <climits>
#include <cstddef>
#include <string>

#include "IVemOverlay.h"
#include "VemContour.h"
#include "VemFont.h"
#include "VemImage.h"
#include "VemOverlay.h"
#include "VemOverlayPath.h"
#include "VemROI.h"
#include "VemRegion.h"
#include "python/src/arrays.h"
#include "python/src/module.h"
#include "python/src/parameters.h"
#include "vem/make.h"
#include "vem/parts.h"
#include "vem/print_facts.h"

namespace {

using py::arg;
using Type = py::class_<VemOverlay>;

void AddShapes(Type& type) {
  type.def_static(
      "point", [](PointArg at) { return vem::point<VemOverlay>(at.at); }, arg("point"), "A point.");
  type.def_static(
      "line", [](PointArg p1, PointArg p2) { return vem::line<VemOverlay>(p1.at, p2.at); },
      arg("p1"), arg("p2"), "A segment between two points that must differ.");
  type.def_static(
      "arrow_line", [](PointArg p1, PointArg p2) { return vem::arrow_line(p1.at, p2.at); },
      arg("p1"), arg("p2"), "A segment with an arrow head, between two points that must differ.");
  type.def_static(
      "rect1", [](PointArg p1, PointArg p2) { return vem::rect1<VemOverlay>(p1.at, p2.at); },
      arg("p1"), arg("p2"), "A rectangle; p2 must be greater in x and in y.");
  type.def_static(
      "rake_rect1",
      [](PointArg p1, PointArg p2, int mode, int count) {
        return vem::rake_rect1(p1.at, p2.at, mode, count);
      },
      arg("p1"), arg("p2"), arg("mode"), arg("count"),
      "A rake in a rectangle, of a mode from 0 to 3 and a count of at least 2.");
  type.def_static(
      "rect2",
      [](PointArg center, double length1, double length2, double angle) {
        return vem::rect2<VemOverlay>(center.at, length1, length2, angle);
      },
      arg("center"), arg("length1"), arg("length2"), arg("angle") = 0.0,
      "A rotated rectangle by its full sides, which must be above 0.");
  type.def_static(
      "rake_rect2",
      [](PointArg center, double length1, double length2, double angle, int mode, int count) {
        return vem::rake_rect2(center.at, length1, length2, angle, mode, count);
      },
      arg("center"), arg("length1"), arg("length2"), arg("angle"), arg("mode"), arg("count"),
      "A rake in a rotated rectangle, of a mode from 0 to 3 and a count of at least 2.");
  type.def_static(
      "polygon", [](PointsArg points) { return vem::polygon<VemOverlay>(points.list); },
      arg("points"), "A polygon of at least 3 points.");
  type.def_static(
      "poly_line", [](PointsArg points) { return vem::poly_line(points.list); }, arg("points"),
      "An open chain of segments, of at least 3 points.");
  type.def_static(
      "irregular", [](PointsArg points) { return vem::irregular<VemOverlay>(points.list); },
      arg("points"), "A chain of at least 3 listed points.");
}

void AddRoundShapes(Type& type) {
  type.def_static(
      "circle",
      [](PointArg center, double radius) { return vem::circle<VemOverlay>(center.at, radius); },
      arg("center"), arg("radius"), "A circle; the radius must be above 0.");
  type.def_static(
      "ellipse",
      [](PointArg center, double radius1, double radius2, double angle) {
        return vem::ellipse<VemOverlay>(center.at, radius1, radius2, angle);
      },
      arg("center"), arg("radius1"), arg("radius2"), arg("angle") = 0.0,
      "A rotated ellipse by its semi-axes, which must be above 0.");
  type.def_static(
      "torus",
      [](PointArg center, double inner, double outer, double start, double sweep) {
        return vem::torus<VemOverlay>(center.at, inner, outer, start, sweep);
      },
      arg("center"), arg("inner_radius"), arg("outer_radius"), arg("start_angle") = 0.0,
      arg("sweep_angle") = 360.0, "A ring or a part of one.");
  type.def_static(
      "spoke_torus",
      [](PointArg center, double inner, double outer, double start, double sweep, int mode,
         int count) {
        return vem::spoke_torus(center.at, inner, outer, start, sweep, mode, count);
      },
      arg("center"), arg("inner_radius"), arg("outer_radius"), arg("start_angle"),
      arg("sweep_angle"), arg("mode"), arg("count"),
      "Spokes in a ring, of mode 4 or 5 and a count of at least 2.");
  type.def_static(
      "arc",
      [](PointArg center, double radius, double start, double sweep) {
        return vem::arc<VemOverlay>(center.at, radius, start, sweep);
      },
      arg("center"), arg("radius"), arg("start_angle"), arg("sweep_angle"), "An arc.");
}

void AddOthers(Type& type) {
  type.def_static(
      "text",
      [](PointArg at, py::object text, const py::object& font) {
        return vem::text(at.at, TextBytes(text),
                         font.is_none() ? VemFont() : Element<VemFont>::From(font));
      },
      arg("point"), arg("text"), arg("font") = py::none(),
      "A text, its lower left corner at a point. The font's flag0 is not kept.");
  type.def_static(
      "image", [](const VemImage& image, PointArg at) { return vem::overlay_of(image, at.at); },
      arg("image"), arg("point") = PointArg(),
      "A copy of an image, its upper left pixel at a point.");
  type.def_static(
      "of", [](const VemROI& roi) { return vem::overlay_of(roi); }, arg("source"),
      "What a ROI, a Region or a Contour covers, as an overlay.");
  type.def_static(
      "of", [](const VemRegion& region) { return vem::overlay_of(region); }, arg("source"));
  type.def_static(
      "of", [](const VemContour& contour) { return vem::overlay_of(contour); }, arg("source"));
}

// A pen or a brush: three color components and a number, which is its width or its mode.
void AddStyle(Type& type, const std::string& style, const char* number, int unsaid,
              int (VemOverlay::*get)(long*, long*, long*, long*),
              void (VemOverlay::*set)(long, long, long, long)) {
  const std::string doc = "three color components, blue, green, red, and a " + std::string(number);
  type.def_property_readonly(
      style.c_str(),
      [get](VemOverlay& self) {
        long parts[4] = {};
        (self.*get)(&parts[0], &parts[1], &parts[2], &parts[3]);
        return py::make_tuple(parts[0], parts[1], parts[2], parts[3]);
      },
      ("The " + style + ": " + doc + ".").c_str());
  type.def(("with_" + style).c_str(),
           [set, number](VemOverlay self, const py::tuple& color, const py::object& last) {
             if (color.size() != 3) throw py::value_error("a color has three components");
             long parts[3];
             for (std::size_t i = 0; i < 3; ++i) {
               parts[i] = IntegerOf(py::object(color[i]), "a component", INT_MIN, INT_MAX);
             }
             (self.*set)(parts[0], parts[1], parts[2], IntegerOf(last, number, INT_MIN, INT_MAX));
             return self;
           },
           arg("color"), arg(number) = unsaid,
           ("The same with another " + style + ": " + doc + ".").c_str());
}

// Of what no generator makes, as texts, images and regions, under names of their own.
py::dict Parameters(const VemOverlay& overlay) {
  const IVemOverlay& from = vem::parts(overlay);
  VemOverlay copy(overlay);
  py::dict result;
  VemPoint at;
  if (from.Type == VemOverlayText) {
    VemVar text;
    VemFont font;
    font.Flag0 = 0;
    copy.GetText(&at, &text, &font);
    result["point"] = at;
    result["text"] = ValueTo(text);
    result["font"] = font;
  } else if (from.Type == VemOverlayImage) {
    VemImage image;
    copy.GetImage(&at, &image);
    result["point"] = at;
    result["image"] = image;
  } else if (from.Type == VemOverlayRegion) {
    VemRegion region;
    copy.GetRegion(&region);
    result["region"] = region;
  } else {
    return ParametersOf(vem::detail::find_shape(&vem::detail::shape::overlay, from.Type),
                        from.Params);
  }
  return result;
}

void AddReaders(Type& type) {
  type.def_property_readonly(
      "type", [](const VemOverlay& self) { return std::string(vem::detail::facts_of(self).kind); },
      "The name of the element; 'none' where there is none.");
  type.def_property_readonly("parameters", &Parameters,
                             "What the element was told, under the names of the arguments.");
}

}  // namespace

void AddOverlays(py::module_& module) {
  Type overlay(
      module, "Overlay",
      "A graphic element for a display to draw: a shape, a text, an image or a region, with\n"
      "a pen and a brush, which tints in mode 1. It never changes. What is refused raises\n"
      "ValueError.");
  overlay.def(py::init<>(), "No element, with the default pen and brush.");
  AddShapes(overlay);
  AddRoundShapes(overlay);
  AddOthers(overlay);
  AddReaders(overlay);
  AddStyle(overlay, "pen", "width", 1, &VemOverlay::GetPen, &VemOverlay::SetPen);
  AddStyle(overlay, "brush", "mode", 0, &VemOverlay::GetBrush, &VemOverlay::SetBrush);
  overlay.def("__hash__", [](const VemOverlay& self) { return HashOf(self); });
  AddEquality(overlay);
  AddLine(overlay);
  AddDocuments(overlay);
  AddFrozenCopies(overlay);

  py::class_<VemOverlayPath> path(
      module, "OverlayPath", "A list of overlays: a drawing of many elements, in their order.");
  AddList(path);
}
