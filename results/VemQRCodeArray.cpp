#include "VemQRCodeArray.h"

#include "values/TypedArray.h"

VemQRCodeArray::VemQRCodeArray() : store_(new std::vector<VemQRCode>) {}
VemQRCodeArray::VemQRCodeArray(const VemQRCodeArray& other)
    : store_(new std::vector<VemQRCode>(*other.store_)) {}
VemQRCodeArray VemQRCodeArray::operator=(const VemQRCodeArray& other) {
  *store_ = *other.store_;
  return *this;
}
VemQRCodeArray::~VemQRCodeArray() { delete store_; }

void VemQRCodeArray::Append(VemQRCode& value) { store_->push_back(value); }
void VemQRCodeArray::Append(VemQRCodeArray& values) {
  typed_array::ReserveAndAppendAll(*store_, *values.store_);
}
void VemQRCodeArray::Insert(int index, VemQRCode& value) {
  typed_array::Insert(*store_, index, value);
}
void VemQRCodeArray::Remove(int index) { typed_array::Remove(*store_, index); }
void VemQRCodeArray::Replace(int index, VemQRCode& value) {
  typed_array::Replace(*store_, index, value);
}
void VemQRCodeArray::Swap(int i, int j) { typed_array::Swap(*store_, i, j); }
void VemQRCodeArray::Clear() { typed_array::Clear(*store_); }

int VemQRCodeArray::Length() const { return typed_array::Length(*store_); }
void VemQRCodeArray::Select(int index, VemQRCode* out) const {
  typed_array::Select(*store_, index, out);
}

VemQRCode& VemQRCodeArray::operator[](int index) { return typed_array::Element(*store_, index); }
VemQRCode VemQRCodeArray::operator[](int index) const {
  return typed_array::ElementCopy(*store_, index);
}
