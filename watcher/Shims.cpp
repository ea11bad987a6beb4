// The operations that stand before the library's own. Each is a function with the symbol, the
// arguments and the result of the one that it stands for: an object is the first argument then, and
// a result that is constructed in place passes through. What it returns or throws is the library's.

#include <utility>
#include <vector>

#include <opencv2/core.hpp>

#include "VemData.h"
#include "watcher/Operations.h"
#include "watcher/Passed.h"

#define VEM_OPERATION(id, symbol, name, names, check, parameters, arguments, checkParameters, \
                      checkArguments, given, ...)                                             \
  void Check##id checkParameters;                                                             \
  VEM_EXPORT __VA_ARGS__ Watched##id parameters __asm__(symbol);                              \
  __VA_ARGS__ Watched##id parameters {                                                        \
    Check##id checkArguments;                                                                 \
    return reinterpret_cast<__VA_ARGS__(*) parameters>(watcher::Original(id)) arguments;      \
  }
#include "operations.inc"
#undef VEM_OPERATION
