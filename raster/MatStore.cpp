#include "raster/MatStore.h"

#include <cstddef>
#include <memory>

#include "values/TypedArray.h"

namespace mat_store {

namespace {

// When the clone fails, its header stays allocated: this is meant.
std::unique_ptr<cv::Mat> Clone(const cv::Mat& element) {
  auto* clone = new cv::Mat;
  element.copyTo(*clone);
  return std::unique_ptr<cv::Mat>(clone);
}

void DestroyFrom(Store& store, std::size_t first) {
  for (std::size_t i = first; i < store.size(); ++i) delete store[i];
  store.resize(first);
}

}  // namespace

void Append(Store& store, const cv::Mat& element) {
  std::unique_ptr<cv::Mat> clone = Clone(element);
  store.push_back(clone.get());
  static_cast<void>(clone.release());
}

void AppendAll(Store& store, const Store& added) {
  const std::size_t before = store.size();
  const std::size_t count = added.size();
  try {
    for (std::size_t i = 0; i < count; ++i) Append(store, *added[i]);
  } catch (...) {
    DestroyFrom(store, before);
    throw;
  }
}

void Insert(Store& store, int index, const cv::Mat& element) {
  if (!typed_array::InRange(store, index)) return;
  std::unique_ptr<cv::Mat> clone = Clone(element);
  store.insert(store.begin() + index, clone.get());
  static_cast<void>(clone.release());
}

void Remove(Store& store, int index) {
  if (!typed_array::InRange(store, index)) return;
  const std::unique_ptr<const cv::Mat> removed(typed_array::At(store, index));
  store.erase(store.begin() + index);
}

// What the entry pointed to is not deleted: this is meant.
void Replace(Store& store, int index, const cv::Mat& element) {
  if (typed_array::InRange(store, index)) typed_array::At(store, index) = Clone(element).release();
}

void Assign(Store& store, const Store& source) {
  DestroyFrom(store, 0);
  AppendAll(store, source);
}

void Clear(Store& store) {
  DestroyFrom(store, 0);
  typed_array::Clear(store);
}

void Select(const Store& store, int index, cv::Mat*& out) {
  if (!typed_array::InRange(store, index)) return;
  if (out == nullptr) out = new cv::Mat;
  *out = typed_array::At(store, index)->clone();
}

}  // namespace mat_store
