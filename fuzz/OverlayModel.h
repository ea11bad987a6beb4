#ifndef FUZZ_OVERLAY_MODEL_H_
#define FUZZ_OVERLAY_MODEL_H_

#include <cstddef>
#include <vector>

#include "ByteReader.h"
#include "VemOverlayType.h"
#include "VemVar.h"
#include "support/OverlayKinds.h"

/// What an overlay is told by: its kind and its values.
struct PlainElement {
  int type = VemOverlayNone;
  std::vector<VemVar> values;
};

inline bool IsChain(int type) {
  return type == VemOverlayPolygon || type == VemOverlayPolyLine || type == VemOverlayIrregular;
}

/// How many numbers a kind takes, mode and count, which stand last, included.
inline int CountOf(int type) {
  switch (type) {
    case VemOverlayPoint:
      return 2;
    case VemOverlayCircle:
      return 3;
    case VemOverlayArrowLine:
    case VemOverlayLine:
    case VemOverlayRect1:
      return 4;
    case VemOverlayEllipse:
    case VemOverlayRect2:
    case VemOverlayArc:
      return 5;
    case VemOverlayTorus:
    case VemOverlayRakeRect1:
      return 6;
    case VemOverlayRakeRect2:
      return 7;
    default:
      return 8;  // VemOverlaySpokeTorus
  }
}

inline bool HasMode(int type) {
  return type == VemOverlayRakeRect1 || type == VemOverlayRakeRect2 || type == VemOverlaySpokeTorus;
}

/// Arguments of a kind, x before y: any, or such as grow one by one, which every kind takes.
inline Doubles ReadArguments(ByteReader& in, int type) {
  const bool fits = in.Flag();
  double last = 0;
  const auto next = [&] {
    if (fits) return last += in.Between(1, 6) / 3.0;  // No float.
    return in.Flag() ? in.Between(-4, 12) / 2.0 : in.Number();
  };
  Doubles arguments;
  if (IsChain(type)) {
    for (int left = 2 * in.Below(6); left > 0; --left) arguments.push_back(next());
    return arguments;
  }
  const int numbers = CountOf(type) - (HasMode(type) ? 2 : 0);
  for (int i = 0; i < numbers; ++i) arguments.push_back(next());
  if (!HasMode(type)) return arguments;
  const int mode = type == VemOverlaySpokeTorus ? 4 + in.Below(2) : in.Below(4);
  arguments.push_back(fits ? mode : in.Byte() < 230 ? in.Between(-1, 6) : in.Raw<int>());
  arguments.push_back(fits ? 2 + in.Below(4) : in.Byte() < 230 ? in.Between(-1, 5) : in.Raw<int>());
  return arguments;
}

/// Whether a kind takes its arguments.
inline bool Accepts(int type, const Doubles& a) {
  const auto has = [&](std::size_t from, double least, double most) {
    return a[from] >= least && a[from] <= most && a[from + 1] >= 2;  // Mode and count.
  };
  const auto isRing = [&] { return a[2] > 0 && a[3] > 0 && a[3] > a[2] && a[5] >= 0; };
  const auto isRect1 = [&] { return a[2] > a[0] && a[3] > a[1]; };
  switch (type) {
    case VemOverlayPoint:
      return true;
    case VemOverlayArrowLine:
    case VemOverlayLine:
      return a[0] != a[2] || a[1] != a[3];
    case VemOverlayRect1:
      return isRect1();
    case VemOverlayRakeRect1:
      return isRect1() && has(4, 0, 3);
    case VemOverlayCircle:
      return a[2] > 0;
    case VemOverlayEllipse:
    case VemOverlayRect2:
      return a[2] > 0 && a[3] > 0;
    case VemOverlayRakeRect2:
      return a[2] > 0 && a[3] > 0 && has(5, 0, 3);
    case VemOverlayTorus:
      return isRing();
    case VemOverlaySpokeTorus:
      return isRing() && has(6, 4, 5);
    case VemOverlayArc:
      return a[2] > 0 && a[4] >= 0;
    default:
      return a.size() >= 6;  // Chains of three points.
  }
}

/// What becomes of an element that is set to a kind with these arguments.
inline PlainElement ElementOf(int type, const Doubles& arguments) {
  if (!Accepts(type, arguments)) return {};
  PlainElement element = {type, {}};
  for (const double number : arguments) element.values.push_back(number);
  std::size_t points = 1;
  if (IsChain(type)) points = arguments.size() / 2;
  if (type == VemOverlayArrowLine || type == VemOverlayLine || type == VemOverlayRect1 ||
      type == VemOverlayRakeRect1) {
    points = 2;
  }
  const bool keepsOrder = type == VemOverlayPoint || type == VemOverlayArc;
  for (std::size_t i = 0; i < points && !keepsOrder; ++i) {
    element.values[2 * i] = arguments[2 * i + 1];
    element.values[2 * i + 1] = arguments[2 * i];
  }
  if (!HasMode(type)) return element;
  for (std::size_t i = arguments.size() - 2; i < arguments.size(); ++i) {
    element.values[i] = static_cast<int>(arguments[i]);
  }
  return element;
}

#endif  // FUZZ_OVERLAY_MODEL_H_
