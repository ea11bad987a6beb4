#include "VemROIArray.h"

#include <ostream>
#include <vector>

#include <gtest/gtest.h>

#include "IVemROIAPara.h"
#include "support/ArrayContract.h"
#include "support/PrivateAccess.h"
#include "support/Support.h"

struct PrivateVemROIImpl {
  using Type = IVemROIPara* VemROI::*;
  friend Type PrivateOf(PrivateVemROIImpl);
};

template struct PrivateAccess<PrivateVemROIImpl, &VemROI::impl_>;

struct PrivateVemROIArrayStore {
  using Type = std::vector<IVemROIArrayPara>* VemROIArray::*;
  friend Type PrivateOf(PrivateVemROIArrayStore);
};

template struct PrivateAccess<PrivateVemROIArrayStore, &VemROIArray::store_>;

namespace {

using Values = std::vector<double>;
using Runs = std::vector<::Run>;

IVemROIPara& Impl(VemROI& roi) { return *(roi.*PrivateOf(PrivateVemROIImpl())); }

// All that a ROI holds. The canvas of anything but a mask has no value and counts as 0.
struct PlainROI {
  VemROIType type = VemROINone;
  Values numbers;
  Runs runs;
  int width = 0;
  int height = 0;
};

bool operator==(const PlainROI& a, const PlainROI& b) {
  return a.type == b.type && a.numbers == b.numbers && a.runs == b.runs && a.width == b.width &&
         a.height == b.height;
}

void PrintTo(const PlainROI& roi, std::ostream* out) {
  *out << "type " << roi.type << ", numbers " << testing::PrintToString(roi.numbers) << ", runs "
       << testing::PrintToString(roi.runs) << " on " << roi.width << " by " << roi.height;
}

VemROI Make(const PlainROI& plain) {
  VemROI roi;
  IVemROIPara& impl = Impl(roi);
  impl.Type = plain.type;
  for (const double number : plain.numbers) impl.Params.Append(number);
  for (const ::Run& run : plain.runs) {
    impl.Rows.Append(run.Row);
    impl.FirstColumns.Append(run.FirstColumn);
    impl.LastColumns.Append(run.LastColumn);
  }
  impl.Width = plain.width;
  impl.Height = plain.height;
  return roi;
}

PlainROI Read(VemROI roi) {
  const IVemROIPara& impl = Impl(roi);
  PlainROI plain;
  plain.type = impl.Type;
  for (int i = 0; i < impl.Params.Length(); ++i) plain.numbers.push_back(impl.Params[i].D());
  plain.runs = RunsOf(impl.Rows, impl.FirstColumns, impl.LastColumns);
  if (plain.type != VemROIMask) return plain;
  plain.width = impl.Width;
  plain.height = impl.Height;
  return plain;
}

// Shapes and masks in turn.
PlainROI Sample(int i) {
  if (i % 2 == 0) return {static_cast<VemROIType>(i % 11), {1.0 * i, 2.5, 3.5}, {}, 0, 0};
  return {VemROIMask, {}, {{i, 1, 2}, {0, i, i}}, 100 + i, 200 + i};
}

struct Traits : ArrayTraits<VemROIArray, VemROI> {
  using Assigned = VemROIArray&;
  static constexpr bool kSelfAssignmentEmpties = true;
  static constexpr bool kHasReferences = false;
  static constexpr bool kSelectIsWhole = false;

  static VemROI Make(int number) { return ::Make(Sample(number)); }
  static bool IsMade(const VemROI& roi, int number) { return Read(roi) == Sample(number); }
  static bool IsDefault(const VemROI& roi) { return Read(roi) == PlainROI(); }
  // The runs of a mask are not delivered, and old ones stay; so do old numbers beside a mask.
  static bool IsSelected(const VemROI& roi, int old, int number) {
    PlainROI expected = Sample(number);
    if (expected.type == VemROIMask) expected.numbers = Sample(old).numbers;
    expected.runs = Sample(old).runs;
    return Read(roi) == expected;
  }

