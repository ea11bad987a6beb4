#ifndef TESTS_SUPPORT_ARRAY_CONTRACT_H_
#define TESTS_SUPPORT_ARRAY_CONTRACT_H_

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <csignal>
#include <cstddef>
#include <random>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

// What the arrays have in common whose assignment gives a new array. An array's test file describes
// the array and hands it over:
//
//     struct Traits {
//       using Array = ...;
//       using Element = ...;
//       static Element Make(int number);                 // elements of different numbers differ
//       static bool IsMade(const Element&, int number);  // in every field
//       static bool IsDefault(const Element&);
//       static std::vector<Element>* Store(Array&);
//       static constexpr bool kMakesRoomOnce;      // for all that Append of an array adds
//       static constexpr bool kMayAssignToItself;  // an element
//       static constexpr bool kConstAccessReads;   // the elements in range
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

/// How much room an array has: for its elements alone, what appending them left, or plenty.
enum class Room { kFull, kAsGrown, kPlenty };
constexpr Room kRooms[] = {Room::kFull, Room::kAsGrown, Room::kPlenty};

/// An array of the numbers from 1 to `length`.
template <typename Traits>
typename Traits::Array ArrayWith(Room room, int length) {
  auto array = ArrayOf<Traits>(UpTo(length));
  if (room == Room::kFull) Traits::Store(array)->shrink_to_fit();
  if (room == Room::kPlenty) Traits::Store(array)->reserve(40);
  return array;
}

/// Whether an array holds the elements of these numbers, by each way of reading that changes none.
template <typename Traits>
testing::AssertionResult Holds(const typename Traits::Array& array, const Numbers& numbers) {
  if (array.Length() != static_cast<int>(numbers.size())) {
    return testing::AssertionFailure() << array.Length() << " elements, not " << numbers.size();
  }
  const typename Traits::Element unlike = Traits::Make(499);
  for (int i = 0; i < array.Length(); ++i) {
    const int number = numbers[static_cast<std::size_t>(i)];
    typename Traits::Element selected = unlike;
    array.Select(i, &selected);
    if (!Traits::IsMade(selected, number)) {
      return testing::AssertionFailure() << "selected element " << i << " is "
                                         << testing::PrintToString(selected) << ", not " << number;
    }
    if constexpr (Traits::kConstAccessReads) {
      const typename Traits::Element copy = array[i];
      if (!Traits::IsMade(copy, number)) {
        return testing::AssertionFailure() << "copied element " << i << " is "
                                           << testing::PrintToString(copy) << ", not " << number;
      }
    }
  }
  return testing::AssertionSuccess();
}

/// In place as well.
template <typename Traits>
testing::AssertionResult Holds(typename Traits::Array& array, const Numbers& numbers) {
  const testing::AssertionResult held = Holds<Traits>(std::as_const(array), numbers);
  if (!held) return held;
  for (int i = 0; i < array.Length(); ++i) {
    const int number = numbers[static_cast<std::size_t>(i)];
    if (Traits::IsMade(array[i], number)) continue;
    return testing::AssertionFailure()
           << "element " << i << " is " << testing::PrintToString(array[i]) << ", not " << number;
  }
  return testing::AssertionSuccess();
}

/// Writes the elements of the numbers from `number` on over all that an array holds.
template <typename Traits>
void Overwrite(typename Traits::Array& array, int number = 500) {
  for (int i = 0; i < array.Length(); ++i) array[i] = Traits::Make(number + i);
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
  static_assert(!std::is_constructible_v<Array, int> && !std::is_constructible_v<Array, Element&>);
  void (Array::*const appendElement)(Element&) = &Array::Append;
  void (Array::*const appendArray)(Array&) = &Array::Append;

  Array array;
  EXPECT_EQ(array.Length(), 0);
  Element element = TypeParam::Make(1);
  (array.*appendElement)(element);
  (array.*appendArray)(array);
  EXPECT_TRUE(Holds<TypeParam>(array, {1, 1}));
}

TYPED_TEST_P(ArrayContract, AppendAddsCopies) {
  typename TypeParam::Array array;
  for (int number = 1; number <= 100; ++number) {
    typename TypeParam::Element element = TypeParam::Make(number);
    array.Append(element);
    element = TypeParam::Make(500);
    ASSERT_TRUE(Holds<TypeParam>(array, UpTo(number)));
  }
}

TYPED_TEST_P(ArrayContract, AppendDoublesTheRoom) {
  typename TypeParam::Array array;
  typename TypeParam::Element element = TypeParam::Make(1);
  std::size_t room = 1;
  for (std::size_t length = 1; length <= 1000; ++length) {
    array.Append(element);
    if (length > room) room *= 2;
    ASSERT_EQ(TypeParam::Store(array)->capacity(), room) << length;
  }
}

