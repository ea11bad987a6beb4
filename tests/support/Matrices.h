#ifndef TESTS_SUPPORT_MATRICES_H_
#define TESTS_SUPPORT_MATRICES_H_

#include <climits>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

#include "VemMatrix.h"
#include "support/Support.h"

using Doubles = std::vector<double>;

struct TypeCase {
  const char* name;
  VemMatrixType type;
  int size;  ///< Of one element, in bytes.
};

const TypeCase kTypes[] = {
    {"8U", VemMatrixType8U, 1},   {"8S", VemMatrixType8S, 1},   {"16U", VemMatrixType16U, 2},
    {"16S", VemMatrixType16S, 2}, {"32S", VemMatrixType32S, 4}, {"32F", VemMatrixType32F, 4},
    {"64F", VemMatrixType64F, 8},
};

const int kBadTypes[] = {-1, 7, 8, 16, INT_MAX, INT_MIN};

inline VemMatrixType TypeOf(int value) { return static_cast<VemMatrixType>(value); }

inline int References(VemMatrix& matrix) {
  return matrix.Mat().u == nullptr ? 0 : matrix.Mat().u->refcount;
}

/// The element, or "untouched" where there is none.
inline VemVar At(VemMatrix matrix, int row, int col) {
  VemVar value("untouched");
  matrix.Select(row, col, &value);
  return value;
}

inline void Put(VemMatrix& matrix, int row, int col, VemVar value) {
  matrix.Replace(row, col, value);
}

/// All elements, as numbers.
inline Doubles Elements(VemMatrix matrix) {
  Doubles elements;
  for (int row = 0; row < matrix.Rows(); ++row) {
    for (int col = 0; col < matrix.Cols(); ++col) elements.push_back(At(matrix, row, col).D());
  }
  return elements;
}

/// 2 by 3, with 10 times the row plus the column in each element.
inline VemMatrix Counting(VemMatrixType type) {
  VemMatrix matrix(2, 3, type);
  for (int row = 0; row < 2; ++row) {
    for (int col = 0; col < 3; ++col) Put(matrix, row, col, 10 * row + col);
  }
  return matrix;
}

const Doubles kCounting = {0, 1, 2, 10, 11, 12};

inline void ExpectEmpty(VemMatrix& matrix) {
  EXPECT_EQ(matrix.Rows(), 0);
  EXPECT_EQ(matrix.Cols(), 0);
  EXPECT_EQ(matrix.Type(), VemMatrixType8U);
  EXPECT_EQ(matrix.MatrixData(), nullptr);
  EXPECT_EQ(matrix.Mat().u, nullptr);
  EXPECT_EQ(matrix.Mat().dims, 0);
}

inline void ExpectMatrix(VemMatrix& matrix, int rows, int cols, VemMatrixType type,
                         const Doubles& elements) {
  EXPECT_EQ(matrix.Rows(), rows);
  EXPECT_EQ(matrix.Cols(), cols);
  EXPECT_EQ(matrix.Type(), type);
  EXPECT_EQ(Elements(matrix), elements);
}

#endif  // TESTS_SUPPORT_MATRICES_H_
