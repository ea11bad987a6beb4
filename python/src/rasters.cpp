#include "python/src/rasters.h"

#include <climits>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "VemFeatureDescriptor.h"
#include "VemImage.h"
#include "VemImageArray.h"
#include "VemMatrix.h"
#include "VemMatrixArray.h"
#include "VemMorphStructure.h"
#include "python/src/arrays.h"
#include "python/src/buffers.h"
#include "python/src/files.h"
#include "python/src/module.h"
#include "vem/parts.h"

namespace {

struct Depth {
  char kind;
  int size;
  int depth;
  const char* name;
};
constexpr Depth kDepths[] = {
    {'u', 1, CV_8U, "uint8"},    {'i', 1, CV_8S, "int8"},   {'u', 2, CV_16U, "uint16"},
    {'i', 2, CV_16S, "int16"},   {'i', 4, CV_32S, "int32"}, {'f', 4, CV_32F, "float32"},
    {'f', 8, CV_64F, "float64"}, {'b', 1, CV_8U, "bool"},
};

// Keeps the array that a matrix shares. Whoever lets the last matrix go may not hold the
// interpreter lock.
class ArrayKeeper : public cv::MatAllocator {
 public:
  cv::UMatData* allocate(int dims, const int* sizes, int type, void* data, std::size_t* step,
                         cv::AccessFlag flags, cv::UMatUsageFlags usage) const override {
    return cv::Mat::getStdAllocator()->allocate(dims, sizes, type, data, step, flags, usage);
  }
  bool allocate(cv::UMatData* data, cv::AccessFlag flags, cv::UMatUsageFlags usage) const override {
    return cv::Mat::getStdAllocator()->allocate(data, flags, usage);
  }
  void deallocate(cv::UMatData* data) const override {
    if (data == nullptr || data->refcount != 0 || data->urefcount != 0) return;
    if (Py_IsInitialized() != 0) {
      const py::gil_scoped_acquire lock;
      Py_DECREF(static_cast<PyObject*>(data->userdata));
    }
    delete data;
  }
};

const ArrayKeeper& Keeper() {
  static const ArrayKeeper* const keeper = new ArrayKeeper();  // Matrices may outlive all else.
  return *keeper;
}

[[noreturn]] void RaiseLayout(const std::string& reason) {
  throw py::value_error(reason + "; copy=True takes it as a copy");
}

int Side(py::ssize_t length) {
  if (length <= INT_MAX) return static_cast<int>(length);
  throw py::value_error("a picture has at most 2147483647 rows and columns");
}

bool IsNative(const py::dtype& type) { return type.attr("isnative").cast<bool>(); }

void TestShape(const py::array& array) {
  if (array.ndim() != 2 && array.ndim() != 3) {
    throw py::value_error(
        "a picture has the shape (height, width) or (height, width, channels), not " +
        Words(array.attr("shape")));
  }
  if (array.ndim() == 3 && array.size() > 0 && array.shape(2) > CV_CN_MAX) {
    throw py::value_error("a picture has at most 512 channels, not " +
                          std::to_string(array.shape(2)));
  }
}

}  // namespace

int DepthOf(const py::dtype& type) {
  for (const Depth& depth : kDepths) {
    if (type.kind() == depth.kind && type.itemsize() == depth.size && IsNative(type)) {
      return depth.depth;
    }
  }
  throw py::type_error(
      "a picture's numbers are uint8, int8, uint16, int16, int32, float32 or float64, not " +
      Words(type));
}

py::dtype TypeOf(int depth) {
  for (const Depth& known : kDepths) {
    if (known.depth == depth) return py::dtype(known.name);
  }
  throw py::type_error("pixels of a depth that NumPy has not");
}

