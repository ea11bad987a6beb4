#include "VemFeaturePointArray.h"

#include <cstring>
#include <new>
#include <vector>

#include <gtest/gtest.h>

#include "support/ArrayContract.h"
#include "support/PrivateAccess.h"

struct PrivateVemFeaturePointArrayStore {
  using Type = std::vector<VemFeaturePoint>* VemFeaturePointArray::*;
  friend Type PrivateOf(PrivateVemFeaturePointArrayStore);
};

template struct PrivateAccess<PrivateVemFeaturePointArrayStore, &VemFeaturePointArray::store_>;

namespace {

struct Traits : ArrayTraits<VemFeaturePointArray, VemFeaturePoint> {
  static constexpr bool kMakesRoomOnce = true;

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
  static void Disturb(VemFeaturePoint& point) { point = Make(500); }
  // A default point has no values to look at.
  static bool IsDefault(const VemFeaturePoint&) { return true; }
  static std::vector<VemFeaturePoint>* Store(VemFeaturePointArray& array) {
    return array.*PrivateOf(PrivateVemFeaturePointArrayStore());
  }
};

INSTANTIATE_TYPED_TEST_SUITE_P(VemFeaturePointArray, ArrayContract, Traits);
INSTANTIATE_TYPED_TEST_SUITE_P(VemFeaturePointArray, ReferenceContract, Traits);
INSTANTIATE_TYPED_TEST_SUITE_P(VemFeaturePointArray, ConstAccessContract, Traits);

// A default point leaves the memory as it was, and so does reading where there is no point.
TEST(VemFeaturePointArray, ConstAccessOutOfRangeWritesNothing) {
  const auto array = ArrayOf<Traits>(UpTo(3));
  for (const int index : {-1, 3, 4}) {
    alignas(VemFeaturePoint) unsigned char memory[sizeof(VemFeaturePoint)];
    std::memset(memory, 0x40, sizeof(memory));
    const auto* point = new (memory) VemFeaturePoint(array[index]);
    unsigned char bytes[sizeof(VemFeaturePoint)];
    std::memcpy(bytes, point, sizeof(bytes));
    for (const unsigned char byte : bytes) EXPECT_EQ(byte, 0x40) << index;
  }
}

TEST(VemFeaturePointArray, SwapOfAnElementWithItselfChangesNothing) {
  auto array = ArrayOf<Traits>(UpTo(3));
  for (int i = 0; i < 3; ++i) array.Swap(i, i);
  EXPECT_TRUE(Holds<Traits>(array, UpTo(3)));
}

}  // namespace
