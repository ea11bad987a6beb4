#include "VemTuple.h"

#include <algorithm>

#include "values/TypedArray.h"

VemVarArray::VemVarArray() : store_(new std::vector<VemVar>) {}
VemVarArray::VemVarArray(long value) : VemVarArray(VemVar(value)) {}
VemVarArray::VemVarArray(int value) : VemVarArray(VemVar(value)) {}
VemVarArray::VemVarArray(double value) : VemVarArray(VemVar(value)) {}
VemVarArray::VemVarArray(float value) : VemVarArray(VemVar(value)) {}
VemVarArray::VemVarArray(const char* text) : VemVarArray(VemVar(text)) {}
VemVarArray::VemVarArray(const VemVar& value) : VemVarArray() { Append(value); }
VemVarArray::VemVarArray(const VemVarArray& other) : VemVarArray() { Copy(other); }

VemVarArray& VemVarArray::operator=(const VemVarArray& other) {
  Copy(other);
  return *this;
}

VemVarArray::~VemVarArray() { Reset(); }

void VemVarArray::Copy(const VemVarArray& other) {
  if (store_ == nullptr) store_ = new std::vector<VemVar>;
  *store_ = *other.store_;
}

void VemVarArray::Append(const VemVar& value) { store_->push_back(value); }
void VemVarArray::Insert(int index, const VemVar& value) {
  typed_array::Insert(*store_, index, value);
}
void VemVarArray::Remove(int index) { typed_array::Remove(*store_, index); }
void VemVarArray::Replace(int index, const VemVar& value) {
  typed_array::Replace(*store_, index, value);
}
void VemVarArray::Swap(int i, int j) { typed_array::Swap(*store_, i, j); }

void VemVarArray::Invert() {
  const std::vector<VemVar> inverted(store_->rbegin(), store_->rend());
  store_->clear();
  store_->insert(store_->end(), inverted.begin(), inverted.end());
}

void VemVarArray::Clear() { typed_array::Clear(*store_); }

// The pointer is left as it is: a second Reset would release the store again.
void VemVarArray::Reset() {
  Clear();
  delete store_;
}

int VemVarArray::Length() const { return typed_array::Length(*store_); }
void VemVarArray::Select(int index, VemVar* out) const { typed_array::Select(*store_, index, out); }

int VemVarArray::IndexOf(const VemVar& value, int start) {
  for (int i = std::max(start, 0); i < Length(); ++i) {
    if ((*store_)[static_cast<std::size_t>(i)] == value) return i;
  }
  return -1;
}

VemVar& VemVarArray::operator[](int index) { return typed_array::Element(*store_, index); }
VemVar VemVarArray::operator[](int index) const { return typed_array::ElementCopy(*store_, index); }

VemVarArray VemVarArray::operator+(const VemVarArray& right) const {
  VemVarArray sum;
  sum.store_->reserve(store_->size() + right.store_->size());
  sum.store_->insert(sum.store_->end(), store_->begin(), store_->end());
  sum.store_->insert(sum.store_->end(), right.store_->begin(), right.store_->end());
  return sum;
}

bool VemVarArray::operator==(const VemVarArray& right) const { return !(*this != right); }

bool VemVarArray::operator!=(const VemVarArray& right) const {
  return !std::equal(store_->begin(), store_->end(), right.store_->begin(), right.store_->end(),
                     [](const VemVar& a, const VemVar& b) { return !(a != b); });
}
