#ifndef WATCHER_MODULES_H_
#define WATCHER_MODULES_H_

#include <link.h>

#include <cstddef>
#include <cstdint>

/// The program and the libraries of the process, as the loader has them.
///
/// The loader's own readers wait until no library is being opened, and so for ever in a thread that
/// a library's constructor waits for. Nothing here does: what is held meanwhile is what
/// dl_iterate_phdr holds, and no constructor runs under that. Nothing takes memory.
namespace watcher {

/// The program or a library. It is good for as long as the process has it.
struct Module {
  /// The function that a place lies in, of those with a name for the linker; null where there is
  /// none.
  const char* NameAt(const void* place) const;
  /// Where that function begins.
  const void* BeginAt(const void* place) const;
  /// Where the module has a function by that name; null if it has none.
  void* Find(const char* symbol) const;
  /// Whether it is a library by that name.
  bool IsNamed(const char* other) const;

  std::uintptr_t offset = 0;            ///< What is added to the places of its file.
  const char* file = nullptr;           ///< Its path.
  const char* name = nullptr;           ///< The library's name in it, or null.
  const char* texts = nullptr;          ///< The names of its symbols.
  const ElfW(Sym) * symbols = nullptr;  ///< What it has by name, and what it asks for.
  std::size_t symbolCount = 0;

 private:
  const ElfW(Sym) * SymbolAt(const void* place) const;
};

/// The module that a place lies in.
bool FindModule(const void* place, Module& module);
/// The first library by that name.
bool FindLibrary(const char* name, Module& module);

/// How many modules the process has had and has no more: what was read before is true as long as
/// this number stays.
unsigned long long Unloads();

}  // namespace watcher

#endif  // WATCHER_MODULES_H_
