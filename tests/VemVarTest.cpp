#include "VemVar.h"

#include <gtest/gtest.h>
#include <malloc.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <limits>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "support/HeapCounter.h"
#include "support/Support.h"

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kSanitized = true;
#else
constexpr bool kSanitized = false;
#endif

static_assert(VemVarLong == 0 && VemVarDouble == 1 && VemVarString == 2 && VemVarNone == 3,
              "the kinds are numbered");
static_assert(std::is_same_v<std::underlying_type_t<VemVarType>, int>, "a kind has 32 bits");
static_assert(sizeof(VemVar) == 16 && alignof(VemVar) == 8, "a tag and 64 bits");
static_assert(!std::is_polymorphic_v<VemVar>, "a plain value");

static_assert(std::is_convertible_v<long, VemVar> && std::is_convertible_v<int, VemVar> &&
                  std::is_convertible_v<double, VemVar> && std::is_convertible_v<float, VemVar> &&
                  std::is_convertible_v<const char*, VemVar>,
              "values become control values implicitly");
static_assert(std::is_convertible_v<VemVar, double> && std::is_convertible_v<VemVar, long> &&
                  std::is_convertible_v<VemVar, int> && std::is_convertible_v<VemVar, const char*>,
              "control values convert implicitly");
static_assert(!std::is_convertible_v<VemVar, float> && !std::is_convertible_v<VemVar, char*>,
              "F() alone gives a float, and a text is read only");

using Operator = VemVar (VemVar::*)(const VemVar&) const;
using Comparison = bool (VemVar::*)(const VemVar&) const;

static_assert(std::is_same_v<decltype(&VemVar::ValType), int (VemVar::*)() const>);
static_assert(std::is_same_v<decltype(&VemVar::D), double (VemVar::*)() const>);
static_assert(std::is_same_v<decltype(&VemVar::L), long (VemVar::*)() const>);
static_assert(std::is_same_v<decltype(&VemVar::I), int (VemVar::*)() const>);
static_assert(std::is_same_v<decltype(&VemVar::F), float (VemVar::*)() const>);
static_assert(std::is_same_v<decltype(&VemVar::S), const char* (VemVar::*)() const>);
static_assert(std::is_same_v<decltype(&VemVar::operator double), double (VemVar::*)() const>);
static_assert(std::is_same_v<decltype(&VemVar::operator long), long (VemVar::*)() const>);
static_assert(std::is_same_v<decltype(&VemVar::operator int), int (VemVar::*)() const>);
static_assert(
    std::is_same_v<decltype(&VemVar::operator const char*), const char* (VemVar::*)() const>);
static_assert(std::is_same_v<decltype(&VemVar::operator=), VemVar& (VemVar::*)(const VemVar&)>);
static_assert(std::is_same_v<decltype(&VemVar::CopyCtrlVal), void (VemVar::*)(const VemVar&)>);
static_assert(std::is_same_v<decltype(&VemVar::ClearCtrlVal), void (VemVar::*)()>);
static_assert(std::is_same_v<decltype(&VemVar::operator+), Operator>);
static_assert(std::is_same_v<decltype(&VemVar::operator-), Operator>);
static_assert(std::is_same_v<decltype(&VemVar::operator*), Operator>);
static_assert(std::is_same_v<decltype(&VemVar::operator/), Operator>);
static_assert(std::is_same_v<decltype(&VemVar::operator%), Operator>);
static_assert(std::is_same_v<decltype(&VemVar::operator==), Comparison>);
static_assert(std::is_same_v<decltype(&VemVar::operator!=), Comparison>);

template <typename T, typename = void>
struct HasOrder : std::false_type {};
template <typename T>
struct HasOrder<T, std::void_t<decltype(std::declval<T&>() < std::declval<T&>())>>
    : std::true_type {};
template <typename T, typename = void>
struct HasCompoundSum : std::false_type {};
template <typename T>
struct HasCompoundSum<T, std::void_t<decltype(std::declval<T&>() += std::declval<T&>())>>
    : std::true_type {};
template <typename T, typename = void>
struct HasNegation : std::false_type {};
template <typename T>
struct HasNegation<T, std::void_t<decltype(-std::declval<T&>())>> : std::true_type {};

static_assert(HasOrder<int>::value && HasCompoundSum<int>::value && HasNegation<int>::value);
static_assert(!HasOrder<VemVar>::value, "values have no order");
static_assert(!HasCompoundSum<VemVar>::value && !HasNegation<VemVar>::value,
              "two operands, and a result by value");

constexpr std::size_t kPayloadOffset = 8;

std::int32_t TagAt(const unsigned char* bytes) {
  std::int32_t tag;
  std::memcpy(&tag, bytes, sizeof(tag));
  return tag;
}

std::uint64_t PayloadAt(const unsigned char* bytes) {
  std::uint64_t payload;
  std::memcpy(&payload, bytes + kPayloadOffset, sizeof(payload));
  return payload;
}

const unsigned char* BytesOf(const VemVar& value) {
  return reinterpret_cast<const unsigned char*>(&value);
}

std::uint64_t Payload(const VemVar& value) { return PayloadAt(BytesOf(value)); }

std::uint64_t Bits(double value) {
  std::uint64_t bits;
  std::memcpy(&bits, &value, sizeof(bits));
  return bits;
}

double FromBits(std::uint64_t bits) {
  double value;
  std::memcpy(&value, &bits, sizeof(value));
  return value;
}

