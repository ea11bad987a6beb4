#include "VemVar.h"

#include <malloc.h>
#include <sys/resource.h>
#include <unistd.h>

#include <climits>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <limits>
#include <new>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "support/HeapCounter.h"
#include "support/Support.h"
#include "support/VarBits.h"

namespace {

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

}  // namespace
