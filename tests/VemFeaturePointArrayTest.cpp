#include "VemFeaturePointArray.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "support/ArrayContract.h"
#include "support/PrivateAccess.h"

struct PrivateVemFeaturePointArrayStore {
  using Type = std::vector<VemFeaturePoint>* VemFeaturePointArray::*;
  friend Type PrivateOf(PrivateVemFeaturePointArrayStore);
};

template struct PrivateAccess<PrivateVemFeaturePointArrayStore, &VemFeaturePointArray::store_>;

namespace {

struct Traits {
  using Array = VemFeaturePointArray;
  using Element = VemFeaturePoint;
  static constexpr bool kMakesRoomOnce = true;
  static constexpr bool kMayAssignToItself = true;
  static constexpr bool kConstAccessReads = true;

  static VemFeaturePoint Make(int number) {
    const float value = static_cast<float>(number);
    VemFeaturePoint point(value, -value, value / 2, value / 4, value / 8, number * 3, value / 16);
    point.ValueF = value / 32;
    return point;
  }
  static bool IsMade(const VemFeaturePoint& point, int number) {
    const VemFeaturePoint expected = Make(number);
    return std::memcmp(&point, &expected, sizeof(point)) == 0;
  }
  // A default point has no values to look at.
  static bool IsDefault(const VemFeaturePoint&) { return true; }
  static std::vector<VemFeaturePoint>* Store(VemFeaturePointArray& array) {
    return array.*PrivateOf(PrivateVemFeaturePointArrayStore());
  }
};

INSTANTIATE_TYPED_TEST_SUITE_P(VemFeaturePointArray, ArrayContract, Traits);
INSTANTIATE_TYPED_TEST_SUITE_P(VemFeaturePointArray, ConstAccessContract, Traits);

TEST(VemFeaturePointArray, SwapOfAnElementWithItselfChangesNothing) {
  auto array = ArrayOf<Traits>(UpTo(3));
  for (int i = 0; i < 3; ++i) array.Swap(i, i);
  EXPECT_TRUE(Holds<Traits>(array, UpTo(3)));
}

}  // namespace
