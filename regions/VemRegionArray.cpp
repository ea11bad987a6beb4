#include "VemRegionArray.h"

#include <opencv2/core.hpp>

#include "IVemRegionAPara.h"
#include "values/TypedArray.h"

VemRegionArray::VemRegionArray() : impl_(new IVemRegionArrayPara) {}
VemRegionArray::VemRegionArray(const VemRegionArray& other) : VemRegionArray() {
  *impl_ = *other.impl_;
}
VemRegionArray& VemRegionArray::operator=(const VemRegionArray& other) {
  *impl_ = *other.impl_;
  return *this;
}
VemRegionArray::~VemRegionArray() { delete impl_; }

void VemRegionArray::Append(VemRegion& value) { impl_->Append(value); }
// The contour track is left out.
void VemRegionArray::Append(VemRegionArray& values) {
  const IVemRegionArrayPara& added = *values.impl_;
  typed_array::AppendAll(impl_->Widths, added.Widths);
  typed_array::AppendAll(impl_->Heights, added.Heights);
  typed_array::AppendAll(impl_->Rows, added.Rows);
  typed_array::AppendAll(impl_->FirstColumns, added.FirstColumns);
  typed_array::AppendAll(impl_->LastColumns, added.LastColumns);
}
void VemRegionArray::Insert(int index, VemRegion& value) { impl_->Insert(index, value); }
void VemRegionArray::Remove(int index) { impl_->Remove(index); }
void VemRegionArray::Replace(int index, VemRegion& value) { impl_->Replace(index, value); }
void VemRegionArray::Swap(int i, int j) { impl_->Swap(i, j); }
void VemRegionArray::Clear() { impl_->Clear(); }

int VemRegionArray::Length() const { return impl_->Length(); }
void VemRegionArray::Select(int index, VemRegion* out) { impl_->Select(index, *out); }
void VemRegionArray::Union(VemRegion* out) { impl_->Union(*out); }

VemRegion VemRegionArray::operator[](int index) const {
  VemRegion region;
  impl_->Select(index, region);
  return region;
}
