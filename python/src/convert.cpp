#include "python/src/convert.h"

#include <climits>
#include <cstddef>
#include <cstring>

#include "VemContour.h"
#include "vem/array_traits.h"

namespace {

bool IsText(py::handle object) {
  return PyUnicode_Check(object.ptr()) || PyBytes_Check(object.ptr()) ||
         PyByteArray_Check(object.ptr());
}

// NumPy's own floats of 16 and 32 bits are none of Python's.
bool IsReal(py::handle object) {
  if (PyFloat_Check(object.ptr())) return true;
  static const py::handle floating =
      py::object(py::module_::import("numpy").attr("floating")).release();
  return py::isinstance(object, floating);
}

bool ReadNumber(py::handle object, double* number) {
  if (!IsReal(object) && !PyIndex_Check(object.ptr())) return false;
  *number = PyFloat_AsDouble(object.ptr());
  if (*number != -1.0 || !PyErr_Occurred()) return true;
  throw py::error_already_set();
}

VemPointArray PointsOfArray(const py::array& array) {
  const char kind = array.dtype().kind();
  if (kind != 'i' && kind != 'u' && kind != 'f') {
    throw py::type_error("points are numbers, not " + Words(array.dtype()));
  }
  if (array.size() == 0) return VemPointArray();
  if (array.ndim() != 2 || array.shape(1) != 2) {
    throw py::value_error("an array of points has the shape (n, 2), not " +
                          Words(array.attr("shape")));
  }
  const auto numbers = py::array_t<double, py::array::forcecast>::ensure(array);
  if (!numbers) throw py::error_already_set();
  const auto at = numbers.unchecked<2>();
  VemPointArray points;
  for (py::ssize_t i = 0; i < at.shape(0); ++i) {
    VemPoint point(at(i, 0), at(i, 1));
    points.Append(point);
  }
  return points;
}

}  // namespace

void RaiseType(const char* expected, py::handle came) {
  throw py::type_error(std::string("expected ") + expected + ", not " +
                       Py_TYPE(came.ptr())->tp_name);
}

std::string Words(const py::object& object) {
  return py::str(static_cast<const py::handle&>(object)).cast<std::string>();
}

std::string TextBytes(py::handle text) {
  if (!PyUnicode_Check(text.ptr())) RaiseType("a str", text);
  const py::bytes bytes = py::reinterpret_steal<py::bytes>(
      PyUnicode_AsEncodedString(text.ptr(), "utf-8", "surrogateescape"));
  if (!bytes) throw py::error_already_set();
  std::string result = bytes;
  if (result.find('\0') != std::string::npos) {
    throw py::value_error("the text has a zero byte within");
  }
  return result;
}

py::str TextOf(const std::string& bytes) {
  PyObject* const text =
      PyUnicode_DecodeUTF8(bytes.data(), static_cast<py::ssize_t>(bytes.size()), "surrogateescape");
  if (text == nullptr) throw py::error_already_set();
  return py::reinterpret_steal<py::str>(text);
}

VemVar ValueOf(py::handle object) {
  if (object.is_none()) return VemVar();
  if (PyUnicode_Check(object.ptr())) return VemVar(TextBytes(object).c_str());
  if (IsReal(object)) {
    double number = 0;
    ReadNumber(object, &number);
    return VemVar(number);
  }
  if (PyIndex_Check(object.ptr())) return VemVar(IntegerOf(object, "a value", LONG_MIN, LONG_MAX));
  RaiseType("an int, a float, a str or None", object);
}

py::object ValueTo(const VemVar& value) {
  switch (value.ValType()) {
    case VemVarLong:
      return py::int_(value.L());
    case VemVarDouble:
      return py::float_(value.D());
    case VemVarString:
      return TextOf(value.S());
    default:
      return py::none();
  }
}