/// The 64 bits of a text's pointer. They are small, so as a double they are a denormal number, and
/// sums of denormals are sums of their bits.
std::uint64_t PointerBits(const VemVar& text) { return reinterpret_cast<std::uintptr_t>(text.S()); }

/// Whether kind and payload agree. Of a text, as many bytes are read as `expected` has: a sum has
/// no terminator.
bool Agree(const VemVar& actual, const VemVar& expected) {
  if (actual.ValType() != expected.ValType()) return false;
  if (actual.ValType() != VemVarString) return Payload(actual) == Payload(expected);
  return std::memcmp(actual.S(), expected.S(), std::strlen(expected.S())) == 0;
}

std::string Describe(const VemVar& value) {
  return "kind " + std::to_string(value.ValType()) + ", payload " + std::to_string(Payload(value));
}

/// How a process ends by a signal; the sanitizers answer a signal with an exit code of their own.
struct KilledBy {
  int signal;

  bool operator()(int status) const {
    if (kSanitized && WIFEXITED(status)) return WEXITSTATUS(status) != 0;
    return WIFSIGNALED(status) && WTERMSIG(status) == signal;
  }
};

const char* const kKinds[] = {"long", "double", "string", "none"};

/// Calls `check` for every pair of kinds.
template <typename Check>
void ForEachPair(const VemVar (&left)[4], const VemVar (&right)[4], Check check) {
  for (int l = 0; l < 4; ++l) {
    for (int r = 0; r < 4; ++r) {
      SCOPED_TRACE(std::string(kKinds[l]) + " and " + kKinds[r]);
      const VemVar& a = left[l];
      const VemVar& b = right[r];
      ASSERT_EQ(a.ValType(), l);
      ASSERT_EQ(b.ValType(), r);
      check(a, b, l, r);
    }
  }
}

/// An operator on every pair of kinds. An empty cell is a division fault.
void CheckTable(Operator op, const VemVar (&left)[4], const VemVar (&right)[4],
                const std::optional<VemVar> (&expected)[4][4]) {
  ForEachPair(left, right, [&](const VemVar& a, const VemVar& b, int l, int r) {
    if (!expected[l][r]) {
      EXPECT_EXIT((a.*op)(b), KilledBy{SIGFPE}, "");
      return;
    }
    const std::uint64_t payloads[] = {Payload(a), Payload(b)};
    const VemVar result = (a.*op)(b);
    EXPECT_TRUE(Agree(result, *expected[l][r]))
        << Describe(result) << " instead of " << Describe(*expected[l][r]);
    EXPECT_EQ(Payload(a), payloads[0]);
    EXPECT_EQ(Payload(b), payloads[1]);
  });
}

void CheckTable(Comparison comparison, const VemVar (&left)[4], const VemVar (&right)[4],
                const bool (&expected)[4][4]) {
  ForEachPair(left, right, [&](const VemVar& a, const VemVar& b, int l, int r) {
    EXPECT_EQ((a.*comparison)(b), expected[l][r]);
  });
}

// Construction

TEST(VemVar, DefaultIsNoneWithZeroPayload) {
  alignas(VemVar) unsigned char bytes[sizeof(VemVar)];
  std::memset(bytes, 0xFF, sizeof(bytes));
  const VemVar* none = new (bytes) VemVar();
  EXPECT_EQ(none->ValType(), 3);
  EXPECT_EQ(TagAt(bytes), 3);
  EXPECT_EQ(PayloadAt(bytes), 0u);
  none->~VemVar();
}

