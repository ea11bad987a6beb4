#include "VemMatrixArray.h"

#include <vector>

#include <gtest/gtest.h>

#include "support/MatArrayContract.h"

struct PrivateVemMatrixArrayStore {
  using Type = std::vector<cv::Mat*>* VemMatrixArray::*;
  friend Type PrivateOf(PrivateVemMatrixArrayStore);
};

template struct PrivateAccess<PrivateVemMatrixArrayStore, &VemMatrixArray::store_>;

struct PrivateVemMatrixArrayElement {
  using Type = cv::Mat* VemMatrix::*;
  friend Type PrivateOf(PrivateVemMatrixArrayElement);
};

template struct PrivateAccess<PrivateVemMatrixArrayElement, &VemMatrix::mat>;

namespace {

struct Traits : MatArrayTraits<VemMatrixArray, VemMatrix, 1> {
  static std::vector<cv::Mat*>*& Store(VemMatrixArray& array) {
    return array.*PrivateOf(PrivateVemMatrixArrayStore());
  }
  static cv::Mat*& Pointer(VemMatrix& element) {
    return element.*PrivateOf(PrivateVemMatrixArrayElement());
  }
  static void Replace(VemMatrixArray& array, int index, VemMatrix& element) {
    ReplaceAndRelease<Traits>(array, index, element);
  }
};

INSTANTIATE_TYPED_TEST_SUITE_P(VemMatrixArray, ArrayContract, Traits);
INSTANTIATE_TYPED_TEST_SUITE_P(VemMatrixArray, ConstAccessContract, Traits);
INSTANTIATE_TYPED_TEST_SUITE_P(VemMatrixArray, MatArrayContract, Traits);

TEST(VemMatrixArray, WritingThroughAMatrixLeavesTheArrayAlone) {
  VemMatrix matrix(2, 2, VemMatrixType32S);
  VemMatrixArray array;
  array.Append(matrix);
  matrix.SetTo(99);
  const VemMatrixArray& constant = array;
  VemMatrix read = constant[0];
  VemVar value;
  read.Select(1, 1, &value);
  EXPECT_EQ(value.I(), 0);
  read.SetTo(98);
  VemMatrix again = constant[0];
  again.Select(1, 1, &value);
  EXPECT_EQ(value.I(), 0);
}

TEST(VemMatrixArray, ClearedMatrixLosesItsType) {
  VemMatrix matrix(2, 2, VemMatrixType32S);
  matrix.Clear();
  VemMatrixArray array;
  array.Append(matrix);
  EXPECT_EQ(array.Length(), 1);
  EXPECT_EQ(array[0].Type(), VemMatrixType8U);
}

}  // namespace
