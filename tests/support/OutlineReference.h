#ifndef TESTS_SUPPORT_OUTLINE_REFERENCE_H_
#define TESTS_SUPPORT_OUTLINE_REFERENCE_H_

#include <ostream>
#include <vector>

#include <opencv2/core.hpp>

#include "VemContour.h"
#include "VemContourArray.h"

using Chain = std::vector<cv::Point2d>;
using Chains = std::vector<Chain>;

/// A contour of the given points, and a list of such.
VemContour ContourOf(const Chain& points);
VemContourArray ContoursOf(const Chains& chains);

/// The points of a contour, read through a copy of it, and those of each contour in a list.
Chain PointsOf(const VemContour& contour);
Chains PointsOf(const VemContourArray& contours);

/// What GetMask gives in contour form.
struct OutlineMask {
  bool result = false;
  Chains contours;
  int width = 0;
  int height = 0;
};

bool operator==(const OutlineMask& a, const OutlineMask& b);
void PrintTo(const OutlineMask& mask, std::ostream* out);

/// The outlines of a raster, each closed by its first vertex. They stand in the order in which a
/// scan by rows meets them: an outer border at its first pixel, a hole's border at the pixel left
/// of the hole's first pixel.
Chains TracedContours(const cv::Mat& raster);

/// The outlines of a shape of the given type over its stored numbers, computed step by step. The
/// canvas is `width` by `height` where the shape leaves it alone. Not for masks.
OutlineMask ReferenceOutlines(int type, const std::vector<double>& params, int width, int height);

#endif  // TESTS_SUPPORT_OUTLINE_REFERENCE_H_
