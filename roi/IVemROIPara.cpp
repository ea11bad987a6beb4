#include "IVemROIPara.h"

#include <initializer_list>

#include "values/StoredNumbers.h"

namespace {

using stored::D;
using stored::F;
using stored::Output;

// Everything but the type.
void DropShape(IVemROIPara& roi) {
  roi.Params.Clear();
  roi.Rows.Clear();
  roi.FirstColumns.Clear();
  roi.LastColumns.Clear();
  roi.Width = 0;
  roi.Height = 0;
}

// A generator names its shape, its test, and its numbers in stored order.
void Set(IVemROIPara& roi, VemROIType type, bool accepted, std::initializer_list<VemVar> numbers) {
  roi.Type = VemROINone;
  DropShape(roi);
  if (!accepted) return;
  roi.Type = type;
  stored::Append(roi.Params, numbers);
}

// Touches neither the type of a shape that it refuses to replace nor a former mask's runs.
void SetVertices(IVemROIPara& roi, VemROIType type, const VemPointArray& points) {
  roi.Params.Clear();
  if (points.Length() < 3) return;
  roi.Type = type;
  stored::AppendPoints(roi.Params, points);
}

bool Has(const IVemROIPara& roi, VemROIType type) {
  return roi.Type == type && roi.Params.Length() > 0;
}

// A reader names its shape and its outputs in stored order; all are written before it tests any of
// them.
bool Get(const IVemROIPara& roi, VemROIType type, std::initializer_list<Output> outputs) {
  if (!Has(roi, type)) return false;
  stored::Read(roi.Params, outputs);
  return true;
}

bool GetVertices(const IVemROIPara& roi, VemROIType type, VemPointArray* points) {
  if (!Has(roi, type)) return false;
  stored::ReadPoints(roi.Params, points);
  return points->Length() >= 3;
}

bool Differ(const VemPoint& p1, const VemPoint& p2) { return p1.x != p2.x || p1.y != p2.y; }

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

// --- The shapes, one after the other: how each is stored, then how it is read ---

// Stored x first, and read without a look at how much is stored.
void IVemROIPara::GenPoint(VemPoint& point) { Set(*this, VemROIPoint, true, {point.x, point.y}); }
bool IVemROIPara::GetPoint(VemPoint* point) const {
  if (Type != VemROIPoint) return false;
  stored::Read(Params, {F(&point->x), F(&point->y)});
  return true;
}

void IVemROIPara::GenRect1(VemPoint& p1, VemPoint& p2) {
  Set(*this, VemROIRect1, p2.x > p1.x && p2.y > p1.y, {p1.y, p1.x, p2.y, p2.x});
}
bool IVemROIPara::GetRect1(VemPoint* p1, VemPoint* p2) const {
  return Get(*this, VemROIRect1, {F(&p1->y), F(&p1->x), F(&p2->y), F(&p2->x)}) && p1->x < p2->x &&
         p1->y < p2->y;
}

void IVemROIPara::GenCircle(VemPoint& center, double radius) {
  Set(*this, VemROICircle, radius > 0, {center.y, center.x, radius});
}
bool IVemROIPara::GetCircle(VemPoint* center, double* radius) const {
  return Get(*this, VemROICircle, {F(&center->y), F(&center->x), D(radius)}) && *radius > 0;
}

// The reader refuses a sweep of 0 that the generator takes.
void IVemROIPara::GenTorus(VemPoint& center, double innerRadius, double outerRadius,
                           double startAngle, double sweepAngle) {
  Set(*this, VemROITorus,
      innerRadius > 0 && outerRadius > 0 && outerRadius > innerRadius && sweepAngle >= 0,
      {center.y, center.x, innerRadius, outerRadius, startAngle, sweepAngle});
}
bool IVemROIPara::GetTorus(VemPoint* center, double* innerRadius, double* outerRadius,
                           double* startAngle, double* sweepAngle) const {
  return Get(*this, VemROITorus,
             {F(&center->y), F(&center->x), D(innerRadius), D(outerRadius), D(startAngle),
              D(sweepAngle)}) &&
         *innerRadius > 0 && *outerRadius > *innerRadius && *sweepAngle > 0;
}

void IVemROIPara::GenRect2(VemPoint& center, double length1, double length2, double angle) {
  Set(*this, VemROIRect2, length1 > 0 && length2 > 0,
      {center.y, center.x, length1, length2, angle});
}
bool IVemROIPara::GetRect2(VemPoint* center, double* length1, double* length2,
                           double* angle) const {
  return Get(*this, VemROIRect2,
             {F(&center->y), F(&center->x), D(length1), D(length2), D(angle)}) &&
         *length1 > 0 && *length2 > 0;
}

void IVemROIPara::GenLine(VemPoint& p1, VemPoint& p2) {
  Set(*this, VemROILine, Differ(p1, p2), {p1.y, p1.x, p2.y, p2.x});
}
bool IVemROIPara::GetLine(VemPoint* p1, VemPoint* p2) const {
  return Get(*this, VemROILine, {F(&p1->y), F(&p1->x), F(&p2->y), F(&p2->x)}) && Differ(*p1, *p2);
}

void IVemROIPara::GenEllipse(VemPoint& center, double radius1, double radius2, double angle) {
  Set(*this, VemROIEllipse, radius1 > 0 && radius2 > 0,
      {center.y, center.x, radius1, radius2, angle});
}
bool IVemROIPara::GetEllipse(VemPoint* center, double* radius1, double* radius2,
                             double* angle) const {
  return Get(*this, VemROIEllipse,
             {F(&center->y), F(&center->x), D(radius1), D(radius2), D(angle)}) &&
         *radius1 > 0 && *radius2 > 0;
}

// As of a ring, the reader refuses a sweep of 0.
void IVemROIPara::GenArc(VemPoint& center, double radius, double startAngle, double sweepAngle) {
  Set(*this, VemROIArc, radius > 0 && sweepAngle >= 0,
      {center.y, center.x, radius, startAngle, sweepAngle});
}
bool IVemROIPara::GetArc(VemPoint* center, double* radius, double* startAngle,
                         double* sweepAngle) const {
  return Get(*this, VemROIArc,
             {F(&center->y), F(&center->x), D(radius), D(startAngle), D(sweepAngle)}) &&
         *radius > 0 && *sweepAngle > 0;
}

// Arrays of numbers come back as they are, points rounded to float.
void IVemROIPara::GenPolygon(VemVarArray& rows, VemVarArray& cols) {
  Type = VemROINone;
  DropShape(*this);
  const int count = cols.Length();
  if (count < 3 || count != rows.Length()) return;
  Type = VemROIPolygon;
  for (int i = 0; i < count; ++i) stored::Append(Params, {rows[i].D(), cols[i].D()});
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

void IVemROIPara::GenPolygon(VemPointArray& points) { SetVertices(*this, VemROIPolygon, points); }
bool IVemROIPara::GetPolygon(VemPointArray* points) const {
  return GetVertices(*this, VemROIPolygon, points);
}

void IVemROIPara::GenIrregular(VemPointArray& points) {
  SetVertices(*this, VemROIIrregular, points);
}
bool IVemROIPara::GetIrregular(VemPointArray* points) const {
  return GetVertices(*this, VemROIIrregular, points);
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
