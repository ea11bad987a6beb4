#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>

#include "VemVar.h"
#include "python/src/convert.h"
#include "python/src/module.h"
#include "python/src/text.h"

namespace {

// The class that a document tells, by the name that C++ has for it.
std::string ClassOf(const std::string& document) {
  try {
    const nlohmann::json parsed = nlohmann::json::parse(document);
    if (parsed.is_object() && parsed.contains("class") && parsed["class"].is_string()) {
      return parsed["class"].get<std::string>();
    }
  } catch (const nlohmann::json::exception& error) {
    throw std::invalid_argument(error.what());
  }
  throw std::invalid_argument("/class: is missing");
}

struct Name {
  const char* cpp;
  const char* python;
};
// Those that are not called as in C++ without "Vem".
constexpr Name kNames[] = {
    {"Vem2DVarArray", "VarTable"},       {"Vem3DPoint", "Point3D"},
    {"Vem3DPointArray", "Point3DArray"}, {"Vem1DCode", "Code1D"},
    {"Vem1DCodeArray", "Code1DArray"},   {"VemScratchPrecessing", "ScratchSettings"},
};

std::string PythonName(const std::string& name) {
  for (const Name& known : kNames) {
    if (name == known.cpp) return known.python;
  }
  return name.rfind("Vem", 0) == 0 ? name.substr(3) : name;
}

}  // namespace

void AddJson(py::module_& module) {
  module.def(
      "to_json",
      [](const py::object& value) -> std::string {
        if (py::hasattr(value, "to_json")) return value.attr("to_json")().cast<std::string>();
        return JsonOf(ValueOf(value));
      },
      py::arg("value"),
      "The JSON document of an object of the module, or of an int, a float, a str or None.");
  const py::handle own = module;
  module.def(
      "from_json",
      [own](const std::string& document) -> py::object {
        const std::string name = ClassOf(document);
        if (name == "VemVar") {
          VemVar value;
          ReadJson(document, value);
          return ValueTo(value);
        }
        const std::string python = PythonName(name);
        if (!py::hasattr(own, python.c_str()) ||
            !py::hasattr(own.attr(python.c_str()), "from_json")) {
          throw std::invalid_argument("/class: no class of the module is called " + name);
        }
        return own.attr(python.c_str()).attr("from_json")(document);
      },
      py::arg("document"),
      "Reads any document that tells its class. Raises ValueError with the place of the first "
      "fault.");
}
