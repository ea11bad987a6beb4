#ifndef FUZZ_BYTE_READER_H_
#define FUZZ_BYTE_READER_H_

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

/// Makes values of the fuzzer's bytes, front to back. Behind the last byte there are zeros, so a
/// harness may read on; what it repeats, it ends at IsEmpty.
class ByteReader {
 public:
  ByteReader(const std::uint8_t* data, std::size_t size) : next_(data), end_(data + size) {}

  bool IsEmpty() const { return next_ == end_; }
  std::uint8_t Byte() { return IsEmpty() ? std::uint8_t{0} : *next_++; }
  bool Flag() { return (Byte() & 1) != 0; }

  /// The bytes of a number, as they are.
  template <typename T>
  T Raw() {
    unsigned char bytes[sizeof(T)];
    for (unsigned char& byte : bytes) byte = Byte();
    T value;
    std::memcpy(&value, bytes, sizeof(T));
    return value;
  }

  /// A number from 0 to the one before `end`, which is at least 1: of one byte if that will do.
  int Below(int end) {
    const unsigned drawn = end <= 256 ? Byte() : Raw<std::uint16_t>();
    return static_cast<int>(drawn % static_cast<unsigned>(end));
  }
  int Between(int low, int high) { return low + Below(high - low + 1); }

  /// An index for a list: mostly one of its own, also those around.
  int Index(int length) { return Between(-1, length + 1); }

  /// A number of a size that a picture has, as often whole as with a fraction.
  double Near() {
    const int eighths = Raw<std::int16_t>();
    return (eighths & 1) != 0 ? eighths / 8.0 : eighths / 8;
  }

  /// Any number: near, at the ends of what 16, 24, 32 and 53 bits hold, not a number, or whatever
  /// eight bytes make.
  double Number() {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    constexpr double kEnds[] = {0.0,
                                0.5,
                                1.0,
                                32767.0,
                                65536.0,
                                16777217.0,
                                2147483646.5,
                                2147483647.0,
                                2147483648.0,
                                4294967296.0,
                                9007199254740993.0,
                                1e300,
                                5e-324,
                                kInfinity,
                                std::numeric_limits<double>::quiet_NaN(),
                                360.0};
    const int kind = Byte();
    if (kind < 160) return Near();
    if (kind < 240) return (kind & 1) != 0 ? -kEnds[kind / 2 % 16] : kEnds[kind / 2 % 16];
    return kind < 248 ? Raw<double>() : Raw<std::int32_t>();
  }

  /// Up to `most` bytes.
  std::vector<std::uint8_t> Bytes(int most) {
    std::vector<std::uint8_t> bytes;
    for (int left = Below(most + 1); left > 0; --left) bytes.push_back(Byte());
    return bytes;
  }

 private:
  const std::uint8_t* next_;
  const std::uint8_t* end_;
};

#endif  // FUZZ_BYTE_READER_H_
