// Writes out the members whose bodies stand in the headers, for programs that call them by name.
#define VEM_EMIT_MEMBERS
#include "VemTuple.h"
#include "VemVar.h"
