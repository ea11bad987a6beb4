#ifndef CODER_SCRATCH_H_
#define CODER_SCRATCH_H_

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>

/// Numbers in a growing block that is never filled beforehand: pages that nothing is written to are
/// not touched.
template <typename T>
class Scratch {
 public:
  /// Makes room for `room` elements, and for twice of what is there, if there is less. The first
  /// `used` elements are kept.
  void Grow(std::size_t used, std::size_t room) {
    if (room <= capacity_) return;
    capacity_ = std::max(room, 2 * capacity_);
    std::unique_ptr<T[]> larger(new T[capacity_]);
    std::copy_n(elements_.get(), used, larger.get());
    elements_ = std::move(larger);
  }

  T* Data() { return elements_.get(); }
  T& operator[](std::size_t index) { return elements_[index]; }

 private:
  std::unique_ptr<T[]> elements_;
  std::size_t capacity_ = 0;
};

#endif  // CODER_SCRATCH_H_
