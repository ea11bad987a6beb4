#ifndef PYTHON_SRC_ARRAYS_H_
#define PYTHON_SRC_ARRAYS_H_

#include <pybind11/pybind11.h>

#include <algorithm>
#include <string>

#include "Vem3DPoint.h"
#include "VemContour.h"
#include "VemRegion.h"
#include "VemTuple.h"
#include "python/src/common.h"
#include "vem/array_traits.h"

/// The array classes as sequences. Elements go in and come out as copies that nobody can change in
/// place, so that no change is lost.

template <class E>
struct Element {
  static E From(py::handle object) {
    if (!py::isinstance<E>(object)) {
      const std::string name = py::type::of<E>().attr("__name__").template cast<std::string>();
      RaiseType(("a vemdata." + name).c_str(), object);
    }
    return object.cast<const E&>();
  }
  static py::object To(const E& element) { return py::cast(E(element)); }
};

template <>
struct Element<VemVar> {
  static VemVar From(py::handle object) { return ValueOf(object); }
  static py::object To(const VemVar& element) { return ValueTo(element); }
};

template <>
struct Element<VemPoint> {
  static VemPoint From(py::handle object) { return PointOf(object); }
  static py::object To(const VemPoint& element) { return py::cast(element); }
};

template <>
struct Element<Vem3DPoint> {
  static Vem3DPoint From(py::handle object) {
    double numbers[3];
    if (!ReadNumbers(object, numbers, 3)) RaiseType("a point in space, three numbers", object);
    Vem3DPoint point;
    point.x = numbers[0];
    point.y = numbers[1];
    point.z = numbers[2];
    return point;
  }
  static py::object To(const Vem3DPoint& element) { return py::cast(element); }
};

template <>
struct Element<VemContour> {
  static VemContour From(py::handle object) {
    VemPointArray points = PointsOf(object);
    VemContour contour;
    contour.FromPointArray(points);
    return contour;
  }
  static py::object To(const VemContour& element) { return py::cast(element); }
};

/// A row of a table is a tuple in Python.
template <>
struct Element<VemVarArray> {
  static VemVarArray From(py::handle object) {
    if (PyUnicode_Check(object.ptr()) || !py::isinstance<py::iterable>(object)) {
      RaiseType("a row of values", object);
    }
    VemVarArray row;
    for (const py::handle item : py::reinterpret_borrow<py::iterable>(object)) {
      row.Append(ValueOf(item));
    }
    return row;
  }
  static py::object To(const VemVarArray& element) {
    py::tuple row(static_cast<std::size_t>(element.Length()));
    for (int i = 0; i < element.Length(); ++i)
      row[static_cast<std::size_t>(i)] = ValueTo(element[i]);
    return std::move(row);
  }
};

/// An array without elements, with what else the given one has.
template <class A>
A Emptied(const A&) {
  return A();
}

/// What an array asks of a new element beside its class.
template <class A, class E>
void TestElement(const A&, const E&) {}

/// Outlines are delivered rightly only where all regions of an array have them, or none.
void TestElement(const VemRegionArray& array, const VemRegion& region);

/// The position of an index that may count from behind; IndexError where there is none.
template <class A>
int PositionIn(py::handle self, const A& array, py::ssize_t index) {
  const int length = vem::detail::count_of(array);
  const py::ssize_t position = index < 0 ? index + length : index;
  if (position >= 0 && position < length) return static_cast<int>(position);
  const std::string name = py::type::handle_of(self).attr("__name__").cast<std::string>();
  throw py::index_error("index " + std::to_string(index) + " is out of range: the " + name +
                        " has " + std::to_string(length) + " elements");
}

template <class A>
struct Sequence {
  using E = vem::detail::element_of<A>;
  using Traits = vem::detail::array_traits<A>;

  static int Length(const A& array) { return Traits::count(array); }
  // What is not const gives the element in place, where the class has that.
  static py::object At(const A& array, int position) {
    return Element<E>::To(const_cast<A&>(array)[position]);
  }
  static void Add(A& array, py::handle object) {
    E element = Element<E>::From(object);
    TestElement(array, element);
    Traits::add(array, element);
  }
  static void Insert(A& array, int position, E& element) {
    TestElement(array, element);
    if (position == Length(array)) {
      Traits::add(array, element);
    } else {
      array.Insert(position, element);
    }
  }
  static void Set(A& array, int position, E& element) {
    if constexpr (Traits::copies) {
      TestElement(array, element);
      array.Insert(position, element);
      array.Remove(position + 1);
    } else {
      array[position] = element;
    }
  }
  static A From(py::handle elements) {
    if (PyUnicode_Check(elements.ptr()) || !py::isinstance<py::iterable>(elements)) {
      RaiseType("a list of elements", elements);
    }
    A array;
    for (const py::handle item : py::reinterpret_borrow<py::iterable>(elements)) Add(array, item);
    return array;
  }
  static py::list List(const A& array) {
    py::list list;
    for (int i = 0; i < Length(array); ++i) list.append(At(array, i));
    return list;
  }
  static A Part(const A& array, const py::slice& slice) {
    py::ssize_t start = 0, stop = 0, step = 0;
    if (PySlice_Unpack(slice.ptr(), &start, &stop, &step) != 0) throw py::error_already_set();
    // Only now: what counts as an index may have changed the array when it was asked.
    py::ssize_t count = PySlice_AdjustIndices(Length(array), &start, &stop, step);
    A part = Emptied(array);
    for (; count > 0; --count, start += step) {
      E element(const_cast<A&>(array)[static_cast<int>(start)]);
      Traits::add(part, element);
    }
    return part;
  }
  static bool Equal(const A& a, const A& b) {
    if (Length(a) != Length(b)) return false;
    for (int i = 0; i < Length(a); ++i) {
      if (!At(a, i).equal(At(b, i))) return false;
    }
    return true;
  }
  // "[a, b, c]", of long ones the first.
  static std::string Text(const A& array) {
    constexpr int most = 8;
    std::string text = "[";
    for (int i = 0; i < Length(array) && i < most; ++i) {
      text += (i > 0 ? ", " : "") + py::repr(At(array, i)).template cast<std::string>();
    }
    if (Length(array) > most) text += ", ... " + std::to_string(Length(array)) + " in all";
    return text + "]";
  }
};

