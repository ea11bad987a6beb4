#ifndef MASKS_ELLIPSE_SAMPLES_H_
#define MASKS_ELLIPSE_SAMPLES_H_

#include <vector>

#include <opencv2/core.hpp>

// Points of ellipses at whole degrees, from a sine of seven decimals: one table for every machine,
// where a mathematics library may differ in the last digit.

/// Part of an ellipse in whole degrees. Angles grow clockwise as the image is seen.
struct EllipseArc {
  int rotation;  ///< Of the first axis against the columns.
  int from;
  int to;
};

/// Samples an ellipse about a centre every `step` degrees, from the smaller to the larger angle,
/// which is sampled too; more than a turn counts as one. A single sample becomes the centre, twice.
/// Angles so far out that a turn back leaves them in the wrong order give no point.
std::vector<cv::Point2d> SampleEllipse(const cv::Point2d& center, const cv::Size2d& axes,
                                       const EllipseArc& arc, int step);

/// As above for a circle, every degree, rounded to pixels, halves to the even one; a pixel is not
/// repeated right behind itself. A whole turn begins at the topmost one, wherever it was to begin.
/// The centre lies in column and row `center`.
std::vector<cv::Point> SampleCircle(int center, int radius, int from, int to);

#endif  // MASKS_ELLIPSE_SAMPLES_H_