  static void Disturb(VemROI& roi) {
    IVemROIPara& impl = Impl(roi);
    impl.Type = VemROILine;
    for (VemVarArray* array : {&impl.Params, &impl.Rows, &impl.FirstColumns, &impl.LastColumns}) {
      if (array->Length() > 0) (*array)[0] = VemVar(77);
      array->Append(78);
    }
    impl.Width = impl.Height = 79;
  }
  static std::vector<IVemROIArrayPara>* Store(VemROIArray& array) {
    return array.*PrivateOf(PrivateVemROIArrayStore());
  }
};

INSTANTIATE_TYPED_TEST_SUITE_P(VemROIArray, ArrayContract, Traits);
INSTANTIATE_TYPED_TEST_SUITE_P(VemROIArray, ConstAccessContract, Traits);

const Runs kRuns = {{3, 1, 8}, {0, 2, 2}};

VemROI Circle(double radius) {
  VemROI roi;
  VemPoint center(4, 5);
  roi.GenCircle(center, radius);
  return roi;
}

VemROI Mask() {
  VemVarArray rows, firstColumns, lastColumns;
  for (const ::Run& run : kRuns) {
    rows.Append(run.Row);
    firstColumns.Append(run.FirstColumn);
    lastColumns.Append(run.LastColumn);
  }
  VemROI roi;
  roi.GenMask(rows, firstColumns, lastColumns, 64, 48);
  return roi;
}

VemROIArray ArrayOf(VemROI roi) {
  VemROIArray array;
  array.Append(roi);
  return array;
}

PlainROI First(const VemROIArray& array) { return Read(array[0]); }

TEST(VemROIArray, ShapeComesBackWithItsNumbers) {
  const VemROIArray array = ArrayOf(Circle(2.5));
  const VemROI roi = array[0];
  VemPoint center(0, 0);
  double radius = 0;
  EXPECT_EQ(roi.ROIType(), VemROICircle);
  EXPECT_TRUE(roi.GetCircle(&center, &radius));
  EXPECT_EQ(center.x, 4);
  EXPECT_EQ(center.y, 5);
  EXPECT_EQ(radius, 2.5);
}

TEST(VemROIArray, MaskComesBackWholeByIndex) {
  EXPECT_EQ(First(ArrayOf(Mask())), (PlainROI{VemROIMask, {}, kRuns, 64, 48}));
}

TEST(VemROIArray, SelectOfAMaskDeliversNoRuns) {
  const VemROIArray array = ArrayOf(Mask());
  VemROI fresh;
  array.Select(0, &fresh);
  EXPECT_EQ(Read(fresh), (PlainROI{VemROIMask, {}, {}, 64, 48}));

  VemROI circle = Circle(3);
  array.Select(0, &circle);
  EXPECT_EQ(Read(circle), (PlainROI{VemROIMask, {5, 4, 3}, {}, 64, 48}));

  const Runs others = {{7, 7, 7}};
  VemROI mask = Make({VemROIMask, {}, others, 10, 20});
  array.Select(0, &mask);
  EXPECT_EQ(Read(mask), (PlainROI{VemROIMask, {}, others, 64, 48}));
}

TEST(VemROIArray, SelectOfAShapeKeepsOldRunsAndCanvas) {
  const VemROIArray array = ArrayOf(Circle(2));
  VemROI roi = Mask();
  array.Select(0, &roi);
  EXPECT_EQ(Read(roi), (PlainROI{VemROICircle, {5, 4, 2}, kRuns, 0, 0}));
  EXPECT_EQ(Impl(roi).Width, 64);
  EXPECT_EQ(Impl(roi).Height, 48);
}

TEST(VemROIArray, IndexOutOfRangeGivesNoShape) {
  const VemROIArray array = ArrayOf(Circle(2));
  EXPECT_EQ(array[-1].ROIType(), VemROINone);
  EXPECT_EQ(array[1].ROIType(), VemROINone);
}

TEST(VemROIArray, SelectAtTheEndLeavesTheTargetUntouched) {
  const VemROIArray array = ArrayOf(Circle(2));
  VemROI roi = Mask();
  array.Select(1, &roi);
  EXPECT_EQ(Read(roi), (PlainROI{VemROIMask, {}, kRuns, 64, 48}));
}

TEST(VemROIArray, ShapeWithoutNumbersIsStoredAsItIs) {
  VemROI roi = Circle(2);
  VemPointArray points;
  VemPoint point(1, 1);
  points.Append(point);
  roi.GenPolygon(points);
  EXPECT_EQ(First(ArrayOf(roi)), (PlainROI{VemROICircle, {}, {}, 0, 0}));
}

TEST(VemROIArray, NoShapeIsAnElement) {
  const VemROIArray array = ArrayOf(VemROI());
  EXPECT_EQ(array.Length(), 1);
  EXPECT_EQ(First(array), PlainROI());
}

// A shape may hold runs from before it, and a mask numbers.
TEST(VemROIArray, LeftoversDoNotEnter) {
  const Runs runs = {{1, 2, 3}};
  VemROI shape = Make({VemROICircle, {1, 2, 3}, runs, 0, 0});
  VemROI mask = Make({VemROIMask, {1, 2, 3}, runs, 8, 9});
  VemROIArray array;
  array.Append(shape);
  array.Insert(0, mask);
  array.Append(mask);
  array.Append(mask);
  array.Replace(2, shape);
  for (const int i : {0, 3}) EXPECT_EQ(Read(array[i]), (PlainROI{VemROIMask, {}, runs, 8, 9})) << i;
  for (const int i : {1, 2})
    EXPECT_EQ(Read(array[i]), (PlainROI{VemROICircle, {1, 2, 3}, {}, 0, 0})) << i;
  for (const IVemROIArrayPara& record : *Traits::Store(array)) {
    const bool isMask = record.Type == VemROIMask;
    EXPECT_EQ(record.Params.Length(), isMask ? 0 : 3);
    EXPECT_EQ(record.Rows.Length(), isMask ? 1 : 0);
    EXPECT_TRUE(!isMask || (record.Width == 8 && record.Height == 9));
  }
}

}  // namespace
