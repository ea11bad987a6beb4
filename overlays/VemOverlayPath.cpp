#include "VemOverlayPath.h"

#include "IVemOverlayPath.h"
#include "values/TypedArray.h"

VemOverlayPath::VemOverlayPath() : impl_(new IVemOverlayPath) {}
VemOverlayPath::VemOverlayPath(const VemOverlayPath& other)
    : impl_(new IVemOverlayPath(*other.impl_)) {}
// The list alone, since the implementation's own assignment makes one more copy of it.
VemOverlayPath VemOverlayPath::operator=(const VemOverlayPath& other) {
  typed_array::Assign(impl_->Overlays, other.impl_->Overlays);
  return *this;
}
VemOverlayPath::~VemOverlayPath() { delete impl_; }

void VemOverlayPath::AddPoint(VemPoint& point) { impl_->AddPoint(point); }
void VemOverlayPath::AddLine(VemPoint& p1, VemPoint& p2) { impl_->AddLine(p1, p2); }
void VemOverlayPath::AddArrowLine(VemPoint& p1, VemPoint& p2) { impl_->AddArrowLine(p1, p2); }
void VemOverlayPath::AddCircle(VemPoint& center, double radius) {
  impl_->AddCircle(center, radius);
}
void VemOverlayPath::AddRect1(VemPoint& p1, VemPoint& p2) { impl_->AddRect1(p1, p2); }
void VemOverlayPath::AddRakeRect1(VemPoint& p1, VemPoint& p2, int mode, int count) {
  impl_->AddRakeRect1(p1, p2, mode, count);
}
void VemOverlayPath::AddEllipse(VemPoint& center, double radius1, double radius2, double angle) {
  impl_->AddEllipse(center, radius1, radius2, angle);
}
void VemOverlayPath::AddArc(VemPoint& center, double radius, double startAngle, double sweepAngle) {
  impl_->AddArc(center, radius, startAngle, sweepAngle);
}
void VemOverlayPath::AddPolygon(const VemPointArray& points) { impl_->AddPolygon(points); }
void VemOverlayPath::AddIrregular(const VemPointArray& points) { impl_->AddIrregular(points); }
void VemOverlayPath::AddTorus(VemPoint& center, double innerRadius, double outerRadius,
                              double startAngle, double sweepAngle) {
  impl_->AddTorus(center, innerRadius, outerRadius, startAngle, sweepAngle);
}
void VemOverlayPath::AddSpokeTorus(VemPoint& center, double innerRadius, double outerRadius,
                                   double startAngle, double sweepAngle, int mode, int count) {
  impl_->AddSpokeTorus(center, innerRadius, outerRadius, startAngle, sweepAngle, mode, count);
}
void VemOverlayPath::AddRect2(VemPoint& center, double length1, double length2, double angle) {
  impl_->AddRect2(center, length1, length2, angle);
}
void VemOverlayPath::AddRakeRect2(VemPoint& center, double length1, double length2, double angle,
                                  int mode, int count) {
  impl_->AddRakeRect2(center, length1, length2, angle, mode, count);
}
void VemOverlayPath::AddText(VemPoint& point, const char* text, VemFont& font) {
  impl_->AddText(point, text, font);
}
void VemOverlayPath::AddImage(VemPoint& point, VemImage& image) { impl_->AddImage(point, image); }
void VemOverlayPath::AddRegion(VemRegion& region) { impl_->AddRegion(region); }

void VemOverlayPath::AddOverlay(VemOverlay& overlay) { impl_->AddOverlay(overlay); }
void VemOverlayPath::AddPath(VemOverlayPath& path) { impl_->AddPath(path); }
void VemOverlayPath::Insert(int position, const VemOverlay& overlay) {
  impl_->Insert(position, overlay);
}
void VemOverlayPath::Remove(int position) { impl_->Remove(position); }
void VemOverlayPath::Replace(int position, const VemOverlay& overlay) {
  impl_->Replace(position, overlay);
}
void VemOverlayPath::Clear() { impl_->Clear(); }
void VemOverlayPath::Reserve(int count) { impl_->Reserve(count); }

int VemOverlayPath::Length() const { return impl_->Length(); }

VemOverlay& VemOverlayPath::operator[](int position) { return (*impl_)[position]; }
VemOverlay VemOverlayPath::operator[](int position) const { return (*impl_)[position]; }
