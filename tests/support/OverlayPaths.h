#ifndef TESTS_SUPPORT_OVERLAY_PATHS_H_
#define TESTS_SUPPORT_OVERLAY_PATHS_H_

#include <vector>

#include "IVemOverlay.h"
#include "VemOverlay.h"
#include "VemPoint.h"
#include "support/OverlayRecords.h"

// Paths of either kind, the handle and its implementation, with elements that are told by numbers.

template <typename Path>
IVemOverlay& ElementOf(Path& path, int position) {
  return Impl(path[position]);
}

/// An element that its number tells from others.
inline VemOverlay Numbered(int number) {
  VemOverlay overlay;
  VemPoint point(number, 0);
  overlay.GenPoint(point);
  return overlay;
}

template <typename Path>
Path NumberedPath(int count) {
  Path path;
  for (int i = 0; i < count; ++i) {
    VemOverlay overlay = Numbered(i);
    path.AddOverlay(overlay);
  }
  return path;
}

template <typename Path>
std::vector<int> NumbersOf(Path& path) {
  std::vector<int> numbers;
  for (int i = 0; i < path.Length(); ++i) {
    VemPoint point(-1, -1);
    path[i].GetPoint(&point);
    numbers.push_back(static_cast<int>(point.x));
  }
  return numbers;
}

#endif  // TESTS_SUPPORT_OVERLAY_PATHS_H_
