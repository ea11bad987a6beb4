#include "IVemROIPara.h"

#include <cstring>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/RoiShapes.h"

namespace {

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

TEST(IVemROIParaReaders, ReadersTakeTheirOwnTypeAlone) {
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

TEST(IVemROIParaReaders, ReadersRefuseShapesWithoutNumbers) {
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

TEST(IVemROIParaReaders, GetPointReadsXThenYRoundedToFloat) {
  ExpectReads("GetPoint", {
                              {"Plain", {1, 2}, true, {1, 2}},
                              {"Rounded", {16777217, 0.1}, true, {16777216, kTenthAsFloat}},
                              {"NotANumber", {kNaN, kInfinity}, true, {kNaN, kInfinity}},
                          });
}

TEST(IVemROIParaReaders, GetRect1NeedsCornersInOrderAfterRounding) {
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

TEST(IVemROIParaReaders, GetLineNeedsPointsThatDifferAfterRounding) {
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

TEST(IVemROIParaReaders, GetCircleNeedsAPositiveRadius) {
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

TEST(IVemROIParaReaders, GetTorusNeedsAPositiveSweep) {
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

TEST(IVemROIParaReaders, GetRect2NeedsPositiveLengths) { ExpectReads("GetRect2", kSizesReadCases); }

TEST(IVemROIParaReaders, GetEllipseNeedsPositiveRadii) {
  ExpectReads("GetEllipse", kSizesReadCases);
}

TEST(IVemROIParaReaders, GetArcNeedsAPositiveSweep) {
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

TEST(IVemROIParaReaders, GetPolygonIntoArraysDoesNotRound) {
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

TEST(IVemROIParaReaders, GetPolygonIntoArraysMakesDoublesOfIntegers) {
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

TEST(IVemROIParaReaders, GetPolygonIntoPointsRounds) {
  ExpectReads("GetPolygonPoints", kPointListReadCases);
}

TEST(IVemROIParaReaders, GetIrregularRounds) { ExpectReads("GetIrregular", kPointListReadCases); }

TEST(IVemROIParaReaders, SweepOfZeroIsGeneratedButNotReadAsValid) {
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

TEST(IVemROIParaReaders, TypeReadersTellTheType) {
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

}  // namespace
