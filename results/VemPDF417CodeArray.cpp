#include "VemPDF417CodeArray.h"

#include "values/TypedArray.h"

VemPDF417CodeArray::VemPDF417CodeArray() : store_(new std::vector<VemPDF417Code>) {}
VemPDF417CodeArray::VemPDF417CodeArray(const VemPDF417CodeArray& other)
    : store_(new std::vector<VemPDF417Code>(*other.store_)) {}
VemPDF417CodeArray VemPDF417CodeArray::operator=(const VemPDF417CodeArray& other) {
  *store_ = *other.store_;
  return *this;
}
VemPDF417CodeArray::~VemPDF417CodeArray() { delete store_; }

void VemPDF417CodeArray::Append(VemPDF417Code& value) { store_->push_back(value); }
void VemPDF417CodeArray::Append(VemPDF417CodeArray& values) {
  typed_array::ReserveAndAppendAll(*store_, *values.store_);
}
void VemPDF417CodeArray::Insert(int index, VemPDF417Code& value) {
  typed_array::Insert(*store_, index, value);
}
void VemPDF417CodeArray::Remove(int index) { typed_array::Remove(*store_, index); }
void VemPDF417CodeArray::Replace(int index, VemPDF417Code& value) {
  typed_array::Replace(*store_, index, value);
}
void VemPDF417CodeArray::Swap(int i, int j) { typed_array::Swap(*store_, i, j); }
void VemPDF417CodeArray::Clear() { typed_array::Clear(*store_); }

int VemPDF417CodeArray::Length() const { return typed_array::Length(*store_); }
void VemPDF417CodeArray::Select(int index, VemPDF417Code* out) const {
  typed_array::Select(*store_, index, out);
}

VemPDF417Code& VemPDF417CodeArray::operator[](int index) {
  return typed_array::Element(*store_, index);
}
VemPDF417Code VemPDF417CodeArray::operator[](int index) const {
  return typed_array::ElementCopy(*store_, index);
}