TEST(VemVar, TagStandsBeforePayload) {
  const struct {
    const char* name;
    VemVar value;
    std::int32_t tag;
    std::uint64_t payload;
  } cases[] = {
      {"Long", VemVar(0x0123456789ABCDEFL), 0, 0x0123456789ABCDEF},
      {"LongSmallest", VemVar(LONG_MIN), 0, 0x8000000000000000},
      {"IntMinusOne", VemVar(-1), 0, 0xFFFFFFFFFFFFFFFF},
      {"IntSmallest", VemVar(INT_MIN), 0, 0xFFFFFFFF80000000},
      {"IntLargest", VemVar(INT_MAX), 0, 0x000000007FFFFFFF},
      {"DoubleTwo", VemVar(2.0), 1, 0x4000000000000000},
      {"DoubleMinusZero", VemVar(-0.0), 1, 0x8000000000000000},
      {"FloatWidened", VemVar(0.1f), 1, 0x3FB99999A0000000},
      {"None", VemVar(), 3, 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(c.value.ValType(), c.tag);
    EXPECT_EQ(TagAt(BytesOf(c.value)), c.tag);
    EXPECT_EQ(Payload(c.value), c.payload);
  }
  const VemVar text("text");
  EXPECT_EQ(TagAt(BytesOf(text)), 2);
  EXPECT_EQ(Payload(text), PointerBits(text));
}

TEST(VemVar, NumbersKeepTheirValue) {
  EXPECT_EQ(VemVar(2.5f).ValType(), 1);
  EXPECT_EQ(VemVar(2.5f).D(), 2.5);
  EXPECT_EQ(VemVar(-1).ValType(), 0);
  EXPECT_EQ(VemVar(-1).L(), -1L);
  EXPECT_EQ(VemVar(1L << 40).L(), 1099511627776L);
  EXPECT_EQ(VemVar(-1.25).D(), -1.25);
}

TEST(VemVar, TextIsCopiedIntoItsOwnBlock) {
  char source[] = "caller";
  const VemVar value(source);
  EXPECT_EQ(value.ValType(), 2);
  EXPECT_NE(value.S(), source);
  source[0] = 'X';
  EXPECT_STREQ(value.S(), "caller");
  EXPECT_STREQ(VemVar("").S(), "");
  EXPECT_STREQ(VemVar("\xFF\x80 bytes").S(), "\xFF\x80 bytes");
  EXPECT_STREQ(VemVar("cut\0off").S(), "cut");
}

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

TEST(VemVar, TextBlockHoldsTextAndTerminator) {
  const char text[] = "twenty-three characters";
  static_assert(sizeof(text) == 24);
  const VemVar value(text);
  EXPECT_EQ(LeastBlock([&text] { return new VemVar(text); }), 24u);
  EXPECT_EQ(LeastBlock([&value] { return new VemVar(value); }), 24u);
  EXPECT_EQ(std::memcmp(value.S(), text, 24), 0);
  EXPECT_EQ(std::memcmp(VemVar(value).S(), text, 24), 0);
}

TEST(VemVar, NullTextFaults) {
  const char* volatile null = nullptr;
  EXPECT_DEATH(VemVar(static_cast<const char*>(null)), "");
}

// Readers

TEST(VemVar, LongReadAsOtherNumbers) {
  const struct {
    const char* name;
    long value;
    double d;
    int i;
    float f;
  } cases[] = {
      {"Zero", 0, 0.0, 0, 0.0f},
      {"MinusOne", -1, -1.0, -1, -1.0f},
      {"TwoToThe40", 1L << 40, 1099511627776.0, 0, 1099511627776.0f},
      {"LowBitsAreKept", 0x123456789L, 4886718345.0, 0x23456789, 4886718464.0f},
      {"LowBitsTurnNegative", 0x1FFFFFFFFL, 8589934591.0, -1, 8589934592.0f},
      {"LowBitsTurnSmallest", 0x180000000L, 6442450944.0, INT_MIN, 6442450944.0f},
      {"Largest", LONG_MAX, 9223372036854775808.0, -1, 9223372036854775808.0f},
      {"Smallest", LONG_MIN, -9223372036854775808.0, 0, -9223372036854775808.0f},
      {"DoubleRoundsToEven", (1L << 53) + 1, 9007199254740992.0, 1, 9007199254740992.0f},
      // Through a double the last bit is lost, and the tie goes down to 2 to the power 60.
      {"FloatRoundsOnce", (1L << 60) + (1L << 36) + 1, 1152921573326323712.0, 1,
       1152921642045800448.0f},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const VemVar value(c.value);
    EXPECT_EQ(value.D(), c.d);
    EXPECT_EQ(value.L(), c.value);
    EXPECT_EQ(value.I(), c.i);
    EXPECT_EQ(value.F(), c.f);
    EXPECT_EQ(static_cast<double>(value), c.d);
    EXPECT_EQ(static_cast<long>(value), c.value);
    EXPECT_EQ(static_cast<int>(value), c.i);
  }
}

TEST(VemVar, DoubleReadAsOtherNumbers) {
  const float infinity = std::numeric_limits<float>::infinity();
  const struct {
    const char* name;
    double value;
    long l;
    int i;
    float f;
  } cases[] = {
      {"TruncatedDown", 3.99, 3, 3, 3.99f},
      {"TruncatedUp", -3.99, -3, -3, -3.99f},
      {"AlmostMinusOne", -0.999, 0, 0, -0.999f},
      {"MinusZero", -0.0, 0, 0, -0.0f},
      {"RoundedToFloat", 0.1, 0, 0, 0.1f},
      {"TooSmallForFloat", 1e-300, 0, 0, 0.0f},
      {"LargestInt", 2147483647.75, 2147483647, 2147483647, 2147483648.0f},
      {"AboveInt", 2147483648.0, 2147483648, INT_MIN, 2147483648.0f},
      {"SmallestInt", -2147483648.75, -2147483648, INT_MIN, -2147483648.0f},
      {"BelowInt", -2147483649.0, -2147483649, INT_MIN, -2147483648.0f},
      {"NotThroughLong", 4294967301.0, 4294967301, INT_MIN, 4294967296.0f},
      {"LargestBelowLong", 9223372036854774784.0, 9223372036854774784, INT_MIN,
       9223372036854775808.0f},
      {"AboveLong", 9223372036854775808.0, LONG_MIN, INT_MIN, 9223372036854775808.0f},
      {"SmallestLong", -9223372036854775808.0, LONG_MIN, INT_MIN, -9223372036854775808.0f},
      {"BelowLong", -1e19, LONG_MIN, INT_MIN, -1e19f},
      {"AboveFloat", 1e300, LONG_MIN, INT_MIN, infinity},
      {"Infinity", kInfinity, LONG_MIN, INT_MIN, infinity},
      {"MinusInfinity", -kInfinity, LONG_MIN, INT_MIN, -infinity},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const VemVar value(c.value);
    EXPECT_EQ(Bits(value.D()), Bits(c.value));
    EXPECT_EQ(value.L(), c.l);
    EXPECT_EQ(value.I(), c.i);
    EXPECT_EQ(value.F(), c.f);
    EXPECT_EQ(static_cast<double>(value), c.value);
    EXPECT_EQ(static_cast<long>(value), c.l);
    EXPECT_EQ(static_cast<int>(value), c.i);
  }
}

TEST(VemVar, ConstantsOutOfRangeGiveSmallestInteger) {
  EXPECT_EQ(VemVar(kNaN).I(), INT_MIN);
  EXPECT_EQ(VemVar(kNaN).L(), LONG_MIN);
  EXPECT_EQ(VemVar(-kNaN).I(), INT_MIN);
  EXPECT_EQ(VemVar(-kNaN).L(), LONG_MIN);
  EXPECT_EQ(VemVar(kInfinity).I(), INT_MIN);
  EXPECT_EQ(VemVar(kInfinity).L(), LONG_MIN);
  EXPECT_EQ(VemVar(-kInfinity).I(), INT_MIN);
  EXPECT_EQ(VemVar(-kInfinity).L(), LONG_MIN);
  EXPECT_EQ(VemVar(1e10).I(), INT_MIN);
  EXPECT_EQ(VemVar(1e20).L(), LONG_MIN);
  EXPECT_EQ(VemVar(std::numeric_limits<float>::infinity()).I(), INT_MIN);
  EXPECT_TRUE(std::isnan(VemVar(kNaN).F()));
  EXPECT_TRUE(std::isnan(VemVar(kNaN).D()));
  const int fromNaN = VemVar(kNaN);
  const long fromInfinity = VemVar(kInfinity);
  EXPECT_EQ(fromNaN, INT_MIN);
  EXPECT_EQ(fromInfinity, LONG_MIN);
}

TEST(VemVar, ReadersOfWrongKindGiveNothing) {
  const struct {
    const char* name;
    VemVar value;
    bool isNumber;
  } cases[] = {
      {"Long", VemVar(65L), true},
      {"Double", VemVar(65.5), true},
      {"String", VemVar("65"), false},
      {"None", VemVar(), false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const int kind = c.value.ValType();
    const std::uint64_t payload = Payload(c.value);
    if (!c.isNumber) {
      EXPECT_EQ(Bits(c.value.D()), Bits(0.0));
      EXPECT_EQ(c.value.L(), 0L);
      EXPECT_EQ(c.value.I(), 0);
      EXPECT_EQ(c.value.F(), 0.0f);
      EXPECT_EQ(static_cast<double>(c.value), 0.0);
      EXPECT_EQ(static_cast<long>(c.value), 0L);
      EXPECT_EQ(static_cast<int>(c.value), 0);
    }
    if (kind != VemVarString) {
      EXPECT_STREQ(c.value.S(), "");
      EXPECT_STREQ(static_cast<const char*>(c.value), "");
    }
    EXPECT_EQ(c.value.ValType(), kind);
    EXPECT_EQ(Payload(c.value), payload);
  }
}

TEST(VemVar, TextReaderGivesTheBlockItself) {
  const VemVar value("text");
  EXPECT_EQ(value.S(), value.S());
  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(value.S()), Payload(value));
  EXPECT_EQ(static_cast<const char*>(value), value.S());
}

// Copying

TEST(VemVar, CopyHasItsOwnText) {
  std::optional<VemVar> source("text");
  const VemVar copy(*source);
  const VemVar second(copy);
  EXPECT_EQ(copy.ValType(), VemVarString);
  EXPECT_NE(copy.S(), source->S());
  EXPECT_NE(second.S(), copy.S());
  source.reset();
  EXPECT_STREQ(copy.S(), "text");
  EXPECT_STREQ(second.S(), "text");
}

TEST(VemVar, CopyOfNumberKeepsEveryBit) {
  const std::uint64_t signallingNaN = 0x7FF0000000000001;
  EXPECT_EQ(Payload(VemVar(VemVar(FromBits(signallingNaN)))), signallingNaN);
  EXPECT_EQ(Payload(VemVar(VemVar(-0.0))), 0x8000000000000000);
  EXPECT_EQ(VemVar(VemVar(LONG_MIN)).L(), LONG_MIN);
}

TEST(VemVar, AssignmentTurnsEachKindIntoEach) {
  const VemVar sources[] = {7L, -0.5, "a longer text", VemVar()};
  const VemVar targets[] = {99L, 1e300, "short", VemVar()};
  for (const VemVar& source : sources) {
    for (const VemVar& target : targets) {
      SCOPED_TRACE(std::string(kKinds[target.ValType()]) + " becomes " + kKinds[source.ValType()]);
      VemVar assigned(target);
      VemVar copied(target);
      EXPECT_EQ(&(assigned = source), &assigned);
      copied.CopyCtrlVal(source);
      EXPECT_TRUE(Agree(assigned, source));
      EXPECT_TRUE(Agree(copied, source));
      if (source.ValType() != VemVarString) continue;
      EXPECT_NE(assigned.S(), source.S());
      EXPECT_NE(copied.S(), source.S());
      EXPECT_STREQ(assigned.S(), "a longer text");
      EXPECT_STREQ(copied.S(), "a longer text");
    }
  }
}

TEST(VemVar, NoneHasZeroPayloadAfterAnyCopy) {
  const VemVar none;
  for (const VemVar& before : {VemVar(-1L), VemVar(-2.5), VemVar("text"), VemVar()}) {
    VemVar value(before);
    value = none;
    EXPECT_EQ(value.ValType(), VemVarNone);
    EXPECT_EQ(Payload(value), 0u);
  }
  alignas(VemVar) unsigned char bytes[sizeof(VemVar)];
  std::memset(bytes, 0xFF, sizeof(bytes));
  const VemVar* copy = new (bytes) VemVar(none);
  EXPECT_EQ(TagAt(bytes), 3);
  EXPECT_EQ(PayloadAt(bytes), 0u);
  copy->~VemVar();
}

// Nothing guards a text from being assigned to itself: its block is released before it is read. A
// sanitizer would end the process.
TEST(VemVar, TextAssignedToItselfIsReadAfterItsRelease) {
  if (!HeapCounter::kCounts) GTEST_SKIP() << "no blocks are counted";
  VemVar value("text");
  const VemVar& alias = value;
  const HeapCounter assigned;
  value = alias;
  EXPECT_EQ(assigned.Taken(), 1);
  EXPECT_EQ(assigned.Kept(), 0);
  const HeapCounter copied;
  value.CopyCtrlVal(alias);
  EXPECT_EQ(copied.Taken(), 1);
  EXPECT_EQ(copied.Kept(), 0);
}

TEST(VemVar, NumberMayBeAssignedToItself) {
  VemVar values[] = {7L, -0.5, VemVar()};
  const VemVar expected[] = {7L, -0.5, VemVar()};
  for (int i = 0; i < 3; ++i) {
    const VemVar& alias = values[i];
    values[i] = alias;
    EXPECT_TRUE(Agree(values[i], expected[i])) << i;
  }
}

TEST(VemVar, ClearKeepsTagAndPayload) {
  VemVar numbers[] = {7L, -0.5, VemVar()};
  const VemVar expected[] = {7L, -0.5, VemVar()};
  for (int i = 0; i < 3; ++i) {
    numbers[i].ClearCtrlVal();
    EXPECT_TRUE(Agree(numbers[i], expected[i])) << i;
  }

  // A cleared text must not be touched again, so it is left without destruction.
  alignas(VemVar) unsigned char bytes[sizeof(VemVar)];
  VemVar* text = new (bytes) VemVar("text");
  const std::uint64_t pointer = PayloadAt(bytes);
  text->ClearCtrlVal();
  EXPECT_EQ(TagAt(bytes), 2);
  EXPECT_EQ(PayloadAt(bytes), pointer);
}

TEST(VemVar, NullBlockIsNotReleased) {
  const std::int32_t tag = VemVarString;
  for (const VemVar& source : {VemVar(5L), VemVar("text")}) {
    VemVar value;
    std::memcpy(reinterpret_cast<unsigned char*>(&value), &tag, sizeof(tag));
    value.ClearCtrlVal();
    EXPECT_EQ(value.ValType(), VemVarString);
    value = source;
    EXPECT_TRUE(Agree(value, source));
  }
}

// Bytes of the heap in use, as the C library counts them.
std::size_t HeapInUse() {
#if __GLIBC_PREREQ(2, 33)
  const struct mallinfo2 info = mallinfo2();
#else  // Counts in int, which is enough for the differences that are asked for.
  const struct mallinfo info = mallinfo();
#endif
  return static_cast<std::size_t>(info.uordblks) + static_cast<std::size_t>(info.hblkhd);
}

// Valgrind and the sanitizers have a heap of their own.
bool HeapIsCounted() {
  const std::size_t before = HeapInUse();
  const std::vector<char> block(1 << 20, 'x');
  return HeapInUse() >= before + block.size();
}

TEST(VemVar, NumbersTakeNoHeap) {
  if (!HeapIsCounted()) GTEST_SKIP() << "the heap is not counted";
  const std::size_t before = HeapInUse();
  {
    const VemVar values[] = {1L, 1, 2.5, 2.5f, VemVar()};
    VemVar copies[100];
    for (int i = 0; i < 100; ++i) copies[i] = values[i % 5];
    EXPECT_EQ(HeapInUse(), before);
  }
  EXPECT_EQ(HeapInUse(), before);
}

TEST(VemVar, OldTextIsReleased) {
  if (!HeapIsCounted()) GTEST_SKIP() << "the heap is not counted";
  const std::string text(1 << 20, 'x');
  const std::size_t before = HeapInUse();
  const std::size_t some = text.size() / 2;

  VemVar value(text.c_str());
  EXPECT_GE(HeapInUse(), before + text.size());
  value = VemVar(1L);
  EXPECT_LT(HeapInUse(), before + some) << "assignment";

  alignas(VemVar) unsigned char bytes[sizeof(VemVar)];
  (new (bytes) VemVar(text.c_str()))->ClearCtrlVal();
  EXPECT_LT(HeapInUse(), before + some) << "ClearCtrlVal";

  { const VemVar local(text.c_str()); }
  EXPECT_LT(HeapInUse(), before + some) << "destructor";
  { const VemVar sum = VemVar(text.c_str()) + VemVar(text.c_str()); }
  EXPECT_LT(HeapInUse(), before + some) << "sum";
}

template <typename Operation>
bool Throws(Operation operation) {
  try {
    operation();
  } catch (const std::bad_alloc&) {
    return true;
  }
  return false;
}

/// Ends the process, with 0 if every operation that needs a large block lets the allocator's
/// exception pass.
[[noreturn]] void ExitOutOfMemory(const VemVar& value) {
  VemVar target;
  std::ifstream file("/proc/self/statm");
  rlim_t pages = 0;
  file >> pages;
  const rlim_t limit = pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE)) + (1 << 20);
  const rlimit limits = {limit, limit};
  if (pages == 0 || setrlimit(RLIMIT_AS, &limits) != 0) std::_Exit(1);
  if (!Throws([&] { const VemVar text(value.S()); })) std::_Exit(2);
  if (!Throws([&] { const VemVar copy(value); })) std::_Exit(3);
  if (!Throws([&] { target = value; })) std::_Exit(4);
  if (!Throws([&] { const VemVar sum = value + value; })) std::_Exit(5);
  // The old text is released once, not again with its owner.
  const auto replaceText = [&] {
    VemVar old("old");
    old = value;
  };
  if (!Throws(replaceText)) std::_Exit(6);
  std::_Exit(0);
}