TYPED_TEST_P(ArrayContract, AppendTakesAnElementOfItsOwn) {
  for (const Room room : kRooms) {
    for (int length = 1; length <= 9; ++length) {
      for (int i = 0; i < length; ++i) {
        auto array = ArrayWith<TypeParam>(room, length);
        array.Append(array[i]);
        Numbers expected = UpTo(length);
        expected.push_back(i + 1);
        ASSERT_TRUE(Holds<TypeParam>(array, expected)) << i << " of " << length;
      }
    }
  }
}

TYPED_TEST_P(ArrayContract, AppendOfAnArrayAddsCopiesOfItsElements) {
  for (int first = 0; first <= 4; ++first) {
    for (int second = 0; second <= 4; ++second) {
      SCOPED_TRACE(testing::Message() << first << ", " << second);
      auto array = ArrayOf<TypeParam>(UpTo(first));
      Numbers numbers, changed;
      for (int i = 0; i < second; ++i) {
        numbers.push_back(11 + i);
        changed.push_back(500 + i);
      }
      auto added = ArrayOf<TypeParam>(numbers);
      array.Append(added);
      Numbers expected = UpTo(first);
      expected.insert(expected.end(), numbers.begin(), numbers.end());
      EXPECT_TRUE(Holds<TypeParam>(array, expected));
      EXPECT_TRUE(Holds<TypeParam>(added, numbers));
      Overwrite<TypeParam>(added, 500);
      EXPECT_TRUE(Holds<TypeParam>(array, expected));
      Overwrite<TypeParam>(array, 600);
      EXPECT_TRUE(Holds<TypeParam>(added, changed));
    }
  }
}

/// The room after an Append of an array, which makes it once or element by element.
inline std::size_t RoomAfter(std::size_t room, std::size_t needed, bool once) {
  if (needed <= room) return room;
  if (once) return std::max(needed, 2 * room);
  while (room < needed) room = std::max<std::size_t>(1, 2 * room);
  return room;
}

TYPED_TEST_P(ArrayContract, AppendOfAnArrayMakesRoom) {
  for (const Room room : kRooms) {
    for (int first = 0; first <= 9; ++first) {
      for (int second = 0; second <= 20; ++second) {
        auto array = ArrayWith<TypeParam>(room, first);
        auto added = ArrayOf<TypeParam>(UpTo(second));
        const std::size_t before = TypeParam::Store(array)->capacity();
        array.Append(added);
        const auto needed = static_cast<std::size_t>(first + second);
        ASSERT_EQ(TypeParam::Store(array)->capacity(),
                  RoomAfter(before, needed, TypeParam::kMakesRoomOnce))
            << second << " behind " << first << " in room for " << before;
      }
    }
  }
  auto array = ArrayOf<TypeParam>(UpTo(3));  // With room for four.
  auto added = ArrayOf<TypeParam>(UpTo(8));
  array.Append(added);
  EXPECT_EQ(TypeParam::Store(array)->capacity(), TypeParam::kMakesRoomOnce ? 11u : 16u);
}

TYPED_TEST_P(ArrayContract, AppendOfShortArraysSeldomMovesTheElements) {
  typename TypeParam::Array array;
  auto added = ArrayOf<TypeParam>({1});
  std::vector<std::size_t> rooms;
  for (int length = 1; length <= 1000; ++length) {
    const std::size_t before = TypeParam::Store(array)->capacity();
    array.Append(added);
    const std::size_t room = TypeParam::Store(array)->capacity();
    if (room != before) rooms.push_back(room);
  }
  EXPECT_EQ(array.Length(), 1000);
  EXPECT_EQ(rooms, (std::vector<std::size_t>{1, 2, 4, 8, 16, 32, 64, 128, 256, 512, 1024}));
}

TYPED_TEST_P(ArrayContract, AppendOfItselfDoubles) {
  for (const Room room : kRooms) {
    for (int length = 0; length <= 9; ++length) {
      auto array = ArrayWith<TypeParam>(room, length);
      array.Append(array);
      Numbers expected = UpTo(length);
      for (const int number : UpTo(length)) expected.push_back(number);
      EXPECT_TRUE(Holds<TypeParam>(array, expected)) << length;
    }
  }
}

