#include "IVemROIPara.h"

#include <initializer_list>

namespace {

// Everything but the type.
void DropShape(IVemROIPara& roi) {
  roi.Params.Clear();
  roi.Rows.Clear();
  roi.FirstColumns.Clear();
  roi.LastColumns.Clear();
  roi.Width = 0;
  roi.Height = 0;
}

void SetShape(IVemROIPara& roi, VemROIType type, std::initializer_list<double> numbers) {
  roi.Type = type;
  for (const double number : numbers) roi.Params.Append(number);
}

// Touches neither the type of a shape that it refuses to replace nor a former mask's runs.
void SetVertices(IVemROIPara& roi, VemROIType type, VemPointArray& points) {
  roi.Params.Clear();
  const int count = points.Length();
  if (count < 3) return;
  roi.Type = type;
  for (int i = 0; i < count; ++i) {
    roi.Params.Append(points[i].y);
    roi.Params.Append(points[i].x);
  }
}

bool Has(const IVemROIPara& roi, VemROIType type) {
  return roi.Type == type && roi.Params.Length() > 0;
}

// The pair at `index`, y first, rounded to float.
VemPoint PointAt(const IVemROIPara& roi, int index) {
  const float y = roi.Params[index].F();
  const float x = roi.Params[index + 1].F();
  return VemPoint(static_cast<double>(x), static_cast<double>(y));
}

bool ReadPair(const IVemROIPara& roi, VemROIType type, VemPoint* p1, VemPoint* p2) {
  if (!Has(roi, type)) return false;
  *p1 = PointAt(roi, 0);
  *p2 = PointAt(roi, 2);
  return true;
}

bool ReadCentred(const IVemROIPara& roi, VemROIType type, VemPoint* center,
                 std::initializer_list<double*> numbers) {
  if (!Has(roi, type)) return false;
  *center = PointAt(roi, 0);
  int index = 2;
  for (double* number : numbers) *number = roi.Params[index++].D();
  return true;
}

bool ReadVertices(const IVemROIPara& roi, VemROIType type, VemPointArray* points) {
  if (!Has(roi, type)) return false;
  points->Clear();
  for (int i = 0; i + 1 < roi.Params.Length(); i += 2) {
    VemPoint point = PointAt(roi, i);
    points->Append(point);
  }
  return points->Length() >= 3;
}

}  // namespace

IVemROIPara::IVemROIPara() : Type(VemROINone) {}

IVemROIPara::IVemROIPara(const IVemROIPara& other)
    : Params(other.Params),
      Type(other.Type),
      Rows(other.Rows),
      FirstColumns(other.FirstColumns),
      LastColumns(other.LastColumns) {}

IVemROIPara& IVemROIPara::operator=(const IVemROIPara& other) = default;

IVemROIPara::~IVemROIPara() { DropShape(*this); }

void IVemROIPara::GenPoint(VemPoint& point) {
  DropShape(*this);
  SetShape(*this, VemROIPoint, {point.x, point.y});
}

void IVemROIPara::GenRect1(VemPoint& p1, VemPoint& p2) {
  Type = VemROINone;
  DropShape(*this);
  if (p2.x > p1.x && p2.y > p1.y) SetShape(*this, VemROIRect1, {p1.y, p1.x, p2.y, p2.x});
}

void IVemROIPara::GenCircle(VemPoint& center, double radius) {
  Type = VemROINone;
  DropShape(*this);
  if (radius > 0) SetShape(*this, VemROICircle, {center.y, center.x, radius});
}

void IVemROIPara::GenTorus(VemPoint& center, double innerRadius, double outerRadius,
                           double startAngle, double sweepAngle) {
  Type = VemROINone;
  DropShape(*this);
  if (innerRadius > 0 && outerRadius > 0 && outerRadius > innerRadius && sweepAngle >= 0) {
    SetShape(*this, VemROITorus,
             {center.y, center.x, innerRadius, outerRadius, startAngle, sweepAngle});
  }
}

void IVemROIPara::GenRect2(VemPoint& center, double length1, double length2, double angle) {
  Type = VemROINone;
  DropShape(*this);
  if (length1 > 0 && length2 > 0) {
    SetShape(*this, VemROIRect2, {center.y, center.x, length1, length2, angle});
  }
}

void IVemROIPara::GenLine(VemPoint& p1, VemPoint& p2) {
  Type = VemROINone;
  DropShape(*this);
  if (p1.x != p2.x || p1.y != p2.y) SetShape(*this, VemROILine, {p1.y, p1.x, p2.y, p2.x});
}

void IVemROIPara::GenEllipse(VemPoint& center, double radius1, double radius2, double angle) {
  Type = VemROINone;
  DropShape(*this);
  if (radius1 > 0 && radius2 > 0) {
    SetShape(*this, VemROIEllipse, {center.y, center.x, radius1, radius2, angle});
  }
}

