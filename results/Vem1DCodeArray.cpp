#include "Vem1DCodeArray.h"

#include "values/TypedArray.h"

Vem1DCodeArray::Vem1DCodeArray() : store_(new std::vector<Vem1DCode>) {}
Vem1DCodeArray::Vem1DCodeArray(const Vem1DCodeArray& other)
    : store_(new std::vector<Vem1DCode>(*other.store_)) {}
Vem1DCodeArray Vem1DCodeArray::operator=(const Vem1DCodeArray& other) {
  *store_ = *other.store_;
  return *this;
}
Vem1DCodeArray::~Vem1DCodeArray() { delete store_; }

void Vem1DCodeArray::Append(Vem1DCode& value) { store_->push_back(value); }
void Vem1DCodeArray::Append(Vem1DCodeArray& values) {
  typed_array::ReserveAndAppendAll(*store_, *values.store_);
}
void Vem1DCodeArray::Insert(int index, Vem1DCode& value) {
  typed_array::Insert(*store_, index, value);
}
void Vem1DCodeArray::Remove(int index) { typed_array::Remove(*store_, index); }
void Vem1DCodeArray::Replace(int index, Vem1DCode& value) {
  typed_array::Replace(*store_, index, value);
}
void Vem1DCodeArray::Swap(int i, int j) { typed_array::Swap(*store_, i, j); }
void Vem1DCodeArray::Clear() { typed_array::Clear(*store_); }

int Vem1DCodeArray::Length() const { return typed_array::Length(*store_); }
void Vem1DCodeArray::Select(int index, Vem1DCode* out) const {
  typed_array::Select(*store_, index, out);
}

Vem1DCode& Vem1DCodeArray::operator[](int index) { return typed_array::Element(*store_, index); }

// In range, nothing of the array is read; out of range, the memory at that position is. This is
// meant, and no other array does it.
Vem1DCode Vem1DCodeArray::operator[](int index) const {
  return typed_array::InRange(*store_, index) ? Vem1DCode() : *(store_->data() + index);
}
