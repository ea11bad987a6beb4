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

// The order changes little from row to row; where it does, sorting anew is cheaper.
template <typename T, typename Place>
void SortAgain(std::vector<T>& items, Place place) {
  std::size_t moves = 0;
  for (std::size_t i = 1; i < items.size(); ++i) {
    if (place(items[i - 1]) <= place(items[i])) continue;
    const T item = items[i];
    std::size_t k = i;
    for (; k > 0 && place(items[k - 1]) > place(item); --k) items[k] = items[k - 1];
    items[k] = item;
    moves += i - k;
    if (moves <= 16 * items.size()) continue;
    std::sort(items.begin(), items.end(),
              [&](const T& a, const T& b) { return place(a) < place(b); });
    return;
  }
}

/// Things that begin in one row and end in another: those that wait, the next at the end, and those
/// at hand.
template <typename T>
struct Schedule {
  void Begin() {
    std::sort(waiting.begin(), waiting.end(),
              [](const T& a, const T& b) { return Top(a) > Top(b); });
  }

  int NextTop() const { return waiting.empty() ? INT_MAX : Top(waiting.back()); }

  void Admit(int row) {
    for (; !waiting.empty() && Top(waiting.back()) == row; waiting.pop_back()) {
      active.push_back(waiting.back());
    }
  }

  void Retire(int row) {
    active.erase(std::remove_if(active.begin(), active.end(),
                                [&](const T& item) { return End(item) <= row; }),
                 active.end());
  }

  /// The first row in which those at hand are no longer the same.
  int Stop() const {
    int stop = NextTop();
    for (const T& item : active) stop = std::min(stop, End(item));
    return stop;
  }

  static int Top(const Crossing& item) { return item.top; }
  static int Top(const BorderWalk& item) { return item.top(); }
  static int End(const Crossing& item) { return item.end; }
  static int End(const BorderWalk& item) { return item.end(); }

  std::vector<T> waiting;
  std::vector<T> active;
};

class SparseFill {
 public:
  SparseFill(const std::vector<FillEdge>& edges, const FillArea& area, RunSink& sink)
      : area_(area), sink_(sink) {
    crossings_.waiting.reserve(edges.size());
    borders_.waiting.reserve(edges.size());
    for (const FillEdge& edge : edges) AddEdge(edge);
    crossings_.Begin();
    borders_.Begin();
  }

  void Fill() {
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
  }

 private:
  void AddEdge(const FillEdge& edge) {
    Crossing crossing;
    if (CrossRows(edge, area_, crossing)) crossings_.waiting.push_back(crossing);
    FillEdge line = edge;
    BorderWalk border;
    if (ClipEdge(line, area_) && border.Start(line, area_)) {
      borders_.waiting.push_back(border);
    }
  }

  int NextTop() const { return std::min(crossings_.NextTop(), borders_.NextTop()); }

  // Room for the row's spans, each followed by one that ends the list.
  void PrepareRow() {
    spans_.resize(crossings_.active.size() / 2 + 1);
    runs_.resize(crossings_.active.size() / 2 + borders_.active.size());
  }

  void FillRow(int row) {
    SortAgain(crossings_.active, [](const Crossing& crossing) { return crossing.x; });
    SortAgain(borders_.active, [](const BorderWalk& border) { return border.first(); });
    ListSpans();
    Run* const end = MergeRow(row);
    if (end != runs_.data()) sink_.AddRow(runs_.data(), end);
    for (Crossing& crossing : crossings_.active) crossing.x += crossing.step;
    for (BorderWalk& border : borders_.active) border.Next();
  }

  // The columns between the crossings, pair by pair, within the area.
  void ListSpans() {
    Span* span = spans_.data();
    for (std::size_t i = 0; i + 1 < crossings_.active.size(); i += 2) {
      const std::int64_t first = ColumnFrom(crossings_.active[i].x);
      const std::int64_t last = ColumnTo(crossings_.active[i + 1].x);
      span->first = std::max<std::int64_t>(first, 0);
      span->last = std::min<std::int64_t>(last, area_.width - 1);
      if (span->first <= span->last) ++span;
    }
    span->first = INT64_MAX;
  }

  // Unites the spans and the borders, both ascending, into runs. Returns the end of these.
  Run* MergeRow(int row) {
    const Span* span = spans_.data();
    const BorderWalk* border = borders_.active.data();
    const BorderWalk* const borderEnd = border + borders_.active.size();
    Run* run = runs_.data();
    std::int64_t reached = -2;
    while (true) {
      Span next = *span;
      if (border != borderEnd && border->first() <= next.first) {
        next = {border->first(), border->last()};
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

  const FillArea& area_;
  RunSink& sink_;
  Schedule<Crossing> crossings_;
  Schedule<BorderWalk> borders_;
  std::vector<Span> spans_;
  std::vector<Run> runs_;
};

}  // namespace

void FillSparsely(const std::vector<FillEdge>& edges, const FillArea& area, RunSink& sink) {
  SparseFill(edges, area, sink).Fill();
}