void IVemROIPara::GenArc(VemPoint& center, double radius, double startAngle, double sweepAngle) {
  Type = VemROINone;
  DropShape(*this);
  if (radius > 0 && sweepAngle >= 0) {
    SetShape(*this, VemROIArc, {center.y, center.x, radius, startAngle, sweepAngle});
  }
}

void IVemROIPara::GenPolygon(VemVarArray& rows, VemVarArray& cols) {
  Type = VemROINone;
  DropShape(*this);
  const int count = cols.Length();
  if (count < 3 || count != rows.Length()) return;
  Type = VemROIPolygon;
  for (int i = 0; i < count; ++i) {
    Params.Append(rows[i].D());
    Params.Append(cols[i].D());
  }
}

void IVemROIPara::GenPolygon(VemPointArray& points) { SetVertices(*this, VemROIPolygon, points); }
void IVemROIPara::GenIrregular(VemPointArray& points) {
  SetVertices(*this, VemROIIrregular, points);
}

void IVemROIPara::GenMask(VemVarArray& rows, VemVarArray& firstColumns, VemVarArray& lastColumns,
                          int width, int height) {
  Type = VemROINone;
  DropShape(*this);
  if (width < 2 || height < 2) return;
  if (rows.Length() != firstColumns.Length() || rows.Length() != lastColumns.Length()) return;
  Width = width;
  Height = height;
  Rows = rows;
  FirstColumns = firstColumns;
  LastColumns = lastColumns;
  Type = VemROIMask;
}

// Stored x first, and read without a look at how much is stored.
bool IVemROIPara::GetPoint(VemPoint* point) const {
  if (Type != VemROIPoint) return false;
  point->x = static_cast<double>(Params[0].F());
  point->y = static_cast<double>(Params[1].F());
  return true;
}

bool IVemROIPara::GetRect1(VemPoint* p1, VemPoint* p2) const {
  return ReadPair(*this, VemROIRect1, p1, p2) && p1->x < p2->x && p1->y < p2->y;
}

bool IVemROIPara::GetCircle(VemPoint* center, double* radius) const {
  return ReadCentred(*this, VemROICircle, center, {radius}) && *radius > 0;
}

bool IVemROIPara::GetTorus(VemPoint* center, double* innerRadius, double* outerRadius,
                           double* startAngle, double* sweepAngle) const {
  if (!ReadCentred(*this, VemROITorus, center,
                   {innerRadius, outerRadius, startAngle, sweepAngle})) {
    return false;
  }
  return *innerRadius > 0 && *outerRadius > *innerRadius && *sweepAngle > 0;
}

bool IVemROIPara::GetRect2(VemPoint* center, double* length1, double* length2,
                           double* angle) const {
  return ReadCentred(*this, VemROIRect2, center, {length1, length2, angle}) && *length1 > 0 &&
         *length2 > 0;
}

bool IVemROIPara::GetLine(VemPoint* p1, VemPoint* p2) const {
  return ReadPair(*this, VemROILine, p1, p2) && (p1->x != p2->x || p1->y != p2->y);
}

bool IVemROIPara::GetEllipse(VemPoint* center, double* radius1, double* radius2,
                             double* angle) const {
  return ReadCentred(*this, VemROIEllipse, center, {radius1, radius2, angle}) && *radius1 > 0 &&
         *radius2 > 0;
}

bool IVemROIPara::GetArc(VemPoint* center, double* radius, double* startAngle,
                         double* sweepAngle) const {
  return ReadCentred(*this, VemROIArc, center, {radius, startAngle, sweepAngle}) && *radius > 0 &&
         *sweepAngle > 0;
}

bool IVemROIPara::GetPolygon(VemVarArray* rows, VemVarArray* cols) const {
  if (!Has(*this, VemROIPolygon)) return false;
  rows->Clear();
  cols->Clear();
  for (int i = 0; i + 1 < Params.Length(); i += 2) {
    rows->Append(Params[i].D());
    cols->Append(Params[i + 1].D());
  }
  return cols->Length() >= 3 && cols->Length() == rows->Length();
}

bool IVemROIPara::GetPolygon(VemPointArray* points) const {
  return ReadVertices(*this, VemROIPolygon, points);
}

bool IVemROIPara::GetIrregular(VemPointArray* points) const {
  return ReadVertices(*this, VemROIIrregular, points);
}

void IVemROIPara::Reset() {
  Type = VemROINone;
  Params.Clear();
  Rows.Clear();
  FirstColumns.Clear();
  LastColumns.Clear();
}

VemROIType IVemROIPara::ROIType() const { return Type; }
bool IVemROIPara::IsRect1() const { return Type == VemROIRect1; }
bool IVemROIPara::IsMask() const { return Type == VemROIMask; }
