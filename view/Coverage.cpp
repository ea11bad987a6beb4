#include "view/Coverage.h"

#include <algorithm>
#include <iterator>

namespace {

// Up to as many edges or pieces are sorted on each line of a row.
constexpr std::size_t kFew = 256;

bool IsBefore(const Edge& a, const Edge& b) { return a.firstLine < b.firstLine; }
bool IsBefore(const ConvexPiece& a, const ConvexPiece& b) {
  return a.firstLine != b.firstLine ? a.firstLine < b.firstLine : a.order < b.order;
}

}  // namespace

template <typename Item>
void SweptCoverage<Item>::HandOut(RowSink& sink) {
  std::sort(items_.begin(), items_.end(),
            [](const Item& a, const Item& b) { return IsBefore(a, b); });
  for (std::int64_t row = 0; row < height_ && (next_ < items_.size() || !met_.empty()); ++row) {
    if (met_.empty()) row = items_[next_].firstLine / kLines;
    Admit(row);
    if (met_.size() <= kFew) {
      CoverSparse(row);
      sparse_.HandOut(row, sink);
    } else {
      CoverPacked(row);
      packed_.HandOut(row, sink);
    }
  }
}

template <typename Item>
void SweptCoverage<Item>::Admit(std::int64_t row) {
  const std::int64_t first = row * kLines, end = first + kLines;
  met_.erase(std::remove_if(met_.begin(), met_.end(),
                            [first](const Item& item) { return item.endLine <= first; }),
             met_.end());
  for (; next_ < items_.size() && items_[next_].firstLine < end; ++next_) {
    met_.push_back(items_[next_]);
  }
}

void EvenOddCoverage::Add(const Chain& chain) {
  for (std::size_t i = 0; i < chain.size(); ++i) {
    AddEdge(items_, chain[i], chain[(i + 1) % chain.size()], height_);
  }
}

void EvenOddCoverage::CoverSparse(std::int64_t row) {
  for (std::int64_t line = row * kLines; line < (row + 1) * kLines; ++line) {
    crossings_.clear();
    for (const Edge& edge : met_) {
      if (line >= edge.firstLine && line < edge.endLine)
        crossings_.push_back(edge.At(line, width_));
    }
    std::sort(crossings_.begin(), crossings_.end());
    for (std::size_t i = 1; i < crossings_.size(); i += 2) {
      sparse_.Cover(crossings_[i - 1], crossings_[i]);
    }
  }
}

void EvenOddCoverage::CoverPacked(std::int64_t row) {
  for (const Edge& edge : met_) {
    const std::int64_t first = std::max(edge.firstLine, row * kLines);
    const std::int64_t end = std::min(edge.endLine, (row + 1) * kLines);
    for (std::int64_t line = first; line < end; ++line) {
      packed_.Toggle(static_cast<int>(line % kLines), edge.At(line, width_));
    }
  }
}

// The edges of a convex chain that lead down are its one side, those that lead up the other.
void UnionCoverage::Add(const Chain& piece) {
  const auto isLeft = [](const cv::Point2d& p) { return p.x < -1; };
  const auto isRight = [this](const cv::Point2d& p) { return p.x > static_cast<double>(width_); };
  if (std::all_of(piece.begin(), piece.end(), isLeft)) return;
  if (std::all_of(piece.begin(), piece.end(), isRight)) return;
  added_.clear();
  for (std::size_t i = 0; i < piece.size(); ++i) {
    AddEdge(added_, piece[i], piece[(i + 1) % piece.size()], height_);
  }
  ConvexPiece added = {};
  if (!AddSide(true, added.sides[0]) || !AddSide(false, added.sides[1])) return;
  added.firstLine = edges_[added.sides[0].edge].firstLine;
  added.endLine = edges_[added.sides[0].end - 1].endLine;
  // Pieces that follow each other often lie side by side. Scattered, a few of them cover all of a
  // row.
  constexpr std::uint32_t kScatter = 2654435761;
  added.order = static_cast<std::uint32_t>(items_.size()) * kScatter;
  items_.push_back(added);
}

bool UnionCoverage::AddSide(bool down, Side& side) {
  side.edge = edges_.size();
  std::copy_if(added_.begin(), added_.end(), std::back_inserter(edges_),
               [down](const Edge& edge) { return edge.down == down; });
  side.end = edges_.size();
  std::sort(edges_.begin() + static_cast<std::ptrdiff_t>(side.edge), edges_.end(),
            [](const Edge& a, const Edge& b) { return IsBefore(a, b); });
  return side.edge < side.end;
}

// The edge at a line, which never lies above one that was asked for before.
const Edge& UnionCoverage::EdgeAt(Side& side, std::int64_t line) const {
  while (side.edge + 1 < side.end && edges_[side.edge].endLine <= line) ++side.edge;
  return edges_[side.edge];
}

UnionCoverage::Interval UnionCoverage::Across(ConvexPiece& piece, std::int64_t line) const {
  const std::int64_t a = EdgeAt(piece.sides[0], line).At(line, width_);
  const std::int64_t b = EdgeAt(piece.sides[1], line).At(line, width_);
  return {std::min(a, b), std::max(a, b)};
}

void UnionCoverage::CoverSparse(std::int64_t row) {
  for (std::int64_t line = row * kLines; line < (row + 1) * kLines; ++line) {
    intervals_.clear();
    for (ConvexPiece& piece : met_) {
      if (line >= piece.firstLine && line < piece.endLine) {
        intervals_.push_back(Across(piece, line));
      }
    }
    std::sort(intervals_.begin(), intervals_.end(),
              [](const Interval& a, const Interval& b) { return a.from < b.from; });
    std::int64_t covered = 0;
    for (const Interval& interval : intervals_) {
      sparse_.Cover(std::max(interval.from, covered), interval.to);
      covered = std::max(covered, interval.to);
    }
  }
}

void UnionCoverage::CoverPacked(std::int64_t row) {
  for (ConvexPiece& piece : met_) {
    if (packed_.IsCovered(0, width_ * kParts)) return;
    std::int64_t line = std::max(piece.firstLine, row * kLines);
    const std::int64_t end = std::min(piece.endLine, (row + 1) * kLines);
    if (line >= end || IsCovered(piece, line, end)) continue;
    while (line < end) {
      const Edge& a = EdgeAt(piece.sides[0], line);
      const Edge& b = EdgeAt(piece.sides[1], line);
      const std::int64_t corner = std::max(std::min(a.endLine, b.endLine), line + 1);
      for (; line < std::min(corner, end); ++line) {
        const std::int64_t atA = a.At(line, width_), atB = b.At(line, width_);
        packed_.Cover(static_cast<int>(line % kLines), std::min(atA, atB), std::max(atA, atB));
      }
    }
  }
}

// Whether other pieces have covered all that a piece can cover of a row.
bool UnionCoverage::IsCovered(ConvexPiece& piece, std::int64_t first, std::int64_t end) {
  Interval reach = {width_ * kParts, 0};
  for (Side& side : piece.sides) {
    EdgeAt(side, first);
    for (std::size_t i = side.edge; i < side.end && edges_[i].firstLine < end; ++i) {
      const Edge& edge = edges_[i];
      const std::int64_t above = edge.At(std::max(edge.firstLine, first), width_);
      const std::int64_t below = edge.At(std::min(edge.endLine, end) - 1, width_);
      reach.from = std::min({reach.from, above, below});
      reach.to = std::max({reach.to, above, below});
    }
  }
  return packed_.IsCovered(reach.from, reach.to);
}

template class SweptCoverage<Edge>;
template class SweptCoverage<ConvexPiece>;
