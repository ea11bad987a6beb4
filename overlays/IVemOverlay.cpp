#include "IVemOverlay.h"

#include <initializer_list>

#include "values/StoredNumbers.h"

namespace {

using stored::D;
using stored::F;
using stored::Output;
using stored::Whole;

// A setter names its element's kind, its test, and its values in stored order.
void Set(IVemOverlay& overlay, VemOverlayType type, bool accepted,
         std::initializer_list<VemVar> values) {
  overlay.Type = VemOverlayNone;
  overlay.Params.Clear();
  if (!accepted) return;
  overlay.Type = type;
  stored::Append(overlay.Params, values);
}

void SetChain(IVemOverlay& overlay, VemOverlayType type, const VemPointArray& points) {
  const bool accepted = points.Length() >= 3;
  Set(overlay, type, accepted, {});
  if (accepted) stored::AppendPoints(overlay.Params, points);
}

bool Has(const IVemOverlay& overlay, VemOverlayType type) {
  return overlay.Type == type && overlay.Params.Length() > 0;
}

// A reader names its element's kind and its outputs in stored order; all are written before it
// tests any of them.
bool Get(const IVemOverlay& overlay, VemOverlayType type, std::initializer_list<Output> outputs) {
  if (!Has(overlay, type)) return false;
  stored::Read(overlay.Params, outputs);
  return true;
}

bool GetChain(const IVemOverlay& overlay, VemOverlayType type, VemPointArray* points) {
  if (!Has(overlay, type)) return false;
  stored::ReadPoints(overlay.Params, points);
  return points->Length() > 2;
}

bool Differ(const VemPoint& p1, const VemPoint& p2) { return p1.x != p2.x || p1.y != p2.y; }

bool IsBetween(int value, int first, int last) { return value >= first && value <= last; }

VemOverlayType TypeOf(VemROIType type) {
  switch (type) {
    case VemROIRect1:
      return VemOverlayRect1;
    case VemROICircle:
      return VemOverlayCircle;
    case VemROITorus:
      return VemOverlayTorus;
    case VemROIPolygon:
      return VemOverlayPolygon;
    case VemROIIrregular:
      return VemOverlayIrregular;
    case VemROIRect2:
      return VemOverlayRect2;
    case VemROILine:
      return VemOverlayLine;
    case VemROIEllipse:
      return VemOverlayEllipse;
    case VemROIArc:
      return VemOverlayArc;
    case VemROIPoint:
      return VemOverlayPoint;
    case VemROIMask:
      return VemOverlayRegion;
    case VemROINone:
      break;
  }
  return VemOverlayNone;
}

int Low32(long value) { return static_cast<int>(value); }

}  // namespace

IVemOverlay::IVemOverlay() = default;
IVemOverlay::IVemOverlay(const IVemOverlay& other) = default;

IVemOverlay& IVemOverlay::operator=(const IVemOverlay& other) {
  Image = other.Image.clone();
  Type = other.Type;
  Params = other.Params;
  Width = other.Width;
  Height = other.Height;
  Rows = other.Rows;
  FirstColumns = other.FirstColumns;
  LastColumns = other.LastColumns;
  PenColor0 = other.PenColor0;
  PenColor1 = other.PenColor1;
  PenColor2 = other.PenColor2;
  BrushColor0 = other.BrushColor0;
  BrushColor1 = other.BrushColor1;
  BrushColor2 = other.BrushColor2;
  BrushMode = other.BrushMode;
  PenWidth = other.PenWidth;
  RedrawPen = other.RedrawPen;
  RedrawBrush = other.RedrawBrush;
  return *this;
}

IVemOverlay::~IVemOverlay() = default;

// --- The kinds of elements, one after the other: how each is stored, then how it is read ---

void IVemOverlay::SetPoint(const VemPoint& point) {
  Set(*this, VemOverlayPoint, true, {point.x, point.y});
}
bool IVemOverlay::GetPoint(VemPoint* point) const {
  return Get(*this, VemOverlayPoint, {D(&point->x), D(&point->y)});
}

