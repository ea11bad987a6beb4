#include "VemContour.h"

#include <cmath>
#include <cstddef>

#include <opencv2/core/types.hpp>

namespace {

double Distance(const cv::Point2d& a, const cv::Point2d& b) {
  const double dx = a.x - b.x;
  const double dy = a.y - b.y;
  return std::sqrt(dx * dx + dy * dy);
}

// Heron's formula with a dead zone: a triangle that is nearly flat, or tiny, has no area.
double TriangleArea(double a, double b, double c) {
  constexpr double kDeadZone = 0.001;
  const double s = (a + b + c) * 0.5;
  const bool flat =
      std::abs(s - a) < kDeadZone || std::abs(s - b) < kDeadZone || std::abs(s - c) < kDeadZone;
  return flat ? 0.0 : std::sqrt(s * (s - a) * (s - b) * (s - c));
}

}  // namespace

VemContour::VemContour() : store_(new std::vector<cv::Point2d>) {}
VemContour::VemContour(const VemContour& other)
    : store_(new std::vector<cv::Point2d>(*other.store_)) {}
VemContour& VemContour::operator=(const VemContour& other) {
  *store_ = *other.store_;
  return *this;
}
VemContour::~VemContour() { delete store_; }

void VemContour::FromPointArray(VemPointArray& in) {
  store_->reserve(in.store_->size());
  store_->clear();
  for (const VemPoint& point : *in.store_) store_->emplace_back(point.x, point.y);
}

void VemContour::ToPointArray(VemPointArray* out) {
  out->Clear();
  for (const cv::Point2d& p : *store_) {
    VemPoint point(p.x, p.y);
    out->Append(point);
  }
}

int VemContour::Length() const { return static_cast<int>(store_->size()); }

double VemContour::Perimeter() const {
  const std::vector<cv::Point2d>& points = *store_;
  double sum = 0.0;
  for (std::size_t i = 1; i < points.size(); ++i) sum += Distance(points[i], points[i - 1]);
  return sum;
}

double VemContour::Area() const {
  const std::vector<cv::Point2d>& points = *store_;
  double sum = 0.0;
  for (std::size_t i = 1; i + 1 < points.size(); ++i) {
    sum += TriangleArea(Distance(points[i + 1], points[i]), Distance(points[i + 1], points[0]),
                        Distance(points[i], points[0]));
  }
  return sum;
}