cv::Mat MatOver(const py::array& array) {
  const int depth = DepthOf(array.dtype());
  TestShape(array);
  if (array.size() == 0) return cv::Mat();
  const py::ssize_t size = array.itemsize();
  const int height = Side(array.shape(0));
  const int width = Side(array.shape(1));
  const int channels = array.ndim() == 3 ? static_cast<int>(array.shape(2)) : 1;
  const py::ssize_t row = size * channels * width;
  if (channels > 1 && array.strides(2) != size) RaiseLayout("the channels of a pixel lie apart");
  if (width > 1 && array.strides(1) != size * channels)
    RaiseLayout("the pixels of a row lie apart");
  const py::ssize_t step = height > 1 ? array.strides(0) : row;
  if (step < row) RaiseLayout("the rows overlap or stand upside down");
  if (step % size != 0 ||
      reinterpret_cast<std::uintptr_t>(array.data()) % static_cast<std::size_t>(size) != 0) {
    RaiseLayout("the pixels lie at odd addresses");
  }
  return cv::Mat(height, width, CV_MAKETYPE(depth, channels), const_cast<void*>(array.data()),
                 static_cast<std::size_t>(step));
}

cv::Mat MatSharing(const py::array& array) {
  cv::Mat mat = MatOver(array);
  if (mat.empty()) return mat;
  if (!array.writeable()) RaiseLayout("the array is not to be written to");
  cv::UMatData* const data = new cv::UMatData(&Keeper());
  data->data = data->origdata = mat.data;
  data->size = static_cast<std::size_t>(mat.dataend - mat.datastart);
  data->userdata = array.inc_ref().ptr();
  mat.u = data;
  mat.addref();
  return mat;
}

cv::Mat MatCopied(const py::array& array) {
  DepthOf(array.dtype());
  TestShape(array);
  const py::array packed =
      py::module_::import("numpy").attr("require")(array, py::none(), py::make_tuple("C", "A"));
  return MatOver(packed).clone();
}

