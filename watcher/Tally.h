#ifndef WATCHER_TALLY_H_
#define WATCHER_TALLY_H_

/// How often each misuse happened: for the sum at the end, and for each place, so that one in a
/// loop is not told without end. In memory of its own, without a lock.
namespace watcher {

/// How many operations there is room for.
constexpr int kTalliedOperations = 1024;

/// Counts a misuse of an operation.
void Count(int operation, int kind);
unsigned long CountOf(int operation, int kind);

/// Counts a misuse at the place of its call, and returns how often it happened there by now; 0
/// where there is no room for a further place.
unsigned long TimesAt(const void* caller, int operation, int kind);

/// Starts anew, in a child process.
void ForgetAll();

}  // namespace watcher

#endif  // WATCHER_TALLY_H_
