#include "VemPointArray.h"

#include "values/TypedArray.h"

VemPointArray::VemPointArray() : store_(new std::vector<VemPoint>) {}
VemPointArray::VemPointArray(const VemPointArray& other)
    : store_(new std::vector<VemPoint>(*other.store_)) {}
VemPointArray VemPointArray::operator=(const VemPointArray& other) {
  *store_ = *other.store_;
  return *this;
}
VemPointArray::~VemPointArray() { delete store_; }

void VemPointArray::Append(VemPoint& value) { store_->push_back(value); }
void VemPointArray::Append(VemPointArray& values) {
  typed_array::AppendAll(*store_, *values.store_);
}
void VemPointArray::Insert(int index, VemPoint& value) {
  typed_array::Insert(*store_, index, value);
}
void VemPointArray::Remove(int index) { typed_array::Remove(*store_, index); }
void VemPointArray::Replace(int index, VemPoint& value) {
  typed_array::Replace(*store_, index, value);
}
void VemPointArray::Swap(int i, int j) { typed_array::Swap(*store_, i, j); }
void VemPointArray::Clear() { typed_array::Clear(*store_); }

int VemPointArray::Length() const { return typed_array::Length(*store_); }
void VemPointArray::Select(int index, VemPoint* out) const {
  typed_array::Select(*store_, index, out);
}

VemPoint& VemPointArray::operator[](int index) { return typed_array::Element(*store_, index); }
VemPoint VemPointArray::operator[](int index) const {
  return typed_array::ElementCopy(*store_, index);
}
