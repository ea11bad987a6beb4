#ifndef VIEW_EDGE_H_
#define VIEW_EDGE_H_

#include <algorithm>
#include <cstdint>
#include <vector>

#include <opencv2/core.hpp>

/// Each row of pixels is cut into lines, and each column into parts, on which edges begin and end.
constexpr int kLines = 16;
constexpr int kParts = 256;

/// An edge of a chain, as the lines of a picture meet it.
struct Edge {
  /// Where it meets a line, in parts from the picture's left side on; no farther than that and the
  /// right one.
  std::int64_t At(std::int64_t line, std::int64_t width) const {
    const double y = (static_cast<double>(line) + 0.5) / kLines;
    const double x = point.x + (y - point.y) * slope;
    const double seen = x > 0 ? std::min(x, static_cast<double>(width)) : 0;
    return static_cast<std::int64_t>(seen * kParts + 0.5);
  }

  std::int64_t firstLine;
  std::int64_t endLine;
  cv::Point2d point;  // On its line, by the corners of pixels.
  double slope;       // Columns to a row.
  bool down;
};

/// Adds the edge from one point to another, told by the centres of pixels, if lines of the picture
/// meet it.
void AddEdge(std::vector<Edge>& edges, const cv::Point2d& from, const cv::Point2d& to,
             std::int64_t height);

#endif  // VIEW_EDGE_H_
