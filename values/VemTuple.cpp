#include "VemTuple.h"

#include <algorithm>

#include "values/TypedArray.h"
#include "values/VarStore.h"

VemVarArray::VemVarArray() : store_(new VemVarStore()) {}
VemVarArray::VemVarArray(long value) : VemVarArray() { Append(value); }
VemVarArray::VemVarArray(int value) : VemVarArray() { Append(value); }
VemVarArray::VemVarArray(double value) : VemVarArray() { Append(value); }
VemVarArray::VemVarArray(float value) : VemVarArray() { Append(value); }
VemVarArray::VemVarArray(const char* text) : VemVarArray() { Append(text); }
VemVarArray::VemVarArray(const VemVar& value) : VemVarArray() { Append(value); }
VemVarArray::VemVarArray(const VemVarArray& other) : VemVarArray() { Copy(other); }

VemVarArray& VemVarArray::operator=(const VemVarArray& other) {
  Copy(other);
  return *this;
}

VemVarArray::~VemVarArray() { Reset(); }

void VemVarArray::Copy(const VemVarArray& other) {
  if (store_ == nullptr) store_ = new VemVarStore();
  var_store::Assign(*store_, *other.store_);
}

// The copy comes first: the value may be an element of this array.
void VemVarArray::Insert(int index, const VemVar& value) {
  if (!Contains(index)) return;
  VemVar copy(value);
  if (store_->Last == store_->Limit) {
    Take(copy);
    return var_store::MoveLastTo(*store_, store_->First + index);
  }
  Append(store_->Last[-1]);
  VemVar* const place = store_->First + index;
  std::copy_backward(place, store_->Last - 2, store_->Last - 1);
  *place = copy;
}

void VemVarArray::Remove(int index) {
  if (!Contains(index)) return;
  VemVar* const place = store_->First + index;
  std::copy(place + 1, store_->Last, place);
  var_store::Truncate(*store_, var_store::Count(*store_) - 1);
}

void VemVarArray::Replace(int index, const VemVar& value) {
  if (Contains(index)) store_->First[index] = value;
}

// Through a copy, with no shortcut for an element and itself.
void VemVarArray::Swap(int i, int j) {
  if (!Contains(i) || !Contains(j)) return;
  const VemVar copy(store_->First[i]);
  store_->First[i] = store_->First[j];
  store_->First[j] = copy;
}

void VemVarArray::Invert() { var_store::Invert(*store_); }
void VemVarArray::Clear() { var_store::Release(*store_); }

// The pointer is left as it is: a second Reset would release the store again.
void VemVarArray::Reset() {
  Clear();
  delete store_;
}

void VemVarArray::Select(int index, VemVar* out) const {
  if (Contains(index)) *out = store_->First[index];
}

int VemVarArray::IndexOf(const VemVar& value, int start) {
  for (int i = std::max(start, 0); i < Length(); ++i) {
    if (store_->First[i] == value) return i;
  }
  return -1;
}

VemVarArray VemVarArray::operator+(const VemVarArray& right) const {
  VemVarArray sum;
  var_store::Reserve(*sum.store_, var_store::Count(*store_) + var_store::Count(*right.store_));
  var_store::AppendCopies(*sum.store_, *store_);
  var_store::AppendCopies(*sum.store_, *right.store_);
  return sum;
}

bool VemVarArray::operator==(const VemVarArray& right) const { return !(*this != right); }

bool VemVarArray::operator!=(const VemVarArray& right) const {
  return !std::equal(store_->First, store_->Last, right.store_->First, right.store_->Last,
                     [](const VemVar& a, const VemVar& b) { return !(a != b); });
}

void VemVarArray::Take(VemVar& value) {
  var_store::MakeRoom(*store_, 1);
  new (store_->Last) VemVar(VemVar::Taken{value});
  ++store_->Last;
}

VemVar& VemVarArray::Invalid() { return typed_array::InvalidReference<VemVar>(); }
