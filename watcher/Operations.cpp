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

// What is there from the start stays where it is.
std::atomic<void*> g_lasting[kCount];
// What a plugin has brought along goes with it: these hold until a library is unloaded.
std::atomic<void*> g_passing[kCount];
std::atomic<unsigned long long> g_unloads{0};
std::atomic<bool> g_isUsed{false};

bool HasLibrary() {
  Module module;
  return FindLibrary(VEM_DATA_LIBRARY, module) || FindLibrary(VEM_RLC_LIBRARY, module);
}

void* FindInLibraries(const char* symbol) {
  for (const char* const name : {VEM_DATA_LIBRARY, VEM_RLC_LIBRARY}) {
    Module library;
    void* const found = FindLibrary(name, library) ? library.Find(symbol) : nullptr;
    if (found != nullptr) return found;
  }
  return nullptr;
}

// A program that is linked to the watcher alone has the library by this, to its end.
void* Load(const Operation& operation) {
  void* const next = dlsym(RTLD_NEXT, operation.symbol);
  if (next != nullptr) return next;
  for (const char* const name : {VEM_DATA_LIBRARY, VEM_RLC_LIBRARY}) {
    void* const library = dlopen(name, RTLD_LAZY);
    void* const found = library != nullptr ? dlsym(library, operation.symbol) : nullptr;
    if (found != nullptr) return found;
  }
  TellNoLibrary(operation);
  std::abort();
}

void ForgetPassing() {
  for (std::atomic<void*>& original : g_passing) original.store(nullptr, std::memory_order_relaxed);
}

void* PassingOriginal(int id) {
  const unsigned long long unloads = Unloads();
  // Whoever sees the new number sees the old places gone.
  if (g_unloads.load(std::memory_order_acquire) != unloads) {
    ForgetPassing();
    g_unloads.store(unloads, std::memory_order_release);
  }
  void* known = g_passing[id].load(std::memory_order_relaxed);
  if (known != nullptr) return known;
  known = FindInLibraries(kOperations[id].symbol);
  if (known != nullptr) {
    g_passing[id].store(known, std::memory_order_relaxed);
  } else {
    known = Load(kOperations[id]);
    g_lasting[id].store(known, std::memory_order_relaxed);
  }
  if (!g_isUsed.exchange(true)) BeginUse();
  return known;
}

// From whichever library comes next in the linker's order: before memory may be short, and before
// a library is opened.
void FindAll() {
  for (const Operation& operation : kOperations) {
    void* const found = dlsym(RTLD_NEXT, operation.symbol);
    if (found == nullptr) continue;
    g_lasting[operation.id].store(found, std::memory_order_relaxed);
    g_isUsed.store(true);
  }
}

}  // namespace

const int kOperationCount = kCount;

void* Original(int id) {
  void* const known = g_lasting[id].load(std::memory_order_relaxed);
  return known != nullptr ? known : PassingOriginal(id);
}

void FindAtStart() {
  if (HasLibrary() || dlsym(RTLD_NEXT, kOperations[0].symbol) != nullptr) FindAll();
  // What was not found is nothing for the program to be told.
  dlerror();
}

bool IsLibrary(const Module& module) { return module.IsNamed(VEM_DATA_LIBRARY); }

bool IsExported(const char* symbol) {
  Module library;
  return symbol != nullptr && FindLibrary(VEM_DATA_LIBRARY, library) &&
         library.Find(symbol) != nullptr;
}

bool IsOriginal(const void* place) {
  if (place == nullptr) return false;
  for (const std::atomic<void*>& original : g_lasting) {
    if (original.load(std::memory_order_relaxed) == place) return true;
  }
  return false;
}

bool IsInUse() { return g_isUsed.load(); }

}  // namespace watcher