void IVemOverlay::SetArrowLine(const VemPoint& p1, const VemPoint& p2) {
  Set(*this, VemOverlayArrowLine, Differ(p1, p2), {p1.y, p1.x, p2.y, p2.x});
}
bool IVemOverlay::GetArrowLine(VemPoint* p1, VemPoint* p2) const {
  return Get(*this, VemOverlayArrowLine, {F(&p1->y), F(&p1->x), F(&p2->y), F(&p2->x)}) &&
         Differ(*p1, *p2);
}

void IVemOverlay::SetLine(const VemPoint& p1, const VemPoint& p2) {
  Set(*this, VemOverlayLine, Differ(p1, p2), {p1.y, p1.x, p2.y, p2.x});
}
bool IVemOverlay::GetLine(VemPoint* p1, VemPoint* p2) const {
  return Get(*this, VemOverlayLine, {F(&p1->y), F(&p1->x), F(&p2->y), F(&p2->x)}) &&
         Differ(*p1, *p2);
}

void IVemOverlay::SetRect1(const VemPoint& p1, const VemPoint& p2) {
  Set(*this, VemOverlayRect1, p2.x > p1.x && p2.y > p1.y, {p1.y, p1.x, p2.y, p2.x});
}
bool IVemOverlay::GetRect1(VemPoint* p1, VemPoint* p2) const {
  return Get(*this, VemOverlayRect1, {F(&p1->y), F(&p1->x), F(&p2->y), F(&p2->x)}) &&
         p1->x < p2->x && p1->y < p2->y;
}

// The reader takes corners in whichever order.
void IVemOverlay::SetRect1(const VemPoint& p1, const VemPoint& p2, int mode, int count) {
  Set(*this, VemOverlayRakeRect1, p2.x > p1.x && p2.y > p1.y && IsBetween(mode, 0, 3) && count >= 2,
      {p1.y, p1.x, p2.y, p2.x, mode, count});
}
bool IVemOverlay::GetRect1(VemPoint* p1, VemPoint* p2, int* mode, int* count) const {
  return Get(*this, VemOverlayRakeRect1,
             {F(&p1->y), F(&p1->x), F(&p2->y), F(&p2->x), Whole(mode), Whole(count)}) &&
         p1->x != p2->x && p1->y != p2->y && *count >= 2 && IsBetween(*mode, 0, 3);
}

void IVemOverlay::SetCircle(const VemPoint& center, double radius) {
  Set(*this, VemOverlayCircle, radius > 0, {center.y, center.x, radius});
}
bool IVemOverlay::GetCircle(VemPoint* center, double* radius) const {
  return Get(*this, VemOverlayCircle, {D(&center->y), D(&center->x), D(radius)}) && *radius > 0;
}

void IVemOverlay::SetEllipse(const VemPoint& center, double radius1, double radius2, double angle) {
  Set(*this, VemOverlayEllipse, radius1 > 0 && radius2 > 0,
      {center.y, center.x, radius1, radius2, angle});
}
bool IVemOverlay::GetEllipse(VemPoint* center, double* radius1, double* radius2,
                             double* angle) const {
  return Get(*this, VemOverlayEllipse,
             {F(&center->y), F(&center->x), D(radius1), D(radius2), D(angle)}) &&
         *radius1 > 0 && *radius2 > 0;
}

void IVemOverlay::SetPolygon(const VemPointArray& points) {
  SetChain(*this, VemOverlayPolygon, points);
}
bool IVemOverlay::GetPolygon(VemPointArray* points) const {
  return GetChain(*this, VemOverlayPolygon, points);
}

void IVemOverlay::SetPolyLine(const VemPointArray& points) {
  SetChain(*this, VemOverlayPolyLine, points);
}
bool IVemOverlay::GetPolyLine(VemPointArray* points) const {
  return GetChain(*this, VemOverlayPolyLine, points);
}

