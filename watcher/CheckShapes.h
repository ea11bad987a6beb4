#ifndef WATCHER_CHECK_SHAPES_H_
#define WATCHER_CHECK_SHAPES_H_

#include <cmath>
#include <limits>
#include <type_traits>

#include "VemData.h"
#include "values/Processor.h"
#include "watcher/Behind.h"
#include "watcher/CheckRegions.h"
#include "watcher/CheckValues.h"
#include "watcher/Report.h"

/// Checks of lines, regions of interest and overlays.
namespace watcher {
namespace checks {

// --- Geometry ---

inline bool AreEqual(const VemPoint& a, const VemPoint& b) { return a.x == b.x && a.y == b.y; }

inline void NewLine(const Call& call, const VemPoint& start, const VemPoint& end) {
  call.Refuse(AreEqual(start, end), "the points are equal");
}
inline void NewLine(const Call& call, double x1, double y1, double x2, double y2) {
  call.Refuse(x1 == x2 && y1 == y2, "the points are equal");
}

inline bool HasNoLength(const VemLine& line) {
  const double dx = line.end.x - line.start.x;
  const double dy = line.end.y - line.start.y;
  return std::sqrt(dx * dx + dy * dy) == 0.0;
}

inline void TellAngle(const Call& call) {
  call.Tell(Kind::kNoEffect, "the line has no length, and so no angle");
}
inline void VerticalAngle(const Call& call, const VemLine& self) {
  const bool isAlong = self.start.y == self.end.y && self.start.x != self.end.x;
  if (!isAlong && HasNoLength(self)) TellAngle(call);
}
inline void HorizonalAngle(const Call& call, const VemLine& self) {
  const bool isAlong = self.start.x == self.end.x && self.start.y != self.end.y;
  if (!isAlong && HasNoLength(self)) TellAngle(call);
}

// --- Regions of interest and overlays ---
//
// Both have a generator of most shapes, and a path of overlays has one more.

template <typename Shape>
bool RefuseCorners(const Call& call, const Shape&, const VemPoint& p1, const VemPoint& p2) {
  return call.Refuse(!(p2.x > p1.x), "p2 is not greater in x") ||
         call.Refuse(!(p2.y > p1.y), "p2 is not greater in y");
}

inline bool RefuseRadius(const Call& call, double radius) {
  return call.Refuse(!(radius > 0), "radius is not above 0");
}

inline bool RefuseSides(const Call& call, double length1, double length2) {
  return call.Refuse(!(length1 > 0), "length1 is not above 0") ||
         call.Refuse(!(length2 > 0), "length2 is not above 0");
}

inline bool RefuseSweep(const Call& call, double sweepAngle) {
  return call.Refuse(!(sweepAngle >= 0), "sweepAngle is not 0 or above");
}

inline bool RefuseRing(const Call& call, double innerRadius, double outerRadius,
                       double sweepAngle) {
  return call.Refuse(!(innerRadius > 0), "innerRadius is not above 0") ||
         call.Refuse(!(outerRadius > innerRadius), "outerRadius is not above innerRadius") ||
         RefuseSweep(call, sweepAngle);
}

inline void RefuseRake(const Call& call, int mode, int count) {
  if (call.Refuse(mode < 0 || mode > 3, "mode is not from 0 to 3")) return;
  call.Refuse(count < 2, "count is below 2");
}

template <typename Shape>
void Line(const Call& call, const Shape&, const VemPoint& p1, const VemPoint& p2) {
  call.Refuse(AreEqual(p1, p2), "the points are equal");
}

template <typename Shape>
void Rect1(const Call& call, const Shape& self, const VemPoint& p1, const VemPoint& p2) {
  RefuseCorners(call, self, p1, p2);
}

template <typename Shape>
void RakeRect1(const Call& call, const Shape& self, const VemPoint& p1, const VemPoint& p2,
               int mode, int count) {
  if (!RefuseCorners(call, self, p1, p2)) RefuseRake(call, mode, count);
}

template <typename Shape>
void Circle(const Call& call, const Shape&, const VemPoint&, double radius) {
  RefuseRadius(call, radius);
}

template <typename Shape>
void Ellipse(const Call& call, const Shape&, const VemPoint&, double radius1, double radius2,
             double) {
  if (call.Refuse(!(radius1 > 0), "radius1 is not above 0")) return;
  call.Refuse(!(radius2 > 0), "radius2 is not above 0");
}

template <typename Shape>
void Rect2(const Call& call, const Shape&, const VemPoint&, double length1, double length2,
           double) {
  RefuseSides(call, length1, length2);
}

template <typename Shape>
void RakeRect2(const Call& call, const Shape&, const VemPoint&, double length1, double length2,
               double, int mode, int count) {
  if (!RefuseSides(call, length1, length2)) RefuseRake(call, mode, count);
}

template <typename Shape>
void Torus(const Call& call, const Shape&, const VemPoint&, double innerRadius, double outerRadius,
           double, double sweepAngle) {
  RefuseRing(call, innerRadius, outerRadius, sweepAngle);
}

template <typename Shape>
void SpokeTorus(const Call& call, const Shape&, const VemPoint&, double innerRadius,
                double outerRadius, double, double sweepAngle, int mode, int count) {
  if (RefuseRing(call, innerRadius, outerRadius, sweepAngle)) return;
  if (call.Refuse(mode < 4 || mode > 5, "mode is neither 4 nor 5")) return;
  call.Refuse(count < 2, "count is below 2");
}

template <typename Shape>
void Arc(const Call& call, const Shape&, const VemPoint&, double radius, double,
         double sweepAngle) {
  if (!RefuseRadius(call, radius)) RefuseSweep(call, sweepAngle);
}

template <typename Shape>
void Chain(const Call& call, const Shape&, const VemPointArray& points) {
  call.Refuse(SizeOf(points) < 3, "points has fewer than 3");
}

template <typename Roi>
void Vertices(const Call& call, const Roi&, const VemVarArray& rows, const VemVarArray& cols) {
  if (call.Refuse(SizeOf(rows) != SizeOf(cols), "the arrays differ in length")) return;
  call.Refuse(SizeOf(cols) < 3, "the arrays have fewer than 3");
}

inline bool RefuseMask(const Call& call, int width, int height) {
  return call.Refuse(width < 2 || height < 2, "the canvas is below 2 by 2");
}

template <typename Roi>
void MaskOfRuns(const Call& call, const Roi&, const VemVarArray& rows, const VemVarArray& firsts,
                const VemVarArray& lasts, int width, int height) {
  if (!RefuseMask(call, width, height)) RefuseLengths(call, rows, firsts, lasts);
}

template <typename Roi>
void MaskOfContours(const Call& call, const Roi&, const VemContourArray&, int width, int height) {
  RefuseMask(call, width, height);
}

inline int WholeOf(const VemVar& value) {
  if (IsLong(value)) return static_cast<int>(PayloadOf<long>(value));
  return IsNumber(value) ? TruncateToInt(PayloadOf<double>(value)) : 0;
}

// A line's slope is a quotient of whole numbers. One wholly outside has none.
template <typename... Args>
void GetMask(const Call& call, const IVemROIPara& self, Args&...) {
  if (self.Type != VemROILine || SizeOf(self.Params) < 4) return;
  const int y1 = WholeOf(ElementOf(self.Params, 0));
  const int x1 = WholeOf(ElementOf(self.Params, 1));
  const int y2 = WholeOf(ElementOf(self.Params, 2));
  const int x2 = WholeOf(ElementOf(self.Params, 3));
  if ((x1 < 0 && x2 < 0) || (y1 < 0 && y2 < 0)) return;
  if (x1 == x2) return call.Tell(Kind::kFault, "the line is vertical");
  if (WrapSubtract(x2, x1) == -1 && WrapSubtract(y2, y1) == std::numeric_limits<int>::min()) {
    call.Tell(Kind::kFault, "the line's slope is the smallest integer by -1");
  }
}
template <typename... Args>
void GetMask(const Call& call, const VemROI& self, Args&... args) {
  GetMask(call, Behind(self), args...);
}

template <typename Overlay>
void FromROI(const Call& call, const Overlay&, const VemROI& roi) {
  if (call.Refuse(Behind(roi).Type == VemROINone, "roi has no shape")) return;
  if (Behind(roi).Type == VemROIMask) {
    call.Tell(Kind::kNoEffect, "roi is a mask, of which neither canvas nor runs are taken");
  }
}

// A mask comes without its runs, over those that there are.
inline void SelectShape(const Call& call, const VemROIArray& self, int index, const VemROI* out) {
  if (!call.InRange(index, SizeOf(self))) return;
  const IVemROIArrayPara& element = ElementOf(self, index);
  if (element.Type != VemROIMask) return;
  if (SizeOf(element.Rows) > 0 || SizeOf(Behind(*out).Rows) > 0) {
    call.Tell(Kind::kNoEffect, "the element is a mask, of which the runs are not taken");
  }
}

// Readers that give true on whatever element.

inline void Is(const Call& call, const VemOverlay& self, VemOverlayType type, const char* name) {
  if (Behind(self).Type != type) call.Tell(Kind::kOtherKind, "the element is no %s", name);
}

inline void GetPoint(const Call& call, const VemOverlay& self, const VemPoint*) {
  Is(call, self, VemOverlayPoint, "point");
}
inline void GetText(const Call& call, const VemOverlay& self, const VemPoint*, const VemVar*,
                    const VemFont*) {
  Is(call, self, VemOverlayText, "text");
}
inline void GetImage(const Call& call, const VemOverlay& self, const VemPoint*, const VemImage*) {
  Is(call, self, VemOverlayImage, "image");
}
inline void GetRegion(const Call& call, const VemOverlay& self, const VemRegion*) {
  Is(call, self, VemOverlayRegion, "region");
}

}  // namespace checks
}  // namespace watcher

#endif  // WATCHER_CHECK_SHAPES_H_