TEST(VemVar, FailedAllocationPassesOut) {
  if (kSanitized) GTEST_SKIP() << "a sanitizer needs address space of its own";
  if (!HeapIsCounted()) GTEST_SKIP() << "the address space is not this process's own";
  const VemVar value(std::string(64 << 20, 'x').c_str());
  EXPECT_EXIT(ExitOutOfMemory(value), testing::ExitedWithCode(0), "");
}

// Arithmetic. In the second operand set of a sum or a difference the numbers are 0 or denormal, so
// that the raw bits of a pointer are not rounded away.

TEST(VemVar, SumOfEachPairOfKinds) {
  const VemVar none;
  const VemVar left[4] = {17L, -2.5, "left", none};
  const VemVar right[4] = {5L, 0.5, "right", none};
  CheckTable(&VemVar::operator+, left, right,
             {
                 {22L, 17.5, 17.0, none},
                 {2.5, -2.0, -2.5, none},
                 {5.0, 0.5, "leftright", none},
                 {none, none, none, none},
             });
}

TEST(VemVar, SumReadsPointersRaw) {
  const VemVar none;
  const VemVar left[4] = {0L, FromBits(1), "left", none};
  const VemVar right[4] = {0L, FromBits(2), "right", none};
  const std::uint64_t l = PointerBits(left[2]);
  const std::uint64_t r = PointerBits(right[2]);
  CheckTable(&VemVar::operator+, left, right,
             {
                 {0L, FromBits(2), FromBits(r), none},
                 {FromBits(1), FromBits(3), FromBits(r + 1), none},
                 {FromBits(l), FromBits(l + 2), "leftright", none},
                 {none, none, none, none},
             });
}

