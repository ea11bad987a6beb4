#include "VemRegionArray.h"

#include <cstddef>
#include <new>
#include <vector>

#include <gtest/gtest.h>

#include "IVemRegionAPara.h"
#include "support/HeapCounter.h"
#include "support/RegionTracks.h"

// What lists of regions are where memory runs out, block by block, and where a caller has left
// them of unequal length.

namespace {

const Tracks kBefore = {{kEntryA, kEntryB, kEntryA}, {kSquare, kRing, kSquare}};

// Without room to spare: each list must grow to take one more.
IVemRegionArrayPara ParaOf(const Tracks& tracks) {
  IVemRegionArrayPara para;
  for (std::size_t i = 0; i < tracks.entries.size(); ++i) {
    VemRegion region = RegionOf(tracks.entries[i], tracks.outlines[i]);
    para.Append(region);
  }
  return IVemRegionArrayPara(para);
}

struct Operation {
  const char* name;
  int leastFailures;  // One for each list that grows and each that is copied.
  void (*act)(IVemRegionArrayPara& para, VemRegion& region);
  Tracks after;
};

const Operation kOperations[] = {
    {"Append",
     12,
     [](IVemRegionArrayPara& para, VemRegion& region) { para.Append(region); },
     {{kEntryA, kEntryB, kEntryA, kEntryB}, {kSquare, kRing, kSquare, kRing}}},
    {"AppendWithoutOutlines",
     8,
     [](IVemRegionArrayPara& para, VemRegion& region) { para.Append(region, true); },
     {{kEntryA, kEntryB, kEntryA, kEntryB}, {kSquare, kRing, kSquare}}},
    {"AppendLists",
     8,
     [](IVemRegionArrayPara& para, VemRegion&) {
       Entry entry = kEntryB;
       para.Append(9, 8, entry.rows, entry.firstColumns, entry.lastColumns);
     },
     {{kEntryA, kEntryB, kEntryA, kEntryB}, {kSquare, kRing, kSquare}}},
    {"AppendOutlines",
     4,
     [](IVemRegionArrayPara& para, VemRegion&) {
       Outlines outlines = kRing;
       para.Append(outlines.contours, outlines.hierarchy, true);
     },
     {{kEntryA, kEntryB, kEntryA}, {kSquare, kRing, kSquare, kRing}}},
    {"InsertFirst",
     12,
     [](IVemRegionArrayPara& para, VemRegion& region) { para.Insert(0, region); },
     {{kEntryB, kEntryA, kEntryB, kEntryA}, {kRing, kSquare, kRing, kSquare}}},
    {"InsertLast",
     12,
     [](IVemRegionArrayPara& para, VemRegion& region) { para.Insert(3, region); },
     {{kEntryA, kEntryB, kEntryA, kEntryB}, {kSquare, kRing, kSquare, kRing}}},
    {"Replace",
     5,
     [](IVemRegionArrayPara& para, VemRegion& region) { para.Replace(2, region); },
     {{kEntryA, kEntryB, kEntryB}, {kSquare, kRing, kRing}}},
    {"Assign",
     14,
     [](IVemRegionArrayPara& para, VemRegion&) {
       para = ParaOf({{kEntryB, kEntryB}, {kRing, kRing}});
     },
     {{kEntryB, kEntryB}, {kRing, kRing}}},
    {"AssignLonger",
     14,
     [](IVemRegionArrayPara& para, VemRegion&) {
       para = ParaOf({{kEntryB, kEntryA, kEntryB, kEntryA}, {kRing, kRing, kRing, kRing}});
     },
     {{kEntryB, kEntryA, kEntryB, kEntryA}, {kRing, kRing, kRing, kRing}}},
};

class IVemRegionArrayParaFailure : public testing::TestWithParam<Operation> {};

TEST_P(IVemRegionArrayParaFailure, LeavesAllListsAsTheyWere) {
  if (!HeapCounter::kCounts) GTEST_SKIP() << "the sanitizer has its own new";
  VemRegion region = RegionOf(kEntryB, kRing);
  for (int blocks = 0;; ++blocks) {
    SCOPED_TRACE(blocks);
    IVemRegionArrayPara para = ParaOf(kBefore);
    try {
      const HeapFailure failure(blocks);
      GetParam().act(para, region);
    } catch (const std::bad_alloc&) {
      ExpectTracks(para, kBefore);
      continue;
    }
    EXPECT_GE(blocks, GetParam().leastFailures);
    ExpectTracks(para, GetParam().after);
    break;
  }
}

INSTANTIATE_TEST_SUITE_P(Operations, IVemRegionArrayParaFailure, testing::ValuesIn(kOperations),
                         [](const auto& operation) { return operation.param.name; });

std::vector<RegionValue> Contents(const VemRegionArray& array) {
  std::vector<RegionValue> values;
  for (int i = 0; i < array.Length(); ++i) {
    VemRegion region = array[i];
    values.push_back(ValueOf(region));
  }
  return values;
}

VemRegionArray PlainArray() {
  VemRegionArray array;
  VemRegion region = RegionOf(kEntryA);
  array.Append(region);
  return array;
}

TEST(VemRegionArrayFailure, AppendOfAnArrayLeavesAllAsItWas) {
  if (!HeapCounter::kCounts) GTEST_SKIP() << "the sanitizer has its own new";
  VemRegionArray added = PlainArray();
  VemRegion region = RegionOf(kEntryB);
  added.Append(region);
  const std::vector<RegionValue> before = Contents(PlainArray());
  int failures = 0;
  for (int blocks = 0;; ++blocks) {
    SCOPED_TRACE(blocks);
    VemRegionArray array = PlainArray();
    try {
      const HeapFailure failure(blocks);
      array.Append(added);
      failures = blocks;
    } catch (const std::bad_alloc&) {
      EXPECT_EQ(Contents(array), before);
      continue;
    }
    EXPECT_EQ(array.Length(), 3);
    break;
  }
  EXPECT_GE(failures, 11);
}

TEST(VemRegionArrayFailure, AppendToItselfLeavesAllAsItWas) {
  if (!HeapCounter::kCounts) GTEST_SKIP() << "the sanitizer has its own new";
  VemRegionArray array = PlainArray();
  const std::vector<RegionValue> before = Contents(array);
  const int failures =
      FailAtEachBlock([&] { array.Append(array); }, [&] { EXPECT_EQ(Contents(array), before); });
  EXPECT_GE(failures, 5);  // Room that one attempt has made, the next need not ask for.
  EXPECT_EQ(array.Length(), 2);
}

// --- Lists of unequal length ---

// The lists of the run track, by their number: the heights, then the parts of runs.
void Shorten(IVemRegionArrayPara& para, int list) {
  if (list == 0) return para.Heights.clear();
  std::vector<Integers>* const lists[] = {&para.Rows, &para.FirstColumns, &para.LastColumns};
  lists[list - 1]->resize(1);
}

TEST(IVemRegionArrayParaUnequalLists, ReadersGoPastNone) {
  for (int list = 0; list < 4; ++list) {
    SCOPED_TRACE(list);
    IVemRegionArrayPara para = ParaOf({{kEntryB, kEntryA}, {kRing, kRing}});
    Shorten(para, list);
    RegionValue expected{7, 4, {{3, 0, 6}, {1, 2, 5}}, kRing};
    if (list == 0) expected.height = 0;
    if (list == 1) expected.runs.clear();
    for (::Run& run : expected.runs) {
      if (list == 2) run.FirstColumn = 0;
      if (list == 3) run.LastColumn = 0;
    }
    VemRegion region;
    para.Select(1, region);
    EXPECT_EQ(ValueOf(region), expected);

    expected.runs.insert(expected.runs.begin(), {2, 1, 8});
    expected.width = 9;
    expected.height = list == 0 ? 0 : 8;
    para.Union(region);
    EXPECT_EQ(ValueOf(region), expected);
  }
}

TEST(IVemRegionArrayParaUnequalLists, WritersGoPastNone) {
  for (int list = 0; list < 4; ++list) {
    SCOPED_TRACE(list);
    IVemRegionArrayPara para = ParaOf({{kEntryB, kEntryA}, {kRing, kRing}});
    Shorten(para, list);
    VemRegion region = RegionOf(kEntryC);
    para.Swap(0, 1);
    para.Replace(1, region);
    para.Insert(2, region);
    para.Append(region);
    para.Remove(3);
    para.Remove(1);
    EXPECT_GE(para.Length(), 2);
    for (int i = 0; i < para.Length(); ++i) para.Select(i, region);
    para.Union(region);
  }
}

}  // namespace
