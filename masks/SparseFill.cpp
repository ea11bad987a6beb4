#include "masks/SparseFill.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdlib>

#include "masks/EdgeWalk.h"

namespace {

/// Columns within a row, both ends included; none where the last is the one before the first.
struct Stretch {
  void Widen(int column) {
    first = std::min(first, column);
    last = std::max(last, column);
  }

  void Widen(const Stretch& other) {
    first = std::min(first, other.first);
    last = std::max(last, other.last);
  }

  int first;
  int last;
};

/// The crossings of an edge drift from it by 1/65536 pixel in a row at most: so far down they stay
/// within half a pixel.
constexpr int kTallest = 1 << 15;

constexpr Stretch kNothing = {INT_MAX, INT_MIN};

/// An edge that leads downward and so few rows and columns that there is one pixel between its
/// ends, or none. Columns are told from its upper end.
struct TinyEdge {
  int reach;   ///< As far as this the edge goes in its first row.
  int middle;  ///< The pixel in a row between the first and the last.
  int first;   ///< The columns of its last row.
  int last;
};

constexpr int kTiny = 2;

bool IsTiny(int down, int across) {
  return static_cast<unsigned>(down) <= kTiny && static_cast<unsigned>(across + kTiny) <= 2 * kTiny;
}

struct TinyEdges {
  constexpr TinyEdges() : edges() {
    for (int across = -kTiny; across <= kTiny; ++across) {
      // Half of the way, rounded down; in one row or the other.
      const int half = across < 0 ? -1 : across / 2;
      const int column = across + kTiny;
      edges[0][column] = {std::max(half, 0), 0, across, across < 0 ? half : across};
      edges[1][column] = {0, half, across, across};
    }
  }

  TinyEdge edges[kTiny][2 * kTiny + 1];
};

constexpr TinyEdges kTinyEdges;

/// Stretches in rows one below the other, and the one in the row at hand.
struct Strand {
  bool operator<(const Strand& other) const { return now.first < other.now.first; }

  Stretch now;
  int top;
  int end;
  std::size_t next;  ///< Where the list of stretches goes on below the row at hand.
};

/// Strands that wait, the next at the end, and those at hand, from left to right.
class Schedule {
 public:
  void Reserve(std::size_t strands, std::size_t stretches) {
    waiting_.reserve(strands);
    active_.reserve(strands);
    stretches_.reserve(stretches);
  }

  // Returns the strand's stretches, empty.
  Stretch* Add(int top, int end) {
    const std::size_t start = stretches_.size();
    waiting_.push_back({kNothing, top, end, start});
    stretches_.resize(start + static_cast<std::size_t>(end - top), kNothing);
    return stretches_.data() + start;
  }

  void Begin() {
    std::sort(waiting_.begin(), waiting_.end(),
              [](const Strand& a, const Strand& b) { return a.top > b.top; });
  }

  const std::vector<Strand>& Active() const { return active_; }

  int NextTop() const { return waiting_.empty() ? INT_MAX : waiting_.back().top; }

  void Admit(int row) {
    for (; !waiting_.empty() && waiting_.back().top == row; waiting_.pop_back()) {
      active_.push_back(waiting_.back());
    }
  }

  void Retire(int row) {
    active_.erase(std::remove_if(active_.begin(), active_.end(),
                                 [&](const Strand& strand) { return strand.end <= row; }),
                  active_.end());
  }

  /// The first row in which those at hand are no longer the same.
  int Stop() const {
    int stop = NextTop();
    for (const Strand& strand : active_) stop = std::min(stop, strand.end);
    return stop;
  }

  /// Goes to the next row.
  void Advance() {
    const Stretch* const stretches = stretches_.data();
    bool isInOrder = true;
    int before = INT_MIN;
    for (Strand& strand : active_) {
      strand.now = stretches[strand.next++];
      isInOrder = isInOrder && before <= strand.now.first;
      before = strand.now.first;
    }
    if (!isInOrder) Sort();
  }

  void Clear() { stretches_.clear(); }

 private:
  // The order changes little from row to row; where it does, sorting anew is cheaper than moving
  // strand by strand.
  void Sort() {
    const std::size_t mostMoves = 16 * active_.size();
    std::size_t moves = 0;
    for (std::size_t i = 1; i < active_.size() && moves <= mostMoves; ++i) {
      if (active_[i] < active_[i - 1]) moves += MoveLeft(i);
    }
    if (moves > mostMoves) std::sort(active_.begin(), active_.end());
  }

  // Moves a strand to its place among those before it; returns how far.
  std::size_t MoveLeft(std::size_t i) {
    const Strand strand = active_[i];
    std::size_t place = i;
    for (; place > 0 && strand < active_[place - 1]; --place) active_[place] = active_[place - 1];
    active_[place] = strand;
    return i - place;
  }