TEST(VemVar, DifferenceOfEachPairOfKinds) {
  const VemVar none;
  const VemVar left[4] = {17L, -2.5, "left", none};
  const VemVar right[4] = {5L, 0.5, "right", none};
  CheckTable(&VemVar::operator-, left, right,
             {
                 {12L, none, 17.0, 17.0},
                 {-7.5, none, -2.5, -2.5},
                 {none, none, none, none},
                 {none, none, none, none},
             });
}

TEST(VemVar, DifferenceReadsPointersRaw) {
  constexpr std::uint64_t kSign = 0x8000000000000000;
  const VemVar none;
  const VemVar left[4] = {0L, FromBits(1), "left", none};
  const VemVar right[4] = {0L, FromBits(2), "right", none};
  const std::uint64_t r = PointerBits(right[2]);
  CheckTable(&VemVar::operator-, left, right,
             {
                 {0L, none, FromBits(kSign | r), 0.0},
                 {FromBits(1), none, FromBits(kSign | (r - 1)), FromBits(1)},
                 {none, none, none, none},
                 {none, none, none, none},
             });
}

TEST(VemVar, DifferenceRefusesDoubleOnTheRightOnly) {
  EXPECT_EQ((VemVar(5.0) - VemVar(1.5)).ValType(), VemVarNone);
  EXPECT_EQ((VemVar(5L) - VemVar(1.5)).ValType(), VemVarNone);
  EXPECT_TRUE(Agree(VemVar(5L) - VemVar(), VemVar(5.0)));
  EXPECT_EQ((VemVar(2L) - VemVar("x")).ValType(), VemVarDouble);
  EXPECT_EQ((VemVar(2L) + VemVar("x")).ValType(), VemVarDouble);
  EXPECT_EQ((VemVar(2L) * VemVar("x")).ValType(), VemVarNone);
}

