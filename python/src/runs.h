#ifndef PYTHON_SRC_RUNS_H_
#define PYTHON_SRC_RUNS_H_

#include <pybind11/numpy.h>

#include <cstdint>
#include <memory>
#include <vector>

#include <opencv2/core.hpp>

#include "VemContourArray.h"
#include "VemRLC.h"
#include "VemROI.h"
#include "VemRegion.h"
#include "VemTuple.h"

namespace py = pybind11;

/// Runs of shapes, regions and rasters, and what Python gets of them.

/// Runs as the classes keep them, on a canvas.
struct RunLists {
  VemVarArray rows;
  VemVarArray firsts;
  VemVarArray lasts;
  int width = 0;
  int height = 0;
};

/// An array of shape (n, 3): row, first and last column.
py::array_t<int> RunArray(const VemVarArray& rows, const VemVarArray& firsts,
                          const VemVarArray& lasts);
/// A picture, 255 in the pixels of the runs as far as they lie on it, else 0.
py::array_t<std::uint8_t> Painted(const VemVarArray& rows, const VemVarArray& firsts,
                                  const VemVarArray& lasts, cv::Size canvas);

/// A raster as NumPy has it: any strides, and numbers of 1, 2, 4 or 8 bytes, of which only zero is
/// outside.
struct MaskView {
  const char* data;
  int height, width;
  std::ptrdiff_t rowStride, columnStride;
  int bytes;
};
/// Of a two-dimensional array of integers or bools; TypeError or ValueError for another. The array
/// must outlive it.
MaskView MaskOf(const py::array& array);
/// The runs, by row, then by column. Needs no interpreter lock.
std::vector<Run> RunsOf(const MaskView& mask);
/// A matrix of the same pixels, or a copy where no matrix can stand over them. Needs no lock.
cv::Mat MatOf(const MaskView& mask);

/// A region of the runs from one position to another, made where Python keeps it: every copy is a
/// deep one. Needs no lock.
std::unique_ptr<VemRegion> RegionOf(const std::vector<Run>& runs, std::size_t from, std::size_t to,
                                    cv::Size canvas);

/// The runs of a shape, with nothing of the canvas where it lies left of or above the origin.
/// Raises `std::invalid_argument` where there are none to be told. Needs no lock.
RunLists RunsOf(const VemROI& roi);
/// The outlines of a shape, and its canvas, in the same way.
VemContourArray OutlinesOf(const VemROI& roi, cv::Size* canvas);

/// Outlines as arrays of whole numbers.
py::list OutlineArrays(const VemContourArray& outlines);

#endif  // PYTHON_SRC_RUNS_H_
