#include "view/Coverage.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int kLines = 16;   // To a row.
constexpr int kParts = 256;  // Of a column.

// The first line that is not above a height, or the one behind the last.
std::int64_t LineFrom(double y, std::int64_t height) {
  const double line = std::ceil(y * kLines - 0.5);
  const double end = static_cast<double>(height * kLines);
  return static_cast<std::int64_t>(std::min(std::max(line, 0.0), end));
}

// Numbers beyond it are too large to be subtracted.
constexpr double kHuge = 1e300;

// The chain is told by pixels' centres, the edge by their corners.
cv::Point2d Corner(const cv::Point2d& p) {
  return {std::min(std::max(p.x + 0.5, -kHuge), kHuge),
          std::min(std::max(p.y + 0.5, -kHuge), kHuge)};
}

double HeightOf(std::int64_t line) { return (static_cast<double>(line) + 0.5) / kLines; }

}  // namespace

void Coverage::Add(const Chain& chain) {
  if (chain.empty()) return;
  cv::Point2d before = chain.back();
  for (const cv::Point2d& p : chain) {
    AddEdge(before, p);
    before = p;
  }
}

void Coverage::AddEdge(const cv::Point2d& a, const cv::Point2d& b) {
  const bool down = a.y <= b.y;
  const cv::Point2d upper = Corner(down ? a : b), lower = Corner(down ? b : a);
  const std::int64_t first = LineFrom(upper.y, height_), end = LineFrom(lower.y, height_);
  if (first >= end) return;
  edges_.push_back({first, end, upper, lower.x - upper.x, 1 / (lower.y - upper.y), down ? 1 : -1});
}

void Coverage::HandOut(int mask, Sink& sink) {
  std::sort(edges_.begin(), edges_.end(),
            [](const Edge& a, const Edge& b) { return a.firstLine < b.firstLine; });
  steps_.assign(static_cast<std::size_t>(width_ + 2), 0);
  firstColumn_ = width_;
  endColumn_ = 0;
  met_.clear();
  std::size_t next = 0;
  for (std::int64_t row = 0; row < height_ && (next < edges_.size() || !met_.empty()); ++row) {
    if (met_.empty()) row = edges_[next].firstLine / kLines;
    Admit(row, next);
    for (std::int64_t line = row * kLines; line < (row + 1) * kLines; ++line) {
      CrossLine(line);
      CoverLine(mask);
    }
    HandOutRow(static_cast<int>(row), sink);
  }
}

void Coverage::Admit(std::int64_t row, std::size_t& next) {
  const std::int64_t line = row * kLines;
  met_.erase(std::remove_if(met_.begin(), met_.end(),
                            [line](const Edge& edge) { return edge.endLine <= line; }),
             met_.end());
  for (; next < edges_.size() && edges_[next].firstLine < line + kLines; ++next) {
    met_.push_back(edges_[next]);
  }
}

// An edge is left of, right of or on the picture, line by line, and may be of any length.
void Coverage::CrossLine(std::int64_t line) {
  crossings_.clear();
  const double y = HeightOf(line);
  const double end = static_cast<double>(width_);
  for (const Edge& edge : met_) {
    if (line < edge.firstLine || line >= edge.endLine) continue;
    const double x = edge.upper.x + (y - edge.upper.y) * edge.perDown * edge.across;
    const double seen = x > 0 ? std::min(x, end) : 0;
    crossings_.push_back({static_cast<std::int64_t>(seen * kParts + 0.5), edge.turn});
  }
  std::sort(crossings_.begin(), crossings_.end(),
            [](const Crossing& a, const Crossing& b) { return a.x < b.x; });
}

void Coverage::CoverLine(int mask) {
  int turns = 0;
  std::int64_t from = 0;
  for (const Crossing& crossing : crossings_) {
    if ((turns & mask) == 0) from = crossing.x;
    turns += crossing.turn;
    if ((turns & mask) == 0) Cover(from, crossing.x);
  }
}

void Coverage::Cover(std::int64_t from, std::int64_t to) {
  if (from >= to) return;
  const auto first = static_cast<std::size_t>(from / kParts);
  const auto last = static_cast<std::size_t>(to / kParts);
  steps_[first] += kParts - from % kParts;
  steps_[first + 1] += from % kParts;
  steps_[last] -= kParts - to % kParts;
  steps_[last + 1] -= to % kParts;
  firstColumn_ = std::min(firstColumn_, from / kParts);
  endColumn_ = std::max(endColumn_, to / kParts + 2);
}

void Coverage::HandOutRow(int row, Sink& sink) {
  if (firstColumn_ >= endColumn_) return;
  constexpr std::int64_t kFull = std::int64_t{kLines} * kParts;
  weights_.clear();
  std::int64_t covered = 0;
  for (std::int64_t column = firstColumn_; column < endColumn_; ++column) {
    std::int64_t& step = steps_[static_cast<std::size_t>(column)];
    covered += step;
    step = 0;
    if (column < width_) {
      weights_.push_back(static_cast<unsigned char>((covered * 255 + kFull / 2) / kFull));
    }
  }
  sink.Add(row, static_cast<int>(firstColumn_), weights_);
  firstColumn_ = width_;
  endColumn_ = 0;
}
