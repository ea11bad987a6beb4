// Calls every watched operation with an object and arguments that are no addresses, and shows that
// each is told by its own name. What comes of the call is left to a child process.

#include <dlfcn.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <string>

#include "watcher/Operations.h"
#include "watcher/tests/Child.h"

#define VEM_OPERATION(id, symbol, name, names, ...) {id, symbol, name, names},
const watcher::Operation kAll[] = {
#include "operations.inc"
};
#undef VEM_OPERATION

namespace {

using Anything = void (*)(long, long, long, long, long, long, double, double, double, double,
                          double, double, double, double, long, long, long, long);

// No object lies at 7, no type has that number, and the points (0, 0) and (0, 0) are equal.
void Call(Anything operation) { operation(7, 7, 7, 7, 7, 7, 0, 0, 0, 0, 0, 0, 0, 0, 7, 7, 7, 7); }

std::string WhatIsToldOf(Anything operation) {
  int ends[2];
  if (pipe(ends) != 0) return "no pipe";
  const int errors = dup(STDERR_FILENO);
  dup2(ends[1], STDERR_FILENO);
  InChild([&] { Call(operation); });
  dup2(errors, STDERR_FILENO);
  close(errors);
  close(ends[1]);
  char told[4096];
  const ssize_t length = read(ends[0], told, sizeof(told));
  close(ends[0]);
  return std::string(told, length > 0 ? static_cast<std::size_t>(length) : 0);
}

}  // namespace

int main() {
  int failed = 0;
  int called = 0;
  for (const watcher::Operation& operation : kAll) {
    void* const found = dlsym(RTLD_DEFAULT, operation.symbol);
    ++called;
    const std::string told =
        found != nullptr ? WhatIsToldOf(reinterpret_cast<Anything>(found)) : "not found";
    if (told.rfind(std::string(operation.name) + ": ", 0) == 0) continue;
    std::printf("%s (%s): %s\n", operation.name, operation.symbol, told.c_str());
    ++failed;
  }
  std::printf("%d symbols, %d not told\n", called, failed);
  return failed == 0 ? 0 : 1;
}
