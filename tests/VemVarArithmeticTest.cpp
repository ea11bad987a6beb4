#include "VemVar.h"

#include <climits>
#include <cmath>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/Support.h"
#include "support/VarBits.h"

namespace {

using Operator = VemVar (VemVar::*)(const VemVar&) const;
using Comparison = bool (VemVar::*)(const VemVar&) const;

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

// Arithmetic. In the second operand set of a sum or a difference the numbers are 0 or denormal, so
// that the raw bits of a pointer are not rounded away.

TEST(VemVarArithmetic, SumOfEachPairOfKinds) {
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

TEST(VemVarArithmetic, SumReadsPointersRaw) {
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

TEST(VemVarArithmetic, DifferenceOfEachPairOfKinds) {
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

TEST(VemVarArithmetic, DifferenceReadsPointersRaw) {
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

TEST(VemVarArithmetic, DifferenceRefusesDoubleOnTheRightOnly) {
  EXPECT_EQ((VemVar(5.0) - VemVar(1.5)).ValType(), VemVarNone);
  EXPECT_EQ((VemVar(5L) - VemVar(1.5)).ValType(), VemVarNone);
  EXPECT_TRUE(Agree(VemVar(5L) - VemVar(), VemVar(5.0)));
  EXPECT_EQ((VemVar(2L) - VemVar("x")).ValType(), VemVarDouble);
  EXPECT_EQ((VemVar(2L) + VemVar("x")).ValType(), VemVarDouble);
  EXPECT_EQ((VemVar(2L) * VemVar("x")).ValType(), VemVarNone);
}

TEST(VemVarArithmetic, ProductOfEachPairOfKinds) {
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

TEST(VemVarArithmetic, QuotientOfEachPairOfKinds) {
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

TEST(VemVarArithmetic, RemainderOfEachPairOfKinds) {
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

TEST(VemVarArithmetic, RemainderTakesBitsOfDoubles) {
  EXPECT_TRUE(Agree(VemVar(7L) % VemVar(2.0), VemVar(7L)));
  EXPECT_TRUE(Agree(VemVar(7.5) % VemVar(2L), VemVar(0L)));
  EXPECT_TRUE(Agree(VemVar(7.0) % VemVar(2.0), VemVar()));
  EXPECT_TRUE(Agree(VemVar(4611686018427387904L) % VemVar(2.0), VemVar(0L)));
  EXPECT_TRUE(Agree(VemVar(FromBits(13)) % VemVar(5L), VemVar(3L)));
  EXPECT_TRUE(Agree(VemVar() % VemVar(5L), VemVar(0L)));
}

TEST(VemVarArithmetic, IntegerDivisionTruncatesTowardZero) {
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

TEST(VemVarArithmetic, IntegersWrap) {
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
TEST(VemVarArithmetic, LongWithDoubleIsADouble) {
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

TEST(VemVarArithmetic, DoubleDivisionByZeroIsNoFault) {
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

TEST(VemVarArithmetic, IntegerDivisionFaults) {
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

TEST(VemVarArithmetic, SumOfTextsHasTheirBytesAlone) {
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

TEST(VemVarArithmetic, SumOfTextsHasNoRoomForATerminator) {
  const VemVar left("twelve bytes");
  const VemVar right("and 12 more.");
  EXPECT_EQ(std::memcmp((left + right).S(), "twelve bytesand 12 more.", 24), 0);
  EXPECT_EQ(LeastBlock([&] { return new VemVar(left + right); }), 24u);
}

// Comparison

TEST(VemVarArithmetic, EqualPayloadsOfEachPairOfKinds) {
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

TEST(VemVarArithmetic, DifferentPayloadsOfEachPairOfKinds) {
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
TEST(VemVarArithmetic, ZeroIsNotNone) {
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

TEST(VemVarArithmetic, NumbersCompareByValue) {
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

TEST(VemVarArithmetic, TextsCompareByBytes) {
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

TEST(VemVarArithmetic, NoneIsNeitherEqualNorUnequalToItself) {
  const VemVar none;
  EXPECT_FALSE(none == none);
  EXPECT_FALSE(none != none);
}

}  // namespace
