#ifndef TESTS_SUPPORT_POINT_ARRAY_CONTRACT_H_
#define TESTS_SUPPORT_POINT_ARRAY_CONTRACT_H_

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <climits>
#include <csignal>
#include <cstddef>
#include <random>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

// What the point arrays share, as a suite with the array's traits as its parameter:
//
//     struct Traits {
//       using Array = ...;
//       using Element = ...;
//       static Element Make(int number);            // elements of different numbers differ in
//       static bool IsMade(const Element&, int);    // each field; 0 is the default element
//       static std::vector<Element>*& Store(Array&);
//     };
//
// A test file gives its array to the suite:
//
//     INSTANTIATE_TYPED_TEST_SUITE_P(VemPointArray, PointArrayContract, Traits);

namespace {

using Numbers = std::vector<int>;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kFaultsAreSignals = false;  // the sanitizer exits instead
#else
constexpr bool kFaultsAreSignals = true;
#endif

constexpr int kOutOfRange[] = {-1, -2, INT_MIN, INT_MAX};

template <typename Traits>
class PointArrayContract : public testing::Test {
 protected:
  static typename Traits::Array Of(const Numbers& numbers) {
    typename Traits::Array array;
    for (const int number : numbers) {
      typename Traits::Element element = Traits::Make(number);
      array.Append(element);
    }
    return array;
  }

  /// The numbers 1, 2, 3 and so on.
  static Numbers Count(int length) {
    Numbers numbers(static_cast<std::size_t>(length));
    for (int i = 0; i < length; ++i) numbers[static_cast<std::size_t>(i)] = i + 1;
    return numbers;
  }

  /// Whether the elements are those of the numbers, by each way of reading them.
  static testing::AssertionResult Holds(const typename Traits::Array& array,
                                        const Numbers& expected) {
    if (array.Length() != static_cast<int>(expected.size())) {
      return testing::AssertionFailure()
             << "length " << array.Length() << " instead of " << expected.size();
    }
    for (int i = 0; i < array.Length(); ++i) {
      const int number = expected[static_cast<std::size_t>(i)];
      typename Traits::Element selected = Traits::Make(99);
      array.Select(i, &selected);
      const typename Traits::Element copy = array[i];
      if (!Traits::IsMade(selected, number) || !Traits::IsMade(copy, number)) {
        return testing::AssertionFailure()
               << "element " << i << " is " << testing::PrintToString(selected) << " and "
               << testing::PrintToString(copy) << ", not number " << number;
      }
    }
    return testing::AssertionSuccess();
  }

