#include "VemRegionArray.h"

#include <climits>
#include <vector>

#include <gtest/gtest.h>

#include "support/ArrayContract.h"
#include "support/HeapCounter.h"
#include "support/Regions.h"

namespace {

using Runs = std::vector<::Run>;

constexpr void (VemRegionArray::*kUnion)(VemRegion*) = &VemRegionArray::Union;

// Regions without outlines.
RegionValue Sample(int i) { return {10 + i, 20 - i, {{i, 2 * i, 3 * i}, {i, 0, 1}}, {}}; }

struct Traits : ArrayTraits<VemRegionArray, VemRegion> {
  using Assigned = VemRegionArray&;
  static constexpr bool kHasReferences = false;
  static constexpr bool kTestsPositions = false;
  static constexpr bool kSelectIsConst = false;
  static constexpr bool kHasStore = false;

  static VemRegion Make(int number) { return MakeRegion(Sample(number)); }
  static bool IsMade(VemRegion region, int number) { return ValueOf(region) == Sample(number); }
  static bool IsDefault(VemRegion region) { return ValueOf(region) == RegionValue(); }

  static void Disturb(VemRegion& region) {
    VemRegionData& data = *Block(region);
    data.Width = 99;
    if (data.Rows.Length() > 0) data.Rows[0] = VemVar(98);
    data.LastColumns.Clear();
  }
};

INSTANTIATE_TYPED_TEST_SUITE_P(VemRegionArray, ArrayContract, Traits);
INSTANTIATE_TYPED_TEST_SUITE_P(VemRegionArray, ConstAccessContract, Traits);

const Outlines kSquare = {{{{0, 0}, {0, 3}, {3, 3}, {3, 0}}}, {{-1, -1, -1, -1}}};
const Outlines kRing = {{{{0, 0}, {0, 9}, {9, 9}, {9, 0}}, {{2, 2}, {7, 2}, {7, 7}}},
                        {{-1, -1, 1, -1}, {-1, -1, -1, 0}}};

RegionValue WithOutlines(int i, const Outlines& outlines) {
  RegionValue value = Sample(i);
  value.outlines = outlines;
  return value;
}

VemRegionArray ArrayOf(const std::vector<RegionValue>& values) {
  VemRegionArray array;
  for (const RegionValue& value : values) {
    VemRegion region = MakeRegion(value);
    array.Append(region);
  }
  return array;
}

std::vector<RegionValue> Contents(const VemRegionArray& array) {
  std::vector<RegionValue> values;
  for (int i = 0; i < array.Length(); ++i) {
    VemRegion region = array[i];
    values.push_back(ValueOf(region));
  }
  return values;
}

RegionValue UnionOf(VemRegionArray& array) {
  VemRegion region;
  (array.*kUnion)(&region);
  return ValueOf(region);
}

TEST(VemRegionArray, GivesAllItsBlocksBack) {
  const auto use = [] {
    const VemRegionArray array = ArrayOf({Sample(1), WithOutlines(2, kRing)});
    VemRegionArray assigned(array);
    assigned = array;
    EXPECT_EQ(assigned.Length(), 2);
  };
  use();
  const HeapCounter heap;
  use();
  EXPECT_EQ(heap.Kept(), 0);
}

// --- Regions on their way through ---

TEST(VemRegionArray, DefaultRegionIsAnElement) {
  VemRegionArray array;
  VemRegion region;
  array.Append(region);
  EXPECT_EQ(array.Length(), 1);
  EXPECT_EQ(Contents(array), std::vector<RegionValue>{RegionValue()});
}

TEST(VemRegionArray, RunsComeBackInTheirOrder) {
  const RegionValue value = {3, 2, {{5, 1, 2}, {0, 9, 4}, {5, 1, 2}, {-7, -8, -9}, {1, 0, 0}}, {}};
  EXPECT_EQ(Contents(ArrayOf({value})), std::vector<RegionValue>{value});
}

TEST(VemRegionArray, RunValuesPassThroughIntegers) {
  VemVarArray rows(4.9);
  VemVarArray firstColumns(0x100000003L);
  VemVarArray lastColumns(1e300);
  VemRegion region;
  region.CreateRegion(5, 5, rows, firstColumns, lastColumns);
  VemRegionArray array;
  array.Append(region);
  EXPECT_EQ(Contents(array)[0].runs, (Runs{{4, 3, INT_MIN}}));
}

// One number of another kind among integers, at each place of lists of each length.
TEST(VemRegionArray, EachRunValuePassesThroughIntegers) {
  for (int length = 1; length <= 13; ++length) {
    for (int place = 0; place < length; ++place) {
      VemVarArray rows, firstColumns, lastColumns;
      Runs expected;
      for (int i = 0; i < length; ++i) {
        const bool other = i == place;
        rows.Append(other ? VemVar(-7.9) : VemVar(i));
        firstColumns.Append(other ? VemVar(0x1FFFFFFFFL) : VemVar(-i));
        lastColumns.Append(other ? VemVar(-1e300) : VemVar(INT_MIN + i));
        expected.push_back(other ? ::Run{-7, -1, INT_MIN} : ::Run{i, -i, INT_MIN + i});
      }
      VemRegion region;
      region.CreateRegion(5, 5, rows, firstColumns, lastColumns);
      VemRegionArray array;
      array.Append(region);
      ASSERT_EQ(Contents(array)[0].runs, expected) << place << " of " << length;
    }
  }
}

TEST(VemRegionArray, TheNumberOfRowsIsTheNumberOfRuns) {
  const struct {
    const char* name;
    std::vector<int> rows, firstColumns, lastColumns;
    Runs expected;
  } cases[] = {
      {"LongColumns", {1}, {2, 3}, {4, 5, 6}, {{1, 2, 4}}},
      {"NoRows", {}, {2, 3}, {4, 5, 6}, {}},
      {"ShortColumns", {1, 2}, {3}, {}, {{1, 3, 0}, {2, 0, 0}}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    VemVarArray rows, firstColumns, lastColumns;
    for (const int value : c.rows) rows.Append(value);
    for (const int value : c.firstColumns) firstColumns.Append(value);
    for (const int value : c.lastColumns) lastColumns.Append(value);
    VemRegion region;
    region.SetRuns(rows, firstColumns, lastColumns);
    VemRegionArray array;
    array.Append(region);
    array.Insert(0, region);
    array.Append(region);
    array.Replace(2, region);
    for (const RegionValue& value : Contents(array)) EXPECT_EQ(value.runs, c.expected);
  }
}

TEST(VemRegionArray, SelectReplacesRunsAndCanvas) {
  VemRegionArray array = ArrayOf({Sample(3)});
  VemRegion region = MakeRegion({9, 9, {{1, 1, 1}, {2, 2, 2}, {3, 3, 3}}, {}});
  array.Select(0, &region);
  EXPECT_EQ(ValueOf(region), Sample(3));
}

TEST(VemRegionArray, SelectKeepsOldOutlinesIfTheArrayHasNone) {
  VemRegionArray array = ArrayOf({Sample(3)});
  VemRegion region = MakeRegion(WithOutlines(1, kRing));
  array.Select(0, &region);
  EXPECT_EQ(ValueOf(region), WithOutlines(3, kRing));
}

// --- Outlines ---

TEST(VemRegionArray, OutlinesStayWithTheirRegionsIfAllHaveSome) {
  const std::vector<RegionValue> values = {WithOutlines(0, kSquare), WithOutlines(1, kRing),
                                           WithOutlines(2, kSquare)};
  VemRegionArray array = ArrayOf(values);
  EXPECT_EQ(Contents(array), values);

  array.Swap(0, 1);
  EXPECT_EQ(Contents(array), (std::vector<RegionValue>{values[1], values[0], values[2]}));
  array.Remove(1);
  EXPECT_EQ(Contents(array), (std::vector<RegionValue>{values[1], values[2]}));
  VemRegion region = MakeRegion(values[0]);
  array.Insert(1, region);
  EXPECT_EQ(Contents(array), (std::vector<RegionValue>{values[1], values[0], values[2]}));
  array.Replace(2, region);
  EXPECT_EQ(Contents(array), (std::vector<RegionValue>{values[1], values[0], values[0]}));
  array.Clear();
  EXPECT_EQ(array.Length(), 0);
  array.Append(region);
  EXPECT_EQ(Contents(array), std::vector<RegionValue>{values[0]});
}

TEST(VemRegionArray, OutlinesMoveUpToTheFirstRegionIfItHasNone) {
  VemRegionArray array = ArrayOf({Sample(0), WithOutlines(1, kSquare)});
  VemRegion region;
  array.Select(0, &region);
  EXPECT_EQ(ValueOf(region), WithOutlines(0, kSquare));
  array.Select(1, &region);
  EXPECT_EQ(ValueOf(region), Sample(1));
}

TEST(VemRegionArray, AppendOfAnArrayDropsItsOutlines) {
  VemRegionArray source = ArrayOf({WithOutlines(2, kSquare), WithOutlines(3, kRing)});
  VemRegionArray plain = ArrayOf({Sample(0)});
  plain.Append(source);
  EXPECT_EQ(Contents(plain), (std::vector<RegionValue>{Sample(0), Sample(2), Sample(3)}));

  VemRegionArray outlined = ArrayOf({WithOutlines(0, kRing)});
  outlined.Append(source);
  EXPECT_EQ(Contents(outlined),
            (std::vector<RegionValue>{WithOutlines(0, kRing), Sample(2), Sample(3)}));
  EXPECT_EQ(Contents(source),
            (std::vector<RegionValue>{WithOutlines(2, kSquare), WithOutlines(3, kRing)}));
}

TEST(VemRegionArray, AppendOfEachRegionKeepsOutlines) {
  const std::vector<RegionValue> values = {WithOutlines(2, kSquare), WithOutlines(3, kRing)};
  const VemRegionArray source = ArrayOf(values);
  VemRegionArray array;
  for (int i = 0; i < source.Length(); ++i) {
    VemRegion region = source[i];
    array.Append(region);
  }
  EXPECT_EQ(Contents(array), values);
}

TEST(VemRegionArray, AppendToItselfLeavesTheOutlinesAsTheyWere) {
  VemRegionArray array = ArrayOf({WithOutlines(0, kSquare), WithOutlines(1, kRing)});
  array.Append(array);
  EXPECT_EQ(Contents(array),
            (std::vector<RegionValue>{WithOutlines(0, kSquare), WithOutlines(1, kRing), Sample(0),
                                      Sample(1)}));
}

TEST(VemRegionArray, CopiesTakeOutlinesAlong) {
  const std::vector<RegionValue> values = {WithOutlines(2, kSquare), WithOutlines(3, kRing)};
  VemRegionArray source = ArrayOf(values);
  VemRegionArray copy(source);
  VemRegionArray assigned = ArrayOf({Sample(0)});
  EXPECT_EQ(&(assigned = source), &assigned);
  source.Swap(0, 1);
  EXPECT_EQ(Contents(copy), values);
  EXPECT_EQ(Contents(assigned), values);
  const VemRegionArray none;
  assigned = none;
  VemRegion region = MakeRegion(Sample(5));
  assigned.Append(region);
  EXPECT_EQ(Contents(assigned), std::vector<RegionValue>{Sample(5)});
}

TEST(VemRegionArray, ReplaceGivesOutlinesOnlyToAnArrayThatHasSome) {
  VemRegion outlined = MakeRegion(WithOutlines(4, kRing));
  VemRegionArray array = ArrayOf({Sample(0), Sample(1)});
  array.Replace(0, outlined);
  EXPECT_EQ(Contents(array), (std::vector<RegionValue>{Sample(4), Sample(1)}));

  VemRegion plain = MakeRegion(Sample(5));
  VemRegionArray full = ArrayOf({WithOutlines(0, kSquare), WithOutlines(1, kSquare)});
  full.Replace(0, plain);
  full.Replace(1, outlined);
  EXPECT_EQ(Contents(full), (std::vector<RegionValue>{Sample(5), WithOutlines(4, kRing)}));
}

// --- Union ---

TEST(VemRegionArray, UnionOfNothingIsEmpty) {
  VemRegionArray array;
  VemRegion region = MakeRegion(Sample(3));
  array.Union(&region);
  EXPECT_EQ(ValueOf(region), RegionValue());
}

TEST(VemRegionArray, UnionPutsRunsOneRegionAfterTheOther) {
  const Runs first = {{3, 0, 9}, {1, 1, 1}, {1, 1, 1}};
  const Runs second = {{8, 0, 5}, {1, 1, 1}, {0, 0, 5}};
  VemRegionArray array = ArrayOf({{10, 4, first, {}}, {6, 9, second, {}}});
  Runs both = first;
  both.insert(both.end(), second.begin(), second.end());
  EXPECT_EQ(UnionOf(array), (RegionValue{10, 9, both, {}}));
  EXPECT_EQ(Contents(array), (std::vector<RegionValue>{{10, 4, first, {}}, {6, 9, second, {}}}));
}

TEST(VemRegionArray, UnionCanvasIsNeverNegative) {
  VemRegionArray array = ArrayOf({{-3, -1, {{0, 0, 0}}, {}}, {-7, -9, {}, {}}});
  EXPECT_EQ(UnionOf(array), (RegionValue{0, 0, {{0, 0, 0}}, {}}));
}

TEST(VemRegionArray, UnionKeepsOutlinesAsTheyAre) {
  VemRegionArray array = ArrayOf({WithOutlines(0, kSquare)});
  EXPECT_EQ(UnionOf(array), Sample(0));
  VemRegion region = MakeRegion(WithOutlines(1, kRing));
  array.Union(&region);
  EXPECT_EQ(ValueOf(region), WithOutlines(0, kRing));
}

}  // namespace
