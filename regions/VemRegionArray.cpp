#include "VemRegionArray.h"

#include <utility>
#include <vector>

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
// The contour track is left out. Copies and room are made before any list changes.
void VemRegionArray::Append(VemRegionArray& values) {
  const IVemRegionArrayPara& added = *values.impl_;
  std::vector<std::vector<int>> rows(added.Rows);
  std::vector<std::vector<int>> firstColumns(added.FirstColumns);
  std::vector<std::vector<int>> lastColumns(added.LastColumns);
  typed_array::MakeRoom(impl_->Widths, added.Widths.size());
  typed_array::MakeRoom(impl_->Heights, added.Heights.size());
  typed_array::MakeRoom(impl_->Rows, rows.size());
  typed_array::MakeRoom(impl_->FirstColumns, firstColumns.size());
  typed_array::MakeRoom(impl_->LastColumns, lastColumns.size());

  typed_array::AppendAll(impl_->Widths, added.Widths);
  typed_array::AppendAll(impl_->Heights, added.Heights);
  typed_array::AppendTaken(impl_->Rows, std::move(rows));
  typed_array::AppendTaken(impl_->FirstColumns, std::move(firstColumns));
  typed_array::AppendTaken(impl_->LastColumns, std::move(lastColumns));
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
