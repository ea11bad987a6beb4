#include "watcher/Operations.h"

#include <dlfcn.h>

#include <atomic>
#include <cstdlib>
#include <initializer_list>

#include "watcher/Report.h"

namespace watcher {

#define VEM_OPERATION(id, symbol, name, names, ...) {id, symbol, name, names},
const Operation kOperations[] = {
#include "operations.inc"
};
#undef VEM_OPERATION

const int kOperationCount = sizeof(kOperations) / sizeof(*kOperations);

namespace {

std::atomic<void*> g_originals[sizeof(kOperations) / sizeof(*kOperations)];

// What a plugin has loaded for itself is not found in the order of libraries.
void* FindInLibraries(const char* symbol, int flags) {
  for (const char* const name : {VEM_DATA_LIBRARY, VEM_RLC_LIBRARY}) {
    void* const library = dlopen(name, RTLD_LAZY | flags);
    void* const found = library != nullptr ? dlsym(library, symbol) : nullptr;
    if (found != nullptr) return found;
  }
  return nullptr;
}

// A library that has once been called stays where it is.
void KeepLoaded(const void* place) {
  Dl_info info;
  if (dladdr(place, &info) != 0) {
    static_cast<void>(dlopen(info.dli_fname, RTLD_LAZY | RTLD_NOLOAD | RTLD_NODELETE));
  }
}

void* Find(const Operation& operation) {
  void* found = dlsym(RTLD_NEXT, operation.symbol);
  if (found == nullptr) found = FindInLibraries(operation.symbol, RTLD_NOLOAD);
  if (found == nullptr) found = FindInLibraries(operation.symbol, 0);
  if (found == nullptr) {
    Text text;
    text.Add("VemCheck: no library has %s (%s)\n", operation.name, operation.symbol);
    text.Write();
    std::abort();
  }
  KeepLoaded(found);
  return found;
}

// All at once where the library is there from the start, before memory may be short.
__attribute__((constructor)) void FindAll() {
  for (const Operation& operation : kOperations) {
    void* const found = dlsym(RTLD_NEXT, operation.symbol);
    if (found == nullptr) return;
    g_originals[operation.id].store(found, std::memory_order_relaxed);
  }
}

}  // namespace

void* Original(int id) {
  void* known = g_originals[id].load(std::memory_order_relaxed);
  if (known != nullptr) return known;
  known = Find(kOperations[id]);
  g_originals[id].store(known, std::memory_order_relaxed);
  return known;
}

bool IsOriginal(const void* place) {
  if (place == nullptr) return false;
  for (const std::atomic<void*>& original : g_originals) {
    if (original.load(std::memory_order_relaxed) == place) return true;
  }
  return false;
}

bool IsInUse() {
  for (const std::atomic<void*>& original : g_originals) {
    if (original.load(std::memory_order_relaxed) != nullptr) return true;
  }
  return false;
}

}  // namespace watcher
