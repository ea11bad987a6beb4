#ifndef VALUES_TYPED_ARRAY_H_
#define VALUES_TYPED_ARRAY_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>
#include <vector>

/// The contract that all typed arrays share, on the vector behind a handle. An index is in range
/// when it is not negative and below the length; an operation on any other does nothing.
namespace typed_array {

template <typename T>
bool InRange(const std::vector<T>& elements, int index) {
  return index >= 0 && static_cast<std::size_t>(index) < elements.size();
}

/// The element at an index that is in range.
template <typename T>
T& At(std::vector<T>& elements, int index) {
  return elements[static_cast<std::size_t>(index)];
}

template <typename T>
const T& At(const std::vector<T>& elements, int index) {
  return elements[static_cast<std::size_t>(index)];
}

template <typename T>
int Length(const std::vector<T>& elements) {
  return static_cast<int>(elements.size());
}

/// Makes room for `added` more elements; where the storage grows, it at least doubles. As many can
/// then be taken in without an allocation.
template <typename T>
void MakeRoom(std::vector<T>& elements, std::size_t added) {
  const std::size_t needed = elements.size() + added;
  if (needed > elements.capacity()) elements.reserve(std::max(needed, 2 * elements.capacity()));
}

/// Appends copies of `added`, which may be `elements` itself: its length counts as it is at entry.
/// Where one can't be copied, none is added.
template <typename T>
void AppendAll(std::vector<T>& elements, const std::vector<T>& added) {
  const std::size_t before = elements.size();
  const std::size_t count = added.size();
  try {
    for (std::size_t i = 0; i < count; ++i) elements.push_back(added[i]);
  } catch (...) {
    elements.erase(elements.begin() + static_cast<std::ptrdiff_t>(before), elements.end());
    throw;
  }
}

/// Makes the elements deep copies of the others. Where one can't be copied, nothing changes.
template <typename T>
void Assign(std::vector<T>& elements, const std::vector<T>& others) {
  if (std::is_trivially_copyable<T>::value) {
    elements = others;
  } else if (&elements != &others) {
    std::vector<T>(others).swap(elements);
  }
}

/// As AppendAll, with room made once for both lengths.
template <typename T>
void ReserveAndAppendAll(std::vector<T>& elements, const std::vector<T>& added) {
  MakeRoom(elements, added.size());
  AppendAll(elements, added);
}

/// Appends elements that are taken over, for which there must be room.
template <typename T>
void AppendTaken(std::vector<T>& elements, std::vector<T> added) {
  for (T& element : added) elements.push_back(std::move(element));
}

template <typename T>
void Insert(std::vector<T>& elements, int index, const T& value) {
  if (InRange(elements, index)) elements.insert(elements.begin() + index, value);
}

template <typename T>
void Remove(std::vector<T>& elements, int index) {
  if (InRange(elements, index)) elements.erase(elements.begin() + index);
}

template <typename T>
void Replace(std::vector<T>& elements, int index, const T& value) {
  if (InRange(elements, index)) At(elements, index) = value;
}

template <typename T>
void Select(const std::vector<T>& elements, int index, T* out) {
  if (InRange(elements, index)) *out = At(elements, index);
}

/// Exchanges through a copy of element i, with no shortcut for an element and itself. What can be
/// moved is not copied, so that nothing fails.
template <typename T>
void Swap(std::vector<T>& elements, int i, int j) {
  if (!InRange(elements, i) || !InRange(elements, j)) return;
  T& first = At(elements, i);
  T& second = At(elements, j);
  if constexpr (std::is_nothrow_move_assignable<T>::value) return std::swap(first, second);
  const T copy(first);
  first = second;
  second = copy;
}

/// Destroys the elements and gives their storage back.
template <typename T>
void Clear(std::vector<T>& elements) {
  std::vector<T>().swap(elements);
}

/// A reference into the page at address 0, which no process can touch: whoever uses it faults at
/// once, instead of writing into memory that belongs to something else.
template <typename T>
T& InvalidReference() {
  constexpr std::uintptr_t kAddress = 1024;
  static_assert(kAddress % alignof(T) == 0 && kAddress + sizeof(T) <= 4096, "one page, aligned");
  return *reinterpret_cast<T*>(kAddress);
}

template <typename T>
T& Element(std::vector<T>& elements, int index) {
  return InRange(elements, index) ? At(elements, index) : InvalidReference<T>();
}

/// A copy of the element, or a default element out of range.
template <typename T>
T ElementCopy(const std::vector<T>& elements, int index) {
  return InRange(elements, index) ? At(elements, index) : T();
}

}  // namespace typed_array

#endif  // VALUES_TYPED_ARRAY_H_
