#include "coder/Components.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <iterator>
#include <stdexcept>
#include <utility>

#include "coder/RunBlock.h"
#include "coder/RunScanner.h"
#include "coder/Scratch.h"

namespace {

/// Sets of runs that turn out to be one component, each told by a label. Labels are given in the
/// order of first runs, and the root of united labels is the first of them.
class Labels {
 public:
  /// Makes room for `count` more labels.
  void Reserve(std::size_t count) {
    parents_.Grow(count_, count_ + count);
    runs_.Grow(count_, count_ + count);
  }

  /// Adds a label that has one run.
  int Add() {
    parents_[count_] = static_cast<int>(count_);
    runs_[count_] = 1;
    return static_cast<int>(count_++);
  }

  /// The root of a label, or a new label that has no run yet, without a branch between them: a
  /// label is not looked at where a new one is wanted, and the place of a new one is written in any
  /// case. Mostly a label's parent is its root.
  int RootOrNew(int label, bool isNew) {
    const int added = static_cast<int>(count_);
    parents_[count_] = added;
    runs_[count_] = 0;
    count_ += static_cast<std::size_t>(isNew);
    label = Parent(isNew ? added : label);
    return Parent(label) == label ? label : Root(label);
  }

  int Root(int label) {
    while (Parent(label) != label) label = Parent(label) = Parent(Parent(label));
    return label;
  }

  /// Unites two roots. Returns the root of both.
  int Unite(int a, int b) {
    const int root = std::min(a, b);
    Parent(std::max(a, b)) = root;
    return root;
  }

  void AddRuns(int label, int count) { RunsOf(label) += count; }

  /// Turns labels into the numbers of components, counted in the order of their first runs, and the
  /// runs of labels into those of components. Returns how many there are.
  int Number() {
    int components = 0;
    for (std::size_t i = 0; i < count_; ++i) {
      const int runs = runs_[i];
      const int parent = parents_[i];
      if (static_cast<std::size_t>(parent) == i) {
        RunsOf(components) = runs;
        parents_[i] = components++;
      } else {
        parents_[i] = Parent(parent);
        AddRuns(parents_[i], runs);
      }
    }
    return components;
  }

  int NumberOf(int label) { return Parent(label); }

  /// The runs of a label, or of a component once there are numbers.
  int& RunsOf(int label) { return runs_[static_cast<std::size_t>(label)]; }

 private:
  int& Parent(int label) { return parents_[static_cast<std::size_t>(label)]; }

  Scratch<int> parents_;
  Scratch<int> runs_;
  std::size_t count_ = 0;
};

// Lengthens the list to `count` runs. Copying blank blocks is faster than `resize`, which writes
// number by number.
void Lengthen(std::vector<Run>& runs, std::size_t count) {
  static constexpr Run kBlank[512] = {};
  runs.reserve(count);
  while (runs.size() < count) {
    runs.insert(runs.end(), kBlank, kBlank + std::min(count - runs.size(), std::size(kBlank)));
  }
}

/// Tells the place of each component's next run.
class Places {
 public:
  explicit Places(int* next) : next_(next) {}
  int Take(int number) { return next_[number]++; }

 private:
  int* const next_;
};

/// The same, faster where consecutive runs mostly belong to the same component: its place is kept
/// out of the list meanwhile.
class KeptPlaces {
 public:
  explicit KeptPlaces(int* next) : next_(next), place_(next[0]) {}
  int Take(int number) {
    if (number != last_) {
      next_[last_] = place_;
      last_ = number;
      place_ = next_[number];
    }
    return place_++;
  }

 private:
  int* const next_;
  int last_ = 0;
  int place_;
};

/// The components of a raster, while its rows are read.
///
/// What is told of a run stands in its slot: its edges and its label. Behind the last run of a row,
/// and before those of the first, there is a slot with edges that no run reaches.
class Labeller {
 public:
  explicit Labeller(const cv::Mat& raster) : scanner_(raster) {}

  // Labels the runs of all rows.
  void Label() {
    if (scanner_.Rows() == 0) return;
    EdgeRows found;
    Reserve(0);
    Close(slots_);
    labels_[slots_++] = kNoLabel;
    for (int row = 0; row < scanner_.Rows(); row += found.count) {
      Reserve(row);
      found.begin = EdgesOf(slots_);
      found.end = EdgesOf(capacity_);
      scanner_.FindEdges(found);
      for (int i = 0; i < found.count; ++i) {
        const std::size_t begin = slots_;
        slots_ = static_cast<std::size_t>(found.ends[i] - EdgesOf(0)) / 2;
        if (found.likeAbove[i] || MatchesAbove(begin)) {
          LabelAsAbove(begin);
          ++repeats_;
        } else {
          CountRepeats();
          LabelRow(begin);
        }
        labels_[slots_++] = kNoLabel;
        above_ = begin;
      }
    }
    CountRepeats();
  }

