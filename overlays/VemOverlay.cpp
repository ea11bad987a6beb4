#include "VemOverlay.h"

#include <initializer_list>
#include <utility>

#include "IVemOverlay.h"

namespace {

// Hands out numbers that were read into locals first, whether the reading succeeded or not.
void Deliver(const double* numbers, std::initializer_list<double*> targets) {
  for (double* target : targets) *target = *numbers++;
}

}  // namespace

VemOverlay::VemOverlay() : impl_(new IVemOverlay) {}
// Through assignment, which copies the pixels.
VemOverlay::VemOverlay(const VemOverlay& other) : VemOverlay() { *impl_ = *other.impl_; }
VemOverlay& VemOverlay::operator=(const VemOverlay& other) {
  *impl_ = *other.impl_;
  return *this;
}
VemOverlay::~VemOverlay() { delete impl_; }

void VemOverlay::GenPoint(VemPoint& point) { impl_->SetPoint(point); }
void VemOverlay::GenArrowLine(VemPoint& p1, VemPoint& p2) { impl_->SetArrowLine(p1, p2); }
void VemOverlay::GenLine(VemPoint& p1, VemPoint& p2) { impl_->SetLine(p1, p2); }
void VemOverlay::GenRect1(VemPoint& p1, VemPoint& p2) { impl_->SetRect1(p1, p2); }
void VemOverlay::GenRakeRect1(VemPoint& p1, VemPoint& p2, int mode, int count) {
  impl_->SetRect1(p1, p2, mode, count);
}
void VemOverlay::GenCircle(VemPoint& center, double radius) { impl_->SetCircle(center, radius); }
void VemOverlay::GenEllipse(VemPoint& center, double radius1, double radius2, double angle) {
  impl_->SetEllipse(center, radius1, radius2, angle);
}
void VemOverlay::GenPolygon(const VemPointArray& points) { impl_->SetPolygon(points); }
void VemOverlay::GenPolyLine(const VemPointArray& points) { impl_->SetPolyLine(points); }
void VemOverlay::GenRect2(VemPoint& center, double length1, double length2, double angle) {
  impl_->SetRect2(center, length1, length2, angle);
}
void VemOverlay::GenRakeRect2(VemPoint& center, double length1, double length2, double angle,
                              int mode, int count) {
  impl_->SetRect2(center, length1, length2, angle, mode, count);
}
void VemOverlay::GenTorus(VemPoint& center, double innerRadius, double outerRadius,
                          double startAngle, double sweepAngle) {
  impl_->SetTorus(center, innerRadius, outerRadius, startAngle, sweepAngle);
}
void VemOverlay::GenSpokeTorus(VemPoint& center, double innerRadius, double outerRadius,
                               double startAngle, double sweepAngle, int mode, int count) {
  impl_->SetTorus(center, innerRadius, outerRadius, startAngle, sweepAngle, mode, count);
}
void VemOverlay::GenArc(VemPoint& center, double radius, double startAngle, double sweepAngle) {
  impl_->SetArc(center, radius, startAngle, sweepAngle);
}
void VemOverlay::GenIrregular(const VemPointArray& points) { impl_->SetIrregular(points); }
void VemOverlay::GenText(VemPoint& point, const char* text, VemFont& font) {
  impl_->SetText(point, text, font);
}
void VemOverlay::GenImage(VemPoint& point, VemImage& image) { impl_->SetImage(point, image); }
void VemOverlay::GenRegion(VemRegion& region) { impl_->SetRegion(region); }

void VemOverlay::FromROI(const VemROI& roi) { impl_->FromROI(roi); }
void VemOverlay::FromContour(const VemContour& contour) { impl_->FromContour(contour); }
void VemOverlay::SetPen(long color0, long color1, long color2, long width) {
  impl_->SetPen(color0, color1, color2, width);
}
void VemOverlay::SetBrush(long color0, long color1, long color2, long mode) {
  impl_->SetBrush(color0, color1, color2, mode);
}
void VemOverlay::Reset() { impl_->Reset(); }

