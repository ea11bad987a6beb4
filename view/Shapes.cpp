#include "view/Shapes.h"

#include <algorithm>
#include <cmath>

namespace {

// An ellipse by its center and its semi-axes; Longest() is the length of the longer.
struct Ellipse {
  cv::Point2d At(double t) const {
    const double c = std::cos(t), s = std::sin(t);
    return {center.x + axis1.x * c + axis2.x * s, center.y + axis1.y * c + axis2.y * s};
  }

  cv::Point2d center;
  cv::Point2d axis1;
  cv::Point2d axis2;
  double longest;
};

constexpr double kFlat = 1.0 / 32;  // How far a chain may lie beside its arc, in pixels.
constexpr int kPieces = 8;          // Of at most 45 degrees each.
constexpr int kHalvings = 24;       // Of each piece.

// Adds the points behind the one at `t0`, up to the one at `t1`. A piece and its chord lie no
// farther from either end than the piece is long: where that can't be seen, the chord will do.
void Divide(const Ellipse& ellipse, double t0, double t1, int halvings, const Frame& frame,
            Chain& chain) {
  const double angle = t1 - t0;
  const cv::Point2d end = ellipse.At(t1);
  const bool flat = ellipse.longest * (angle * angle / 8) <= kFlat;
  if (halvings == 0 || flat || !frame.Meets(end, ellipse.longest * angle)) {
    chain.push_back(end);
    return;
  }
  const double middle = t0 + angle / 2;
  Divide(ellipse, t0, middle, halvings - 1, frame, chain);
  Divide(ellipse, middle, t1, halvings - 1, frame, chain);
}

Chain Around(const Ellipse& ellipse, double start, double sweep, const Frame& frame) {
  Chain chain = {ellipse.At(start)};
  for (int i = 0; i < kPieces; ++i) {
    Divide(ellipse, start + sweep * i / kPieces, start + sweep * (i + 1) / kPieces, kHalvings,
           frame, chain);
  }
  return chain;
}

// Numbers beyond it are too large to be subtracted.
constexpr double kHuge = 1e300;

cv::Point2d Tamed(const cv::Point2d& p) {
  return {std::min(std::max(p.x, -kHuge), kHuge), std::min(std::max(p.y, -kHuge), kHuge)};
}

double Tamed(double length) { return std::min(length, kHuge); }

// Around the origin, where the difference of two numbers is exact enough to draw by.
bool IsNear(const cv::Point2d& p) {
  constexpr double kNear = 1e6;
  return std::abs(p.x) <= kNear && std::abs(p.y) <= kNear;
}

// a * b - c * d to the last digits, however near to each other the products are.
double DifferenceOfProducts(double a, double b, double c, double d) {
  const double product = c * d;
  const double rest = std::fma(-c, d, product);
  return std::fma(a, b, -product) + rest;
}

cv::Point2d Transposed(const cv::Point2d& p) { return {p.y, p.x}; }

// Cuts a segment that leads farther across than down or up.
bool ClipLevel(cv::Point2d& a, cv::Point2d& b, const Frame& frame) {
  const cv::Point2d on = NearPoint(a, b);
  const double slope = SlopeOf(Transposed(a), Transposed(b));
  double low = std::max(std::min(a.x, b.x), frame.left);
  double high = std::min(std::max(a.x, b.x), frame.right);
  if (slope != 0) {
    const double atTop = on.x + (frame.top - on.y) / slope;
    const double atBottom = on.x + (frame.bottom - on.y) / slope;
    low = std::max(low, std::min(atTop, atBottom));
    high = std::min(high, std::max(atTop, atBottom));
  } else if (on.y < frame.top || on.y > frame.bottom) {
    return false;
  }
  if (!(low <= high)) return false;
  for (cv::Point2d* end : {&a, &b}) {
    const double x = std::min(std::max(end->x, low), high);
    if (x != end->x) *end = {x, on.y + (x - on.x) * slope};
  }
  return true;
}

double Radians(double angle) { return std::fmod(angle, 360) * CV_PI / 180; }

}  // namespace

bool IsFinite(double value) { return std::isfinite(value); }
bool IsFinite(const cv::Point2d& p) { return std::isfinite(p.x) && std::isfinite(p.y); }
bool IsFinite(const Chain& chain) {
  return std::all_of(chain.begin(), chain.end(), [](const cv::Point2d& p) { return IsFinite(p); });
}

cv::Point2d Polar(const cv::Point2d& center, double radius, double angle) {
  const double radians = Radians(angle);
  return {center.x + radius * std::cos(radians), center.y - radius * std::sin(radians)};
}

