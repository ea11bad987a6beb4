#include "VemContourArray.h"

#include <climits>
#include <cstddef>
#include <vector>

#include <gtest/gtest.h>

#include "support/ArrayContract.h"
#include "support/OutlineReference.h"
#include "support/PrivateAccess.h"
#include "support/Support.h"

struct PrivateVemContourArray {
  using Type = std::vector<std::vector<cv::Point2d>>* VemContourArray::*;
  friend Type PrivateOf(PrivateVemContourArray);
};
template struct PrivateAccess<PrivateVemContourArray, &VemContourArray::store_>;

struct PrivateVemContourArrayElement {
  using Type = std::vector<cv::Point2d>* VemContour::*;
  friend Type PrivateOf(PrivateVemContourArrayElement);
};
template struct PrivateAccess<PrivateVemContourArrayElement, &VemContour::store_>;

namespace {

const Chain kA = {{1, 2}, {3.5, -4}};
const Chain kB = {{5, 6}, {7, 8}, {9, 0.25}};
const Chain kC = {{-1, -1}};
const Chain kX = {{10, 11}, {12, 13}, {14, 15}, {16, 17}};

std::vector<std::vector<cv::Point2d>>& StoreOf(VemContourArray& contours) {
  return *(contours.*PrivateOf(PrivateVemContourArray()));
}

std::vector<const cv::Point2d*> Addresses(VemContourArray& contours) {
  std::vector<const cv::Point2d*> addresses;
  for (const std::vector<cv::Point2d>& chain : StoreOf(contours)) addresses.push_back(chain.data());
  return addresses;
}

struct Traits : ArrayTraits<VemContourArray, VemContour> {
  using Assigned = VemContourArray&;
  static constexpr bool kHasReferences = false;

  // Of no to four points, and no points have no number.
  static Chain Points(int number) {
    Chain points(static_cast<std::size_t>(number % 13 == 7 ? 0 : 1 + number % 4));
    for (cv::Point2d& point : points)
      point = cv::Point2d(number, static_cast<double>(&point - points.data()) / 8);
    return points;
  }
  static VemContour Make(int number) { return ContourOf(Points(number)); }
  static bool IsMade(const VemContour& contour, int number) {
    return PointsOf(contour) == Points(number);
  }
  static bool IsDefault(const VemContour& contour) { return contour.Length() == 0; }
  static std::vector<std::vector<cv::Point2d>>* Store(VemContourArray& array) {
    return array.*PrivateOf(PrivateVemContourArray());
  }
};

INSTANTIATE_TYPED_TEST_SUITE_P(VemContourArray, ArrayContract, Traits);
INSTANTIATE_TYPED_TEST_SUITE_P(VemContourArray, ConstAccessContract, Traits);

TEST(VemContourArray, SelectAssignsToTheStoreThatThereIs) {
  const VemContourArray contours = ContoursOf({kA, {}});
  VemContour out = ContourOf(kX);
  const std::vector<cv::Point2d>* const store = out.*PrivateOf(PrivateVemContourArrayElement());
  const cv::Point2d* const points = store->data();
  for (const int index : {0, 1}) {
    contours.Select(index, &out);
    EXPECT_EQ(out.*PrivateOf(PrivateVemContourArrayElement()), store) << index;
    EXPECT_EQ(store->data(), points) << index;
  }
}

TEST(VemContourArray, IndexOutOfRangeGivesAContourThatCanBeUsed) {
  const VemContourArray contours = ContoursOf({kA, kB});
  for (int index : {2, -1, INT_MIN, INT_MAX}) {
    VemContour element = contours[index];
    EXPECT_EQ(element.Length(), 0) << index;
    element = contours[0];
    EXPECT_EQ(PointsOf(element), kA);
  }
}

TEST(VemContourArray, CopyOutlivesItsSource) {
  VemContourArray assigned;
  VemContourArray* source = new VemContourArray(ContoursOf({kA, kB}));
  const VemContourArray copy(*source);
  assigned = *source;
  delete source;
  EXPECT_EQ(PointsOf(copy), (Chains{kA, kB}));
  EXPECT_EQ(PointsOf(assigned), (Chains{kA, kB}));
}

TEST(VemContourArray, RemoveMovesWithoutCopyingPoints) {
  VemContourArray contours = ContoursOf({kA, kB, kC, kX});
  std::vector<const cv::Point2d*> expected = Addresses(contours);
  expected.erase(expected.begin() + 1);
  contours.Remove(1);
  EXPECT_EQ(Addresses(contours), expected);
}

TEST(VemContourArray, DestructorAllowsAMissingStore) {
  const auto store = PrivateOf(PrivateVemContourArray());
  VemContourArray contours;
  delete (contours.*store);
  contours.*store = nullptr;
  EXPECT_EQ(contours.*store, nullptr);
}

}  // namespace
