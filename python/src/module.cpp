#include "python/src/module.h"

#include <cstddef>
#include <exception>
#include <stdexcept>
#include <string>

#include <opencv2/core.hpp>

#include "VemVersion.h"

namespace {

// "vem::rect2: length1 is 0, not above 0" without the namespace.
std::string Reason(const std::exception& error) {
  const std::string text = error.what();
  return text.rfind("vem::", 0) == 0 ? text.substr(5) : text;
}

void Translate(std::exception_ptr thrown) {
  try {
    if (thrown) std::rethrow_exception(thrown);
  } catch (const cv::Exception& error) {
    const bool memory = error.code == cv::Error::StsNoMem;
    PyErr_SetString(memory ? PyExc_MemoryError : PyExc_ValueError, error.what());
  } catch (const std::invalid_argument& error) {
    PyErr_SetString(PyExc_ValueError, Reason(error).c_str());
  } catch (const std::overflow_error& error) {
    PyErr_SetString(PyExc_OverflowError, Reason(error).c_str());
  }
}

// Called for an object that __new__ made and no __init__ has filled.
void* RefuseEmpty(std::size_t) { throw py::type_error("the object was made without __init__()"); }

// The package shows a class as its own. Copies, documents and pickles would lose what a subclass
// adds, so there is none.
void Finish(py::handle type) {
  type.attr("__module__") = "vemdata";
  auto* const python = reinterpret_cast<PyTypeObject*>(type.ptr());
  py::detail::type_info* const bound = py::detail::get_type_info(python);
  if (bound == nullptr) return;
  bound->operator_new = &RefuseEmpty;
  python->tp_flags &= ~Py_TPFLAGS_BASETYPE;
  PyType_Modified(python);
}

}  // namespace

PYBIND11_MODULE(_vemdata, module) {
  py::register_exception_translator(&Translate);
  AddValues(module);
  AddGeometry(module);
  AddRasters(module);
  AddRois(module);
  AddRegions(module);
  AddMasks(module);
  AddFonts(module);
  AddOverlays(module);
  AddDrawing(module);
  AddResults(module);
  AddJson(module);
  module.attr("__version__") = VEM_DATA_VERSION_TEXT;

  for (const auto& item : module.attr("__dict__").cast<py::dict>()) {
    if (PyType_Check(item.second.ptr())) Finish(item.second);
  }
}
