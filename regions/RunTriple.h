#ifndef REGIONS_RUN_TRIPLE_H_
#define REGIONS_RUN_TRIPLE_H_

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

 private:
  std::vector<VemVar>& rows_;
  std::vector<VemVar>& firsts_;
  std::vector<VemVar>& lasts_;
};

#endif  // REGIONS_RUN_TRIPLE_H_
