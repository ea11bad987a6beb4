#ifndef ROI_SHAPE_GEOMETRY_H_
#define ROI_SHAPE_GEOMETRY_H_

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

#include <opencv2/core.hpp>

#include "VemROIType.h"
#include "VemTuple.h"
#include "values/Processor.h"

// What the run form and the outline form of a shape have in common. All read a shape's numbers in
// their stored order, y before x.

inline double ToDouble(float value) { return static_cast<double>(value); }
inline float ToFloat(double value) { return static_cast<float>(value); }
inline float ToFloat(int value) { return static_cast<float>(value); }

/// The size that a mask's canvas needs, counted from the origin.
struct Canvas {
  int width;
  int height;
};

/// The canvas up to a largest column and a largest row, both included.
inline Canvas CanvasTo(int column, int row) { return {WrapAdd(column, 1), WrapAdd(row, 1)}; }

/// How far a shape reaches: one past its last column and row.
struct Reach {
  bool IsOutside() const { return endColumn < 0 || endRow < 0; }
  Canvas ToCanvas() const { return CanvasTo(endColumn, endRow); }

  int endColumn;
  int endRow;
};

/// Whether a round shape ends left of or above the origin. A radius that does not fit an integer is
/// the smallest one, and so does.
inline bool EndsBefore0(int column, int row, int radius) {
  return long{column} + radius < 0 || long{row} + radius < 0;
}

/// Raises `cv::Exception` for a negative radius, as OpenCV's drawing does.
template <typename T>
void RequireRadius(T radius) {
  CV_Assert(radius >= 0);
}

/// The two points of a rectangle or a line as whole numbers.
struct PointPair {
  explicit PointPair(const VemVarArray& params);

  bool IsOutside() const { return std::max(x1, x2) < 0 || std::max(y1, y2) < 0; }

  int x1;
  int y1;
  int x2;
  int y2;
};

/// The corners of a rotated rectangle as whole numbers, and those of them that reach farthest.
struct RotatedCorners {
  explicit RotatedCorners(const VemVarArray& params);

  float angle;
  std::array<cv::Point, 4> corners;
  cv::Point top;
  cv::Point left;
  cv::Point bottom;
  cv::Point right;
  Reach reach;
};

/// An ellipse with its numbers as far as they are rounded, and the box around it.
struct EllipseBox {
  explicit EllipseBox(const VemVarArray& params);

  int column;
  int row;
  float a;
  float b;
  float angle;
  cv::RotatedRect shape;
  cv::Rect bounds;
  Reach reach;
};

/// The samples of an arc, one for each degree and the start once more at the end.
struct ArcSamples {
  explicit ArcSamples(const VemVarArray& params);

  std::size_t Count() const;
  std::vector<cv::Point> List() const;

  double radius;
  double start;
  double end;
  cv::Point center;
  bool outside;  ///< Wholly left of or above the origin.
  Canvas canvas;
};

/// Which of an arc's whole degrees are sampled: those before its end, or its end too.
enum class ArcEnd { kExcluded, kIncluded };

/// How many whole degrees there are from `start`, truncated, to `end`, none above the largest
/// integer.
std::size_t CountDegrees(double start, double end, ArcEnd arcEnd);

/// Samples a circle about a pixel at each whole degree from `start`, truncated, to `end`, and
/// truncates the points to whole numbers. There is room for one more.
std::vector<cv::Point> SampleDegrees(double start, double end, ArcEnd arcEnd, double radius,
                                     const cv::Point& center);

/// The vertices of a polygon or an irregular shape as whole numbers, the first one again at the
/// end.
struct ClosedVertices {
  explicit ClosedVertices(const VemVarArray& params);

  std::vector<cv::Point> points;
  cv::Rect bounds;
  Reach reach;
};

/// What a table that is ordered by shape types holds for a type; null beyond its end.
template <typename Entry, std::size_t kCount>
Entry EntryFor(const Entry (&table)[kCount], VemROIType type) {
  return type >= 0 && static_cast<std::size_t>(type) < kCount ? table[type] : nullptr;
}

#endif  // ROI_SHAPE_GEOMETRY_H_
