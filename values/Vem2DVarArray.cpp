#include "Vem2DVarArray.h"

#include "values/TypedArray.h"

Vem2DVarArray::Vem2DVarArray() : store_(new std::vector<VemVarArray>) {}
Vem2DVarArray::Vem2DVarArray(const Vem2DVarArray& other)
    : store_(new std::vector<VemVarArray>(*other.store_)) {}
Vem2DVarArray Vem2DVarArray::operator=(const Vem2DVarArray& other) {
  *store_ = *other.store_;
  return *this;
}
Vem2DVarArray::~Vem2DVarArray() { delete store_; }

void Vem2DVarArray::Append(VemVarArray& value) { store_->push_back(value); }
void Vem2DVarArray::Append(Vem2DVarArray& values) {
  typed_array::ReserveAndAppendAll(*store_, *values.store_);
}
void Vem2DVarArray::Insert(int index, VemVarArray& value) {
  typed_array::Insert(*store_, index, value);
}
void Vem2DVarArray::Remove(int index) { typed_array::Remove(*store_, index); }
void Vem2DVarArray::Replace(int index, VemVarArray& value) {
  typed_array::Replace(*store_, index, value);
}
void Vem2DVarArray::Swap(int i, int j) { typed_array::Swap(*store_, i, j); }
void Vem2DVarArray::Clear() { typed_array::Clear(*store_); }

int Vem2DVarArray::Length() const { return typed_array::Length(*store_); }
void Vem2DVarArray::Select(int index, VemVarArray* out) const {
  typed_array::Select(*store_, index, out);
}

VemVarArray& Vem2DVarArray::operator[](int index) { return typed_array::Element(*store_, index); }
VemVarArray Vem2DVarArray::operator[](int index) const {
  return typed_array::ElementCopy(*store_, index);
}
