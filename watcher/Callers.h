#ifndef WATCHER_CALLERS_H_
#define WATCHER_CALLERS_H_

/// Where calls come from. Takes no memory, and waits for no library that is being opened: the
/// unwinder asks the loader as dl_iterate_phdr does, or with glibc 2.35 and later without a lock.
namespace watcher {

/// What a thread is in, from the innermost call outward, without the watcher itself.
struct Stack {
  static constexpr int kDepth = 24;

  void Read();

  const void* places[kDepth];
  int count = 0;
};

/// Whether a call is part of an operation that was watched itself: it comes from the library, of
/// which one part calls the other, or from a body that a header gave to another library. The caller
/// is told by the place that the call returns to.
bool IsInside(const void* caller);

/// Where a misuse is told to be: where the program calls. What a compiler has not inlined calls
/// from its body, which all of the program shares: then, where that is called.
const void* PlaceOf(const void* caller);

}  // namespace watcher

#endif  // WATCHER_CALLERS_H_
