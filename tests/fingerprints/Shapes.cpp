#include <limits>

#include "fingerprints/Samples.h"

namespace {

/// How far a shape may reach. A canvas from the origin then holds 2,000 by 2,000 pixels at most.
int MakeExtent(Numbers& numbers) {
  const int die = numbers.Between(1, 1000);
  return die <= 860 ? 60 : die <= 985 ? 200 : 1300;
}

/// A point from half the extent left of and above the origin on.
VemPoint MakePoint(Numbers& numbers, int extent) {
  const double x = numbers.Fraction(-extent / 2, extent);
  const double y = numbers.Fraction(-extent / 2, extent);
  return VemPoint(x, y);
}

VemPoint MakeFarPoint(Numbers& numbers) {
  const double x = numbers.Fraction(-30000, 30000);
  const double y = numbers.Fraction(-30000, 30000);
  return VemPoint(x, y);
}

/// For shapes whose cost does not grow with their distance: a few lie far away.
VemPoint MakePlace(Numbers& numbers, int extent) {
  return numbers.OneIn(100) ? MakeFarPoint(numbers) : MakePoint(numbers, extent);
}

int MakeCount(Numbers& numbers) {
  const int die = numbers.Between(1, 100);
  if (die <= 2) return numbers.Between(0, 2);
  return die <= 90 ? numbers.Between(3, 12) : die <= 99 ? numbers.Between(13, 40) : 200;
}

/// Random vertices; few lists are spread wide along one axis.
VemPointArray MakeVertices(Numbers& numbers) {
  const int extent = MakeExtent(numbers);
  const VemPoint place = MakePlace(numbers, extent);
  int width = extent;
  int height = extent;
  if (numbers.OneIn(200)) (numbers.OneIn(2) ? width : height) = 30000;
  VemPointArray points;
  for (int count = MakeCount(numbers); count > 0; --count) {
    VemPoint point = place;
    point.x += numbers.Fraction(-width / 2, width / 2);
    point.y += numbers.Fraction(-height / 2, height / 2);
    points.Append(point);
  }
  return points;
}

double MakeAngle(Numbers& numbers) {
  if (numbers.OneIn(4)) return 45 * numbers.Between(-16, 16);
  if (numbers.OneIn(100)) return numbers.Between(-1000000, 1000000);
  return numbers.Fraction(-800, 800);
}

double MakeSweep(Numbers& numbers) {
  if (numbers.OneIn(4)) return 359 + numbers.Between(-2, 2);
  return numbers.OneIn(20) ? numbers.Fraction(0, 1000) : numbers.Fraction(0, 400);
}

/// A start that is no angle: not a number, or beyond the integers.
double MakeNoAngle(Numbers& numbers) {
  const double noAngles[] = {std::numeric_limits<double>::quiet_NaN(),
                             std::numeric_limits<int>::min(), -1e10,
                             -std::numeric_limits<double>::infinity()};
  return noAngles[numbers.Between(0, 3)];
}

}  // namespace

void MakeRect1(Numbers& numbers, IVemROIPara& roi) {
  const int extent = MakeExtent(numbers);
  VemPoint p1 = MakePlace(numbers, extent);
  VemPoint p2 = p1;
  p2.x += numbers.Fraction(-2, extent);
  p2.y += numbers.Fraction(-2, extent);
  roi.GenRect1(p1, p2);
}

void MakeCircle(Numbers& numbers, IVemROIPara& roi) {
  const int extent = MakeExtent(numbers);
  VemPoint center = MakePoint(numbers, extent);
  roi.GenCircle(center, numbers.Fraction(0, extent / 2));
}

void MakeTorus(Numbers& numbers, IVemROIPara& roi) {
  const int extent = MakeExtent(numbers);
  VemPoint center = MakePlace(numbers, extent);
  const double inner = numbers.Fraction(0, extent / 4);
  const double outer = inner + numbers.Fraction(0, extent / 4);
  const double start = numbers.OneIn(500) ? MakeNoAngle(numbers) : MakeAngle(numbers);
  roi.GenTorus(center, inner, outer, start, MakeSweep(numbers));
}

void MakePolygon(Numbers& numbers, IVemROIPara& roi) {
  VemPointArray points = MakeVertices(numbers);
  if (numbers.OneIn(2)) return roi.GenPolygon(points);
  VemVarArray rows;
  VemVarArray cols;
  for (int i = 0; i < points.Length(); ++i) {
    rows.Append(points[i].y);
    cols.Append(points[i].x);
  }
  roi.GenPolygon(rows, cols);
}

void MakeIrregular(Numbers& numbers, IVemROIPara& roi) {
  VemPointArray points = MakeVertices(numbers);
  roi.GenIrregular(points);
}

void MakeRect2(Numbers& numbers, IVemROIPara& roi) {
  const int extent = MakeExtent(numbers);
  VemPoint center = MakePlace(numbers, extent);
  const double length1 = numbers.Fraction(0, extent);
  const double length2 = numbers.Fraction(0, extent);
  roi.GenRect2(center, length1, length2, MakeAngle(numbers));
}

// The coordinates lose their fractions before the slope is taken.
void MakeLine(Numbers& numbers, IVemROIPara& roi) {
  const int extent = MakeExtent(numbers);
  VemPoint p1 = MakePlace(numbers, extent);
  VemPoint p2 = MakePlace(numbers, extent);
  while (static_cast<int>(p1.x) == static_cast<int>(p2.x)) p2.x += 1;
  roi.GenLine(p1, p2);
}

void MakeUprightLine(Numbers& numbers, IVemROIPara& roi) {
  VemPoint p1 = MakePlace(numbers, MakeExtent(numbers));
  VemPoint p2 = p1;
  p2.y += numbers.Fraction(-60, 60);
  roi.GenLine(p1, p2);
}

void MakeEllipse(Numbers& numbers, IVemROIPara& roi) {
  const int extent = MakeExtent(numbers);
  VemPoint center = MakePoint(numbers, extent);
  const double radius1 = numbers.Fraction(0, extent / 2);
  const double radius2 = numbers.Fraction(0, extent / 2);
  roi.GenEllipse(center, radius1, radius2, MakeAngle(numbers));
}

void MakeArc(Numbers& numbers, IVemROIPara& roi) {
  const int extent = MakeExtent(numbers);
  VemPoint center = MakePlace(numbers, extent);
  const double radius = numbers.Fraction(0, extent / 2);
  const double start = MakeAngle(numbers);
  roi.GenArc(center, radius, start, MakeSweep(numbers));
}

// Runs in any order, some overlapping, reversed or outside the canvas.
void MakeMask(Numbers& numbers, IVemROIPara& roi) {
  const int extent = MakeExtent(numbers);
  const int width = numbers.Between(1, extent);
  const int height = numbers.Between(1, extent);
  VemVarArray rows;
  VemVarArray firstColumns;
  VemVarArray lastColumns;
  for (int count = numbers.Between(0, 40); count > 0; --count) {
    const int first = numbers.Between(-2, width);
    rows.Append(numbers.Between(-1, height));
    firstColumns.Append(first);
    lastColumns.Append(first + numbers.Between(-1, width / 2));
  }
  roi.GenMask(rows, firstColumns, lastColumns, width, height);
}
