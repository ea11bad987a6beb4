#include "VemMatrix.h"

#include <algorithm>
#include <limits>

#include <opencv2/core.hpp>

#include "platform/CloneBuffer.h"
#include "platform/MatSize.h"
#include "raster/MatCopy.h"

namespace {

bool IsMatrixType(int type) { return type >= VemMatrixType8U && type <= VemMatrixType64F; }

bool HasElement(const cv::Mat& mat, int row, int col) {
  return row >= 0 && col >= 0 && row < mat.rows && col < mat.cols && IsMatrixType(mat.type());
}

template <typename T>
VemVar Integer(const cv::Mat& mat, int row, int col) {
  return static_cast<int>(mat.at<T>(row, col));
}

VemVar Element(const cv::Mat& mat, int row, int col) {
  switch (mat.type()) {
    case VemMatrixType8U:
      return Integer<unsigned char>(mat, row, col);
    case VemMatrixType8S:
      return Integer<signed char>(mat, row, col);
    case VemMatrixType16U:
      return Integer<unsigned short>(mat, row, col);
    case VemMatrixType16S:
      return Integer<short>(mat, row, col);
    case VemMatrixType32S:
      return Integer<int>(mat, row, col);
    case VemMatrixType32F:
      return mat.at<float>(row, col);
    default:
      return mat.at<double>(row, col);
  }
}

template <typename T>
void SetInteger(cv::Mat& mat, int row, int col, int value) {
  const int lowest = std::numeric_limits<T>::min();
  const int highest = std::numeric_limits<T>::max();
  mat.at<T>(row, col) = static_cast<T>(std::clamp(value, lowest, highest));
}

void SetElement(cv::Mat& mat, int row, int col, const VemVar& value) {
  switch (mat.type()) {
    case VemMatrixType8U:
      return SetInteger<unsigned char>(mat, row, col, value.I());
    case VemMatrixType8S:
      return SetInteger<signed char>(mat, row, col, value.I());
    case VemMatrixType16U:
      return SetInteger<unsigned short>(mat, row, col, value.I());
    case VemMatrixType16S:
      return SetInteger<short>(mat, row, col, value.I());
    case VemMatrixType32S:
      return SetInteger<int>(mat, row, col, value.I());
    case VemMatrixType32F:
      mat.at<float>(row, col) = value.F();
      return;
    default:
      mat.at<double>(row, col) = value.D();
  }
}

}  // namespace

VemMatrix::VemMatrix() : mat(new cv::Mat) {}

VemMatrix::VemMatrix(void* data, int rows, int cols, VemMatrixType type) : VemMatrix() {
  constexpr int kPacked = 0;
  if (!IsMatrixType(type)) return;
  *mat = CloneBuffer(static_cast<const unsigned char*>(data), kPacked, rows, cols, type);
}

VemMatrix::VemMatrix(int rows, int cols, VemMatrixType type) : VemMatrix() {
  SetMatrix(rows, cols, type);
}

VemMatrix::VemMatrix(const VemMatrix& other) : VemMatrix() { ShareOrEmpty(*other.mat, *mat); }

VemMatrix& VemMatrix::operator=(const VemMatrix& other) {
  if (mat != other.mat) ShareOrEmpty(*other.mat, *mat);
  return *this;
}

VemMatrix::~VemMatrix() { delete mat; }

// The expression is assigned, not a matrix made from it: OpenCV then clears a buffer of the same
// size and type in place. Any other is made aside, since OpenCV sets the size before it asks for
// memory.
void VemMatrix::SetMatrix(int rows, int cols, VemMatrixType type) {
  if (!IsMatrixType(type) || rows <= 0 || cols <= 0) return;
  RequireCountable(rows, cols, type);
  cv::Mat cleared;
  if (mat->rows == rows && mat->cols == cols && mat->type() == type) cleared = *mat;
  cleared = cv::Mat::zeros(rows, cols, type);
  *mat = cleared;
}

void VemMatrix::SetTo(VemVar value) {
  const int type = mat->type();
  if (!IsMatrixType(type)) return;
  const double fill = type <= VemMatrixType16S ? static_cast<double>(value.L()) : value.D();
  mat->setTo(fill, cv::noArray());
}

void VemMatrix::Replace(int row, int col, VemVar& value) {
  if (HasElement(*mat, row, col)) SetElement(*mat, row, col, value);
}

void VemMatrix::Clear() { mat->release(); }

VemMatrix VemMatrix::DeepCopy() const {
  VemMatrix copy;
  CloneOrEmpty(*mat, *copy.mat);
  return copy;
}

VemMatrix VemMatrix::ShallowCopy() const { return *this; }

int VemMatrix::Rows() const { return mat->rows; }
int VemMatrix::Cols() const { return mat->cols; }
VemMatrixType VemMatrix::Type() const { return static_cast<VemMatrixType>(mat->type()); }

void VemMatrix::Select(int row, int col, VemVar* out) {
  if (HasElement(*mat, row, col)) *out = Element(*mat, row, col);
}

void* VemMatrix::MatrixData() const { return mat == nullptr ? nullptr : mat->data; }

cv::Mat& VemMatrix::Mat() { return *mat; }
const cv::Mat& VemMatrix::Mat() const { return *mat; }
