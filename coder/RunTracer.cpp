#include "coder/RunTracer.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <stdexcept>

#include "coder/BorderSteps.h"
#include "coder/SideLinks.h"

namespace {

/// Gathers points in a block that stays near the processor, and adds them to the end of a list when
/// it is full.
class PointBlock {
 public:
  static constexpr std::size_t kRoom = 508;
  // More than a step and the outline behind it add before there is a look at the room.
  static constexpr std::size_t kSpare = 16;

  explicit PointBlock(std::vector<cv::Point>& points) : points_(points) {}

  cv::Point* Begin() { return block_; }
  // A step begins no later than here.
  cv::Point* Last() { return block_ + kRoom; }

  // The number of points before `end`, those of the list included.
  std::size_t CountTo(const cv::Point* end) const {
    return points_.size() + static_cast<std::size_t>(end - block_);
  }

  // Adds the points before `end` to the list, which gets room for `expected` at least when it has
  // to move.
  void Flush(const cv::Point* end, std::size_t expected) {
    const std::size_t count = CountTo(end);
    if (count > points_.capacity()) points_.reserve(std::max(count, expected));
    points_.insert(points_.end(), static_cast<const cv::Point*>(block_), end);
  }

 private:
  std::vector<cv::Point>& points_;
  cv::Point block_[kRoom + kSpare];
};

class Tracer {
 public:
  explicit Tracer(const Outlines& outlines)
      : out_(outlines),
        runs_(outlines.runs.data()),
        count_(outlines.runs.size()),
        block_(outlines.points),
        end_(block_.Begin()) {
    if (count_ > INT_MAX / 8) throw std::length_error("too many runs to outline");
    sides_.reset(new Side[2 * count_]);
    LinkSides(runs_, count_, sides_.get());
  }

  void Trace() {
    for (std::size_t run = 0; run < count_; run += kBlock) {
      Fetch(run + kAhead);
      TraceBlock(run, std::min(run + kBlock, count_));
    }
    if (count_ == 0) return;
    block_.Flush(end_, 0);
    out_.runStarts.push_back(static_cast<int>(count_));
    out_.pointStarts.push_back(static_cast<int>(out_.points.size()));
  }

 private:
  // How many runs are looked through at a time.
  static constexpr std::size_t kBlock = 128;

  // How many runs ahead sides are fetched: far enough for most outlines to find theirs at hand, and
  // near enough for these to stay there.
  static constexpr std::size_t kAhead = 8192;

  const Run& At(std::size_t run) const { return runs_[run]; }

  // Fetches the sides of a block, line by line.
  void Fetch(std::size_t first) const {
    const std::size_t last = std::min(first + kBlock, count_);
    const std::size_t step = 64 / (2 * sizeof(Side));
    for (std::size_t run = first; run < last; run += step) __builtin_prefetch(&sides_[2 * run], 1);
  }

  // Where outlines begin can't be foretold, so it is found out without a branch; most of what is
  // found is still new when its turn comes.
  void TraceBlock(std::size_t first, std::size_t last) {
    std::size_t found[kBlock];
    std::size_t count = 0;
    for (std::size_t run = first; run < last; ++run) {
      found[count] = run;
      count += Begins(run) ? 1 : 0;
    }
    for (std::size_t i = 0; i < count; ++i) {
      const int link = sides_[2 * found[i] + 1].link;
      // A right side that is left out has no mark, but the left side to which it leads.
      if (link < 0 || sides_[LinkedSide(link)].link < 0) continue;
      if (LinkedRun(link) == found[i]) {
        AddOuter(found[i]);
      } else {
        AddHole(found[i]);
      }
    }
  }

  // An outer border begins at a run above which nothing lies: its right side leads to its left one.
  // A hole begins behind a run where one above closes the gap: its right side leads to the left one
  // of the run behind the gap. Either border may have been met before.
  bool Begins(std::size_t run) const {
    const std::int64_t link = sides_[2 * run + 1].link;
    return ((link - LinkToLeft(run)) & ~LinkToLeft(1)) == 0;
  }

