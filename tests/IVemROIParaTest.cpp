#include "IVemROIPara.h"

#include <cstddef>
#include <cstring>
#include <functional>
#include <initializer_list>
#include <new>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "support/Support.h"

namespace {

static_assert(std::is_standard_layout<IVemROIPara>::value, "a plain class");
static_assert(!std::is_polymorphic<IVemROIPara>::value, "no virtual operations");
static_assert(sizeof(VemROIType) == 4, "a 32-bit tag");
static_assert(offsetof(IVemROIPara, Params) == 0, "the order of the fields");
static_assert(offsetof(IVemROIPara, Type) == 8, "the order of the fields");
static_assert(offsetof(IVemROIPara, Width) == 12, "the order of the fields");
static_assert(offsetof(IVemROIPara, Height) == 16, "the order of the fields");
static_assert(offsetof(IVemROIPara, Rows) == 24, "the order of the fields");
static_assert(offsetof(IVemROIPara, FirstColumns) == 32, "the order of the fields");
static_assert(offsetof(IVemROIPara, LastColumns) == 40, "the order of the fields");
static_assert(sizeof(IVemROIPara) == 48, "no further field");

static_assert(VemROIRect1 == 0 && VemROICircle == 1 && VemROITorus == 2 && VemROINone == 3, "");
static_assert(VemROIPolygon == 4 && VemROIIrregular == 5 && VemROIRect2 == 6, "");
static_assert(VemROILine == 7 && VemROIEllipse == 8 && VemROIArc == 9 && VemROIPoint == 10, "");
static_assert(VemROIMask == 11, "");

const VemROIType kAllTypes[] = {VemROIRect1,   VemROICircle,    VemROITorus, VemROINone,
                                VemROIPolygon, VemROIIrregular, VemROIRect2, VemROILine,
                                VemROIEllipse, VemROIArc,       VemROIPoint, VemROIMask};

using Doubles = std::vector<double>;

VemVarArray Array(const std::vector<VemVar>& values) {
  VemVarArray array;
  for (const VemVar& value : values) array.Append(value);
  return array;
}

VemVarArray DoubleArray(const Doubles& values) {
  VemVarArray array;
  for (double value : values) array.Append(VemVar(value));
  return array;
}

VemPointArray Points(const std::vector<VemPoint>& values) {
  VemPointArray array;
  for (VemPoint value : values) array.Append(value);
  return array;
}

// Elements of different kinds or bits are told apart, unlike with VemVarArray's own comparison.
::testing::AssertionResult Equal(const VemVarArray& actual, const VemVarArray& expected) {
  if (Same(actual, expected)) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << ::testing::PrintToString(actual) << " instead of "
                                       << ::testing::PrintToString(expected);
}

// Two runs on a canvas of 640 by 480, with a number left in Params.
void MakeMask(IVemROIPara& para) {
  para.Type = VemROIMask;
  para.Width = 640;
  para.Height = 480;
  para.Params = DoubleArray({77.0});
  para.Rows = Array({1, 2});
  para.FirstColumns = Array({3, 4});
  para.LastColumns = Array({5, 6});
}

void MakeShape(IVemROIPara& para, VemROIType type, const Doubles& params) {
  para.Type = type;
  para.Params = DoubleArray(params);
}

void ExpectMaskRuns(const IVemROIPara& para) {
  EXPECT_TRUE(Equal(para.Rows, Array({1, 2})));
  EXPECT_TRUE(Equal(para.FirstColumns, Array({3, 4})));
  EXPECT_TRUE(Equal(para.LastColumns, Array({5, 6})));
}

void ExpectNoRuns(const IVemROIPara& para) {
  EXPECT_EQ(para.Rows.Length(), 0);
  EXPECT_EQ(para.FirstColumns.Length(), 0);
  EXPECT_EQ(para.LastColumns.Length(), 0);
}

// Generates over a mask, of which nothing may be left. Without numbers, a refusal is expected.
void ExpectGenerated(const char* name, const std::function<void(IVemROIPara&)>& generate,
                     VemROIType type, const Doubles& params) {
  SCOPED_TRACE(name);
  IVemROIPara para;
  MakeMask(para);
  generate(para);
  EXPECT_EQ(para.Type, params.empty() ? VemROINone : type);
  EXPECT_TRUE(Equal(para.Params, DoubleArray(params)));
  ExpectNoRuns(para);
  EXPECT_EQ(para.Width, 0);
  EXPECT_EQ(para.Height, 0);
}

// --- Generators -------------------------------------------------------------------------------

TEST(IVemROIPara, GenPointStoresXBeforeYAndTakesAnything) {
  const struct {
    const char* name;
    VemPoint point;
    Doubles params;
  } kCases[] = {
      {"Plain", {1, 2}, {1, 2}},
      {"Fractions", {1.25, -2.5}, {1.25, -2.5}},
      {"BeyondFloat", {16777217, 0.1}, {16777217, 0.1}},
      {"Origin", {0, 0}, {0, 0}},
      {"NegativeZero", {-0.0, 0}, {-0.0, 0}},
      {"NotANumber", {kNaN, kNaN}, {kNaN, kNaN}},
      {"Infinities", {-kInfinity, kInfinity}, {-kInfinity, kInfinity}},
  };
  for (const auto& c : kCases) {
    VemPoint point = c.point;
    ExpectGenerated(
        c.name, [&](IVemROIPara& p) { p.GenPoint(point); }, VemROIPoint, c.params);
  }
}

struct TwoPointsCase {
  const char* name;
  VemPoint p1;
  VemPoint p2;
  Doubles params;  // None when refused.
};

TEST(IVemROIPara, GenRect1TakesOnlyCornersInOrder) {
  const TwoPointsCase kCases[] = {
      {"InOrder", {1, 2}, {3, 5}, {2, 1, 5, 3}},
      {"Negative", {-9, -8}, {-7, -6}, {-8, -9, -6, -7}},
      {"BarelyApart", {0, 0}, {1e-300, 1e-300}, {0, 0, 1e-300, 1e-300}},
      {"BeyondFloat", {16777216, 0}, {16777217, 1}, {0, 16777216, 1, 16777217}},
      {"Infinite", {-kInfinity, 0}, {kInfinity, 1}, {0, -kInfinity, 1, kInfinity}},
      {"Swapped", {3, 5}, {1, 2}, {}},
      {"XSwapped", {3, 2}, {1, 5}, {}},
      {"YSwapped", {1, 5}, {3, 2}, {}},
      {"SameX", {1, 2}, {1, 5}, {}},
      {"SameY", {1, 2}, {3, 2}, {}},
      {"SamePoint", {1, 2}, {1, 2}, {}},
      {"FirstXNotANumber", {kNaN, 2}, {3, 5}, {}},
      {"FirstYNotANumber", {1, kNaN}, {3, 5}, {}},
      {"SecondXNotANumber", {1, 2}, {kNaN, 5}, {}},
      {"SecondYNotANumber", {1, 2}, {3, kNaN}, {}},
      {"BothInfinite", {kInfinity, 0}, {kInfinity, 1}, {}},
  };
  for (const TwoPointsCase& c : kCases) {
    VemPoint p1 = c.p1;
    VemPoint p2 = c.p2;
    ExpectGenerated(
        c.name, [&](IVemROIPara& p) { p.GenRect1(p1, p2); }, VemROIRect1, c.params);
  }
}

TEST(IVemROIPara, GenLineTakesAnyTwoPointsThatDiffer) {
  const TwoPointsCase kCases[] = {
      {"BothDiffer", {1, 2}, {3, 5}, {2, 1, 5, 3}},
      {"Backward", {3, 5}, {1, 2}, {5, 3, 2, 1}},
      {"OnlyX", {1, 2}, {3, 2}, {2, 1, 2, 3}},
      {"OnlyY", {1, 2}, {1, 5}, {2, 1, 5, 1}},
      {"BeyondFloat", {16777216, 2}, {16777217, 2}, {2, 16777216, 2, 16777217}},
      {"NotANumberTwice", {kNaN, 2}, {kNaN, 2}, {2, kNaN, 2, kNaN}},
      {"YNotANumberTwice", {1, kNaN}, {1, kNaN}, {kNaN, 1, kNaN, 1}},
      {"Equal", {1, 2}, {1, 2}, {}},
      {"ZerosOfBothSigns", {0.0, -0.0}, {-0.0, 0.0}, {}},
      {"EqualInfinities", {kInfinity, 0}, {kInfinity, 0}, {}},
  };
  for (const TwoPointsCase& c : kCases) {
    VemPoint p1 = c.p1;
    VemPoint p2 = c.p2;
    ExpectGenerated(
        c.name, [&](IVemROIPara& p) { p.GenLine(p1, p2); }, VemROILine, c.params);
  }
}

TEST(IVemROIPara, GenCircleTakesOnlyPositiveRadii) {
  const struct {
    const char* name;
    VemPoint center;
    double radius;
    Doubles params;
  } kCases[] = {
      {"Plain", {1, 2}, 3, {2, 1, 3}},
      {"Tiny", {1, 2}, 1e-300, {2, 1, 1e-300}},
      {"NegativeCenter", {-1.5, -2.5}, 0.5, {-2.5, -1.5, 0.5}},
      {"CenterNotANumber", {kNaN, kNaN}, 3, {kNaN, kNaN, 3}},
      {"Infinite", {1, 2}, kInfinity, {2, 1, kInfinity}},
      {"Zero", {1, 2}, 0, {}},
      {"NegativeZero", {1, 2}, -0.0, {}},
      {"Negative", {1, 2}, -3, {}},
      {"NotANumber", {1, 2}, kNaN, {}},
  };
  for (const auto& c : kCases) {
    VemPoint center = c.center;
    ExpectGenerated(
        c.name, [&](IVemROIPara& p) { p.GenCircle(center, c.radius); }, VemROICircle, c.params);
  }
}

TEST(IVemROIPara, GenTorusTakesGrowingRadiiAndNoNegativeSweep) {
  const struct {
    const char* name;
    double inner, outer, start, sweep;
    bool accepted;
  } kCases[] = {
      {"Plain", 3, 5, 30, 60, true},
      {"BarelyApart", 3, 3.0000001, 30, 60, true},
      {"TinyInner", 1e-300, 5, 30, 60, true},
      {"InfiniteOuter", 3, kInfinity, 30, 60, true},
      {"SweepZero", 3, 5, 30, 0, true},
      {"SweepNegativeZero", 3, 5, 30, -0.0, true},
      {"SweepBeyondATurn", 3, 5, 30, 1000, true},
      {"StartNegative", 3, 5, -400.5, 60, true},
      {"StartNotANumber", 3, 5, kNaN, 60, true},
      {"StartInfinite", 3, 5, -kInfinity, 60, true},
      {"EqualRadii", 5, 5, 30, 60, false},
      {"RadiiSwapped", 5, 3, 30, 60, false},
      {"InnerZero", 0, 5, 30, 60, false},
      {"InnerNegative", -3, 5, 30, 60, false},
      {"BothNegative", -5, -3, 30, 60, false},
      {"OuterZero", -3, 0, 30, 60, false},
      {"InnerNotANumber", kNaN, 5, 30, 60, false},
      {"OuterNotANumber", 3, kNaN, 30, 60, false},
      {"BothInfinite", kInfinity, kInfinity, 30, 60, false},
      {"SweepNegative", 3, 5, 30, -1e-300, false},
      {"SweepNotANumber", 3, 5, 30, kNaN, false},
  };
  for (const auto& c : kCases) {
    VemPoint center(1, 2);
    const Doubles params = {2, 1, c.inner, c.outer, c.start, c.sweep};
    ExpectGenerated(
        c.name, [&](IVemROIPara& p) { p.GenTorus(center, c.inner, c.outer, c.start, c.sweep); },
        VemROITorus, c.accepted ? params : Doubles());
  }
}

struct ThreeNumbersCase {
  const char* name;
  double first, second, third;
  bool accepted;
};

// Rotated rectangles and ellipses: two sizes above 0, then any angle.
const ThreeNumbersCase kSizesAndAngle[] = {
    {"Plain", 5, 3, 30, true},
    {"SecondLarger", 3, 5, 30, true},
    {"Tiny", 1e-300, 1e-300, 30, true},
    {"Infinite", kInfinity, kInfinity, 30, true},
    {"AngleZero", 5, 3, 0, true},
    {"AngleNegative", 5, 3, -12.5, true},
    {"AngleBeyondATurn", 5, 3, 725, true},
    {"AngleNotANumber", 5, 3, kNaN, true},
    {"FirstZero", 0, 3, 30, false},
    {"SecondZero", 5, 0, 30, false},
    {"FirstNegative", -5, 3, 30, false},
    {"SecondNegative", 5, -3, 30, false},
    {"BothNegative", -5, -3, 30, false},
    {"FirstNotANumber", kNaN, 3, 30, false},
    {"SecondNotANumber", 5, kNaN, 30, false},
};

TEST(IVemROIPara, GenRect2TakesPositiveLengthsAtAnyAngle) {
  for (const ThreeNumbersCase& c : kSizesAndAngle) {
    VemPoint center(1.5, 2);
    ExpectGenerated(
        c.name, [&](IVemROIPara& p) { p.GenRect2(center, c.first, c.second, c.third); },
        VemROIRect2, c.accepted ? Doubles{2, 1.5, c.first, c.second, c.third} : Doubles());
  }
}

TEST(IVemROIPara, GenEllipseTakesPositiveRadiiAtAnyAngle) {
  for (const ThreeNumbersCase& c : kSizesAndAngle) {
    VemPoint center(1.5, 2);
    ExpectGenerated(
        c.name, [&](IVemROIPara& p) { p.GenEllipse(center, c.first, c.second, c.third); },
        VemROIEllipse, c.accepted ? Doubles{2, 1.5, c.first, c.second, c.third} : Doubles());
  }
}

TEST(IVemROIPara, GenArcTakesPositiveRadiiAndNoNegativeSweep) {
  const ThreeNumbersCase kCases[] = {
      {"Plain", 5, 30, 60, true},
      {"StartNegative", 5, -30, 60, true},
      {"StartBeyondATurn", 5, 725, 60, true},
      {"StartNotANumber", 5, kNaN, 60, true},
      {"StartInfinite", 5, kInfinity, 60, true},
      {"SweepZero", 5, 30, 0, true},
      {"SweepNegativeZero", 5, 30, -0.0, true},
      {"SweepBeyondATurn", 5, 30, 1000, true},
      {"Tiny", 1e-300, 30, 60, true},
      {"RadiusZero", 0, 30, 60, false},
      {"RadiusNegative", -5, 30, 60, false},
      {"RadiusNotANumber", kNaN, 30, 60, false},
      {"SweepNegative", 5, 30, -1e-300, false},
      {"SweepNotANumber", 5, 30, kNaN, false},
  };
  for (const ThreeNumbersCase& c : kCases) {
    VemPoint center(1, 2.5);
    ExpectGenerated(
        c.name, [&](IVemROIPara& p) { p.GenArc(center, c.first, c.second, c.third); }, VemROIArc,
        c.accepted ? Doubles{2.5, 1, c.first, c.second, c.third} : Doubles());
  }
}

TEST(IVemROIPara, GenPolygonFromArraysTakesThreeOrMoreOfEqualLength) {
  const struct {
    const char* name;
    std::vector<VemVar> rows, cols;
    Doubles params;
  } kCases[] = {
      {"Three", {1.0, 2.0, 3.0}, {4.0, 5.0, 6.0}, {1, 4, 2, 5, 3, 6}},
      {"Four", {1.0, 2.0, 3.0, 4.0}, {5.0, 6.0, 7.0, 8.0}, {1, 5, 2, 6, 3, 7, 4, 8}},
      {"KindsMixed", {1, 2.5, 3L}, {4.5f, -5, 6.25}, {1, 4.5, 2.5, -5, 3, 6.25}},
      {"IntegersRoundToDouble",
       {9007199254740993L, 0, 0},
       {0, -9007199254740993L, 0},
       {9007199254740992.0, 0, 0, -9007199254740992.0, 0, 0}},
      {"NotANumber", {kNaN, 0.0, 0.0}, {0.0, kInfinity, 0.0}, {kNaN, 0, 0, kInfinity, 0, 0}},
      {"AllTheSame", {1.0, 1.0, 1.0}, {1.0, 1.0, 1.0}, {1, 1, 1, 1, 1, 1}},
      {"Two", {1.0, 2.0}, {4.0, 5.0}, {}},
      {"One", {1.0}, {4.0}, {}},
      {"Empty", {}, {}, {}},
      {"ThreeRowsFourColumns", {1.0, 2.0, 3.0}, {4.0, 5.0, 6.0, 7.0}, {}},
      {"FourRowsThreeColumns", {1.0, 2.0, 3.0, 4.0}, {5.0, 6.0, 7.0}, {}},
      {"ThreeRowsTwoColumns", {1.0, 2.0, 3.0}, {4.0, 5.0}, {}},
      {"NoRows", {}, {4.0, 5.0, 6.0}, {}},
      {"NoColumns", {1.0, 2.0, 3.0}, {}, {}},
  };
  for (const auto& c : kCases) {
    VemVarArray rows = Array(c.rows);
    VemVarArray cols = Array(c.cols);
    ExpectGenerated(
        c.name, [&](IVemROIPara& p) { p.GenPolygon(rows, cols); }, VemROIPolygon, c.params);
    EXPECT_TRUE(Equal(rows, Array(c.rows))) << c.name;
    EXPECT_TRUE(Equal(cols, Array(c.cols))) << c.name;
  }
}

// The old contents go before the lengths are looked at.
TEST(IVemROIPara, GenPolygonFromOwnArraysFindsThemEmpty) {
  IVemROIPara para;
  para.Rows = DoubleArray({1, 2, 3});
  para.FirstColumns = DoubleArray({4, 5, 6});
  para.GenPolygon(para.Rows, para.FirstColumns);
  EXPECT_EQ(para.Type, VemROINone);
  EXPECT_EQ(para.Params.Length(), 0);
}

// The two generators from points replace the numbers and nothing else; the type only when there are
// three points or more.
void ExpectThinGenerator(void (IVemROIPara::*generate)(VemPointArray&), VemROIType made) {
  const struct {
    const char* name;
    std::vector<VemPoint> points;
    Doubles params;
  } kCases[] = {
      {"None", {}, {}},
      {"One", {{1, 2}}, {}},
      {"Two", {{1, 2}, {3, 4}}, {}},
      {"Three", {{1, 2}, {3, 4}, {5, 6}}, {2, 1, 4, 3, 6, 5}},
      {"Four", {{1, 2}, {3, 4}, {5, 6}, {7, 8}}, {2, 1, 4, 3, 6, 5, 8, 7}},
      {"Unrounded", {{16777217, 0.1}, {-1.5, 4}, {5, 6}}, {0.1, 16777217, 4, -1.5, 6, 5}},
      {"NotANumber", {{kNaN, 2}, {3, kInfinity}, {5, 6}}, {2, kNaN, kInfinity, 3, 6, 5}},
  };
  for (const auto& c : kCases) {
    for (VemROIType old : kAllTypes) {
      SCOPED_TRACE(std::string(c.name) + " over type " + std::to_string(old));
      IVemROIPara para;
      MakeMask(para);
      para.Type = old;
      VemPointArray points = Points(c.points);
      (para.*generate)(points);
      EXPECT_EQ(para.Type, c.params.empty() ? old : made);
      EXPECT_TRUE(Equal(para.Params, DoubleArray(c.params)));
      ExpectMaskRuns(para);
      EXPECT_EQ(para.Width, 640);
      EXPECT_EQ(para.Height, 480);
    }
  }
}

TEST(IVemROIPara, GenPolygonFromPointsTouchesNumbersAndTypeAlone) {
  ExpectThinGenerator(&IVemROIPara::GenPolygon, VemROIPolygon);
}

TEST(IVemROIPara, GenIrregularTouchesNumbersAndTypeAlone) {
  ExpectThinGenerator(&IVemROIPara::GenIrregular, VemROIIrregular);
}

TEST(IVemROIPara, TooFewPointsLeaveACircleWithoutNumbers) {
  IVemROIPara para;
  VemPoint center(1, 2);
  para.GenCircle(center, 3);
  VemPointArray points = Points({{1, 2}, {3, 4}});
  para.GenPolygon(points);
  EXPECT_EQ(para.Type, VemROICircle);
  EXPECT_EQ(para.Params.Length(), 0);
  double radius = -1;
  EXPECT_FALSE(para.GetCircle(&center, &radius));
  EXPECT_EQ(center.x, 1);
  EXPECT_EQ(center.y, 2);
  EXPECT_EQ(radius, -1);
}

// --- Readers ----------------------------------------------------------------------------------

// What a reader delivered: its result, and its outputs in the order of its arguments, a point as x,
// y. Outputs start as -1, -2, ...
struct Read {
  bool result;
  Doubles outputs;
};

Read ReadTwoPoints(const IVemROIPara& para, bool (IVemROIPara::*get)(VemPoint*, VemPoint*) const) {
  VemPoint p1(-1, -2);
  VemPoint p2(-3, -4);
  const bool result = (para.*get)(&p1, &p2);
  return {result, {p1.x, p1.y, p2.x, p2.y}};
}

Read ReadFour(const IVemROIPara& para,
              bool (IVemROIPara::*get)(VemPoint*, double*, double*, double*) const) {
  VemPoint center(-1, -2);
  double a = -3;
  double b = -4;
  double c = -5;
  const bool result = (para.*get)(&center, &a, &b, &c);
  return {result, {center.x, center.y, a, b, c}};
}

Read ReadPointList(const IVemROIPara& para, bool (IVemROIPara::*get)(VemPointArray*) const) {
  VemPointArray points = Points({{-1, -2}});
  const bool result = (para.*get)(&points);
  Doubles outputs;
  for (int i = 0; i < points.Length(); ++i) {
    outputs.push_back(points[i].x);
    outputs.push_back(points[i].y);
  }
  return {result, outputs};
}

Read ReadPoint(const IVemROIPara& para) {
  VemPoint point(-1, -2);
  const bool result = para.GetPoint(&point);
  return {result, {point.x, point.y}};
}

Read ReadRect1(const IVemROIPara& para) { return ReadTwoPoints(para, &IVemROIPara::GetRect1); }
Read ReadLine(const IVemROIPara& para) { return ReadTwoPoints(para, &IVemROIPara::GetLine); }
Read ReadRect2(const IVemROIPara& para) { return ReadFour(para, &IVemROIPara::GetRect2); }
Read ReadEllipse(const IVemROIPara& para) { return ReadFour(para, &IVemROIPara::GetEllipse); }
Read ReadArc(const IVemROIPara& para) { return ReadFour(para, &IVemROIPara::GetArc); }

Read ReadCircle(const IVemROIPara& para) {
  VemPoint center(-1, -2);
  double radius = -3;
  const bool result = para.GetCircle(&center, &radius);
  return {result, {center.x, center.y, radius}};
}

Read ReadTorus(const IVemROIPara& para) {
  VemPoint center(-1, -2);
  double inner = -3;
  double outer = -4;
  double start = -5;
  double sweep = -6;
  const bool result = para.GetTorus(&center, &inner, &outer, &start, &sweep);
  return {result, {center.x, center.y, inner, outer, start, sweep}};
}

// Rows, then columns; every element must be a double.
Read ReadPolygonArrays(const IVemROIPara& para) {
  VemVarArray rows = DoubleArray({-1});
  VemVarArray cols = DoubleArray({-2});
  const bool result = para.GetPolygon(&rows, &cols);
  Doubles outputs;
  for (const VemVarArray& array : {rows, cols}) {
    for (int i = 0; i < array.Length(); ++i) {
      EXPECT_EQ(array[i].ValType(), VemVarDouble);
      outputs.push_back(array[i].D());
    }
  }
  return {result, outputs};
}

Read ReadPolygonPoints(const IVemROIPara& para) {
  return ReadPointList(para, &IVemROIPara::GetPolygon);
}

Read ReadIrregular(const IVemROIPara& para) {
  return ReadPointList(para, &IVemROIPara::GetIrregular);
}

struct Reader {
  const char* name;
  VemROIType type;
  Read (*read)(const IVemROIPara& para);
  Doubles untouched;
};

const Reader kReaders[] = {
    {"GetPoint", VemROIPoint, ReadPoint, {-1, -2}},
    {"GetRect1", VemROIRect1, ReadRect1, {-1, -2, -3, -4}},
    {"GetCircle", VemROICircle, ReadCircle, {-1, -2, -3}},
    {"GetTorus", VemROITorus, ReadTorus, {-1, -2, -3, -4, -5, -6}},
    {"GetRect2", VemROIRect2, ReadRect2, {-1, -2, -3, -4, -5}},
    {"GetLine", VemROILine, ReadLine, {-1, -2, -3, -4}},
    {"GetEllipse", VemROIEllipse, ReadEllipse, {-1, -2, -3, -4, -5}},
    {"GetArc", VemROIArc, ReadArc, {-1, -2, -3, -4, -5}},
    {"GetPolygonArrays", VemROIPolygon, ReadPolygonArrays, {-1, -2}},
    {"GetPolygonPoints", VemROIPolygon, ReadPolygonPoints, {-1, -2}},
    {"GetIrregular", VemROIIrregular, ReadIrregular, {-1, -2}},
};

TEST(IVemROIPara, ReadersTakeTheirOwnTypeAlone) {
  for (const Reader& reader : kReaders) {
    for (VemROIType type : kAllTypes) {
      SCOPED_TRACE(std::string(reader.name) + " of type " + std::to_string(type));
      IVemROIPara para;
      MakeShape(para, type, {1, 2, 3, 4, 5, 6});  // Passes the test of every reader.
      const Read read = reader.read(para);
      EXPECT_EQ(read.result, type == reader.type);
      EXPECT_EQ(read.outputs == reader.untouched, type != reader.type);
    }
  }
}

TEST(IVemROIPara, ReadersRefuseShapesWithoutNumbers) {
  for (const Reader& reader : kReaders) {
    SCOPED_TRACE(reader.name);
    IVemROIPara para;
    para.Type = reader.type;
    const Read read = reader.read(para);
    if (reader.type == VemROIPoint) {
      EXPECT_TRUE(read.result);  // GetPoint alone does not ask; what it reads has no meaning.
    } else {
      EXPECT_FALSE(read.result);
      EXPECT_EQ(read.outputs, reader.untouched);
    }
  }
}

struct ReadCase {
  const char* name;
  Doubles params;
  bool result;
  Doubles outputs;
};

void ExpectReads(const char* readerName, const std::vector<ReadCase>& cases) {
  for (const Reader& reader : kReaders) {
    if (std::strcmp(reader.name, readerName) != 0) continue;
    for (const ReadCase& c : cases) {
      SCOPED_TRACE(std::string(readerName) + ": " + c.name);
      IVemROIPara para;
      MakeShape(para, reader.type, c.params);
      const Read read = reader.read(para);
      EXPECT_EQ(read.result, c.result);
      EXPECT_TRUE(Equal(DoubleArray(read.outputs), DoubleArray(c.outputs)));
      EXPECT_TRUE(Equal(para.Params, DoubleArray(c.params)));
    }
    return;
  }
  ADD_FAILURE() << "no reader " << readerName;
}

// 0.1 rounded to float and widened again.
const double kTenthAsFloat = 0.100000001490116119384765625;

TEST(IVemROIPara, GetPointReadsXThenYRoundedToFloat) {
  ExpectReads("GetPoint", {
                              {"Plain", {1, 2}, true, {1, 2}},
                              {"Rounded", {16777217, 0.1}, true, {16777216, kTenthAsFloat}},
                              {"NotANumber", {kNaN, kInfinity}, true, {kNaN, kInfinity}},
                          });
}

TEST(IVemROIPara, GetRect1NeedsCornersInOrderAfterRounding) {
  ExpectReads(
      "GetRect1",
      {
          {"InOrder", {2, 1, 5, 3}, true, {1, 2, 3, 5}},
          {"Rounded", {0.1, 0, 16777217, 16777219}, true, {0, kTenthAsFloat, 16777220, 16777216}},
          {"XSwapped", {2, 3, 5, 1}, false, {3, 2, 1, 5}},
          {"YSwapped", {5, 1, 2, 3}, false, {1, 5, 3, 2}},
          {"SameX", {2, 1, 5, 1}, false, {1, 2, 1, 5}},
          {"SameY", {2, 1, 2, 3}, false, {1, 2, 3, 2}},
          {"SameXOnceRounded", {2, 16777216, 5, 16777217}, false, {16777216, 2, 16777216, 5}},
          {"NotANumber", {2, kNaN, 5, 3}, false, {kNaN, 2, 3, 5}},
      });
}

TEST(IVemROIPara, GetLineNeedsPointsThatDifferAfterRounding) {
  ExpectReads(
      "GetLine",
      {
          {"BothDiffer", {2, 1, 5, 3}, true, {1, 2, 3, 5}},
          {"Backward", {5, 3, 2, 1}, true, {3, 5, 1, 2}},
          {"OnlyX", {2, 1, 2, 3}, true, {1, 2, 3, 2}},
          {"OnlyY", {2, 1, 5, 1}, true, {1, 2, 1, 5}},
          {"NotANumber", {2, kNaN, 2, kNaN}, true, {kNaN, 2, kNaN, 2}},
          {"Equal", {2, 1, 2, 1}, false, {1, 2, 1, 2}},
          {"EqualOnceRounded", {2, 16777216, 2, 16777217}, false, {16777216, 2, 16777216, 2}},
      });
}

TEST(IVemROIPara, GetCircleNeedsAPositiveRadius) {
  ExpectReads("GetCircle", {
                               {"Plain", {2, 1, 3}, true, {1, 2, 3}},
                               {"CenterAloneRounded",
                                {0.1, 16777217, 16777217.5},
                                true,
                                {16777216, kTenthAsFloat, 16777217.5}},
                               {"TooSmallForFloat", {2, 1, 1e-300}, true, {1, 2, 1e-300}},
                               {"Zero", {2, 1, 0}, false, {1, 2, 0}},
                               {"Negative", {2, 1, -3}, false, {1, 2, -3}},
                               {"NotANumber", {2, 1, kNaN}, false, {1, 2, kNaN}},
                           });
}

TEST(IVemROIPara, GetTorusNeedsAPositiveSweep) {
  ExpectReads("GetTorus",
              {
                  {"Plain", {2, 1, 3, 5, 30, 60}, true, {1, 2, 3, 5, 30, 60}},
                  {"CenterAloneRounded",
                   {0.1, 16777217, 0.1, 0.7, 0.3, 1e-300},
                   true,
                   {16777216, kTenthAsFloat, 0.1, 0.7, 0.3, 1e-300}},
                  {"SameRadiusInFloatOnly",
                   {2, 1, 16777216, 16777217, 30, 60},
                   true,
                   {1, 2, 16777216, 16777217, 30, 60}},
                  {"SweepZero", {2, 1, 3, 5, 30, 0}, false, {1, 2, 3, 5, 30, 0}},
                  {"SweepNegative", {2, 1, 3, 5, 30, -1}, false, {1, 2, 3, 5, 30, -1}},
                  {"SweepNaN", {2, 1, 3, 5, 30, kNaN}, false, {1, 2, 3, 5, 30, kNaN}},
                  {"StartNaN", {2, 1, 3, 5, kNaN, 60}, true, {1, 2, 3, 5, kNaN, 60}},
                  {"EqualRadii", {2, 1, 5, 5, 30, 60}, false, {1, 2, 5, 5, 30, 60}},
                  {"Swapped", {2, 1, 5, 3, 30, 60}, false, {1, 2, 5, 3, 30, 60}},
                  {"InnerZero", {2, 1, 0, 5, 30, 60}, false, {1, 2, 0, 5, 30, 60}},
                  {"InnerBelowZero", {2, 1, -1, 5, 30, 60}, false, {1, 2, -1, 5, 30, 60}},
                  {"InnerNaN", {2, 1, kNaN, 5, 30, 60}, false, {1, 2, kNaN, 5, 30, 60}},
                  {"OuterNaN", {2, 1, 3, kNaN, 30, 60}, false, {1, 2, 3, kNaN, 30, 60}},
              });
}

const std::vector<ReadCase> kSizesReadCases = {
    {"Plain", {2, 1, 5, 3, 30}, true, {1, 2, 5, 3, 30}},
    {"CenterAloneRounded",
     {0.1, 16777217, 0.1, 16777217, 0.3},
     true,
     {16777216, kTenthAsFloat, 0.1, 16777217, 0.3}},
    {"TooSmallForFloat", {2, 1, 1e-300, 1e-300, 30}, true, {1, 2, 1e-300, 1e-300, 30}},
    {"AngleNegative", {2, 1, 5, 3, -400}, true, {1, 2, 5, 3, -400}},
    {"AngleNotANumber", {2, 1, 5, 3, kNaN}, true, {1, 2, 5, 3, kNaN}},
    {"FirstZero", {2, 1, 0, 3, 30}, false, {1, 2, 0, 3, 30}},
    {"SecondZero", {2, 1, 5, 0, 30}, false, {1, 2, 5, 0, 30}},
    {"FirstNegative", {2, 1, -5, 3, 30}, false, {1, 2, -5, 3, 30}},
    {"SecondNegative", {2, 1, 5, -3, 30}, false, {1, 2, 5, -3, 30}},
    {"FirstNotANumber", {2, 1, kNaN, 3, 30}, false, {1, 2, kNaN, 3, 30}},
    {"SecondNotANumber", {2, 1, 5, kNaN, 30}, false, {1, 2, 5, kNaN, 30}},
};

TEST(IVemROIPara, GetRect2NeedsPositiveLengths) { ExpectReads("GetRect2", kSizesReadCases); }

TEST(IVemROIPara, GetEllipseNeedsPositiveRadii) { ExpectReads("GetEllipse", kSizesReadCases); }

TEST(IVemROIPara, GetArcNeedsAPositiveSweep) {
  ExpectReads("GetArc", {
                            {"Plain", {2, 1, 5, 30, 60}, true, {1, 2, 5, 30, 60}},
                            {"CenterAloneRounded",
                             {0.1, 16777217, 0.1, 0.3, 1e-300},
                             true,
                             {16777216, kTenthAsFloat, 0.1, 0.3, 1e-300}},
                            {"StartNegative", {2, 1, 5, -30, 60}, true, {1, 2, 5, -30, 60}},
                            {"StartZero", {2, 1, 5, 0, 60}, true, {1, 2, 5, 0, 60}},
                            {"SweepZero", {2, 1, 5, 30, 0}, false, {1, 2, 5, 30, 0}},
                            {"SweepNegative", {2, 1, 5, 30, -60}, false, {1, 2, 5, 30, -60}},
                            {"SweepNotANumber", {2, 1, 5, 30, kNaN}, false, {1, 2, 5, 30, kNaN}},
                            {"RadiusZero", {2, 1, 0, 30, 60}, false, {1, 2, 0, 30, 60}},
                            {"RadiusNegative", {2, 1, -5, 30, 60}, false, {1, 2, -5, 30, 60}},
                            {"RadiusNotANumber", {2, 1, kNaN, 30, 60}, false, {1, 2, kNaN, 30, 60}},
                        });
}

TEST(IVemROIPara, GetPolygonIntoArraysDoesNotRound) {
  ExpectReads(
      "GetPolygonArrays",
      {
          {"Three", {1, 4, 2, 5, 3, 6}, true, {1, 2, 3, 4, 5, 6}},
          {"Unrounded", {0.1, 16777217, 2, 5, kNaN, -6.3}, true, {0.1, 2, kNaN, 16777217, 5, -6.3}},
          {"Four", {1, 5, 2, 6, 3, 7, 4, 8}, true, {1, 2, 3, 4, 5, 6, 7, 8}},
          {"Two", {1, 4, 2, 5}, false, {1, 2, 4, 5}},
          {"One", {1, 4}, false, {1, 4}},
      });
}

TEST(IVemROIPara, GetPolygonIntoArraysMakesDoublesOfIntegers) {
  IVemROIPara para;
  para.Type = VemROIPolygon;
  para.Params = Array({1, 4, 2L, 5, 3, 16777217});
  VemVarArray rows;
  VemVarArray cols;
  EXPECT_TRUE(para.GetPolygon(&rows, &cols));
  EXPECT_TRUE(Equal(rows, DoubleArray({1, 2, 3})));
  EXPECT_TRUE(Equal(cols, DoubleArray({4, 5, 16777217})));
}

const std::vector<ReadCase> kPointListReadCases = {
    {"Three", {2, 1, 4, 3, 6, 5}, true, {1, 2, 3, 4, 5, 6}},
    {"Four", {2, 1, 4, 3, 6, 5, 8, 7}, true, {1, 2, 3, 4, 5, 6, 7, 8}},
    {"Rounded",
     {0.1, 16777217, 4, -1.5, kNaN, 5},
     true,
     {16777216, kTenthAsFloat, -1.5, 4, 5, kNaN}},
    {"Two", {2, 1, 4, 3}, false, {1, 2, 3, 4}},
    {"One", {2, 1}, false, {1, 2}},
};

TEST(IVemROIPara, GetPolygonIntoPointsRounds) {
  ExpectReads("GetPolygonPoints", kPointListReadCases);
}

TEST(IVemROIPara, GetIrregularRounds) { ExpectReads("GetIrregular", kPointListReadCases); }

TEST(IVemROIPara, SweepOfZeroIsGeneratedButNotReadAsValid) {
  IVemROIPara torus;
  VemPoint center(1, 2);
  torus.GenTorus(center, 3, 5, 30, 0);
  EXPECT_EQ(torus.Type, VemROITorus);
  Read read = ReadTorus(torus);
  EXPECT_FALSE(read.result);
  EXPECT_EQ(read.outputs, Doubles({1, 2, 3, 5, 30, 0}));

  IVemROIPara arc;
  arc.GenArc(center, 5, 30, 0);
  EXPECT_EQ(arc.Type, VemROIArc);
  read = ReadArc(arc);
  EXPECT_FALSE(read.result);
  EXPECT_EQ(read.outputs, Doubles({1, 2, 5, 30, 0}));
}

TEST(IVemROIPara, TypeReadersTellTheType) {
  for (VemROIType type : kAllTypes) {
    SCOPED_TRACE(type);
    IVemROIPara para;
    para.Type = type;
    const IVemROIPara& constPara = para;
    EXPECT_EQ(constPara.ROIType(), type);
    EXPECT_EQ(constPara.IsRect1(), type == VemROIRect1);
    EXPECT_EQ(constPara.IsMask(), type == VemROIMask);
  }
}

// --- Construction, copies, Reset --------------------------------------------------------------

TEST(IVemROIPara, StartsWithoutShape) {
  const IVemROIPara para;
  EXPECT_EQ(para.Type, VemROINone);
  EXPECT_EQ(para.Params.Length(), 0);
  ExpectNoRuns(para);
  EXPECT_FALSE(para.IsRect1());
  EXPECT_FALSE(para.IsMask());
}

// Memory for one object, filled with a pattern. What a constructor leaves alone is told by the
// bytes.
class PatternedMemory {
 public:
  PatternedMemory() { std::memset(bytes_, 0x5a, sizeof(bytes_)); }

