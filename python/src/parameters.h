#ifndef PYTHON_SRC_PARAMETERS_H_
#define PYTHON_SRC_PARAMETERS_H_

#include <pybind11/pybind11.h>

#include "VemTuple.h"
#include "vem/shapes.h"

namespace py = pybind11;

/// The numbers of a shape under the names of its generator's arguments. Without a shape, or with
/// numbers that no generator has, there are none.
py::dict ParametersOf(const vem::detail::shape* form, const VemVarArray& numbers);

#endif  // PYTHON_SRC_PARAMETERS_H_
