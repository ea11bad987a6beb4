#ifndef PYTHON_SRC_FILES_H_
#define PYTHON_SRC_FILES_H_

#include <pybind11/pybind11.h>

#include "VemImage.h"

namespace py = pybind11;

/// Image.read and Image.save; the interpreter lock is let go while they work.
VemImage ReadImage(const py::object& path);
void SaveImage(const VemImage& image, const py::object& path, const py::object& compression);

#endif  // PYTHON_SRC_FILES_H_
