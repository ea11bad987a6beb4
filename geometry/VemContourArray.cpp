#include "VemContourArray.h"

#include <opencv2/core/types.hpp>

#include "values/TypedArray.h"

namespace {

using Chain = std::vector<cv::Point2d>;

}  // namespace

VemContourArray::VemContourArray() : store_(new std::vector<Chain>) {}
VemContourArray::VemContourArray(const VemContourArray& other)
    : store_(new std::vector<Chain>(*other.store_)) {}
VemContourArray& VemContourArray::operator=(const VemContourArray& other) {
  typed_array::Assign(*store_, *other.store_);
  return *this;
}
VemContourArray::~VemContourArray() { delete store_; }

void VemContourArray::Append(VemContour& value) { store_->push_back(*value.store_); }
void VemContourArray::Append(VemContourArray& values) {
  typed_array::AppendAll(*store_, *values.store_);
}
void VemContourArray::Insert(int index, VemContour& value) {
  typed_array::Insert(*store_, index, *value.store_);
}
void VemContourArray::Remove(int index) { typed_array::Remove(*store_, index); }
void VemContourArray::Replace(int index, VemContour& value) {
  typed_array::Replace(*store_, index, *value.store_);
}
void VemContourArray::Swap(int i, int j) { typed_array::Swap(*store_, i, j); }
void VemContourArray::Clear() { typed_array::Clear(*store_); }

int VemContourArray::Length() const { return typed_array::Length(*store_); }
void VemContourArray::Select(int index, VemContour* out) const {
  typed_array::Select(*store_, index, out->store_);
}

VemContour VemContourArray::operator[](int index) const {
  VemContour contour;
  Select(index, &contour);
  return contour;
}
