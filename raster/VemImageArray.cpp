#include "VemImageArray.h"

#include "raster/MatStore.h"
#include "values/TypedArray.h"

VemImageArray::VemImageArray() : store_(new mat_store::Store) {}
VemImageArray::VemImageArray(const VemImageArray& other) : VemImageArray() {
  mat_store::AppendAll(*store_, *other.store_);
}
// The source is what this operator returns.
const VemImageArray& VemImageArray::operator=(const VemImageArray& other) {
  mat_store::Assign(*store_, *other.store_);
  return other;
}
VemImageArray::~VemImageArray() {
  Clear();
  delete store_;
}

void VemImageArray::Append(VemImage& value) { mat_store::Append(*store_, *value.mat); }
void VemImageArray::Append(VemImageArray& values) { mat_store::AppendAll(*store_, *values.store_); }
void VemImageArray::Insert(int index, VemImage& value) {
  mat_store::Insert(*store_, index, *value.mat);
}
void VemImageArray::Remove(int index) { mat_store::Remove(*store_, index); }
void VemImageArray::Replace(int index, VemImage& value) {
  mat_store::Replace(*store_, index, *value.mat);
}
void VemImageArray::Swap(int i, int j) { typed_array::Swap(*store_, i, j); }
void VemImageArray::Clear() { mat_store::Clear(*store_); }

int VemImageArray::Length() const { return store_ == nullptr ? 0 : typed_array::Length(*store_); }
void VemImageArray::Select(int index, VemImage* out) const {
  mat_store::Select(*store_, index, out->mat);
}

VemImage VemImageArray::operator[](int index) const {
  VemImage element;
  Select(index, &element);
  return element;
}
