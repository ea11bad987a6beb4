#ifndef VEM_VEM_RUNS_H_
#define VEM_VEM_RUNS_H_

#include <algorithm>

#include "VemTuple.h"
#include "VemVar.h"

/// How several companions read runs that stand in three lists side by side.

/// @cond
namespace vem {
namespace detail {

// Of lists of unequal length the shortest counts.
inline int run_count(const VemVarArray& rows, const VemVarArray& first_columns,
                     const VemVarArray& last_columns) {
  return std::min({rows.Length(), first_columns.Length(), last_columns.Length()});
}

// Calls `put` with row, first and last column of each run.
template <class Put>
void for_each_run(const VemVarArray& rows, const VemVarArray& first_columns,
                  const VemVarArray& last_columns, Put put) {
  // Read in place, which the const operator[] does not.
  VemVarArray& r = const_cast<VemVarArray&>(rows);
  VemVarArray& first = const_cast<VemVarArray&>(first_columns);
  VemVarArray& last = const_cast<VemVarArray&>(last_columns);
  const int count = run_count(rows, first_columns, last_columns);
  for (int i = 0; i < count; ++i) put(r[i].I(), first[i].I(), last[i].I());
}

// Hands on what of a run lies on a canvas.
template <class Put>
class clipped {
 public:
  clipped(int width, int height, Put put) : width_(width), height_(height), put_(put) {}
  void operator()(int row, int first, int last) const {
    if (row < 0 || row >= height_) return;
    first = std::max(first, 0);
    last = std::min(last, width_ - 1);
    if (first <= last) put_(row, first, last);
  }

 private:
  int width_;
  int height_;
  Put put_;
};

template <class Put>
clipped<Put> clip(int width, int height, Put put) {
  return clipped<Put>(width, height, put);
}

}  // namespace detail
}  // namespace vem
/// @endcond

#endif  // VEM_VEM_RUNS_H_
