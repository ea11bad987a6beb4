#ifndef PYTHON_SRC_CONVERT_H_
#define PYTHON_SRC_CONVERT_H_

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>

#include <cstdint>
#include <string>
#include <vector>

#include <opencv2/core.hpp>

#include "VemContourArray.h"
#include "VemPoint.h"
#include "VemPointArray.h"
#include "VemTuple.h"
#include "VemVar.h"

namespace py = pybind11;

/// What Python hands over, and what it gets. Each function needs the interpreter lock.

/// An argument that is a point: a Point, or any two numbers.
struct PointArg {
  VemPoint at;
};

/// An argument that is a list of points: an array of shape (n, 2), a PointArray, a Contour, or any
/// points that can be walked.
struct PointsArg {
  VemPointArray list;
};

/// An argument that is an index; IndexError for one that no list can have.
struct IndexArg {
  py::ssize_t at;
};

/// The bytes of a text as UTF-8, where what is no UTF-8 has come as surrogates. A zero byte raises
/// ValueError.
std::string TextBytes(py::handle text);
/// The text of bytes, where what is no UTF-8 becomes surrogates.
py::str TextOf(const std::string& bytes);

/// An int, a float, a str or None as a control value; TypeError for anything else, ValueError for
/// an int beyond 64 bits.
VemVar ValueOf(py::handle object);
/// The other way round.
py::object ValueTo(const VemVar& value);

/// Two or three numbers. False, without an error, where the object is something else.
bool ReadNumbers(py::handle object, double* numbers, int count);
/// A point; TypeError for anything else.
VemPoint PointOf(py::handle object);
/// Points; TypeError or ValueError for anything else.
VemPointArray PointsOf(py::handle object);
/// Contours of any arrays or lists of points.
VemContourArray ContoursOf(py::handle object);

/// An integer from `least` to `most`; `name` is told where it is refused.
long IntegerOf(py::handle object, const char* name, long least, long most);
/// (height, width), as NumPy tells a shape.
cv::Size CanvasOf(py::handle shape);

/// The coordinates as an array of shape (n, 2).
py::array_t<double> ArrayOf(const VemPointArray& points);
/// The same, not to be written to.
py::array FrozenArrayOf(const VemPointArray& points);
/// Whole coordinates as an array of shape (n, 2).
py::array_t<int> ArrayOf(const std::vector<cv::Point>& points);

/// What str() makes of an object.
std::string Words(const py::object& object);

/// Raises TypeError: `expected`, and what came.
[[noreturn]] void RaiseType(const char* expected, py::handle came);

namespace pybind11 {
namespace detail {

template <>
struct type_caster<PointArg> {
  PYBIND11_TYPE_CASTER(PointArg, const_name("Point"));
  bool load(handle source, bool) {
    double numbers[2];
    if (!ReadNumbers(source, numbers, 2)) return false;
    value.at = VemPoint(numbers[0], numbers[1]);
    return true;
  }
  static handle cast(const PointArg& from, return_value_policy, handle) {
    return pybind11::cast(from.at).release();
  }
};

template <>
struct type_caster<PointsArg> {
  PYBIND11_TYPE_CASTER(PointsArg, const_name("Points"));
  bool load(handle source, bool) {
    value.list = PointsOf(source);
    return true;
  }
};

template <>
struct type_caster<IndexArg> {
  PYBIND11_TYPE_CASTER(IndexArg, const_name("int"));
  bool load(handle source, bool) {
    if (!PyIndex_Check(source.ptr())) return false;
    value.at = PyNumber_AsSsize_t(source.ptr(), PyExc_IndexError);
    if (value.at == -1 && PyErr_Occurred() != nullptr) throw error_already_set();
    return true;
  }
};

template <>
struct type_caster<VemVar> {
  PYBIND11_TYPE_CASTER(VemVar, const_name("Value"));
  bool load(handle source, bool) {
    value = ValueOf(source);
    return true;
  }
  static handle cast(const VemVar& from, return_value_policy, handle) {
    return ValueTo(from).release();
  }
};

}  // namespace detail
}  // namespace pybind11

#endif  // PYTHON_SRC_CONVERT_H_
