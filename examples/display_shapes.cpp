#include "display_shapes.h"

#include <algorithm>
#include <cmath>

#include <opencv2/imgproc.hpp>

namespace {

// Drawn in parts of a pixel.
constexpr int kShift = 4;

std::vector<cv::Point> Fine(const Chain& chain) {
  std::vector<cv::Point> points;
  for (const cv::Point2d& p : chain) {
    points.emplace_back(cvRound(p.x * (1 << kShift)), cvRound(p.y * (1 << kShift)));
  }
  return points;
}

}  // namespace

cv::Point2d Polar(const cv::Point2d& center, double radius, double angle) {
  const double radians = angle * CV_PI / 180;
  return center + radius * cv::Point2d(std::cos(radians), -std::sin(radians));
}

void Stroke(cv::Mat& canvas, const Chain& chain, bool closed, const cv::Scalar& color, int width) {
  cv::polylines(canvas, std::vector<std::vector<cv::Point>>{Fine(chain)}, closed, color, width,
                cv::LINE_AA, kShift);
}

void Fill(cv::Mat& canvas, const std::vector<Chain>& outlines, const cv::Scalar& color) {
  std::vector<std::vector<cv::Point>> fine;
  fine.reserve(outlines.size());
  for (const Chain& outline : outlines) fine.push_back(Fine(outline));
  cv::fillPoly(canvas, fine, color, cv::LINE_AA, kShift);
}

Chain ArcOf(const cv::Point2d& center, double radius, double start, double sweep) {
  Chain chain;
  const int steps = std::max(2, cvCeil(sweep / 2));
  for (int i = 0; i <= steps; ++i)
    chain.push_back(Polar(center, radius, start + sweep * i / steps));
  return chain;
}

Chain CircleOf(const cv::Point2d& center, double radius) { return ArcOf(center, radius, 0, 360); }

Chain RectangleOf(const cv::Point2d& center, double length1, double length2, double angle) {
  const cv::Point2d along = Polar({0, 0}, length1 / 2, angle);
  const cv::Point2d across = Polar({0, 0}, length2 / 2, angle - 90);
  return {center - along - across, center + along - across, center + along + across,
          center - along + across};
}

Chain EllipseOf(const cv::Point2d& center, double radius1, double radius2, double angle) {
  Chain chain;
  for (int i = 0; i < 120; ++i) {
    const double t = 2 * CV_PI * i / 120;
    chain.push_back(center + Polar({0, 0}, radius1 * std::cos(t), angle) +
                    Polar({0, 0}, radius2 * std::sin(t), angle + 90));
  }
  return chain;
}

Chain GearOf(const cv::Point2d& center, double inner, double outer, int teeth) {
  Chain chain;
  for (int i = 0; i < teeth; ++i) {
    const double tooth = 360.0 / teeth;
    const double angle = i * tooth;
    chain.push_back(Polar(center, inner, angle - 0.32 * tooth));
    chain.push_back(Polar(center, outer, angle - 0.18 * tooth));
    chain.push_back(Polar(center, outer, angle + 0.18 * tooth));
    chain.push_back(Polar(center, inner, angle + 0.32 * tooth));
  }
  return chain;
}

Chain BlobOf(const cv::Point2d& center, double radius) {
  Chain chain;
  for (int i = 0; i < 72; ++i) {
    const double t = 2 * CV_PI * i / 72;
    const double bump =
        1 + 0.22 * std::sin(2 * t + 0.6) + 0.13 * std::cos(3 * t) + 0.05 * std::sin(5 * t);
    chain.push_back(Polar(center, radius * bump, 5.0 * i));
  }
  return chain;
}
