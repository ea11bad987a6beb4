#include "masks/RunCollector.h"

#include <algorithm>
#include <cstddef>

namespace {

constexpr auto kStandsBefore = [](const Run& a, const Run& b) {
  return a.Row < b.Row || (a.Row == b.Row && a.FirstColumn < b.FirstColumn);
};

}  // namespace

// Rows are few beside the runs of a shape, so they are counted; sorting is for the rest.
void RunCollector::Sort() {
  if (std::is_sorted(runs_.begin(), runs_.end(), kStandsBefore)) return;
  const auto [top, bottom] = std::minmax_element(
      runs_.begin(), runs_.end(), [](const Run& a, const Run& b) { return a.Row < b.Row; });
  const int firstRow = top->Row;
  const std::size_t rows = static_cast<std::size_t>(bottom->Row - firstRow) + 1;
  if (rows > 4 * runs_.size()) {
    std::sort(runs_.begin(), runs_.end(), kStandsBefore);
    return;
  }
  const auto rowOf = [&](const Run& run) { return static_cast<std::size_t>(run.Row - firstRow); };
  std::vector<std::size_t> starts(rows + 1);
  for (const Run& run : runs_) ++starts[rowOf(run) + 1];
  for (std::size_t row = 0; row < rows; ++row) starts[row + 1] += starts[row];
  std::vector<std::size_t> next(starts);
  std::vector<Run> sorted(runs_.size());
  for (const Run& run : runs_) sorted[next[rowOf(run)]++] = run;
  for (std::size_t row = 0; row < rows; ++row) {
    std::sort(sorted.begin() + static_cast<std::ptrdiff_t>(starts[row]),
              sorted.begin() + static_cast<std::ptrdiff_t>(starts[row + 1]), kStandsBefore);
  }
  runs_.swap(sorted);
}

void RunCollector::HandOut(RunSink& sink) {
  if (runs_.empty()) return;
  Sort();
  // The runs of a row are united in place.
  Run* last = runs_.data();
  for (const Run& run : runs_) {
    if (run.Row == last->Row && run.FirstColumn <= std::int64_t{last->LastColumn} + 1) {
      last->LastColumn = std::max(last->LastColumn, run.LastColumn);
    } else {
      *++last = run;
    }
  }
  sink.Add(runs_.data(), last + 1);
}
