#include "VemMatrixArray.h"

#include "raster/MatStore.h"
#include "values/TypedArray.h"

VemMatrixArray::VemMatrixArray() : store_(new mat_store::Store) {}
VemMatrixArray::VemMatrixArray(const VemMatrixArray& other) : VemMatrixArray() {
  mat_store::AppendAll(*store_, *other.store_);
}
// The source is what this operator returns.
const VemMatrixArray& VemMatrixArray::operator=(const VemMatrixArray& other) {
  mat_store::Assign(*store_, *other.store_);
  return other;
}
VemMatrixArray::~VemMatrixArray() {
  Clear();
  delete store_;
}

void VemMatrixArray::Append(VemMatrix& value) { mat_store::Append(*store_, *value.mat); }
void VemMatrixArray::Append(VemMatrixArray& values) {
  mat_store::AppendAll(*store_, *values.store_);
}
void VemMatrixArray::Insert(int index, VemMatrix& value) {
  mat_store::Insert(*store_, index, *value.mat);
}
void VemMatrixArray::Remove(int index) { mat_store::Remove(*store_, index); }
void VemMatrixArray::Replace(int index, VemMatrix& value) {
  mat_store::Replace(*store_, index, *value.mat);
}
void VemMatrixArray::Swap(int i, int j) { typed_array::Swap(*store_, i, j); }
void VemMatrixArray::Clear() { mat_store::Clear(*store_); }

int VemMatrixArray::Length() const { return store_ == nullptr ? 0 : typed_array::Length(*store_); }
void VemMatrixArray::Select(int index, VemMatrix* out) const {
  mat_store::Select(*store_, index, out->mat);
}

VemMatrix VemMatrixArray::operator[](int index) const {
  VemMatrix element;
  Select(index, &element);
  return element;
}
