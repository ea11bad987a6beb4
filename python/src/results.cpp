#include <cfloat>
#include <climits>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>

#include "VemFont.h"
#include "VemScratchGroup.h"
#include "python/src/arrays.h"
#include "python/src/module.h"
#include "vem/json_results.h"
#include "vem/make.h"

// A part of a group keeps its label, a part of a layer its settings.
VemScratchGroup Emptied(const VemScratchGroup& group) {
  VemScratchGroup empty;
  empty.Label = group.Label;
  return empty;
}
VemScratchLayer Emptied(const VemScratchLayer& layer) { return VemScratchLayer(layer.Settings); }

namespace {

template <class Record>
using Form = vem::json_detail::form<Record>;

// --- One field ---

template <class T>
std::enable_if_t<std::is_arithmetic<T>::value, py::object> FieldTo(T number) {
  return py::cast(number);
}
py::object FieldTo(const VemVar& value) { return ValueTo(value); }
py::object FieldTo(const VemPointArray& points) { return FrozenArrayOf(points); }

template <class T>
std::enable_if_t<std::is_integral<T>::value> ReadField(const char* name, py::handle object,
                                                       T& field) {
  if constexpr (std::is_same<T, std::uint64_t>::value) {
    if (!PyIndex_Check(object.ptr())) RaiseType("an int", object);
    const py::object whole = py::reinterpret_steal<py::object>(PyNumber_Index(object.ptr()));
    if (!whole) throw py::error_already_set();
    const std::uint64_t number = PyLong_AsUnsignedLongLong(whole.ptr());
    if (PyErr_Occurred() != nullptr) {
      PyErr_Clear();
      throw py::value_error(std::string(name) + " is not from 0 to 2^64 - 1");
    }
    field = number;
  } else {
    field = static_cast<T>(IntegerOf(object, name, static_cast<long>(std::numeric_limits<T>::min()),
                                     static_cast<long>(std::numeric_limits<T>::max())));
  }
}
template <class T>
std::enable_if_t<std::is_floating_point<T>::value> ReadField(const char* name, py::handle object,
                                                             T& field) {
  const VemVar value = ValueOf(object);
  if (value.ValType() != VemVarLong && value.ValType() != VemVarDouble)
    RaiseType("a number", object);
  const double number = value.D();
  if (std::isfinite(number) &&
      std::fabs(number) > static_cast<double>(std::numeric_limits<T>::max())) {
    throw py::value_error(std::string(name) + " is beyond what 32 bits hold");
  }
  field = static_cast<T>(number);
}
void ReadField(const char*, py::handle object, VemVar& field) { field = ValueOf(object); }
void ReadField(const char*, py::handle object, VemPointArray& field) { field = PointsOf(object); }

template <class T>
std::enable_if_t<std::is_arithmetic<T>::value, bool> SameField(T a, T b) {
  return a >= b && a <= b;
}
bool SameField(const VemVar& a, const VemVar& b) { return Same(a, b); }
bool SameField(const VemPointArray& a, const VemPointArray& b) { return Same(a, b); }

bool IsBlank(const VemVar& value) { return value.ValType() == VemVarNone; }
bool IsBlank(const VemPointArray& points) { return points.Length() == 0; }
template <class T>
std::enable_if_t<std::is_arithmetic<T>::value, bool> IsBlank(T number) {
  return SameField(number, T(0));
}

// --- All fields of a record, as Form<Record>::fields hands them out ---

// Code records leave their numbers as the memory was.
struct Blank {
  template <class T>
  std::enable_if_t<std::is_arithmetic<T>::value, Blank&> operator()(const char*, T& field) {
    field = T(0);
    return *this;
  }
  template <class T>
  std::enable_if_t<!std::is_arithmetic<T>::value, Blank&> operator()(const char*, T&) {
    return *this;
  }
};

struct Reader {
  py::dict given;

  template <class T>
  Reader& operator()(const char* name, T& field) {
    if (!given.contains(name)) return *this;
    const py::object told = given[name];
    ReadField(name, told, field);
    given.attr("pop")(name);
    return *this;
  }
};

struct Writer {
  py::dict fields;

  template <class T>
  Writer& operator()(const char* name, const T& field) {
    fields[name] = FieldTo(field);
    return *this;
  }
};

// Text of what is not blank.
struct Printer {
  std::string text;

  template <class T>
  Printer& operator()(const char* name, const T& field) {
    if (IsBlank(field)) return *this;
    text += (text.empty() ? "" : ", ") + std::string(name) + "=" + Text(field);
    return *this;
  }
  static std::string Text(const VemPointArray& points) {
    return Sequence<VemPointArray>::Text(points);
  }
  template <class T>
  static std::string Text(const T& field) {
    return py::repr(FieldTo(field)).template cast<std::string>();
  }
};

// Walks two records side by side: each field stands in both at the same place.
template <class Record>
struct Comparer {
  const Record& own;
  const Record& other;
  bool same = true;

