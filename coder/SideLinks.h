#ifndef CODER_SIDE_LINKS_H_
#define CODER_SIDE_LINKS_H_

#include <cstddef>

#include "VemRLC.h"

/// A left or a right side of a run, of which borders are made: side 2 * i is the left side of run
/// i, side 2 * i + 1 the right one.
struct Side {
  int link;    ///< To the side that follows; users may set a negative mark once they passed it.
  int column;  ///< The outermost column of the run on this side.
};

/// A link tells the side that follows on a border, and how many rows the border goes straight on
/// before it leaves for that side: it is 8 * run for a left side and 8 * run + 4 for a right one,
/// plus the rows.
constexpr int kLinkRows = 3;  ///< The bits of the rows; 3 stands for three or more.

constexpr int LinkToLeft(std::size_t run) { return static_cast<int>(8 * run); }
constexpr int LinkToRight(std::size_t run) { return static_cast<int>(8 * run + 4); }
constexpr std::size_t LinkedSide(int link) { return static_cast<std::size_t>(link) / 4; }
constexpr std::size_t LinkedRun(int link) { return static_cast<std::size_t>(link) / 8; }

/// Links the sides of `count` runs, by row, then by column, into the borders around them; there are
/// INT_MAX / 8 runs at most. A border passes left sides downward and right sides upward, so the
/// background is always on its right hand.
///
/// A side to which another leads straight is left out of its border, so no link goes straight down
/// or up from its last row. A left side that is left out links to its leader, the first side of the
/// stretch, and its rows are those down from there. A right one links to what follows, as others
/// do.
void LinkSides(const Run* runs, std::size_t count, Side* sides);

#endif  // CODER_SIDE_LINKS_H_
