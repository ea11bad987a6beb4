#ifndef TESTS_SUPPORT_ARRAY_CONTRACT_H_
#define TESTS_SUPPORT_ARRAY_CONTRACT_H_

#include <algorithm>
#include <climits>
#include <csignal>
#include <cstddef>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "support/ArrayModel.h"
#include "support/ArrayTraits.h"

// What the arrays have in common. An array's test file tells in its traits what ArrayTraits.h asks,
// and hands them over:
//
//     INSTANTIATE_TYPED_TEST_SUITE_P(VemSomeArray, ArrayContract, Traits);
//     INSTANTIATE_TYPED_TEST_SUITE_P(VemSomeArray, ConstAccessContract, Traits);
//     INSTANTIATE_TYPED_TEST_SUITE_P(VemSomeArray, ReferenceContract, Traits);
//
// The second is for arrays whose constant access reads what is in range, the third for those that
// give references.

#ifdef VEM_SANITIZED
constexpr bool kFaultsAreSignals = false;  // The sanitizer ends the process its own way.
#else
constexpr bool kFaultsAreSignals = true;
#endif

template <typename Traits>
class ArrayContract : public testing::Test {};
TYPED_TEST_SUITE_P(ArrayContract);

TYPED_TEST_P(ArrayContract, HasItsOperations) {
  using Array = typename TypeParam::Array;
  using Element = typename TypeParam::Element;
  using Accessed = std::conditional_t<TypeParam::kHasReferences, Element&, Element>;
  using Select = std::conditional_t<TypeParam::kSelectIsConst, void (Array::*)(int, Element*) const,
                                    void (Array::*)(int, Element*)>;
  static_assert(sizeof(Array) == sizeof(void*), "a handle is one pointer");
  static_assert(!std::is_polymorphic_v<Array>);
  static_assert(std::is_same_v<decltype(&Array::operator=),
                               typename TypeParam::Assigned (Array::*)(const Array&)>);
  static_assert(std::is_same_v<decltype(&Array::Insert), void (Array::*)(int, Element&)>);
  static_assert(std::is_same_v<decltype(&Array::Remove), void (Array::*)(int)>);
  static_assert(std::is_same_v<decltype(&Array::Replace), void (Array::*)(int, Element&)>);
  static_assert(std::is_same_v<decltype(&Array::Swap), void (Array::*)(int, int)>);
  static_assert(std::is_same_v<decltype(&Array::Clear), void (Array::*)()>);
  static_assert(std::is_same_v<decltype(&Array::Length), int (Array::*)() const>);
  static_assert(std::is_same_v<decltype(&Array::Select), Select>);
  static_assert(std::is_same_v<decltype(std::declval<Array&>()[0]), Accessed>);
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
    EXPECT_TRUE(TypeParam::IsMade(element, number));
    TypeParam::Disturb(element);
    ASSERT_TRUE(Holds<TypeParam>(array, UpTo(number)));
  }
}

