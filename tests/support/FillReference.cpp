#include "support/FillReference.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace {

__extension__ typedef __int128 Wide;

struct Spot {
  std::int64_t x;
  std::int64_t y;
};

// Where the line through two spots is, on one axis, at a place on the other.
std::int64_t Along(std::int64_t from, std::int64_t place, std::int64_t start, std::int64_t rise,
                   std::int64_t run) {
  return from + static_cast<std::int64_t>(static_cast<Wide>(place - start) * rise / run);
}

bool Within(std::int64_t value, std::int64_t size) { return value >= 0 && value < size; }

bool SameSide(std::int64_t a, std::int64_t b, std::int64_t size) {
  return (a < 0 && b < 0) || (a >= size && b >= size);
}

// Moves an end into the rows of the canvas.
void MoveToRows(Spot& end, const Spot& a, const Spot& b, int height) {
  if (Within(end.y, height)) return;
  const std::int64_t y = end.y < 0 ? 0 : height - 1;
  end.x = Along(end.x, y, end.y, b.x - a.x, b.y - a.y);
  end.y = y;
}

void MoveToColumns(Spot& end, const Spot& a, const Spot& b, int width) {
  if (Within(end.x, width)) return;
  const std::int64_t x = end.x < 0 ? 0 : width - 1;
  end.y = Along(end.y, x, end.x, b.y - a.y, b.x - a.x);
  end.x = x;
}

bool Clip(Spot& a, Spot& b, int width, int height) {
  if (SameSide(a.x, b.x, width) || SameSide(a.y, b.y, height)) return false;
  MoveToRows(a, a, b, height);
  MoveToRows(b, a, b, height);
  if (SameSide(a.x, b.x, width)) return false;
  MoveToColumns(a, a, b, width);
  MoveToColumns(b, a, b, width);
  return true;
}

void PlotLine(cv::Mat& raster, Spot a, Spot b) {
  if (!Clip(a, b, raster.cols, raster.rows)) return;
  if (b.x < a.x) std::swap(a, b);
  const std::int64_t across = b.x - a.x;
  const std::int64_t down = std::abs(b.y - a.y);
  const std::int64_t turn = b.y < a.y ? -1 : 1;
  const std::int64_t longer = std::max(across, down);
  const std::int64_t shorter = std::min(across, down);
  std::int64_t error = longer - 2 * shorter;
  for (std::int64_t i = 0; i <= longer; ++i) {
    raster.at<unsigned char>(static_cast<int>(a.y), static_cast<int>(a.x)) = 255;
    const bool sideways = error < 0;
    error += (sideways ? 2 * longer : 0) - 2 * shorter;
    if (down > across || sideways) a.y += turn;
    if (down <= across || sideways) a.x += 1;
  }
}

// Where a row is crossed by an edge that is not level, in units of 1/65536 pixel.
void AddCrossing(Spot a, Spot b, std::int64_t row, std::vector<Wide>& crossings) {
  if (a.y > b.y) std::swap(a, b);
  if (row < a.y || row >= b.y) return;
  const Wide step = static_cast<Wide>(b.x - a.x) * 65536 / (b.y - a.y);
  crossings.push_back(static_cast<Wide>(a.x) * 65536 + step * (row - a.y));
}

bool IsBetween(const std::vector<Wide>& crossings, int column) {
  const Wide x = static_cast<Wide>(column) * 65536;
  for (std::size_t i = 0; i + 1 < crossings.size(); i += 2) {
    if (crossings[i] <= x && x <= crossings[i + 1]) return true;
  }
  return false;
}

template <typename Visit>
void VisitEdges(const std::vector<std::vector<cv::Point>>& contours, Visit visit) {
  for (const std::vector<cv::Point>& contour : contours) {
    for (std::size_t i = 0; i < contour.size(); ++i) {
      const cv::Point& from = contour[i == 0 ? contour.size() - 1 : i - 1];
      visit(Spot{from.x, from.y}, Spot{contour[i].x, contour[i].y});
    }
  }
}

}  // namespace

cv::Mat FilledByRule(const std::vector<std::vector<cv::Point>>& contours, int width, int height) {
  cv::Mat raster = cv::Mat::zeros(height, width, CV_8UC1);
  for (int row = 0; row < height; ++row) {
    std::vector<Wide> crossings;
    VisitEdges(contours, [&](const Spot& a, const Spot& b) { AddCrossing(a, b, row, crossings); });
    std::sort(crossings.begin(), crossings.end());
    for (int column = 0; column < width; ++column) {
      if (IsBetween(crossings, column)) raster.at<unsigned char>(row, column) = 255;
    }
  }
  VisitEdges(contours, [&](const Spot& a, const Spot& b) { PlotLine(raster, a, b); });
  return raster;
}
