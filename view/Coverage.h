#ifndef VIEW_COVERAGE_H_
#define VIEW_COVERAGE_H_

#include <cstddef>
#include <cstdint>
#include <vector>

#include <opencv2/core.hpp>

#include "view/Edge.h"
#include "view/Rows.h"
#include "view/Shapes.h"

/// How much of each pixel closed chains cover, from 0 to 255. A pixel reaches half a pixel to each
/// side of its whole coordinates.
///
/// Edges begin and end at whole lines and parts, rounded one by one, so that the result is the same
/// on every machine. Rows that few edges meet are sorted line by line; of rows with many it is
/// noted which parts are covered, so that the work grows with the number of edges and no faster.
class Coverage {
 public:
  virtual ~Coverage() = default;

  /// Adds a chain of finite numbers of any size; its last point is joined to its first.
  virtual void Add(const Chain& chain) = 0;

  /// Hands out the rows that are covered, once.
  virtual void HandOut(RowSink& sink) = 0;
};

/// What an odd number of chains enclose.
class EvenOddCoverage final : public Coverage {
 public:
  explicit EvenOddCoverage(const cv::Size& picture);

  void Add(const Chain& chain) override;
  void HandOut(RowSink& sink) override;

 private:
  void Admit(std::int64_t row);
  void CoverSparse(std::int64_t row);
  void CoverPacked(std::int64_t row);

  std::int64_t width_;
  std::int64_t height_;
  std::vector<Edge> edges_;
  std::size_t next_ = 0;                 // Of the edges, the first that is not met yet.
  std::vector<Edge> met_;                // By the row at hand.
  std::vector<std::int64_t> crossings_;  // Of the line at hand.
  SparseRow sparse_;
  PackedRow packed_;
};

/// What any of many pieces covers. Each piece is convex.
class UnionCoverage final : public Coverage {
 public:
  explicit UnionCoverage(const cv::Size& picture);

  void Add(const Chain& piece) override;
  void HandOut(RowSink& sink) override;

 private:
  // The edges of a piece's one side, from the uppermost down: the one at hand and the end.
  struct Side {
    std::size_t edge;
    std::size_t end;
  };
  struct Piece {
    std::int64_t firstLine;
    std::int64_t endLine;
    std::uint32_t order;  // Among those that begin on one line.
    Side sides[2];
  };
  struct Interval {
    std::int64_t from;
    std::int64_t to;
  };

  bool AddSide(bool down, Side& side);
  void Admit(std::int64_t row);
  const Edge& EdgeAt(Side& side, std::int64_t line) const;
  Interval Across(Piece& piece, std::int64_t line) const;
  void CoverSparse(std::int64_t row);
  void CoverPacked(std::int64_t row);
  bool IsCovered(Piece& piece, std::int64_t first, std::int64_t end);

  std::int64_t width_;
  std::int64_t height_;
  std::vector<Edge> edges_;
  std::vector<Edge> added_;  // Those of one piece.
  std::vector<Piece> pieces_;
  std::size_t next_ = 0;             // Of the pieces, the first that is not met yet.
  std::vector<Piece> met_;           // By the row at hand.
  std::vector<Interval> intervals_;  // Of the line at hand.
  SparseRow sparse_;
  PackedRow packed_;
};

#endif  // VIEW_COVERAGE_H_
