// Compiled without optimisation, so that the program has bodies of its own from the headers: what
// they call when they miss is told, each time for the place that called them.

#include "VemTuple.h"

namespace {

const volatile void* volatile g_place;
volatile double g_number;

}  // namespace

int main() {
  VemVarArray values;
  g_place = &values[5];
  for (int i = 0; i < 20; ++i) g_place = &values[i];
  const VemVar text("text");
  g_number = text.D();
  g_number = static_cast<double>(text);
  return 0;
}