  std::vector<Stretch> stretches_;
  std::vector<Strand> waiting_;
  std::vector<Strand> active_;
};

/// Unites the stretches of a row, which come by their first columns, into runs.
class RowOfRuns {
 public:
  RowOfRuns(int row, Run* run) : row_(row), end_(run) {}

  void Cover(const Stretch& stretch) {
    if (stretch.first > stretch.last) return;
    if (stretch.first > reached_ + 1) {
      *end_++ = {row_, stretch.first, stretch.last};
      reached_ = stretch.last;
    } else {
      reached_ = std::max(reached_, stretch.last);
      end_[-1].LastColumn = reached_;
    }
  }

  Run* End() const { return end_; }

 private:
  int row_;
  int reached_ = -2;
  Run* end_;
};

/// Sides as strands. A strand has in each row, the first and the last included, the pixels of the
/// borders of its side's edges, or where these leave the canvas and part from the edges, what the
/// crossing covers alone. So each row has an even number of sides, and a crossing lies in its
/// side's stretch or in the gap next to it.
///
/// A pair of sides covers all from the first column of either to the last of either. Where sides
/// stand in another order by their first columns than by their crossings, they touch, and the
/// pairs cover the same together; and two sides that end in a vertex are a pair in its row, or
/// close the gap between two.
class SparseFill {
 public:
  SparseFill(const FillArea& area, RunSink& sink) : area_(area), runs_(sink) {}

  void Reserve(std::size_t sides, std::size_t stretches) { sides_.Reserve(sides, stretches); }

  void Fill(const std::vector<FillSide>& sides, int firstRow, int endRow) {
    area_.firstRow = firstRow;
    area_.endRow = endRow;
    for (const FillSide& side : sides) AddSide(side);
    sides_.Begin();
    borders_.Begin();
    for (int row = NextTop(); row != INT_MAX;) {
      sides_.Admit(row);
      borders_.Admit(row);
      const int stop = std::min(sides_.Stop(), borders_.Stop());
      if (borders_.Active().empty()) {
        for (; row < stop; ++row) FillPairs(row);
      } else {
        for (; row < stop; ++row) FillRow(row);
      }
      sides_.Retire(row);
      borders_.Retire(row);
      if (sides_.Active().empty() && borders_.Active().empty()) row = NextTop();
    }
    sides_.Clear();
    borders_.Clear();
    runs_.Finish();
  }

 private:
  int NextTop() const { return std::min(sides_.NextTop(), borders_.NextTop()); }

  void AddSide(const FillSide& side) {
    const cv::Point* const uppermost = side.upper;
    const cv::Point* const lowermost = side.lower;
    const bool downward = uppermost < lowermost;
    const int top = std::max(uppermost->y, area_.firstRow);
    const int end = std::min(lowermost->y, area_.endRow - 1) + 1;
    if (top >= end) return;
    Stretch* const stretches = sides_.Add(top, end);
    const cv::Point* upper = uppermost;
    bool wasOnCanvas = IsOnCanvas(*upper, area_);
    if (wasOnCanvas && upper->y >= top) stretches[0].Widen(upper->x);
    const std::ptrdiff_t step = downward ? 1 : -1;
    while (true) {
      if (wasOnCanvas && upper->y >= top && upper->y < end) {
        upper = AddTinyEdges(upper, lowermost, step, stretches + (upper->y - top), end);
      }
      if (upper == lowermost) return;
      const cv::Point* const lower = upper + step;
      const bool isOnCanvas = IsOnCanvas(*lower, area_);
      const DownwardLine edge(*upper, *lower);
      if (wasOnCanvas && isOnCanvas && edge.down <= kTallest) {
        AddPlainEdge(edge, stretches, top, end);
      } else {
        AddCrossings({*upper, *lower}, stretches, top);
        AddBorder(downward ? FillEdge{*upper, *lower} : FillEdge{*lower, *upper});
      }
      upper = lower;
      wasOnCanvas = isOnCanvas;
    }
  }

  // An edge whose border is drawn from end to end. Its upper end has its pixel already.
  void AddPlainEdge(const DownwardLine& edge, Stretch* stretches, int top, int end) {
    const auto set = [&](int row, int first, int last) { stretches[row - top] = {first, last}; };
    if (edge.down == 0 || edge.IsSteep()) {
      WalkBorder(edge, std::max(edge.upper.y + 1, top), std::min(edge.lower.y, end) - 1, set);
      if (edge.lower.y >= top && edge.lower.y < end) {
        stretches[edge.lower.y - top].Widen(edge.lower.x);
      }
    } else if (edge.upper.y < end) {
      const int row = std::max(edge.upper.y, top);
      const Stretch above = stretches[row - top];
      WalkBorder(edge, row, std::min(edge.lower.y, end - 1), set);
      stretches[row - top].Widen(above);
    }
  }

