#ifndef WATCHER_REPORT_H_
#define WATCHER_REPORT_H_

#include <cstdarg>
#include <cstddef>

#include "watcher/Callers.h"
#include "watcher/Operations.h"
#include "watcher/Text.h"

/// How the watcher tells a misuse: a line with the operation and what is wrong; then, indented, its
/// arguments and where it was called.
///
/// Any number of threads may misuse at once: one after the other tells, each text in one piece, and
/// those of one place in order. What a thread calls while it tells is not told. Nothing here waits
/// for the loader, takes much of the thread's stack, or takes from the heap but the reading of
/// names; where that fails, they are told as the linker has them.
namespace watcher {

/// The kinds of misuse, which are counted apart.
enum class Kind : int {
  kIndex,      ///< An index that no element has. The line holds all that there is to say.
  kRefused,    ///< Arguments that the operation refuses.
  kObject,     ///< An object or an argument that is null or invalid.
  kItself,     ///< An object that is assigned to itself and is lost by it.
  kOtherKind,  ///< A value or an element that is of another kind than the one that is asked for.
  kNoEffect,   ///< A call that does less than it is asked for.
  kFault,      ///< A call that the processor ends.
  kCount
};

/// One call of a watched operation.
class Call {
 public:
  Call(const Operation& operation, const void* caller) : operation_(operation), caller_(caller) {}
  Call(const Call&) = delete;
  Call& operator=(const Call&) = delete;

  /// Tells a misuse as VEM_CHECK has it: on stderr, of repeats from one place the 10th, the 100th
  /// and so on; on stderr, and then the process ends; or in the sum at the end.
  void Tell(Kind kind, const char* format, ...) const __attribute__((format(printf, 3, 4)));

  /// Tells why the arguments are refused, where they are, and returns that.
  bool Refuse(bool refused, const char* reason) const;
  /// Tells an index that is not from 0 to before `length`, and returns whether it is. `argument` is
  /// its place among the arguments.
  bool InRange(int index, std::size_t length, int argument = 0) const;

  /// An argument's name, as the list has it: `length` characters.
  const char* NameOf(int argument, int& length) const;

 protected:
  ~Call() = default;

 private:
  /// Writes the arguments, each with its name.
  virtual void Describe(Text& text) const = 0;

  struct Telling;

  void Print(Kind kind, const char* format, va_list& arguments, bool isLast) const;
  static void PrintWithRoom(const void* telling);
  void PrintOnce(const Telling& telling) const;

  const Operation& operation_;
  const void* caller_;
};

/// Tells a VEM_CHECK without a meaning, the first time. Called when it is known that the process
/// uses the library.
void BeginUse();

/// Tells that no library has an operation that was called.
void TellNoLibrary(const Operation& operation);

}  // namespace watcher

#endif  // WATCHER_REPORT_H_
