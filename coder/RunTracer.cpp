#include "coder/RunTracer.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <stdexcept>

// Borders follow the sides of runs. Every run has a left side, which a border passes downward, and
// a right side, which it passes upward; so the background is always on the border's right hand, and
// each side belongs to one border. The side that follows depends only on the row below (behind a
// left side) or above (behind a right side), so sides are linked while the rows are read:
//
//     ..aaa...bbb..      left of a -> left of c, right of d -> right of b,
//     .cccc...ddd..      left of c -> right of c where nothing lies below
//
//     ..aa..bb..         left of b -> right of a: c closes the gap between them from below
//     ...ccccc..
//
// A turn by 180 degrees maps left sides to right sides, so one rule serves both.

namespace {

/// Directions in image coordinates, rows downward; `direction ^ 4` is the opposite one.
enum Direction : int {
  kEast = 0,
  kNorthEast,
  kNorth,
  kNorthWest,
  kWest,
  kSouthWest,
  kSouth,
  kSouthEast,
  kNoDirection
};

// Side 2 * i is the left side of run i, side 2 * i + 1 the right one.
int LeftOf(std::size_t run) { return static_cast<int>(2 * run); }
int RightOf(std::size_t run) { return static_cast<int>(2 * run + 1); }

struct Side {
  int next;  // The side that follows; the complement of its outline's index when that is known.
  int column;
};

// The moves from one side to the next have one to three parts, each of one direction. What is told
// of them goes into sums and masks, never into a branch, since it can't be foretold.
struct Lead {
  std::int8_t first;  // The direction of the first part.
  std::int8_t last;   // That of the last part.
  std::int8_t bends;  // The number of parts behind the first.
  std::int8_t late;   // -1 where the first part is the long one, so its bend is near the end; or 0.
  std::int8_t moves;  // -1 where there is a part at all; or 0.
};

// Distances go forward from a side: eastward from a left one, westward from a right one. Those
// beyond both ends of the table lead as the outermost do.
constexpr int kNearest = -3;
constexpr int kFarthest = 2;

// Told for a left side; a right side turns the moves by 180 degrees.
constexpr Lead LeftLead(bool changesSide, int distance) {
  if (changesSide) {
    if (distance == 0) return {kEast, kEast, 0, 0, 0};
    if (distance > 0) return {kEast, kEast, 0, 0, -1};  // Along the run to its other end.
    // Under the gap to the run before, whose right side is next.
    const std::int8_t bends = distance < -2 ? 2 : 1;
    return {kSouthWest, kNorthWest, bends, 0, -1};
  }
  if (distance == 0) return {kSouth, kSouth, 0, 0, -1};
  if (distance == -1) return {kSouthWest, kSouthWest, 0, 0, -1};
  if (distance < 0) return {kSouthWest, kWest, 1, 0, -1};
  if (distance == 1) return {kSouthEast, kSouthEast, 0, 0, -1};
  return {kEast, kSouthEast, 1, -1, -1};
}

constexpr int Turned(int direction, int isRight) { return direction ^ isRight << 2; }

struct LeadTable {
  Lead leads[2][2][8];  // By side, by change of side, by distance.
};

constexpr LeadTable MakeLeadTable() {
  LeadTable table = {};
  for (int isRight = 0; isRight < 2; ++isRight) {
    for (int changesSide = 0; changesSide < 2; ++changesSide) {
      for (int distance = kNearest; distance <= kFarthest; ++distance) {
        Lead lead = LeftLead(changesSide != 0, distance);
        lead.first = static_cast<std::int8_t>(Turned(lead.first, isRight));
        lead.last = static_cast<std::int8_t>(Turned(lead.last, isRight));
        table.leads[isRight][changesSide][distance - kNearest] = lead;
      }
    }
  }
  return table;
}

constexpr LeadTable kLeads = MakeLeadTable();

/// Gathers points in a block that stays near the processor, and adds them to the end of a list when
/// it is full.
class PointBlock {
 public:
  static constexpr std::size_t kRoom = 508;