  int TakeRuns(std::vector<Run>& runs, std::vector<int>& starts) {
    const int components = sets_.Number();
    if (components == 0) return 0;
    starts.reserve(static_cast<std::size_t>(components) + 1);
    starts.push_back(0);
    if (components == 1) {
      TakeInOrder(runs);
      starts.push_back(static_cast<int>(runs.size()));
    } else {
      TakeByNumber(runs, starts, components);
    }
    return components;
  }

 private:
  static constexpr std::size_t kFirstSlots = 1024;
  static constexpr std::size_t kManyRuns = 16;  // In a row; fewer pass faster with branches.
  static constexpr int kNoLabel = -1;           // Of the slot behind a row.

  Edge* EdgesOf(std::size_t slot) { return edges_.Data() + 2 * slot; }

  void Close(std::size_t slot) { EdgesOf(slot)[0] = EdgesOf(slot)[1] = kNoEdge; }

  // Makes room for the longest row there can be, or for what there will be when the rows to come
  // are like those read and half as many again, which costs nothing until they are there: each move
  // to larger blocks touches all of them again.
  void Reserve(int row) {
    const std::size_t needed = slots_ + EdgeRoom(scanner_.Columns()) / 2 + 1;
    if (needed <= capacity_) return;
    if (needed > INT_MAX) throw std::length_error("too many runs to label");
    const std::size_t expected = row == 0 ? 0
                                          : slots_ * static_cast<std::size_t>(scanner_.Rows()) /
                                                static_cast<std::size_t>(row);
    capacity_ = std::min<std::size_t>(
        std::max(expected + expected / 2, slots_) + needed + kFirstSlots, INT_MAX);
    labels_.Grow(slots_, capacity_);
    edges_.Grow(2 * slots_, 2 * capacity_);
    sets_.Reserve(capacity_);
    if (row > 0) scanner_.MoveAbove(EdgesOf(above_), EdgesOf(slots_ - 1));
  }

  // Counts the runs of the rows that were labelled as the one above them, for all such rows in
  // turn.
  void CountRepeats() {
    if (repeats_ == 0) return;
    for (const int* label = &labels_[above_]; *label != kNoLabel; ++label) {
      sets_.AddRuns(*label, repeats_);
    }
    repeats_ = 0;
  }

  // Whether each run of a row touches the run above that has its place in the row, and no other.
  bool MatchesAbove(std::size_t begin) {
    if (slots_ - begin != begin - above_ - 1) return false;
    const Edge* above = EdgesOf(above_);
    const Edge* const end = EdgesOf(slots_);
    for (const Edge* run = EdgesOf(begin); run != end; run += 2, above += 2) {
      if ((above[0] > run[1]) | (run[0] > above[1]) | (above[2] <= run[1]) | (run[2] <= above[1])) {
        return false;
      }
    }
    return true;
  }

  // Each run of the row touches the one above it, and no other. A label that was united with
  // another since serves as well as its root.
  void LabelAsAbove(std::size_t begin) {
    std::copy_n(&labels_[above_], slots_ - begin, &labels_[begin]);
  }

  // Runs touch, also by a corner, unless one ends before the other begins.
  void LabelRow(std::size_t begin) {
    if (slots_ - begin < kManyRuns) {
      LabelFewRuns(begin);
    } else {
      LabelManyRuns(begin);
    }
  }

  void LabelFewRuns(std::size_t begin) {
    int* label = &labels_[begin];
    const int* aboveLabel = &labels_[above_];
    const Edge* above = EdgesOf(above_);
    const Edge* const end = EdgesOf(slots_);
    for (const Edge* run = EdgesOf(begin); run != end; run += 2) {
      while (above[1] < run[0]) {
        above += 2;
        ++aboveLabel;
      }
      if (above[0] > run[1]) {
        *label++ = sets_.Add();
        continue;
      }
      int root = sets_.Root(*aboveLabel);
      while (above[2] <= run[1]) {
        above += 2;
        root = sets_.Unite(root, sets_.Root(*++aboveLabel));
      }
      sets_.AddRuns(root, 1);
      *label++ = root;
    }
  }

