#ifndef TESTS_SUPPORT_ROI_SHAPES_H_
#define TESTS_SUPPORT_ROI_SHAPES_H_

#include <cmath>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "IVemROIPara.h"
#include "VemPointArray.h"
#include "VemROI.h"
#include "support/OutlineReference.h"
#include "support/RunMaskReference.h"
#include "support/Support.h"

using Doubles = std::vector<double>;
using Runs = std::vector<Run>;

/// What the canvas holds before a call.
constexpr int kWidthBefore = -7;
constexpr int kHeightBefore = -9;

constexpr int kSmallest = -2147483647 - 1;

/// Lists as the library takes them.
VemVarArray Array(const std::vector<VemVar>& values);
VemVarArray DoubleArray(const Doubles& values);
VemPointArray Points(const std::vector<VemPoint>& values);

/// Tells elements of different kinds or bits apart, unlike VemVarArray's own comparison.
::testing::AssertionResult Equal(const VemVarArray& actual, const VemVarArray& expected);

const VemROIType kAllTypes[] = {VemROIRect1,   VemROICircle,    VemROITorus, VemROINone,
                                VemROIPolygon, VemROIIrregular, VemROIRect2, VemROILine,
                                VemROIEllipse, VemROIArc,       VemROIPoint, VemROIMask};

/// Gives a shape its type and its numbers, and changes nothing else.
void MakeShape(IVemROIPara& para, VemROIType type, const Doubles& params);

/// A shape over its stored numbers, y before x, that holds a run on a canvas of 12 by 34 besides.
IVemROIPara Shape(VemROIType type, const Doubles& params);
/// A mask, whatever its runs.
IVemROIPara Mask(const Runs& runs, int width, int height);

/// The run mask of a shape, taken into arrays that hold something already.
RunMask MaskOf(const IVemROIPara& para);
RunMask MaskOf(VemROIType type, const Doubles& params);

/// The outlines of a shape, taken into an array that holds contours already.
OutlineMask OutlinesOf(IVemROIPara& para);
OutlineMask OutlinesOf(const VemROI& roi);
OutlineMask OutlinesOf(VemROIType type, const Doubles& params);

/// A mask that was made, with its runs.
RunMask Made(const Runs& runs, int width, int height);
const RunMask kNoRunMask{false, {}, 0, 0};

/// The drawing on the canvas that comes with the runs.
std::string PictureOf(const RunMask& mask);

/// The run (first, last) in each row from `firstRow` to `lastRow`.
Runs EqualRows(int firstRow, int lastRow, int first, int last);

struct MaskCase {
  const char* name;
  Doubles params;  // In stored order: y before x.
  RunMask expected;
};

void ExpectMasks(VemROIType type, const std::vector<MaskCase>& cases);

/// Numbers of shapes at random.
class Dice {
 public:
  explicit Dice(unsigned seed) : engine_(seed) {}

  int Int(int low, int high) { return std::uniform_int_distribution<int>(low, high)(engine_); }
  double Real(double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(engine_);
  }
  bool OneIn(int n) { return Int(1, n) == 1; }
  // A whole number as often as one with a fraction.
  double Number(double low, double high) { return WholeOrNot(Real(low, high)); }
  double WholeOrNot(double value) { return OneIn(2) ? std::trunc(value) : value; }
  double Pick(const Doubles& values) {
    return values[static_cast<std::size_t>(Int(0, static_cast<int>(values.size()) - 1))];
  }
  // About the origin, so that shapes lie partly or wholly outside, or further in.
  double Near() {
    const double limits[] = {-70, -3, 80};
    return OneIn(5) ? Real(-3, 3) : WholeOrNot(Real(limits[Int(0, 1)], limits[2]));
  }
  // For shapes that pass their vertices.
  double Anywhere() { return OneIn(12) ? Real(-1e9, 1e9) : Near(); }
  // Far left of or above the origin; with a size of as much, the shape still reaches in.
  double FarBack() { return -WholeOrNot(Real(0, 2e9)); }
  double Size() { return OneIn(3) ? Real(0.001, 3) : WholeOrNot(Real(1, 50)); }
  double Turn() {
    switch (Int(0, 5)) {
      case 0:
        return 90 * Int(-9, 9);
      case 1:
        return 90 * Int(-9, 9) + Pick({-1, -0.9, -0.1, -0.001, 0.001, 0.1, 0.9, 1});
      case 2:
        return 45 * Int(-9, 9);
      case 3:
        return Real(-1e5, 1e5);
      default:
        return WholeOrNot(Real(-400, 400));
    }
  }
  double Start() { return OneIn(4) ? Pick({-10.5, -0.5, 0, 0.5, 90, 359.5}) : Turn(); }
  double Sweep() {
    if (OneIn(4)) return WholeOrNot(Real(0, 400));
    return Pick({0, 0.5, 0.999, 1, 90, 358, 359, 359.5, 360, 360.5, 361, 719, 720, 720.5});
  }

 private:
  std::mt19937 engine_;
};

/// Compares `count` shapes, drawn by `draw`, with the reference. Some must fail, some have runs.
void ExpectReferenceAtRandom(VemROIType type, int count, const std::function<Doubles(Dice&)>& draw);

#endif  // TESTS_SUPPORT_ROI_SHAPES_H_
