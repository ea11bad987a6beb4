#ifndef TESTS_SUPPORT_ARRAY_CONTRACT_H_
#define TESTS_SUPPORT_ARRAY_CONTRACT_H_

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <csignal>
#include <cstddef>
#include <random>
#include <type_traits>
#include <utility>
#include <vector>

// What the arrays have in common whose assignment gives a new array, and whose Append of an array
// makes room for both lengths at once. An array's test file describes the array and hands it over:
//
//     struct Traits {
//       using Array = ...;
//       using Element = ...;
//       static Element Make(int number);                 // elements of different numbers differ
//       static bool IsMade(const Element&, int number);  // in every field
//       static bool IsDefault(const Element&);
//       static std::vector<Element>* Store(Array&);
//     };
//     INSTANTIATE_TYPED_TEST_SUITE_P(VemSomeArray, ArrayContract, Traits);
//     INSTANTIATE_TYPED_TEST_SUITE_P(VemSomeArray, ConstAccessContract, Traits);
//
// The elements of an array are told by their numbers.

namespace {

using Numbers = std::vector<int>;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kFaultsAreSignals = false;  // The sanitizer ends the process its own way.
#else
constexpr bool kFaultsAreSignals = true;
#endif

/// The numbers from 1 to `length`.
inline Numbers UpTo(int length) {
  Numbers numbers;
  for (int number = 1; number <= length; ++number) numbers.push_back(number);
  return numbers;
}

inline bool IsIndex(const Numbers& numbers, int index) {
  return index >= 0 && index < static_cast<int>(numbers.size());
}

/// Indices around an array of the given length, and far away from it.
inline std::vector<int> Indices(int length) {
  std::vector<int> indices = {INT_MIN, -2, -1};
  for (int index = 0; index <= length + 2; ++index) indices.push_back(index);
  indices.push_back(INT_MAX);
  return indices;
}

template <typename Traits>
typename Traits::Array ArrayOf(const Numbers& numbers) {
  typename Traits::Array array;
  for (const int number : numbers) {
    typename Traits::Element element = Traits::Make(number);
    array.Append(element);
  }
  return array;
}

/// Whether an array holds the elements of these numbers, read in place.
template <typename Traits>
testing::AssertionResult Holds(typename Traits::Array& array, const Numbers& numbers) {
  if (array.Length() != static_cast<int>(numbers.size())) {
    return testing::AssertionFailure() << array.Length() << " elements, not " << numbers.size();
  }
  for (int i = 0; i < array.Length(); ++i) {
    const int number = numbers[static_cast<std::size_t>(i)];
    if (Traits::IsMade(array[i], number)) continue;
    return testing::AssertionFailure() << "element " << i << " is not that of number " << number;
  }
  return testing::AssertionSuccess();
}

/// Writes other elements over all that an array holds.
template <typename Traits>
void Overwrite(typename Traits::Array& array) {
  for (int i = 0; i < array.Length(); ++i) array[i] = Traits::Make(500 + i);
}

/// Assigns by way of references, so that an array may be assigned to itself without a warning.
template <typename Array>
Array Assign(Array& target, const Array& source) {
  return target = source;
}

template <typename Traits>
class ArrayContract : public testing::Test {};
TYPED_TEST_SUITE_P(ArrayContract);

TYPED_TEST_P(ArrayContract, HasItsOperations) {
  using Array = typename TypeParam::Array;
  using Element = typename TypeParam::Element;
  static_assert(sizeof(Array) == sizeof(void*), "a handle is one pointer");
  static_assert(!std::is_polymorphic_v<Array>);
  static_assert(std::is_same_v<decltype(&Array::operator=), Array (Array::*)(const Array&)>);
  static_assert(std::is_same_v<decltype(&Array::Insert), void (Array::*)(int, Element&)>);
  static_assert(std::is_same_v<decltype(&Array::Remove), void (Array::*)(int)>);
  static_assert(std::is_same_v<decltype(&Array::Replace), void (Array::*)(int, Element&)>);
  static_assert(std::is_same_v<decltype(&Array::Swap), void (Array::*)(int, int)>);
  static_assert(std::is_same_v<decltype(&Array::Clear), void (Array::*)()>);
  static_assert(std::is_same_v<decltype(&Array::Length), int (Array::*)() const>);
  static_assert(std::is_same_v<decltype(&Array::Select), void (Array::*)(int, Element*) const>);
  static_assert(std::is_same_v<decltype(std::declval<Array&>()[0]), Element&>);
  static_assert(std::is_same_v<decltype(std::declval<const Array&>()[0]), Element>);
  void (Array::*const appendElement)(Element&) = &Array::Append;
  void (Array::*const appendArray)(Array&) = &Array::Append;

  Array array;
  EXPECT_EQ(array.Length(), 0);
  Element element = TypeParam::Make(1);
  (array.*appendElement)(element);
  (array.*appendArray)(array);
  EXPECT_TRUE(Holds<TypeParam>(array, {1, 1}));
}

TYPED_TEST_P(ArrayContract, AppendAddsCopiesAndDoublesTheRoom) {
  typename TypeParam::Array array;
  std::size_t room = 1;
  for (int number = 1; number <= 33; ++number) {
    typename TypeParam::Element element = TypeParam::Make(number);
    array.Append(element);
    element = TypeParam::Make(500);
    if (static_cast<std::size_t>(number) > room) room *= 2;
    ASSERT_EQ(TypeParam::Store(array)->capacity(), room) << number;
  }
  EXPECT_TRUE(Holds<TypeParam>(array, UpTo(33)));
}

TYPED_TEST_P(ArrayContract, AppendTakesAnElementOfItsOwn) {
  for (int i = 0; i < 4; ++i) {
    auto array = ArrayOf<TypeParam>(UpTo(4));  // Four elements fill the room.
    array.Append(array[i]);
    EXPECT_TRUE(Holds<TypeParam>(array, {1, 2, 3, 4, i + 1}));
  }
}

TYPED_TEST_P(ArrayContract, AppendOfAnArrayAddsItsElements) {
  for (int first = 0; first <= 4; ++first) {
    for (int second = 0; second <= 4; ++second) {
      auto array = ArrayOf<TypeParam>(UpTo(first));
      auto added = ArrayOf<TypeParam>(UpTo(second));
      array.Append(added);
      Numbers expected = UpTo(first);
      for (const int number : UpTo(second)) expected.push_back(number);
      EXPECT_TRUE(Holds<TypeParam>(added, UpTo(second)));
      Overwrite<TypeParam>(added);
      EXPECT_TRUE(Holds<TypeParam>(array, expected)) << first << ", " << second;
    }
  }
}

TYPED_TEST_P(ArrayContract, AppendOfAnArrayMakesRoomOnce) {
  auto array = ArrayOf<TypeParam>(UpTo(3));  // With room for four.
  auto added = ArrayOf<TypeParam>(UpTo(8));
  array.Append(added);
  EXPECT_EQ(TypeParam::Store(array)->capacity(), 11u);
}

TYPED_TEST_P(ArrayContract, AppendOfItselfDoubles) {
  for (int length = 0; length <= 5; ++length) {
    for (const std::size_t room : {0u, 40u}) {
      auto array = ArrayOf<TypeParam>(UpTo(length));
      TypeParam::Store(array)->reserve(room);
      array.Append(array);
      Numbers expected = UpTo(length);
      for (const int number : UpTo(length)) expected.push_back(number);
      EXPECT_TRUE(Holds<TypeParam>(array, expected)) << length;
    }
  }
}

TYPED_TEST_P(ArrayContract, InsertPutsACopyBeforeAnElement) {
  for (int length = 0; length <= 4; ++length) {
    for (const int index : Indices(length)) {
      auto array = ArrayOf<TypeParam>(UpTo(length));
      auto element = TypeParam::Make(50);
      array.Insert(index, element);
      element = TypeParam::Make(500);
      Numbers expected = UpTo(length);
      if (IsIndex(expected, index)) expected.insert(expected.begin() + index, 50);
      EXPECT_TRUE(Holds<TypeParam>(array, expected)) << index << " of " << length;
    }
  }
}

TYPED_TEST_P(ArrayContract, InsertTakesAnElementOfItsOwn) {
  for (const std::size_t room : {0u, 8u}) {
    for (int index = 0; index < 4; ++index) {
      for (int i = 0; i < 4; ++i) {
        auto array = ArrayOf<TypeParam>(UpTo(4));
        TypeParam::Store(array)->reserve(room);
        array.Insert(index, array[i]);
        Numbers expected = UpTo(4);
        expected.insert(expected.begin() + index, i + 1);
        EXPECT_TRUE(Holds<TypeParam>(array, expected)) << index << ", " << i;
      }
    }
  }
}

TYPED_TEST_P(ArrayContract, RemoveClosesTheGap) {
  for (int length = 0; length <= 4; ++length) {
    for (const int index : Indices(length)) {
      auto array = ArrayOf<TypeParam>(UpTo(length));
      array.Remove(index);
      Numbers expected = UpTo(length);
      if (IsIndex(expected, index)) expected.erase(expected.begin() + index);
      EXPECT_TRUE(Holds<TypeParam>(array, expected)) << index << " of " << length;
    }
  }
}

TYPED_TEST_P(ArrayContract, ReplaceAssignsOverAnElement) {
  for (int length = 0; length <= 4; ++length) {
    for (const int index : Indices(length)) {
      auto array = ArrayOf<TypeParam>(UpTo(length));
      auto element = TypeParam::Make(50);
      array.Replace(index, element);
      element = TypeParam::Make(500);
      Numbers expected = UpTo(length);
      if (IsIndex(expected, index)) expected[static_cast<std::size_t>(index)] = 50;
      EXPECT_TRUE(Holds<TypeParam>(array, expected)) << index << " of " << length;
    }
  }
}

TYPED_TEST_P(ArrayContract, SelectCopiesAnElementOut) {
  for (int length = 0; length <= 4; ++length) {
    auto array = ArrayOf<TypeParam>(UpTo(length));
    for (const int index : Indices(length)) {
      auto out = TypeParam::Make(50);
      array.Select(index, &out);
      const int expected = IsIndex(UpTo(length), index) ? index + 1 : 50;
      EXPECT_TRUE(TypeParam::IsMade(out, expected)) << index << " of " << length;
      out = TypeParam::Make(500);
    }
    EXPECT_TRUE(Holds<TypeParam>(array, UpTo(length)));
  }
}

TYPED_TEST_P(ArrayContract, SwapExchangesTwoElements) {
  for (int length = 0; length <= 3; ++length) {
    for (const int i : Indices(length)) {
      for (const int j : Indices(length)) {
        Numbers expected = UpTo(length);
        const bool inRange = IsIndex(expected, i) && IsIndex(expected, j);
        if (inRange && i == j) continue;  // Assigns an element to itself, which a text forbids.
        auto array = ArrayOf<TypeParam>(UpTo(length));
        array.Swap(i, j);
        if (inRange) std::iter_swap(expected.begin() + i, expected.begin() + j);
        EXPECT_TRUE(Holds<TypeParam>(array, expected)) << i << ", " << j << " of " << length;
      }
    }
  }
}

TYPED_TEST_P(ArrayContract, ClearGivesTheStorageBack) {
  auto array = ArrayOf<TypeParam>(UpTo(3));
  const auto* store = TypeParam::Store(array);
  for (int round = 0; round < 2; ++round) {
    array.Clear();
    EXPECT_EQ(array.Length(), 0);
    EXPECT_EQ(store->capacity(), 0u);
    EXPECT_EQ(TypeParam::Store(array), store);
  }
  auto element = TypeParam::Make(7);
  array.Append(element);
  EXPECT_TRUE(Holds<TypeParam>(array, {7}));
}

TYPED_TEST_P(ArrayContract, CopiesShareNothing) {
  using Array = typename TypeParam::Array;
  for (const int length : {0, 1, 5}) {
    auto source = ArrayOf<TypeParam>(UpTo(length));
    Array constructed(source);
    Array target = ArrayOf<TypeParam>({8, 9});
    Array returned = Assign(target, source);
    EXPECT_TRUE(Holds<TypeParam>(source, UpTo(length)));
    Overwrite<TypeParam>(source);
    source.Remove(0);
    EXPECT_TRUE(Holds<TypeParam>(constructed, UpTo(length)));
    EXPECT_TRUE(Holds<TypeParam>(target, UpTo(length)));
    Overwrite<TypeParam>(target);
    target.Clear();
    EXPECT_TRUE(Holds<TypeParam>(returned, UpTo(length)));
  }
}

TYPED_TEST_P(ArrayContract, AssignmentGivesAnotherArray) {
  const auto source = ArrayOf<TypeParam>(UpTo(3));
  const auto other = ArrayOf<TypeParam>({9});
  typename TypeParam::Array first, second;
  (first = source).Clear();
  EXPECT_TRUE(Holds<TypeParam>(first, UpTo(3)));
  (first = source) = other;
  EXPECT_TRUE(Holds<TypeParam>(first, UpTo(3)));
  first = second = other;
  EXPECT_TRUE(Holds<TypeParam>(first, {9}));
  EXPECT_TRUE(Holds<TypeParam>(second, {9}));
}

TYPED_TEST_P(ArrayContract, SelfAssignmentChangesNothing) {
  for (const int length : {0, 1, 5}) {
    auto array = ArrayOf<TypeParam>(UpTo(length));
    auto returned = Assign(array, array);
    EXPECT_TRUE(Holds<TypeParam>(array, UpTo(length)));
    EXPECT_NE(TypeParam::Store(returned), TypeParam::Store(array));
    Overwrite<TypeParam>(array);
    EXPECT_TRUE(Holds<TypeParam>(returned, UpTo(length)));
  }
}

TYPED_TEST_P(ArrayContract, ReferencesReachTheElementInPlace) {
  auto array = ArrayOf<TypeParam>(UpTo(3));
  array[1] = TypeParam::Make(50);
  EXPECT_TRUE(Holds<TypeParam>(array, {1, 50, 3}));
  for (int i = 0; i < 3; ++i) EXPECT_EQ(&array[i], TypeParam::Store(array)->data() + i);
}

TYPED_TEST_P(ArrayContract, ReferencesOutOfRangeFaultWhenTouched) {
  for (const int length : {0, 2}) {
    auto array = ArrayOf<TypeParam>(UpTo(length));
    TypeParam::Store(array)->reserve(8);
    for (const int index : {INT_MIN, -1, length, length + 1, INT_MAX}) {
      SCOPED_TRACE(index);
      auto* touched = reinterpret_cast<volatile char*>(&array[index]);
      if (!kFaultsAreSignals) continue;
      EXPECT_EXIT(*touched = 1, testing::KilledBySignal(SIGSEGV), "");
      touched += sizeof(typename TypeParam::Element) - 1;
      EXPECT_EXIT(*touched = 1, testing::KilledBySignal(SIGSEGV), "");
    }
    EXPECT_TRUE(Holds<TypeParam>(array, UpTo(length)));
  }
}

/// An array beside a plain list of its numbers; one random operation after the other on both.
template <typename Traits>
class RandomArray {
 public:
  using Element = typename Traits::Element;