  static void Change(typename Traits::Array* array) {
    for (int i = 0; i < array->Length(); ++i) (*array)[i] = Traits::Make(77);
  }
};

TYPED_TEST_SUITE_P(PointArrayContract);

TYPED_TEST_P(PointArrayContract, HasItsInterface) {
  using Array = typename TypeParam::Array;
  using Element = typename TypeParam::Element;
  static_assert(sizeof(Array) == sizeof(void*), "a handle is one pointer");
  static_assert(!std::is_polymorphic_v<Array>);
  static_assert(std::is_same_v<decltype(&Array::operator=), Array (Array::*)(const Array&)>,
                "assignment gives a new array");
  static_assert(std::is_same_v<decltype(&Array::Length), int (Array::*)() const>);
  static_assert(std::is_same_v<decltype(&Array::Insert), void (Array::*)(int, Element&)>);
  static_assert(std::is_same_v<decltype(&Array::Remove), void (Array::*)(int)>);
  static_assert(std::is_same_v<decltype(&Array::Replace), void (Array::*)(int, Element&)>);
  static_assert(std::is_same_v<decltype(&Array::Select), void (Array::*)(int, Element*) const>);
  static_assert(std::is_same_v<decltype(&Array::Swap), void (Array::*)(int, int)>);
  static_assert(std::is_same_v<decltype(&Array::Clear), void (Array::*)()>);
  static_assert(std::is_same_v<decltype(std::declval<Array&>()[0]), Element&>);
  static_assert(std::is_same_v<decltype(std::declval<const Array&>()[0]), Element>);
  static_assert(!std::is_constructible_v<Array, int> && !std::is_constructible_v<Array, Element&>);
  // Fails to compile without exactly these two.
  [[maybe_unused]] void (Array::*appendOne)(Element&) = &Array::Append;
  [[maybe_unused]] void (Array::*appendAll)(Array&) = &Array::Append;
  EXPECT_EQ(Array().Length(), 0);
}

TYPED_TEST_P(PointArrayContract, AppendAddsCopiesAtTheEnd) {
  typename TypeParam::Array array;
  Numbers expected;
  for (int number = 1; number <= 100; ++number) {
    typename TypeParam::Element element = TypeParam::Make(number);
    array.Append(element);
    expected.push_back(number);
    element = TypeParam::Make(77);
    ASSERT_TRUE(this->Holds(array, expected));
  }
}

TYPED_TEST_P(PointArrayContract, CapacityDoublesOnAppend) {
  typename TypeParam::Array array;
  typename TypeParam::Element element = TypeParam::Make(1);
  std::size_t expected = 1;
  for (std::size_t length = 1; length <= 1000; ++length) {
    array.Append(element);
    if (length > expected) expected *= 2;
    ASSERT_EQ(TypeParam::Store(array)->capacity(), expected) << length;
  }
}

TYPED_TEST_P(PointArrayContract, ElementsStandContiguously) {
  auto array = this->Of(this->Count(50));
  for (int i = 0; i < array.Length(); ++i) EXPECT_EQ(&array[i], &array[0] + i);
}

TYPED_TEST_P(PointArrayContract, OwnElementMayBeAppended) {
  for (int length = 1; length <= 9; ++length) {
    for (int i = 0; i < length; ++i) {
      auto array = this->Of(this->Count(length));
      TypeParam::Store(array)->shrink_to_fit();
      array.Append(array[i]);
      Numbers expected = this->Count(length);
      expected.push_back(i + 1);
      ASSERT_TRUE(this->Holds(array, expected)) << length << ", " << i;
    }
  }
}

TYPED_TEST_P(PointArrayContract, AppendOfAnArrayAddsCopies) {
  for (const Numbers& first : {Numbers{}, Numbers{1}, Numbers{1, 2, 3}}) {
    for (const Numbers& second : {Numbers{}, Numbers{4}, Numbers{5, 6, 7, 8}}) {
      auto array = this->Of(first);
      auto added = this->Of(second);
      array.Append(added);
      Numbers expected = first;
      expected.insert(expected.end(), second.begin(), second.end());
      EXPECT_TRUE(this->Holds(array, expected));
      EXPECT_TRUE(this->Holds(added, second));
      this->Change(&added);
      EXPECT_TRUE(this->Holds(array, expected));
      this->Change(&array);
      EXPECT_EQ(added.Length(), static_cast<int>(second.size()));
    }
  }
}

TYPED_TEST_P(PointArrayContract, ArrayAppendedToItselfDoubles) {
  for (int length = 0; length <= 9; ++length) {
    Numbers expected = this->Count(length);
    const Numbers once = expected;
    expected.insert(expected.end(), once.begin(), once.end());

    auto full = this->Of(once);
    TypeParam::Store(full)->shrink_to_fit();
    full.Append(full);
    EXPECT_TRUE(this->Holds(full, expected));

    auto spare = this->Of(once);
    TypeParam::Store(spare)->reserve(40);
    spare.Append(spare);
    EXPECT_TRUE(this->Holds(spare, expected));
  }
}

TYPED_TEST_P(PointArrayContract, InsertPutsBeforeAnElementInRange) {
  for (int length = 0; length <= 5; ++length) {
    for (int index = -2; index <= length + 2; ++index) {
      auto array = this->Of(this->Count(length));
      auto element = TypeParam::Make(50);
      array.Insert(index, element);
      element = TypeParam::Make(77);
      Numbers expected = this->Count(length);
      if (index >= 0 && index < length) expected.insert(expected.begin() + index, 50);
      EXPECT_TRUE(this->Holds(array, expected)) << length << ", " << index;
    }
  }
}

// With spare capacity and without.
TYPED_TEST_P(PointArrayContract, OwnElementMayBeInserted) {
  for (int length = 1; length <= 6; ++length) {
    for (int index = 0; index < length; ++index) {
      for (int i = 0; i < length; ++i) {
        Numbers expected = this->Count(length);
        expected.insert(expected.begin() + index, i + 1);

        auto full = this->Of(this->Count(length));
        TypeParam::Store(full)->shrink_to_fit();
        full.Insert(index, full[i]);
        ASSERT_TRUE(this->Holds(full, expected)) << length << ", " << index << ", " << i;

        auto spare = this->Of(this->Count(length));
        TypeParam::Store(spare)->reserve(20);
        spare.Insert(index, spare[i]);
        ASSERT_TRUE(this->Holds(spare, expected)) << length << ", " << index << ", " << i;
      }
    }
  }
}

TYPED_TEST_P(PointArrayContract, RemoveMovesElementsDown) {
  for (int length = 0; length <= 5; ++length) {
    for (int index = -2; index <= length + 2; ++index) {
      auto array = this->Of(this->Count(length));
      array.Remove(index);
      Numbers expected = this->Count(length);
      if (index >= 0 && index < length) expected.erase(expected.begin() + index);
      EXPECT_TRUE(this->Holds(array, expected)) << length << ", " << index;
    }
  }
}

TYPED_TEST_P(PointArrayContract, ReplaceAssignsOverAnElement) {
  for (int length = 0; length <= 5; ++length) {
    for (int index = -2; index <= length + 2; ++index) {
      auto array = this->Of(this->Count(length));
      auto element = TypeParam::Make(50);
      array.Replace(index, element);
      element = TypeParam::Make(77);
      Numbers expected = this->Count(length);
      if (index >= 0 && index < length) expected[static_cast<std::size_t>(index)] = 50;
      EXPECT_TRUE(this->Holds(array, expected)) << length << ", " << index;
    }
  }
  auto array = this->Of({1, 2, 3});
  array.Replace(0, array[2]);
  array.Replace(1, array[1]);
  EXPECT_TRUE(this->Holds(array, {3, 2, 3}));
}

TYPED_TEST_P(PointArrayContract, SelectCopiesAnElementInRange) {
  for (int length = 0; length <= 5; ++length) {
    const auto array = this->Of(this->Count(length));
    for (int index = -2; index <= length + 2; ++index) {
      auto out = TypeParam::Make(50);
      array.Select(index, &out);
      const int expected = index >= 0 && index < length ? index + 1 : 50;
      EXPECT_TRUE(TypeParam::IsMade(out, expected)) << length << ", " << index;
      out = TypeParam::Make(77);
    }
    EXPECT_TRUE(this->Holds(array, this->Count(length)));
  }
}

TYPED_TEST_P(PointArrayContract, SwapExchangesElementsInRange) {
  for (int length = 0; length <= 4; ++length) {
    for (int i = -2; i <= length + 1; ++i) {
      for (int j = -2; j <= length + 1; ++j) {
        auto array = this->Of(this->Count(length));
        array.Swap(i, j);
        Numbers expected = this->Count(length);
        if (std::min(i, j) >= 0 && std::max(i, j) < length) {
          std::swap(expected[static_cast<std::size_t>(i)], expected[static_cast<std::size_t>(j)]);
        }
        EXPECT_TRUE(this->Holds(array, expected)) << length << ", " << i << ", " << j;
      }
    }
  }
}

TYPED_TEST_P(PointArrayContract, FarIndicesChangeNothing) {
  auto array = this->Of({1, 2, 3});
  for (const int index : kOutOfRange) {
    SCOPED_TRACE(index);
    auto element = TypeParam::Make(50);
    array.Insert(index, element);
    array.Remove(index);
    array.Replace(index, element);
    array.Swap(index, 0);
    array.Swap(0, index);
    array.Swap(index, index);
    array.Select(index, &element);
    EXPECT_TRUE(this->Holds(array, {1, 2, 3}));
    EXPECT_TRUE(TypeParam::IsMade(element, 50));
  }
}

TYPED_TEST_P(PointArrayContract, ClearGivesStorageBackAndKeepsTheStore) {
  auto array = this->Of({1, 2, 3});
  const auto* store = TypeParam::Store(array);
  for (int round = 0; round < 3; ++round) {
    array.Clear();
    EXPECT_EQ(array.Length(), 0);
    EXPECT_EQ(TypeParam::Store(array), store);
    EXPECT_EQ(TypeParam::Store(array)->capacity(), 0u);
  }
  auto element = TypeParam::Make(4);
  array.Append(element);
  EXPECT_TRUE(this->Holds(array, {4}));
}

TYPED_TEST_P(PointArrayContract, CopiesAreIndependent) {
  using Array = typename TypeParam::Array;
  for (const Numbers& numbers : {Numbers{}, Numbers{1}, Numbers{1, 2, 3, 4, 5}}) {
    Array source = this->Of(numbers);
    Array constructed(source);
    Array assigned = this->Of({8, 9});
    const auto* store = TypeParam::Store(assigned);
    assigned = source;
    EXPECT_TRUE(this->Holds(source, numbers));
    EXPECT_EQ(TypeParam::Store(assigned), store);
    EXPECT_NE(TypeParam::Store(assigned), TypeParam::Store(source));
    EXPECT_NE(TypeParam::Store(constructed), TypeParam::Store(source));

    this->Change(&source);
    source.Remove(0);
    EXPECT_TRUE(this->Holds(constructed, numbers));
    EXPECT_TRUE(this->Holds(assigned, numbers));
    this->Change(&assigned);
    EXPECT_TRUE(this->Holds(constructed, numbers));
  }
}

TYPED_TEST_P(PointArrayContract, AssignmentGivesAFurtherCopy) {
  using Array = typename TypeParam::Array;
  Array array = this->Of({8, 9});
  const Array source = this->Of({1, 2, 3});
  Array result = (array = source);
  EXPECT_TRUE(this->Holds(result, {1, 2, 3}));
  EXPECT_NE(TypeParam::Store(result), TypeParam::Store(array));
  this->Change(&result);
  EXPECT_TRUE(this->Holds(array, {1, 2, 3}));

  (array = source).Clear();
  EXPECT_TRUE(this->Holds(array, {1, 2, 3}));
  EXPECT_TRUE(this->Holds(source, {1, 2, 3}));
}

TYPED_TEST_P(PointArrayContract, AssignmentsChainByValue) {
  using Array = typename TypeParam::Array;
  Array first, second;
  const Array source = this->Of({1, 2, 3});
  first = second = source;
  EXPECT_TRUE(this->Holds(first, {1, 2, 3}));
  EXPECT_TRUE(this->Holds(second, {1, 2, 3}));

  // What stands in parentheses is a copy of the first array, and takes the second assignment.
  const Array other = this->Of({4});
  (first = source) = other;
  EXPECT_TRUE(this->Holds(first, {1, 2, 3}));
}

TYPED_TEST_P(PointArrayContract, SelfAssignmentChangesNothing) {
  for (const Numbers& numbers : {Numbers{}, Numbers{1}, Numbers{1, 2, 3}}) {
    auto array = this->Of(numbers);
    const auto& alias = array;
    auto result = (array = alias);
    EXPECT_TRUE(this->Holds(array, numbers));
    EXPECT_TRUE(this->Holds(result, numbers));
    EXPECT_NE(TypeParam::Store(result), TypeParam::Store(array));
  }
}

TYPED_TEST_P(PointArrayContract, ReferenceReachesTheElement) {
  auto array = this->Of({1, 2, 3});
  array[1] = TypeParam::Make(50);
  auto* last = &array[2];
  *last = TypeParam::Make(60);
  EXPECT_TRUE(this->Holds(array, {1, 50, 60}));
}

TYPED_TEST_P(PointArrayContract, ConstAccessCopies) {
  auto array = this->Of({1, 2, 3});
  const auto& fixed = array;
  const auto copy = fixed[1];
  auto changed = fixed[1];
  array[1] = TypeParam::Make(50);
  changed = TypeParam::Make(60);
  EXPECT_TRUE(TypeParam::IsMade(copy, 2));
  EXPECT_TRUE(TypeParam::IsMade(changed, 60));
  EXPECT_TRUE(this->Holds(array, {1, 50, 3}));
}

TYPED_TEST_P(PointArrayContract, ConstAccessOutOfRangeGivesADefaultElement) {
  for (int length = 0; length <= 3; ++length) {
    const auto array = this->Of(this->Count(length));
    EXPECT_TRUE(TypeParam::IsMade(array[length], 0));
    EXPECT_TRUE(TypeParam::IsMade(array[length + 1], 0));
    for (const int index : kOutOfRange) EXPECT_TRUE(TypeParam::IsMade(array[index], 0)) << index;
  }
}

TYPED_TEST_P(PointArrayContract, ReferenceOutOfRangeFaultsOnlyWhenTouched) {
  for (int length = 0; length <= 1; ++length) {
    auto array = this->Of(this->Count(length));
    for (const int index : {length, length + 1, -1, INT_MIN, INT_MAX}) {
      SCOPED_TRACE(index);
      volatile double* bound = &array[index].x;
      EXPECT_TRUE(this->Holds(array, this->Count(length)));
      if (!kFaultsAreSignals) continue;
      EXPECT_EXIT({ [[maybe_unused]] const double x = *bound; }, testing::KilledBySignal(SIGSEGV),
                  "");
      EXPECT_EXIT(*bound = 1.0, testing::KilledBySignal(SIGSEGV), "");
    }
  }
}

TYPED_TEST_P(PointArrayContract, ReadersMayRunTogether) {
  const auto array = this->Of(this->Count(20));
  Numbers failures(4, 0);
  std::vector<std::thread> threads;
  for (int& failed : failures) {
    threads.emplace_back([this, &array, &failed] {
      for (int i = 0; i < 100; ++i) {
        const auto copy(array);
        if (!this->Holds(array, this->Count(20)) || !this->Holds(copy, this->Count(20))) ++failed;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(failures, Numbers(4, 0));
}

/// Does one operation at random on an array and on its numbers.
template <typename Traits>
void RandomStep(typename Traits::Array* array, Numbers* numbers, std::mt19937* random) {
  const auto draw = [random](int low, int high) {
    return low + static_cast<int>((*random)() % static_cast<unsigned>(high - low + 1));
  };
  const int length = static_cast<int>(numbers->size());
  const auto inRange = [length](int index) { return index >= 0 && index < length; };
  const int number = draw(1, 1000);
  const int i = draw(-2, length + 1);
  const int j = draw(-2, length + 1);
  typename Traits::Element element = Traits::Make(number);
  switch (draw(0, 15)) {
    case 0:
    case 1:
    case 2:
    case 3:
      array->Append(element);
      numbers->push_back(number);
      break;
    case 4:
    case 5:
      array->Insert(i, element);
      if (inRange(i)) numbers->insert(numbers->begin() + i, number);
      break;
    case 6:
    case 7:
    case 8:
      array->Remove(i);
      if (inRange(i)) numbers->erase(numbers->begin() + i);
      break;
    case 9:
      array->Replace(i, element);
      if (inRange(i)) numbers->at(static_cast<std::size_t>(i)) = number;
      break;
    case 10:
      array->Swap(i, j);
      if (inRange(i) && inRange(j)) std::iter_swap(numbers->begin() + i, numbers->begin() + j);
      break;
    case 11:
      if (!inRange(i)) break;
      (*array)[i] = element;
      numbers->at(static_cast<std::size_t>(i)) = number;
      break;
    case 12: {
      const typename Traits::Array copy(*array);
      array->Clear();
      *array = copy;
      break;
    }
    case 13:
      if (!inRange(i) || !inRange(j)) break;
      array->Insert(i, (*array)[j]);
      numbers->insert(numbers->begin() + i, Numbers(*numbers)[static_cast<std::size_t>(j)]);
      break;
    case 14:
      if (length > 20) {
        array->Clear();
        numbers->clear();
      }
      break;
    default:
      if (length > 15) break;
      array->Append(*array);
      const Numbers once = *numbers;
      numbers->insert(numbers->end(), once.begin(), once.end());
  }
}

TYPED_TEST_P(PointArrayContract, RandomOperationsAgreeWithAPlainList) {
  std::mt19937 random(20240517);
  typename TypeParam::Array array;
  Numbers numbers;
  for (int step = 0; step < 20000; ++step) {
    RandomStep<TypeParam>(&array, &numbers, &random);
    ASSERT_TRUE(this->Holds(array, numbers)) << "step " << step;
  }
}

REGISTER_TYPED_TEST_SUITE_P(
    PointArrayContract, HasItsInterface, AppendAddsCopiesAtTheEnd, CapacityDoublesOnAppend,
    ElementsStandContiguously, OwnElementMayBeAppended, AppendOfAnArrayAddsCopies,
    ArrayAppendedToItselfDoubles, InsertPutsBeforeAnElementInRange, OwnElementMayBeInserted,
    RemoveMovesElementsDown, ReplaceAssignsOverAnElement, SelectCopiesAnElementInRange,
    SwapExchangesElementsInRange, FarIndicesChangeNothing, ClearGivesStorageBackAndKeepsTheStore,
    CopiesAreIndependent, AssignmentGivesAFurtherCopy, AssignmentsChainByValue,
    SelfAssignmentChangesNothing, ReferenceReachesTheElement, ConstAccessCopies,
    ConstAccessOutOfRangeGivesADefaultElement, ReferenceOutOfRangeFaultsOnlyWhenTouched,
    ReadersMayRunTogether, RandomOperationsAgreeWithAPlainList);

}  // namespace

#endif  // TESTS_SUPPORT_POINT_ARRAY_CONTRACT_H_