  // Adds the edges from `upper` on, a pixel on the canvas and in the rows at hand, as long as they
  // are tiny and lead to another such; returns where they end. They go any way, so a branch asks
  // for the level ones at most, and the stretch of the row at hand is not in memory yet.
  const cv::Point* AddTinyEdges(const cv::Point* upper, const cv::Point* lowermost,
                                std::ptrdiff_t step, Stretch* row, int end) const {
    cv::Point from = *upper;
    Stretch now = *row;
    for (; upper != lowermost; upper += step) {
      const cv::Point to = upper[step];
      if (static_cast<unsigned>(to.x) >= static_cast<unsigned>(area_.width) || to.y >= end) break;
      const int down = to.y - from.y;
      const int across = to.x - from.x;
      if (!IsTiny(down, across)) break;
      if (down == 0) {
        now.Widen(to.x);
      } else {
        const TinyEdge& edge = kTinyEdges.edges[down - 1][across + kTiny];
        now.Widen(from.x + edge.reach);
        *row = now;
        row[1] = {from.x + edge.middle, from.x + edge.middle};
        now = {from.x + edge.first, from.x + edge.last};
        row += down;
      }
      from = to;
    }
    *row = now;
    return upper;
  }

  // The columns that crossings alone cover on the canvas, and the ends of the edge.
  void AddCrossings(const FillEdge& edge, Stretch* stretches, int top) {
    const auto add = [&](int row, std::int64_t x) {
      const std::int64_t first = std::max<std::int64_t>(ColumnFrom(x), 0);
      const std::int64_t last = std::min<std::int64_t>(ColumnTo(x), area_.width - 1);
      stretches[row - top].Widen({static_cast<int>(std::min<std::int64_t>(first, area_.width)),
                                  static_cast<int>(std::max<std::int64_t>(last, -1))});
    };
    WalkCrossings(edge, area_, add);
    for (const cv::Point& p : {edge.from, edge.to}) {
      if (p.y >= area_.firstRow && p.y < area_.endRow) add(p.y, p.x * kCrossingOne);
    }
  }

  // The edge is clipped from its own first end on.
  void AddBorder(FillEdge line) {
    if (!ClipEdge(line, area_)) return;
    const int top = std::max(line.Upper().y, area_.firstRow);
    const int end = std::min(line.Lower().y + 1, area_.endRow);
    if (top >= end) return;
    Stretch* const stretches = borders_.Add(top, end);
    WalkBorder(line, area_, [&](int row, int first, int last) {
      stretches[row - top] = {first, last};
    });
  }

  static Stretch PairOf(const Strand& left, const Strand& right) {
    return {left.now.first, std::max(left.now.last, right.now.last)};
  }

  // A row without borders apart.
  void FillPairs(int row) {
    sides_.Advance();
    const std::vector<Strand>& sides = sides_.Active();
    RowOfRuns runs(row, runs_.Room(sides.size() / 2));
    for (std::size_t i = 0; i < sides.size(); i += 2) runs.Cover(PairOf(sides[i], sides[i + 1]));
    runs_.Take(runs.End());
  }

  void FillRow(int row) {
    sides_.Advance();
    borders_.Advance();
    const std::vector<Strand>& sides = sides_.Active();
    const std::vector<Strand>& borders = borders_.Active();
    RowOfRuns runs(row, runs_.Room(sides.size() / 2 + borders.size()));
    const Strand* border = borders.data();
    const Strand* const bordersEnd = border + borders.size();
    for (std::size_t i = 0; i < sides.size(); i += 2) {
      const Stretch pair = PairOf(sides[i], sides[i + 1]);
      for (; border != bordersEnd && border->now.first < pair.first; ++border) {
        runs.Cover(border->now);
      }
      runs.Cover(pair);
    }
    for (; border != bordersEnd; ++border) runs.Cover(border->now);
    runs_.Take(runs.End());
  }

  FillArea area_;
  RunBatch runs_;
  Schedule sides_;
  Schedule borders_;  ///< Of the edges that part from their crossings.
};

}  // namespace

void FillSparsely(const std::vector<FillSide>& sides, const FillArea& area, std::int64_t edgeRows,
                  RunSink& sink) {
  // In bands of rows, lest the strands' lists outgrow the processor's cache; not so many that
  // passing over the edges for each takes longer.
  std::int64_t edges = 0;
  for (const FillSide& side : sides) edges += std::abs(side.lower - side.upper);
  const std::int64_t bands = 1 + edgeRows / std::max<std::int64_t>(8192, 16 * edges);
  const std::int64_t rows = (std::int64_t{area.endRow} - area.firstRow) / bands + 1;
  SparseFill fill(area, sink);
  fill.Reserve(sides.size(), static_cast<std::size_t>(edgeRows / bands) + sides.size());
  for (std::int64_t row = area.firstRow; row < area.endRow; row += rows) {
    const std::int64_t end = std::min<std::int64_t>(row + rows, area.endRow);
    fill.Fill(sides, static_cast<int>(row), static_cast<int>(end));
  }
}
