#ifndef VIEW_SHAPES_H_
#define VIEW_SHAPES_H_

#include <utility>
#include <vector>

#include <opencv2/core.hpp>

// Shapes as chains of points. All numbers must be finite; their size does not matter. Angles are
// degrees, counter-clockwise as seen.

using Chain = std::vector<cv::Point2d>;

/// The part of the plane that can be seen: a picture with a margin around it.
struct Frame {
  Frame(const cv::Size& picture, double margin)
      : left(-margin),
        top(-margin),
        right(picture.width + margin),
        bottom(picture.height + margin) {}

  /// Whether what lies no farther than `reach` from a point may be seen.
  bool Meets(const cv::Point2d& p, double reach) const {
    return p.x >= left - reach && p.x <= right + reach && p.y >= top - reach &&
           p.y <= bottom + reach;
  }

  /// The frame with x and y exchanged.
  Frame Transposed() const {
    Frame frame = *this;
    std::swap(frame.left, frame.top);
    std::swap(frame.right, frame.bottom);
    return frame;
  }

  double left;
  double top;
  double right;
  double bottom;
};

bool IsFinite(double value);
bool IsFinite(const cv::Point2d& p);
bool IsFinite(const Chain& chain);

/// The point at a distance and an angle from a center.
cv::Point2d Polar(const cv::Point2d& center, double radius, double angle);

/// The direction from one point to another, of length 1; {0, 0} where they are the same.
cv::Point2d Direction(const cv::Point2d& from, const cv::Point2d& to);

/// The point at a part of the way from one point to another.
cv::Point2d Between(const cv::Point2d& a, const cv::Point2d& b, double part);

/// Distance of two points; infinite where no double tells it.
double Distance(const cv::Point2d& a, const cv::Point2d& b);

/// A point on the line through two different points, as near to the origin as drawing needs: one of
/// the two, or where the line crosses an axis. Nothing cancels, however far away the two are.
cv::Point2d NearPoint(const cv::Point2d& a, const cv::Point2d& b);

/// How far to the right a line leads while it leads down by 1.
double SlopeOf(const cv::Point2d& a, const cv::Point2d& b);

/// Cuts a segment to a frame; false where nothing is left.
bool Clip(cv::Point2d& a, cv::Point2d& b, const Frame& frame);

/// From `start` on for `sweep` degrees, at most once around. As fine as is needed inside the frame,
/// coarse outside.
Chain ArcOf(const cv::Point2d& center, double radius, double start, double sweep,
            const Frame& frame);
/// Of semi-axes, the first along the direction `angle`.
Chain EllipseOf(const cv::Point2d& center, double radius1, double radius2, double angle,
                const Frame& frame);
Chain CircleOf(const cv::Point2d& center, double radius, const Frame& frame);
/// A ring's outlines: two where it is whole, else the one of the sector.
std::vector<Chain> RingOf(const cv::Point2d& center, double inner, double outer, double start,
                          double sweep, const Frame& frame);
/// Of full lengths, the first along the direction `angle`.
Chain RectangleOf(const cv::Point2d& center, double length1, double length2, double angle);
/// From corner to corner.
Chain RectangleOf(const cv::Point2d& p1, const cv::Point2d& p2);

#endif  // VIEW_SHAPES_H_
