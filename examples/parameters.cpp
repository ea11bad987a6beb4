// An operator with mixed parameters: a name, a threshold as an integer or a double, a mode that may
// be missing. The same as parameters_plain.cpp, with the companions.
#include <algorithm>
#include <cmath>
#include <iostream>
#include <sstream>
#include <string>

#include "vem/vem.h"

namespace {

// The thresholded mean of a list, doubled in the mode "strong", or what is wrong with the
// parameters.
std::string Run(const VemVarArray& parameters) {
  if (parameters.Length() < 2) return "too few parameters";
  if (!vem::holds<std::string>(parameters[0])) return "the name is no text";
  if (!vem::holds<double>(parameters[1])) return "the threshold is no number";
  const auto threshold = vem::get<double>(parameters[1]);
  VemVar mean(0.0);
  int count = 0;
  for (auto i = begin(parameters) + std::min(3, parameters.Length()); i != end(parameters); ++i) {
    if (!(*i > threshold)) continue;  // Nor is what is no number above it.
    mean += vem::get<double>(*i);
    ++count;
  }
  if (count > 0) mean /= count;
  if (parameters.Length() > 2 && parameters[2] == "strong") mean = 2 * mean;
  std::ostringstream text;
  text << parameters[0] << ": " << count << " above, mean " << mean;
  return text.str();
}

}  // namespace

int main() {
  std::cout << Run(vem::array("edges", 10, "strong", 9, 12, 13.5, "no number", std::nan("")))
            << '\n'
            << Run(vem::array("spots", 0.5, VemVar(), 0.75)) << '\n'
            << Run(vem::array("wrong", "10")) << '\n';
}
