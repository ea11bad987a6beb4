#ifndef VIEW_ROWS_H_
#define VIEW_ROWS_H_

#include <cstddef>
#include <cstdint>
#include <vector>

#include "view/Edge.h"

/// Takes the weights of a row's columns from `first` on, from 0 to 255.
class RowSink {
 public:
  virtual void Add(int row, int first, const std::vector<unsigned char>& weights) = 0;

 protected:
  ~RowSink() = default;
};

/// A row of pixels whose lines are covered by parts that do not overlap. All columns are told by
/// parts from the left side on.
class SparseRow {
 public:
  explicit SparseRow(std::int64_t width) : width_(width), firstColumn_(width) {}

  /// Covers a part of one line.
  void Cover(std::int64_t from, std::int64_t to);

  /// Hands out the row if any of it is covered, and empties it.
  void HandOut(std::int64_t row, RowSink& sink);

 private:
  std::int64_t width_;
  std::vector<std::int64_t> steps_;  // From column to column, in parts.
  std::int64_t firstColumn_;         // What is not 0 among the steps.
  std::int64_t endColumn_ = 0;
  std::vector<unsigned char> weights_;
};

/// A row of pixels in which every part of every line is noted, in whatever order it is covered. It
/// is used in one of two ways: by `Cover` or by `Toggle`.
class PackedRow {
 public:
  explicit PackedRow(std::int64_t width) : width_(static_cast<std::size_t>(width)) {}

  /// Covers a part of a line of this row, from 0 to 15.
  void Cover(int line, std::int64_t from, std::int64_t to);
  /// Covers what lies right of a place and was not covered, and uncovers what was.
  void Toggle(int line, std::int64_t from);

  /// Whether all of the columns are covered that the parts touch.
  bool IsCovered(std::int64_t from, std::int64_t to);

  /// Hands out the row if any of it is covered, and empties it.
  void HandOut(std::int64_t row, RowSink& sink);

 private:
  static constexpr std::size_t kWords = kParts / 64;  // To a line of a column.

  // The lines of a column, a bit for each.
  struct Column {
    std::uint16_t noted = 0;    // By the words.
    std::uint16_t full = 0;     // Covered as a whole.
    std::uint16_t toggled = 0;  // From this column on.
  };

  void Prepare();
  std::uint64_t* Words(std::size_t column, int line);
  std::size_t NextOpen(std::size_t column);
  void CoverColumn(std::size_t column, int line);
  void CoverParts(std::size_t column, int line, std::size_t from, std::size_t to);
  int CoveredParts(std::size_t column, unsigned toggled);

  std::size_t width_;
  std::vector<Column> columns_;        // One more than the row has.
  std::vector<std::uint64_t> words_;   // By column and line; all 0 where a line is not noted.
  std::vector<std::size_t> nextOpen_;  // The column itself, or one nearer to the next open one.
  std::size_t firstColumn_ = 0;        // What was touched.
  std::size_t endColumn_ = 0;
  std::vector<unsigned char> weights_;
};

#endif  // VIEW_ROWS_H_
