#include "IVemROIPara.h"

#include <cstddef>
#include <cstring>
#include <functional>
#include <initializer_list>
#include <new>
#include <string>
#include <type_traits>
#include <vector>

#include "support/RoiShapes.h"

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
