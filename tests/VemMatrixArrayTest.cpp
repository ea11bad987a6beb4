#include "VemMatrixArray.h"

#include <gtest/gtest.h>

#include <type_traits>
#include <utility>

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

static_assert(sizeof(VemMatrixArray) == sizeof(void*), "a handle is one pointer");
static_assert(!std::is_polymorphic<VemMatrixArray>::value, "no virtual operations");
static_assert(std::is_same<decltype(std::declval<VemMatrixArray&>() = VemMatrixArray()),
                           const VemMatrixArray&>::value,
              "assignment gives the source");
static_assert(std::is_same<decltype(std::declval<VemMatrixArray&>()[0]), VemMatrix>::value,
              "elements come out by value alone");
constexpr void (VemMatrixArray::*kSelect)(int, VemMatrix*) const = &VemMatrixArray::Select;
constexpr int (VemMatrixArray::*kLength)() const = &VemMatrixArray::Length;

struct Handle {
  using Array = VemMatrixArray;
  using Element = VemMatrix;

  static std::vector<cv::Mat*>*& Store(Array& array) {
    return array.*PrivateOf(PrivateVemMatrixArrayStore());
  }
  static cv::Mat*& Pointer(Element& element) {
    return element.*PrivateOf(PrivateVemMatrixArrayElement());
  }

  static constexpr int kMostChannels = 1;
};

INSTANTIATE_TYPED_TEST_SUITE_P(VemMatrixArray, CopyArrayContract, MatArrayKind<Handle>);
INSTANTIATE_TYPED_TEST_SUITE_P(VemMatrixArray, MatArrayContract, MatArrayKind<Handle>);

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
