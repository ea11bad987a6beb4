#include "masks/SparseFill.h"

#include <algorithm>
#include <climits>
#include <cstddef>

#include "masks/EdgeWalk.h"

namespace {

/// A run of columns within a row, both ends included.
struct Span {
  std::int64_t first;
  std::int64_t last;
};

/// What a chain of edges has in each row, from `top` to the row before `end`, and what it has in
/// the row at hand.
template <typename T>
struct Chain {
  int top;
  int end;
  std::size_t next;  ///< Where the chain's list goes on below the row at hand.
  T now;
};

/// Chains that wait, the next at the end, and those at hand.
template <typename T>
struct Schedule {
  // Makes room for a chain, filled with `value`; returns where its list starts.
  T* Add(int top, int end, const T& value) {
    const std::size_t start = lists.size();
    waiting.push_back({top, end, start, value});
    lists.resize(start + static_cast<std::size_t>(end - top), value);
    return lists.data() + start;
  }

  void Begin() {
    std::sort(waiting.begin(), waiting.end(),
              [](const Chain<T>& a, const Chain<T>& b) { return a.top > b.top; });
  }

  int NextTop() const { return waiting.empty() ? INT_MAX : waiting.back().top; }

  void Admit(int row) {
    for (; !waiting.empty() && waiting.back().top == row; waiting.pop_back()) {
      active.push_back(waiting.back());
    }
  }

  void Retire(int row) {
    active.erase(std::remove_if(active.begin(), active.end(),
                                [&](const Chain<T>& chain) { return chain.end <= row; }),
                 active.end());
  }

  /// The first row in which those at hand are no longer the same.
  int Stop() const {
    int stop = NextTop();
    for (const Chain<T>& chain : active) stop = std::min(stop, chain.end);
    return stop;
  }

  // Goes to the next row. The chains' order changes little from row to row; where it does, sorting
  // anew is cheaper.
  void Advance() {
    const T* const list = lists.data();
    for (Chain<T>& chain : active) chain.now = list[chain.next++];
    std::size_t moves = 0;
    for (std::size_t i = 1; i < active.size(); ++i) {
      if (!StandsBefore(active[i], active[i - 1])) continue;
      const Chain<T> chain = active[i];
      std::size_t k = i;
      for (; k > 0 && StandsBefore(chain, active[k - 1]); --k) active[k] = active[k - 1];
      active[k] = chain;
      moves += i - k;
      if (moves > 16 * active.size()) return std::sort(active.begin(), active.end(), StandsBefore);
    }
  }

  static bool StandsBefore(const Chain<T>& a, const Chain<T>& b) { return a.now < b.now; }

  std::vector<T> lists;
  std::vector<Chain<T>> waiting;
  std::vector<Chain<T>> active;
};

/// The pixels of a border within a row, both ends included.
struct Stretch {
  bool operator<(const Stretch& other) const { return first < other.first; }

  int first;
  int last;
};

class SparseFill {
 public:
  SparseFill(const FillArea& area, RunSink& sink) : area_(area), sink_(sink) {}

  void Fill(const FillContours& contours, int firstRow, int endRow) {
    area_.firstRow = firstRow;
    area_.endRow = endRow;
    contours.ForEach([&](const cv::Point* first, const cv::Point* end) {
      AddCrossings(first, end);
      AddBorders(first, end);
    });
    crossings_.Begin();
    borders_.Begin();
    for (int row = NextTop(); row != INT_MAX;) {
      crossings_.Admit(row);
      borders_.Admit(row);
      const int stop = std::min(crossings_.Stop(), borders_.Stop());
      PrepareRow();
      for (; row < stop; ++row) FillRow(row);
      crossings_.Retire(row);
      borders_.Retire(row);
      if (crossings_.active.empty() && borders_.active.empty()) row = NextTop();
    }
    crossings_.lists.clear();
    borders_.lists.clear();
  }

 private:
  // Edges that go on downward, or on upward, cross each row once.
  void AddCrossings(const cv::Point* first, const cv::Point* end) {
    for (const cv::Point* from = first; from + 1 != end;) {
      const cv::Point* to = from + 1;
      int sense = Sense(from->y, to->y);
      for (; to + 1 != end && KeepsOn(sense, to->y, to[1].y); ++to) {
      }
      AddCrossingChain(from, to);
      from = to;
    }
  }

  static int Sense(int from, int to) { return from < to ? 1 : from > to ? -1 : 0; }

  // Whether a step from row to row goes on in the chain's sense, which a level chain takes from it.
  static bool KeepsOn(int& sense, int from, int to) {
    const int next = Sense(from, to);
    if (sense == 0) sense = next;
    return next == 0 || next == sense;
  }

  void AddCrossingChain(const cv::Point* first, const cv::Point* last) {
    const int top = std::max(std::min(first->y, last->y), area_.firstRow);
    const int end = std::min(std::max(first->y, last->y), area_.endRow);
    if (top >= end) return;
    std::int64_t* const list = crossings_.Add(top, end, 0);
    for (const cv::Point* to = first + 1; to <= last; ++to) {
      WalkCrossings({to[-1], *to}, area_, [&](int row, std::int64_t x) { list[row - top] = x; });
    }
  }

  // The lines on both sides of a vertex of the canvas share its pixel. Where a vertex lies
  // elsewhere, the clipped lines need not touch.
  void AddBorders(const cv::Point* first, const cv::Point* end) {
    int sense = 0;
    for (const cv::Point* to = first + 1; to != end; ++to) {
      FillEdge line = {to[-1], *to};
      if (!ClipEdge(line, area_)) continue;
      if (!IsOnCanvas(to[-1], area_) || !KeepsOn(sense, line.from.y, line.to.y)) {
        AddBorderChain();
        sense = Sense(line.from.y, line.to.y);
      }
      lines_.push_back(line);
    }
    AddBorderChain();
  }