double Distance(const cv::Point2d& a, const cv::Point2d& b) {
  const double dx = std::abs(b.x / 2 - a.x / 2), dy = std::abs(b.y / 2 - a.y / 2);
  const double longer = std::max(dx, dy);
  if (longer == 0) return 0;
  const double part = std::min(dx, dy) / longer;
  return 2 * longer * std::sqrt(1 + part * part);
}

cv::Point2d Between(const cv::Point2d& a, const cv::Point2d& b, double part) {
  return (1 - part) * a + part * b;
}

cv::Point2d Direction(const cv::Point2d& from, const cv::Point2d& to) {
  const double dx = to.x / 2 - from.x / 2, dy = to.y / 2 - from.y / 2;
  const double longer = std::max(std::abs(dx), std::abs(dy));
  if (longer == 0) return {0, 0};
  const double x = dx / longer, y = dy / longer;
  const double length = std::sqrt(x * x + y * y);
  return {x / length, y / length};
}

cv::Point2d NearPoint(const cv::Point2d& a, const cv::Point2d& b) {
  if (IsNear(a)) return a;
  if (IsNear(b)) return b;
  // Products of larger numbers would be infinite. A power of two changes no digit.
  constexpr double kLargest = 0x1p500, kScale = 0x1p-600;
  const double largest = std::max({std::abs(a.x), std::abs(a.y), std::abs(b.x), std::abs(b.y)});
  const double scale = largest > kLargest ? kScale : 1;
  const cv::Point2d p = a * scale, q = b * scale, along = q - p;
  const double product = DifferenceOfProducts(p.x, q.y, p.y, q.x);
  if (std::abs(along.x) <= std::abs(along.y)) return {product / along.y / scale, 0};
  return {0, -product / along.x / scale};
}

double SlopeOf(const cv::Point2d& a, const cv::Point2d& b) {
  return (b.x / 2 - a.x / 2) / (b.y / 2 - a.y / 2);
}

bool Clip(cv::Point2d& a, cv::Point2d& b, const Frame& frame) {
  if (frame.Meets(a, 0) && frame.Meets(b, 0)) return true;
  const double across = std::abs(b.x / 2 - a.x / 2), along = std::abs(b.y / 2 - a.y / 2);
  if (across == 0 && along == 0) return false;
  if (across >= along) return ClipLevel(a, b, frame);
  a = Transposed(a);
  b = Transposed(b);
  const bool seen = ClipLevel(a, b, frame.Transposed());
  a = Transposed(a);
  b = Transposed(b);
  return seen;
}

Chain ArcOf(const cv::Point2d& center, double radius, double start, double sweep,
            const Frame& frame) {
  const double r = Tamed(radius);
  const Ellipse circle = {Tamed(center), {r, 0}, {0, -r}, r};
  return Around(circle, Radians(start), std::min(sweep, 360.0) * CV_PI / 180, frame);
}

Chain EllipseOf(const cv::Point2d& center, double radius1, double radius2, double angle,
                const Frame& frame) {
  const cv::Point2d axis1 = Polar({0, 0}, Tamed(radius1), angle);
  const cv::Point2d axis2 = Polar({0, 0}, Tamed(radius2), std::fmod(angle, 360) + 90);
  const Ellipse ellipse = {Tamed(center), axis1, axis2, Tamed(std::max(radius1, radius2))};
  return Around(ellipse, 0, 2 * CV_PI, frame);
}

Chain CircleOf(const cv::Point2d& center, double radius, const Frame& frame) {
  return ArcOf(center, radius, 0, 360, frame);
}

std::vector<Chain> RingOf(const cv::Point2d& center, double inner, double outer, double start,
                          double sweep, const Frame& frame) {
  Chain outerArc = ArcOf(center, outer, start, sweep, frame);
  Chain innerArc = ArcOf(center, inner, start, sweep, frame);
  if (sweep >= 360) return {outerArc, innerArc};
  outerArc.insert(outerArc.end(), innerArc.rbegin(), innerArc.rend());
  return {outerArc};
}

Chain RectangleOf(const cv::Point2d& center, double length1, double length2, double angle) {
  const cv::Point2d middle = Tamed(center);
  const cv::Point2d along = Polar({0, 0}, Tamed(length1) / 2, angle);
  const cv::Point2d across = Polar({0, 0}, Tamed(length2) / 2, std::fmod(angle, 360) - 90);
  return {middle - along - across, middle + along - across, middle + along + across,
          middle - along + across};
}

Chain RectangleOf(const cv::Point2d& p1, const cv::Point2d& p2) {
  return {p1, {p2.x, p1.y}, p2, {p1.x, p2.y}};
}
