// Misuses everything: linked to what does, or as a plugin that brings the library along for itself.

#include <dlfcn.h>

#include <cstdio>

#include "watcher/tests/Misuses.h"

int main() {
#ifdef VEM_MISUSES
  void* const plugin = dlopen(VEM_MISUSES, RTLD_NOW | RTLD_LOCAL);
  void* const misuse = plugin != nullptr ? dlsym(plugin, "MisuseEverything") : nullptr;
  if (misuse == nullptr) {
    std::puts(dlerror());
    return 1;
  }
  reinterpret_cast<void (*)()>(misuse)();
#else
  MisuseEverything();
#endif
  return 0;
}