TEST(VemVar, ProductOfEachPairOfKinds) {
  const VemVar none;
  const VemVar left[4] = {17L, -2.5, "left", none};
  const VemVar right[4] = {5L, 0.5, "right", none};
  CheckTable(&VemVar::operator*, left, right,
             {
                 {85L, 8.5, none, none},
                 {-12.5, -1.25, none, none},
                 {none, none, none, none},
                 {none, none, none, none},
             });
}

TEST(VemVar, QuotientOfEachPairOfKinds) {
  const VemVar none;
  const VemVar left[4] = {17L, -2.5, "left", none};
  const VemVar right[4] = {5L, 0.5, "right", none};
  CheckTable(&VemVar::operator/, left, right,
             {
                 {3L, 34.0, none, none},
                 {-0.5, -5.0, none, none},
                 {none, none, none, none},
                 {none, none, none, none},
             });
}

TEST(VemVar, RemainderOfEachPairOfKinds) {
  const VemVar none;
  const VemVar left[4] = {LONG_MAX, -2.75, "left", none};
  const VemVar right[4] = {5L, 0.5, "right", none};
  // The bits of -2.75 are the integer -4609997168567123968, those of 0.5 are 4602678819172646912.
  const auto l = static_cast<long>(PointerBits(left[2]));
  const auto r = static_cast<long>(PointerBits(right[2]));
  CheckTable(&VemVar::operator%, left, right,
             {
                 {2L, 18014398509481983L, LONG_MAX % r, std::nullopt},
                 {-3L, none, none, none},
                 {l % 5, none, none, none},
                 {0L, none, none, none},
             });
}

