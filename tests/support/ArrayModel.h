#ifndef TESTS_SUPPORT_ARRAY_MODEL_H_
#define TESTS_SUPPORT_ARRAY_MODEL_H_

#include <algorithm>
#include <cstddef>
#include <random>

#include <gtest/gtest.h>

#include "support/ArrayTraits.h"

/// An array beside a plain list of its numbers; one random operation after the other on both.
template <typename Traits>
class ArrayModel {
 public:
  using Element = typename Traits::Element;

  void Step() {
    switch (Draw(0, 15)) {
      case 0:
      case 1:
      case 2:
      case 3:
        return Append();
      case 4:
      case 5:
        return Insert();
      case 6:
        return InsertOwn();
      case 7:
      case 8:
        return Remove();
      case 9:
        return Replace();
      case 10:
        return Swap();
      case 11:
        return AssignInPlace();
      case 12:
        return SelectAndReinsert();
      case 13:
        return ClearAndTakeBack();
      case 14:
        return numbers_.size() > 20 ? Clear() : Remove();
      default:
        return numbers_.size() > 12 ? Shrink() : AppendWhole();
    }
  }

  testing::AssertionResult Agrees() { return Holds<Traits>(array_, numbers_); }

 private:
  int Draw(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }
  int DrawIndex() { return Draw(-2, static_cast<int>(numbers_.size()) + 1); }

  void Insert(int index, Element& element, int number) {
    const bool adds = !Traits::kTestsPositions && index == array_.Length();
    const bool inserts = adds || IsIndex(numbers_, index);
    if (!Traits::kTestsPositions && !inserts) return;
    array_.Insert(index, element);
    if (inserts) numbers_.insert(numbers_.begin() + index, number);
  }

  void Append() {
    const int number = Draw(1, 1000);
    Element element = Traits::Make(number);
    array_.Append(element);
    numbers_.push_back(number);
  }

  void Insert() {
    const int index = DrawIndex();
    const int number = Draw(1, 1000);
    Element element = Traits::Make(number);
    Insert(index, element, number);
  }

  void InsertOwn() {
    const int index = DrawIndex();
    const int from = DrawIndex();
    if (!IsIndex(numbers_, from)) return;
    const int number = numbers_[static_cast<std::size_t>(from)];
    if constexpr (Traits::kHasReferences) {
      Insert(index, array_[from], number);
    } else {
      Element element = array_[from];
      Insert(index, element, number);
    }
  }

  void Remove() {
    const int index = DrawIndex();
    array_.Remove(index);
    if (IsIndex(numbers_, index)) numbers_.erase(numbers_.begin() + index);
  }

  void Replace() {
    const int index = DrawIndex();
    const int number = Draw(1, 1000);
    Element element = Traits::Make(number);
    if (!Traits::kTestsPositions && !IsIndex(numbers_, index)) return;
    Traits::Replace(array_, index, element);
    if (IsIndex(numbers_, index)) numbers_[static_cast<std::size_t>(index)] = number;
  }

  void Swap() {
    const int i = DrawIndex();
    const int j = DrawIndex();
    if (i == j && IsIndex(numbers_, i) && !Traits::kMayAssignToItself) return;
    array_.Swap(i, j);
    if (!IsIndex(numbers_, i) || !IsIndex(numbers_, j)) return;
    std::iter_swap(numbers_.begin() + i, numbers_.begin() + j);
  }

  void AssignInPlace() {
    const int index = DrawIndex();
    if (!IsIndex(numbers_, index)) return;
    const int number = Draw(1, 1000);
    Put<Traits>(array_, index, number);
    numbers_[static_cast<std::size_t>(index)] = number;
  }

  void SelectAndReinsert() {
    const int from = DrawIndex();
    const int to = DrawIndex();
    Element element = Traits::Make(100);
    if constexpr (!Traits::kSelectIsWhole) return;
    array_.Select(from, &element);
    Insert(to, element, IsIndex(numbers_, from) ? numbers_[static_cast<std::size_t>(from)] : 100);
  }

  void AppendWhole() {
    const Numbers once = numbers_;
    array_.Append(array_);
    numbers_.insert(numbers_.end(), once.begin(), once.end());
  }

  void Clear() {
    array_.Clear();
    numbers_.clear();
  }

  void ClearAndTakeBack() {
    const typename Traits::Array copy(array_);
    array_.Clear();
    array_ = copy;
  }

  void Shrink() {
    typename Traits::Array copy(array_);
    array_.Clear();
    for (int i = 0; i < 10; ++i) copy.Remove(0);
    array_ = copy;
    numbers_.erase(numbers_.begin(), numbers_.begin() + 10);
  }

  std::mt19937 random_{20240611};
  typename Traits::Array array_;
  Numbers numbers_;
};

#endif  // TESTS_SUPPORT_ARRAY_MODEL_H_
