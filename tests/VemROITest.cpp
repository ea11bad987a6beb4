#include "VemROI.h"

#include <cstring>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "support/Support.h"

namespace {

static_assert(sizeof(VemROI) == sizeof(void*), "a handle is one pointer");
static_assert(!std::is_polymorphic<VemROI>::value, "no virtual operations");
static_assert(std::is_convertible<int, VemROI>::value, "value constructors are implicit");

// Every reader is const but GetPoint.
template <typename... Outputs>
using Get = bool (VemROI::*)(Outputs*...) const;
constexpr bool (VemROI::*kGetPoint)(VemPoint*) = &VemROI::GetPoint;
constexpr Get<VemPoint, VemPoint> kGetRect1 = &VemROI::GetRect1;
constexpr Get<VemPoint, double> kGetCircle = &VemROI::GetCircle;
constexpr Get<VemPoint, double, double, double, double> kGetTorus = &VemROI::GetTorus;
constexpr Get<VemPoint, double, double, double> kGetRect2 = &VemROI::GetRect2;
constexpr Get<VemPoint, VemPoint> kGetLine = &VemROI::GetLine;
constexpr Get<VemPoint, double, double, double> kGetEllipse = &VemROI::GetEllipse;
constexpr Get<VemPoint, double, double, double> kGetArc = &VemROI::GetArc;
constexpr Get<VemVarArray, VemVarArray> kGetPolygonArrays = &VemROI::GetPolygon;
constexpr Get<VemPointArray> kGetPolygonPoints = &VemROI::GetPolygon;
constexpr Get<VemPointArray> kGetIrregular = &VemROI::GetIrregular;

using Doubles = std::vector<double>;

// The object behind a handle.
IVemROIPara& Impl(VemROI& roi) {
  IVemROIPara* impl;
  std::memcpy(&impl, &roi, sizeof(impl));
  return *impl;
}

Doubles Numbers(const VemVarArray& values) {
  Doubles numbers;
  for (int i = 0; i < values.Length(); ++i) {
    EXPECT_EQ(values[i].ValType(), VemVarDouble);
    numbers.push_back(values[i].D());
  }
  return numbers;
}

VemPointArray Triangle() {
  VemPointArray points;
  for (VemPoint point : {VemPoint(1, 2), VemPoint(3, 4), VemPoint(5, 7)}) points.Append(point);
  return points;
}

void MakeMask(VemROI& roi) {
  IVemROIPara& impl = Impl(roi);
  impl.Type = VemROIMask;
  impl.Width = 640;
  impl.Height = 480;
  impl.Rows = VemVarArray(7);
  impl.FirstColumns = VemVarArray(8);
  impl.LastColumns = VemVarArray(900);
}

struct Mask {
  bool result;
  std::vector<::Run> runs;
  int width;
  int height;
};

Mask MaskOf(const VemROI& roi) {
  VemVarArray rows;
  VemVarArray firstColumns;
  VemVarArray lastColumns;
  Mask mask{false, {}, -1, -2};
  mask.result = roi.GetMask(&rows, &firstColumns, &lastColumns, &mask.width, &mask.height);
  mask.runs = RunsOf(rows, firstColumns, lastColumns);
  return mask;
}

void ExpectMadeMask(const VemROI& roi) {
  EXPECT_EQ(roi.ROIType(), VemROIMask);
  const Mask mask = MaskOf(roi);
  EXPECT_TRUE(mask.result);
  EXPECT_EQ(mask.runs, (std::vector<::Run>{{7, 8, 900}}));
  EXPECT_EQ(mask.width, 640);
  EXPECT_EQ(mask.height, 480);
}

void ExpectNoShape(const VemROI& roi) {
  EXPECT_EQ(roi.ROIType(), VemROINone);
  const Mask mask = MaskOf(roi);
  EXPECT_FALSE(mask.result);
  EXPECT_TRUE(mask.runs.empty());
  EXPECT_EQ(mask.width, -1);
  EXPECT_EQ(mask.height, -2);
}

void ExpectCircle(const VemROI& roi, const Doubles& expected) {
  VemPoint center;
  double radius = 0;
  EXPECT_EQ(roi.ROIType(), VemROICircle);
  EXPECT_TRUE(roi.GetCircle(&center, &radius));
  EXPECT_EQ(Doubles({center.x, center.y, radius}), expected);
}

// --- Forwarding -------------------------------------------------------------------------------

TEST(VemROI, ForwardsPoint) {
  VemROI roi;
  VemPoint point(1, 2);
  roi.GenPoint(point);
  EXPECT_EQ(roi.ROIType(), VemROIPoint);
  EXPECT_EQ(Numbers(Impl(roi).Params), Doubles({1, 2}));
  VemPoint read;
  EXPECT_TRUE((roi.*kGetPoint)(&read));
  EXPECT_EQ(Doubles({read.x, read.y}), Doubles({1, 2}));
}

TEST(VemROI, ForwardsRect1) {
  VemROI roi;
  VemPoint p1(1, 2);
  VemPoint p2(3, 5);
  roi.GenRect1(p1, p2);
  EXPECT_EQ(roi.ROIType(), VemROIRect1);
  EXPECT_EQ(Numbers(Impl(roi).Params), Doubles({2, 1, 5, 3}));
  VemPoint q1;
  VemPoint q2;
  EXPECT_TRUE((roi.*kGetRect1)(&q1, &q2));
  EXPECT_EQ(Doubles({q1.x, q1.y, q2.x, q2.y}), Doubles({1, 2, 3, 5}));
}

TEST(VemROI, ForwardsLine) {
  VemROI roi;
  VemPoint p1(3, 5);
  VemPoint p2(1, 2);
  roi.GenLine(p1, p2);
  EXPECT_EQ(roi.ROIType(), VemROILine);
  EXPECT_EQ(Numbers(Impl(roi).Params), Doubles({5, 3, 2, 1}));
  VemPoint q1;
  VemPoint q2;
  EXPECT_TRUE((roi.*kGetLine)(&q1, &q2));
  EXPECT_EQ(Doubles({q1.x, q1.y, q2.x, q2.y}), Doubles({3, 5, 1, 2}));
}

TEST(VemROI, ForwardsCircle) {
  VemROI roi;
  VemPoint center(1, 2);
  roi.GenCircle(center, 3.5);
  EXPECT_EQ(Numbers(Impl(roi).Params), Doubles({2, 1, 3.5}));
  VemPoint read;
  double radius = 0;
  EXPECT_TRUE((roi.*kGetCircle)(&read, &radius));
  ExpectCircle(roi, {1, 2, 3.5});
}

TEST(VemROI, ForwardsTorus) {
  VemROI roi;
  VemPoint center(1, 2);
  roi.GenTorus(center, 3, 4, 50, 60);
  EXPECT_EQ(roi.ROIType(), VemROITorus);
  EXPECT_EQ(Numbers(Impl(roi).Params), Doubles({2, 1, 3, 4, 50, 60}));
  VemPoint read;
  double inner = 0;
  double outer = 0;
  double start = 0;
  double sweep = 0;
  EXPECT_TRUE((roi.*kGetTorus)(&read, &inner, &outer, &start, &sweep));
  EXPECT_EQ(Doubles({read.x, read.y, inner, outer, start, sweep}), Doubles({1, 2, 3, 4, 50, 60}));
}

// The three shapes of a centre and three numbers.
TEST(VemROI, ForwardsCenterAndThreeNumbers) {
  const struct {
    const char* name;
    void (VemROI::*generate)(VemPoint&, double, double, double);
    Get<VemPoint, double, double, double> get;
    VemROIType type;
  } kCases[] = {
      {"Rect2", &VemROI::GenRect2, kGetRect2, VemROIRect2},
      {"Ellipse", &VemROI::GenEllipse, kGetEllipse, VemROIEllipse},
      {"Arc", &VemROI::GenArc, kGetArc, VemROIArc},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.name);
    VemROI roi;
    VemPoint center(1, 2);
    (roi.*c.generate)(center, 3, 4, 5);
    EXPECT_EQ(roi.ROIType(), c.type);
    EXPECT_EQ(Numbers(Impl(roi).Params), Doubles({2, 1, 3, 4, 5}));
    for (const auto& other : kCases) {
      VemPoint read(-1, -2);
      double a = -3;
      double b = -4;
      double d = -5;
      const bool own = other.type == c.type;
      EXPECT_EQ((roi.*other.get)(&read, &a, &b, &d), own);
      EXPECT_EQ(Doubles({read.x, read.y, a, b, d}),
                own ? Doubles({1, 2, 3, 4, 5}) : Doubles({-1, -2, -3, -4, -5}));
    }
  }
}

