#include "coder/Components.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

#include "coder/RunScanner.h"

namespace {

/// Sets of runs. The root of a set is its first run, and no run's parent stands behind it.
class RunSets {
 public:
  void Grow(std::size_t count, std::size_t capacity) {
    const std::size_t old = parents_.size();
    parents_.reserve(capacity);
    parents_.resize(count);
    std::iota(parents_.begin() + static_cast<std::ptrdiff_t>(old), parents_.end(),
              static_cast<int>(old));
  }

  /// Unites the set of an earlier run with that of `run`. All that is united with one run is so
  /// before the next one is touched: its parent is always a root.
  void Unite(std::size_t earlier, std::size_t run) {
    const int rootA = Root(static_cast<int>(earlier));
    const int rootB = parents_[run];
    const int root = std::min(rootA, rootB);
    At(std::max(rootA, rootB)) = root;
    parents_[run] = root;
  }

  /// Numbers the sets in the order of their first runs and returns the number of each run's set.
  std::vector<int> TakeNumbers(int& count) {
    count = 0;
    for (std::size_t i = 0; i < parents_.size(); ++i) {
      const int parent = parents_[i];
      parents_[i] = static_cast<std::size_t>(parent) == i ? count++ : At(parent);
    }
    return std::move(parents_);
  }

 private:
  int& At(int run) { return parents_[static_cast<std::size_t>(run)]; }

  int Root(int run) {
    while (At(run) != run) run = At(run) = At(At(run));
    return run;
  }

  std::vector<int> parents_;
};

bool Touch(const Run& a, const Run& b) {
  return a.LastColumn + 1 >= b.FirstColumn && b.LastColumn + 1 >= a.FirstColumn;
}

// Unites the runs above, [above, row), with those of the row that touch them, also by a corner. The
// run that ends first touches nothing further, so it is left behind; which one that is goes by no
// branch, since it can't be foretold.
void UniteRows(const std::vector<Run>& runs, std::size_t above, std::size_t row, RunSets& sets) {
  const std::size_t endAbove = row;
  while (above < endAbove && row < runs.size()) {
    if (Touch(runs[above], runs[row])) sets.Unite(above, row);
    const std::size_t step = runs[above].LastColumn < runs[row].LastColumn ? 1 : 0;
    above += step;
    row += 1 - step;
  }
}

// Where each set starts when the runs are sorted by set, and a closing entry.
std::vector<int> CountStarts(const std::vector<int>& numbers, int count) {
  std::vector<int> starts(static_cast<std::size_t>(count) + 1);
  for (const int number : numbers) ++starts[static_cast<std::size_t>(number) + 1];
  std::partial_sum(starts.begin(), starts.end(), starts.begin());
  return starts;
}

}  // namespace

int FindComponents(const cv::Mat& raster, std::vector<Run>& runs, std::vector<int>& starts) {
  std::vector<Run> scanned;
  RunSets sets;
  for (RunScanner scanner(raster); scanner.NextRow(scanned);) {
    sets.Grow(scanned.size(), scanned.capacity());
    UniteRows(scanned, scanner.AboveBegin(), scanner.RowBegin(), sets);
  }
  if (scanned.empty()) return 0;

  int count = 0;
  const std::vector<int> numbers = sets.TakeNumbers(count);
  starts = CountStarts(numbers, count);
  std::vector<int> next(starts);
  runs.resize(scanned.size());
  for (std::size_t i = 0; i < scanned.size(); ++i) {
    int& place = next[static_cast<std::size_t>(numbers[i])];
    runs[static_cast<std::size_t>(place++)] = scanned[i];
  }
  return count;
}
