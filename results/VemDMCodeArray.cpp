#include "VemDMCodeArray.h"

#include "values/TypedArray.h"

VemDMCodeArray::VemDMCodeArray() : store_(new std::vector<VemDMCode>) {}
VemDMCodeArray::VemDMCodeArray(const VemDMCodeArray& other)
    : store_(new std::vector<VemDMCode>(*other.store_)) {}
VemDMCodeArray VemDMCodeArray::operator=(const VemDMCodeArray& other) {
  *store_ = *other.store_;
  return *this;
}
VemDMCodeArray::~VemDMCodeArray() { delete store_; }

void VemDMCodeArray::Append(VemDMCode& value) { store_->push_back(value); }
void VemDMCodeArray::Append(VemDMCodeArray& values) {
  typed_array::ReserveAndAppendAll(*store_, *values.store_);
}
void VemDMCodeArray::Insert(int index, VemDMCode& value) {
  typed_array::Insert(*store_, index, value);
}
void VemDMCodeArray::Remove(int index) { typed_array::Remove(*store_, index); }
void VemDMCodeArray::Replace(int index, VemDMCode& value) {
  typed_array::Replace(*store_, index, value);
}
void VemDMCodeArray::Swap(int i, int j) { typed_array::Swap(*store_, i, j); }
void VemDMCodeArray::Clear() { typed_array::Clear(*store_); }

int VemDMCodeArray::Length() const { return typed_array::Length(*store_); }
void VemDMCodeArray::Select(int index, VemDMCode* out) const {
  typed_array::Select(*store_, index, out);
}

VemDMCode& VemDMCodeArray::operator[](int index) { return typed_array::Element(*store_, index); }
VemDMCode VemDMCodeArray::operator[](int index) const {
  return typed_array::ElementCopy(*store_, index);
}
