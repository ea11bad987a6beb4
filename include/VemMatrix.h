#ifndef VEM_MATRIX_H_
#define VEM_MATRIX_H_

/// @file
/// The matrix and its element types.

#include "VemExport.h"
#include "VemVar.h"

namespace cv {
class Mat;
}  // namespace cv

/// The type of the elements of a matrix: OpenCV's type code of one channel.
enum VemMatrixType : int {
  VemMatrixType8U = 0,   ///< unsigned 8-bit integer
  VemMatrixType8S = 1,   ///< signed 8-bit integer
  VemMatrixType16U = 2,  ///< unsigned 16-bit integer
  VemMatrixType16S = 3,  ///< signed 16-bit integer
  VemMatrixType32S = 4,  ///< signed 32-bit integer
  VemMatrixType32F = 5,  ///< 32-bit float
  VemMatrixType64F = 6   ///< 64-bit float
};

/// A table of numbers of one type, read and written as control values: a handle on one `cv::Mat` of
/// one channel.
///
/// Elements stand by row, then by column, in packed rows; everywhere the row is told before the
/// column. A matrix is either empty (0 by 0) or holds elements.
///
/// Copy construction, assignment and ShallowCopy share the elements through `cv::Mat`'s reference
/// count, in constant time; what is written into one matrix then shows in the others. DeepCopy does
/// not share. A caller's buffer is always copied in, never kept. When OpenCV fails while a matrix
/// is copied, the copy is empty and nothing is raised.
///
/// Use an object from one thread at a time; separate objects may be used at once, and two matrices
/// that share elements may be destroyed on different threads.
class VEM_EXPORT VemMatrix {
 public:
  /// Empty.
  VemMatrix();
  /// Copies `rows * cols` elements from packed rows at `data`. A type outside 0 to 6 gives the
  /// empty matrix, as does a zero area. Null `data` and a negative size raise `cv::Exception`, each
  /// beside a non-zero area, and so does a copy too large for memory.
  VemMatrix(void* data, int rows, int cols, VemMatrixType type);
  /// All zero. A size that is not positive and a type outside 0 to 6 give the empty matrix. One too
  /// large for memory raises `cv::Exception`.
  VemMatrix(int rows, int cols, VemMatrixType type);
  /// Shares the elements of `other`.
  VemMatrix(const VemMatrix& other);
  /// Shares the elements of `other` and lets the own ones go. Assigned to itself, a matrix stays as
  /// it is.
  VemMatrix& operator=(const VemMatrix& other);
  ~VemMatrix();

  /// Makes the matrix all zero, of that size and type. If it has them already, its elements are
  /// cleared in place, and matrices that share them see zeros; otherwise they are let go, and
  /// matrices that share them keep them. A size that is not positive and a type outside 0 to 6
  /// change nothing; one too large for memory raises `cv::Exception`.
  void SetMatrix(int rows, int cols, VemMatrixType type);
  /// Writes the value into every element. It is read as VemVar::L for the 8-bit and 16-bit types
  /// and as VemVar::D for the others, 32-bit integers among them; OpenCV rounds it, halves to the
  /// even number, and limits it to what the type holds.
  void SetTo(VemVar value);
  /// Writes one element; out of range, nothing happens. The value is read as VemVar::I for the
  /// integer types and limited to what the type holds, as VemVar::F for 32-bit floats and as
  /// VemVar::D for 64-bit ones.
  void Replace(int row, int col, VemVar& value);
  /// Lets the elements go. The type stays.
  void Clear();

  /// A matrix with elements of its own.
  VemMatrix DeepCopy() const;
  /// A matrix that shares the elements of this one.
  VemMatrix ShallowCopy() const;

  int Rows() const;            ///< Number of rows.
  int Cols() const;            ///< Number of columns.
  VemMatrixType Type() const;  ///< The type of the elements; 0 if there never was one.
  /// Reads one element into `*out`, as an integer or a double; out of range, `*out` stays as it
  /// was.
  void Select(int row, int col, VemVar* out);
  /// The first element, writable, null in an empty matrix. It stays valid until the elements are
  /// let go. Writing changes every matrix that shares them.
  void* MatrixData() const;

  cv::Mat& Mat();              ///< The OpenCV matrix itself, no copy.
  const cv::Mat& Mat() const;  ///< The OpenCV matrix itself, no copy.

 private:
  friend class VemMatrixArray;

  cv::Mat* mat;
};

#endif  // VEM_MATRIX_H_
