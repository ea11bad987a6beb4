#include "masks/RoundFill.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "masks/EllipseSamples.h"
#include "masks/LineClip.h"
#include "masks/RunCollector.h"
#include "values/Processor.h"

namespace {

__extension__ typedef __int128 Wide;

// Coordinates of vertices are whole numbers of 1/65536 pixel.
constexpr int kFractionBits = 16;
constexpr std::int64_t kOne = std::int64_t{1} << kFractionBits;
constexpr std::int64_t kHalf = kOne / 2;

std::int64_t NearestPixel(std::int64_t coordinate) { return (coordinate + kHalf) >> kFractionBits; }

using Vertex = LinePoint;

bool operator!=(const Vertex& a, const Vertex& b) { return a.x != b.x || a.y != b.y; }

// The largest root is exact though the double is not always: one step mends it.
std::int64_t FloorRoot(std::int64_t square) {
  auto root = static_cast<std::int64_t>(std::sqrt(static_cast<double>(square)));
  while (root * root > square) --root;
  while ((root + 1) * (root + 1) <= square) ++root;
  return root;
}

std::int64_t Fixed(float value) {
  const std::int64_t whole = RoundToInt(value);
  return whole * kOne + RoundToInt((value - static_cast<float>(whole)) * static_cast<float>(kOne));
}

// Half of a side, which is rounded in units of half a pixel's fraction.
std::int64_t FixedHalf(float side) {
  const std::int64_t whole = RoundToInt(side);
  return std::abs(whole * kHalf +
                  RoundToInt((side - static_cast<float>(whole)) * static_cast<float>(kHalf)));
}

std::int64_t Fixed(double coordinate) {
  const std::int64_t whole =
      static_cast<std::int64_t>(RoundToInt(coordinate / static_cast<double>(kOne))) * kOne;
  return whole + RoundToInt(coordinate - static_cast<double>(whole));
}

int DegreesBetweenSamples(std::int64_t longerAxis) {
  const std::int64_t pixels = NearestPixel(longerAxis);
  if (pixels < 3) return 90;
  if (pixels < 10) return 30;
  return pixels < 15 ? 18 : 5;
}

std::vector<Vertex> EllipseVertices(const cv::RotatedRect& ellipse) {
  const Vertex center = {Fixed(ellipse.center.x), Fixed(ellipse.center.y)};
  const std::int64_t width = FixedHalf(ellipse.size.width);
  const std::int64_t height = FixedHalf(ellipse.size.height);
  const EllipseArc whole = {RoundToInt(ellipse.angle), 0, 360};
  std::vector<Vertex> vertices;
  for (const cv::Point2d& sample :
       SampleEllipse({static_cast<double>(center.x), static_cast<double>(center.y)},
                     {static_cast<double>(width), static_cast<double>(height)}, whole,
                     DegreesBetweenSamples(std::max(width, height)))) {
    const Vertex vertex = {Fixed(sample.x), Fixed(sample.y)};
    if (vertices.empty() || vertex != vertices.back()) vertices.push_back(vertex);
  }
  if (vertices.size() == 1) vertices.assign(2, center);
  return vertices;
}

// How far a line advances, of 1/65536 pixel, for each pixel along its longer way.
std::int64_t StepOf(std::int64_t shorter, std::int64_t longer) {
  return static_cast<std::int64_t>(static_cast<Wide>(shorter) * kOne / (longer | 1));
}

/// Adds the pixels of a convex polygon: what lies between its two sides, then its border.
class ConvexFill {
 public:
  ConvexFill(const std::vector<Vertex>& vertices, const cv::Size& canvas, RunCollector& runs)
      : vertices_(vertices), canvas_(canvas), runs_(runs), edgesLeft_(vertices.size()) {}

  void Fill() {
    if (vertices_.size() >= 3) FillInside();
    for (std::size_t i = 0; i < vertices_.size(); ++i) {
      AddBorder(vertices_[i == 0 ? vertices_.size() - 1 : i - 1], vertices_[i]);
    }
  }

 private:
  /// The polygon's border on one side, walked downward edge by edge.
  struct Side {
    std::size_t vertex;
    std::size_t direction;
    std::int64_t endRow;
    std::int64_t x = -kOne;
    std::int64_t step = 0;
  };

  void AddBorder(Vertex a, Vertex b) {
    if (!ClipLine(a, b, canvas_.width * kOne, canvas_.height * kOne)) return;
    if (std::abs(b.x - a.x) > std::abs(b.y - a.y)) {
      AddFlat(b.x < a.x ? b : a, b.x < a.x ? a : b);
    } else {
      AddSteep(b.y < a.y ? b : a, b.y < a.y ? a : b);
    }
  }

  void AddPixel(std::int64_t row, std::int64_t column) { runs_.Add(row, column, column); }