bool ReadNumbers(py::handle object, double* numbers, int count) {
  if (IsText(object) || !PySequence_Check(object.ptr())) return false;
  const py::ssize_t length = PySequence_Size(object.ptr());
  if (length != count) {
    PyErr_Clear();
    return false;
  }
  for (int i = 0; i < count; ++i) {
    const py::object item = py::reinterpret_steal<py::object>(PySequence_GetItem(object.ptr(), i));
    if (!item) throw py::error_already_set();
    if (!ReadNumber(item, &numbers[i])) return false;
  }
  return true;
}

VemPoint PointOf(py::handle object) {
  double numbers[2];
  if (!ReadNumbers(object, numbers, 2)) RaiseType("a point, two numbers", object);
  return VemPoint(numbers[0], numbers[1]);
}

VemPointArray PointsOf(py::handle object) {
  if (py::isinstance<VemPointArray>(object)) return object.cast<const VemPointArray&>();
  if (py::isinstance<VemContour>(object)) {
    return vem::detail::points_of<VemPointArray>(object.cast<const VemContour&>());
  }
  if (py::isinstance<py::array>(object)) {
    return PointsOfArray(py::reinterpret_borrow<py::array>(object));
  }
  if (IsText(object) || !py::isinstance<py::iterable>(object)) RaiseType("points", object);
  VemPointArray points;
  for (const py::handle item : py::reinterpret_borrow<py::iterable>(object)) {
    VemPoint point = PointOf(item);
    points.Append(point);
  }
  return points;
}

VemContourArray ContoursOf(py::handle object) {
  if (py::isinstance<VemContourArray>(object)) return object.cast<const VemContourArray&>();
  if (IsText(object) || !py::isinstance<py::iterable>(object)) RaiseType("contours", object);
  VemContourArray contours;
  for (const py::handle item : py::reinterpret_borrow<py::iterable>(object)) {
    VemPointArray points = PointsOf(item);
    VemContour contour;
    contour.FromPointArray(points);
    contours.Append(contour);
  }
  return contours;
}

long IntegerOf(py::handle object, const char* name, long least, long most) {
  if (!PyIndex_Check(object.ptr())) RaiseType("an int", object);
  const py::object whole = py::reinterpret_steal<py::object>(PyNumber_Index(object.ptr()));
  if (!whole) throw py::error_already_set();
  int overflow = 0;
  const long number = PyLong_AsLongAndOverflow(whole.ptr(), &overflow);
  if (overflow == 0 && number >= least && number <= most) return number;
  throw py::value_error(std::string(name) + " is " + Words(whole) + ", not from " +
                        std::to_string(least) + " to " + std::to_string(most));
}

cv::Size CanvasOf(py::handle shape) {
  if (!PySequence_Check(shape.ptr()) || IsText(shape) || py::len(shape) != 2) {
    RaiseType("a shape, (height, width)", shape);
  }
  const py::sequence sides = py::reinterpret_borrow<py::sequence>(shape);
  const int height = static_cast<int>(IntegerOf(py::object(sides[0]), "the height", 0, INT_MAX));
  const int width = static_cast<int>(IntegerOf(py::object(sides[1]), "the width", 0, INT_MAX));
  return cv::Size(width, height);
}

py::array_t<double> ArrayOf(const VemPointArray& points) {
  py::array_t<double> array({static_cast<py::ssize_t>(points.Length()), py::ssize_t{2}});
  auto to = array.mutable_unchecked<2>();
  for (int i = 0; i < points.Length(); ++i) {
    const VemPoint point = points[i];
    to(i, 0) = point.x;
    to(i, 1) = point.y;
  }
  return array;
}

py::array FrozenArrayOf(const VemPointArray& points) {
  py::array_t<double> array = ArrayOf(points);
  array.attr("setflags")(py::arg("write") = false);
  return std::move(array);
}

py::array_t<int> ArrayOf(const std::vector<cv::Point>& points) {
  py::array_t<int> array({static_cast<py::ssize_t>(points.size()), py::ssize_t{2}});
  static_assert(sizeof(cv::Point) == 2 * sizeof(int), "points are pairs");
  if (!points.empty()) {
    std::memcpy(array.mutable_data(), points.data(), points.size() * sizeof(cv::Point));
  }
  return array;
}
