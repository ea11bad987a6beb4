#ifndef TESTS_FINGERPRINTS_NUMBERS_H_
#define TESTS_FINGERPRINTS_NUMBERS_H_

#include <cstddef>
#include <cstdint>
#include <cstring>

/// A 64-bit hash over words, the same on every machine.
class Hash {
 public:
  void Add(std::uint64_t word) {
    value_ = (value_ ^ word) * 0x9E3779B97F4A7C15u;
    value_ ^= value_ >> 32;
  }
  void Add(int number) { Add(static_cast<std::uint64_t>(static_cast<std::int64_t>(number))); }
  /// The bits of a double, so that 0 and -0 differ.
  void Add(double number) {
    std::uint64_t bits;
    std::memcpy(&bits, &number, sizeof(bits));
    Add(bits);
  }
  /// Bytes, eight to a word; what is left over makes a word of its own.
  void Add(const unsigned char* bytes, std::size_t count) {
    for (; count >= 8; bytes += 8, count -= 8) AddWord(bytes, 8);
    if (count > 0) AddWord(bytes, count);
  }

  std::uint64_t Value() const { return value_; }

 private:
  void AddWord(const unsigned char* bytes, std::size_t count) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, count);
    Add(word);
  }

  std::uint64_t value_ = 0xCBF29CE484222325u;
};

/// Random numbers that are the same with every compiler and on every machine: integers, and
/// fractions with a power of two below, which a double holds exactly.
class Numbers {
 public:
  explicit Numbers(std::uint64_t seed) : state_(seed) {}

  /// From `low` to `high`, both included.
  int Between(int low, int high) {
    const std::uint64_t span =
        static_cast<std::uint64_t>(static_cast<std::int64_t>(high) - low) + 1;
    return static_cast<int>(low + static_cast<std::int64_t>(Next() % span));
  }

  /// True once in `count` times.
  bool OneIn(int count) { return Between(1, count) == 1; }

  /// From `low` to `high`: whole in a third of all cases, else a multiple of 1/1024.
  double Fraction(int low, int high) {
    if (OneIn(3)) return Between(low, high);
    return static_cast<double>(Between(low * kUnit, high * kUnit)) / kUnit;
  }

 private:
  static constexpr int kUnit = 1024;

  std::uint64_t Next() {
    state_ += 0x9E3779B97F4A7C15u;
    std::uint64_t mixed = state_;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9u;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBu;
    return mixed ^ (mixed >> 31);
  }

  std::uint64_t state_;
};

#endif  // TESTS_FINGERPRINTS_NUMBERS_H_