  void Step() {
    switch (Draw(0, 9)) {
      case 0:
      case 1:
      case 2:
        return Append();
      case 3:
      case 4:
        return Insert();
      case 5:
        return Remove();
      case 6:
        return Replace();
      case 7:
        return Swap();
      case 8:
        return SelectAndReinsert();
      default:
        return numbers_.size() > 12 ? Shrink() : AppendWhole();
    }
  }

  testing::AssertionResult Agrees() { return Holds<Traits>(array_, numbers_); }

 private:
  int Draw(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }
  int DrawIndex() { return Draw(-2, static_cast<int>(numbers_.size()) + 1); }

  void Append() {
    const int number = Draw(1, 99);
    Element element = Traits::Make(number);
    array_.Append(element);
    numbers_.push_back(number);
  }

  void Insert() {
    const int index = DrawIndex();
    const int number = Draw(1, 99);
    Element element = Traits::Make(number);
    array_.Insert(index, element);
    if (IsIndex(numbers_, index)) numbers_.insert(numbers_.begin() + index, number);
  }

  void Remove() {
    const int index = DrawIndex();
    array_.Remove(index);
    if (IsIndex(numbers_, index)) numbers_.erase(numbers_.begin() + index);
  }

  void Replace() {
    const int index = DrawIndex();
    const int number = Draw(1, 99);
    Element element = Traits::Make(number);
    array_.Replace(index, element);
    if (IsIndex(numbers_, index)) numbers_[static_cast<std::size_t>(index)] = number;
  }

