#include "support/RoiShapes.h"

#include <gtest/gtest.h>

namespace {

template <typename Roi>
OutlineMask TakeOutlines(Roi& roi) {
  VemContourArray contours = ContoursOf({{{1, 2}, {3, 4}}, {}, {{5, 6}}});
  OutlineMask mask{false, {}, kWidthBefore, kHeightBefore};
  mask.result = roi.GetMask(&contours, &mask.width, &mask.height);
  mask.contours = PointsOf(contours);
  return mask;
}

}  // namespace

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

::testing::AssertionResult Equal(const VemVarArray& actual, const VemVarArray& expected) {
  if (Same(actual, expected)) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << ::testing::PrintToString(actual) << " instead of "
                                       << ::testing::PrintToString(expected);
}

void MakeShape(IVemROIPara& para, VemROIType type, const Doubles& params) {
  para.Type = type;
  para.Params = DoubleArray(params);
}

IVemROIPara Shape(VemROIType type, const Doubles& params) {
  IVemROIPara para;
  para.Type = type;
  para.Width = 12;
  para.Height = 34;
  para.Rows = VemVarArray(1);
  para.FirstColumns = VemVarArray(2);
  para.LastColumns = VemVarArray(3);
  for (double param : params) para.Params.Append(VemVar(param));
  return para;
}

IVemROIPara Mask(const Runs& runs, int width, int height) {
  IVemROIPara para;
  para.Type = VemROIMask;
  para.Width = width;
  para.Height = height;
  for (const Run& run : runs) {
    para.Rows.Append(VemVar(run.Row));
    para.FirstColumns.Append(VemVar(run.FirstColumn));
    para.LastColumns.Append(VemVar(run.LastColumn));
  }
  return para;
}

RunMask MaskOf(const IVemROIPara& para) {
  VemVarArray rows(70);
  VemVarArray firstColumns("old");
  VemVarArray lastColumns(7.5);
  RunMask mask{false, {}, kWidthBefore, kHeightBefore};
  mask.result = para.GetMask(&rows, &firstColumns, &lastColumns, &mask.width, &mask.height);
  mask.runs = RunsOf(rows, firstColumns, lastColumns);
  return mask;
}

RunMask MaskOf(VemROIType type, const Doubles& params) {
  const IVemROIPara para = Shape(type, params);
  const RunMask mask = MaskOf(para);
  EXPECT_EQ(para.Type, type);
  EXPECT_EQ(para.Params.Length(), static_cast<int>(params.size()));
  return mask;
}

OutlineMask OutlinesOf(IVemROIPara& para) { return TakeOutlines(para); }

OutlineMask OutlinesOf(const VemROI& roi) { return TakeOutlines(roi); }

OutlineMask OutlinesOf(VemROIType type, const Doubles& params) {
  IVemROIPara para = Shape(type, params);
  return OutlinesOf(para);
}

RunMask Made(const Runs& runs, int width, int height) { return {true, runs, width, height}; }

std::string PictureOf(const RunMask& mask) { return Picture(mask.runs, mask.width, mask.height); }

Runs EqualRows(int firstRow, int lastRow, int first, int last) {
  Runs runs;
  for (int row = firstRow; row <= lastRow; ++row) runs.push_back({row, first, last});
  return runs;
}

void ExpectMasks(VemROIType type, const std::vector<MaskCase>& cases) {
  for (const MaskCase& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(MaskOf(type, c.params), c.expected);
  }
}

void ExpectReferenceAtRandom(VemROIType type, int count,
                             const std::function<Doubles(Dice&)>& draw) {
  Dice dice(20240u + static_cast<unsigned>(type));
  int failed = 0;
  int filled = 0;
  for (int i = 0; i < count; ++i) {
    const Doubles params = draw(dice);
    const RunMask expected = ReferenceRunMask(type, params, kWidthBefore, kHeightBefore);
    ASSERT_EQ(MaskOf(type, params), expected) << ::testing::PrintToString(params);
    if (!expected.result) ++failed;
    if (!expected.runs.empty()) ++filled;
  }
  // Both the shapes that fail and those with runs are really among them.
  EXPECT_GT(failed, count / 50);
  EXPECT_GT(filled, count / 5);
}