TYPED_TEST_P(ArrayContract, InsertPutsACopyBeforeAnElement) {
  for (int length = 0; length <= 5; ++length) {
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
  for (const Room room : kRooms) {
    for (int length = 1; length <= 6; ++length) {
      for (int index = 0; index < length; ++index) {
        for (int i = 0; i < length; ++i) {
          SCOPED_TRACE(testing::Message() << index << ", " << i << " of " << length);
          auto array = ArrayWith<TypeParam>(room, length);
          array.Insert(index, array[i]);
          Numbers expected = UpTo(length);
          expected.insert(expected.begin() + index, i + 1);
          ASSERT_TRUE(Holds<TypeParam>(array, expected));
          if (room != Room::kFull) continue;
          ASSERT_EQ(TypeParam::Store(array)->capacity(), 2 * static_cast<std::size_t>(length));
        }
      }
    }
  }
}

TYPED_TEST_P(ArrayContract, RemoveClosesTheGap) {
  for (int length = 0; length <= 5; ++length) {
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
  for (int length = 0; length <= 5; ++length) {
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

TYPED_TEST_P(ArrayContract, ReplaceTakesAnElementOfItsOwn) {
  for (int index = 0; index < 4; ++index) {
    for (int i = 0; i < 4; ++i) {
      if (i == index && !TypeParam::kMayAssignToItself) continue;
      auto array = ArrayOf<TypeParam>(UpTo(4));
      array.Replace(index, array[i]);
      Numbers expected = UpTo(4);
      expected[static_cast<std::size_t>(index)] = i + 1;
      EXPECT_TRUE(Holds<TypeParam>(array, expected)) << index << ", " << i;
    }
  }
}

TYPED_TEST_P(ArrayContract, SelectCopiesAnElementOut) {
  for (int length = 0; length <= 5; ++length) {
    const auto array = ArrayOf<TypeParam>(UpTo(length));
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
  for (int length = 0; length <= 4; ++length) {
    for (const int i : Indices(length)) {
      for (const int j : Indices(length)) {
        Numbers expected = UpTo(length);
        const bool inRange = IsIndex(expected, i) && IsIndex(expected, j);
        if (inRange && i == j && !TypeParam::kMayAssignToItself) continue;
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
  for (int round = 0; round < 3; ++round) {
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
  for (const int length : {0, 1, 3, 5}) {
    auto source = ArrayOf<TypeParam>(UpTo(length));
    Array constructed(source);
    Array target = ArrayOf<TypeParam>({8, 9});
    const auto* store = TypeParam::Store(target);
    Array returned = Assign(target, source);
    EXPECT_TRUE(Holds<TypeParam>(source, UpTo(length)));
    EXPECT_EQ(TypeParam::Store(target), store);
    EXPECT_NE(TypeParam::Store(target), TypeParam::Store(source));
    EXPECT_NE(TypeParam::Store(constructed), TypeParam::Store(source));
    EXPECT_NE(TypeParam::Store(returned), TypeParam::Store(source));
    EXPECT_NE(TypeParam::Store(returned), TypeParam::Store(target));

    Overwrite<TypeParam>(source);
    source.Remove(0);
    EXPECT_TRUE(Holds<TypeParam>(constructed, UpTo(length)));
    EXPECT_TRUE(Holds<TypeParam>(target, UpTo(length)));
    EXPECT_TRUE(Holds<TypeParam>(returned, UpTo(length)));
    Overwrite<TypeParam>(returned);
    EXPECT_TRUE(Holds<TypeParam>(target, UpTo(length)));
    returned = Assign(target, constructed);
    Overwrite<TypeParam>(target);
    target.Clear();
    EXPECT_TRUE(Holds<TypeParam>(constructed, UpTo(length)));
    EXPECT_TRUE(Holds<TypeParam>(returned, UpTo(length)));
  }
}

TYPED_TEST_P(ArrayContract, AssignmentGivesAnotherArray) {
  const auto source = ArrayOf<TypeParam>(UpTo(3));
  const auto other = ArrayOf<TypeParam>({9});
  typename TypeParam::Array first, second;
  (first = source).Clear();
  EXPECT_TRUE(Holds<TypeParam>(first, UpTo(3)));
  EXPECT_TRUE(Holds<TypeParam>(source, UpTo(3)));
  (first = source) = other;
  EXPECT_TRUE(Holds<TypeParam>(first, UpTo(3)));
  first = second = other;
  EXPECT_TRUE(Holds<TypeParam>(first, {9}));
  EXPECT_TRUE(Holds<TypeParam>(second, {9}));
}

TYPED_TEST_P(ArrayContract, SelfAssignmentChangesNothing) {
  for (const int length : {0, 1, 3, 5}) {
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
  auto* last = &array[2];
  *last = TypeParam::Make(60);
  EXPECT_TRUE(Holds<TypeParam>(array, {1, 50, 60}));
}

TYPED_TEST_P(ArrayContract, ElementsStandContiguously) {
  auto array = ArrayOf<TypeParam>(UpTo(50));
  for (int i = 0; i < 50; ++i) EXPECT_EQ(&array[i], TypeParam::Store(array)->data() + i);
}

TYPED_TEST_P(ArrayContract, ReferencesOutOfRangeFaultWhenTouched) {
  for (const int length : {0, 1, 2}) {
    auto array = ArrayOf<TypeParam>(UpTo(length));
    TypeParam::Store(array)->reserve(8);
    for (const int index : {INT_MIN, -1, length, length + 1, INT_MAX}) {
      SCOPED_TRACE(index);
      auto* touched = reinterpret_cast<volatile char*>(&array[index]);
      EXPECT_TRUE(Holds<TypeParam>(array, UpTo(length)));
      if (!kFaultsAreSignals) continue;
      EXPECT_EXIT({ [[maybe_unused]] const char read = *touched; },
                  testing::KilledBySignal(SIGSEGV), "");
      EXPECT_EXIT(*touched = 1, testing::KilledBySignal(SIGSEGV), "");
      touched += sizeof(typename TypeParam::Element) - 1;
      EXPECT_EXIT(*touched = 1, testing::KilledBySignal(SIGSEGV), "");
    }
    EXPECT_TRUE(Holds<TypeParam>(array, UpTo(length)));
  }
}

TYPED_TEST_P(ArrayContract, ReadersMayRunTogether) {
  const auto array = ArrayOf<TypeParam>(UpTo(20));
  Numbers failures(4, 0);
  std::vector<std::thread> threads;
  for (int& failed : failures) {
    threads.emplace_back([&array, &failed] {
      for (int i = 0; i < 100; ++i) {
        const auto copy(array);
        if (!Holds<TypeParam>(array, UpTo(20)) || !Holds<TypeParam>(copy, UpTo(20))) ++failed;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(failures, Numbers(4, 0));
}

/// An array beside a plain list of its numbers; one random operation after the other on both.
template <typename Traits>
class RandomArray {
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
    array_.Insert(index, element);
    if (IsIndex(numbers_, index)) numbers_.insert(numbers_.begin() + index, number);
  }

  void InsertOwn() {
    const int index = DrawIndex();
    const int from = DrawIndex();
    if (!IsIndex(numbers_, from)) return;
    array_.Insert(index, array_[from]);
    const int number = numbers_[static_cast<std::size_t>(from)];
    if (IsIndex(numbers_, index)) numbers_.insert(numbers_.begin() + index, number);
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
    array_.Replace(index, element);
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
    array_[index] = Traits::Make(number);
    numbers_[static_cast<std::size_t>(index)] = number;
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

TYPED_TEST_P(ArrayContract, RandomOperationsAgreeWithAPlainList) {
  RandomArray<TypeParam> array;
  for (int step = 0; step < 20000; ++step) {
    array.Step();
    ASSERT_TRUE(array.Agrees()) << "after step " << step;
  }
}

REGISTER_TYPED_TEST_SUITE_P(ArrayContract, HasItsOperations, AppendAddsCopies, AppendDoublesTheRoom,
                            AppendTakesAnElementOfItsOwn, AppendOfAnArrayAddsCopiesOfItsElements,
                            AppendOfAnArrayMakesRoom, AppendOfShortArraysSeldomMovesTheElements,
                            AppendOfItselfDoubles, InsertPutsACopyBeforeAnElement,
                            InsertTakesAnElementOfItsOwn, RemoveClosesTheGap,
                            ReplaceAssignsOverAnElement, ReplaceTakesAnElementOfItsOwn,
                            SelectCopiesAnElementOut, SwapExchangesTwoElements,
                            ClearGivesTheStorageBack, CopiesShareNothing,
                            AssignmentGivesAnotherArray, SelfAssignmentChangesNothing,
                            ReferencesReachTheElementInPlace, ElementsStandContiguously,
                            ReferencesOutOfRangeFaultWhenTouched, ReadersMayRunTogether,
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
    EXPECT_TRUE(TypeParam::IsMade(copy, 500)) << i;
  }
  EXPECT_TRUE(Holds<TypeParam>(array, UpTo(4)));

  const auto copy = constant[1];
  array[1] = TypeParam::Make(500);
  EXPECT_TRUE(TypeParam::IsMade(copy, 2));
  EXPECT_TRUE(Holds<TypeParam>(array, {1, 500, 3, 4}));
}

TYPED_TEST_P(ConstAccessContract, OutOfRangeGivesADefaultElement) {
  for (int length = 0; length <= 3; ++length) {
    const auto array = ArrayOf<TypeParam>(UpTo(length));
    for (const int index : Indices(length)) {
      if (IsIndex(UpTo(length), index)) continue;
      EXPECT_TRUE(TypeParam::IsDefault(array[index])) << index << " of " << length;
    }
  }
}

REGISTER_TYPED_TEST_SUITE_P(ConstAccessContract, GivesACopyOfTheElement,
                            OutOfRangeGivesADefaultElement);

}  // namespace

#endif  // TESTS_SUPPORT_ARRAY_CONTRACT_H_
