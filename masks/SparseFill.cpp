#include "masks/SparseFill.h"

#include <algorithm>
#include <climits>
#include <cstddef>

#include "masks/EdgeWalk.h"

namespace {

/// Columns within a row, both ends included; none where the last is the one before the first.
struct Stretch {
  void Widen(const Stretch& other) {
    first = std::min(first, other.first);
    last = std::max(last, other.last);
  }

  int first;
  int last;
};

constexpr Stretch kNothing = {INT_MAX, INT_MIN};

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

  void Advance() {
    const Stretch* const stretches = stretches_.data();
    bool ordered = true;
    int before = INT_MIN;
    for (Strand& strand : active_) {
      strand.now = stretches[strand.next++];
      ordered &= before <= strand.now.first;
      before = strand.now.first;
    }
    if (!ordered) Sort();
  }

  void Clear() { stretches_.clear(); }

 private:
  // The order changes little from row to row; where it does, sorting anew is cheaper.
  void Sort() {
    std::size_t moves = 0;
    for (std::size_t i = 1; i < active_.size(); ++i) {
      if (!(active_[i] < active_[i - 1])) continue;
      const Strand strand = active_[i];
      std::size_t k = i;
      for (; k > 0 && strand < active_[k - 1]; --k) active_[k] = active_[k - 1];
      active_[k] = strand;
      moves += i - k;
      if (moves > 16 * active_.size()) return std::sort(active_.begin(), active_.end());
    }
  }

  std::vector<Stretch> stretches_;
  std::vector<Strand> waiting_;
  std::vector<Strand> active_;
};

/// Contours as strands. The edges of a contour that lead downward, or upward, until it turns are a
/// side: one strand, which has in each row, the first and the last included, the pixels of the
/// edges' borders, or where these leave the canvas and part from the edges, what the crossing
/// covers alone. So each row has an even number of sides, and a crossing lies in its side's stretch
/// or in the gap next to it.
///
/// A pair of sides covers all from the first column of either to the last of either. Where sides
/// stand in another order by their first columns than by their crossings, they touch, and the
/// pairs cover the same together; and two sides that end in a vertex are a pair in its row, or
/// close the gap between two.
class SparseFill {
 public:
  SparseFill(const FillArea& area, RunSink& sink) : area_(area), runs_(sink) {}