TEST(VemROI, ForwardsPolygonOfArrays) {
  VemROI roi;
  VemVarArray rows;
  VemVarArray cols;
  for (int i = 0; i < 3; ++i) {
    rows.Append(VemVar(i));
    cols.Append(VemVar(10 * i));
  }
  roi.GenPolygon(rows, cols);
  EXPECT_EQ(roi.ROIType(), VemROIPolygon);
  EXPECT_EQ(Numbers(Impl(roi).Params), Doubles({0, 0, 1, 10, 2, 20}));
  VemVarArray readRows;
  VemVarArray readCols;
  EXPECT_TRUE((roi.*kGetPolygonArrays)(&readRows, &readCols));
  EXPECT_EQ(Numbers(readRows), Doubles({0, 1, 2}));
  EXPECT_EQ(Numbers(readCols), Doubles({0, 10, 20}));
}

// The two shapes of a list of points.
TEST(VemROI, ForwardsPointLists) {
  const struct {
    const char* name;
    void (VemROI::*generate)(VemPointArray&);
    Get<VemPointArray> get;
    VemROIType type;
  } kCases[] = {
      {"Polygon", &VemROI::GenPolygon, kGetPolygonPoints, VemROIPolygon},
      {"Irregular", &VemROI::GenIrregular, kGetIrregular, VemROIIrregular},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.name);
    VemROI roi;
    VemPointArray points = Triangle();
    (roi.*c.generate)(points);
    EXPECT_EQ(roi.ROIType(), c.type);
    EXPECT_EQ(Numbers(Impl(roi).Params), Doubles({2, 1, 4, 3, 7, 5}));
    for (const auto& other : kCases) {
      VemPointArray read;
      EXPECT_EQ((roi.*other.get)(&read), other.type == c.type);
      ASSERT_EQ(read.Length(), other.type == c.type ? 3 : 0);
      if (other.type != c.type) continue;
      EXPECT_EQ(Doubles({read[2].x, read[2].y}), Doubles({5, 7}));
    }
  }
}

