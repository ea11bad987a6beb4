#ifndef EXAMPLES_DISPLAY_SHAPES_H_
#define EXAMPLES_DISPLAY_SHAPES_H_

#include <vector>

#include <opencv2/core.hpp>

// Shapes as chains of points, and how they are drawn. Angles are degrees, counter-clockwise as
// seen.

using Chain = std::vector<cv::Point2d>;

/// The point at a distance and an angle from a center.
cv::Point2d Polar(const cv::Point2d& center, double radius, double angle);

Chain ArcOf(const cv::Point2d& center, double radius, double start, double sweep);
Chain CircleOf(const cv::Point2d& center, double radius);
/// Of full lengths, the first along the direction `angle`.
Chain RectangleOf(const cv::Point2d& center, double length1, double length2, double angle);
/// Of semi-axes, the first along the direction `angle`.
Chain EllipseOf(const cv::Point2d& center, double radius1, double radius2, double angle);
/// Teeth around a circle.
Chain GearOf(const cv::Point2d& center, double inner, double outer, int teeth);
/// A round shape without a name.
Chain BlobOf(const cv::Point2d& center, double radius);

void Stroke(cv::Mat& canvas, const Chain& chain, bool closed, const cv::Scalar& color, int width);
/// Fills even-odd.
void Fill(cv::Mat& canvas, const std::vector<Chain>& outlines, const cv::Scalar& color);

#endif  // EXAMPLES_DISPLAY_SHAPES_H_
