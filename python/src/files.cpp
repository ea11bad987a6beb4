#include "python/src/files.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string>

#include "python/src/convert.h"

namespace {

std::string PathOf(const py::object& path) {
  PyObject* bytes = nullptr;
  if (PyUnicode_FSConverter(path.ptr(), &bytes) == 0) throw py::error_already_set();
  return py::reinterpret_steal<py::bytes>(bytes);
}

[[noreturn]] void RaiseFile(int error, const py::object& path) {
  errno = error;
  PyErr_SetFromErrnoWithFilenameObject(PyExc_OSError, path.ptr());
  throw py::error_already_set();
}

std::string FolderOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string::npos ? "." : path.substr(0, slash + 1);
}

}  // namespace

VemImage ReadImage(const py::object& path) {
  const std::string name = PathOf(path);
  if (access(name.c_str(), R_OK) != 0) RaiseFile(errno, path);
  VemImage image;
  bool read = false;
  {
    const py::gil_scoped_release others;
    read = image.ReadImage(name.c_str());
  }
  if (!read)
    throw py::value_error("no picture can be read from " + py::repr(path).cast<std::string>());
  return image;
}

void SaveImage(const VemImage& image, const py::object& path, const py::object& compression) {
  const std::string name = PathOf(path);
  const int level =
      compression.is_none() ? -1 : static_cast<int>(IntegerOf(compression, "compression", 0, 10));
  if (image.Width() == 0 || image.Height() == 0) throw py::value_error("the image is empty");
  if (name.size() < 4 || name.find('.', name.size() - 4) == std::string::npos) {
    // ".jpeg" alone is known without a dot.
    if (name.size() < 4 || strcasecmp(name.c_str() + name.size() - 4, "jpeg") != 0) {
      throw py::value_error("the last four characters of the path tell no format: " +
                            py::repr(path).cast<std::string>());
    }
  }
  const std::string folder = FolderOf(name);
  const bool exists = access(name.c_str(), F_OK) == 0;
  if (access(exists ? name.c_str() : folder.c_str(), W_OK) != 0) RaiseFile(errno, path);
  VemImage shared(image);
  bool saved = false;
  {
    const py::gil_scoped_release others;
    saved = level < 0 ? shared.SaveImage(name.c_str()) : shared.SaveImage(name.c_str(), level);
  }
  if (!saved)
    throw py::value_error("the image can't be written to " + py::repr(path).cast<std::string>());
}