namespace {

cv::Mat& MatIn(VemImage& image) { return image.Mat(); }
cv::Mat& MatIn(VemMatrix& matrix) { return matrix.Mat(); }
cv::Mat& MatIn(VemFeatureDescriptor& descriptor) { return vem::parts(descriptor); }

cv::Mat Taken(const py::array& array, bool copy) {
  return copy ? MatCopied(array) : MatSharing(array);
}

py::tuple ShapeOf(const cv::Mat& mat) {
  if (mat.channels() == 1) return py::make_tuple(mat.rows, mat.cols);
  return py::make_tuple(mat.rows, mat.cols, mat.channels());
}

void AddImages(py::module_& module) {
  py::class_<VemImage> image(module, "Image", py::buffer_protocol(),
                             "A picture: rows of pixels of one or several channels.\n\n"
                             "np.asarray(image) shares the pixels, of shape (height, width) or "
                             "(height, width, channels),\n"
                             "and Image(array) does so the other way: what one writes, the other "
                             "shows, and the pixels live\n"
                             "as long as either. Files give blue before green before red.");
  image.def(
      py::init([](const py::array& array, bool copy) {
        VemImage made;
        made.Mat() = Taken(array, copy);
        return made;
      }),
      py::arg("array"), py::kw_only(), py::arg("copy") = false,
      "Shares the pixels of an array of uint8, int8, uint16, int16, int32, float32 or float64,\n"
      "slices of rows and columns too. Raises ValueError for pixels that lie otherwise, and\n"
      "for an array that is not to be written to, unless they are copied.");
  image.def(py::init<>(), "The empty image.");
  AddBuffer<VemImage, &MatIn>(image);
  image.def_property_readonly("width", &VemImage::Width, "Columns.");
  image.def_property_readonly("height", &VemImage::Height, "Rows.");
  image.def_property_readonly("channels", &VemImage::Channels, "Numbers of a pixel.");
  image.def_property_readonly(
      "dtype", [](const VemImage& self) { return TypeOf(self.Mat().depth()); }, "NumPy's type.");
  image.def_property_readonly(
      "shape", [](const VemImage& self) { return ShapeOf(self.Mat()); }, "As NumPy tells it.");
  image.def("copy", &VemImage::DeepCopy, "An image with pixels of its own, in packed rows.");
  image.def("__copy__", &VemImage::ShallowCopy);
  image.def(
      "__deepcopy__", [](const VemImage& self, py::dict) { return self.DeepCopy(); },
      py::arg("memo"));
  image.def_static(
      "read", &ReadImage, py::arg("path"),
      "Reads a file. Raises OSError where it can't be read, ValueError where it holds no\n"
      "picture. An alpha channel is dropped.");
  image.def(
      "save", &SaveImage, py::arg("path"), py::kw_only(), py::arg("compression") = py::none(),
      "Writes a file, whose format the last four characters of the path tell, as .png, .jpg,\n"
      ".bmp; compression from 0, the best, to 10, the smallest. Raises ValueError for what no\n"
      "file takes, OSError where it can't be written.");
  AddEquality(image);
  AddLine(image);
  AddDocuments(image);

  py::class_<VemImageArray> images(module, "ImageArray",
                                   "A list of images. Pixels are copied on the way in and out.");
  AddList(images);
}

// What an element of a matrix can hold exactly, and as which kind of value.
VemVar ElementOf(py::handle object, int depth) {
  if (depth == CV_32F || depth == CV_64F) {
    const VemVar value = ValueOf(object);
    if (value.ValType() == VemVarLong || value.ValType() == VemVarDouble) {
      const double number = value.D();
      if (depth == CV_64F || !std::isfinite(number) ||
          std::fabs(number) <= static_cast<double>(std::numeric_limits<float>::max())) {
        return VemVar(number);
      }
      throw py::value_error("the number is beyond what float32 holds");
    }
    RaiseType("a number", object);
  }
  constexpr long least[] = {0, SCHAR_MIN, 0, SHRT_MIN, INT_MIN};
  constexpr long most[] = {UCHAR_MAX, SCHAR_MAX, USHRT_MAX, SHRT_MAX, INT_MAX};
  return VemVar(IntegerOf(object, "the element", least[depth], most[depth]));
}

using Place = std::pair<IndexArg, IndexArg>;

std::pair<int, int> PlaceIn(const VemMatrix& matrix, const Place& place) {
  const py::ssize_t toldRow = place.first.at;
  const py::ssize_t toldColumn = place.second.at;
  const py::ssize_t row = toldRow < 0 ? toldRow + matrix.Rows() : toldRow;
  const py::ssize_t column = toldColumn < 0 ? toldColumn + matrix.Cols() : toldColumn;
  if (row >= 0 && row < matrix.Rows() && column >= 0 && column < matrix.Cols()) {
    return {static_cast<int>(row), static_cast<int>(column)};
  }
  throw py::index_error("(" + std::to_string(toldRow) + ", " + std::to_string(toldColumn) +
                        ") is out of range: the matrix has " + std::to_string(matrix.Rows()) +
                        " rows and " + std::to_string(matrix.Cols()) + " columns");
}

VemMatrix MatrixOf(const py::array& array, bool copy) {
  if (array.ndim() != 2) throw py::value_error("a matrix has two dimensions");
  VemMatrix made;
  cv::Mat mat = Taken(array, copy);
  if (!mat.isContinuous()) RaiseLayout("the rows of a matrix lie packed");
  made.Mat() = mat;
  return made;
}

VemMatrix Zeros(const py::object& rows, const py::object& cols, const py::object& type) {
  const int height = static_cast<int>(IntegerOf(rows, "rows", 1, INT_MAX));
  const int width = static_cast<int>(IntegerOf(cols, "cols", 1, INT_MAX));
  return VemMatrix(height, width, static_cast<VemMatrixType>(DepthOf(py::dtype::from_args(type))));
}

void AddMatrices(py::module_& module) {
  py::class_<VemMatrix> matrix(
      module, "Matrix", py::buffer_protocol(),
      "A table of numbers of one type. np.asarray(matrix) shares its elements, and Matrix(array)\n"
      "does so the other way; matrix[row, col] is one of them.");
  matrix.def(py::init(&MatrixOf), py::arg("array"), py::kw_only(), py::arg("copy") = false,
             "Shares the elements of an array whose rows lie packed; ValueError else, unless they\n"
             "are copied.");
  matrix.def(py::init<>(), "The empty matrix.");
  matrix.def_static("zeros", &Zeros, py::arg("rows"), py::arg("cols"), py::arg("dtype") = "float64",
                    "A matrix of zeros.");
  AddBuffer<VemMatrix, &MatIn>(matrix);
  matrix.def_property_readonly("rows", &VemMatrix::Rows, "Number of rows.");
  matrix.def_property_readonly("cols", &VemMatrix::Cols, "Number of columns.");
  matrix.def_property_readonly(
      "dtype", [](const VemMatrix& self) { return TypeOf(self.Mat().depth()); }, "NumPy's type.");
  matrix.def_property_readonly(
      "shape", [](const VemMatrix& self) { return ShapeOf(self.Mat()); }, "As NumPy tells it.");
  matrix.def("__getitem__", [](VemMatrix& self, const Place& at) {
    const std::pair<int, int> place = PlaceIn(self, at);
    VemVar element;
    self.Select(place.first, place.second, &element);
    return element;
  });
  matrix.def("__setitem__", [](VemMatrix& self, const Place& at, py::object number) {
    const std::pair<int, int> place = PlaceIn(self, at);
    VemVar element = ElementOf(number, self.Type());
    self.Replace(place.first, place.second, element);
  });
  matrix.def(
      "fill",
      [](VemMatrix& self, py::object number) { self.SetTo(ElementOf(number, self.Type())); },
      py::arg("number"), "Writes the number into every element.");
  matrix.def("copy", &VemMatrix::DeepCopy, "A matrix with elements of its own.");
  matrix.def("__copy__", &VemMatrix::ShallowCopy);
  matrix.def(
      "__deepcopy__", [](const VemMatrix& self, py::dict) { return self.DeepCopy(); },
      py::arg("memo"));
  AddEquality(matrix);
  AddLine(matrix);
  AddDocuments(matrix);

  py::class_<VemMatrixArray> matrices(
      module, "MatrixArray", "A list of matrices. Elements are copied on the way in and out.");
  AddList(matrices);

  py::class_<VemFeatureDescriptor> descriptor(
      module, "FeatureDescriptor", py::buffer_protocol(),
      "The descriptors of a feature extraction, rows of numbers, copied from an array.");
  descriptor.def(
      py::init([](const py::array& array) { return VemFeatureDescriptor(MatCopied(array)); }),
      py::arg("array"));
  descriptor.def(py::init<>(), "No descriptors.");
  AddBuffer<VemFeatureDescriptor, &MatIn>(descriptor);
  descriptor.def_property_readonly("rows", &VemFeatureDescriptor::Row, "Number of rows.");
  descriptor.def_property_readonly("cols", &VemFeatureDescriptor::Col, "Number of columns.");
  AddEquality(descriptor);
  AddLine(descriptor);
  AddDocuments(descriptor);
  descriptor.def("__copy__",
                 [](const VemFeatureDescriptor& self) { return VemFeatureDescriptor(self); });
  descriptor.def(
      "__deepcopy__",
      [](const VemFeatureDescriptor& self, py::dict) { return VemFeatureDescriptor(self); },
      py::arg("memo"));
}

struct MorphInfo {
  explicit MorphInfo(const VemMorphStructure& structure) {
    const_cast<VemMorphStructure&>(structure).QueryInfo(&rows, &cols, &anchorX, &anchorY, &type,
                                                        &table);
  }
  int rows = 0, cols = 0, anchorX = 0, anchorY = 0;
  VemMorphStructureType type = VemMorphStructureUnset;
  int* table = nullptr;
};

std::unique_ptr<VemMorphStructure> MakeStructure(int rows, int cols, int anchorX, int anchorY,
                                                 int type, const py::object& values) {
  const bool custom = type == VemMorphStructureCustom;
  if (rows < 1 || cols < 1) throw py::value_error("rows and cols are above 0");
  if (anchorX < -1 || anchorX >= cols)
    throw py::value_error("anchor_x is -1 or a column of the structure");
  if (anchorY < -1 || anchorY >= rows)
    throw py::value_error("anchor_y is -1 or a row of the structure");
  if (type < 0) throw py::value_error("type is not negative");
  if (custom == values.is_none()) {
    throw py::value_error("values belong to a structure of type 3, and to no other");
  }
  std::vector<int> table;
  if (custom) {
    const py::object numbers = py::module_::import("numpy").attr("asarray")(values);
    const auto array = numbers.cast<py::array>();
    if (array.ndim() != 2 || array.shape(0) != rows || array.shape(1) != cols) {
      throw py::value_error("values have the shape (rows, cols)");
    }
    for (const py::handle number : numbers.attr("ravel")().attr("tolist")()) {
      table.push_back(static_cast<int>(IntegerOf(number, "a value", INT_MIN, INT_MAX)));
    }
  }
  std::unique_ptr<VemMorphStructure> made(new VemMorphStructure());
  const long fault = made->CreateElement(rows, cols, anchorX, anchorY,
                                         static_cast<VemMorphStructureType>(type), table.data());
  if (fault != 0) throw py::value_error("refused with the code " + std::to_string(fault));
  return made;
}

py::object TableOf(const VemMorphStructure& structure) {
  const MorphInfo info(structure);
  if (info.type != VemMorphStructureCustom || info.table == nullptr) return py::none();
  py::array_t<int> array(
      {static_cast<py::ssize_t>(info.rows), static_cast<py::ssize_t>(info.cols)});
  std::memcpy(array.mutable_data(), info.table, static_cast<std::size_t>(array.nbytes()));
  return std::move(array);
}

// Held by pointer and never copied: a copy would lose values.
void AddStructures(py::module_& module) {
  py::class_<VemMorphStructure> structure(
      module, "MorphStructure",
      "The structuring element of a morphology operation. It never changes.");
  structure.def(
      py::init(&MakeStructure), py::arg("rows"), py::arg("cols"), py::arg("anchor_x") = -1,
      py::arg("anchor_y") = -1, py::arg("type") = 0, py::arg("values") = py::none(),
      "Type 3 is told by values of shape (rows, cols). Raises ValueError for what is refused.");
  structure.def(py::init<>(), "A structure that nobody has set.");
  structure.def_property_readonly(
      "rows", [](const VemMorphStructure& self) { return MorphInfo(self).rows; }, "Rows.");
  structure.def_property_readonly(
      "cols", [](const VemMorphStructure& self) { return MorphInfo(self).cols; }, "Columns.");
  structure.def_property_readonly(
      "anchor_x", [](const VemMorphStructure& self) { return MorphInfo(self).anchorX; },
      "The anchor's column, or -1.");
  structure.def_property_readonly(
      "anchor_y", [](const VemMorphStructure& self) { return MorphInfo(self).anchorY; },
      "The anchor's row, or -1.");
  structure.def_property_readonly(
      "type", [](const VemMorphStructure& self) { return static_cast<int>(MorphInfo(self).type); },
      "3 where values tell it, 4 where nobody has set it.");
  structure.def_property_readonly("values", &TableOf, "A copy of the values, or None.");
  structure.def("__eq__", [](const VemMorphStructure& self, py::object other) -> py::object {
    if (!py::isinstance<VemMorphStructure>(other)) {
      return py::reinterpret_borrow<py::object>(Py_NotImplemented);
    }
    return py::bool_(JsonOf(self) == JsonOf(other.cast<const VemMorphStructure&>()));
  });
  AddLine(structure);
  AddDocuments(structure);
  AddFrozenCopies(structure);
}

}  // namespace

void AddRasters(py::module_& module) {
  AddImages(module);
  AddMatrices(module);
  AddStructures(module);
}
