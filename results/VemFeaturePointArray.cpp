#include "VemFeaturePointArray.h"

#include "values/TypedArray.h"

VemFeaturePointArray::VemFeaturePointArray() : store_(new std::vector<VemFeaturePoint>) {}
VemFeaturePointArray::VemFeaturePointArray(const VemFeaturePointArray& other)
    : store_(new std::vector<VemFeaturePoint>(*other.store_)) {}
VemFeaturePointArray VemFeaturePointArray::operator=(const VemFeaturePointArray& other) {
  *store_ = *other.store_;
  return *this;
}
VemFeaturePointArray::~VemFeaturePointArray() { delete store_; }

void VemFeaturePointArray::Append(VemFeaturePoint& value) { store_->push_back(value); }
void VemFeaturePointArray::Append(VemFeaturePointArray& values) {
  typed_array::ReserveAndAppendAll(*store_, *values.store_);
}
void VemFeaturePointArray::Insert(int index, VemFeaturePoint& value) {
  typed_array::Insert(*store_, index, value);
}
void VemFeaturePointArray::Remove(int index) { typed_array::Remove(*store_, index); }
void VemFeaturePointArray::Replace(int index, VemFeaturePoint& value) {
  typed_array::Replace(*store_, index, value);
}
void VemFeaturePointArray::Swap(int i, int j) { typed_array::Swap(*store_, i, j); }
void VemFeaturePointArray::Clear() { typed_array::Clear(*store_); }

int VemFeaturePointArray::Length() const { return typed_array::Length(*store_); }
void VemFeaturePointArray::Select(int index, VemFeaturePoint* out) const {
  typed_array::Select(*store_, index, out);
}

VemFeaturePoint& VemFeaturePointArray::operator[](int index) {
  return typed_array::Element(*store_, index);
}
VemFeaturePoint VemFeaturePointArray::operator[](int index) const {
  return typed_array::ElementCopy(*store_, index);
}