void IVemOverlay::SetRect2(const VemPoint& center, double length1, double length2, double angle) {
  Set(*this, VemOverlayRect2, length1 > 0 && length2 > 0,
      {center.y, center.x, length1, length2, angle});
}
bool IVemOverlay::GetRect2(VemPoint* center, double* length1, double* length2,
                           double* angle) const {
  return Get(*this, VemOverlayRect2,
             {F(&center->y), F(&center->x), D(length1), D(length2), D(angle)}) &&
         *length1 > 0 && *length2 > 0;
}

// The reader takes one mode more than the setter.
void IVemOverlay::SetRect2(const VemPoint& center, double length1, double length2, double angle,
                           int mode, int count) {
  Set(*this, VemOverlayRakeRect2, length1 > 0 && length2 > 0 && IsBetween(mode, 0, 3) && count >= 2,
      {center.y, center.x, length1, length2, angle, mode, count});
}
bool IVemOverlay::GetRect2(VemPoint* center, double* length1, double* length2, double* angle,
                           int* mode, int* count) const {
  return Get(*this, VemOverlayRakeRect2,
             {F(&center->y), F(&center->x), F(length1), F(length2), F(angle), Whole(mode),
              Whole(count)}) &&
         *length1 > 0 && *length2 > 0 && *count >= 2 && IsBetween(*mode, 0, 4);
}

// The reader refuses a sweep of 0 that the setter takes.
void IVemOverlay::SetTorus(const VemPoint& center, double innerRadius, double outerRadius,
                           double startAngle, double sweepAngle) {
  Set(*this, VemOverlayTorus,
      innerRadius > 0 && outerRadius > 0 && outerRadius > innerRadius && sweepAngle >= 0,
      {center.y, center.x, innerRadius, outerRadius, startAngle, sweepAngle});
}
bool IVemOverlay::GetTorus(VemPoint* center, double* innerRadius, double* outerRadius,
                           double* startAngle, double* sweepAngle) const {
  return Get(*this, VemOverlayTorus,
             {F(&center->y), F(&center->x), F(innerRadius), F(outerRadius), D(startAngle),
              D(sweepAngle)}) &&
         *outerRadius > *innerRadius && *innerRadius > 0 && *sweepAngle > 0;
}

// The reader refuses a sweep of 0 that the setter takes, and is laxer on the radii.
void IVemOverlay::SetTorus(const VemPoint& center, double innerRadius, double outerRadius,
                           double startAngle, double sweepAngle, int mode, int count) {
  Set(*this, VemOverlaySpokeTorus,
      innerRadius > 0 && outerRadius > 0 && outerRadius > innerRadius && sweepAngle >= 0 &&
          IsBetween(mode, 4, 5) && count >= 2,
      {center.y, center.x, innerRadius, outerRadius, startAngle, sweepAngle, mode, count});
}
bool IVemOverlay::GetTorus(VemPoint* center, double* innerRadius, double* outerRadius,
                           double* startAngle, double* sweepAngle, int* mode, int* count) const {
  return Get(*this, VemOverlaySpokeTorus,
             {F(&center->y), F(&center->x), D(innerRadius), D(outerRadius), D(startAngle),
              D(sweepAngle), Whole(mode), Whole(count)}) &&
         *outerRadius >= *innerRadius && *innerRadius >= 0 && *sweepAngle > 0 && *count >= 2 &&
         IsBetween(*mode, 4, 5);
}

// Stored x first, unlike a region of interest's arc. The reader refuses a sweep of 0 that the
// setter takes.
void IVemOverlay::SetArc(const VemPoint& center, double radius, double startAngle,
                         double sweepAngle) {
  Set(*this, VemOverlayArc, radius > 0 && sweepAngle >= 0,
      {center.x, center.y, radius, startAngle, sweepAngle});
}
bool IVemOverlay::GetArc(VemPoint* center, double* radius, double* startAngle,
                         double* sweepAngle) const {
  return Get(*this, VemOverlayArc,
             {F(&center->x), F(&center->y), D(radius), D(startAngle), D(sweepAngle)}) &&
         *radius > 0 && *sweepAngle > 0;
}

void IVemOverlay::SetIrregular(const VemPointArray& points) {
  SetChain(*this, VemOverlayIrregular, points);
}
bool IVemOverlay::GetIrregular(VemPointArray* points) const {
  return GetChain(*this, VemOverlayIrregular, points);
}