  explicit PointBlock(std::vector<cv::Point>& points) : points_(points) {}

  cv::Point* Begin() { return block_; }
  // The last place at which a lead has room.
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
  cv::Point block_[kRoom + 8];
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
  }

  // Links the sides of all runs, row by row.
  void Link() {
    std::size_t above = 0;
    for (std::size_t row = 0; row < count_;) {
      const std::size_t end = CloseRow(row);
      if (row > 0 && At(row - 1).Row + 1 == At(row).Row) LinkRows(above, row, end);
      above = row;
      row = end;
    }
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

  // All runs of a row end above and below until a neighbour is found: each side leads to the other.
  // Returns the row's end.
  std::size_t CloseRow(std::size_t row) {
    std::size_t run = row;
    do {
      sides_[2 * run] = {RightOf(run), At(run).FirstColumn};
      sides_[2 * run + 1] = {LeftOf(run), At(run).LastColumn};
      ++run;
    } while (run < count_ && At(run).Row == At(row).Row);
    return run;
  }

  // Links the left sides of the runs above, [above, row), downward and the right sides of the row's
  // runs, [row, end), upward. What a left side leads to is the first run below that ends behind it;
  // what a right side leads to is the last run above that begins before it.
  void LinkRows(std::size_t above, std::size_t row, std::size_t end) {
    std::size_t upper = above;
    std::size_t lower = row;
    while (upper < row && lower < end) {
      if (At(upper).FirstColumn <= At(lower).LastColumn + 1) {
        LinkDown(above, upper++, lower);
      } else {
        if (upper > above) LinkUp(upper - 1, lower, end);
        ++lower;
      }
    }
    for (; lower < end; ++lower) LinkUp(upper - 1, lower, end);
  }

  void LinkDown(std::size_t above, std::size_t upper, std::size_t lower) {
    const Run& run = At(upper);
    const Run& below = At(lower);
    if (below.FirstColumn > run.LastColumn + 1) return;
    const bool closesGap = below.FirstColumn < run.FirstColumn && upper > above &&
                           At(upper - 1).LastColumn >= below.FirstColumn - 1;
    sides_[2 * upper].next = closesGap ? RightOf(upper - 1) : LeftOf(lower);
  }

  void LinkUp(std::size_t upper, std::size_t lower, std::size_t end) {
    const Run& run = At(lower);
    const Run& above = At(upper);
    if (above.LastColumn < run.FirstColumn - 1) return;
    const bool closesGap = above.LastColumn > run.LastColumn && lower + 1 < end &&
                           At(lower + 1).FirstColumn <= above.LastColumn + 1;
    sides_[2 * lower + 1].next = closesGap ? LeftOf(lower + 1) : RightOf(upper);
  }

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
      count += (Begun(run) & ~LeftOf(1)) == 0 ? 1 : 0;
    }
    for (std::size_t i = 0; i < count; ++i) {
      const std::size_t run = found[i];
      const int begun = Begun(run);
      if (begun == LeftOf(0)) {
        AddOuter(run);
      } else if (begun == LeftOf(1)) {
        AddHole(run);
      }
    }
  }

  // LeftOf(0) where an outer border begins, since nothing lies above and the right side leads to
  // its own run; LeftOf(1) where a hole begins, since a run above closes the gap and the right side
  // leads to the run behind it; or anything else.
  int Begun(std::size_t run) const { return sides_[2 * run + 1].next - LeftOf(run); }

  void OutlineAlone(std::size_t run) {
    const int mark = Mark();
    sides_[2 * run].next = mark;
    sides_[2 * run + 1].next = mark;
    const Run& only = At(run);
    end_[0] = {only.FirstColumn, only.Row};
    end_[1] = {only.LastColumn, only.Row};
    end_ += only.FirstColumn == only.LastColumn ? 1 : 2;
    if (end_ > block_.Last()) end_ = Flush(end_);
  }

  void OutlineSlit(std::size_t run) {
    const int mark = Mark();
    sides_[2 * run + 1].next = mark;
    sides_[2 * run + 2].next = mark;
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

  // What the sides of the outline added last hold when it is followed.
  int Mark() const { return -static_cast<int>(out_.hierarchy.size()); }

  // A run that nothing touches below either is a component by itself.
  void AddOuter(std::size_t run) {
    out_.runStarts.push_back(static_cast<int>(run));
    const int outline = AddOutline(-1, run);
    if (lastOuter_ >= 0) Join(lastOuter_, outline);
    lastOuter_ = outline;
    if (sides_[2 * run].next == RightOf(run)) {
      OutlineAlone(run);
    } else {
      Follow(LeftOf(run));
    }
  }

  // The border at the left of the run in which a hole's border starts is known already: it is the
  // outer border of the component, or that of another hole in it. A gap that is closed from below
  // too is a hole by itself, one row high.
  void AddHole(std::size_t run) {
    const int known = ~sides_[2 * run].next;
    const int parent = Record(known)[3] >= 0 ? Record(known)[3] : known;
    const int outline = AddOutline(parent, run);
    int& last = lastHoles_[static_cast<std::size_t>(parent)];
    if (last >= 0) {
      Join(last, outline);
    } else {
      Record(parent)[2] = outline;
    }
    last = outline;
    if (sides_[2 * run + 2].next == RightOf(run)) {
      OutlineSlit(run);
    } else if (Follow(RightOf(run)) == kNorthEast) {
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

  // Follows the border of the outline added last from one of its sides around to it, and returns
  // the direction in which it comes back. A vertex stands wherever the direction changes. Each lead
  // writes all the vertices that it may have, and keeps those that it has: which ones can't be
  // foretold.
  int Follow(int start) {
    const int mark = Mark();
    const cv::Point* const limit = block_.Last();
    Side* const sides = sides_.get();
    cv::Point* end = end_;
    int side = start;
    int x = sides[start].column;
    int y = At(static_cast<std::size_t>(start) / 2).Row;
    int direction = kNoDirection;
    do {
      const int next = sides[side].next;
      sides[side].next = mark;
      const int column = sides[next].column;
      const int isRight = side & 1;
      const int changesSide = (side ^ next) & 1;
      const int forward = 1 - 2 * isRight;
      side = next;
      if ((changesSide | (column ^ x) | (direction ^ Turned(kSouth, isRight))) == 0) {
        y += forward;
        continue;
      }
      const Lead lead = LeadOf(isRight, changesSide, column, x);
      *end = {x, y};
      end += (lead.first != direction) & lead.moves;
      end[0] = {(x ^ ((x ^ column) & lead.late)) - forward, y + (forward & ~lead.late)};
      end[1] = {column + forward, y + forward};
      end += lead.bends;
      direction ^= (direction ^ lead.last) & lead.moves;
      x = column;
      y += forward & (changesSide - 1);
      if (end > limit) end = Flush(end);
    } while (side != start);
    end_ = end;
    return direction;
  }

  static Lead LeadOf(int isRight, int changesSide, int column, int x) {
    const std::int64_t eastward = static_cast<std::int64_t>(column) - x;
    const std::int64_t distance = (eastward ^ -isRight) + isRight;
    const std::int64_t known =
        std::min<std::int64_t>(std::max<std::int64_t>(distance, kNearest), kFarthest);
    return kLeads.leads[isRight][changesSide][known - kNearest];
  }

  cv::Point* Flush(const cv::Point* end) {
    const std::size_t count = block_.CountTo(end);
    // A run has up to four vertices as a rule; what is not filled is not touched.
    block_.Flush(end, std::max(2 * count, 4 * count_));
    return block_.Begin();
  }

  // Takes the first vertex from the outline added last. A hole's border leaves it north-eastward,
  // so it is none where the border comes in that direction too. An outer border always turns there.
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
  tracer.Link();
  tracer.Trace();
}
