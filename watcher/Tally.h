#ifndef WATCHER_TALLY_H_
#define WATCHER_TALLY_H_

#include <atomic>
#include <cstdint>

/// How often each misuse happened: for the sum at the end, and for each place, so that one in a
/// loop is not told without end. In memory of its own, without a lock.
namespace watcher {

/// A place that misuses an operation in one way. Key 0 is that of no place.
struct Place {
  std::atomic<std::uint64_t> key;
  std::atomic<unsigned long> times;  ///< How often it happened.
  unsigned long told;                ///< The last of these that was told: for whoever tells.
};

/// How many operations there is room for.
constexpr int kTalliedOperations = 1024;

/// How many places there is room for.
constexpr int kPlaces = 4096;

/// Counts a misuse of an operation.
void Count(int operation, int kind);
unsigned long CountOf(int operation, int kind);

/// The place that a misuse is called from; null where there is no room for a further one.
Place* PlaceAt(const void* caller, int operation, int kind);

/// Starts anew, in a child process.
void ForgetAll();

}  // namespace watcher

#endif  // WATCHER_TALLY_H_
