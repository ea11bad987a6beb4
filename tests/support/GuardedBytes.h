#ifndef TESTS_SUPPORT_GUARDED_BYTES_H_
#define TESTS_SUPPORT_GUARDED_BYTES_H_

#include <cstddef>

/// Bytes between two pages that can't be touched: who reads before the first or behind the last
/// byte is stopped by the system.
class GuardedBytes {
 public:
  /// Room for at least `size` bytes.
  explicit GuardedBytes(std::size_t size);
  ~GuardedBytes();
  GuardedBytes(const GuardedBytes&) = delete;
  GuardedBytes& operator=(const GuardedBytes&) = delete;

  /// The first byte.
  unsigned char* Begin() const { return begin_; }
  /// Behind the last byte.
  unsigned char* End() const { return begin_ + size_; }

 private:
  unsigned char* begin_;
  std::size_t size_;
};

#endif  // TESTS_SUPPORT_GUARDED_BYTES_H_