  template <class T>
  Comparer& operator()(const char*, const T& field) {
    const std::ptrdiff_t place =
        reinterpret_cast<const char*>(&field) - reinterpret_cast<const char*>(&own);
    same = same && SameField(field, *reinterpret_cast<const T*>(
                                        reinterpret_cast<const char*>(&other) + place));
    return *this;
  }
};

template <class Record>
struct Properties {
  py::class_<Record>& type;
  const Record& sample;
  py::list names;

  template <class T>
  Properties& operator()(const char* name, T& field) {
    const std::ptrdiff_t place =
        reinterpret_cast<const char*>(&field) - reinterpret_cast<const char*>(&sample);
    type.def_property_readonly(name, [place](const Record& self) {
      return FieldTo(*reinterpret_cast<const T*>(reinterpret_cast<const char*>(&self) + place));
    });
    names.append(name);
    return *this;
  }
};

template <class Record>
py::dict FieldsOf(const Record& record) {
  Writer writer;
  Form<Record>::fields(writer, record);
  return writer.fields;
}

// The record with other values in the named fields.
template <class Record>
Record Changed(Record record, const char* type, const py::dict& changes) {
  Reader reader{changes.attr("copy")().cast<py::dict>()};
  Form<Record>::fields(reader, record);
  if (reader.given.empty()) return record;
  const std::string name = py::str((*reader.given.begin()).first);
  throw py::type_error(std::string(type) + " has no field " + name);
}

// A record of named fields that never changes; `blank` gives what is not told.
template <class Record>
py::class_<Record> AddRecord(py::module_& module, const char* name, Record (*blank)(),
                             const char* doc) {
  py::class_<Record> type(module, name, doc);
  type.def(
      py::init([blank, name](const py::kwargs& fields) { return Changed(blank(), name, fields); }),
      "The fields by name. TypeError for one that there is not, ValueError for what it can't "
      "hold.");
  Record sample = blank();
  Properties<Record> properties{type, sample, py::list()};
  Form<Record>::fields(properties, sample);
  type.attr("_fields") = py::tuple(properties.names);
  type.def("_asdict", &FieldsOf<Record>, "The fields and their values.");
  type.def(
      "replace",
      [name](const Record& self, const py::kwargs& fields) { return Changed(self, name, fields); },
      "The same record with other values in the named fields.");
  type.def("__eq__", [](const Record& self, py::object other) -> py::object {
    if (!py::isinstance<Record>(other))
      return py::reinterpret_borrow<py::object>(Py_NotImplemented);
    Comparer<Record> comparer{self, other.cast<const Record&>()};
    Form<Record>::fields(comparer, self);
    return py::bool_(comparer.same);
  });
  type.def("__repr__", [name](const Record& self) {
    Printer printer;
    Form<Record>::fields(printer, self);
    return std::string(name) + "(" + printer.text + ")";
  });
  AddDocuments(type);
  AddFrozenCopies(type);
  return type;
}

template <class Record>
Record Zeroed() {
  Record record;
  Blank blank;
  Form<Record>::fields(blank, record);
  return record;
}

template <class Array>
void AddArray(py::module_& module, const char* name, const char* doc) {
  py::class_<Array> type(module, name, doc);
  AddList(type);
}

void AddCodes(py::module_& module) {
  AddRecord<Vem1DCode>(module, "Code1D", &Zeroed<Vem1DCode>,
                       "A linear barcode, as a code reader reports it. It never changes.");
  AddArray<Vem1DCodeArray>(module, "Code1DArray", "A list of linear barcodes.");
  AddRecord<VemDMCode>(module, "DMCode", &Zeroed<VemDMCode>,
                       "A Data Matrix symbol, as a code reader reports it. It never changes.");
  AddArray<VemDMCodeArray>(module, "DMCodeArray", "A list of Data Matrix symbols.");
  AddRecord<VemQRCode>(module, "QRCode", &Zeroed<VemQRCode>,
                       "A QR symbol, as a code reader reports it. It never changes.");
  AddArray<VemQRCodeArray>(module, "QRCodeArray", "A list of QR symbols.");
  AddRecord<VemPDF417Code>(module, "PDF417Code", &Zeroed<VemPDF417Code>,
                           "A PDF417 symbol, as a code reader reports it. It never changes.");
  AddArray<VemPDF417CodeArray>(module, "PDF417CodeArray", "A list of PDF417 symbols.");
  AddRecord<VemVCode>(
      module, "VCode", &Zeroed<VemVCode>,
      "A V code, as a code reader reports it; its reals have 32 bits. It never changes.");
  AddArray<VemVCodeArray>(module, "VCodeArray", "A list of V codes.");
  AddRecord<VemFeaturePoint>(
      module, "FeaturePoint", &Zeroed<VemFeaturePoint>,
      "A key point of a feature detector, its reals of 32 bits. It never changes.");
  AddArray<VemFeaturePointArray>(module, "FeaturePointArray", "A list of key points.");
}

// --- Scratches: groups and layers never change, so that no change of an element is lost ---

VemScratchGroup MakeGroup(const py::object& label, const py::object& features) {
  VemScratchGroup group = Sequence<VemScratchGroup>::From(features);
  group.Label = ValueOf(label);
  return group;
}

VemScratchLayer MakeLayer(const py::object& settings, const py::object& groups) {
  VemScratchLayer layer = Sequence<VemScratchLayer>::From(groups);
  if (!settings.is_none()) layer.Settings = Element<VemScratchPrecessing>::From(settings);
  return layer;
}

void AddGroups(py::module_& module) {
  py::class_<VemScratchGroup> group(module, "ScratchGroup",
                                    "Features of a scratch under a label. It never changes.");
  group.def(py::init(&MakeGroup), py::arg("label") = py::none(), py::arg("features") = py::tuple());
  group.def_property_readonly(
      "label", [](const VemScratchGroup& self) { return ValueTo(self.Label); }, "The label.");
  group.def(
      "sorted",
      [](VemScratchGroup self) {
        self.Sort();
        return self;
      },
      "The same group, its features by growing sort_key.");
  AddReading(group);
  group.def(
      "__eq__",
      [](const VemScratchGroup& self, py::object other) -> py::object {
        if (!py::isinstance<VemScratchGroup>(other)) {
          return py::reinterpret_borrow<py::object>(Py_NotImplemented);
        }
        const auto& group2 = other.cast<const VemScratchGroup&>();
        return py::bool_(Same(self.Label, group2.Label) &&
                         Sequence<VemScratchGroup>::Equal(self, group2));
      },
      py::prepend());
  group.def("__repr__", [](const VemScratchGroup& self) {
    return "ScratchGroup(" + py::repr(ValueTo(self.Label)).cast<std::string>() + ", " +
           Sequence<VemScratchGroup>::Text(self) + ")";
  });
  AddDocuments(group);
  AddFrozenCopies(group);

  py::class_<VemScratchLayer> layer(module, "ScratchLayer",
                                    "Groups beside the settings that made them. It never changes.");
  layer.def(py::init(&MakeLayer), py::arg("settings") = py::none(),
            py::arg("groups") = py::tuple());
  layer.def_property_readonly(
      "settings", [](const VemScratchLayer& self) { return self.Settings; }, "The settings.");
  AddReading(layer);
  layer.def(
      "__eq__",
      [](const VemScratchLayer& self, py::object other) -> py::object {
        if (!py::isinstance<VemScratchLayer>(other)) {
          return py::reinterpret_borrow<py::object>(Py_NotImplemented);
        }
        const auto& layer2 = other.cast<const VemScratchLayer&>();
        Comparer<VemScratchPrecessing> settings{self.Settings, layer2.Settings};
        Form<VemScratchPrecessing>::fields(settings, self.Settings);
        return py::bool_(settings.same && Sequence<VemScratchLayer>::Equal(self, layer2));
      },
      py::prepend());
  layer.def("__repr__", [](const VemScratchLayer& self) {
    return "ScratchLayer(" + py::repr(py::cast(self.Settings)).cast<std::string>() + ", " +
           Sequence<VemScratchLayer>::Text(self) + ")";
  });
  AddDocuments(layer);
  AddFrozenCopies(layer);
}

void AddScratches(py::module_& module) {
  AddRecord<VemScratchFeature>(module, "ScratchFeature", &Zeroed<VemScratchFeature>,
                               "One feature of a scratch. It never changes.");
  AddRecord<VemScratchPrecessing>(
      module, "ScratchSettings", [] { return VemScratchLayer().Settings; },
      "The settings of a scratch inspection, those of a default layer where they are not told. "
      "They\n"
      "never change.");
  AddGroups(module);
  AddArray<VemScratchLayerArray>(module, "ScratchLayerArray", "A list of layers.");
}

}  // namespace

void AddFonts(py::module_& module) {
  AddRecord<VemFont>(
      module, "Font", [] { return VemFont(); },
      "How a text overlay is to be written. It never changes; fields that are not told\n"
      "are 'Times', size 9, weight 1, flag1 1, and 0.");
  module.def(
      "font",
      [](const py::object& name, const py::object& size, const py::object& weight) {
        return vem::font(TextBytes(name), IntegerOf(size, "the size", LONG_MIN, LONG_MAX),
                         IntegerOf(weight, "the weight", LONG_MIN, LONG_MAX));
      },
      py::arg("name"), py::arg("size"), py::arg("weight") = 500,
      "A font of a name, a size and a weight, all flags 0.");
}

void AddResults(py::module_& module) {
  AddCodes(module);
  AddScratches(module);
}
