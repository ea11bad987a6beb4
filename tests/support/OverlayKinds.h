#ifndef TESTS_SUPPORT_OVERLAY_KINDS_H_
#define TESTS_SUPPORT_OVERLAY_KINDS_H_

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "IVemOverlay.h"
#include "IVemOverlayPath.h"
#include "VemOverlay.h"
#include "VemOverlayPath.h"

using Doubles = std::vector<double>;

/// What a reader gave: its result, and its outputs in the order of its arguments, x before y. A
/// list of points counts as all their coordinates.
struct Reading {
  bool result;
  Doubles outputs;
};

bool operator==(const Reading& a, const Reading& b);  // NaN equals NaN.
void PrintTo(const Reading& reading, std::ostream* out);

/// The operations of one kind of element that is told by numbers. Arguments are a list in the order
/// of the operation's, x before y; the outputs of a reader are -1, -2, -3 and so on before it is
/// called, and a list of points holds one point, (-1, -2).
struct OverlayKind {
  std::string name;
  VemOverlayType type;
  std::function<void(IVemOverlay&, const Doubles&)> set;
  std::function<Reading(const IVemOverlay&)> get;
  std::function<void(VemOverlay&, const Doubles&)> gen;
  std::function<Reading(VemOverlay&)> read;
  std::function<void(IVemOverlayPath&, const Doubles&)> addToImplementation;
  std::function<void(VemOverlayPath&, const Doubles&)> add;  // Empty: the path has none.
};

/// All kinds that are told by numbers: all but text, image, region and none.
const std::vector<OverlayKind>& OverlayKinds();
const OverlayKind& KindOf(VemOverlayType type);

/// The implementation object behind a handle.
IVemOverlay& Impl(VemOverlay& overlay);

#endif  // TESTS_SUPPORT_OVERLAY_KINDS_H_
