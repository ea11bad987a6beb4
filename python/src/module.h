#ifndef PYTHON_SRC_MODULE_H_
#define PYTHON_SRC_MODULE_H_

#include <pybind11/pybind11.h>

namespace py = pybind11;

// Each adds the classes and functions of its subject to the module. Classes that others name in
// their signatures are added first.
void AddValues(py::module_& module);
void AddGeometry(py::module_& module);
void AddRasters(py::module_& module);
void AddRois(py::module_& module);
void AddRegions(py::module_& module);
void AddMasks(py::module_& module);
void AddFonts(py::module_& module);
void AddOverlays(py::module_& module);
void AddDrawing(py::module_& module);
void AddResults(py::module_& module);
void AddJson(py::module_& module);

#endif  // PYTHON_SRC_MODULE_H_
