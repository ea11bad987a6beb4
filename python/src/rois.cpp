#include <climits>
#include <string>

#include "IVemROIPara.h"
#include "VemROI.h"
#include "VemROIArray.h"
#include "python/src/arrays.h"
#include "python/src/module.h"
#include "python/src/parameters.h"
#include "python/src/runs.h"
#include "vem/make.h"
#include "vem/parts.h"

namespace {

const char* const kPoint = "A region of interest that is a point.";
const char* const kRect1 =
    "A rectangle from its upper left to its lower right corner, both included. Raises ValueError\n"
    "unless p2 is greater in x and in y.";
const char* const kCircle = "A filled circle. Raises ValueError unless the radius is above 0.";
const char* const kTorus =
    "A ring, from start_angle on for sweep_angle degrees. Raises ValueError unless the radii are\n"
    "above 0, the outer one is the greater, and the sweep is not negative.";
const char* const kRect2 =
    "A rotated rectangle. length1 is the full side along the direction angle, length2 the one\n"
    "across; ValueError unless both are above 0. Angles are degrees, counter-clockwise as seen.";
const char* const kLine =
    "A segment between two points. Raises ValueError where they are the same. One that is wider\n"
    "than high has no pixels, and that of one that is vertical can't be told.";
const char* const kEllipse =
    "A rotated ellipse by its semi-axes, radius1 along the direction angle. Raises ValueError "
    "unless\n"
    "both are above 0.";
const char* const kArc =
    "An arc, from start_angle on for sweep_angle degrees. Raises ValueError unless the radius is\n"
    "above 0 and the sweep is not negative.";
const char* const kPolygon =
    "A filled polygon of at least 3 points, else ValueError; the closing point is not listed.";
const char* const kIrregular = "A closed chain of at least 3 pixels, else ValueError.";

void AddShapes(py::module_& module) {
  using py::arg;
  module.def(
      "point", [](PointArg at) { return vem::point(at.at); }, arg("point"), kPoint);
  module.def(
      "rect1", [](PointArg p1, PointArg p2) { return vem::rect1(p1.at, p2.at); }, arg("p1"),
      arg("p2"), kRect1);
  module.def(
      "circle", [](PointArg center, double radius) { return vem::circle(center.at, radius); },
      arg("center"), arg("radius"), kCircle);
  module.def(
      "torus",
      [](PointArg center, double inner, double outer, double start, double sweep) {
        return vem::torus(center.at, inner, outer, start, sweep);
      },
      arg("center"), arg("inner_radius"), arg("outer_radius"), arg("start_angle") = 0.0,
      arg("sweep_angle") = 360.0, kTorus);
  module.def(
      "rect2",
      [](PointArg center, double length1, double length2, double angle) {
        return vem::rect2(center.at, length1, length2, angle);
      },
      arg("center"), arg("length1"), arg("length2"), arg("angle") = 0.0, kRect2);
  module.def(
      "line", [](PointArg p1, PointArg p2) { return vem::line(p1.at, p2.at); }, arg("p1"),
      arg("p2"), kLine);
  module.def(
      "ellipse",
      [](PointArg center, double radius1, double radius2, double angle) {
        return vem::ellipse(center.at, radius1, radius2, angle);
      },
      arg("center"), arg("radius1"), arg("radius2"), arg("angle") = 0.0, kEllipse);
  module.def(
      "arc",
      [](PointArg center, double radius, double start, double sweep) {
        return vem::arc(center.at, radius, start, sweep);
      },
      arg("center"), arg("radius"), arg("start_angle"), arg("sweep_angle"), kArc);
  module.def(
      "polygon", [](PointsArg points) { return vem::polygon(points.list); }, arg("points"),
      kPolygon);
  module.def(
      "irregular", [](PointsArg points) { return vem::irregular(points.list); }, arg("points"),
      kIrregular);
}

RunLists RunsWithoutLock(const VemROI& roi) {
  const py::gil_scoped_release others;
  return RunsOf(roi);
}

py::list RoiContours(const VemROI& roi) {
  VemContourArray outlines;
  {
    const py::gil_scoped_release others;
    cv::Size canvas;
    outlines = OutlinesOf(roi, &canvas);
  }
  return OutlineArrays(outlines);
}

py::array_t<std::uint8_t> RoiMask(const VemROI& roi, const py::object& shape) {
  const RunLists runs = RunsWithoutLock(roi);
  const cv::Size canvas = shape.is_none() ? cv::Size(runs.width, runs.height) : CanvasOf(shape);
  return Painted(runs.rows, runs.firsts, runs.lasts, canvas);
}

std::string KindOf(const VemROI& roi) {
  if (roi.ROIType() == VemROIMask) return "mask";
  const vem::detail::shape* const form =
      vem::detail::find_shape(&vem::detail::shape::roi, roi.ROIType());
  return form == nullptr ? "none" : form->name;
}

}  // namespace

void AddRois(py::module_& module) {
  py::class_<VemROI> roi(
      module, "ROI",
      "A region of interest: a shape by numbers, or a mask of runs. It never changes.\n\n"
      "Coordinates are pixels, x before y, rows growing downward; angles are degrees, counter-\n"
      "clockwise as seen. The functions rect1, circle, rect2, ... make one.");
  roi.def(py::init<>(), "No shape.");
  roi.def(
      "runs",
      [](const VemROI& self) {
        const RunLists runs = RunsWithoutLock(self);
        return RunArray(runs.rows, runs.firsts, runs.lasts);
      },
      "The pixels as an int32 array of shape (n, 3): row, first and last column, both included.\n"
      "None are told left of and above the origin; they may lie beyond any picture. Raises\n"
      "ValueError for no shape, a point, a vertical line, and numbers too large for pixels.");
  roi.def(
      "contours", &RoiContours,
      "The outlines, a list of int32 arrays of shape (m, 2), x before y. Those of circles,\n"
      "ellipses and masks are traced, those of other shapes list their vertices. They need not\n"
      "enclose exactly the pixels of runs().");
  roi.def("mask", &RoiMask, py::arg("shape") = py::none(),
          "A uint8 picture, 255 in the pixels of runs(), else 0; of the size of canvas, or of a\n"
          "shape (height, width), beyond which pixels are lost.");
  roi.def_property_readonly(
      "canvas",
      [](const VemROI& self) {
        const RunLists runs = RunsWithoutLock(self);
        return py::make_tuple(runs.width, runs.height);
      },
      "(width, height) of the canvas from the origin that just holds the pixels; (0, 0) for a\n"
      "shape that lies left of or above it.");
  roi.def_property_readonly("type", &KindOf, "The name of the shape; 'none' where there is none.");
  roi.def_property_readonly(
      "parameters",
      [](const VemROI& self) {
        return ParametersOf(vem::detail::find_shape(&vem::detail::shape::roi, self.ROIType()),
                            vem::parts(self).Params);
      },
      "The numbers of the shape, as they were told, under the names of the function's arguments.");
  roi.def("__hash__", [](const VemROI& self) { return HashOf(self); });
  AddEquality(roi);
  AddLine(roi);
  AddDocuments(roi);
  AddFrozenCopies(roi);
  AddShapes(module);

  py::class_<VemROIArray> rois(module, "ROIArray", "A list of regions of interest.");
  AddList(rois);
}