  // What the sides of the outline added last link to when it is followed.
  int Mark() const { return -static_cast<int>(out_.hierarchy.size()); }

  // The outline of a left side that was followed, or whose leader was.
  int OutlineOf(std::size_t run) const {
    const int link = sides_[2 * run].link;
    return ~(link < 0 ? link : sides_[LinkedSide(link)].link);
  }

  // A run that nothing touches below either is a component by itself.
  void AddOuter(std::size_t run) {
    out_.runStarts.push_back(static_cast<int>(run));
    const int outline = AddOutline(-1, run);
    if (lastOuter_ >= 0) Join(lastOuter_, outline);
    lastOuter_ = outline;
    if (sides_[2 * run].link == LinkToRight(run)) {
      OutlineAlone(run);
    } else {
      // Nothing lies north of its first pixel, which so becomes a vertex.
      Follow(run, kNorth);
    }
  }

  // The border at the left of the run in which a hole's border starts is known already: it is the
  // outer border of the component, or that of another hole in it. A gap that is closed from below
  // too is a hole by itself, one row high.
  void AddHole(std::size_t run) {
    const int known = OutlineOf(run);
    const int parent = Record(known)[3] >= 0 ? Record(known)[3] : known;
    const int outline = AddOutline(parent, run);
    int& last = lastHoles_[static_cast<std::size_t>(parent)];
    if (last >= 0) {
      Join(last, outline);
    } else {
      Record(parent)[2] = outline;
    }
    last = outline;
    if (sides_[2 * run + 2].link == LinkToRight(run)) {
      OutlineSlit(run);
    } else {
      OutlineHole(run);
    }
  }

  void OutlineAlone(std::size_t run) {
    sides_[2 * run].link = Mark();
    const Run& only = At(run);
    end_[0] = {only.FirstColumn, only.Row};
    end_[1] = {only.LastColumn, only.Row};
    end_ += only.FirstColumn == only.LastColumn ? 1 : 2;
    if (end_ > block_.Last()) end_ = Flush(end_);
  }

  void OutlineSlit(std::size_t run) {
    sides_[2 * run + 2].link = Mark();
    const int first = At(run).LastColumn + 1;
    const int last = At(run + 1).FirstColumn - 1;
    const int row = At(run).Row;
    const int isWide = first < last ? 1 : 0;
    *end_++ = {first - 1, row};
    *end_++ = {first, row - 1};
    *end_ = {last, row - 1};
    end_ += isWide;
    *end_++ = {last + 1, row};
    *end_++ = {last, row + 1};
    *end_ = {first, row + 1};
    end_ += isWide;
    if (end_ > block_.Last()) end_ = Flush(end_);
  }

  // The border begins at the right side of the run and goes over the gap to the run behind it. The
  // right side may be left out of the border, so this is followed from behind the gap, and comes
  // over the gap once more at its end.
  void OutlineHole(std::size_t run) {
    const cv::Point first(At(run).LastColumn, At(run).Row);
    const int column = At(run + 1).FirstColumn;
    const int bends = first.x < column - 2 ? 2 : 1;
    end_[0] = first;
    end_[1] = {first.x + 1, first.y - 1};
    end_[2] = {column - 1, first.y - 1};
    end_ += 1 + bends;
    Follow(run + 1, kSouthEast);
    end_ -= bends;
    if (end_ > block_.Begin() && end_[-1] == first) {
      --end_;
    } else {
      DropFirst();
    }
  }

  int AddOutline(int parent, std::size_t run) {
    if (out_.hierarchy.size() == out_.hierarchy.capacity()) MakeRoom(run);
    const int outline = static_cast<int>(out_.hierarchy.size());
    out_.pointStarts.push_back(static_cast<int>(block_.CountTo(end_)));
    out_.hierarchy.emplace_back(-1, -1, -1, parent);
    lastHoles_.push_back(-1);
    return outline;
  }

