#include "faults/Stage.h"

// Every operation of every array, with and without room to spare.

namespace {

/// What an array's operations leave when they fail.
struct ArrayRules {
  Rule assign;  ///< An assignment.
  Rule steps;   ///< What assigns elements over elements.
  Rule select;  ///< The target of a Select.
  Leak leak = Leak::kNone;
};

template <typename Array>
class Adder {
 public:
  using Element = ElementOf<Array>;

  Adder(Table& table, const char* name, const ArrayRules& rules)
      : table_(table), name_(name), rules_(rules) {}

  void AddAll() {
    AddCopies();
    AddSteps("", [](Array&) {});
    AddSteps("WithRoom", [](Array& array) { MakeRoom(array); });
    AddReaders();
  }

  void AddAppendsOfArrays() {
    Add("AppendArray", [](Stage& stage) {
      Array array = ArrayOf<Array>(3);
      Array added = ArrayOf<Array>(3, 5);
      stage.Try([&] { array.Append(added); }, AsBefore(array), Same(added));
    });
    Add("AppendArrayToEmpty", [](Stage& stage) {
      Array array;
      Array added = ArrayOf<Array>(5);
      stage.Try([&] { array.Append(added); }, AsBefore(array), Same(added));
    });
    Add("AppendItself", [](Stage& stage) {
      Array array = ArrayOf<Array>(3);
      stage.Try([&] { array.Append(array); }, AsBefore(array));
    });
  }

  void AddReferences() {
    Add("InPlace", [](Stage& stage) {
      Array array = ArrayOf<Array>(3);
      stage.Try([&] { array[1]; }, Same(array));
    });
  }

 private:
  template <typename Body>
  void Add(const std::string& operation, Body body, Leak leak = Leak::kNone) {
    table_.push_back({name_ + '.' + operation, body, leak == Leak::kNone ? rules_.leak : leak});
  }

  void AddCopies() {
    const Rule assign = rules_.assign;
    Add("Construct", [](Stage& stage) {
      Array array;
      stage.Try([] { Array(); }, Same(array));
    });
    Add("CopyConstruct", [](Stage& stage) {
      Array array = ArrayOf<Array>(4);
      stage.Try([&] { Array copy(array); }, Same(array));
    });
    AddAssign("Assign", 3, 4, assign);
    AddAssign("AssignShorter", 5, 2, assign);
    AddAssign("AssignNone", 3, 0, assign);
    AddAssign("AssignToNone", 0, 3, assign);
    Add("AssignItself", [assign](Stage& stage) {
      Array array = ArrayOf<Array>(3);
      Array& itself = array;
      stage.Try([&] { array = itself; }, Watched<Array>{array, assign});
    });
    Add("Clear", [](Stage& stage) {
      Array array = ArrayOf<Array>(3);
      stage.Try([&] { array.Clear(); }, AsBefore(array));
    });
  }

  void AddAssign(const char* operation, int length, int sourceLength, Rule assign) {
    Add(operation, [=](Stage& stage) {
      Array array = ArrayOf<Array>(length);
      Array source = ArrayOf<Array>(sourceLength, 5);
      stage.Try([&] { array = source; }, Watched<Array>{array, assign}, Same(source));
    });
  }

  template <typename Prepare>
  void AddSteps(const std::string& suffix, Prepare prepare) {
    const Rule steps = rules_.steps;
    // Without room an insertion moves to a larger block, and the old one stays until it is there.
    const Rule insert = suffix.empty() ? Rule::kAsBefore : steps;
    AddStep("Append" + suffix, prepare, Rule::kAsBefore,
            [](Array& array, Element& element) { array.Append(element); });
    AddStep("InsertFirst" + suffix, prepare, insert,
            [](Array& array, Element& element) { array.Insert(0, element); });
    AddStep("InsertBeforeLast" + suffix, prepare, insert,
            [](Array& array, Element& element) { array.Insert(array.Length() - 1, element); });
    AddStep("RemoveFirst" + suffix, prepare, steps,
            [](Array& array, Element&) { array.Remove(0); });
    AddStep("RemoveLast" + suffix, prepare, steps,
            [](Array& array, Element&) { array.Remove(array.Length() - 1); });
    AddStep(
        "Replace" + suffix, prepare, steps,
        [](Array& array, Element& element) { array.Replace(1, element); },
        rules_.leak == Leak::kNone ? Leak::kNone : Leak::kElement);
    AddStep("Swap" + suffix, prepare, steps, [](Array& array, Element&) { array.Swap(0, 2); });
  }

