#include <algorithm>

#include "Vem2DVarArray.h"
#include "VemTuple.h"
#include "python/src/arrays.h"
#include "python/src/module.h"

void AddValues(py::module_& module) {
  py::class_<VemVarArray> values(
      module, "VarArray",
      "A list of control values, each an int of 64 bits, a float, a str or None.\n\n"
      "An int beyond 64 bits and a text with a zero byte raise ValueError. Texts are UTF-8; other\n"
      "bytes, as readers of codes may give them, come as surrogates and go back as they were.");
  AddList(values);

  py::class_<Vem2DVarArray> table(
      module, "VarTable",
      "A list of rows of control values, each of its own length. A row goes in as any list and\n"
      "comes out as a tuple.");
  AddList(table);
}