  void Swap() {
    const int i = DrawIndex();
    const int j = DrawIndex();
    if (i == j) return;
    array_.Swap(i, j);
    if (!IsIndex(numbers_, i) || !IsIndex(numbers_, j)) return;
    std::iter_swap(numbers_.begin() + i, numbers_.begin() + j);
  }

  void SelectAndReinsert() {
    const int from = DrawIndex();
    const int to = DrawIndex();
    Element element = Traits::Make(100);
    array_.Select(from, &element);
    array_.Insert(to, element);
    const int number = IsIndex(numbers_, from) ? numbers_[static_cast<std::size_t>(from)] : 100;
    if (IsIndex(numbers_, to)) numbers_.insert(numbers_.begin() + to, number);
  }

  void AppendWhole() {
    const Numbers once = numbers_;
    array_.Append(array_);
    numbers_.insert(numbers_.end(), once.begin(), once.end());
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

TYPED_TEST_P(ArrayContract, RandomOperationsAgreeWithAPlainList) {
  RandomArray<TypeParam> array;
  for (int step = 0; step < 10000; ++step) {
    array.Step();
    ASSERT_TRUE(array.Agrees()) << "after step " << step;
  }
}

REGISTER_TYPED_TEST_SUITE_P(ArrayContract, HasItsOperations, AppendAddsCopiesAndDoublesTheRoom,
                            AppendTakesAnElementOfItsOwn, AppendOfAnArrayAddsItsElements,
                            AppendOfAnArrayMakesRoomOnce, AppendOfItselfDoubles,
                            InsertPutsACopyBeforeAnElement, InsertTakesAnElementOfItsOwn,
                            RemoveClosesTheGap, ReplaceAssignsOverAnElement,
                            SelectCopiesAnElementOut, SwapExchangesTwoElements,
                            ClearGivesTheStorageBack, CopiesShareNothing,
                            AssignmentGivesAnotherArray, SelfAssignmentChangesNothing,
                            ReferencesReachTheElementInPlace, ReferencesOutOfRangeFaultWhenTouched,
                            RandomOperationsAgreeWithAPlainList);

template <typename Traits>
class ConstAccessContract : public testing::Test {};
TYPED_TEST_SUITE_P(ConstAccessContract);

TYPED_TEST_P(ConstAccessContract, GivesACopyOfTheElement) {
  auto array = ArrayOf<TypeParam>(UpTo(4));
  const auto& constant = array;
  for (int i = 0; i < 4; ++i) {
    auto copy = constant[i];
    EXPECT_TRUE(TypeParam::IsMade(copy, i + 1)) << i;
    copy = TypeParam::Make(500);
  }
  EXPECT_TRUE(Holds<TypeParam>(array, UpTo(4)));
}

TYPED_TEST_P(ConstAccessContract, OutOfRangeGivesADefaultElement) {
  for (const int length : {0, 3}) {
    const auto array = ArrayOf<TypeParam>(UpTo(length));
    for (const int index : {INT_MIN, -1, length, length + 1, INT_MAX}) {
      EXPECT_TRUE(TypeParam::IsDefault(array[index])) << index;
    }
  }
}

REGISTER_TYPED_TEST_SUITE_P(ConstAccessContract, GivesACopyOfTheElement,
                            OutOfRangeGivesADefaultElement);

}  // namespace

#endif  // TESTS_SUPPORT_ARRAY_CONTRACT_H_