  // Where the runs of two full rows meet can't be foretold, so up to two runs above are passed
  // over, and a label is found or added, without a branch. Behind the slot that closes the row
  // above stands the first run of this row: it is read without effect.
  void LabelManyRuns(std::size_t begin) {
    int* label = &labels_[begin];
    const int* const aboveLabels = &labels_[above_];
    const Edge* const above = EdgesOf(above_);
    const Edge* const end = EdgesOf(slots_);
    std::size_t upper = 0;
    for (const Edge* run = EdgesOf(begin); run != end; run += 2) {
      const Edge first = run[0];
      const Edge last = run[1];
      const std::size_t isPast = above[2 * upper + 1] < first ? 1 : 0;
      const std::size_t isNextPast = above[2 * upper + 3] < first ? 1 : 0;
      upper += isPast + (isPast & isNextPast);
      while (above[2 * upper + 1] < first) ++upper;
      const bool touches = above[2 * upper] <= last;
      int root = sets_.RootOrNew(aboveLabels[upper], !touches);
      const bool isFollowed = above[2 * upper + 2] <= last;
      if (touches & isFollowed) {
        do {
          root = sets_.Unite(root, sets_.Root(aboveLabels[++upper]));
        } while (above[2 * upper + 2] <= last);
      }
      sets_.AddRuns(root, 1);
      *label++ = root;
    }
  }

  void TakeInOrder(std::vector<Run>& runs) {
    runs.reserve(slots_ - static_cast<std::size_t>(scanner_.Rows()) - 1);
    RunBlock block(scanner_.Kernels(), scanner_.Rows(), runs);
    const Edge* edges = EdgesOf(1);
    for (int row = 0; row < scanner_.Rows(); ++row) {
      const Edge* end = edges;
      while (*end != kNoEdge) end += 2;
      block.Add(edges, static_cast<std::size_t>(end - edges) / 2, row);
      edges = end + 2;
    }
    block.Finish();
  }

  void TakeByNumber(std::vector<Run>& runs, std::vector<int>& starts, int components) {
    int sum = 0;
    for (int number = 0; number < components; ++number) {
      sum += std::exchange(sets_.RunsOf(number), sum);
      starts.push_back(sum);
    }
    Lengthen(runs, static_cast<std::size_t>(sum));
    if (ChangesOften()) {
      StoreByNumber(Places(&sets_.RunsOf(0)), runs.data());
    } else {
      StoreByNumber(KeptPlaces(&sets_.RunsOf(0)), runs.data());
    }
  }

  // Whether consecutive runs often belong to different components, in rasters whose rows have many
  // runs, where it can't be foretold. A sixteenth of the runs is looked at.
  bool ChangesOften() {
    constexpr std::size_t kSample = 64;
    if (slots_ / kManyRuns < static_cast<std::size_t>(scanner_.Rows())) return false;
    std::size_t changes = 0;
    std::size_t pairs = 0;
    for (std::size_t begin = 1; begin + kSample < slots_; begin += 16 * kSample) {
      for (const int* label = &labels_[begin]; label != &labels_[begin + kSample]; ++label) {
        if (label[0] == kNoLabel || label[1] == kNoLabel) continue;
        changes += sets_.NumberOf(label[0]) != sets_.NumberOf(label[1]) ? 1 : 0;
        ++pairs;
      }
    }
    return changes > pairs / 4;
  }

  template <typename NextPlaces>
  void StoreByNumber(NextPlaces places, Run* runs) {
    const Edge* edges = EdgesOf(1);
    const int* const end = &labels_[slots_];
    int row = 0;
    for (const int* label = &labels_[1]; label != end; ++label, edges += 2) {
      if (*label == kNoLabel) {
        ++row;
        continue;
      }
      const int place = places.Take(sets_.NumberOf(*label));
      runs[place] = {row, static_cast<int>(edges[0]), static_cast<int>(edges[1] - 1)};
    }
  }

  RunScanner scanner_;
  Labels sets_;
  std::size_t slots_ = 0;
  std::size_t above_ = 0;  // The first slot of the row above.
  int repeats_ = 0;  // How many rows, ending with that one, were labelled as the one above them.
  std::size_t capacity_ = 0;
  Scratch<int> labels_;
  Scratch<Edge> edges_;
};

}  // namespace

int FindComponents(const cv::Mat& raster, std::vector<Run>& runs, std::vector<int>& starts) {
  Labeller labeller(raster);
  labeller.Label();
  return labeller.TakeRuns(runs, starts);
}
