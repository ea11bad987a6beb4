#ifndef VEM_VEM_RANGE_H_
#define VEM_VEM_RANGE_H_

#include <cstddef>
#include <initializer_list>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "VemTuple.h"
#include "VemVar.h"
#include "vem/array_traits.h"
#include "vem/value.h"

/// Arrays as ranges: every array class, path, scratch group, layer and layer list.
///
/// `begin` and `end` stand in the global namespace, where a range-based for, `std::ranges` and
/// whoever calls them by their plain name find them; `std::begin`, which asks for members, does
/// not. Where the class gives its elements in place, the iterators are pointers, to constant
/// elements for a constant array; they live as a reference to an element does. The arrays of
/// contours, regions of interest, regions, images and matrices give copies: each `*i` is a copy of
/// its own, and for an image or a matrix a clone.
///
/// The header of an array is included by whoever uses it.
namespace vem {

/// @cond
namespace detail {

// An element that has no address: it lives as long as the expression.
template <class T>
struct arrow {
  T value;
  T* operator->() { return std::addressof(value); }
};

// Positions in an array that gives copies.
template <class A>
class copy_iterator {
 public:
  typedef std::input_iterator_tag iterator_category;
#if __cplusplus >= 202002L
  typedef std::random_access_iterator_tag iterator_concept;
#endif
  typedef element_of<A> value_type;
  typedef std::ptrdiff_t difference_type;
  typedef value_type reference;
  typedef arrow<value_type> pointer;

  copy_iterator() : array_(nullptr), index_(0) {}
  copy_iterator(const A& array, difference_type index)
      : array_(std::addressof(array)), index_(index) {}

  reference operator*() const { return (*array_)[static_cast<int>(index_)]; }
  pointer operator->() const { return pointer{**this}; }
  reference operator[](difference_type offset) const { return *(*this + offset); }

  copy_iterator& operator+=(difference_type offset) {
    index_ += offset;
    return *this;
  }
  copy_iterator& operator-=(difference_type offset) { return *this += -offset; }
  copy_iterator& operator++() { return *this += 1; }
  copy_iterator& operator--() { return *this += -1; }
  copy_iterator operator++(int) {
    const copy_iterator before = *this;
    ++*this;
    return before;
  }
  copy_iterator operator--(int) {
    const copy_iterator before = *this;
    --*this;
    return before;
  }

  friend copy_iterator operator+(copy_iterator i, difference_type offset) { return i += offset; }
  friend copy_iterator operator+(difference_type offset, copy_iterator i) { return i += offset; }
  friend copy_iterator operator-(copy_iterator i, difference_type offset) { return i -= offset; }
  friend difference_type operator-(const copy_iterator& a, const copy_iterator& b) {
    return a.index_ - b.index_;
  }
  friend bool operator==(const copy_iterator& a, const copy_iterator& b) { return a - b == 0; }
  friend bool operator!=(const copy_iterator& a, const copy_iterator& b) { return a - b != 0; }
  friend bool operator<(const copy_iterator& a, const copy_iterator& b) { return a - b < 0; }
  friend bool operator>(const copy_iterator& a, const copy_iterator& b) { return a - b > 0; }
  friend bool operator<=(const copy_iterator& a, const copy_iterator& b) { return a - b <= 0; }
  friend bool operator>=(const copy_iterator& a, const copy_iterator& b) { return a - b >= 0; }

 private:
  const A* array_;
  difference_type index_;
};

// What the global begin and end give, for an array class alone.
template <class A, bool kCopies = array_traits<typename std::remove_cv<A>::type>::copies>
struct positions {
  typedef
      typename std::conditional<std::is_const<A>::value, const element_of<A>, element_of<A>>::type*
          iterator;
  // The elements stand side by side. The operator that is not const reads alone.
  static iterator at(A& array, int index) {
    typedef typename std::remove_const<A>::type array_class;
    if (count_of(array) == 0) return nullptr;
    return std::addressof(const_cast<array_class&>(array)[0]) + index;
  }
};
template <class A>
struct positions<A, true> {
  typedef copy_iterator<typename std::remove_const<A>::type> iterator;
  static iterator at(A& array, int index) { return iterator(array, index); }
};

}  // namespace detail
/// @endcond

}  // namespace vem

// From C++20 on the standard library has deleted ones of the same form, which only constrained ones
// are better than.
// clang-format off

/// The first element of an array.
template <class A>
#if __cplusplus >= 202002L
  requires(vem::detail::is_array_class<A>::value)