  void* Place() { return bytes_; }
  int IntAt(std::size_t offset) const {
    int value;
    std::memcpy(&value, bytes_ + offset, sizeof(value));
    return value;
  }

 private:
  alignas(IVemROIPara) unsigned char bytes_[sizeof(IVemROIPara)];
};

TEST(IVemROIPara, ConstructorLeavesWidthAndHeightAlone) {
  PatternedMemory memory;
  auto* para = new (memory.Place()) IVemROIPara();
  EXPECT_EQ(memory.IntAt(offsetof(IVemROIPara, Width)), 0x5a5a5a5a);
  EXPECT_EQ(memory.IntAt(offsetof(IVemROIPara, Height)), 0x5a5a5a5a);
  EXPECT_EQ(memory.IntAt(offsetof(IVemROIPara, Type)), 3);
  para->~IVemROIPara();
}

TEST(IVemROIPara, CopyConstructorLeavesWidthAndHeightAlone) {
  IVemROIPara source;
  MakeMask(source);
  PatternedMemory memory;
  auto* copy = new (memory.Place()) IVemROIPara(source);
  EXPECT_EQ(memory.IntAt(offsetof(IVemROIPara, Width)), 0x5a5a5a5a);
  EXPECT_EQ(memory.IntAt(offsetof(IVemROIPara, Height)), 0x5a5a5a5a);
  EXPECT_EQ(copy->Type, VemROIMask);
  EXPECT_TRUE(Equal(copy->Params, DoubleArray({77})));
  ExpectMaskRuns(*copy);
  copy->~IVemROIPara();
}

TEST(IVemROIPara, DestructorZeroesWidthAndHeight) {
  PatternedMemory memory;
  auto* para = new (memory.Place()) IVemROIPara();
  MakeMask(*para);
  para->~IVemROIPara();
  EXPECT_EQ(memory.IntAt(offsetof(IVemROIPara, Width)), 0);
  EXPECT_EQ(memory.IntAt(offsetof(IVemROIPara, Height)), 0);
}

TEST(IVemROIPara, CopiesShareNothing) {
  IVemROIPara source;
  MakeMask(source);
  IVemROIPara copy(source);
  IVemROIPara assigned;
  assigned = source;
  source.Params.Append(VemVar(1));
  source.Rows[0] = VemVar(99);
  source.FirstColumns.Clear();
  source.LastColumns.Clear();
  source.Type = VemROINone;
  for (const IVemROIPara* para : {&copy, &assigned}) {
    EXPECT_EQ(para->Type, VemROIMask);
    EXPECT_TRUE(Equal(para->Params, DoubleArray({77})));
    ExpectMaskRuns(*para);
  }
}

TEST(IVemROIPara, AssignmentReplacesEveryField) {
  IVemROIPara source;
  MakeMask(source);
  IVemROIPara target;
  VemPoint center(1, 2);
  target.GenCircle(center, 3);
  target.Rows = Array({8, 8, 8});
  EXPECT_EQ(&(target = source), &target);
  EXPECT_EQ(target.Type, VemROIMask);
  EXPECT_EQ(target.Width, 640);
  EXPECT_EQ(target.Height, 480);
  EXPECT_TRUE(Equal(target.Params, DoubleArray({77})));
  ExpectMaskRuns(target);

  IVemROIPara circle;
  circle.GenCircle(center, 3);
  target = circle;
  EXPECT_EQ(target.Type, VemROICircle);
  EXPECT_EQ(target.Width, 0);
  EXPECT_EQ(target.Height, 0);
  EXPECT_TRUE(Equal(target.Params, DoubleArray({2, 1, 3})));
  ExpectNoRuns(target);
}

TEST(IVemROIPara, AssignmentToItselfChangesNothing) {
  IVemROIPara para;
  MakeMask(para);
  const IVemROIPara& same = para;
  para = same;
  EXPECT_EQ(para.Type, VemROIMask);
  EXPECT_EQ(para.Width, 640);
  EXPECT_EQ(para.Height, 480);
  EXPECT_TRUE(Equal(para.Params, DoubleArray({77})));
  ExpectMaskRuns(para);
}

TEST(IVemROIPara, ResetKeepsWidthAndHeight) {
  for (VemROIType type : kAllTypes) {
    SCOPED_TRACE(type);
    IVemROIPara para;
    MakeMask(para);
    para.Type = type;
    para.Reset();
    EXPECT_EQ(para.Type, VemROINone);
    EXPECT_EQ(para.Params.Length(), 0);
    ExpectNoRuns(para);
    EXPECT_EQ(para.Width, 640);
    EXPECT_EQ(para.Height, 480);
  }
}

}  // namespace
