#ifndef PYTHON_SRC_RASTERS_H_
#define PYTHON_SRC_RASTERS_H_

#include <pybind11/numpy.h>

#include <opencv2/core.hpp>

namespace py = pybind11;

/// Arrays as OpenCV's matrices and the other way round.

/// OpenCV's depth of an array's numbers; TypeError where it has none. What is bool counts as bytes.
int DepthOf(const py::dtype& type);
/// NumPy's type of a depth; TypeError where it has none.
py::dtype TypeOf(int depth);

/// A matrix over the array's own memory, which must outlive it. Raises ValueError for what is no
/// picture of rows of packed pixels, one below the other.
cv::Mat MatOver(const py::array& array);
/// The same, which keeps the array alive for as long as anything shares the pixels. Raises
/// ValueError for an array that is not to be written to.
cv::Mat MatSharing(const py::array& array);
/// A copy in packed rows, whatever the strides.
cv::Mat MatCopied(const py::array& array);

#endif  // PYTHON_SRC_RASTERS_H_
