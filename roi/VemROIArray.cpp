#include "VemROIArray.h"

#include <cstddef>

#include "IVemROIAPara.h"
#include "values/TypedArray.h"

namespace {

IVemROIArrayPara Flatten(const IVemROIPara& roi) {
  IVemROIArrayPara record;
  record.Type = roi.Type;
  if (!roi.IsMask()) {
    record.Params = roi.Params;
    return record;
  }
  record.Width = roi.Width;
  record.Height = roi.Height;
  record.Rows = roi.Rows;
  record.FirstColumns = roi.FirstColumns;
  record.LastColumns = roi.LastColumns;
  return record;
}

// Takes over all but a mask's runs.
void Unflatten(const IVemROIArrayPara& record, IVemROIPara& roi) {
  roi.Type = record.Type;
  if (!record.IsMask()) {
    roi.Params = record.Params;
    return;
  }
  roi.Width = record.Width;
  roi.Height = record.Height;
}

void CopyRuns(const IVemROIArrayPara& record, IVemROIPara& roi) {
  roi.Rows = record.Rows;
  roi.FirstColumns = record.FirstColumns;
  roi.LastColumns = record.LastColumns;
}

}  // namespace

VemROIArray::VemROIArray() : store_(new std::vector<IVemROIArrayPara>) {}
VemROIArray::VemROIArray(const VemROIArray& other)
    : store_(new std::vector<IVemROIArrayPara>(*other.store_)) {}
VemROIArray& VemROIArray::operator=(const VemROIArray& other) {
  Clear();
  *store_ = *other.store_;
  return *this;
}
VemROIArray::~VemROIArray() { delete store_; }

void VemROIArray::Append(VemROI& value) { store_->push_back(Flatten(*value.impl_)); }
void VemROIArray::Append(VemROIArray& values) { typed_array::AppendAll(*store_, *values.store_); }
void VemROIArray::Insert(int index, VemROI& value) {
  if (!typed_array::InRange(*store_, index)) return;
  store_->insert(store_->begin() + index, Flatten(*value.impl_));
}
void VemROIArray::Remove(int index) { typed_array::Remove(*store_, index); }
void VemROIArray::Replace(int index, VemROI& value) {
  if (!typed_array::InRange(*store_, index)) return;
  typed_array::At(*store_, index) = Flatten(*value.impl_);
}
void VemROIArray::Swap(int i, int j) { typed_array::Swap(*store_, i, j); }
void VemROIArray::Clear() { typed_array::Clear(*store_); }

int VemROIArray::Length() const { return typed_array::Length(*store_); }

void VemROIArray::Select(int index, VemROI* out) const {
  if (!typed_array::InRange(*store_, index)) return;
  Unflatten(typed_array::At(*store_, index), *out->impl_);
}

VemROI VemROIArray::operator[](int index) const {
  VemROI roi;
  if (!typed_array::InRange(*store_, index)) return roi;
  const IVemROIArrayPara& record = typed_array::At(*store_, index);
  Unflatten(record, *roi.impl_);
  if (record.IsMask()) CopyRuns(record, *roi.impl_);
  return roi;
}
