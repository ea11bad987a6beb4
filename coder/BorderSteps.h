#ifndef CODER_BORDER_STEPS_H_
#define CODER_BORDER_STEPS_H_

#include <cstdint>

#include "coder/SideLinks.h"

/// Directions in image coordinates, rows downward; `direction ^ 4` is the opposite one.
enum Direction : int {
  kEast = 0,
  kNorthEast,
  kNorth,
  kNorthWest,
  kWest,
  kSouthWest,
  kSouth,
  kSouthEast
};

/// What a step from a side of a border to the next one adds to the outline: a vertex wherever the
/// direction changes. Its members go into sums and masks, never into a branch, since they can't be
/// foretold.
struct BorderStep {
  std::uint16_t state;          ///< That of the next step.
  std::uint8_t turnsAtStart;    ///< 1 for a vertex where the stretch begins.
  std::uint8_t turnsAtLeaving;  ///< 1 for a vertex where the border leaves the side.
  std::int8_t bends;            ///< The number of vertices on the way to the next side; or kLate.
  std::int8_t forward;          ///< 1 down and eastward, from a left side; -1 from a right one.
  std::int8_t stretch;          ///< The rows from the side to where the border leaves it.
  std::int8_t rows;             ///< The rows to the next side. Neither counts a stretch of
                                ///< kLinkRows or more, whose length only the runs tell.
};

/// One bend that lies next to the next side: negative, and 1 by its bits of the number.
constexpr int kLate = -3;
constexpr int kBends = 3;  ///< The bits of the number of bends, also in kLate.
constexpr int LateMask(int bends) { return bends >> 2; }  ///< -1 in kLate, or 0.

/// The state of a step is told by the direction in which its side was reached and by which side it
/// is. To the state come the lower bits of the link, times kStepDistances, and the distance.
constexpr int kStepDistances = 8;
constexpr int kStepLinks = 8;  ///< The rows of a link, and whether it leads to a right side.
constexpr int kSteps = 8 * 2 * kStepLinks * kStepDistances;

constexpr int StepState(int direction, int isRight) {
  return (direction * 2 + isRight) * kStepLinks * kStepDistances;
}

/// The farthest distance that is told apart, in columns eastward from a side to the next one; what
/// lies farther counts as this far.
constexpr int kFarthest = 3;

namespace border_steps {

/// From where it leaves a side, a border moves in up to three parts, each of one direction.
struct Lead {
  int first;          ///< The direction of the first part.
  int last;           ///< That of the last part.
  int bends;          ///< The number of parts behind the first; or kLate.
  bool moves = true;  ///< False where both sides are of the same pixel.
};

/// Told for a left side; a right side turns the moves by 180 degrees. They never go straight down,
/// since such sides are left out, so that from a side to one of the same kind there is a distance;
/// nor is a side reached in the direction in which it is passed.
constexpr Lead LeftLead(bool changesSide, int distance) {
  if (changesSide) {
    if (distance == 0) return {kEast, kEast, 0, false};
    if (distance > 0) return {kEast, kEast, 0};  // Along the run to its other end.
    // Under the gap to the run before, whose right side is next.
    return {kSouthWest, kNorthWest, distance < -2 ? 2 : 1};
  }
  if (distance == -1) return {kSouthWest, kSouthWest, 0};
  if (distance < 0) return {kSouthWest, kWest, 1};
  if (distance == 1) return {kSouthEast, kSouthEast, 0};
  return {kEast, kSouthEast, kLate};  // The first part is the long one.
}

constexpr int Turned(int direction, int isRight) { return direction ^ isRight << 2; }

constexpr BorderStep MakeStep(int direction, int isRight, int link, int distance) {
  const int nextIsRight = link >> 2;
  const int stretch = link & kLinkRows;
  const bool changesSide = isRight != nextIsRight;
  const Lead lead = LeftLead(changesSide, isRight != 0 ? -distance : distance);
  const int straight = Turned(kSouth, isRight);
  const int leaving = stretch != 0 ? straight : direction;
  const int last = lead.moves ? Turned(lead.last, isRight) : leaving;
  const int forward = isRight != 0 ? -1 : 1;
  const int known = stretch != kLinkRows ? forward * stretch : 0;
  const int rows = known + (changesSide ? 0 : forward);

  BorderStep step = {};
  step.state = static_cast<std::uint16_t>(StepState(last, nextIsRight));
  step.turnsAtStart = stretch != 0 ? 1 : 0;
  step.turnsAtLeaving = lead.moves && Turned(lead.first, isRight) != leaving ? 1 : 0;
  step.bends = static_cast<std::int8_t>(lead.bends);
  step.forward = static_cast<std::int8_t>(forward);
  step.stretch = static_cast<std::int8_t>(known);
  step.rows = static_cast<std::int8_t>(rows);
  return step;
}

struct Table {
  BorderStep steps[kSteps];
};

constexpr Table MakeTable() {
  Table table = {};
  for (int i = 0; i < kSteps; ++i) {
    const int distance = i % kStepDistances - kFarthest;
    const int link = i / kStepDistances % kStepLinks;
    const int side = i / kStepDistances / kStepLinks;
    table.steps[i] = MakeStep(side / 2, side % 2, link, distance);
  }
  return table;
}

alignas(64) inline constexpr Table kTable = MakeTable();

}  // namespace border_steps

/// The step in a state along a link, to a side that is `distance` columns away, at most kFarthest.
inline const BorderStep& StepAlong(std::size_t state, int link, std::int64_t distance) {
  return border_steps::kTable
      .steps[state + static_cast<std::size_t>(link) % kStepLinks * kStepDistances +
             static_cast<std::size_t>(distance + kFarthest)];
}

#endif  // CODER_BORDER_STEPS_H_
