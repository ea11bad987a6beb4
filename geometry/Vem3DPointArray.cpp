#include "Vem3DPointArray.h"

#include "values/TypedArray.h"

Vem3DPointArray::Vem3DPointArray() : store_(new std::vector<Vem3DPoint>) {}
Vem3DPointArray::Vem3DPointArray(const Vem3DPointArray& other)
    : store_(new std::vector<Vem3DPoint>(*other.store_)) {}
Vem3DPointArray Vem3DPointArray::operator=(const Vem3DPointArray& other) {
  *store_ = *other.store_;
  return *this;
}
Vem3DPointArray::~Vem3DPointArray() { delete store_; }

void Vem3DPointArray::Append(Vem3DPoint& value) { store_->push_back(value); }
void Vem3DPointArray::Append(Vem3DPointArray& values) {
  typed_array::AppendAll(*store_, *values.store_);
}
void Vem3DPointArray::Insert(int index, Vem3DPoint& value) {
  typed_array::Insert(*store_, index, value);
}
void Vem3DPointArray::Remove(int index) { typed_array::Remove(*store_, index); }
void Vem3DPointArray::Replace(int index, Vem3DPoint& value) {
  typed_array::Replace(*store_, index, value);
}
void Vem3DPointArray::Swap(int i, int j) { typed_array::Swap(*store_, i, j); }
void Vem3DPointArray::Clear() { typed_array::Clear(*store_); }

int Vem3DPointArray::Length() const { return typed_array::Length(*store_); }
void Vem3DPointArray::Select(int index, Vem3DPoint* out) const {
  typed_array::Select(*store_, index, out);
}

Vem3DPoint& Vem3DPointArray::operator[](int index) { return typed_array::Element(*store_, index); }
Vem3DPoint Vem3DPointArray::operator[](int index) const {
  return typed_array::ElementCopy(*store_, index);
}
