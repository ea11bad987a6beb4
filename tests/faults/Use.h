#ifndef TESTS_FAULTS_USE_H_
#define TESTS_FAULTS_USE_H_

#include <string>
#include <type_traits>

#include "faults/Samples.h"
#include "faults/States.h"

// Whatever an operation has left of an object, it can be copied, assigned and changed.

/// Whether a copy is equal to the original, which some classes do not promise.
template <typename T>
struct CopiesAll : std::true_type {};
template <>
struct CopiesAll<IVemROIPara> : std::false_type {};
template <>
struct CopiesAll<VemMorphStructure> : std::false_type {};

template <typename T>
void Compare(T& object, const std::string& expected, const char* complaint) {
  const heap::Pause pause;
  if (CopiesAll<T>::value) Require(StateOf(object) == expected, complaint);
}

/// Changes an object, in the ways of an array if it is one.
template <typename T>
void Change(T& object) {
  if constexpr (!std::is_void<ElementOf<T>>::value) {
    using Element = ElementOf<T>;
    Element element = Sample<Element>(1);
    object.Append(element);
    object.Append(element);
    object.Insert(0, element);
    object.Swap(0, 1);
    object.Remove(0);
    object.Remove(0);
    object.Select(0, &element);
    object.Clear();
    object.Append(element);
  } else {
    object = T();
  }
}

template <typename T>
void Use(T& object) {
  std::string* state = nullptr;
  {
    const heap::Pause pause;
    state = new std::string(StateOf(object));
  }
  {
    T copy(object);
    Compare(copy, *state, "a copy differs");
    T assigned = T();
    assigned = object;
    Compare(assigned, *state, "an object that was assigned to differs");
    assigned = copy;
    Change(copy);
    Compare(object, *state, "an object changes with its copy");
    Change(assigned);
  }
  Change(object);
  const heap::Pause pause;
  delete state;
}

#endif  // TESTS_FAULTS_USE_H_