  void AddBorderChain() {
    if (lines_.empty()) return;
    const int from = lines_.front().from.y;
    const int to = lines_.back().to.y;
    const int top = std::max(std::min(from, to), area_.firstRow);
    const int end = std::min(std::max(from, to) + 1, area_.endRow);
    if (top < end) {
      Stretch* const list = borders_.Add(top, end, {INT_MAX, -1});
      for (const FillEdge& line : lines_) {
        WalkBorder(line, area_, [&](int row, int first, int last) {
          Stretch& stretch = list[row - top];
          stretch.first = std::min(stretch.first, first);
          stretch.last = std::max(stretch.last, last);
        });
      }
    }
    lines_.clear();
  }

  int NextTop() const { return std::min(crossings_.NextTop(), borders_.NextTop()); }

  // Room for the row's spans, each followed by one that ends the list.
  void PrepareRow() {
    spans_.resize(crossings_.active.size() / 2 + 1);
    runs_.resize(crossings_.active.size() / 2 + borders_.active.size());
  }

  void FillRow(int row) {
    crossings_.Advance();
    borders_.Advance();
    Run* end = JoinPairs(row);
    if (end == nullptr) {
      ListSpans();
      end = MergeRow(row);
    }
    if (end != runs_.data()) sink_.AddRow(runs_.data(), end);
  }

  // Mostly each crossing has its border, and a pair covers all from the first one's border to the
  // second one's. Returns the end of the runs, null where it is otherwise.
  Run* JoinPairs(int row) {
    const std::size_t count = borders_.active.size();
    if (crossings_.active.size() != count || count % 2 != 0) return nullptr;
    const Chain<Stretch>* border = borders_.active.data();
    const Chain<std::int64_t>* crossing = crossings_.active.data();
    const Chain<Stretch>* const end = border + count;
    Run* run = runs_.data();
    std::int64_t reached = -2;
    for (; border != end; border += 2, crossing += 2) {
      const Stretch& left = border[0].now;
      const Stretch& right = border[1].now;
      const std::int64_t first = ColumnFrom(crossing[0].now);
      const std::int64_t last = ColumnTo(crossing[1].now);
      if (first < left.first || first > left.last + std::int64_t{1}) return nullptr;
      if (last + 1 < right.first || last > right.last) return nullptr;
      const int covered = std::max(left.last, right.last);
      if (left.first > reached + 1) {
        *run++ = {row, left.first, covered};
        reached = covered;
      } else {
        reached = std::max<std::int64_t>(reached, covered);
        run[-1].LastColumn = static_cast<int>(reached);
      }
    }
    return run;
  }

  // The columns between the crossings, pair by pair, within the area.
  void ListSpans() {
    Span* span = spans_.data();
    for (std::size_t i = 0; i + 1 < crossings_.active.size(); i += 2) {
      const std::int64_t first = ColumnFrom(crossings_.active[i].now);
      const std::int64_t last = ColumnTo(crossings_.active[i + 1].now);
      span->first = std::max<std::int64_t>(first, 0);
      span->last = std::min<std::int64_t>(last, area_.width - 1);
      if (span->first <= span->last) ++span;
    }
    span->first = INT64_MAX;
  }

  // Unites the spans and the borders, both ascending, into runs. Returns the end of these.
  Run* MergeRow(int row) {
    const Span* span = spans_.data();
    const Chain<Stretch>* border = borders_.active.data();
    const Chain<Stretch>* const borderEnd = border + borders_.active.size();
    Run* run = runs_.data();
    std::int64_t reached = -2;
    while (true) {
      Span next = *span;
      if (border != borderEnd && border->now.first <= next.first) {
        next = {border->now.first, border->now.last};
        ++border;
      } else if (next.first == INT64_MAX) {
        return run;
      } else {
        ++span;
      }
      if (next.first > reached + 1) {
        run->Row = row;
        run->FirstColumn = static_cast<int>(next.first);
        ++run;
        reached = next.last;
      } else {
        reached = std::max(reached, next.last);
      }
      run[-1].LastColumn = static_cast<int>(reached);
    }
  }

  FillArea area_;
  RunSink& sink_;
  Schedule<std::int64_t> crossings_;
  Schedule<Stretch> borders_;
  std::vector<FillEdge> lines_;  ///< Those of the border chain at hand.
  std::vector<Span> spans_;
  std::vector<Run> runs_;
};

}  // namespace

void FillSparsely(const FillContours& contours, const FillArea& area, std::int64_t edgeRows,
                  RunSink& sink) {
  // In bands of rows, lest the chains' lists outgrow the processor's cache; not so many that
  // passing over the edges for each takes longer.
  const auto edges = static_cast<std::int64_t>(contours.points.size());
  const std::int64_t bands = 1 + edgeRows / std::max<std::int64_t>(8192, 16 * edges);
  const std::int64_t rows = (std::int64_t{area.endRow} - area.firstRow) / bands + 1;
  SparseFill fill(area, sink);
  for (std::int64_t row = area.firstRow; row < area.endRow; row += rows) {
    const std::int64_t end = std::min<std::int64_t>(row + rows, area.endRow);
    fill.Fill(contours, static_cast<int>(row), static_cast<int>(end));
  }
}
