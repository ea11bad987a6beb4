#include "twins/CoderTwin.h"

#include <array>
#include <climits>
#include <cstddef>

namespace {

std::vector<Run> PlainRuns(const Grid& pixels) {
  std::vector<Run> runs;
  for (int y = 0; y < pixels.Height(); ++y) {
    for (int x = 0; x < pixels.Width(); ++x) {
      if (pixels.At(x, y) == 0) continue;
      if (pixels.At(x - 1, y) == 0) runs.push_back({y, x, x});
      runs.back().LastColumn = x;
    }
  }
  return runs;
}

// Gives the unlabelled pixels of one value about (x, y) a label, over 4 or 8 neighbours.
void Flood(const Grid& pixels, int x, int y, bool diagonal, int label, Grid& labels) {
  const int value = pixels.At(x, y);
  std::vector<cv::Point> waiting = {{x, y}};
  labels.At(x, y) = label;
  while (!waiting.empty()) {
    const cv::Point p = waiting.back();
    waiting.pop_back();
    for (int dy = -1; dy <= 1; ++dy) {
      for (int dx = -1; dx <= 1; ++dx) {
        const cv::Point q(p.x + dx, p.y + dy);
        if ((!diagonal && dx != 0 && dy != 0) || !pixels.Holds(q.x, q.y)) continue;
        if (pixels.At(q.x, q.y) != value || labels.At(q.x, q.y) != 0) continue;
        labels.At(q.x, q.y) = label;
        waiting.push_back(q);
      }
    }
  }
}

// Follows the cracks between foreground and background, the foreground at the left hand, and lists
// its pixels. The way starts at a corner, with a step down along the pixel's left side for an outer
// border, up along its right side for a hole's.
PixelChain WalkCracks(const Grid& pixels, const cv::Point& start, bool isHole) {
  const std::array<cv::Point, 4> steps = {{{1, 0}, {0, 1}, {-1, 0}, {0, -1}}};  // Clockwise.
  // The pixel left of a step that begins at a corner, by the step's direction.
  const std::array<cv::Point, 4> leftPixels = {{{0, -1}, {0, 0}, {-1, 0}, {-1, -1}}};
  const std::array<cv::Point, 4> rightPixels = {{{0, 0}, {-1, 0}, {-1, -1}, {0, -1}}};
  const auto isSet = [&](const cv::Point& p) { return pixels.At(p.x, p.y) != 0; };
  cv::Point corner = isHole ? start + cv::Point(1, 1) : start;
  std::size_t direction = isHole ? 3 : 1;
  const cv::Point firstCorner = corner;
  const std::size_t firstDirection = direction;
  PixelChain chain;
  do {
    const cv::Point pixel = corner + leftPixels[direction];
    if (chain.empty() || chain.back() != pixel) chain.push_back(pixel);
    corner += steps[direction];
    if (isSet(corner + rightPixels[direction])) {
      direction = (direction + 1) % 4;  // Pixels that touch at a corner belong together.
    } else if (!isSet(corner + leftPixels[direction])) {
      direction = (direction + 3) % 4;
    }
  } while (corner != firstCorner || direction != firstDirection);
  if (chain.size() > 1 && chain.back() == chain.front()) chain.pop_back();
  return chain;
}

// The pixels at which a chain changes its direction.
PixelChain VerticesOf(const PixelChain& chain) {
  if (chain.size() == 1) return chain;
  PixelChain vertices;
  for (std::size_t i = 0; i < chain.size(); ++i) {
    const cv::Point& before = chain[i == 0 ? chain.size() - 1 : i - 1];
    const cv::Point& behind = chain[i + 1 == chain.size() ? 0 : i + 1];
    if (chain[i] - before != behind - chain[i]) vertices.push_back(chain[i]);
  }
  return vertices;
}

// Siblings are linked in their order, and an outer border names its first hole.
std::vector<cv::Vec4i> Linked(const std::vector<int>& parents) {
  std::vector<cv::Vec4i> links(parents.size(), cv::Vec4i(-1, -1, -1, -1));
  for (std::size_t i = 0; i < parents.size(); ++i) {
    links[i][3] = parents[i];
    for (std::size_t k = i; k-- > 0;) {
      if (parents[k] != parents[i]) continue;
      links[i][1] = static_cast<int>(k);
      links[k][0] = static_cast<int>(i);
      break;
    }
    if (links[i][1] < 0 && parents[i] >= 0) {
      links[static_cast<std::size_t>(parents[i])][2] = static_cast<int>(i);
    }
  }
  return links;
}

}  // namespace

CodedRaster CodePlainly(const Grid& pixels) {
  CodedRaster expected;
  expected.runs = PlainRuns(pixels);
  Grid labels(pixels.Width(), pixels.Height());
  Flood(pixels, -1, -1, false, INT_MAX, labels);  // What lies around everything.
  std::vector<int> parents;
  std::vector<int> outerBorders;  // By component.
  for (int y = 0; y < pixels.Height(); ++y) {
    for (int x = 0; x < pixels.Width(); ++x) {
      if (pixels.At(x, y) != 0 && labels.At(x, y) == 0) {
        outerBorders.push_back(static_cast<int>(parents.size()));
        Flood(pixels, x, y, true, static_cast<int>(outerBorders.size()), labels);
        parents.push_back(-1);
        expected.outlines.push_back(VerticesOf(WalkCracks(pixels, {x, y}, false)));
      }
      // A hole is met at the pixel left of it.
      if (pixels.At(x, y) != 0 && pixels.At(x + 1, y) == 0 && labels.At(x + 1, y) == 0) {
        Flood(pixels, x + 1, y, false, INT_MAX, labels);
        parents.push_back(outerBorders[static_cast<std::size_t>(labels.At(x, y) - 1)]);
        expected.outlines.push_back(VerticesOf(WalkCracks(pixels, {x, y}, true)));
      }
    }
  }
  expected.hierarchy = Linked(parents);
  expected.components.resize(outerBorders.size());
  for (const Run& run : expected.runs) {
    expected.components[static_cast<std::size_t>(labels.At(run.FirstColumn, run.Row) - 1)]
        .push_back(run);
  }
  return expected;
}
