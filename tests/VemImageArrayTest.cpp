#include "VemImageArray.h"

#include <vector>

#include <gtest/gtest.h>

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

struct Traits : MatArrayTraits<VemImageArray, VemImage, 4> {
  static std::vector<cv::Mat*>*& Store(VemImageArray& array) {
    return array.*PrivateOf(PrivateVemImageArrayStore());
  }
  static cv::Mat*& Pointer(VemImage& element) {
    return element.*PrivateOf(PrivateVemImageArrayElement());
  }
  static void Replace(VemImageArray& array, int index, VemImage& element) {
    ReplaceAndRelease<Traits>(array, index, element);
  }
};

INSTANTIATE_TYPED_TEST_SUITE_P(VemImageArray, ArrayContract, Traits);
INSTANTIATE_TYPED_TEST_SUITE_P(VemImageArray, ConstAccessContract, Traits);
INSTANTIATE_TYPED_TEST_SUITE_P(VemImageArray, MatArrayContract, Traits);

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
