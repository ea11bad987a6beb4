#ifndef TESTS_SUPPORT_VAR_BITS_H_
#define TESTS_SUPPORT_VAR_BITS_H_

#include <malloc.h>
#include <sys/wait.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "VemVar.h"

// Control values looked at from below, for the tests of the class itself.

#ifdef VEM_SANITIZED
constexpr bool kSanitized = true;
#else
constexpr bool kSanitized = false;
#endif

constexpr std::size_t kPayloadOffset = 8;

inline std::int32_t TagAt(const unsigned char* bytes) {
  std::int32_t tag;
  std::memcpy(&tag, bytes, sizeof(tag));
  return tag;
}

inline std::uint64_t PayloadAt(const unsigned char* bytes) {
  std::uint64_t payload;
  std::memcpy(&payload, bytes + kPayloadOffset, sizeof(payload));
  return payload;
}

inline const unsigned char* BytesOf(const VemVar& value) {
  return reinterpret_cast<const unsigned char*>(&value);
}

inline std::uint64_t Payload(const VemVar& value) { return PayloadAt(BytesOf(value)); }

inline std::uint64_t Bits(double value) {
  std::uint64_t bits;
  std::memcpy(&bits, &value, sizeof(bits));
  return bits;
}

inline double FromBits(std::uint64_t bits) {
  double value;
  std::memcpy(&value, &bits, sizeof(value));
  return value;
}

/// The 64 bits of a text's pointer. They are small, so as a double they are a denormal number, and
/// sums of denormals are sums of their bits.
inline std::uint64_t PointerBits(const VemVar& text) {
  return reinterpret_cast<std::uintptr_t>(text.S());
}

/// Whether kind and payload agree. Of a text, as many bytes are read as `expected` has: a sum has
/// no terminator.
inline bool Agree(const VemVar& actual, const VemVar& expected) {
  if (actual.ValType() != expected.ValType()) return false;
  if (actual.ValType() != VemVarString) return Payload(actual) == Payload(expected);
  return std::memcmp(actual.S(), expected.S(), std::strlen(expected.S())) == 0;
}

inline std::string Describe(const VemVar& value) {
  return "kind " + std::to_string(value.ValType()) + ", payload " + std::to_string(Payload(value));
}

constexpr const char* kKinds[] = {"long", "double", "string", "none"};

/// How a process ends by a signal; the sanitizers answer a signal with an exit code of their own.
struct KilledBy {
  int signal;

  bool operator()(int status) const {
    if (kSanitized && WIFEXITED(status)) return WEXITSTATUS(status) != 0;
    return WIFSIGNALED(status) && WTERMSIG(status) == signal;
  }
};

/// The least block among the texts that `make` makes. The allocator may give more than is asked for
/// now and then, but 24 bytes only to who asks for no more.
template <typename Make>
std::size_t LeastBlock(Make make) {
  std::size_t least = SIZE_MAX;
  std::vector<std::unique_ptr<const VemVar>> texts;
  for (int i = 0; i < 100; ++i) {
    texts.emplace_back(make());
    least = std::min(least, malloc_usable_size(const_cast<char*>(texts.back()->S())));
  }
  return least;
}

#endif  // TESTS_SUPPORT_VAR_BITS_H_