TEST(VemROI, ForwardsRefusals) {
  VemROI roi;
  VemPoint center(1, 2);
  roi.GenCircle(center, 3);
  roi.GenCircle(center, 0);
  ExpectNoShape(roi);
  VemPoint read(-1, -2);
  double radius = -3;
  EXPECT_FALSE(roi.GetCircle(&read, &radius));
  EXPECT_EQ(Doubles({read.x, read.y, radius}), Doubles({-1, -2, -3}));
}

TEST(VemROI, ForwardsGetMask) {
  VemROI roi;
  VemPoint p1(10, 20);
  VemPoint p2(12, 21);
  roi.GenRect1(p1, p2);
  const Mask mask = MaskOf(roi);
  EXPECT_TRUE(mask.result);
  EXPECT_EQ(mask.runs, (std::vector<::Run>{{20, 10, 12}, {21, 10, 12}}));
  EXPECT_EQ(mask.width, 13);
  EXPECT_EQ(mask.height, 22);
}

TEST(VemROI, ForwardsReset) {
  VemROI roi;
  MakeMask(roi);
  roi.Reset();
  ExpectNoShape(roi);
  EXPECT_EQ(Impl(roi).Rows.Length(), 0);
  EXPECT_EQ(Impl(roi).FirstColumns.Length(), 0);
  EXPECT_EQ(Impl(roi).LastColumns.Length(), 0);
  EXPECT_EQ(Impl(roi).Width, 640);
  EXPECT_EQ(Impl(roi).Height, 480);
}

// --- Construction and copies ------------------------------------------------------------------

TEST(VemROI, StartsWithoutShape) {
  const VemROI roi;
  ExpectNoShape(roi);
}

TEST(VemROI, ArgumentOfConstructorHasNoEffect) {
  for (int value : {7, 0, 11, -1}) {
    SCOPED_TRACE(value);
    VemROI roi(value);
    ExpectNoShape(roi);
    EXPECT_EQ(Impl(roi).Params.Length(), 0);
    VemPoint center(1, 2);
    roi.GenCircle(center, 3);
    ExpectCircle(roi, {1, 2, 3});
  }
}

TEST(VemROI, CopyOfAMaskKeepsCanvasAndRuns) {
  VemROI source;
  MakeMask(source);
  const VemROI copy(source);
  ExpectMadeMask(copy);
  VemROI assigned;
  assigned = source;
  ExpectMadeMask(assigned);
}

TEST(VemROI, CopiesShareNothing) {
  VemROI source;
  MakeMask(source);
  VemROI copy(source);
  VemROI assigned;
  assigned = source;
  EXPECT_NE(&Impl(copy), &Impl(source));
  EXPECT_NE(&Impl(assigned), &Impl(source));
  Impl(source).Rows[0] = VemVar(99);
  source.Reset();
  ExpectMadeMask(copy);
  ExpectMadeMask(assigned);
  VemPoint center(1, 2);
  copy.GenCircle(center, 3);
  ExpectNoShape(source);
  ExpectMadeMask(assigned);
}

TEST(VemROI, CopiesOutliveTheirSource) {
  VemROI copy;
  {
    VemROI source;
    VemPoint center(1, 2);
    source.GenCircle(center, 3);
    copy = source;
  }
  ExpectCircle(copy, {1, 2, 3});
}

TEST(VemROI, AssignmentReplacesTheShapeInPlace) {
  VemROI source;
  VemPoint center(1, 2);
  source.GenCircle(center, 3);
  VemROI target;
  MakeMask(target);
  IVemROIPara* const impl = &Impl(target);
  VemROI& returned = target = source;
  EXPECT_EQ(&returned, &target);
  EXPECT_EQ(&Impl(target), impl);
  ExpectCircle(target, {1, 2, 3});
  EXPECT_EQ(Impl(target).Rows.Length(), 0);
  EXPECT_EQ(Impl(target).Width, 0);
  EXPECT_EQ(Impl(target).Height, 0);
}

TEST(VemROI, AssignmentToItselfChangesNothing) {
  VemROI mask;
  MakeMask(mask);
  const VemROI& same = mask;
  mask = same;
  ExpectMadeMask(mask);
}

TEST(VemROI, CopyOfNoShapeIsNoShape) {
  const VemROI source;
  const VemROI copy(source);
  ExpectNoShape(copy);
  VemROI target;
  MakeMask(target);
  target = source;
  ExpectNoShape(target);
}

}  // namespace
