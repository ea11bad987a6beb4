#include "VemImageArray.h"

#include <gtest/gtest.h>

#include <type_traits>
#include <utility>

#include "support/MatArrayContract.h"

struct PrivateVemImageArrayStore {
  using Type = std::vector<cv::Mat*>* VemImageArray::*;
  friend Type PrivateOf(PrivateVemImageArrayStore);
};

template struct PrivateAccess<PrivateVemImageArrayStore, &VemImageArray::store_>;

struct PrivateVemImageArrayElement {
  using Type = cv::Mat* VemImage::*;
  friend Type PrivateOf(PrivateVemImageArrayElement);
};

template struct PrivateAccess<PrivateVemImageArrayElement, &VemImage::mat>;

namespace {

static_assert(sizeof(VemImageArray) == sizeof(void*), "a handle is one pointer");
static_assert(!std::is_polymorphic<VemImageArray>::value, "no virtual operations");
static_assert(std::is_same<decltype(std::declval<VemImageArray&>() = VemImageArray()),
                           const VemImageArray&>::value,
              "assignment gives the source");
static_assert(std::is_same<decltype(std::declval<VemImageArray&>()[0]), VemImage>::value,
              "elements come out by value alone");
constexpr void (VemImageArray::*kSelect)(int, VemImage*) const = &VemImageArray::Select;
constexpr int (VemImageArray::*kLength)() const = &VemImageArray::Length;

struct Handle {
  using Array = VemImageArray;
  using Element = VemImage;

  static std::vector<cv::Mat*>*& Store(Array& array) {
    return array.*PrivateOf(PrivateVemImageArrayStore());
  }
  static cv::Mat*& Pointer(Element& element) {
    return element.*PrivateOf(PrivateVemImageArrayElement());
  }

  static constexpr int kMostChannels = 4;
};

INSTANTIATE_TYPED_TEST_SUITE_P(VemImageArray, CopyArrayContract, MatArrayKind<Handle>);
INSTANTIATE_TYPED_TEST_SUITE_P(VemImageArray, MatArrayContract, MatArrayKind<Handle>);

TEST(VemImageArray, WritingThroughAnImageLeavesTheArrayAlone) {
  unsigned char pixels[] = {1, 2, 3, 4};
  VemImage image(pixels, 2, 2, 2, 1, VemImageType8U);
  VemImageArray array;
  array.Append(image);
  image.ImageData()[0] = 99;
  const VemImageArray& constant = array;
  VemImage read = constant[0];
  EXPECT_EQ(read.ImageData()[0], 1);
  read.ImageData()[1] = 98;
  VemImage again = constant[0];
  EXPECT_EQ(again.ImageData()[1], 2);
}

TEST(VemImageArray, DefaultImageIsAnElement) {
  VemImageArray array;
  VemImage image;
  array.Append(image);
  EXPECT_EQ(array.Length(), 1);
  EXPECT_EQ(array[0].Width(), 0);
}

}  // namespace