/// Makes a class a sequence to be read: what `collections.abc` derives comes from there.
template <class A, class... Options>
void AddReading(py::class_<A, Options...>& type) {
  using S = Sequence<A>;
  type.def("__len__", &S::Length);
  type.def("__getitem__", [](py::object self, IndexArg index) {
    const A& array = self.cast<const A&>();
    return S::At(array, PositionIn(self, array, index.at));
  });
  type.def("__getitem__", &S::Part);
  type.def("__eq__", [](const A& self, py::object other) -> py::object {
    if (!py::isinstance<A>(other)) return py::reinterpret_borrow<py::object>(Py_NotImplemented);
    return py::bool_(S::Equal(self, other.cast<const A&>()));
  });
  const py::module_ abstract = py::module_::import("collections.abc");
  const py::object sequence = abstract.attr("Sequence");
  for (const char* name : {"__contains__", "__iter__", "__reversed__", "index", "count"}) {
    type.attr(name) = sequence.attr(name);
  }
  sequence.attr("register")(type);
}

/// Makes a class a list: to be read and to be changed.
template <class A, class... Options>
void AddList(py::class_<A, Options...>& type) {
  using S = Sequence<A>;
  using E = typename S::E;
  type.def(py::init([](py::object elements) { return S::From(elements); }),
           py::arg("elements") = py::tuple(), "An array of copies of the elements.");
  AddReading(type);
  type.def("__setitem__", [](py::object self, IndexArg index, py::object object) {
    A& array = self.cast<A&>();
    E element = Element<E>::From(object);
    S::Set(array, PositionIn(self, array, index.at), element);
  });
  type.def("__delitem__", [](py::object self, IndexArg index) {
    A& array = self.cast<A&>();
    array.Remove(PositionIn(self, array, index.at));
  });
  // A list knows what slices take.
  type.def("__setitem__", [](A& self, const py::slice& slice, py::object elements) {
    py::list list = S::List(self);
    list[slice] = S::List(S::From(elements));
    self = S::From(list);
  });
  type.def("__delitem__", [](A& self, const py::slice& slice) {
    py::list list = S::List(self);
    if (PyObject_DelItem(list.ptr(), slice.ptr()) != 0) throw py::error_already_set();
    self = S::From(list);
  });
  type.def("append", &S::Add, py::arg("element"), "Adds a copy at the end.");
  type.def(
      "insert",
      [](A& self, py::ssize_t index, py::object object) {
        E element = Element<E>::From(object);  // May change the array.
        const py::ssize_t length = S::Length(self);
        if (index < 0) index = std::max<py::ssize_t>(index + length, 0);
        S::Insert(self, static_cast<int>(std::min(index, length)), element);
      },
      py::arg("index"), py::arg("element"),
      "Inserts a copy before the index, as list.insert does; the end counts.");
  type.def(
      "clear", [](A& self) { self.Clear(); }, "Drops all elements.");
  type.def(
      "extend",
      [](A& self, py::object elements) {
        A added = S::From(elements);
        for (int i = 0; i < S::Length(added); ++i) {
          E element(added[i]);
          S::Insert(self, S::Length(self), element);
        }
      },
      py::arg("elements"), "Adds copies at the end; all of them, or, where one is refused, none.");
  type.def("__add__", [](const A& self, py::object elements) {
    py::object sum = py::cast(A(self));
    sum.attr("extend")(elements);
    return sum;
  });
  type.def("__copy__", [](const A& self) { return A(self); });
  type.def(
      "__deepcopy__", [](const A& self, py::dict) { return A(self); }, py::arg("memo"));
  type.def(
      "copy", [](const A& self) { return A(self); }, "An array of copies.");
  type.def("__repr__", [](py::object self) {
    const std::string name = py::type::handle_of(self).attr("__name__").cast<std::string>();
    return name + "(" + S::Text(self.cast<const A&>()) + ")";
  });
  AddDocuments(type);
  const py::object list = py::module_::import("collections.abc").attr("MutableSequence");
  for (const char* name : {"pop", "remove", "reverse", "__iadd__"})
    type.attr(name) = list.attr(name);
  list.attr("register")(type);
}

#endif  // PYTHON_SRC_ARRAYS_H_