void IVemOverlay::SetText(VemPoint& point, const char* text, VemFont& font) {
  Set(*this, VemOverlayText, true,
      {point.y, point.x, text, font.Size, font.Weight, int{font.Flag1}, int{font.Flag2},
       int{font.Flag3}, font.Name});
}
bool IVemOverlay::GetText(VemPoint* point, VemVarArray* text, VemFont* font) const {
  if (!Get(*this, VemOverlayText, {F(&point->y), F(&point->x)})) return false;
  const VemVar stored = Params[2];
  if (stored.ValType() == VemVarString) *text = VemVarArray(stored);
  font->Size = Params[3].L();
  font->Weight = Params[4].L();
  font->Flag1 = static_cast<unsigned char>(Params[5].L());
  font->Flag2 = static_cast<unsigned char>(Params[6].L());
  font->Flag3 = static_cast<unsigned char>(Params[7].L());
  font->Name = Params[8];
  return true;
}

// Pixels are copied into a fresh matrix: whoever shares the old ones keeps them.
void IVemOverlay::SetImage(VemPoint& point, VemImage& image) {
  Image = image.Mat().clone();
  Set(*this, VemOverlayImage, true, {point.x, point.y});
}
bool IVemOverlay::GetImage(VemPoint* point, VemImage* image) const {
  if (Type != VemOverlayImage) return false;
  stored::Read(Params, {F(&point->x), F(&point->y)});
  image->Mat() = Image.clone();
  return true;
}

void IVemOverlay::SetRegion(VemRegion& region) {
  Set(*this, VemOverlayRegion, true, {});
  Width = region.Width();
  Height = region.Height();
  region.GetRegionRuns(&Rows, &FirstColumns, &LastColumns);
}
bool IVemOverlay::GetRegion(VemRegion* region) {
  if (Type != VemOverlayRegion) return false;
  region->CreateRegion(Width, Height, Rows, FirstColumns, LastColumns);
  return true;
}

// --- What is not of one kind ---

// The numbers are taken as the shape has them: an arc's center lies y first, where GetArc reads x.
// A mask has no numbers, and its runs are not taken.
void IVemOverlay::FromROI(const VemROI& roi) {
  Type = TypeOf(roi.ROIType());
  if (Type != VemOverlayNone) Params = roi.impl_->Params;
}

// The numbers there are stay in front.
void IVemOverlay::FromContour(const VemContour& contour) {
  Type = VemOverlayIrregular;
  for (const cv::Point2d& point : *contour.store_) {
    Params.Append(point.y);
    Params.Append(point.x);
  }
}

void IVemOverlay::SetPen(long color0, long color1, long color2, long width) {
  RedrawPen = true;
  PenColor0 = Low32(color0);
  PenColor1 = Low32(color1);
  PenColor2 = Low32(color2);
  PenWidth = Low32(width);
}

void IVemOverlay::SetBrush(long color0, long color1, long color2, long mode) {
  RedrawBrush = true;
  BrushColor0 = Low32(color0);
  BrushColor1 = Low32(color1);
  BrushColor2 = Low32(color2);
  BrushMode = Low32(mode);
}

void IVemOverlay::Reset() {
  Type = VemOverlayNone;
  Params.Clear();
  Image.release();
  Rows.Clear();
  FirstColumns.Clear();
  LastColumns.Clear();
}

int IVemOverlay::GetPen(long* color0, long* color1, long* color2, long* width) {
  *color0 = PenColor0;
  *color1 = PenColor1;
  *color2 = PenColor2;
  *width = PenWidth;
  return 0;
}

int IVemOverlay::GetBrush(long* color0, long* color1, long* color2, long* mode) {
  *color0 = BrushColor0;
  *color1 = BrushColor1;
  *color2 = BrushColor2;
  *mode = BrushMode;
  return 0;
}

bool IVemOverlay::isRedrawPen() { return RedrawPen; }
bool IVemOverlay::isRedrawBrush() { return RedrawBrush; }
int IVemOverlay::OverlayType() const { return Type; }
