// An operator with mixed parameters: a name, a threshold as an integer or a double, a mode that may
// be missing. The same as parameters.cpp, with the classes alone.
#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>

#include "VemTuple.h"

namespace {

// The thresholded mean of a list, doubled in the mode "strong", or what is wrong with the
// parameters.
std::string Run(VemVarArray& parameters) {
  if (parameters.Length() < 2) return "too few parameters";
  if (parameters[0].ValType() != VemVarString) return "the name is no text";
  const int kind = parameters[1].ValType();
  if (kind != VemVarLong && kind != VemVarDouble) return "the threshold is no number";
  const double threshold = parameters[1].D();
  const bool strong = parameters.Length() > 2 && parameters[2].ValType() == VemVarString &&
                      std::strcmp(parameters[2].S(), "strong") == 0;
  double sum = 0;
  int count = 0;
  for (int i = 3; i < parameters.Length(); ++i) {
    const int type = parameters[i].ValType();
    if (type != VemVarLong && type != VemVarDouble) continue;
    if (!(parameters[i].D() > threshold)) continue;  // Nor is what is no number above it.
    sum += parameters[i].D();
    ++count;
  }
  VemVar mean(count == 0 ? 0.0 : sum / count);
  if (strong) mean = VemVar(2) * mean;
  char text[100];
  std::snprintf(text, sizeof text, "%s: %d above, mean %g", parameters[0].S(), count, mean.D());
  return text;
}

}  // namespace

int main() {
  VemVarArray first;
  first.Append(VemVar("edges"));
  first.Append(VemVar(10));
  first.Append(VemVar("strong"));
  first.Append(VemVar(9));
  first.Append(VemVar(12));
  first.Append(VemVar(13.5));
  first.Append(VemVar("no number"));
  first.Append(VemVar(std::nan("")));
  VemVarArray second;
  second.Append(VemVar("spots"));
  second.Append(VemVar(0.5));
  second.Append(VemVar());
  second.Append(VemVar(0.75));
  VemVarArray third;
  third.Append(VemVar("wrong"));
  third.Append(VemVar("10"));
  std::printf("%s\n%s\n%s\n", Run(first).c_str(), Run(second).c_str(), Run(third).c_str());
}
