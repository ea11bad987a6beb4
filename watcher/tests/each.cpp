// Calls every watched operation with an object and arguments that are no addresses, and shows that
// each is told by its own name. What comes of the call is left to a child process.

#include <dlfcn.h>
#include <sys/types.h>
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

// What is told goes to the stderr that the program began with: a file, from where it ended before.
std::string WhatIsToldOf(Anything operation) {
  const off_t before = lseek(STDERR_FILENO, 0, SEEK_END);
  InChild([&] { Call(operation); });
  char told[4096];
  const ssize_t length = pread(STDERR_FILENO, told, sizeof(told), before);
  return std::string(told, length > 0 ? static_cast<std::size_t>(length) : 0);
}

// Begins anew with a file as stderr.
int BeginWithFile(const char* program) {
  std::FILE* const file = std::tmpfile();
  if (file == nullptr || dup2(fileno(file), STDERR_FILENO) < 0) return 1;
  execl("/proc/self/exe", program, "begun", nullptr);
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) return BeginWithFile(argv[0]);
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
