#ifndef TESTS_SUPPORT_HEAP_COUNTER_H_
#define TESTS_SUPPORT_HEAP_COUNTER_H_

/// Counts what this thread takes from `new` and gives back to `delete`, the library's blocks
/// included. Under a sanitizer, which has its own `new`, nothing is counted.
class HeapCounter {
 public:
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
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

#endif  // TESTS_SUPPORT_HEAP_COUNTER_H_