bool VemOverlay::GetPoint(VemPoint* point) {
  impl_->GetPoint(point);
  return true;
}
bool VemOverlay::GetArrowLine(VemPoint* p1, VemPoint* p2) { return impl_->GetArrowLine(p1, p2); }
bool VemOverlay::GetLine(VemPoint* p1, VemPoint* p2) { return impl_->GetLine(p1, p2); }
bool VemOverlay::GetRect1(VemPoint* p1, VemPoint* p2) { return impl_->GetRect1(p1, p2); }
bool VemOverlay::GetRakeRect1(VemPoint* p1, VemPoint* p2, int* mode, int* count) {
  return impl_->GetRect1(p1, p2, mode, count);
}

bool VemOverlay::GetCircle(VemPoint* center, double* radius) {
  double n[1] = {};
  const bool result = impl_->GetCircle(center, &n[0]);
  Deliver(n, {radius});
  return result;
}

bool VemOverlay::GetEllipse(VemPoint* center, double* radius1, double* radius2, double* angle) {
  double n[3] = {};
  const bool result = impl_->GetEllipse(center, &n[0], &n[1], &n[2]);
  Deliver(n, {radius1, radius2, angle});
  return result;
}

bool VemOverlay::GetPolygon(VemPointArray* points) { return impl_->GetPolygon(points); }
bool VemOverlay::GetPolyLine(VemPointArray* points) { return impl_->GetPolyLine(points); }

bool VemOverlay::GetRect2(VemPoint* center, double* length1, double* length2, double* angle) {
  double n[3] = {};
  const bool result = impl_->GetRect2(center, &n[0], &n[1], &n[2]);
  Deliver(n, {length1, length2, angle});
  return result;
}

bool VemOverlay::GetRakeRect2(VemPoint* center, double* length1, double* length2, double* angle,
                              int* mode, int* count) {
  double n[3] = {};
  const bool result = impl_->GetRect2(center, &n[0], &n[1], &n[2], mode, count);
  Deliver(n, {length1, length2, angle});
  return result;
}

bool VemOverlay::GetTorus(VemPoint* center, double* innerRadius, double* outerRadius,
                          double* startAngle, double* sweepAngle) {
  double n[4] = {};
  const bool result = impl_->GetTorus(center, &n[0], &n[1], &n[2], &n[3]);
  Deliver(n, {innerRadius, outerRadius, startAngle, sweepAngle});
  return result;
}

bool VemOverlay::GetSpokeTorus(VemPoint* center, double* innerRadius, double* outerRadius,
                               double* startAngle, double* sweepAngle, int* mode, int* count) {
  double n[4] = {};
  const bool result = impl_->GetTorus(center, &n[0], &n[1], &n[2], &n[3], mode, count);
  Deliver(n, {innerRadius, outerRadius, startAngle, sweepAngle});
  return result;
}

bool VemOverlay::GetArc(VemPoint* center, double* radius, double* startAngle, double* sweepAngle) {
  double n[3] = {};
  const bool result = impl_->GetArc(center, &n[0], &n[1], &n[2]);
  Deliver(n, {radius, startAngle, sweepAngle});
  return result;
}

bool VemOverlay::GetIrregular(VemPointArray* points) { return impl_->GetIrregular(points); }

bool VemOverlay::GetText(VemPoint* point, VemVar* text, VemFont* font) {
  VemVarArray texts;
  if (font != nullptr) {
    impl_->GetText(point, &texts, font);
  } else {
    VemFont dropped;
    impl_->GetText(point, &texts, &dropped);
  }
  if (texts.Length() > 0) *text = texts[0];  // Only a text is ever put there.
  return true;
}

bool VemOverlay::GetImage(VemPoint* point, VemImage* image) {
  impl_->GetImage(point, image);
  return true;
}

bool VemOverlay::GetRegion(VemRegion* region) {
  impl_->GetRegion(region);
  return true;
}

int VemOverlay::GetPen(long* color0, long* color1, long* color2, long* width) {
  impl_->GetPen(color0, color1, color2, width);
  return 1;
}

int VemOverlay::GetBrush(long* color0, long* color1, long* color2, long* mode) {
  impl_->GetBrush(color0, color1, color2, mode);
  return 1;
}

int VemOverlay::OverlayType() { return impl_->OverlayType(); }

void VemOverlay::Swap(VemOverlay& other) { std::swap(impl_, other.impl_); }
