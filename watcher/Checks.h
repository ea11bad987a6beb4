#ifndef WATCHER_CHECKS_H_
#define WATCHER_CHECKS_H_

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

#include <opencv2/core.hpp>

#include "VemData.h"
#include "values/Processor.h"
#include "watcher/Behind.h"
#include "watcher/Report.h"

/// What is a misuse of an operation: the checks that the table names, in the order of the classes.
///
/// A check gets the call, the object unless there is none, and the arguments. It reads, tells at
/// most one misuse, and changes nothing. Arguments that it does not look at stand at its end.
namespace watcher {
namespace checks {

/// Nothing but what every operation is asked.
template <typename... Args>
void Arguments(const Call&, Args&...) {}

// --- Control values ---

inline const char* KindOf(const VemVar& value) {
  switch (value.ValType()) {
    case VemVarLong:
      return "an integer";
    case VemVarDouble:
      return "a double";
    case VemVarString:
      return "a text";
    default:
      return "nothing";
  }
}

inline bool IsLong(const VemVar& value) { return value.ValType() == VemVarLong; }
inline bool IsNumber(const VemVar& value) {
  return IsLong(value) || value.ValType() == VemVarDouble;
}

inline void AssignText(const Call& call, const VemVar& self, const VemVar& other) {
  if (&self == &other && IsText(self)) call.Tell(Kind::kItself, "a text is assigned to itself");
}

inline void ReadNumber(const Call& call, const VemVar& self) {
  if (!IsNumber(self)) call.Tell(Kind::kOtherKind, "the value is %s, no number", KindOf(self));
}

inline void ReadText(const Call& call, const VemVar& self) {
  if (!IsText(self)) call.Tell(Kind::kOtherKind, "the value is %s, no text", KindOf(self));
}

inline void NoResult(const Call& call, const VemVar& left, const VemVar& right) {
  call.Tell(Kind::kOtherKind, "no result for %s and %s", KindOf(left), KindOf(right));
}

inline bool IsFault(long dividend, long divisor) {
  return divisor == 0 || (divisor == -1 && dividend == std::numeric_limits<long>::min());
}

inline void DivideLong(const Call& call, long dividend, long divisor) {
  if (!IsFault(dividend, divisor)) return;
  call.Tell(Kind::kFault,
            divisor == 0 ? "an integer is divided by 0" : "the smallest integer is divided by -1");
}

// Two texts have a sum.
inline void Plus(const Call& call, const VemVar& left, const VemVar& right) {
  if (IsText(left) && IsText(right)) return;
  if (!IsNumber(left) || !IsNumber(right)) NoResult(call, left, right);
}

// A number less nothing is the number.
inline void Minus(const Call& call, const VemVar& left, const VemVar& right) {
  const bool takes = IsLong(right) || right.ValType() == VemVarNone;
  if (!IsNumber(left) || !takes) NoResult(call, left, right);
}

inline void Times(const Call& call, const VemVar& left, const VemVar& right) {
  if (!IsNumber(left) || !IsNumber(right)) NoResult(call, left, right);
}

inline void Divide(const Call& call, const VemVar& left, const VemVar& right) {
  if (!IsNumber(left) || !IsNumber(right)) return NoResult(call, left, right);
  if (!IsLong(left) || !IsLong(right)) return;
  DivideLong(call, PayloadOf<long>(left), PayloadOf<long>(right));
}

inline void Remainder(const Call& call, const VemVar& left, const VemVar& right) {
  if (!IsLong(left) && !IsLong(right)) return NoResult(call, left, right);
  const long dividend = PayloadOf<long>(left);
  const long divisor = PayloadOf<long>(right);
  if (IsFault(dividend, divisor)) return DivideLong(call, dividend, divisor);
  if (IsLong(left) && IsLong(right)) return;
  call.Tell(Kind::kOtherKind, "the %s side is %s, which enters with its bits",
            IsLong(left) ? "right" : "left", KindOf(IsLong(left) ? right : left));
}

// --- Arrays ---

template <typename Array, typename... Args>
void Index(const Call& call, const Array& self, int index, Args&...) {
  call.InRange(index, SizeOf(self));
}

/// At the end, too.
template <typename Array, typename... Args>
void IndexOrEnd(const Call& call, const Array& self, int index, Args&...) {
  const std::size_t length = SizeOf(self);
  if (index < 0 || static_cast<std::size_t>(index) != length) call.InRange(index, length);
}

template <typename Array>
bool BothInRange(const Call& call, const Array& self, int i, int j) {
  return call.InRange(i, SizeOf(self), 0) && call.InRange(j, SizeOf(self), 1);
}

template <typename Array>
void Swap(const Call& call, const Array& self, int i, int j) {
  BothInRange(call, self, i, j);
}

/// The index is taken to the nearest that an element has.
template <typename Array>
void NotEmpty(const Call& call, const Array& self, int index) {
  if (SizeOf(self) == 0) call.InRange(index, 0);
}

/// A body in a header has looked at the index.
inline void Unseen(const Call& call) {
  call.Tell(Kind::kIndex, "the index is out of range (neither is seen, for the call is inlined)");
}

template <typename Array>
void NotForReading(const Call& call, const Array&, int index) {
  call.Tell(Kind::kIndex, "index %d, of a const array, which gives no element", index);
}

// Of arrays whose elements must not be assigned to themselves where they hold a text.

template <typename Array, typename T>
void ReplaceText(const Call& call, const Array& self, int index, const T& value) {
  if (!call.InRange(index, SizeOf(self))) return;
  if (&value == &ElementOf(self, index) && HoldsText(value)) {
    call.Tell(Kind::kItself, "an element with a text is replaced by itself");
  }
}

template <typename Array>
void SwapText(const Call& call, const Array& self, int i, int j) {
  if (BothInRange(call, self, i, j) && i == j && HoldsText(ElementOf(self, i))) {
    call.Tell(Kind::kItself, "an element with a text is exchanged with itself");
  }
}

template <typename Array, typename T>
void SelectText(const Call& call, const Array& self, int index, const T* out) {
  if (!call.InRange(index, SizeOf(self))) return;
  if (out == &ElementOf(self, index) && HoldsText(*out)) {
    call.Tell(Kind::kItself, "an element with a text is selected into itself");
  }
}

template <typename Array>
void AssignArray(const Call& call, const Array& self, const Array& other) {
  if (&self == &other && SizeOf(self) > 0) {
    call.Tell(Kind::kItself, "assigned to itself, the array becomes empty");
  }
}

inline void IndexOf(const Call& call, const VemVarArray&, const VemVar&, int start) {
  if (start < 0) call.Tell(Kind::kIndex, "start %d is negative", start);
}

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

// --- Images and matrices ---

inline bool RefuseType(const Call& call, int type) {
  return call.Refuse(type < 0 || type > 6, "type is not from 0 to 6");
}

// Of no area, whatever is asked for is empty.
inline void NewImage(const Call& call, const unsigned char*, int, int height, int width,
                     int channels, VemImageType type) {
  if (height == 0 || width == 0 || RefuseType(call, type)) return;
  if (channels < 1 || channels > 512) {
    call.Tell(Kind::kNoEffect, "channels %d is not from 1 to 512, and wraps", channels);
  }
}

inline void CreateImage(const Call& call, const VemImage&, const unsigned char*, int step,
                        int height, int width, int channels, VemImageType type) {
  if (call.Refuse(height < 0, "height is negative")) return;
  if (call.Refuse(width < 0, "width is negative")) return;
  if (call.Refuse(channels != 1 && channels != 3, "channels is neither 1 nor 3")) return;
  if (RefuseType(call, type)) return;
  const int size = static_cast<int>(CV_ELEM_SIZE1(type));
  call.Refuse(step != WrapMultiply(WrapMultiply(width, channels), size),
              "step is not that of packed rows");
}

// Without a dot among the last four characters, four alone name a format.
template <typename Char, typename... Args>
void SaveImage(const Call& call, const VemImage& self, const Char* path, Args&...) {
  if (!IsAddress(&Behind(self)) || Behind(self).cols < 1) return;
  if (path == nullptr) return call.Tell(Kind::kObject, "path is null");
  const std::size_t length = std::char_traits<Char>::length(path);
  if (length < 4) return;
  const char known[] = "jpeg";
  bool isKnown = true;
  for (std::size_t i = 0; i < 4; ++i) {
    const Char c = path[length - 4 + i];
    if (c == Char('.')) return;
    isKnown = isKnown && (c == Char(known[i]) || c == Char(known[i] - 'a' + 'A'));
  }
  if (!isKnown) {
    call.Tell(Kind::kNoEffect, "nothing is written, path has no dot in its last four characters");
  }
}

inline void NewMatrix(const Call& call, const void*, int rows, int cols, VemMatrixType type) {
  if (rows != 0 && cols != 0) RefuseType(call, type);
}

inline void ZeroMatrix(const Call& call, int rows, int cols, VemMatrixType type) {
  if (call.Refuse(rows < 0, "rows is negative")) return;
  if (call.Refuse(cols < 0, "cols is negative")) return;
  if (rows != 0 && cols != 0) RefuseType(call, type);
}

inline void SetMatrix(const Call& call, const VemMatrix&, int rows, int cols, VemMatrixType type) {
  if (call.Refuse(rows < 1, "rows is below 1")) return;
  if (call.Refuse(cols < 1, "cols is below 1")) return;
  RefuseType(call, type);
}

inline bool IsElement(const Call& call, const cv::Mat& mat, int row, int col) {
  if (row < 0 || row >= mat.rows) {
    call.Tell(Kind::kIndex, "row %d, rows %d", row, mat.rows);
  } else if (col < 0 || col >= mat.cols) {
    call.Tell(Kind::kIndex, "col %d, cols %d", col, mat.cols);
  } else {
    return true;
  }
  return false;
}

inline void Element(const Call& call, const VemMatrix& self, int row, int col, const VemVar*) {
  IsElement(call, Behind(self), row, col);
}

inline void ReplaceNumber(const Call& call, const VemMatrix& self, int row, int col,
                          const VemVar& value) {
  if (IsElement(call, Behind(self), row, col)) ReadNumber(call, value);
}

inline void SetTo(const Call& call, const VemMatrix&, const VemVar& value) {
  ReadNumber(call, value);
}

// --- Morphology structures ---

inline void AssignTable(const Call& call, const VemMorphStructure& self,
                        const VemMorphStructure& other) {
  if (&self == &other && IsCustom(self)) {
    call.Tell(Kind::kItself, "assigned to itself, a custom table loses its values");
  }
}

inline void CreateElement(const Call& call, const VemMorphStructure& self, int newRows, int newCols,
                          int newAnchorX, int newAnchorY, VemMorphStructureType newType,
                          const int* newValues) {
  if (call.Refuse(newRows < 1, "newRows is below 1")) return;
  if (call.Refuse(newCols < 1, "newCols is below 1")) return;
  if (call.Refuse(newAnchorX < -1, "newAnchorX is below -1")) return;
  if (call.Refuse(newAnchorY < -1, "newAnchorY is below -1")) return;
  if (call.Refuse(newType < 0, "newType is negative")) return;
  if (call.Refuse(newAnchorY >= newRows, "newAnchorY is not below newRows")) return;
  if (call.Refuse(newAnchorX >= newCols, "newAnchorX is not below newCols")) return;
  if (newType != VemMorphStructureCustom) {
    if (newValues != nullptr) {
      call.Tell(Kind::kNoEffect, "newValues is ignored, for newType is not the custom one");
    }
    return;
  }
  if (call.Refuse(newValues == nullptr, "a custom element has no newValues")) return;
  if (IsCustom(self) && newValues == TableOf(self)) {
    call.Tell(Kind::kItself, "newValues is the record's own table, which is released first");
  }
}

// --- Regions ---

inline bool RefuseLengths(const Call& call, const VemVarArray& rows, const VemVarArray& firsts,
                          const VemVarArray& lasts) {
  const std::size_t length = SizeOf(rows);
  return call.Refuse(SizeOf(firsts) != length || SizeOf(lasts) != length,
                     "the arrays differ in length");
}

// The rows tell how many runs there are.
inline bool DifferInLength(const Call& call, std::size_t rows, std::size_t firsts,
                           std::size_t lasts) {
  if (firsts == rows && lasts == rows) return false;
  call.Tell(Kind::kNoEffect, "rows %zu, firstColumns %zu, lastColumns %zu: the rows alone count",
            rows, firsts, lasts);
  return true;
}

inline void PaintedRuns(const Call& call, const IVemROIPara&, const VemVarArray& rows,
                        const VemVarArray& firsts, const VemVarArray& lasts, int, int) {
  DifferInLength(call, SizeOf(rows), SizeOf(firsts), SizeOf(lasts));
}

inline bool DifferInLength(const Call& call, const VemRegion& region) {
  const VemRegionData& data = Behind(region);
  return DifferInLength(call, SizeOf(data.Rows), SizeOf(data.FirstColumns),
                        SizeOf(data.LastColumns));
}

inline bool RefuseCanvas(const Call& call, int width, int height) {
  return call.Refuse(width < 1 || height < 1, "the canvas is below 1 by 1");
}

// No runs give the empty region, which is what they ask for.
inline void RegionOfRuns(const Call& call, const VemVarArray& rows, const VemVarArray& firsts,
                         const VemVarArray& lasts) {
  RefuseLengths(call, rows, firsts, lasts);
}

inline void RegionOnCanvas(const Call& call, int width, int height, const VemVarArray& rows,
                           const VemVarArray& firsts, const VemVarArray& lasts) {
  if (RefuseLengths(call, rows, firsts, lasts)) return;
  if (SizeOf(rows) > 0 || width != 0 || height != 0) RefuseCanvas(call, width, height);
}

// The largest coordinate is found as the library finds it.
inline void RegionOfPoints(const Call& call, const VemPointArray& points) {
  const std::vector<VemPoint>& list = Behind(points);
  if (list.empty()) return call.Tell(Kind::kObject, "points is empty");
  int largestX = TruncateToInt(list[0].x);
  int largestY = TruncateToInt(list[0].y);
  for (const VemPoint& point : list) {
    if (point.x > static_cast<double>(largestX)) largestX = TruncateToInt(point.x);
    if (point.y > static_cast<double>(largestY)) largestY = TruncateToInt(point.y);
  }
  if (call.Refuse(largestX < 1, "no point lies right of column 0")) return;
  call.Refuse(largestY < 1, "no point lies below row 0");
}

inline void PointsOnCanvas(const Call& call, int width, int height, const VemPointArray&) {
  RefuseCanvas(call, width, height);
}

inline void AppendRuns(const Call& call, const IVemRegionArrayPara&, int, int,
                       const std::vector<int>& rows, const std::vector<int>& firsts,
                       const std::vector<int>& lasts) {
  if (call.Refuse(rows.empty(), "rows is empty")) return;
  if (call.Refuse(firsts.size() != rows.size(), "rows and firstColumns differ in length")) return;
  if (call.Refuse(lasts.empty(), "lastColumns is empty")) return;
  DifferInLength(call, rows.size(), firsts.size(), lasts.size());
}

template <typename Array, typename... Args>
void AppendRegion(const Call& call, const Array&, const VemRegion& region, Args&...) {
  DifferInLength(call, region);
}

template <typename Array>
void ReplaceRegion(const Call& call, const Array& self, int index, const VemRegion& region) {
  if (call.InRange(index, SizeOf(self))) DifferInLength(call, region);
}

// Of the two tracks, the longer one tells what there is.
inline std::size_t LongerTrack(const IVemRegionArrayPara& self) {
  return std::max(self.Rows.size(), self.Hierarchies.size());
}

inline void RemoveItem(const Call& call, const IVemRegionArrayPara& self, int position) {
  call.InRange(position, LongerTrack(self));
}

inline void SwapItems(const Call& call, const IVemRegionArrayPara& self, int a, int b) {
  if (call.InRange(a, LongerTrack(self), 0)) call.InRange(b, LongerTrack(self), 1);
}

inline void AppendOutlines(const Call& call, const IVemRegionArrayPara&,
                           const std::vector<std::vector<cv::Point>>& contours,
                           const std::vector<cv::Vec4i>& hierarchy, bool) {
  if (contours.size() == hierarchy.size()) return;
  call.Tell(Kind::kNoEffect, "contours %zu, hierarchy %zu: nothing keeps them in step",
            contours.size(), hierarchy.size());
}

// Outlines go into a track of their own.
inline void InsertRegion(const Call& call, const IVemRegionArrayPara& self, int position,
                         const VemRegion& region) {
  if (position < 0 || static_cast<std::size_t>(position) > SizeOf(self)) {
    call.InRange(position, SizeOf(self));
  } else if (!Behind(region).Hierarchy.empty() &&
             static_cast<std::size_t>(position) > self.Hierarchies.size()) {
    call.Tell(Kind::kNoEffect, "the outlines are lost, %d of the regions before have any",
              static_cast<int>(self.Hierarchies.size()));
  } else {
    DifferInLength(call, region);
  }
}
inline void InsertRegion(const Call& call, const VemRegionArray& self, int index,
                         const VemRegion& region) {
  InsertRegion(call, Behind(self), index, region);
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

// --- The coder ---

inline void IsRaster(const Call& call, const cv::Mat& raster) {
  if (raster.dims > 2) {
    call.Tell(Kind::kNoEffect, "raster has %d dimensions, and counts as one without foreground",
              raster.dims);
  } else if (raster.channels() != 1) {
    call.Tell(Kind::kNoEffect, "raster has %d channels, and counts as one without foreground",
              raster.channels());
  }
}

template <typename Object, typename... Args>
void Raster(const Call& call, const Object&, const cv::Mat& raster, Args&...) {
  IsRaster(call, raster);
}
template <typename... Args>
void Raster(const Call& call, const cv::Mat& raster, const char&, Args&...) {
  IsRaster(call, raster);
}

// Each outline's points lie between its start and the next one's.
inline void Starts(const Call& call, const std::vector<cv::Point>& points,
                   const std::vector<int>& pointStarts,
                   const std::vector<std::vector<cv::Point>>&) {
  int last = 0;
  for (const int start : pointStarts) {
    if (start < last)
      return call.Tell(Kind::kIndex, "a start of %d follows one of %d", start, last);
    if (static_cast<std::size_t>(start) > points.size()) {
      return call.Tell(Kind::kIndex, "a start of %d, points %zu", start, points.size());
    }
    last = start;
  }
}

}  // namespace checks
}  // namespace watcher

#endif  // WATCHER_CHECKS_H_
