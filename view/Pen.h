#ifndef VIEW_PEN_H_
#define VIEW_PEN_H_

#include <vector>

#include <opencv2/core.hpp>

#include "view/Canvas.h"
#include "view/Coverage.h"
#include "view/Shapes.h"

struct Arrow {
  cv::Point2d from;
  cv::Point2d to;
};

/// Draws shapes on a canvas: lines in one colour and width, insides in another. A shape with a
/// number that is not finite is not drawn.
class Pen {
 public:
  Pen(Canvas& canvas, const Color& color, int width);

  /// The margin around the picture from which a line reaches in.
  const Frame& Reach() const { return frame_; }
  int Width() const { return width_; }

  void Open(const Chain& chain);
  void Closed(const std::vector<Chain>& chains);
  /// Tints what an odd number of chains enclose.
  void Tint(const std::vector<Chain>& chains, const Color& color);

  void Cross(const cv::Point2d& center);
  void Dots(const Chain& centers, double radius);
  void Arrows(const std::vector<Arrow>& arrows);

 private:
  void AddLine(UnionCoverage& coverage, const Chain& chain, bool closed, double width) const;
  void AddSegment(UnionCoverage& coverage, cv::Point2d a, cv::Point2d b, double width) const;
  bool AddWedge(UnionCoverage& coverage, const cv::Point2d& before, const cv::Point2d& p,
                const cv::Point2d& after, double width) const;
  void AddArrow(UnionCoverage& coverage, const Arrow& arrow) const;
  void AddDots(UnionCoverage& coverage, const Chain& centers, double radius) const;

  Canvas& canvas_;
  Color color_;
  int width_;
  Frame frame_;
};

#endif  // VIEW_PEN_H_
