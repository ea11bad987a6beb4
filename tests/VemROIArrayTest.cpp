#include "VemROIArray.h"

#include <gtest/gtest.h>

#include <random>
#include <type_traits>
#include <utility>
#include <vector>

#include "IVemROIAPara.h"
#include "support/CopyArrayContract.h"
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

using Numbers = std::vector<double>;
using Runs = std::vector<::Run>;

static_assert(sizeof(VemROIArray) == sizeof(void*), "a handle is one pointer");
static_assert(!std::is_polymorphic<VemROIArray>::value, "no virtual operations");
static_assert(
    std::is_same<decltype(std::declval<VemROIArray&>() = VemROIArray()), VemROIArray&>::value,
    "assignment gives the target");
static_assert(std::is_same<decltype(std::declval<VemROIArray&>()[0]), VemROI>::value,
              "elements come out by value alone");
constexpr void (VemROIArray::*kSelect)(int, VemROI*) const = &VemROIArray::Select;
constexpr int (VemROIArray::*kLength)() const = &VemROIArray::Length;

IVemROIPara& Impl(VemROI& roi) { return *(roi.*PrivateOf(PrivateVemROIImpl())); }

// All that a ROI holds. The canvas of anything but a mask has no value and counts as 0.
struct PlainROI {
  VemROIType type = VemROINone;
  Numbers numbers;
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

struct Kind {
  using Array = VemROIArray;
  using Element = VemROI;
  using Value = PlainROI;

  // Shapes and masks in turn, each of them with something left over from the other.
  static Value Sample(int i) {
    const Numbers numbers = {1.0 * i, 2.5, 3.5};
    const Runs runs = {{i, 1, 2}, {0, i, i}};
    if (i % 2 == 0) return {VemROICircle, numbers, runs, 0, 0};
    return {VemROIMask, numbers, runs, 100 + i, 200 + i};
  }

  static Value Random(std::mt19937& random) {
    const auto below = [&](unsigned end) { return static_cast<int>(random() % end); };
    Value value;
    value.type = static_cast<VemROIType>(below(3) == 0 ? VemROIMask : below(12));
    for (int i = below(4); i > 0; --i) value.numbers.push_back(below(9));
    for (int i = below(3); i > 0; --i) value.runs.push_back({below(9), below(9), below(9)});
    if (value.type != VemROIMask) return value;
    value.width = below(9);
    value.height = below(9);
    return value;
  }

  static Element Make(const Value& value) {
    VemROI roi;
    IVemROIPara& impl = Impl(roi);
    impl.Type = value.type;
    for (const double number : value.numbers) impl.Params.Append(number);
    for (const ::Run& run : value.runs) {
      impl.Rows.Append(run.Row);
      impl.FirstColumns.Append(run.FirstColumn);
      impl.LastColumns.Append(run.LastColumn);
    }
    impl.Width = value.width;
    impl.Height = value.height;
    return roi;
  }

  static Value Read(Element& element) {
    const IVemROIPara& impl = Impl(element);
    Value value;
    value.type = impl.Type;
    for (int i = 0; i < impl.Params.Length(); ++i) value.numbers.push_back(impl.Params[i].D());
    value.runs = RunsOf(impl.Rows, impl.FirstColumns, impl.LastColumns);
    if (value.type != VemROIMask) return value;
    value.width = impl.Width;
    value.height = impl.Height;
    return value;
  }

  // What is left over does not enter.
  static Value Stored(const Value& value) {
    Value stored = value;
    if (value.type == VemROIMask) {
      stored.numbers.clear();
    } else {
      stored.runs.clear();
    }
    return stored;
  }

  // The runs of a mask are not delivered.
  static Value Selected(const Value& old, const Value& element) {
    Value selected = old;
    selected.type = element.type;
    if (element.type != VemROIMask) selected.numbers = element.numbers;
    selected.width = element.width;
    selected.height = element.height;
    return selected;
  }

  static void Disturb(Element& element) {
    IVemROIPara& impl = Impl(element);
    impl.Type = VemROILine;
    for (VemVarArray* array : {&impl.Params, &impl.Rows, &impl.FirstColumns, &impl.LastColumns}) {
      if (array->Length() > 0) (*array)[0] = VemVar(77);
      array->Append(78);
    }
    impl.Width = impl.Height = 79;
  }

  static void Replace(Array& array, int index, Element& element) { array.Replace(index, element); }

  static constexpr bool kSelfAssignmentEmpties = true;
  static constexpr bool kTestsPositions = true;
};

INSTANTIATE_TYPED_TEST_SUITE_P(VemROIArray, CopyArrayContract, Kind);

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

PlainROI First(const VemROIArray& array) {
  VemROI roi = array[0];
  return Kind::Read(roi);
}

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
  EXPECT_EQ(Kind::Read(fresh), (PlainROI{VemROIMask, {}, {}, 64, 48}));

  VemROI circle = Circle(3);
  array.Select(0, &circle);
  EXPECT_EQ(Kind::Read(circle), (PlainROI{VemROIMask, {5, 4, 3}, {}, 64, 48}));

  const Runs others = {{7, 7, 7}};
  VemROI mask = Kind::Make({VemROIMask, {}, others, 10, 20});
  array.Select(0, &mask);
  EXPECT_EQ(Kind::Read(mask), (PlainROI{VemROIMask, {}, others, 64, 48}));
}

TEST(VemROIArray, SelectOfAShapeKeepsOldRunsAndCanvas) {
  const VemROIArray array = ArrayOf(Circle(2));
  VemROI roi = Mask();
  array.Select(0, &roi);
  EXPECT_EQ(Kind::Read(roi), (PlainROI{VemROICircle, {5, 4, 2}, kRuns, 0, 0}));
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
  EXPECT_EQ(Kind::Read(roi), (PlainROI{VemROIMask, {}, kRuns, 64, 48}));
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

TEST(VemROIArray, LeftoversDoNotEnter) {
  const Runs runs = {{1, 2, 3}};
  const PlainROI shape = {VemROICircle, {1, 2, 3}, runs, 0, 0};
  EXPECT_EQ(First(ArrayOf(Kind::Make(shape))), (PlainROI{VemROICircle, {1, 2, 3}, {}, 0, 0}));
  const PlainROI mask = {VemROIMask, {1, 2, 3}, runs, 8, 9};
  EXPECT_EQ(First(ArrayOf(Kind::Make(mask))), (PlainROI{VemROIMask, {}, runs, 8, 9}));
}

TEST(VemROIArray, RecordsHoldNumbersOrRunsNeverBoth) {
  VemROIArray array;
  for (int i = 0; i < 2; ++i) {
    VemROI roi = Kind::Make(Kind::Sample(i));
    array.Append(roi);
  }
  const auto& records = *(array.*PrivateOf(PrivateVemROIArrayStore()));
  EXPECT_EQ(records[0].Params.Length(), 3);
  EXPECT_EQ(records[0].Rows.Length(), 0);
  EXPECT_EQ(records[1].Params.Length(), 0);
  EXPECT_EQ(records[1].Rows.Length(), 2);
  EXPECT_EQ(records[1].Width, 101);
  EXPECT_EQ(records[1].Height, 201);
}

TEST(VemROIArray, AssignmentGivesTheTarget) {
  VemROIArray array;
  const VemROIArray source = ArrayOf(Circle(2));
  EXPECT_EQ(&(array = source), &array);
  EXPECT_EQ(array.Length(), 1);
}

}  // namespace
