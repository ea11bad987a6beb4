#include "python/src/buffers.h"

#include <string>
#include <utility>
#include <vector>

#include "python/src/rasters.h"

py::buffer_info BufferOf(cv::Mat& mat) {
  static unsigned char nothing = 0;
  const py::ssize_t size = static_cast<py::ssize_t>(mat.elemSize1());
  const py::ssize_t channels = mat.channels();
  std::vector<py::ssize_t> shape = {mat.rows, mat.cols};
  std::vector<py::ssize_t> strides = {
      static_cast<py::ssize_t>(mat.empty() ? mat.elemSize() : mat.step[0]), size * channels};
  if (channels > 1) {
    shape.push_back(channels);
    strides.push_back(size);
  }
  const std::string format(1, TypeOf(mat.depth()).attr("char").cast<std::string>()[0]);
  const py::ssize_t dimensions = static_cast<py::ssize_t>(shape.size());
  return py::buffer_info(mat.empty() ? &nothing : mat.data, size, format, dimensions, shape,
                         strides);
}

int FillBuffer(PyObject* owner, cv::Mat& mat, Py_buffer* view, int flags) {
  std::unique_ptr<py::buffer_info> info(new py::buffer_info(BufferOf(mat)));
  Py_buffer filled = {};
  filled.buf = info->ptr;
  filled.itemsize = info->itemsize;
  filled.len = info->itemsize * info->size;
  filled.ndim = static_cast<int>(info->ndim);
  filled.shape = info->shape.data();
  filled.strides = info->strides.data();
  const auto asks = [flags](int request) { return (flags & request) == request; };
  const bool packed = PyBuffer_IsContiguous(&filled, 'C') != 0;
  const bool byColumns = PyBuffer_IsContiguous(&filled, 'F') != 0;
  if ((!packed && (!asks(PyBUF_STRIDES) || asks(PyBUF_C_CONTIGUOUS))) ||
      (!byColumns && asks(PyBUF_F_CONTIGUOUS)) ||
      (!packed && !byColumns && asks(PyBUF_ANY_CONTIGUOUS))) {
    PyErr_SetString(PyExc_BufferError, "the pixels do not lie packed in the asked order");
    return -1;
  }
  if (asks(PyBUF_FORMAT)) filled.format = const_cast<char*>(info->format.c_str());
  if (!asks(PyBUF_STRIDES)) filled.strides = nullptr;
  if (!asks(PyBUF_ND)) {
    filled.ndim = 1;
    filled.shape = nullptr;
  }
  filled.obj = py::handle(owner).inc_ref().ptr();
  filled.internal = info.release();  // Deleted by pybind11 with the view.
  *view = filled;
  return 0;
}
