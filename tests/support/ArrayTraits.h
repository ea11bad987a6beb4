#ifndef TESTS_SUPPORT_ARRAY_TRAITS_H_
#define TESTS_SUPPORT_ARRAY_TRAITS_H_

#include <climits>
#include <cstddef>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

/// What the suites of ArrayContract.h ask about an array, as most arrays answer it. An array's test
/// file derives its traits, redefines what differs, and adds:
///
///     static Element Make(int number);                 // those of different numbers differ
///     static bool IsMade(const Element&, int number);  // as it comes out of the array, whole
///     static bool IsDefault(const Element&);
///     static std::vector<...>* Store(Array&);          // unless kHasStore is false
template <typename A, typename E>
struct ArrayTraits {
  using Array = A;
  using Element = E;
  using Assigned = A;  ///< What operator= gives.
  static constexpr bool kSelfAssignmentEmpties = false;
  static constexpr bool kHasReferences = true;      ///< To its elements.
  static constexpr bool kConstAccessReads = true;   ///< The elements in range.
  static constexpr bool kTestsPositions = true;     ///< Those of Insert and Replace.
  static constexpr bool kMakesRoomOnce = false;     ///< For all that Append of an array adds.
  static constexpr bool kMayAssignToItself = true;  ///< An element.
  static constexpr bool kSelectIsConst = true;
  static constexpr bool kSelectIsWhole = true;  ///< Makes its target equal to the element.
  static constexpr bool kHasStore = true;       ///< A vector with an entry per element.

  /// Changes an element in place, with all that it may share.
  static void Disturb(Element& element) { element = Element(); }
  static void Replace(Array& array, int index, Element& element) { array.Replace(index, element); }
};

// The elements of an array are told by their numbers.

using Numbers = std::vector<int>;

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

/// Calls Select, which one array does not offer on a constant.
template <typename Traits>
void SelectFrom(const typename Traits::Array& array, int index, typename Traits::Element* out) {
  if constexpr (Traits::kSelectIsConst) {
    array.Select(index, out);
  } else {
    const_cast<typename Traits::Array&>(array).Select(index, out);
  }
}

/// Whether Select made the element of one number of a target that was that of another.
template <typename Traits>
bool IsSelected(const typename Traits::Element& out, int old, int number) {
  if constexpr (Traits::kSelectIsWhole) {
    return Traits::IsMade(out, number);
  } else {
    return Traits::IsSelected(out, old, number);
  }
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
    SelectFrom<Traits>(array, i, &selected);
    if (!IsSelected<Traits>(selected, 499, number)) {
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

/// In place as well, where there are references.
template <typename Traits>
testing::AssertionResult Holds(typename Traits::Array& array, const Numbers& numbers) {
  const testing::AssertionResult held = Holds<Traits>(std::as_const(array), numbers);
  if constexpr (Traits::kHasReferences) {
    for (int i = 0; held && i < array.Length(); ++i) {
      const int number = numbers[static_cast<std::size_t>(i)];
      if (Traits::IsMade(array[i], number)) continue;
      return testing::AssertionFailure()
             << "element " << i << " is " << testing::PrintToString(array[i]) << ", not " << number;
    }
  }
  return held;
}

/// Writes the element of a number over that at an index.
template <typename Traits>
void Put(typename Traits::Array& array, int index, int number) {
  if constexpr (Traits::kHasReferences) {
    array[index] = Traits::Make(number);
  } else {
    typename Traits::Element element = Traits::Make(number);
    Traits::Replace(array, index, element);
  }
}

/// Writes the elements of the numbers from `number` on over all that an array holds.
template <typename Traits>
void Overwrite(typename Traits::Array& array, int number = 500) {
  for (int i = 0; i < array.Length(); ++i) Put<Traits>(array, i, number + i);
}

/// How much room an array has: for its elements alone, what appending them left, or plenty.
enum class Room { kFull, kAsGrown, kPlenty };
constexpr Room kRooms[] = {Room::kFull, Room::kAsGrown, Room::kPlenty};

/// An array of the numbers from 1 to `length`.
template <typename Traits>
typename Traits::Array ArrayWith([[maybe_unused]] Room room, int length) {
  auto array = ArrayOf<Traits>(UpTo(length));
  if constexpr (Traits::kHasStore) {
    if (room == Room::kFull) Traits::Store(array)->shrink_to_fit();
    if (room == Room::kPlenty) Traits::Store(array)->reserve(40);
  }
  return array;
}

#endif  // TESTS_SUPPORT_ARRAY_TRAITS_H_
