#include "Vem2DVarArray.h"

#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "support/ArrayContract.h"
#include "support/PrivateAccess.h"
#include "support/Support.h"

struct PrivateVem2DVarArrayStore {
  using Type = std::vector<VemVarArray>* Vem2DVarArray::*;
  friend Type PrivateOf(PrivateVem2DVarArrayStore);
};

template struct PrivateAccess<PrivateVem2DVarArrayStore, &Vem2DVarArray::store_>;

namespace {

// Growth copies the rows: an array of values has no way to move.
static_assert(!std::is_nothrow_move_constructible_v<VemVarArray>);

struct Traits : ArrayTraits<Vem2DVarArray, VemVarArray> {
  static constexpr bool kMakesRoomOnce = true;

  // One to four elements, of every kind.
  static VemVarArray Make(int number) {
    VemVarArray row(("row " + std::to_string(number)).c_str());
    if (number % 4 > 0) row.Append(number);
    if (number % 4 > 1) row.Append(number / 8.0);
    if (number % 4 > 2) row.Append(VemVar());
    return row;
  }
  static bool IsMade(const VemVarArray& row, int number) { return Same(row, Make(number)); }
  static bool IsDefault(const VemVarArray& row) { return row.Length() == 0; }
  static std::vector<VemVarArray>* Store(Vem2DVarArray& array) {
    return array.*PrivateOf(PrivateVem2DVarArrayStore());
  }
};

INSTANTIATE_TYPED_TEST_SUITE_P(Vem2DVarArray, ArrayContract, Traits);
INSTANTIATE_TYPED_TEST_SUITE_P(Vem2DVarArray, ReferenceContract, Traits);
INSTANTIATE_TYPED_TEST_SUITE_P(Vem2DVarArray, ConstAccessContract, Traits);

VemVarArray Row(const std::vector<VemVar>& values) {
  VemVarArray row;
  for (const VemVar& value : values) row.Append(value);
  return row;
}

TEST(Vem2DVarArray, RowsHaveLengthsOfTheirOwn) {
  VemVarArray three = Row({1, 2, 3});
  VemVarArray none;
  VemVarArray one("text");
  Vem2DVarArray table;
  table.Append(three);
  table.Append(none);
  table.Append(one);
  EXPECT_EQ(table.Length(), 3);
  EXPECT_EQ(table[0].Length(), 3);
  EXPECT_EQ(table[1].Length(), 0);
  EXPECT_EQ(table[2].Length(), 1);
}

TEST(Vem2DVarArray, RowsAndElementsChangeInPlace) {
  Vem2DVarArray table = ArrayOf<Traits>({4, 5});
  VemVar value("added");
  table[0].Append(value);
  EXPECT_TRUE(Same(table[0], Row({"row 4", "added"})));
  table[1][0] = VemVar(7);
  EXPECT_TRUE(Same(table[1], Row({7, 5})));
  table[1].Clear();
  EXPECT_EQ(table.Length(), 2);
  EXPECT_EQ(table[1].Length(), 0);
}

TEST(Vem2DVarArray, SelectedRowIsACopy) {
  Vem2DVarArray table = ArrayOf<Traits>({4});
  VemVarArray row = Row({1, 2, 3});
  table.Select(0, &row);
  EXPECT_TRUE(Same(row, Row({"row 4"})));
  row[0] = VemVar("changed");
  row.Append(1);
  EXPECT_TRUE(Same(table[0], Row({"row 4"})));
}

// A row may be assigned to itself, with its texts.
TEST(Vem2DVarArray, RowsMayBeExchangedWithAndReplacedByThemselves) {
  Vem2DVarArray table = ArrayOf<Traits>(UpTo(4));
  for (int i = 0; i < 4; ++i) {
    table.Swap(i, i);
    table.Replace(i, table[i]);
  }
  EXPECT_TRUE(Holds<Traits>(table, UpTo(4)));
}

// The handles stay where they are; what they hold is assigned down.
TEST(Vem2DVarArray, RemoveAssignsRowsDown) {
  Vem2DVarArray table = ArrayOf<Traits>({4, 8, 12});  // Rows of one element each.
  const VemVar* const first = &table[0][0];
  const VemVar* const second = &table[1][0];
  table.Remove(0);
  EXPECT_TRUE(Holds<Traits>(table, {8, 12}));
  EXPECT_EQ(&table[0][0], first);
  EXPECT_EQ(&table[1][0], second);
}

}  // namespace
