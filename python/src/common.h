#ifndef PYTHON_SRC_COMMON_H_
#define PYTHON_SRC_COMMON_H_

#include <pybind11/pybind11.h>

#include <memory>
#include <string>

#include "python/src/convert.h"
#include "python/src/text.h"

/// What every class of the module has.

/// "<vemdata.ROI circle center (12, 8), radius 6>", where `line` is not too long.
inline py::str Shown(py::handle object, std::string line) {
  constexpr std::size_t most = 200;
  if (line.size() > most) line = line.substr(0, most) + " ...";
  const std::string name = py::type::handle_of(object).attr("__name__").cast<std::string>();
  return TextOf("<vemdata." + name + (line.empty() ? "" : " ") + line + ">");
}

/// JSON, pickling, copying and the name under which documents tell the class.
template <class T, class... Options>
void AddDocuments(py::class_<T, Options...>& type) {
  type.def(
      "to_json", [](const T& self) { return JsonOf(self); },
      "The JSON document that the C++ header vem/json.h writes.");
  type.def_static(
      "from_json",
      [](const std::string& document) {
        std::unique_ptr<T> value(new T());
        ReadJson(document, *value);
        return value;
      },
      py::arg("document"),
      "Reads what to_json has written. Raises ValueError with the place of the first fault.");
  type.def("__reduce__", [](py::object self) {
    return py::make_tuple(py::module_::import("vemdata").attr("_read"),
                          py::make_tuple(py::type::handle_of(self), self.attr("to_json")()));
  });
}

/// Copies of what never changes are the object itself.
template <class T, class... Options>
void AddFrozenCopies(py::class_<T, Options...>& type) {
  type.def("__copy__", [](py::object self) { return self; });
  type.def(
      "__deepcopy__", [](py::object self, py::dict) { return self; }, py::arg("memo"));
}

template <class T, class... Options>
void AddLine(py::class_<T, Options...>& type) {
  type.def("__repr__", [](py::object self) { return Shown(self, Line(self.cast<const T&>())); });
}

template <class T, class... Options>
void AddEquality(py::class_<T, Options...>& type) {
  type.def("__eq__", [](const T& self, py::object other) -> py::object {
    if (!py::isinstance<T>(other)) return py::reinterpret_borrow<py::object>(Py_NotImplemented);
    return py::bool_(Same(self, other.cast<const T&>()));
  });
}

#endif  // PYTHON_SRC_COMMON_H_
