#ifndef WATCHER_OPERATIONS_H_
#define WATCHER_OPERATIONS_H_

#include "watcher/Modules.h"

/// What is watched, and where the library has it.
namespace watcher {

/// A watched operation. Constructors and destructors are two each.
struct Operation {
  int id;              ///< Its place in the list.
  const char* symbol;  ///< Its name for the linker.
  const char* name;    ///< Its name for a reader.
  const char* names;   ///< The names of its arguments, parted by blanks.
};

extern const Operation kOperations[];
extern const int kOperationCount;

/// The library's own operation. Where the process has no such library, and none can be loaded, that
/// is told and the process ends.
void* Original(int id);

/// Finds the operations of the libraries that the process has from its start.
void FindAtStart();

/// Whether a module is the library with the classes.
bool IsLibrary(const Module& module);
/// Whether the library has a function by this name, which may be null: a function elsewhere by the
/// same name is a body from a header.
bool IsExported(const char* symbol);
/// Whether a watched operation passes its calls on to this place.
bool IsOriginal(const void* place);

/// Whether the process has used the library, or has it from its start.
bool IsInUse();

}  // namespace watcher

#endif  // WATCHER_OPERATIONS_H_
