#ifndef MASKS_RUN_TRIPLE_H_
#define MASKS_RUN_TRIPLE_H_

#include <algorithm>
#include <cstddef>
#include <vector>

#include "VemRLC.h"
#include "VemTuple.h"

/// Reads and writes runs in three arrays side by side: rows, first columns, last columns.
class RunTriple {
 public:
  RunTriple(VemVarArray& rows, VemVarArray& firstColumns, VemVarArray& lastColumns)
      : rows_(*rows.store_), firsts_(*firstColumns.store_), lasts_(*lastColumns.store_) {}

  /// The number of rows, which governs the other two arrays.
  std::size_t Count() const { return rows_.size(); }

  /// Run i; a column that an array is too short for is 0.
  Run At(std::size_t i) const {
    return {rows_[i].I(), i < firsts_.size() ? firsts_[i].I() : 0,
            i < lasts_.size() ? lasts_[i].I() : 0};
  }

  std::vector<int> Rows() const { return Integers(rows_, Count()); }
  /// As many as there are rows; a column that an array is too short for is 0.
  std::vector<int> FirstColumns() const { return Integers(firsts_, Count()); }
  std::vector<int> LastColumns() const { return Integers(lasts_, Count()); }

  /// Empties the arrays; their storage is kept for the runs to come.
  void Clear() {
    rows_.clear();
    firsts_.clear();
    lasts_.clear();
  }

  /// Makes room for `count` runs in all.
  void Reserve(std::size_t count) {
    rows_.reserve(count);
    firsts_.reserve(count);
    lasts_.reserve(count);
  }

  void Append(int row, int first, int last) {
    rows_.emplace_back(row);
    firsts_.emplace_back(first);
    lasts_.emplace_back(last);
  }

  void Append(const std::vector<Run>& runs) {
    Reserve(Count() + runs.size());
    for (const Run& run : runs) Append(run.Row, run.FirstColumn, run.LastColumn);
  }

  /// Appends as many runs as there are rows; a column that a list is too short for is 0.
  void Append(const std::vector<int>& rows, const std::vector<int>& firsts,
              const std::vector<int>& lasts) {
    AppendColumn(rows_, rows, rows.size());
    AppendColumn(firsts_, firsts, rows.size());
    AppendColumn(lasts_, lasts, rows.size());
  }

 private:
  static std::vector<int> Integers(const std::vector<VemVar>& column, std::size_t count) {
    std::vector<int> list(count);
    const std::size_t given = std::min(column.size(), count);
    for (std::size_t i = 0; i < given; ++i) list[i] = column[i].I();
    return list;
  }

  static void AppendColumn(std::vector<VemVar>& column, const std::vector<int>& list,
                           std::size_t count) {
    const std::size_t end = column.size() + count;
    const std::size_t given = std::min(list.size(), count);
    column.insert(column.end(), list.begin(), list.begin() + static_cast<std::ptrdiff_t>(given));
    column.resize(end, 0);
  }

  std::vector<VemVar>& rows_;
  std::vector<VemVar>& firsts_;
  std::vector<VemVar>& lasts_;
};

#endif  // MASKS_RUN_TRIPLE_H_