  // From left to right, the pixels of a row as one run.
  void AddFlat(const Vertex& left, const Vertex& right) {
    AddPixel(NearestPixel(right.y), NearestPixel(right.x));
    const std::int64_t step = StepOf(right.y - left.y, right.x - left.x);
    std::int64_t first = NearestPixel(left.x);
    const std::int64_t end = first + ((right.x - left.x) >> kFractionBits) + 1;
    std::int64_t y = left.y + kHalf;
    while (first < end) {
      const std::int64_t row = y >> kFractionBits;
      std::int64_t next = first;
      for (; next < end && y >> kFractionBits == row; ++next) y += step;
      runs_.Add(row, first, next - 1);
      first = next;
    }
  }

  void AddSteep(const Vertex& top, const Vertex& bottom) {
    AddPixel(NearestPixel(bottom.y), NearestPixel(bottom.x));
    const std::int64_t step = StepOf(bottom.x - top.x, bottom.y - top.y);
    const std::int64_t firstRow = NearestPixel(top.y);
    const std::int64_t endRow = firstRow + ((bottom.y - top.y) >> kFractionBits) + 1;
    std::int64_t x = top.x + kHalf;
    for (std::int64_t row = firstRow; row < endRow; ++row, x += step) {
      AddPixel(row, x >> kFractionBits);
    }
  }

  // Both sides begin at the first of the topmost vertices.
  void FillInside() {
    const auto [top, bottom] =
        std::minmax_element(vertices_.begin(), vertices_.end(),
                            [](const Vertex& a, const Vertex& b) { return a.y < b.y; });
    std::int64_t row = NearestPixel(top->y);
    const std::int64_t endRow = std::min<std::int64_t>(NearestPixel(bottom->y) + 1, canvas_.height);
    const auto start = static_cast<std::size_t>(top - vertices_.begin());
    Side forward = {start, 1, row};
    Side backward = {start, vertices_.size() - 1, row};
    while (row < endRow) {
      if (!Continue(forward, row) || !Continue(backward, row)) return;
      const std::int64_t stop = std::min({forward.endRow, backward.endRow, endRow});
      // Above the canvas all rows are passed at once.
      const std::int64_t passed = row < 0 ? std::min<std::int64_t>(stop, 0) - row : 0;
      row += passed;
      forward.x += passed * forward.step;
      backward.x += passed * backward.step;
      for (; row < stop; ++row) {
        runs_.Add(row, NearestPixel(std::min(forward.x, backward.x)),
                  NearestPixel(std::max(forward.x, backward.x)));
        forward.x += forward.step;
        backward.x += backward.step;
      }
    }
  }

  // Goes on to the edge that leads below the row; false when all edges of both sides are used up.
  bool Continue(Side& side, std::int64_t row) {
    if (row < side.endRow) return true;
    while (edgesLeft_ > 0) {
      --edgesLeft_;
      const Vertex& from = vertices_[side.vertex];
      side.vertex = (side.vertex + side.direction) % vertices_.size();
      const Vertex& to = vertices_[side.vertex];
      const std::int64_t rows = NearestPixel(to.y) - row;
      if (rows <= 0) continue;
      side.endRow = row + rows;
      side.x = from.x;
      side.step = ((to.x - from.x) * 2 + rows) / (2 * rows);
      return true;
    }
    return false;
  }

  const std::vector<Vertex>& vertices_;
  const cv::Size canvas_;
  RunCollector& runs_;
  std::size_t edgesLeft_;
};

}  // namespace

void FillCircle(const cv::Point& center, int radius, const cv::Size& canvas, RunSink& sink) {
  RunBatch batch(sink);
  const std::int64_t square = static_cast<std::int64_t>(radius) * radius;
  const std::int64_t top = std::max<std::int64_t>(std::int64_t{center.y} - radius, 0);
  const std::int64_t end =
      std::min<std::int64_t>(std::int64_t{center.y} + radius + 1, canvas.height);
  for (std::int64_t row = top; row < end; ++row) {
    const std::int64_t distance = row - center.y;
    const std::int64_t half = FloorRoot(square - distance * distance);
    const std::int64_t first = std::max<std::int64_t>(center.x - half, 0);
    const std::int64_t last = std::min<std::int64_t>(center.x + half, canvas.width - 1);
    if (first > last) continue;
    Run* const run = batch.Room(1);
    *run = {static_cast<int>(row), static_cast<int>(first), static_cast<int>(last)};
    batch.Take(run + 1);
  }
  batch.Finish();
}

void FillEllipse(const cv::RotatedRect& ellipse, const cv::Size& canvas, RunSink& sink) {
  RunCollector runs(canvas.width, canvas.height);
  ConvexFill(EllipseVertices(ellipse), canvas, runs).Fill();
  runs.HandOut(sink);
}
