#include <algorithm>
#include <cmath>

#include "Vem3DPoint.h"
#include "Vem3DPointArray.h"
#include "VemCircle.h"
#include "VemContour.h"
#include "VemContourArray.h"
#include "VemLine.h"
#include "VemPoint.h"
#include "VemPointArray.h"
#include "python/src/arrays.h"
#include "python/src/module.h"
#include "vem/array_traits.h"

namespace {

constexpr const char* kArrayDoc = "The coordinates, a row for each point, as an array of its own.";

// As NumPy calls it; None is no type of its own.
py::object Typed(const py::array& array, const py::object& type, const py::object& copy) {
  if (copy.is(py::bool_(false))) throw py::value_error("the coordinates are copied");
  return type.is_none() ? py::object(array) : array.attr("astype")(type);
}

template <class T>
void AddArray(py::class_<T>& type, py::array_t<double> (*make)(const T&)) {
  type.def(
      "__array__",
      [make](const T& self, py::object dtype, py::object copy) {
        return Typed(make(self), dtype, copy);
      },
      py::arg("dtype") = py::none(), py::arg("copy") = py::none(), kArrayDoc);
}

py::tuple Coordinates(const VemPoint& point) { return py::make_tuple(point.x, point.y); }
py::tuple Coordinates(const Vem3DPoint& point) { return py::make_tuple(point.x, point.y, point.z); }

// What a point shares with a tuple of its coordinates.
template <class P>
void AddPoint(py::class_<P>& type) {
  type.def("__len__", [](const P& self) { return py::len(Coordinates(self)); });
  type.def("__getitem__",
           [](const P& self, py::object index) -> py::object { return Coordinates(self)[index]; });
  type.def("__iter__", [](const P& self) { return py::iter(Coordinates(self)); });
  type.def("__hash__", [](const P& self) { return py::hash(Coordinates(self)); });
  type.def("__eq__", [](const P& self, py::object other) -> py::object {
    const py::tuple own = Coordinates(self);
    if (py::isinstance<P>(other)) return py::bool_(own.equal(Coordinates(other.cast<const P&>())));
    if (py::isinstance<py::tuple>(other)) return py::bool_(own.equal(other));
    return py::reinterpret_borrow<py::object>(Py_NotImplemented);
  });
  type.def("__repr__", [](py::object self) {
    const std::string name = py::type::handle_of(self).attr("__name__").cast<std::string>();
    return name + py::repr(Coordinates(self.cast<const P&>())).template cast<std::string>();
  });
  AddDocuments(type);
  AddFrozenCopies(type);
}

py::array_t<double> SpaceArray(const Vem3DPointArray& points) {
  py::array_t<double> array({static_cast<py::ssize_t>(points.Length()), py::ssize_t{3}});
  auto to = array.mutable_unchecked<2>();
  for (int i = 0; i < points.Length(); ++i) {
    const Vem3DPoint point = points[i];
    to(i, 0) = point.x;
    to(i, 1) = point.y;
    to(i, 2) = point.z;
  }
  return array;
}

void AddPoints(py::module_& module) {
  py::class_<VemPoint> point(
      module, "Point",
      "A point in the plane, x growing with the columns, y with the rows.\n\n"
      "It never changes, unpacks as x, y and equals the tuple (x, y).");
  point.def(py::init<double, double>(), py::arg("x") = 0.0, py::arg("y") = 0.0);
  point.def_property_readonly(
      "x", [](const VemPoint& self) { return self.x; }, "The column.");
  point.def_property_readonly(
      "y", [](const VemPoint& self) { return self.y; }, "The row.");
  point.def(
      "__add__", [](const VemPoint& a, PointArg b) { return a + b.at; }, py::is_operator());
  point.def(
      "__sub__", [](const VemPoint& a, PointArg b) { return a - b.at; }, py::is_operator());
  AddPoint(point);

  py::class_<Vem3DPoint> space(module, "Point3D", "A point in space. It never changes.");
  space.def(py::init([](double x, double y, double z) {
              Vem3DPoint made;
              made.x = x;
              made.y = y;
              made.z = z;
              return made;
            }),
            py::arg("x") = 0.0, py::arg("y") = 0.0, py::arg("z") = 0.0);
  space.def_property_readonly(
      "x", [](const Vem3DPoint& self) { return self.x; }, "First coordinate.");
  space.def_property_readonly(
      "y", [](const Vem3DPoint& self) { return self.y; }, "Second coordinate.");
  space.def_property_readonly(
      "z", [](const Vem3DPoint& self) { return self.z; }, "Third coordinate.");
  AddPoint(space);

  py::class_<VemPointArray> points(module, "PointArray",
                                   "A list of points. An array of shape (n, 2) makes one, and\n"
                                   "np.asarray makes an array of it, which does not share.");
  points.def(py::init([](PointsArg from) { return from.list; }), py::arg("points"));
  AddList(points);
  AddArray<VemPointArray>(points, [](const VemPointArray& self) { return ArrayOf(self); });

  py::class_<Vem3DPointArray> spaces(module, "Point3DArray", "A list of points in space.");
  AddList(spaces);
  AddArray<Vem3DPointArray>(spaces, &SpaceArray);
}

double AngleOf(const VemLine& line, double (VemLine::*angle)()) {
  VemLine copy(line);
  const double degrees = copy.Length() > 0 ? (copy.*angle)() : std::nan("");
  if (!std::isnan(degrees)) return degrees;
  throw py::value_error(
      "the line has no direction: its length is 0 or beyond what can be measured");
}

void AddMeasured(py::module_& module) {
  py::class_<VemLine> line(module, "Line",
                           "A directed segment between two points that differ. It never changes.");
  line.def(py::init([](PointArg start, PointArg end) {
             if (Same(start.at, end.at)) {
               throw py::value_error("Line: both points are " + Line(start.at));
             }
             return VemLine(start.at, end.at);
           }),
           py::arg("start"), py::arg("end"));
  line.def_property_readonly(
      "start", [](const VemLine& self) { return self.start; }, "First end.");
  line.def_property_readonly(
      "end", [](const VemLine& self) { return self.end; }, "Second end.");
  line.def_property_readonly(
      "length", [](VemLine self) { return self.Length(); }, "The distance between the ends.");
  line.def_property_readonly(
      "vertical_angle", [](const VemLine& self) { return AngleOf(self, &VemLine::VerticalAngle); },
      "Degrees between the line and growing y, 0 to 180.");
  line.def_property_readonly(
      "horizontal_angle",
      [](const VemLine& self) { return AngleOf(self, &VemLine::HorizonalAngle); },
      "Degrees between the line and growing x, 0 to 180.");
  line.def_property_readonly(
      "mid_point",
      [](VemLine self) {
        VemPoint middle;
        self.MidPoint(&middle);
        return middle;
      },
      "The point halfway between the ends.");
  line.def("__eq__", [](const VemLine& self, py::object other) -> py::object {
    if (!py::isinstance<VemLine>(other))
      return py::reinterpret_borrow<py::object>(Py_NotImplemented);
    const VemLine& line2 = other.cast<const VemLine&>();
    return py::bool_(Same(self.start, line2.start) && Same(self.end, line2.end));
  });
  AddLine(line);
  AddDocuments(line);
  AddFrozenCopies(line);

  py::class_<VemCircle> circle(module, "Circle",
                               "A circle by centre and radius, to be measured. It never changes.");
  circle.def(py::init([](PointArg center, double radius) { return VemCircle(center.at, radius); }),
             py::arg("center"), py::arg("radius"));
  circle.def_property_readonly(
      "center", [](const VemCircle& self) { return self.center; }, "The centre.");
  circle.def_property_readonly(
      "radius", [](const VemCircle& self) { return self.radius; }, "The radius.");
  circle.def_property_readonly(
      "perimeter", [](VemCircle self) { return self.Perimeter(); }, "The length around.");
  circle.def_property_readonly(
      "area", [](VemCircle self) { return self.Area(); }, "The area.");
  circle.def("__eq__", [](const VemCircle& self, py::object other) -> py::object {
    if (!py::isinstance<VemCircle>(other)) {
      return py::reinterpret_borrow<py::object>(Py_NotImplemented);
    }
    const VemCircle& circle2 = other.cast<const VemCircle&>();
    return py::bool_(Same(self.center, circle2.center) &&
                     Same(VemPoint(self.radius, 0), VemPoint(circle2.radius, 0)));
  });
  AddLine(circle);
  AddDocuments(circle);
  AddFrozenCopies(circle);
}

VemPointArray PointsIn(const VemContour& contour) {
  return vem::detail::points_of<VemPointArray>(contour);
}

void AddContours(py::module_& module) {
  py::class_<VemContour> contour(module, "Contour",
                                 "An open chain of points. It never changes; np.asarray makes an\n"
                                 "array of shape (n, 2) of it.");
  contour.def(py::init([](PointsArg from) {
                VemContour made;
                made.FromPointArray(from.list);
                return made;
              }),
              py::arg("points") = py::tuple(), "A chain of the points, in their order.");
  contour.def_property_readonly("perimeter", &VemContour::Perimeter,
                                "The length of the chain, without the way back to its start.");
  contour.def_property_readonly(
      "area", &VemContour::Area,
      "The triangles that the first point makes with each edge, unsigned.");
  contour.def("__len__", &VemContour::Length);
  contour.def("__getitem__", [](py::object self, IndexArg index) {
    const VemPointArray points = PointsIn(self.cast<const VemContour&>());
    return VemPoint(points[PositionIn(self, points, index.at)]);
  });
  contour.def("__getitem__", [](const VemContour& self, const py::slice& slice) {
    VemPointArray part = Sequence<VemPointArray>::Part(PointsIn(self), slice);
    VemContour made;
    made.FromPointArray(part);
    return made;
  });
  contour.def("__iter__", [](const VemContour& self) {
    return py::iter(Sequence<VemPointArray>::List(PointsIn(self)));
  });
  contour.def("__repr__", [](const VemContour& self) {
    return "Contour(" + Sequence<VemPointArray>::Text(PointsIn(self)) + ")";
  });
  AddEquality(contour);
  AddArray<VemContour>(contour, [](const VemContour& self) { return ArrayOf(PointsIn(self)); });
  AddDocuments(contour);
  AddFrozenCopies(contour);
  const py::object sequence = py::module_::import("collections.abc").attr("Sequence");
  for (const char* name : {"__contains__", "__reversed__", "index", "count"}) {
    contour.attr(name) = sequence.attr(name);
  }
  sequence.attr("register")(contour);

  py::class_<VemContourArray> contours(module, "ContourArray",
                                       "A list of contours; any points that make a contour go in.");
  AddList(contours);
}

}  // namespace

void AddGeometry(py::module_& module) {
  AddPoints(module);
  AddMeasured(module);
  AddContours(module);
}
