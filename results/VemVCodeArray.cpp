#include "VemVCodeArray.h"

#include "values/TypedArray.h"

VemVCodeArray::VemVCodeArray() : store_(new std::vector<VemVCode>) {}
VemVCodeArray::VemVCodeArray(const VemVCodeArray& other)
    : store_(new std::vector<VemVCode>(*other.store_)) {}
VemVCodeArray VemVCodeArray::operator=(const VemVCodeArray& other) {
  *store_ = *other.store_;
  return *this;
}
VemVCodeArray::~VemVCodeArray() { delete store_; }

void VemVCodeArray::Append(VemVCode& value) { store_->push_back(value); }
void VemVCodeArray::Append(VemVCodeArray& values) {
  typed_array::ReserveAndAppendAll(*store_, *values.store_);
}
void VemVCodeArray::Insert(int index, VemVCode& value) {
  typed_array::Insert(*store_, index, value);
}
void VemVCodeArray::Remove(int index) { typed_array::Remove(*store_, index); }
void VemVCodeArray::Replace(int index, VemVCode& value) {
  typed_array::Replace(*store_, index, value);
}
void VemVCodeArray::Swap(int i, int j) { typed_array::Swap(*store_, i, j); }
void VemVCodeArray::Clear() { typed_array::Clear(*store_); }

int VemVCodeArray::Length() const { return typed_array::Length(*store_); }
void VemVCodeArray::Select(int index, VemVCode* out) const {
  typed_array::Select(*store_, index, out);
}

VemVCode& VemVCodeArray::operator[](int index) { return typed_array::Element(*store_, index); }
VemVCode VemVCodeArray::operator[](int index) const {
  return typed_array::ElementCopy(*store_, index);
}
