#include "coder/SideLinks.h"

// What follows a left side depends only on the row below, what follows a right side only on the row
// above, so one pass over the rows links all sides:
//
//     ..aaa...bbbb..     left of a -> left of c, right of d -> right of b,
//     .cccc....dd...     left of c -> right of c where nothing lies below
//
//     ..aa..bb..         left of b -> right of a: c closes the gap between them from below
//     ...ccccc..
//
//     ..aaa..            left of a -> what follows the left of c, one row down; right of c -> what
//     ..ccc..            follows the right of a, one row up
//
// A turn by 180 degrees maps left sides to right sides, so the same holds for gaps that are closed
// from above.

namespace {

/// A run, and where its sides are.
struct Place {
  const Run* run;
  std::size_t leftSide;

  void operator++() {
    ++run;
    leftSide += 2;
  }
  // As LinkToLeft and LinkToRight make them.
  int ToLeft() const { return static_cast<int>(4 * leftSide); }
  int ToRight() const { return static_cast<int>(4 * leftSide + 4); }
};

Place RowEnd(Place place, const Run* end) {
  const int row = place.run->Row;
  do {
    ++place;
  } while (place.run != end && place.run->Row == row);
  return place;
}

// The link with one row more, as far as it tells them.
int Stretched(int link) { return link + ((link & kLinkRows) != kLinkRows ? 1 : 0); }

// Which one can't be foretold, so there is no branch.
int Select(bool condition, int a, int b) { return b ^ ((a ^ b) & -static_cast<int>(condition)); }

// Runs touch, also by a corner, unless one ends before the other begins.
bool EndsBefore(const Run& run, const Run& other) { return run.LastColumn < other.FirstColumn - 1; }

// Until its own link is known, the left side of a run of the row linked last links to its leader:
// itself, unless it is left out.
class Linker {
 public:
  explicit Linker(Side* sides) : sides_(sides) {}

  // Nothing lies above the runs.
  void Begin(Place first, const Run* end) {
    for (; first.run != end; ++first) Begin(first);
  }

  // Nothing lies below the runs.
  void End(Place first, const Run* end) {
    for (; first.run != end; ++first) LeadLeft(first, first.ToRight());
  }

  // Links the left sides of a row downward and the right sides of the row below it upward. The runs
  // that touch one another form groups, each apart from those beside it.
  void LinkRows(Place upper, Place lower, const Run* lowerEnd) {
    const Run* const upperEnd = lower.run;
    while (upper.run != upperEnd && lower.run != lowerEnd) {
      if (EndsBefore(*upper.run, *lower.run)) {
        LeadLeft(upper, upper.ToRight());
        ++upper;
      } else if (EndsBefore(*lower.run, *upper.run)) {
        Begin(lower);
        ++lower;
      } else {
        LinkFirst(upper, lower);
        CloseGaps(upper, upperEnd, lower, lowerEnd);
        LinkLast(upper, lower);
        ++upper;
        ++lower;
      }
    }
    End(upper, upperEnd);
    Begin(lower, lowerEnd);
  }

 private:
  void Begin(const Place& place) {
    SetLeft(place, place.ToLeft());
    SetRight(place, place.ToLeft());
  }

  // The left sides of a group's first runs.
  void LinkFirst(const Place& upper, const Place& lower) {
    const int leader = LeadLeft(upper, lower.ToLeft());
    const bool isStraight = upper.run->FirstColumn == lower.run->FirstColumn;
    SetLeft(lower, Select(isStraight, Stretched(leader), lower.ToLeft()));
  }

  // Goes on to the group's last runs. Each further run begins behind a gap that the current run of
  // the other row closes.
  void CloseGaps(Place& upper, const Run* upperEnd, Place& lower, const Run* lowerEnd) {
    for (;;) {
      if (upper.run + 1 != upperEnd && !EndsBefore(*lower.run, upper.run[1])) {
        const int before = upper.ToRight();
        ++upper;
        LeadLeft(upper, before);
      } else if (lower.run + 1 != lowerEnd && !EndsBefore(*upper.run, lower.run[1])) {
        Place next = lower;
        ++next;
        SetRight(lower, next.ToLeft());
        lower = next;
        SetLeft(lower, lower.ToLeft());
      } else {
        return;
      }
    }
  }

  // The right sides of a group's last runs.
  void LinkLast(const Place& upper, const Place& lower) {
    const bool isStraight = upper.run->LastColumn == lower.run->LastColumn;
    SetRight(lower,
             Select(isStraight, Stretched(sides_[upper.leftSide + 1].link), upper.ToRight()));
  }

  void SetLeft(const Place& place, int link) {
    sides_[place.leftSide] = {link, place.run->FirstColumn};
  }
  void SetRight(const Place& place, int link) {
    sides_[place.leftSide + 1] = {link, place.run->LastColumn};
  }

  // Sets the link of a left side's leader, which keeps its rows. Returns what the left side linked
  // to: its leader, and the rows down from there.
  int LeadLeft(const Place& place, int link) {
    const int leader = sides_[place.leftSide].link;
    sides_[LinkedSide(leader)].link = link | (leader & kLinkRows);
    return leader;
  }

  Side* const sides_;
};

}  // namespace

void LinkSides(const Run* runs, std::size_t count, Side* sides) {
  const Run* const end = runs + count;
  Linker linker(sides);
  Place above = {runs, 0};
  Place row = above;
  while (row.run != end) {
    const Place next = RowEnd(row, end);
    if (row.run != runs && row.run[-1].Row + 1 == row.run->Row) {
      linker.LinkRows(above, row, next.run);
    } else {
      linker.End(above, row.run);
      linker.Begin(row, next.run);
    }
    above = row;
    row = next;
  }
  linker.End(above, end);
}
