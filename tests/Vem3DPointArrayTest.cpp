#include "Vem3DPointArray.h"

#include <cstring>
#include <vector>

#include <gtest/gtest.h>

#include "Vem3DPoint.h"
#include "support/ArrayContract.h"
#include "support/PrivateAccess.h"
#include "support/Support.h"

struct PrivateVem3DPointArrayStore {
  using Type = std::vector<Vem3DPoint>* Vem3DPointArray::*;
  friend Type PrivateOf(PrivateVem3DPointArrayStore);
};

template struct PrivateAccess<PrivateVem3DPointArrayStore, &Vem3DPointArray::store_>;

namespace {

struct SpacePointTraits : ArrayTraits<Vem3DPointArray, Vem3DPoint> {
  static Vem3DPoint Make(int number) { return Vem3DPoint(number, -0.5 * number, 3.0 * number); }
  static bool IsMade(const Vem3DPoint& point, int number) {
    return point.x == number && point.y == -0.5 * number && point.z == 3.0 * number;
  }
  static bool IsDefault(const Vem3DPoint& point) { return IsMade(point, 0); }
  static std::vector<Vem3DPoint>* Store(Vem3DPointArray& array) {
    return array.*PrivateOf(PrivateVem3DPointArrayStore());
  }
};

INSTANTIATE_TYPED_TEST_SUITE_P(Vem3DPointArray, ArrayContract, SpacePointTraits);
INSTANTIATE_TYPED_TEST_SUITE_P(Vem3DPointArray, ReferenceContract, SpacePointTraits);
INSTANTIATE_TYPED_TEST_SUITE_P(Vem3DPointArray, ConstAccessContract, SpacePointTraits);

TEST(Vem3DPointArray, ElementsAreDoublesInARow) {
  Vem3DPointArray array;
  for (Vem3DPoint point : {Vem3DPoint(1, 2, 3), Vem3DPoint(4, 5, 6)}) array.Append(point);
  double flat[6];
  std::memcpy(flat, &array[0], sizeof(flat));
  for (int i = 0; i < 6; ++i) EXPECT_EQ(flat[i], i + 1);
}

}  // namespace