#endif
typename vem::detail::positions<A>::iterator begin(A& array) {
  return vem::detail::positions<A>::at(array, 0);
}
template <class A>
#if __cplusplus >= 202002L
  requires(vem::detail::is_array_class<A>::value)
#endif
typename vem::detail::positions<const A>::iterator begin(const A& array) {
  return vem::detail::positions<const A>::at(array, 0);
}
/// Behind the last element of an array.
template <class A>
#if __cplusplus >= 202002L
  requires(vem::detail::is_array_class<A>::value)
#endif
typename vem::detail::positions<A>::iterator end(A& array) {
  return vem::detail::positions<A>::at(array, vem::detail::count_of(array));
}
template <class A>
#if __cplusplus >= 202002L
  requires(vem::detail::is_array_class<A>::value)
#endif
typename vem::detail::positions<const A>::iterator end(const A& array) {
  return vem::detail::positions<const A>::at(array, vem::detail::count_of(array));
}

// clang-format on

namespace vem {

template <class A, class Range>
A to(Range&& range);
template <class T, class A>
std::vector<T> to_vector(const A& array);
template <class T, class A>
std::vector<T> to_vector(const A&& array);

/// @cond
namespace detail {

template <class T, class From>
struct is_element
    : std::integral_constant<bool,
                             std::is_convertible<From, T>::value ||
                                 (std::is_same<T, VemVar>::value &&
                                  (is_number<plain<From>>::value || is_text<plain<From>>::value))> {
};

// How an element comes of what a range holds: as it is, or, where it holds ranges, from those.
template <class T>
struct made_of {
  template <class From>
  static T make(const From& from) {
    return static_cast<T>(from);
  }
};
template <>
struct made_of<VemVar> {
  template <class From>
  static if_true<is_number<From>::value || is_text<From>::value, VemVar> make(const From& from) {
    return vem::value(from);
  }
  template <class From>
  static if_true<!is_number<From>::value && !is_text<From>::value, VemVar> make(const From& from) {
    return static_cast<VemVar>(from);
  }
};

template <class T, class From>
if_true<is_element<T, const From&>::value, T> make_element(const From& from) {
  return made_of<T>::make(from);
}
template <class T, class From>
if_true<!is_element<T, const From&>::value, T> make_element(const From& from) {
  static_assert(std::is_same<T, VemVarArray>::value || std::is_same<T, VemContour>::value,
                "vem::to: an element of the range is no element of the array, nor converts to one");
  return vem::to<T>(from);
}

// What an iterator stands on: what a proxy stands for, as that of a vector of bool.
template <class I>
const typename std::iterator_traits<I>::value_type* pointee(int);
template <class I>
const plain<decltype(*std::declval<I&>())>* pointee(...);

template <class A, class Range, bool kContour = std::is_same<A, VemContour>::value>
struct built {
  static A from(Range& range) {
    using std::begin;
    using std::end;
    typedef element_of<A> element;
    A array;
    const auto last = end(range);
    for (auto i = begin(range); i != last; ++i) {
      const plain<decltype(*pointee<decltype(i)>(0))>& item = *i;
      element made(make_element<element>(item));
      array_traits<A>::add(array, made);
    }
    return array;
  }
};

// A contour takes its points through an array of points.
template <class Contour, class Range>
struct built<Contour, Range, true> {
  static Contour from(Range& range) { return through(vem::to<VemPointArray>(range)); }
  template <class Points>
  static Contour through(Points points) {
    Contour contour;
    contour.FromPointArray(points);
    return contour;
  }
};

// How what a vector is to hold comes of an element.
template <class T>
struct vector_element {
  template <class Element>
  static T make(const Element& element) {
    static_assert(std::is_convertible<const Element&, T>::value,
                  "vem::to_vector: an element of the array does not convert to one of the vector");
    return static_cast<T>(element);
  }
  static T make(const VemVar& value) { return vem::get<T>(value); }
};
template <>
struct vector_element<VemVar> {
  static const VemVar& make(const VemVar& value) { return value; }
};
template <class T>
struct vector_element<std::vector<T>> {
  template <class Element>
  static std::vector<T> make(const Element& element) {
    return vem::to_vector<T>(element);
  }
};

// Whether the elements of a vector, or of its vectors, are views.
template <class T>
struct holds_view : is_view<T> {};
template <class T>
struct holds_view<std::vector<T>> : holds_view<T> {};

template <class T, class A>
struct vector_of {
  static std::vector<T> from(const A& array) {
    std::vector<T> elements;
    elements.reserve(static_cast<std::size_t>(count_of(array)));
    try {
      for (const auto& element : array) elements.push_back(vector_element<T>::make(element));
    } catch (const bad_value_access& error) {
      throw bad_value_access("vem::to_vector: element " + std::to_string(elements.size()) + ": " +
                             error.what());
    }
    return elements;
  }
};
template <class T>
struct vector_of<T, VemContour> {
  template <class Contour>
  static std::vector<T> from(const Contour& contour) {
    return vem::to_vector<T>(points_of<VemPointArray>(contour));
  }
};

template <class A, bool kArray = is_array_class<A>::value>
struct vector_default {};
template <class A>
struct vector_default<A, true> {
  typedef element_of<A> type;
};
template <>
struct vector_default<VemContour, false> {
  typedef VemPoint type;
};

}  // namespace detail
/// @endcond

/// An array, or a contour, of what a range holds: of its elements, of what converts to one, for
/// control values also of numbers and texts, for a table of ranges of them, and for contours of
/// ranges of points. Throws as value does.
template <class A, class Range>
A to(Range&& range) {
  static_assert(detail::is_array_class<A>::value || std::is_same<A, VemContour>::value,
                "vem::to: ask for an array class of the library, or for VemContour");
  return detail::built<A, typename std::remove_reference<Range>::type>::from(range);
}
/// The same of a list: `vem::to<VemPointArray>({{0, 0}, {4, 3}})`.
template <class A>
A to(std::initializer_list<typename detail::vector_default<A>::type> list) {
  return detail::built<
      A, const std::initializer_list<typename detail::vector_default<A>::type>>::from(list);
}

/// A list of control values, each from a number, a text or a value: `vem::array(1, 2.5, "x")`.
/// Throws as value does.
template <class... T>
VemVarArray array(const T&... elements) {
  VemVarArray values;
  const int expand[] = {0, (values.Append(vem::value(elements)), 0)...};
  static_cast<void>(expand);
  return values;
}

/// The elements, or the points of a contour, as a vector of `T`: as they are, converted, or, for
/// control values, read by get; `bad_value_access` then tells the position too. A table gives
/// vectors of vectors. Views of a temporary array's texts do not compile.
template <class T, class A>
std::vector<T> to_vector(const A& array) {
  static_assert(detail::is_array_class<A>::value || std::is_same<A, VemContour>::value,
                "vem::to_vector takes the array classes of the library, and VemContour");
  return detail::vector_of<T, A>::from(array);
}
/// The same of a temporary.
template <class T, class A>
std::vector<T> to_vector(const A&& array) {
  static_assert(!detail::holds_view<T>::value,
                "vem::to_vector: the texts of a temporary array are gone with it; ask for "
                "std::string");
  return vem::to_vector<T>(array);
}
/// The elements, or the points of a contour, as a vector of them.
template <class A>
std::vector<typename detail::vector_default<A>::type> to_vector(const A& array) {
  return vem::to_vector<typename detail::vector_default<A>::type>(array);
}

/// Adds a copy of an element at the end.
template <class A>
void append(A& array, const detail::element_of<A>& element) {
  detail::element_of<A> copy(element);
  detail::array_traits<A>::add(array, copy);
}

/// Adds what a range holds at the end, as `to` takes it. The range may be the array itself.
template <class A, class Range>
void append_range(A& array, Range&& range) {
  A added = vem::to<A>(std::forward<Range>(range));
  for (int i = 0; i < detail::count_of(added); ++i) {
    detail::element_of<A> element(added[i]);
    detail::array_traits<A>::add(array, element);
  }
}

/// @cond
namespace detail {

template <class A>
void test_index(const A& array, int index) {
  const int length = count_of(array);
  if (index >= 0 && index < length) return;
  throw std::out_of_range("vem::at: index " + std::to_string(index) + ", length " +
                          std::to_string(length));
}

}  // namespace detail
/// @endcond

/// The element at `index`, in place where the class gives it so, else a copy; `std::out_of_range`
/// where there is none.
template <class A>
auto at(A& array, int index) -> decltype(*begin(array)) {
  detail::test_index<typename std::remove_const<A>::type>(array, index);
  return begin(array)[index];
}

}  // namespace vem

#endif  // VEM_VEM_RANGE_H_