  template <typename Prepare>
  void AddStep(const std::string& operation, Prepare prepare, Rule rule,
               void (*act)(Array&, Element&), Leak leak = Leak::kNone) {
    Add(
        operation,
        [=](Stage& stage) {
          Array array = ArrayOf<Array>(4);
          prepare(array);
          Element element = Sample<Element>(9);
          stage.Try([&] { act(array, element); }, Watched<Array>{array, rule}, Same(element));
        },
        leak);
  }

  void AddReaders() {
    const Rule select = rules_.select;
    Add("Select", [select](Stage& stage) {
      Array array = ArrayOf<Array>(3);
      Element element = Sample<Element>(8);
      stage.Try([&] { array.Select(2, &element); }, Watched<Element>{element, select}, Same(array));
    });
    Add("SelectIntoNew", [select](Stage& stage) {
      Array array = ArrayOf<Array>(3);
      Element element = Sample<Element>(8);
      element = Element();
      stage.Try([&] { array.Select(2, &element); }, Watched<Element>{element, select}, Same(array));
    });
    Add("Copy", [](Stage& stage) {
      Array array = ArrayOf<Array>(3);
      const Array& read = array;
      stage.Try([&] { static_cast<void>(read[1]); }, Same(array));
    });
  }

  Table& table_;
  const std::string name_;
  const ArrayRules rules_;
};

template <typename Array>
void AddArray(Table& table, const char* name, const ArrayRules& rules) {
  Adder<Array> adder(table, name, rules);
  adder.AddAll();
  adder.AddAppendsOfArrays();
}

}  // namespace

void AddArrays(Table& table) {
  const ArrayRules flat = {Rule::kDoneOrNot, Rule::kAsBefore, Rule::kAsBefore};
  const ArrayRules deep = {Rule::kDoneOrNot, Rule::kSound, Rule::kSound};
  const ArrayRules rows = {Rule::kDoneOrNot, Rule::kSound, Rule::kAsBefore};
  const ArrayRules whole = {Rule::kAsBefore, Rule::kAsBefore, Rule::kAsBefore};
  const ArrayRules pixels = {Rule::kEmpty, Rule::kAsBefore, Rule::kAsBefore, Leak::kHeaders};

  Adder<VemVarArray> values(table, "VemVarArray", {Rule::kAsBefore, Rule::kSound, Rule::kSound});
  values.AddAll();
  values.AddReferences();
  AddArray<Vem2DVarArray>(table, "Vem2DVarArray", rows);
  AddArray<VemPointArray>(table, "VemPointArray", flat);
  AddArray<Vem3DPointArray>(table, "Vem3DPointArray", flat);
  AddArray<VemContourArray>(table, "VemContourArray", whole);
  AddArray<VemImageArray>(table, "VemImageArray", pixels);
  AddArray<VemMatrixArray>(table, "VemMatrixArray", pixels);
  AddArray<VemRegionArray>(table, "VemRegionArray", whole);
  AddArray<VemROIArray>(table, "VemROIArray", {Rule::kEmpty, Rule::kSound, Rule::kSound});
  AddArray<VemFeaturePointArray>(table, "VemFeaturePointArray", flat);
  AddArray<Vem1DCodeArray>(table, "Vem1DCodeArray", deep);
  AddArray<VemDMCodeArray>(table, "VemDMCodeArray", deep);
  AddArray<VemQRCodeArray>(table, "VemQRCodeArray", deep);
  AddArray<VemPDF417CodeArray>(table, "VemPDF417CodeArray", deep);
  AddArray<VemVCodeArray>(table, "VemVCodeArray", deep);
}
