#include "VemPointArray.h"

#include <cmath>
#include <cstring>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

#include "VemPoint.h"
#include "support/ArrayContract.h"
#include "support/PrivateAccess.h"
#include "support/Support.h"

struct PrivateVemPointArrayStore {
  using Type = std::vector<VemPoint>* VemPointArray::*;
  friend Type PrivateOf(PrivateVemPointArrayStore);
};

template struct PrivateAccess<PrivateVemPointArrayStore, &VemPointArray::store_>;

namespace {

struct PointTraits : ArrayTraits<VemPointArray, VemPoint> {
  static VemPoint Make(int number) { return VemPoint(number, -0.5 * number); }
  static bool IsMade(const VemPoint& point, int number) {
    return point.x == number && point.y == -0.5 * number;
  }
  static bool IsDefault(const VemPoint& point) { return IsMade(point, 0); }
  static std::vector<VemPoint>* Store(VemPointArray& array) {
    return array.*PrivateOf(PrivateVemPointArrayStore());
  }
};

INSTANTIATE_TYPED_TEST_SUITE_P(VemPointArray, ArrayContract, PointTraits);
INSTANTIATE_TYPED_TEST_SUITE_P(VemPointArray, ReferenceContract, PointTraits);
INSTANTIATE_TYPED_TEST_SUITE_P(VemPointArray, ConstAccessContract, PointTraits);

TEST(VemPointArray, ElementsAreDoublesInARow) {
  VemPointArray array;
  for (VemPoint point : {VemPoint(1, 2), VemPoint(3, 4), VemPoint(5, 6)}) array.Append(point);
  double flat[6];
  std::memcpy(flat, &array[0], sizeof(flat));
  for (int i = 0; i < 6; ++i) EXPECT_EQ(flat[i], i + 1);
}

TEST(VemPointArray, ElementsReadAsOpenCvPoints) {
  VemPointArray array;
  for (VemPoint point : {VemPoint(1, 2), VemPoint(-0.5, 1e300)}) array.Append(point);
  std::vector<cv::Point_<double>> points(2);
  std::memcpy(static_cast<void*>(points.data()), &array[0], 2 * sizeof(VemPoint));
  EXPECT_EQ(points[0], cv::Point_<double>(1, 2));
  EXPECT_EQ(points[1], cv::Point_<double>(-0.5, 1e300));
}

TEST(VemPointArray, SelectAtLengthLeavesThePoint) {
  VemPointArray array;
  VemPoint point(1, 2);
  array.Append(point);
  VemPoint out(7, 8);
  array.Select(array.Length(), &out);
  EXPECT_EQ(out.x, 7);
  EXPECT_EQ(out.y, 8);
}

TEST(VemPointArray, AnyCoordinateIsKept) {
  VemPointArray array;
  VemPoint point(kNaN, -kInfinity);
  array.Append(point);
  array.Insert(0, point);
  const VemPointArray copy(array);
  for (int i = 0; i < 2; ++i) {
    EXPECT_TRUE(std::isnan(copy[i].x));
    EXPECT_EQ(copy[i].y, -kInfinity);
  }
}

}  // namespace
