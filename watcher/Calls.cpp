// What each watched operation is checked for before it is called: by one check of Checks.h, once
// its object and its arguments are found to be there.

#include <vector>

#include <opencv2/core.hpp>

#include "VemData.h"
#include "watcher/Arguments.h"
#include "watcher/Checks.h"
#include "watcher/Operations.h"
#include "watcher/Passed.h"

#define VEM_OPERATION(id, symbol, name, names, checkName, parameters, arguments, checkParameters, \
                      checkArguments, given, ...)                                                 \
  void Check##id checkParameters;                                                                 \
  void Check##id checkParameters {                                                                \
    const auto check = [](const watcher::Call& call, auto&... all) {                              \
      watcher::checks::checkName(call, all...);                                                   \
    };                                                                                            \
    const auto watch = [&](auto&&... all) {                                                       \
      watcher::Watch(watcher::kOperations[id], caller, check, all...);                            \
    };                                                                                            \
    watch given;                                                                                  \
  }
#include "operations.inc"
#undef VEM_OPERATION
