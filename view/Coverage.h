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

/// Goes down the rows with the items that each of them meets. An item has a first and an end line,
/// and `IsBefore` orders them by the first.
template <typename Item>
class SweptCoverage : public Coverage {
 public:
  explicit SweptCoverage(const cv::Size& picture)
      : width_(picture.width), height_(picture.height), sparse_(width_), packed_(width_) {}

  void HandOut(RowSink& sink) final;

 protected:
  /// Covers a row by the items that it meets: sorted on each line, or noted part by part.
  virtual void CoverSparse(std::int64_t row) = 0;
  virtual void CoverPacked(std::int64_t row) = 0;

  std::int64_t width_;
  std::int64_t height_;
  std::vector<Item> items_;
  std::vector<Item> met_;  // By the row at hand.
  SparseRow sparse_;
  PackedRow packed_;

 private:
  void Admit(std::int64_t row);

  std::size_t next_ = 0;  // Of the items, the first that is not met yet.
};

/// What an odd number of chains enclose.
class EvenOddCoverage final : public SweptCoverage<Edge> {
 public:
  using SweptCoverage::SweptCoverage;

  void Add(const Chain& chain) override;

 private:
  void CoverSparse(std::int64_t row) override;
  void CoverPacked(std::int64_t row) override;

  std::vector<std::int64_t> crossings_;  // Of the line at hand.
};

/// The edges of a convex piece, left and right or the other way round.
struct ConvexPiece {
  // The edges of one side, from the uppermost down: the one at hand and the end.
  struct Side {
    std::size_t edge;
    std::size_t end;
  };

  std::int64_t firstLine;
  std::int64_t endLine;
  std::uint32_t order;  // Among those that begin on one line.
  Side sides[2];
};

/// What any of many pieces covers. Each piece is convex.
class UnionCoverage final : public SweptCoverage<ConvexPiece> {
 public:
  using SweptCoverage::SweptCoverage;

  void Add(const Chain& piece) override;

 private:
  using Side = ConvexPiece::Side;
  struct Interval {
    std::int64_t from;
    std::int64_t to;
  };

  bool AddSide(bool down, Side& side);
  const Edge& EdgeAt(Side& side, std::int64_t line) const;
  Interval Across(ConvexPiece& piece, std::int64_t line) const;
  void CoverSparse(std::int64_t row) override;
  void CoverPacked(std::int64_t row) override;
  bool IsCovered(ConvexPiece& piece, std::int64_t first, std::int64_t end);

  std::vector<Edge> edges_;          // Of all pieces.
  std::vector<Edge> added_;          // Those of one piece.
  std::vector<Interval> intervals_;  // Of the line at hand.
};

extern template class SweptCoverage<Edge>;
extern template class SweptCoverage<ConvexPiece>;

#endif  // VIEW_COVERAGE_H_