  // Makes room for as many outlines as there will be if they stay as frequent as before the run:
  // what is not filled is not touched.
  void MakeRoom(std::size_t run) {
    const std::size_t count = out_.hierarchy.size();
    const std::size_t expected = run > 0 ? count * count_ / run : 0;
    const std::size_t room = std::max(2 * count, expected + expected / 8) + 16;
    out_.hierarchy.reserve(room);
    out_.pointStarts.reserve(room + 1);
  }

  cv::Vec4i& Record(int outline) { return out_.hierarchy[static_cast<std::size_t>(outline)]; }

  void Join(int previous, int next) {
    Record(previous)[0] = next;
    Record(next)[1] = previous;
  }

  // Follows the border of the outline added last from the left side of a run, reached in a
  // direction, around to it. Each step writes all the vertices that it may have, and keeps those
  // that it has.
  void Follow(std::size_t run, Direction reached) {
    const int mark = Mark();
    const cv::Point* const limit = block_.Last();
    Side* const sides = sides_.get();
    cv::Point* end = end_;
    const std::size_t start = 2 * run;
    std::size_t side = start;
    std::size_t state = static_cast<std::size_t>(StepState(reached, 0));
    std::int64_t column = sides[start].column;
    std::int64_t row = At(run).Row;
    do {
      if (end > limit) end = Flush(end);
      const int link = sides[side].link;
      sides[side].link = mark;
      side = LinkedSide(link);
      const std::int64_t next = sides[side].column;
      const BorderStep& step = StepAlong(state, link, Known(next - column));
      *end = PointAt(column, row);
      end += step.turnsAtStart;
      std::int64_t leaving = row + step.stretch;
      row += step.rows;
      if ((link & kLinkRows) == kLinkRows) {
        row = At(LinkedRun(link)).Row;
        leaving = row - step.rows;
      }
      *end = PointAt(column, leaving);
      end += step.turnsAtLeaving;
      const int late = LateMask(step.bends);
      const int forward = step.forward;
      end[0] = PointAt((column ^ ((column ^ next) & late)) - forward, leaving + (forward & ~late));
      end[1] = PointAt(next + forward, leaving + forward);
      end += step.bends & kBends;
      state = step.state;
      column = next;
    } while (side != start);
    end_ = end;
  }

  static std::int64_t Known(std::int64_t distance) {
    return std::min<std::int64_t>(std::max<std::int64_t>(distance, -kFarthest), kFarthest);
  }

  static cv::Point PointAt(std::int64_t column, std::int64_t row) {
    return {static_cast<int>(column), static_cast<int>(row)};
  }

  // Seldom called, so not inlined.
  __attribute__((noinline)) cv::Point* Flush(const cv::Point* end) {
    const std::size_t count = block_.CountTo(end);
    // A run has up to four vertices as a rule; what is not filled is not touched.
    block_.Flush(end, std::max(2 * count, 4 * count_));
    return block_.Begin();
  }

  // Removes the first vertex of the outline added last. A hole's border leaves it north-eastward,
  // so it is no vertex where the border comes in that direction too. An outer border always turns
  // there.
  void DropFirst() {
    const std::size_t begin = static_cast<std::size_t>(out_.pointStarts.back());
    if (begin < out_.points.size()) {
      end_ = Flush(end_);
      out_.points.erase(out_.points.begin() + static_cast<std::ptrdiff_t>(begin));
    } else {
      cv::Point* const vertex = block_.Begin() + (begin - out_.points.size());
      end_ = std::copy(vertex + 1, end_, vertex);
    }
  }

  const Outlines& out_;
  const Run* const runs_;
  const std::size_t count_;
  PointBlock block_;
  cv::Point* end_;  // Of the points in the block.
  std::unique_ptr<Side[]> sides_;
  std::vector<int> lastHoles_;
  int lastOuter_ = -1;
};

}  // namespace

void TraceRuns(const Outlines& outlines) {
  Tracer tracer(outlines);
  tracer.Trace();
}