TEST(VemVar, RemainderTakesBitsOfDoubles) {
  EXPECT_TRUE(Agree(VemVar(7L) % VemVar(2.0), VemVar(7L)));
  EXPECT_TRUE(Agree(VemVar(7.5) % VemVar(2L), VemVar(0L)));
  EXPECT_TRUE(Agree(VemVar(7.0) % VemVar(2.0), VemVar()));
  EXPECT_TRUE(Agree(VemVar(4611686018427387904L) % VemVar(2.0), VemVar(0L)));
  EXPECT_TRUE(Agree(VemVar(FromBits(13)) % VemVar(5L), VemVar(3L)));
  EXPECT_TRUE(Agree(VemVar() % VemVar(5L), VemVar(0L)));
}

TEST(VemVar, IntegerDivisionTruncatesTowardZero) {
  const struct {
    const char* name;
    long dividend;
    long divisor;
    long quotient;
    long remainder;
  } cases[] = {
      {"BothPositive", 7, 2, 3, 1},
      {"NegativeDividend", -7, 2, -3, -1},
      {"NegativeDivisor", 7, -2, -3, 1},
      {"BothNegative", -7, -2, 3, -1},
      {"ZeroDividend", 0, 5, 0, 0},
      {"LargestByOne", LONG_MAX, -1, -LONG_MAX, 0},
      {"SmallestByOne", LONG_MIN, 1, LONG_MIN, 0},
      {"SmallestByTwo", LONG_MIN, 2, -4611686018427387904, 0},
      {"SmallestByItself", LONG_MIN, LONG_MIN, 1, 0},
      {"BeyondDoubles", (1L << 53) + 1, 1, (1L << 53) + 1, 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_TRUE(Agree(VemVar(c.dividend) / VemVar(c.divisor), VemVar(c.quotient)));
    EXPECT_TRUE(Agree(VemVar(c.dividend) % VemVar(c.divisor), VemVar(c.remainder)));
  }
}

TEST(VemVar, IntegersWrap) {
  const VemVar largest(LONG_MAX);
  const VemVar smallest(LONG_MIN);
  EXPECT_TRUE(Agree(largest + VemVar(1L), smallest));
  EXPECT_TRUE(Agree(smallest + VemVar(-1L), largest));
  EXPECT_TRUE(Agree(smallest - VemVar(1L), largest));
  EXPECT_TRUE(Agree(VemVar(0L) - smallest, smallest));
  EXPECT_TRUE(Agree(largest * VemVar(2L), VemVar(-2L)));
  EXPECT_TRUE(Agree(smallest * VemVar(-1L), smallest));
  EXPECT_TRUE(Agree(VemVar((1L << 32) + 3) * VemVar((1L << 32) + 5), VemVar((8L << 32) + 15)));
}

// A long is converted before the operation, with its own rounding.
TEST(VemVar, LongWithDoubleIsADouble) {
  const VemVar odd((1L << 53) + 1);
  const double even = 9007199254740992.0;
  EXPECT_TRUE(Agree(odd + VemVar(0.0), VemVar(even)));
  EXPECT_TRUE(Agree(VemVar(0.0) + odd, VemVar(even)));
  EXPECT_TRUE(Agree(VemVar(0.0) - odd, VemVar(-even)));
  EXPECT_TRUE(Agree(odd - VemVar(), VemVar(even)));
  EXPECT_TRUE(Agree(odd * VemVar(1.0), VemVar(even)));
  EXPECT_TRUE(Agree(odd / VemVar(1.0), VemVar(even)));
  EXPECT_TRUE(Agree(VemVar(1.0) / odd, VemVar(1.0 / even)));
  EXPECT_TRUE(Agree(VemVar(0.1) + VemVar(0.2), VemVar(0.30000000000000004)));
}

TEST(VemVar, DoubleDivisionByZeroIsNoFault) {
  const VemVar zeros[] = {0.0, 0L};
  for (const VemVar& zero : zeros) {
    SCOPED_TRACE(kKinds[zero.ValType()]);
    EXPECT_TRUE(Agree(VemVar(1.0) / zero, VemVar(kInfinity)));
    EXPECT_TRUE(Agree(VemVar(-1.0) / zero, VemVar(-kInfinity)));
    const VemVar undefined = VemVar(0.0) / zero;
    EXPECT_EQ(undefined.ValType(), VemVarDouble);
    EXPECT_TRUE(std::isnan(undefined.D()));
  }
  EXPECT_TRUE(Agree(VemVar(1L) / VemVar(0.0), VemVar(kInfinity)));
  EXPECT_TRUE(Agree(VemVar(1L) / VemVar(-0.0), VemVar(-kInfinity)));
  EXPECT_TRUE(std::isnan((VemVar(0L) / VemVar(0.0)).D()));
}

TEST(VemVar, IntegerDivisionFaults) {
  const struct {
    const char* name;
    Operator op;
    VemVar left;
    VemVar right;
  } cases[] = {
      {"QuotientByZero", &VemVar::operator/, 1L, 0L},
      {"QuotientOfZeros", &VemVar::operator/, 0L, 0L},
      {"QuotientOfSmallest", &VemVar::operator/, LONG_MIN, -1L},
      {"RemainderByZero", &VemVar::operator%, 1L, 0L},
      {"RemainderOfSmallest", &VemVar::operator%, LONG_MIN, -1L},
      {"RemainderByNone", &VemVar::operator%, 1L, VemVar()},
      {"RemainderByZeroBits", &VemVar::operator%, 1L, 0.0},
      {"RemainderOfDoubleByZero", &VemVar::operator%, 1.0, 0L},
      {"RemainderOfTextByZero", &VemVar::operator%, "text", 0L},
      {"RemainderOfNoneByZero", &VemVar::operator%, VemVar(), 0L},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EXIT((c.left.*c.op)(c.right), KilledBy{SIGFPE}, "");
  }
}

TEST(VemVar, SumOfTextsHasTheirBytesAlone) {
  const VemVar left("ab");
  const VemVar right("cd");
  const VemVar sum = left + right;
  EXPECT_EQ(sum.ValType(), VemVarString);
  EXPECT_EQ(std::memcmp(sum.S(), "abcd", 4), 0);
  EXPECT_NE(sum.S(), left.S());
  EXPECT_NE(sum.S(), right.S());
  EXPECT_STREQ(left.S(), "ab");
  EXPECT_STREQ(right.S(), "cd");

  EXPECT_TRUE(Agree(VemVar("") + VemVar("cd"), VemVar("cd")));
  EXPECT_TRUE(Agree(VemVar("ab") + VemVar(""), VemVar("ab")));
  EXPECT_TRUE(Agree(left + left, VemVar("abab")));
  EXPECT_EQ((VemVar("") + VemVar("")).ValType(), VemVarString);
}

TEST(VemVar, SumOfTextsHasNoRoomForATerminator) {
  const VemVar left("twelve bytes");
  const VemVar right("and 12 more.");
  EXPECT_EQ(std::memcmp((left + right).S(), "twelve bytesand 12 more.", 24), 0);
  EXPECT_EQ(LeastBlock([&] { return new VemVar(left + right); }), 24u);
}

// Comparison

TEST(VemVar, EqualPayloadsOfEachPairOfKinds) {
  const VemVar left[4] = {1L, 1.0, "1", VemVar()};
  const VemVar right[4] = {1L, 1.0, "1", VemVar()};
  CheckTable(&VemVar::operator==, left, right,
             {
                 {true, true, false, false},
                 {true, true, false, false},
                 {false, false, true, false},
                 {false, false, false, false},
             });
  CheckTable(&VemVar::operator!=, left, right, {});
}

TEST(VemVar, DifferentPayloadsOfEachPairOfKinds) {
  const VemVar left[4] = {1L, 1.0, "1", VemVar()};
  const VemVar right[4] = {2L, 2.0, "2", VemVar()};
  CheckTable(&VemVar::operator==, left, right, {});
  CheckTable(&VemVar::operator!=, left, right,
             {
                 {true, true, false, false},
                 {true, true, false, false},
                 {false, false, true, false},
                 {false, false, false, false},
             });
}

// All payloads are zero bits, and still only numbers are equal.
TEST(VemVar, ZeroIsNotNone) {
  const VemVar zeros[4] = {0L, 0.0, "", VemVar()};
  CheckTable(&VemVar::operator==, zeros, zeros,
             {
                 {true, true, false, false},
                 {true, true, false, false},
                 {false, false, true, false},
                 {false, false, false, false},
             });
  CheckTable(&VemVar::operator!=, zeros, zeros, {});
}

struct ComparisonCase {
  const char* name;
  VemVar left;
  VemVar right;
  bool equal;
};

void CheckOpposites(const std::vector<ComparisonCase>& cases) {
  for (const ComparisonCase& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(c.left == c.right, c.equal);
    EXPECT_EQ(c.right == c.left, c.equal);
    EXPECT_EQ(c.left != c.right, !c.equal);
    EXPECT_EQ(c.right != c.left, !c.equal);
  }
}

TEST(VemVar, NumbersCompareByValue) {
  const long odd = (1L << 53) + 1;
  const double even = 9007199254740992.0;
  CheckOpposites({
      {"LongsAsIntegers", odd, odd - 1, false},
      {"LongOddWithDouble", odd, even, true},
      {"LongEvenWithDouble", odd - 1, even, true},
      {"LongFartherWithDouble", odd + 1, even, false},
      {"LargestLong", LONG_MAX, 9223372036854775808.0, true},
      {"SmallestLong", LONG_MIN, -9223372036854775808.0, true},
      {"FractionIsNotCut", 3L, 3.5, false},
      {"ZerosOfBothSigns", 0.0, -0.0, true},
      {"LongAndMinusZero", 0L, -0.0, true},
      {"FloatIsWidened", 0.1f, 0.1, false},
      {"Infinities", kInfinity, kInfinity, true},
      {"NotANumberWithItself", kNaN, kNaN, false},
      {"NotANumberWithDouble", kNaN, 0.0, false},
      {"NotANumberWithLong", kNaN, 0L, false},
      {"NotANumberWithItsBits", FromBits(0x7FF8000000000000), 0x7FF8000000000000L, false},
  });
}

TEST(VemVar, TextsCompareByBytes) {
  CheckOpposites({
      {"Same", "ab", "ab", true},
      {"Empty", "", "", true},
      {"EmptyAndOther", "", "a", false},
      {"Prefix", "ab", "abc", false},
      {"Case", "ab", "aB", false},
      {"Blank", "ab", "ab ", false},
      {"LastByte", "abcdefgh1", "abcdefgh2", false},
      {"HighBytes", "\xC3\xA4", "\xC3\xA4", true},
      {"HighBytesDiffer", "\xC3\xA4", "\xC3\xA5", false},
      {"BehindTerminator", "ab\0c", "ab\0d", true},
  });
}

TEST(VemVar, NoneIsNeitherEqualNorUnequalToItself) {
  const VemVar none;
  EXPECT_FALSE(none == none);
  EXPECT_FALSE(none != none);
}

}  // namespace
