#include "watcher/Operations.h"

#include <dlfcn.h>

#include <atomic>
#include <cstdlib>
#include <initializer_list>

#include "watcher/Report.h"
#include "watcher/Tally.h"

namespace watcher {

#define VEM_OPERATION(id, symbol, name, names, ...) {id, symbol, name, names},
const Operation kOperations[] = {
#include "operations.inc"
};
#undef VEM_OPERATION

namespace {

constexpr int kCount = sizeof(kOperations) / sizeof(*kOperations);
static_assert(kCount <= kTalliedOperations, "each is counted");

std::atomic<void*> g_originals[kCount];

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

void* FindLoaded(const char* symbol) {
  void* const found = dlsym(RTLD_NEXT, symbol);
  return found != nullptr ? found : FindInLibraries(symbol, RTLD_NOLOAD);
}

// Where one operation is, there are the others.
void FindOthers() {
  for (const Operation& operation : kOperations) {
    void* const found = FindLoaded(operation.symbol);
    if (found != nullptr) g_originals[operation.id].store(found, std::memory_order_relaxed);
  }
}

void* Find(const Operation& operation) {
  void* found = FindLoaded(operation.symbol);
  if (found == nullptr) found = FindInLibraries(operation.symbol, 0);
  if (found == nullptr) {
    Text text;
    text.Add("VemCheck: no library has %s (%s)\n", operation.name, operation.symbol);
    text.Write();
    std::abort();
  }
  KeepLoaded(found);
  FindOthers();
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

const int kOperationCount = kCount;

void* Original(int id) {
  void* known = g_originals[id].load(std::memory_order_relaxed);
  if (known != nullptr) return known;
  known = Find(kOperations[id]);
  g_originals[id].store(known, std::memory_order_relaxed);
  return known;
}

bool IsLibrary(const void* module) {
  Dl_info info;
  const void* const place = g_originals[0].load(std::memory_order_relaxed);
  return place != nullptr && dladdr(place, &info) != 0 && info.dli_fbase == module;
}

bool IsExported(const char* symbol) {
  if (symbol == nullptr) return false;
  Dl_info info;
  const void* const found = FindLoaded(symbol);
  return found != nullptr && dladdr(found, &info) != 0 && IsLibrary(info.dli_fbase);
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
