#include "coder/RunTracer.h"

#include <climits>
#include <cstddef>
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

constexpr int kStepX[] = {1, 1, 0, -1, -1, -1, 0, 1};
constexpr int kStepY[] = {0, -1, -1, -1, 0, 1, 1, 1};

// Side 2 * i is the left side of run i, side 2 * i + 1 the right one.
int LeftOf(std::size_t run) { return static_cast<int>(2 * run); }
int RightOf(std::size_t run) { return static_cast<int>(2 * run + 1); }
bool IsRight(int side) { return (side & 1) != 0; }
std::size_t RunOf(int side) { return static_cast<std::size_t>(side) / 2; }

/// A closed chain of moves, of which the pixels where the direction changes are kept.
class Chain {
 public:
  Chain(std::vector<cv::Point>& points, int x, int y)
      : points_(points), begin_(points.size()), x_(x), y_(y) {}

  void Move(int direction, int steps) {
    if (steps == 0) return;
    if (direction != direction_) {
      if (direction_ == kNoDirection) first_ = direction;
      points_.emplace_back(x_, y_);
      direction_ = direction;
    }
    x_ += kStepX[direction] * steps;
    y_ += kStepY[direction] * steps;
  }

  /// A chain without moves is one pixel. The first pixel is no vertex where the chain runs straight
  /// through it.
  void Close() {
    if (direction_ == kNoDirection) {
      points_.emplace_back(x_, y_);
    } else if (direction_ == first_) {
      points_.erase(points_.begin() + static_cast<std::ptrdiff_t>(begin_));
    }
  }

 private:
  std::vector<cv::Point>& points_;
  const std::size_t begin_;
  int x_;
  int y_;
  int direction_ = kNoDirection;
  int first_ = kNoDirection;
};

class Tracer {
 public:
  explicit Tracer(const Outlines& outlines) : out_(outlines) {}

  // Links the sides of all runs, row by row.
  void Link() {
    CloseSides();
    const std::size_t count = out_.runs.size();
    std::size_t above = 0;
    for (std::size_t row = 0; row < count;) {
      std::size_t end = row + 1;
      while (end < count && At(end).Row == At(row).Row) ++end;
      if (row > 0 && At(row - 1).Row + 1 != At(row).Row) above = row;
      LinkDown(above, row, end);
      LinkUp(above, row, end);
      above = row;
      row = end;
    }
  }

  void Trace() {
    out_.points.reserve(2 * next_.size());
    for (std::size_t run = 0; run < out_.runs.size(); ++run) {
      if (IsOpen(LeftOf(run))) {
        out_.runStarts.push_back(static_cast<int>(run));
        AddOuter();
        Follow(LeftOf(run));
      }
      if (IsOpen(RightOf(run))) {
        AddHole(run);
        Follow(RightOf(run));
      }
    }
    if (out_.runs.empty()) return;
    out_.runStarts.push_back(static_cast<int>(out_.runs.size()));
    out_.pointStarts.push_back(static_cast<int>(out_.points.size()));
  }

 private:
  const Run& At(std::size_t run) const { return out_.runs[run]; }
  int& Next(int side) { return next_[static_cast<std::size_t>(side)]; }
  int Column(int side) const {
    return IsRight(side) ? At(RunOf(side)).LastColumn : At(RunOf(side)).FirstColumn;
  }

  // A side whose border has been followed holds the complement of its outline's index.
  bool IsOpen(int side) { return Next(side) >= 0; }
  int OutlineOf(int side) { return ~Next(side); }

  // All runs end above and below until a neighbour is found: each side leads to the other.
  void CloseSides() {
    if (out_.runs.size() > INT_MAX / 8) throw std::length_error("too many runs to outline");
    next_.reserve(2 * out_.runs.size());
    for (std::size_t run = 0; run < out_.runs.size(); ++run) {
      next_.push_back(RightOf(run));
      next_.push_back(LeftOf(run));
    }
  }

