#include <cmath>
#include <limits>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "VemROIType.h"
#include "VemTuple.h"
#include "vem/value_operators.h"

// A class of a program's own, of which no more than its name is known here, with its own operator.
struct Unknown;
bool operator==(const Unknown& a, const Unknown& b);
bool AreSame(const Unknown& a, const Unknown& b) { return a == b; }
struct Unknown {};
bool operator==(const Unknown&, const Unknown&) { return true; }

namespace {

TEST(VemValueComparison, LeavesOtherClassesAlone) { EXPECT_TRUE(AreSame(Unknown(), Unknown())); }

const long kLongMin = std::numeric_limits<long>::min();
const long kLongMax = std::numeric_limits<long>::max();
const double kNaN = std::nan("");

// How a value stands to another: the six operators in both directions as characters, each '1' where
// it is true. "==, !=, <, <=, >, >=", then the same with the sides exchanged.
// Numbers of C++ too, which it rounds as it likes.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
template <class A, class B>
std::string Comparisons(const A& a, const B& b) {
  const bool found[] = {a == b, a != b, a<b, a <= b, a> b, a >= b,
                        b == a, b != a, b<a, b <= a, b> a, b >= a};
  std::string text;
  for (bool one : found) text += one ? '1' : '0';
  return text;
}
#pragma GCC diagnostic pop

const char* const kSame = "100101100101";
const char* const kBefore = "011100010011";
const char* const kBehind = "010011011100";
const char* const kApart = "010000010000";

TEST(VemValueComparison, OrdersNumbersBesideNumbers) {
  EXPECT_EQ(Comparisons(VemVar(3), 3), kSame);
  EXPECT_EQ(Comparisons(VemVar(3), 4), kBefore);
  EXPECT_EQ(Comparisons(VemVar(3), 2), kBehind);
  EXPECT_EQ(Comparisons(VemVar(3), 3.0), kSame);
  EXPECT_EQ(Comparisons(VemVar(3), 2.5), kBehind);
  EXPECT_EQ(Comparisons(VemVar(2.5), 3), kBefore);
  EXPECT_EQ(Comparisons(VemVar(2.5), 2.5f), kSame);
  EXPECT_EQ(Comparisons(VemVar(2.5), 2.5L), kSame);
  EXPECT_EQ(Comparisons(VemVar(0.0), -0.0), kSame);
  EXPECT_EQ(Comparisons(VemVar(kNaN), 1), kApart);
  EXPECT_EQ(Comparisons(VemVar(kNaN), kNaN), kApart);
  EXPECT_EQ(Comparisons(VemVar(1), kNaN), kApart);
  EXPECT_EQ(Comparisons(VemVar(1), true), kSame);
  EXPECT_EQ(Comparisons(VemVar('a'), 'a'), kSame);
  EXPECT_EQ(Comparisons(VemVar(6), VemROIRect2), kSame);
}

TEST(VemValueComparison, TakesIntegersByWhatTheyAre) {
  EXPECT_EQ(Comparisons(VemVar(-1), ~0UL), kBefore);
  EXPECT_EQ(Comparisons(VemVar(-1), ~0U), kBefore);
  EXPECT_EQ(Comparisons(VemVar(kLongMax), ~0UL), kBefore);
  EXPECT_EQ(Comparisons(VemVar(kLongMax), static_cast<unsigned long>(kLongMax)), kSame);
  EXPECT_EQ(Comparisons(VemVar(kLongMin), kLongMin), kSame);
  EXPECT_EQ(Comparisons(VemVar(kLongMax), kLongMax - 1), kBehind);
}

// The types of the numbers as a caller may have them.
enum Unsigned : unsigned long { kUnsignedMax = ~0UL };
enum Signed : signed char { kSignedMin = -128 };
enum Loose { kLoose = 7 };

TEST(VemValueComparison, TakesEnumerationsByWhatTheyAre) {
  EXPECT_EQ(Comparisons(VemVar(-1), kUnsignedMax), kBefore);
  EXPECT_EQ(Comparisons(VemVar(kLongMax), kUnsignedMax), kBefore);
  EXPECT_EQ(Comparisons(VemVar(-1.0), kUnsignedMax), kBefore);
  EXPECT_EQ(Comparisons(VemVar(-128), kSignedMin), kSame);
  EXPECT_EQ(Comparisons(VemVar(7), kLoose), kSame);
}

TEST(VemValueComparison, RoundsFloatingPointAsCppDoes) {
  const float floats[] = {0.1f, 16777216.0f, 9223372036854775807.0f, -0.0f};
  const long double longs[] = {0.1L, 9223372036854775807.0L, 9223372036854775808.0L, 1e300L};
  for (long integer : {0L, 16777216L, 16777217L, kLongMax - 1, kLongMax, kLongMin}) {
    for (float number : floats) {
      EXPECT_EQ(Comparisons(VemVar(integer), number), Comparisons(integer, number));
    }
    for (long double number : longs) {
      EXPECT_EQ(Comparisons(VemVar(integer), number), Comparisons(integer, number));
    }
  }
  for (double real : {0.1, 0.1000000014901161193847656250, 9223372036854775808.0, 1e300}) {
    for (float number : floats) {
      EXPECT_EQ(Comparisons(VemVar(real), number), Comparisons(real, number));
    }
    for (long double number : longs) {
      EXPECT_EQ(Comparisons(VemVar(real), number), Comparisons(real, number));
    }
  }
  EXPECT_EQ(Comparisons(VemVar(0.1), 0.1L), kBehind);
  EXPECT_EQ(Comparisons(VemVar(16777217), 16777216.0f), kSame);
  EXPECT_EQ(Comparisons(VemVar(kLongMax), 9223372036854775808.0L), kBefore);
}

// With the extensions of the compiler alone, it counts as a number.
#ifndef __STRICT_ANSI__
TEST(VemValueComparison, TakesWideIntegersByWhatTheyAre) {
  __extension__ typedef __int128 wide;
  __extension__ typedef unsigned __int128 unsigned_wide;
  const wide beyond = wide{1} << 64;
  EXPECT_EQ(Comparisons(VemVar(0), beyond), kBefore);
  EXPECT_EQ(Comparisons(VemVar(5), beyond + 5), kBefore);
  EXPECT_EQ(Comparisons(VemVar(5), -beyond), kBehind);
  EXPECT_EQ(Comparisons(VemVar(5), wide{5}), kSame);
  EXPECT_EQ(Comparisons(VemVar(-1), ~unsigned_wide{0}), kBefore);
  EXPECT_EQ(Comparisons(VemVar(5), unsigned_wide{5}), kSame);
}
#endif

TEST(VemValueComparison, EndsAnArrayOfCharsWhereItEnds) {
  struct {
    char text[3];
    char behind[4];
  } const beside = {{'a', 'b', 'c'}, "def"};
  EXPECT_EQ(Comparisons(VemVar("abc"), beside.text), kSame);
  EXPECT_EQ(Comparisons(VemVar("def"), beside.behind), kSame);
  EXPECT_EQ(Comparisons(VemVar("a"), "a\0b"), kSame);
}

TEST(VemValueComparison, OrdersTextsByBytes) {
  const std::string text = "abc";
  const char* const pointer = "abc";
  char letters[] = "abc";
  char* const writable = letters;
  EXPECT_EQ(Comparisons(VemVar("abc"), "abc"), kSame);
  EXPECT_EQ(Comparisons(VemVar("abc"), text), kSame);
  EXPECT_EQ(Comparisons(VemVar("abc"), pointer), kSame);
  EXPECT_EQ(Comparisons(VemVar("abc"), letters), kSame);
  EXPECT_EQ(Comparisons(VemVar("abc"), writable), kSame);
  EXPECT_EQ(Comparisons(VemVar("abc"), "abd"), kBefore);
  EXPECT_EQ(Comparisons(VemVar("abc"), "ab"), kBehind);
  EXPECT_EQ(Comparisons(VemVar(""), "a"), kBefore);
  EXPECT_EQ(Comparisons(VemVar("\xff"), "a"), kBehind);
  EXPECT_EQ(Comparisons(VemVar("ab"), std::string("ab\0", 3)), kBefore);
#if __cplusplus >= 201703L
  EXPECT_EQ(Comparisons(VemVar("abc"), std::string_view("abcd", 3)), kSame);
  EXPECT_EQ(Comparisons(VemVar(""), std::string_view()), kSame);
#endif
}

TEST(VemValueComparison, OfOtherKindsIsUnequalAndWithoutOrder) {
  const char* const none = nullptr;
  EXPECT_EQ(Comparisons(VemVar("3"), 3), kApart);
  EXPECT_EQ(Comparisons(VemVar(3), "3"), kApart);
  EXPECT_EQ(Comparisons(VemVar(3.0), std::string("3")), kApart);
  EXPECT_EQ(Comparisons(VemVar(), 0), kApart);
  EXPECT_EQ(Comparisons(VemVar(), 0.0), kApart);
  EXPECT_EQ(Comparisons(VemVar(), ""), kApart);
  EXPECT_EQ(Comparisons(VemVar(""), none), kApart);
}

TEST(VemValueComparison, OrdersTwoValues) {
  const auto orders = [](const VemVar& a, const VemVar& b) {
    const bool found[] = {a<b, a <= b, a> b, a >= b};
    std::string text;
    for (bool one : found) text += one ? '1' : '0';
    return text;
  };
  EXPECT_EQ(orders(VemVar(1), VemVar(2)), "1100");
  EXPECT_EQ(orders(VemVar(2), VemVar(2.0)), "0101");
  EXPECT_EQ(orders(VemVar(2.5), VemVar(2)), "0011");
  EXPECT_EQ(orders(VemVar("a"), VemVar("b")), "1100");
  EXPECT_EQ(orders(VemVar("a"), VemVar("a")), "0101");
  EXPECT_EQ(orders(VemVar("1"), VemVar(2)), "0000");
  EXPECT_EQ(orders(VemVar(1), VemVar("2")), "0000");
  EXPECT_EQ(orders(VemVar(), VemVar()), "0000");
  EXPECT_EQ(orders(VemVar(1), VemVar()), "0000");
  EXPECT_EQ(orders(VemVar(kNaN), VemVar(kNaN)), "0000");
}

TEST(VemValueComparison, LeavesTwoValuesToTheClass) {
  const VemVar none, text("1"), number(1);
  EXPECT_FALSE(none == none);
  EXPECT_FALSE(none != none);
  EXPECT_FALSE(text == number);
  EXPECT_FALSE(text != number);
  EXPECT_TRUE(number == VemVar(1.0));
  VemVarArray array(1);
  EXPECT_TRUE(array == VemVarArray(1));
  EXPECT_TRUE(array[0] == 1);
}

// A value as "l3", "d2.5", "s" with its text, or "-".
std::string Shown(const VemVar& value) {
  switch (value.ValType()) {
    case VemVarLong:
      return "l" + std::to_string(value.L());
    case VemVarDouble:
      return "d" + std::to_string(value.D());
    case VemVarString:
      return "s" + std::string(value.S());
    default:
      return "-";
  }
}

struct ArithmeticCase {
  const char* name;
  VemVar found;
  const char* expected;
};

TEST(VemValueArithmetic, TakesNumbersOnEitherSide) {
  const VemVar three(3), half(0.5), text("a"), none;
  const ArithmeticCase cases[] = {
      {"IntegerPlusInteger", three + 4, "l7"},
      {"NumberOnTheLeft", 4 + three, "l7"},
      {"IntegerPlusDouble", three + 0.5, "d3.500000"},
      {"DoublePlusInteger", half + 1, "d1.500000"},
      {"DoublePlusDouble", 0.25 + half, "d0.750000"},
      {"FloatCounts", three + 0.5f, "d3.500000"},
      {"UnsignedCounts", three + 4u, "l7"},
      {"EnumerationCounts", three + VemROIRect2, "l9"},
      {"IntegerMinusInteger", three - 5, "l-2"},
      {"IntegerOnTheLeft", 5 - three, "l2"},
      {"IntegerMinusDouble", three - 0.5, "d2.500000"},
      {"DoubleMinusDouble", half - 0.25, "d0.250000"},
      {"DoubleOnTheLeftMinusDouble", 2.5 - half, "d2.000000"},
      {"IntegerOnTheLeftMinusDouble", 2 - half, "d1.500000"},
      {"IntegerTimesInteger", 2 * three, "l6"},
      {"IntegerTimesDouble", three * 0.5, "d1.500000"},
      {"DoubleTimesInteger", 4 * half, "d2.000000"},
      {"IntegerOverInteger", three / 2, "l1"},
      {"NegativeTruncates", three / -2, "l-1"},
      {"IntegerOverDouble", three / 2.0, "d1.500000"},
      {"OverZero", half / 0.0, "dinf"},
      {"NumberOverValue", 7 / three, "l2"},
      {"Remainder", three % 2, "l1"},
      {"RemainderOnTheLeft", -7 % three, "l-1"},
      {"RemainderOfADouble", half % 2, "-"},
      {"RemainderByADouble", 2 % half, "-"},
      {"RemainderOfNothing", none % 5, "-"},
      {"Negative", -three, "l-3"},
      {"NegativeDouble", -half, "d-0.500000"},
      {"NegativeZero", -VemVar(0.0), "d-0.000000"},
      {"NegativeText", -text, "-"},
      {"NegativeNothing", -none, "-"},
      {"Wraps", VemVar(kLongMax) + 1, "l-9223372036854775808"},
      {"NegativeWraps", -VemVar(kLongMin), "l-9223372036854775808"},
      {"TextPlusNumber", text + 1, "-"},
      {"NumberPlusText", 1 + text, "-"},
      {"TextMinusNumber", text - 1, "-"},
      {"NumberMinusText", 1 - text, "-"},
      {"NumberMinusNothing", 1 - none, "-"},
      {"NothingPlusNumber", none + 1, "-"},
      {"TextTimesNumber", text * 2, "-"},
      {"NumberOverText", 2 / text, "-"},
  };
  for (const ArithmeticCase& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(Shown(c.found), c.expected);
  }
}

TEST(VemValueArithmetic, JoinsTexts) {
  const VemVar text("part"), number(3), none;
  const char* const null = nullptr;
  const ArithmeticCase cases[] = {
    {"Literal", text + ".png", "spart.png"},
    {"String", text + std::string("-1"), "spart-1"},
    {"StringOnTheLeft", std::string("a ") + text, "sa part"},
    {"EmptyText", text + "", "spart"},
    {"Chain", text + "-" + "1" + std::string(".png"), "spart-1.png"},
    {"NumberPlusText", number + "x", "-"},
    {"NothingPlusText", none + "x", "-"},
    {"TextBeforeNumber", std::string("x") + number, "-"},
    {"NullPointer", text + null, "-"},
    {"ZeroByte", text + std::string("a\0b", 3), "-"},
    {"ZeroByteOnTheLeft", std::string("a\0b", 3) + text, "-"},
#if __cplusplus >= 201703L
    {"View", text + std::string_view(".png", 2), "spart.p"},
    {"ViewOnTheLeft", std::string_view("abc", 1) + text, "sapart"},
#endif
  };
  for (const ArithmeticCase& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(Shown(c.found), c.expected);
  }
}

TEST(VemValueArithmetic, LeavesTwoValuesToTheClass) {
  EXPECT_EQ(Shown(VemVar(5.0) - VemVar(1.5)), "-");
  EXPECT_EQ(Shown(VemVar(5) - VemVar()), "d5.000000");
  EXPECT_EQ(Shown(VemVar(7) % VemVar(2.0)), "l7");
  EXPECT_EQ(Shown(VemVar() % VemVar(5)), "l0");
}

TEST(VemValueArithmetic, LeavesPointersOnTheLeftToCpp) {
  const char* const text = "abcd";
  EXPECT_EQ(text + VemVar(2), text + 2);
}

TEST(VemValueArithmetic, AssignsInPlace) {
  VemVar value(10);
  EXPECT_EQ(&(value += 5), &value);
  EXPECT_EQ(Shown(value), "l15");
  value -= 1;
  EXPECT_EQ(Shown(value), "l14");
  value *= 2;
  EXPECT_EQ(Shown(value), "l28");
  value %= 5;
  EXPECT_EQ(Shown(value), "l3");
  value -= 0.5;
  EXPECT_EQ(Shown(value), "d2.500000");
  value /= 2;
  EXPECT_EQ(Shown(value), "d1.250000");
  VemVarArray texts("a");
  texts[0] += "b";
  texts[0] += std::string("c");
  EXPECT_EQ(Shown(texts[0]), "sabc");
}

TEST(VemValueArithmetic, AssignsInPlaceWhatAnotherValueHolds) {
  const VemVar text("b"), none;
  VemVar value(7);
  EXPECT_EQ(&(value += VemVar(3)), &value);
  EXPECT_EQ(Shown(value), "l10");
  value -= VemVar(1.5);
  EXPECT_EQ(Shown(value), "d8.500000");
  value *= VemVar(2);
  EXPECT_EQ(Shown(value), "d17.000000");
  value /= VemVar(2);
  EXPECT_EQ(Shown(value), "d8.500000");
  value = VemVar(17);
  value %= VemVar(5);
  EXPECT_EQ(Shown(value), "l2");
  value += value;
  EXPECT_EQ(Shown(value), "l4");
  value %= VemVar(2.0);
  EXPECT_EQ(Shown(value), "-");
  value = VemVar("a");
  value += text;
  value += value;
  EXPECT_EQ(Shown(value), "sabab");
  value += VemVar(3);
  EXPECT_EQ(Shown(value), "-");
  value = VemVar(3);
  value += text;
  EXPECT_EQ(Shown(value), "-");
  value = VemVar(3);
  value -= none;
  EXPECT_EQ(Shown(value), "-");
}

// Found from a namespace that has operators of its own.
namespace stranger {
struct Own {
  int number = 0;
};
bool operator==(const Own&, const Own&) { return true; }
bool operator<(const Own&, int) { return true; }
Own operator*(int, const Own& own) { return own; }

bool Compares(const VemVar& value) {
  const Own own;
  return own == 2 * own && own < 1 && value == 3 && value < 4 && 2 * value == 6;
}
}  // namespace stranger

TEST(VemValueArithmetic, IsFoundFromEveryNamespace) {
  EXPECT_TRUE(stranger::Compares(VemVar(3)));
  EXPECT_TRUE(2 * VemVar(3) == 6);
}

template <class A, class B>
auto Equates(int) -> decltype(std::declval<A>() == std::declval<B>(), std::true_type());
template <class A, class B>
std::false_type Equates(...);

struct BecomesValue {
  operator VemVar() const { return VemVar(3); }
};
enum class Scoped { kThree = 3 };

// Nothing joins in that is no value itself, or no number or text itself.
TEST(VemValueComparison, TakesNothingThatConverts) {
  static_assert(decltype(Equates<VemVar, int>(0))::value, "");
  static_assert(decltype(Equates<VemVar&, const std::string&>(0))::value, "");
  static_assert(!decltype(Equates<VemVar, Scoped>(0))::value, "");
  static_assert(!decltype(Equates<BecomesValue, int>(0))::value, "");
}

}  // namespace
