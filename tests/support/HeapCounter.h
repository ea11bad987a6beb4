#ifndef TESTS_SUPPORT_HEAP_COUNTER_H_
#define TESTS_SUPPORT_HEAP_COUNTER_H_

#include <new>

/// Counts what this thread takes from `new` and gives back to `delete`, the library's blocks
/// included. Under a sanitizer, which has its own `new`, nothing is counted.
class HeapCounter {
 public:
#ifdef VEM_SANITIZED
  static constexpr bool kCounts = false;
#else
  static constexpr bool kCounts = true;
#endif

  HeapCounter();

  long Taken() const;  ///< Blocks taken since construction.
  long Kept() const;   ///< Of these, the number that was not given back, or not yet.

 private:
  long taken_;
  long given_;
};

/// While it lives, `new` gives this thread a number of blocks, the library's included, and then
/// fails. Under a sanitizer nothing fails.
class HeapFailure {
 public:
  explicit HeapFailure(long blocks);
  ~HeapFailure();
  HeapFailure(const HeapFailure&) = delete;
  HeapFailure& operator=(const HeapFailure&) = delete;
};

/// Calls `act` with one block more each time, until it has enough, and `check` where it had not.
/// Returns how often it failed.
template <typename Act, typename Check>
int FailAtEachBlock(Act act, Check check) {
  for (int blocks = 0;; ++blocks) {
    try {
      const HeapFailure failure(blocks);
      act();
      return blocks;
    } catch (const std::bad_alloc&) {
      check();
    }
  }
}

#endif  // TESTS_SUPPORT_HEAP_COUNTER_H_
