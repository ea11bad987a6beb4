#include "view/Pen.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int kWidest = 32767;

bool AreFinite(const std::vector<Chain>& chains) {
  return std::all_of(chains.begin(), chains.end(), [](const Chain& c) { return IsFinite(c); });
}

}  // namespace

// An arrow's head and an irregular chain's dots reach farther than its line.
Pen::Pen(Canvas& canvas, const Color& color, int width)
    : canvas_(canvas),
      color_(color),
      width_(std::min(width, kWidest)),
      frame_(canvas.Size(), 32 + 4.0 * std::max(width_, 0)) {}

void Pen::Open(const Chain& chain) {
  if (width_ < 1 || !IsFinite(chain)) return;
  UnionCoverage coverage(canvas_.Size());
  AddLine(coverage, chain, false, width_);
  canvas_.Lay(coverage, color_, kOpaque);
}

void Pen::Closed(const std::vector<Chain>& chains) {
  if (width_ < 1 || !AreFinite(chains)) return;
  UnionCoverage coverage(canvas_.Size());
  for (const Chain& chain : chains) AddLine(coverage, chain, true, width_);
  canvas_.Lay(coverage, color_, kOpaque);
}

void Pen::Tint(const std::vector<Chain>& chains, const Color& color) {
  if (!AreFinite(chains)) return;
  EvenOddCoverage coverage(canvas_.Size());
  for (const Chain& chain : chains) coverage.Add(chain);
  canvas_.Lay(coverage, color, kTint);
}

void Pen::Cross(const cv::Point2d& center) {
  constexpr double kArm = 16;
  constexpr int kLeast = 3;
  if (width_ < 1 || !IsFinite(center)) return;
  const cv::Point2d level(kArm, 0), upright(0, kArm);
  UnionCoverage coverage(canvas_.Size());
  AddLine(coverage, {center - level, center + level}, false, std::max(width_, kLeast));
  AddLine(coverage, {center - upright, center + upright}, false, std::max(width_, kLeast));
  canvas_.Lay(coverage, color_, kOpaque);
}

void Pen::Dots(const Chain& centers, double radius) {
  if (width_ < 1 || !IsFinite(centers)) return;
  UnionCoverage coverage(canvas_.Size());
  AddDots(coverage, centers, radius);
  canvas_.Lay(coverage, color_, kOpaque);
}

void Pen::Arrows(const std::vector<Arrow>& arrows) {
  if (width_ < 1) return;
  UnionCoverage coverage(canvas_.Size());
  for (const Arrow& arrow : arrows) {
    if (IsFinite(arrow.from) && IsFinite(arrow.to)) AddArrow(coverage, arrow);
  }
  canvas_.Lay(coverage, color_, kOpaque);
}

void Pen::AddArrow(UnionCoverage& coverage, const Arrow& arrow) const {
  const cv::Point2d along = Direction(arrow.from, arrow.to);
  const cv::Point2d across(-along.y, along.x);
  const double head = 5 + 3.0 * width_;
  const cv::Point2d neck = arrow.to - head * along;
  if (Distance(arrow.from, arrow.to) > head) AddLine(coverage, {arrow.from, neck}, false, width_);
  coverage.Add({arrow.to, neck - 0.5 * head * across, neck + 0.5 * head * across});
}

void Pen::AddLine(UnionCoverage& coverage, const Chain& chain, bool closed, double width) const {
  if (chain.empty()) return;
  const std::size_t length = chain.size(), joints = closed ? length : length - 1;
  Chain dots;
  for (std::size_t i = 0; i < length; ++i) {
    const cv::Point2d& before = chain[(i + length - 1) % length];
    const cv::Point2d& after = chain[(i + 1) % length];
    const bool isEnd = !closed && (i == 0 || i + 1 == length);
    if (i < joints) AddSegment(coverage, chain[i], after, width);
    if (!frame_.Meets(chain[i], 0)) continue;
    if (isEnd || !AddWedge(coverage, before, chain[i], after, width)) dots.push_back(chain[i]);
  }
  AddDots(coverage, dots, width / 2);
}

// Where a line turns so little that a dot could not be told from a wedge, the wedge is added.
bool Pen::AddWedge(UnionCoverage& coverage, const cv::Point2d& before, const cv::Point2d& p,
                   const cv::Point2d& after, double width) const {
  constexpr double kFlat = 1.0 / 32;
  const cv::Point2d u = Direction(before, p), v = Direction(p, after);
  const double cosine = u.x * v.x + u.y * v.y;
  if (!(cosine > 0) || width / 2 * (1 - std::sqrt((1 + cosine) / 2)) > kFlat) return false;
  const cv::Point2d first(-u.y * width / 2, u.x * width / 2);
  const cv::Point2d second(-v.y * width / 2, v.x * width / 2);
  if (u.x * v.y - u.y * v.x > 0) {
    coverage.Add({p, p - second, p - first});
  } else {
    coverage.Add({p, p + first, p + second});
  }
  return true;
}

void Pen::AddSegment(UnionCoverage& coverage, cv::Point2d a, cv::Point2d b, double width) const {
  const cv::Point2d along = Direction(a, b);
  if (!Clip(a, b, frame_)) return;
  const cv::Point2d side(-along.y * width / 2, along.x * width / 2);
  coverage.Add({a + side, b + side, b - side, a - side});
}

// Small dots are all alike; of large ones only what is on the picture is made round.
void Pen::AddDots(UnionCoverage& coverage, const Chain& centers, double radius) const {
  constexpr double kSmall = 64;
  const Frame picture(canvas_.Size(), 1);
  const Chain small = CircleOf({0, 0}, radius, Frame({0, 0}, radius));
  Chain dot;
  for (const cv::Point2d& center : centers) {
    if (!picture.Meets(center, radius)) continue;
    if (radius > kSmall) {
      dot = CircleOf(center, radius, picture);
    } else {
      dot.clear();
      for (const cv::Point2d& p : small) dot.push_back(center + p);
    }
    coverage.Add(dot);
  }
}