TYPED_TEST_P(ArrayContract, AppendDoublesTheRoom) {
  if constexpr (TypeParam::kHasStore) {
    typename TypeParam::Array array;
    typename TypeParam::Element element = TypeParam::Make(1);
    std::size_t room = 1;
    for (std::size_t length = 1; length <= 1000; ++length) {
      array.Append(element);
      if (length > room) room *= 2;
      ASSERT_EQ(TypeParam::Store(array)->capacity(), room) << length;
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
  if constexpr (TypeParam::kHasStore) {
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
}

TYPED_TEST_P(ArrayContract, AppendOfShortArraysSeldomMovesTheElements) {
  if constexpr (TypeParam::kHasStore) {
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
      const bool adds = !TypeParam::kTestsPositions && index == length;
      const bool inRange = IsIndex(UpTo(length), index);
      if (!TypeParam::kTestsPositions && !inRange && !adds) continue;
      auto array = ArrayOf<TypeParam>(UpTo(length));
      auto element = TypeParam::Make(50);
      array.Insert(index, element);
      EXPECT_TRUE(TypeParam::IsMade(element, 50));
      TypeParam::Disturb(element);
      Numbers expected = UpTo(length);
      if (inRange || adds) expected.insert(expected.begin() + index, 50);
      EXPECT_TRUE(Holds<TypeParam>(array, expected)) << index << " of " << length;
    }
  }
}

// At least one element is there, or nothing would be inserted.
TYPED_TEST_P(ArrayContract, InsertDoublesTheRoom) {
  if constexpr (TypeParam::kHasStore) {
    for (int length = 1; length <= 20; ++length) {
      auto array = ArrayWith<TypeParam>(Room::kFull, length);
      auto element = TypeParam::Make(50);
      array.Insert(length / 2, element);
      EXPECT_EQ(TypeParam::Store(array)->capacity(), 2 * static_cast<std::size_t>(length));
      if (length == 1) continue;  // One more fills the room for two.
      const auto* const storage = TypeParam::Store(array)->data();
      array.Insert(0, element);
      EXPECT_EQ(TypeParam::Store(array)->data(), storage);
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

TYPED_TEST_P(ArrayContract, RemoveSwapAndReplaceKeepTheStorage) {
  if constexpr (TypeParam::kHasStore) {
    auto array = ArrayWith<TypeParam>(Room::kPlenty, 5);
    const auto* const storage = TypeParam::Store(array)->data();
    const std::size_t room = TypeParam::Store(array)->capacity();
    auto element = TypeParam::Make(50);
    array.Remove(1);
    array.Remove(3);
    array.Swap(0, 2);
    TypeParam::Replace(array, 1, element);
    EXPECT_TRUE(Holds<TypeParam>(array, {4, 50, 1}));
    EXPECT_EQ(TypeParam::Store(array)->data(), storage);
    EXPECT_EQ(TypeParam::Store(array)->capacity(), room);
  }
}

TYPED_TEST_P(ArrayContract, ReplaceAssignsOverAnElement) {
  for (int length = 0; length <= 5; ++length) {
    for (const int index : Indices(length)) {
      if (!TypeParam::kTestsPositions && !IsIndex(UpTo(length), index)) continue;
      auto array = ArrayOf<TypeParam>(UpTo(length));
      auto element = TypeParam::Make(50);
      TypeParam::Replace(array, index, element);
      EXPECT_TRUE(TypeParam::IsMade(element, 50));
      TypeParam::Disturb(element);
      Numbers expected = UpTo(length);
      if (IsIndex(expected, index)) expected[static_cast<std::size_t>(index)] = 50;
      EXPECT_TRUE(Holds<TypeParam>(array, expected)) << index << " of " << length;
    }
  }
}

TYPED_TEST_P(ArrayContract, SelectCopiesAnElementOut) {
  for (int length = 0; length <= 5; ++length) {
    const auto array = ArrayOf<TypeParam>(UpTo(length));
    for (const int index : Indices(length)) {
      SCOPED_TRACE(testing::Message() << index << " of " << length);
      auto out = TypeParam::Make(50);
      SelectFrom<TypeParam>(array, index, &out);
      if (IsIndex(UpTo(length), index)) {
        EXPECT_TRUE(IsSelected<TypeParam>(out, 50, index + 1));
      } else {
        EXPECT_TRUE(TypeParam::IsMade(out, 50));
      }
      TypeParam::Disturb(out);
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
  for (int round = 0; round < 3; ++round) {
    array.Clear();
    EXPECT_EQ(array.Length(), 0);
    if constexpr (TypeParam::kHasStore) {
      EXPECT_EQ(TypeParam::Store(array)->capacity(), 0u);
    }
  }
  auto element = TypeParam::Make(7);
  array.Append(element);
  EXPECT_TRUE(Holds<TypeParam>(array, {7}));
}

TYPED_TEST_P(ArrayContract, TheStoreStaysTheSame) {
  if constexpr (TypeParam::kHasStore) {
    auto array = ArrayOf<TypeParam>(UpTo(3));
    auto other = ArrayOf<TypeParam>(UpTo(9));
    const auto* const store = TypeParam::Store(array);
    EXPECT_NE(store, TypeParam::Store(other));
    array.Append(other);
    array = other;
    EXPECT_EQ(TypeParam::Store(array), store);
    array.Clear();
    EXPECT_EQ(TypeParam::Store(array), store);
  }
}

TYPED_TEST_P(ArrayContract, CopiesShareNothing) {
  using Array = typename TypeParam::Array;
  for (const int length : {0, 1, 3, 5}) {
    auto source = ArrayOf<TypeParam>(UpTo(length));
    Array constructed(source);
    Array target = ArrayOf<TypeParam>({8, 9});
    target = source;
    EXPECT_TRUE(Holds<TypeParam>(source, UpTo(length)));
    Overwrite<TypeParam>(source);
    source.Remove(0);
    EXPECT_TRUE(Holds<TypeParam>(constructed, UpTo(length)));
    EXPECT_TRUE(Holds<TypeParam>(target, UpTo(length)));
    Overwrite<TypeParam>(target);
    target.Clear();
    EXPECT_TRUE(Holds<TypeParam>(constructed, UpTo(length)));
  }
}

TYPED_TEST_P(ArrayContract, AssignmentTakesShorterAndLongerArrays) {
  auto array = ArrayOf<TypeParam>(UpTo(3));
  for (const int length : {0, 9, 1, 3}) {
    const auto source = ArrayOf<TypeParam>(UpTo(length));
    array = source;
    EXPECT_TRUE(Holds<TypeParam>(array, UpTo(length)));
  }
}

TYPED_TEST_P(ArrayContract, AssignmentGivesThisArrayOrTheSourceOrACopy) {
  using Array = typename TypeParam::Array;
  using Assigned = typename TypeParam::Assigned;
  auto source = ArrayOf<TypeParam>(UpTo(3));
  const auto other = ArrayOf<TypeParam>({9});
  Array first, second;
  if constexpr (std::is_same_v<Assigned, Array&>) {
    EXPECT_EQ(&(first = source), &first);
  } else if constexpr (std::is_same_v<Assigned, const Array&>) {
    EXPECT_EQ(&(first = source), &source);
  } else {
    (first = source).Clear();
    EXPECT_TRUE(Holds<TypeParam>(first, UpTo(3)));
    (first = source) = other;
    EXPECT_TRUE(Holds<TypeParam>(first, UpTo(3)));
    Array returned = (first = source);
    Overwrite<TypeParam>(returned);
    EXPECT_TRUE(Holds<TypeParam>(first, UpTo(3)));
    EXPECT_TRUE(Holds<TypeParam>(source, UpTo(3)));
  }
  EXPECT_TRUE(Holds<TypeParam>(first, UpTo(3)));
  first = second = other;
  EXPECT_TRUE(Holds<TypeParam>(first, {9}));
  EXPECT_TRUE(Holds<TypeParam>(second, {9}));
}

TYPED_TEST_P(ArrayContract, SelfAssignmentChangesNothingOrEmpties) {
  for (const int length : {0, 1, 3, 5}) {
    auto array = ArrayOf<TypeParam>(UpTo(length));
    const auto& itself = array;
    array = itself;
    Numbers expected = UpTo(TypeParam::kSelfAssignmentEmpties ? 0 : length);
    EXPECT_TRUE(Holds<TypeParam>(array, expected));
    auto element = TypeParam::Make(7);
    array.Append(element);
    expected.push_back(7);
    EXPECT_TRUE(Holds<TypeParam>(array, expected));
  }
}

TYPED_TEST_P(ArrayContract, RandomOperationsAgreeWithAPlainList) {
  ArrayModel<TypeParam> model;
  for (int step = 0; step < 12000; ++step) {
    model.Step();
    ASSERT_TRUE(model.Agrees()) << "after step " << step;
  }
}

REGISTER_TYPED_TEST_SUITE_P(
    ArrayContract, HasItsOperations, AppendAddsCopies, AppendDoublesTheRoom,
    AppendOfAnArrayAddsCopiesOfItsElements, AppendOfAnArrayMakesRoom,
    AppendOfShortArraysSeldomMovesTheElements, AppendOfItselfDoubles,
    InsertPutsACopyBeforeAnElement, InsertDoublesTheRoom, RemoveClosesTheGap,
    RemoveSwapAndReplaceKeepTheStorage, ReplaceAssignsOverAnElement, SelectCopiesAnElementOut,
    SwapExchangesTwoElements, ClearGivesTheStorageBack, TheStoreStaysTheSame, CopiesShareNothing,
    AssignmentTakesShorterAndLongerArrays, AssignmentGivesThisArrayOrTheSourceOrACopy,
    SelfAssignmentChangesNothingOrEmpties, RandomOperationsAgreeWithAPlainList);

template <typename Traits>
class ReferenceContract : public testing::Test {};
TYPED_TEST_SUITE_P(ReferenceContract);

TYPED_TEST_P(ReferenceContract, AppendTakesAnElementOfItsOwn) {
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

TYPED_TEST_P(ReferenceContract, InsertTakesAnElementOfItsOwn) {
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

TYPED_TEST_P(ReferenceContract, ReplaceTakesAnElementOfItsOwn) {
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

TYPED_TEST_P(ReferenceContract, ReferencesReachTheElementInPlace) {
  auto array = ArrayOf<TypeParam>(UpTo(3));
  array[1] = TypeParam::Make(50);
  EXPECT_TRUE(Holds<TypeParam>(array, {1, 50, 3}));
  auto* last = &array[2];
  *last = TypeParam::Make(60);
  EXPECT_TRUE(Holds<TypeParam>(array, {1, 50, 60}));
}

TYPED_TEST_P(ReferenceContract, ElementsStandContiguously) {
  auto array = ArrayOf<TypeParam>(UpTo(50));
  for (int i = 0; i < 50; ++i) EXPECT_EQ(&array[i], TypeParam::Store(array)->data() + i);
}

TYPED_TEST_P(ReferenceContract, ReferencesOutOfRangeFaultWhenTouched) {
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

REGISTER_TYPED_TEST_SUITE_P(ReferenceContract, AppendTakesAnElementOfItsOwn,
                            InsertTakesAnElementOfItsOwn, ReplaceTakesAnElementOfItsOwn,
                            ReferencesReachTheElementInPlace, ElementsStandContiguously,
                            ReferencesOutOfRangeFaultWhenTouched);

template <typename Traits>
class ConstAccessContract : public testing::Test {};
TYPED_TEST_SUITE_P(ConstAccessContract);

TYPED_TEST_P(ConstAccessContract, GivesACopyOfTheElement) {
  auto array = ArrayOf<TypeParam>(UpTo(4));
  const auto& constant = array;
  for (int i = 0; i < 4; ++i) {
    auto copy = constant[i];
    EXPECT_TRUE(TypeParam::IsMade(copy, i + 1)) << i;
    TypeParam::Disturb(copy);
    EXPECT_TRUE(TypeParam::IsMade(constant[i], i + 1)) << i;
  }
  const auto copy = constant[1];
  Put<TypeParam>(array, 1, 500);
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

#endif  // TESTS_SUPPORT_ARRAY_CONTRACT_H_
