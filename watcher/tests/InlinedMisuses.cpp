#include "VemTuple.h"
#include "watcher/tests/Misuses.h"

namespace {

const volatile void* volatile g_place;
volatile double g_number;

}  // namespace

void MisuseInlined() {
  VemVarArray values;
  g_place = &values[5];
  const VemVar text("text");
  g_number = text.D();
  g_number = static_cast<double>(text.L());
  g_number = static_cast<double>(text.I());
}