  // Links the left sides of the runs above, [above, row), with the row's runs, [row, end).
  void LinkDown(std::size_t above, std::size_t row, std::size_t end) {
    std::size_t below = row;
    for (std::size_t run = above; run < row; ++run) {
      while (below < end && At(below).LastColumn < At(run).FirstColumn - 1) ++below;
      if (below == end) return;
      if (At(below).FirstColumn > At(run).LastColumn + 1) continue;
      const bool closesGap = At(below).FirstColumn < At(run).FirstColumn && run > above &&
                             At(run - 1).LastColumn >= At(below).FirstColumn - 1;
      Next(LeftOf(run)) = closesGap ? RightOf(run - 1) : LeftOf(below);
    }
  }

  // Links the right sides of the row's runs, [row, end), with the runs above, [above, row).
  void LinkUp(std::size_t above, std::size_t row, std::size_t end) {
    if (above == row) return;
    for (std::size_t run = row; run < end; ++run) {
      while (above + 1 < row && At(above + 1).FirstColumn <= At(run).LastColumn + 1) ++above;
      if (At(above).FirstColumn > At(run).LastColumn + 1) continue;
      if (At(above).LastColumn < At(run).FirstColumn - 1) continue;
      const bool closesGap = At(above).LastColumn > At(run).LastColumn && run + 1 < end &&
                             At(run + 1).FirstColumn <= At(above).LastColumn + 1;
      Next(RightOf(run)) = closesGap ? LeftOf(run + 1) : RightOf(above);
    }
  }

  void AddOuter() {
    const int outline = AddOutline(-1);
    if (lastOuter_ >= 0) Join(lastOuter_, outline);
    lastOuter_ = outline;
  }

  // The border at the left of the run in which a hole's border starts is known already: it is the
  // outer border of the component, or that of another hole in it.
  void AddHole(std::size_t run) {
    const int known = OutlineOf(LeftOf(run));
    const int parent = Record(known)[3] >= 0 ? Record(known)[3] : known;
    const int outline = AddOutline(parent);
    int& last = lastHoles_[static_cast<std::size_t>(parent)];
    if (last >= 0) {
      Join(last, outline);
    } else {
      Record(parent)[2] = outline;
    }
    last = outline;
  }

  int AddOutline(int parent) {
    const int outline = static_cast<int>(out_.hierarchy.size());
    out_.pointStarts.push_back(static_cast<int>(out_.points.size()));
    out_.hierarchy.emplace_back(-1, -1, -1, parent);
    lastHoles_.push_back(-1);
    return outline;
  }

  cv::Vec4i& Record(int outline) { return out_.hierarchy[static_cast<std::size_t>(outline)]; }

  void Join(int previous, int next) {
    Record(previous)[0] = next;
    Record(next)[1] = previous;
  }

  // Follows the border of the outline added last from one of its sides around to it.
  void Follow(int start) {
    const int mark = ~(static_cast<int>(out_.hierarchy.size()) - 1);
    Chain chain(out_.points, Column(start), At(RunOf(start)).Row);
    int side = start;
    do {
      const int next = Next(side);
      Next(side) = mark;
      Lead(chain, side, next);
      side = next;
    } while (side != start);
    chain.Close();
  }

  // The moves from one side to the next, told for a left side; a right side turns them by 180
  // degrees.
  void Lead(Chain& chain, int side, int next) const {
    const int turn = IsRight(side) ? 4 : 0;
    const int eastward = Column(next) - Column(side);
    const int distance = IsRight(side) ? -eastward : eastward;
    if (IsRight(side) != IsRight(next)) {
      if (distance >= 0) {  // Along the run to its other end.
        chain.Move(kEast ^ turn, distance);
      } else {  // Under the gap to the run before, whose right side is next.
        chain.Move(kSouthWest ^ turn, 1);
        chain.Move(kWest ^ turn, -distance - 2);
        chain.Move(kNorthWest ^ turn, 1);
      }
    } else if (distance < 0) {
      chain.Move(kSouthWest ^ turn, 1);
      chain.Move(kWest ^ turn, -distance - 1);
    } else if (distance == 0) {
      chain.Move(kSouth ^ turn, 1);
    } else {
      chain.Move(kEast ^ turn, distance - 1);
      chain.Move(kSouthEast ^ turn, 1);
    }
  }

  const Outlines& out_;
  std::vector<int> next_;
  std::vector<int> lastHoles_;
  int lastOuter_ = -1;
};

}  // namespace

void TraceRuns(const Outlines& outlines) {
  Tracer tracer(outlines);
  tracer.Link();
  tracer.Trace();
}
