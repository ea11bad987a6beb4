#ifndef TESTS_SUPPORT_RUN_MASK_REFERENCE_H_
#define TESTS_SUPPORT_RUN_MASK_REFERENCE_H_

#include <ostream>
#include <vector>

#include "VemRLC.h"

/// What GetMask gives in run form.
struct RunMask {
  bool result = false;
  std::vector<Run> runs;
  int width = 0;
  int height = 0;
};

bool operator==(const RunMask& a, const RunMask& b);
void PrintTo(const RunMask& mask, std::ostream* out);

/// The truncating conversion: what does not fit, or is no number, gives the smallest integer.
int Truncated(double value);

/// The run mask of a shape of the given type over its stored numbers. Rectangles by corners,
/// circles and lines are decided in whole numbers by what a pixel must fulfil, arcs in extended
/// precision, polygons and rings pixel by pixel; rotated rectangles and ellipses, whose roundings
/// are part of the shape, step by step. The canvas is `width` by `height` where the shape leaves it
/// alone. Not for masks, for circles of a radius of 2 to the power of 20 or more, or for lines of
/// which a float does not hold every whole number.
RunMask ReferenceRunMask(int type, const std::vector<double>& params, int width, int height);

#endif  // TESTS_SUPPORT_RUN_MASK_REFERENCE_H_