  void Fill(const FillContours& contours, int firstRow, int endRow) {
    area_.firstRow = firstRow;
    area_.endRow = endRow;
    contours.ForEach([&](const cv::Point* first, const cv::Point* end) { AddSides(first, end); });
    sides_.Begin();
    borders_.Begin();
    for (int row = NextTop(); row != INT_MAX;) {
      sides_.Admit(row);
      borders_.Admit(row);
      const int stop = std::min(sides_.Stop(), borders_.Stop());
      for (; row < stop; ++row) FillRow(row);
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

  // A contour begins in its topmost row, where it turns.
  void AddSides(const cv::Point* first, const cv::Point* end) {
    for (const cv::Point* from = first; from + 1 != end;) {
      const cv::Point* to = from + 1;
      int sense = Sense(from->y, to->y);
      for (; to + 1 != end && KeepsOn(sense, to->y, to[1].y); ++to) {
      }
      AddSide(from, to);
      if (sense == 0) AddSide(from, to);  // There and back.
      from = to;
    }
  }

  static int Sense(int from, int to) { return from < to ? 1 : from > to ? -1 : 0; }

  // Whether a step from row to row goes on in the side's sense, which a level side takes from it.
  static bool KeepsOn(int& sense, int from, int to) {
    const int next = Sense(from, to);
    if (sense == 0) sense = next;
    return next == 0 || next == sense;
  }

  void AddSide(const cv::Point* first, const cv::Point* last) {
    const int top = std::max(std::min(first->y, last->y), area_.firstRow);
    const int end = std::min(std::max(first->y, last->y), area_.endRow - 1) + 1;
    if (top >= end) return;
    Stretch* const stretches = sides_.Add(top, end);
    for (const cv::Point* to = first + 1; to <= last; ++to) {
      const FillEdge edge = {to[-1], *to};
      if (IsPlain(edge)) {
        AddPlainEdge(edge, stretches, top, end);
      } else {
        AddCrossings(edge, [&](int row, int firstColumn, int lastColumn) {
          stretches[row - top].Widen({firstColumn, lastColumn});
        });
        AddBorder(edge);
      }
    }
  }

  // A side's edges share the rows of its vertices.
  void AddPlainEdge(const FillEdge& edge, Stretch* stretches, int top, int end) {
    const int upper = std::max(edge.Upper().y, top);
    const int lower = std::min(edge.Lower().y, end - 1);
    if (upper > lower) return;
    Stretch& first = stretches[upper - top];
    Stretch& last = stretches[lower - top];
    const Stretch above = first;
    const Stretch below = last;
    WalkBorder(edge, area_, [&](int row, int firstColumn, int lastColumn) {
      stretches[row - top] = {firstColumn, lastColumn};
    });
    first.Widen(above);
    last.Widen(below);
  }

  // Whether the crossings of an edge, which drift from it by 1/65536 pixel in a row at most, stay
  // within half a pixel of it, and its border is drawn from end to end.
  bool IsPlain(const FillEdge& edge) const {
    return IsOnCanvas(edge.from, area_) && IsOnCanvas(edge.to, area_) &&
           edge.Lower().y - edge.Upper().y <= kCrossingOne / 2;
  }

  // The columns that crossings alone cover on the canvas, and the ends of the edge.
  template <typename Widen>
  void AddCrossings(const FillEdge& edge, Widen widen) {
    const auto add = [&](int row, std::int64_t x) {
      const std::int64_t first = std::max<std::int64_t>(ColumnFrom(x), 0);
      const std::int64_t last = std::min<std::int64_t>(ColumnTo(x), area_.width - 1);
      widen(row, static_cast<int>(std::min<std::int64_t>(first, area_.width)),
            static_cast<int>(std::max<std::int64_t>(last, -1)));
    };
    WalkCrossings(edge, area_, add);
    for (const cv::Point& p : {edge.from, edge.to}) {
      if (p.y >= area_.firstRow && p.y < area_.endRow) add(p.y, p.x * kCrossingOne);
    }
  }

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

  void FillRow(int row) {
    sides_.Advance();
    borders_.Advance();
    runs_.Take(Unite(row, runs_.Room(sides_.Active().size() / 2 + borders_.Active().size())));
  }

  // Unites what the pairs of sides and the borders cover into runs. Returns the end of these.
  Run* Unite(int row, Run* run) {
    const Strand* side = sides_.Active().data();
    const Strand* const sidesEnd = side + sides_.Active().size();
    const Strand* border = borders_.Active().data();
    const Strand* const bordersEnd = border + borders_.Active().size();
    std::int64_t reached = -2;
    while (true) {
      Stretch next;
      if (border != bordersEnd && (side == sidesEnd || *border < *side)) {
        next = border->now;
        ++border;
      } else if (side != sidesEnd) {
        next = {side[0].now.first, std::max(side[0].now.last, side[1].now.last)};
        side += 2;
        if (next.first > next.last) continue;
      } else {
        return run;
      }
      if (next.first > reached + 1) {
        *run++ = {row, next.first, next.last};
        reached = next.last;
      } else {
        reached = std::max<std::int64_t>(reached, next.last);
        run[-1].LastColumn = static_cast<int>(reached);
      }
    }
  }

  FillArea area_;
  RunBatch runs_;
  Schedule sides_;
  Schedule borders_;  ///< Of the edges that part from their crossings.
};

}  // namespace

void FillSparsely(const FillContours& contours, const FillArea& area, std::int64_t edgeRows,
                  RunSink& sink) {
  // In bands of rows, lest the strands' lists outgrow the processor's cache; not so many that
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
