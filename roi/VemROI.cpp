#include "VemROI.h"

VemROI::VemROI() : impl_(new IVemROIPara) {}
VemROI::VemROI(int) : VemROI() {}
// Through assignment, which takes Width and Height along.
VemROI::VemROI(const VemROI& other) : VemROI() { *impl_ = *other.impl_; }
VemROI& VemROI::operator=(const VemROI& other) {
  *impl_ = *other.impl_;
  return *this;
}
VemROI::~VemROI() { delete impl_; }

void VemROI::GenPoint(VemPoint& point) { impl_->GenPoint(point); }
void VemROI::GenRect1(VemPoint& p1, VemPoint& p2) { impl_->GenRect1(p1, p2); }
void VemROI::GenCircle(VemPoint& center, double radius) { impl_->GenCircle(center, radius); }
void VemROI::GenTorus(VemPoint& center, double innerRadius, double outerRadius, double startAngle,
                      double sweepAngle) {
  impl_->GenTorus(center, innerRadius, outerRadius, startAngle, sweepAngle);
}
void VemROI::GenRect2(VemPoint& center, double length1, double length2, double angle) {
  impl_->GenRect2(center, length1, length2, angle);
}
void VemROI::GenLine(VemPoint& p1, VemPoint& p2) { impl_->GenLine(p1, p2); }
void VemROI::GenEllipse(VemPoint& center, double radius1, double radius2, double angle) {
  impl_->GenEllipse(center, radius1, radius2, angle);
}
void VemROI::GenArc(VemPoint& center, double radius, double startAngle, double sweepAngle) {
  impl_->GenArc(center, radius, startAngle, sweepAngle);
}
void VemROI::GenPolygon(VemVarArray& rows, VemVarArray& cols) { impl_->GenPolygon(rows, cols); }
void VemROI::GenPolygon(VemPointArray& points) { impl_->GenPolygon(points); }
void VemROI::GenIrregular(VemPointArray& points) { impl_->GenIrregular(points); }
void VemROI::GenMask(VemVarArray& rows, VemVarArray& firstColumns, VemVarArray& lastColumns,
                     int width, int height) {
  impl_->GenMask(rows, firstColumns, lastColumns, width, height);
}
void VemROI::GenMask(VemContourArray& contours, int width, int height) {
  impl_->GenMask(contours, width, height);
}

bool VemROI::GetPoint(VemPoint* point) { return impl_->GetPoint(point); }
bool VemROI::GetRect1(VemPoint* p1, VemPoint* p2) const { return impl_->GetRect1(p1, p2); }
bool VemROI::GetCircle(VemPoint* center, double* radius) const {
  return impl_->GetCircle(center, radius);
}
bool VemROI::GetTorus(VemPoint* center, double* innerRadius, double* outerRadius,
                      double* startAngle, double* sweepAngle) const {
  return impl_->GetTorus(center, innerRadius, outerRadius, startAngle, sweepAngle);
}
bool VemROI::GetRect2(VemPoint* center, double* length1, double* length2, double* angle) const {
  return impl_->GetRect2(center, length1, length2, angle);
}
bool VemROI::GetLine(VemPoint* p1, VemPoint* p2) const { return impl_->GetLine(p1, p2); }
bool VemROI::GetEllipse(VemPoint* center, double* radius1, double* radius2, double* angle) const {
  return impl_->GetEllipse(center, radius1, radius2, angle);
}
bool VemROI::GetArc(VemPoint* center, double* radius, double* startAngle,
                    double* sweepAngle) const {
  return impl_->GetArc(center, radius, startAngle, sweepAngle);
}
bool VemROI::GetPolygon(VemVarArray* rows, VemVarArray* cols) const {
  return impl_->GetPolygon(rows, cols);
}
bool VemROI::GetPolygon(VemPointArray* points) const { return impl_->GetPolygon(points); }
bool VemROI::GetIrregular(VemPointArray* points) const { return impl_->GetIrregular(points); }

bool VemROI::GetMask(VemVarArray* rows, VemVarArray* firstColumns, VemVarArray* lastColumns,
                     int* width, int* height) const {
  return impl_->GetMask(rows, firstColumns, lastColumns, width, height);
}
bool VemROI::GetMask(VemContourArray* contours, int* width, int* height) const {
  return impl_->GetMask(contours, width, height);
}

void VemROI::Reset() { impl_->Reset(); }
VemROIType VemROI::ROIType() const { return impl_->ROIType(); }
