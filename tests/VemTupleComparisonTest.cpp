#include "VemTuple.h"

#include <string>

#include <gtest/gtest.h>

#include "support/VarArrays.h"

namespace {

void CheckComparison(const VemVarArray& a, const VemVarArray& b, bool equal) {
  EXPECT_EQ(a == b, equal);
  EXPECT_EQ(b == a, equal);
  EXPECT_EQ(a != b, !equal);
  EXPECT_EQ(b != a, !equal);
}

// Elements that are neither equal nor unequal count as the same.
TEST(VemTupleComparison, ComparisonOfEachPairOfKinds) {
  const char* const kinds[] = {"long", "double", "string", "none"};
  const VemVar left[4] = {1L, 1.0, "1", VemVar()};
  const VemVar right[4] = {2L, 2.0, "2", VemVar()};
  const bool same[4][4] = {
      {false, false, true, true},
      {false, false, true, true},
      {true, true, false, true},
      {true, true, true, true},
  };
  for (int l = 0; l < 4; ++l) {
    for (int r = 0; r < 4; ++r) {
      SCOPED_TRACE(std::string(kinds[l]) + " and " + kinds[r]);
      CheckComparison(VemVarArray(left[l]), VemVarArray(left[r]), true);
      CheckComparison(VemVarArray(left[l]), VemVarArray(right[r]), same[l][r]);
    }
  }
}

TEST(VemTupleComparison, ArraysCompareByLengthAndPosition) {
  const struct {
    const char* name;
    VemVarArray left;
    VemVarArray right;
    bool equal;
  } cases[] = {
      {"BothEmpty", {}, {}, true},
      {"EmptyAndOne", {}, 1L, false},
      {"EmptyAndNone", {}, VemVar(), false},
      {"Prefix", Of({1L, 2L}), Of({1L, 2L, 3L}), false},
      {"PrefixAndNone", Of({1L, 2L}), Of({1L, 2L, VemVar()}), false},
      {"Same", Of(Mixed()), Of(Mixed()), true},
      {"FirstDiffers", Of({1L, 2L, 3L}), Of({0L, 2L, 3L}), false},
      {"MiddleDiffers", Of({1L, 2L, 3L}), Of({1L, 0L, 3L}), false},
      {"LastDiffers", Of({1L, 2L, 3L}), Of({1L, 2L, 0L}), false},
      {"OrderDiffers", Of({1L, 2L}), Of({2L, 1L}), false},
      {"DifferenceBehindAlike", Of({VemVar(), "a"}), Of({1L, "b"}), false},
      {"None", VemVar(), VemVar(), true},
      {"TextAndLong", "1", 1L, true},
      {"LongAndDouble", 1L, 1.0, true},
      {"NotANumberWithItself", kNaN, kNaN, false},
      {"NotANumberWithDouble", kNaN, 1.0, false},
      {"NotANumberWithLong", kNaN, 1L, false},
      {"NotANumberBehind", Of({1L, kNaN}), Of({1L, kNaN}), false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    CheckComparison(c.left, c.right, c.equal);
  }
  const VemVarArray notANumber(kNaN);
  CheckComparison(notANumber, notANumber, false);
  const VemVarArray mixed = Of(Mixed());
  CheckComparison(mixed, mixed, true);
}

}  // namespace
