#ifndef MASKS_RUN_TRIPLE_H_
#define MASKS_RUN_TRIPLE_H_

#include <cstddef>
#include <vector>

#include "VemRLC.h"
#include "VemTuple.h"
#include "values/VarStore.h"

/// Reads and writes runs in three arrays side by side: rows, first columns, last columns.
class RunTriple {
 public:
  RunTriple(VemVarArray& rows, VemVarArray& firstColumns, VemVarArray& lastColumns)
      : rows_(*rows.store_), firsts_(*firstColumns.store_), lasts_(*lastColumns.store_) {}

  /// The number of rows, which governs the other two arrays.
  std::size_t Count() const { return var_store::Count(rows_); }

  /// Run i; a column that an array is too short for is 0.
  Run At(std::size_t i) const {
    return {rows_.First[i].I(), i < var_store::Count(firsts_) ? firsts_.First[i].I() : 0,
            i < var_store::Count(lasts_) ? lasts_.First[i].I() : 0};
  }

  std::vector<int> Rows() const { return var_store::Integers(rows_, Count()); }
  /// As many as there are rows; a column that an array is too short for is 0.
  std::vector<int> FirstColumns() const { return var_store::Integers(firsts_, Count()); }
  std::vector<int> LastColumns() const { return var_store::Integers(lasts_, Count()); }

  /// Drops the runs behind the first `count`; the arrays' storage is kept for runs to come.
  void Truncate(std::size_t count) {
    var_store::Truncate(rows_, count);
    var_store::Truncate(firsts_, count);
    var_store::Truncate(lasts_, count);
  }
  void Clear() { Truncate(0); }

  /// Makes room for `count` runs in all.
  void Reserve(std::size_t count) {
    var_store::Reserve(rows_, count);
    var_store::Reserve(firsts_, count);
    var_store::Reserve(lasts_, count);
  }

  void Append(int row, int first, int last) {
    var_store::AppendInteger(rows_, row);
    var_store::AppendInteger(firsts_, first);
    var_store::AppendInteger(lasts_, last);
  }

  void Append(const Run* begin, const Run* end) {
    MakeRoom(static_cast<std::size_t>(end - begin));
    var_store::AppendRuns(rows_, firsts_, lasts_, begin, end);
  }

  void Append(const std::vector<Run>& runs) { Append(runs.data(), runs.data() + runs.size()); }

  /// The largest row and the largest last column, or 0 where that is larger.
  struct Extent {
    int row;
    int column;
  };

  /// Appends another's runs, for which there must be room, and measures them.
  Extent AppendMeasured(const RunTriple& other) {
    const int row = var_store::AppendMeasured(rows_, other.rows_);
    var_store::AppendCopies(firsts_, other.firsts_);
    return {row, var_store::AppendMeasured(lasts_, other.lasts_)};
  }

  /// Writes as many runs as there are rows, from the one at `position` on, which is there or the
  /// next to come; a column that a list is too short for is 0. There must be room for them.
  void Write(std::size_t position, const std::vector<int>& rows, const std::vector<int>& firsts,
             const std::vector<int>& lasts) {
    var_store::WriteIntegers(rows_, position, rows, rows.size());
    var_store::WriteIntegers(firsts_, position, firsts, rows.size());
    var_store::WriteIntegers(lasts_, position, lasts, rows.size());
  }

 private:
  void MakeRoom(std::size_t added) {
    if (var_store::Room(rows_) < added) var_store::MakeRoom(rows_, added);
    if (var_store::Room(firsts_) < added) var_store::MakeRoom(firsts_, added);
    if (var_store::Room(lasts_) < added) var_store::MakeRoom(lasts_, added);
  }

  VemVarStore& rows_;
  VemVarStore& firsts_;
  VemVarStore& lasts_;
};

#endif  // MASKS_RUN_TRIPLE_H_
