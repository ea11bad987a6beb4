#ifndef PYTHON_SRC_BUFFERS_H_
#define PYTHON_SRC_BUFFERS_H_

#include <pybind11/pybind11.h>

#include <exception>
#include <memory>

#include <opencv2/core.hpp>

namespace py = pybind11;

/// What Python's buffer protocol tells of a matrix: two dimensions for one channel, else three.
py::buffer_info BufferOf(cv::Mat& mat);

/// Answers a request for the pixels of `owner`, as the protocol asks it: BufferError where the rows
/// lie apart, and the request does not take that.
int FillBuffer(PyObject* owner, cv::Mat& mat, Py_buffer* view, int flags);

/// Makes a class share the matrix that `matOf` finds in an object. The class must have been given
/// py::buffer_protocol(), whose own answer knows no packed requests, and lets exceptions out.
template <class T, cv::Mat& (*matOf)(T&)>
void AddBuffer(py::class_<T>& type) {
  reinterpret_cast<PyHeapTypeObject*>(type.ptr())->as_buffer.bf_getbuffer =
      [](PyObject* object, Py_buffer* view, int flags) {
        view->obj = nullptr;
        try {
          return FillBuffer(object, matOf(py::handle(object).cast<T&>()), view, flags);
        } catch (const std::exception& error) {
          PyErr_SetString(PyExc_BufferError, error.what());
        }
        return -1;
      };
}

#endif  // PYTHON_SRC_BUFFERS_H_
