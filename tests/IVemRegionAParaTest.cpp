#include "IVemRegionAPara.h"

#include <climits>
#include <cstddef>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

#include "support/RegionTracks.h"

namespace {

using Runs = std::vector<::Run>;

static_assert(std::is_standard_layout<IVemRegionArrayPara>::value, "a plain class");
static_assert(!std::is_polymorphic<IVemRegionArrayPara>::value, "no virtual operations");
static_assert(offsetof(IVemRegionArrayPara, Widths) == 0, "the order of the fields");
static_assert(offsetof(IVemRegionArrayPara, Heights) == 24, "the order of the fields");
static_assert(offsetof(IVemRegionArrayPara, Contours) == 48, "the order of the fields");
static_assert(offsetof(IVemRegionArrayPara, Hierarchies) == 72, "the order of the fields");
static_assert(offsetof(IVemRegionArrayPara, Rows) == 96, "the order of the fields");
static_assert(offsetof(IVemRegionArrayPara, FirstColumns) == 120, "the order of the fields");
static_assert(offsetof(IVemRegionArrayPara, LastColumns) == 144, "the order of the fields");
static_assert(sizeof(IVemRegionArrayPara) == 168, "no further field");

void Append(IVemRegionArrayPara& para, const Entry& entry, const Outlines& outlines = Outlines()) {
  VemRegion region = RegionOf(entry, outlines);
  para.Append(region);
}

RegionValue Selected(IVemRegionArrayPara& para, int position) {
  VemRegion region;
  para.Select(position, region);
  return ValueOf(region);
}

TEST(IVemRegionArrayPara, DefaultHasNoRegions) {
  IVemRegionArrayPara para;
  EXPECT_EQ(para.Length(), 0);
  ExpectTracks(para, {});
}

// --- Append ---

TEST(IVemRegionArrayPara, AppendTakesOutlinesWithAHierarchy) {
  const struct {
    const char* name;
    Outlines given;
    std::vector<Outlines> taken;
  } cases[] = {
      {"None", {}, {}},
      {"Both", kSquare, {kSquare}},
      {"HierarchyAlone", kHierarchyAlone, {kHierarchyAlone}},
      {"ContoursAlone", kContoursAlone, {}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    IVemRegionArrayPara para;
    VemRegion region;
    Block(region)->Hierarchy = c.given.hierarchy;
    Block(region)->Contours = c.given.contours;
    para.Append(region);
    EXPECT_EQ(para.Length(), 1);
    ExpectTracks(para, {{Entry()}, c.taken});
    para.Append(region);
    para.Insert(0, region);
    EXPECT_EQ(para.Length(), 3);
    EXPECT_EQ(para.Hierarchies.size(), 3 * c.taken.size());
  }
}

TEST(IVemRegionArrayPara, AppendWithAFlagNeverTakesOutlines) {
  for (const bool flag : {false, true}) {
    SCOPED_TRACE(flag);
    IVemRegionArrayPara para;
    VemRegion region = RegionOf(kEntryA, kSquare);
    para.Append(region, flag);
    EXPECT_EQ(para.Length(), 1);
    ExpectTracks(para, {{kEntryA}, {}});
  }
}

TEST(IVemRegionArrayPara, AppendOfListsTestsTheirLengths) {
  const struct {
    const char* name;
    std::size_t rows, firstColumns, lastColumns;
    bool taken;
  } cases[] = {
      {"Equal", 2, 2, 2, true},
      {"LongLastColumns", 2, 2, 5, true},
      {"ShortLastColumns", 2, 2, 1, true},
      {"NoRows", 0, 0, 2, false},
      {"NoLastColumns", 2, 2, 0, false},
      {"LongFirstColumns", 2, 3, 5, false},
      {"ShortFirstColumns", 2, 1, 2, false},
      {"NoFirstColumns", 1, 0, 1, false},
      {"Nothing", 0, 0, 0, false},
      {"FirstColumnsAlone", 0, 1, 1, false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    Integers rows(c.rows, 1), firstColumns(c.firstColumns, 2), lastColumns(c.lastColumns, 3);
    IVemRegionArrayPara para;
    Append(para, kEntryB);
    para.Append(30, 40, rows, firstColumns, lastColumns);
    std::vector<Entry> expected = {kEntryB};
    if (c.taken) expected.push_back({30, 40, rows, firstColumns, lastColumns});
    ExpectTracks(para, {expected, {}});
  }
}

TEST(IVemRegionArrayPara, AppendOfListsTakesAnyCanvas) {
  Integers one = {1};
  IVemRegionArrayPara para;
  para.Append(-5, 0, one, one, one);
  ExpectTracks(para, {{{-5, 0, one, one, one}}, {}});
}

TEST(IVemRegionArrayPara, AppendOfListsTakesItsOwn) {
  IVemRegionArrayPara para;
  Append(para, kEntryA);
  for (int i = 0; i < 5; ++i) para.Append(1, 1, para.LastColumns[0], para.Rows[0], para.Rows[0]);
  const Entry added = {1, 1, kEntryA.lastColumns, kEntryA.rows, kEntryA.rows};
  ExpectTracks(para, {{kEntryA, added, added, added, added, added}, {}});
}

TEST(IVemRegionArrayPara, AppendOfOutlinesAddsNoRegion) {
  for (const bool flag : {false, true}) {
    SCOPED_TRACE(flag);
    IVemRegionArrayPara para;
    Outlines ring = kRing;
    Outlines none;
    para.Append(ring.contours, ring.hierarchy, flag);
    para.Append(none.contours, none.hierarchy, flag);
    EXPECT_EQ(para.Length(), 0);
    ExpectTracks(para, {{}, {kRing, none}});
    EXPECT_EQ(Selected(para, 0), RegionValue());
  }
}

TEST(IVemRegionArrayPara, ListsAndOutlinesTogetherMakeARegion) {
  IVemRegionArrayPara para;
  Integers rows = {3, 1}, firstColumns = {0, 2}, lastColumns = {6, 5};
  Outlines ring = kRing;
  para.Append(7, 4, rows, firstColumns, lastColumns);
  para.Append(ring.contours, ring.hierarchy, true);
  EXPECT_EQ(Selected(para, 0), (RegionValue{7, 4, {{3, 0, 6}, {1, 2, 5}}, kRing}));
}

TEST(IVemRegionArrayPara, ColumnsBesideNoRowAreNotRead) {
  IVemRegionArrayPara para;
  Integers rows = {1, 2}, firstColumns = {3, 4}, lastColumns = {5, 6, 7, 8, 9};
  para.Append(10, 10, rows, firstColumns, lastColumns);
  EXPECT_EQ(Selected(para, 0).runs, (Runs{{1, 3, 5}, {2, 4, 6}}));
  VemRegion region;
  para.Union(region);
  EXPECT_EQ(ValueOf(region).runs, (Runs{{1, 3, 5}, {2, 4, 6}}));
}

TEST(IVemRegionArrayPara, MissingLastColumnsAreNotReadFromElsewhere) {
  IVemRegionArrayPara para;
  Integers rows = {1, 2}, firstColumns = {3, 4}, lastColumns = {5};
  para.Append(10, 10, rows, firstColumns, lastColumns);
  const RegionValue value = Selected(para, 0);
  ASSERT_EQ(value.runs.size(), 2u);
  EXPECT_EQ(value.runs[0], (::Run{1, 3, 5}));
  EXPECT_EQ(value.runs[1].Row, 2);
  EXPECT_EQ(value.runs[1].FirstColumn, 4);
}

// --- Tracks out of step ---

TEST(IVemRegionArrayPara, InsertPutsOutlinesAtTheSamePosition) {
  IVemRegionArrayPara para;
  Append(para, kEntryA, kSquare);
  Append(para, kEntryB, kSquare);
  VemRegion plain = RegionOf(kEntryC);
  para.Insert(0, plain);
  ExpectTracks(para, {{kEntryC, kEntryA, kEntryB}, {kSquare, kSquare}});
  VemRegion ring = RegionOf(kEntryC, kRing);
  para.Insert(1, ring);
  ExpectTracks(para, {{kEntryC, kEntryC, kEntryA, kEntryB}, {kSquare, kRing, kSquare}});
  para.Insert(3, ring);
  para.Insert(5, plain);
  ExpectTracks(para, {{kEntryC, kEntryC, kEntryA, kEntryC, kEntryB, kEntryC},
                      {kSquare, kRing, kSquare, kRing}});
}

TEST(IVemRegionArrayPara, RemoveTreatsEachTrackAlone) {
  const Tracks all = {{kEntryA, kEntryB, kEntryC}, {kSquare}};
  const struct {
    int position;
    Tracks expected;
  } cases[] = {
      {-1, all},
      {INT_MIN, all},
      {0, {{kEntryB, kEntryC}, {}}},
      {1, {{kEntryA, kEntryC}, {kSquare}}},
      {2, {{kEntryA, kEntryB}, {kSquare}}},
      {3, all},
      {INT_MAX, all},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.position);
    IVemRegionArrayPara para;
    Append(para, kEntryA);
    Append(para, kEntryB, kSquare);
    Append(para, kEntryC);
    para.Remove(c.position);
    ExpectTracks(para, c.expected);
  }
}

TEST(IVemRegionArrayPara, RemoveTakesOutlinesBeyondTheRegions) {
  IVemRegionArrayPara para;
  Append(para, kEntryA);
  Outlines square = kSquare, ring = kRing;
  para.Append(square.contours, square.hierarchy, false);
  para.Append(ring.contours, ring.hierarchy, false);
  para.Remove(1);
  ExpectTracks(para, {{kEntryA}, {kSquare}});
}

TEST(IVemRegionArrayPara, SwapTreatsEachTrackAlone) {
  const Tracks all = {{kEntryA, kEntryB, kEntryC}, {kSquare, kRing}};
  const struct {
    int a, b;
    Tracks expected;
  } cases[] = {
      {0, 1, {{kEntryB, kEntryA, kEntryC}, {kRing, kSquare}}},
      {1, 0, {{kEntryB, kEntryA, kEntryC}, {kRing, kSquare}}},
      {0, 2, {{kEntryC, kEntryB, kEntryA}, {kSquare, kRing}}},
      {1, 1, all},
      {2, 2, all},
      {0, 3, all},
      {0, 5, all},
      {-1, 0, all},
      {1, -1, all},
      {INT_MIN, INT_MAX, all},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << c.a << ", " << c.b);
    IVemRegionArrayPara para;
    Append(para, kEntryA);
    Append(para, kEntryB, kSquare);
    Append(para, kEntryC, kRing);
    para.Swap(c.a, c.b);
    ExpectTracks(para, c.expected);
  }
}

TEST(IVemRegionArrayPara, SwapExchangesOutlinesBeyondTheRegions) {
  IVemRegionArrayPara para;
  Append(para, kEntryA);
  Outlines square = kSquare, ring = kRing;
  para.Append(square.contours, square.hierarchy, false);
  para.Append(ring.contours, ring.hierarchy, false);
  para.Swap(0, 1);
  ExpectTracks(para, {{kEntryA}, {kRing, kSquare}});
}

TEST(IVemRegionArrayPara, ReplaceAsksTheArrayForOutlines) {
  VemRegion ring = RegionOf(kEntryC, kRing);
  VemRegion plain = RegionOf(kEntryC);
  IVemRegionArrayPara para;
  Append(para, kEntryA);
  Append(para, kEntryB);
  para.Replace(0, ring);
  ExpectTracks(para, {{kEntryC, kEntryB}, {}});
  EXPECT_EQ(Selected(para, 0).outlines, Outlines());

  IVemRegionArrayPara outlined;
  Append(outlined, kEntryA, kSquare);
  Append(outlined, kEntryB, kSquare);
  outlined.Replace(1, ring);
  ExpectTracks(outlined, {{kEntryA, kEntryC}, {kSquare, kRing}});
  outlined.Replace(0, plain);
  ExpectTracks(outlined, {{kEntryC, kEntryC}, {Outlines(), kRing}});
  Block(plain)->Contours = kContoursAlone.contours;
  outlined.Replace(1, plain);
  ExpectTracks(outlined, {{kEntryC, kEntryC}, {Outlines(), kContoursAlone}});
}

TEST(IVemRegionArrayPara, BadPositionsReachNoForeignMemory) {
  const Tracks before = {{kEntryA, kEntryB}, {kSquare}};
  VemRegion ring = RegionOf(kEntryC, kRing);
  for (const int position : {-1, -1000000, 3, 1000000, INT_MIN, INT_MAX}) {
    SCOPED_TRACE(position);
    IVemRegionArrayPara para;
    Append(para, kEntryA, kSquare);
    Append(para, kEntryB);
    para.Insert(position, ring);
    para.Replace(position, ring);
    ExpectTracks(para, before);
  }
}

TEST(IVemRegionArrayPara, AShortContourTrackReachesNoForeignMemory) {
  IVemRegionArrayPara para;
  Append(para, kEntryA, kSquare);
  Append(para, kEntryB);
  Append(para, kEntryC);
  EXPECT_EQ(Selected(para, 1).outlines, Outlines());
  VemRegion ring = RegionOf(kEntryC, kRing);
  para.Insert(2, ring);
  para.Replace(3, ring);
  ExpectTracks(para, {{kEntryA, kEntryB, kEntryC, kEntryC}, {kSquare}});
}

// --- Select ---

TEST(IVemRegionArrayPara, SelectOutOfRangeChangesNothing) {
  IVemRegionArrayPara para;
  Append(para, kEntryA, kSquare);
  for (const int position : {-1, 1, 2, INT_MIN, INT_MAX}) {
    SCOPED_TRACE(position);
    VemRegion region = RegionOf(kEntryB, kRing);
    const RegionValue before = ValueOf(region);
    para.Select(position, region);
    EXPECT_EQ(ValueOf(region), before);
  }
}

TEST(IVemRegionArrayPara, SelectDeliversEmptyOutlinesOfAnArrayThatHasAPlaceForThem) {
  IVemRegionArrayPara para;
  Append(para, kEntryA);
  Outlines none;
  para.Append(none.contours, none.hierarchy, false);
  VemRegion region = RegionOf(kEntryB, kRing);
  para.Select(0, region);
  EXPECT_EQ(ValueOf(region).outlines, Outlines());
}

struct PaintedCase {
  const char* name;
  int width, height;
  Contours contours;
  const char* picture;
};

const PaintedCase kPaintedCases[] = {
    {"Rectangle",
     6,
     5,
     {{{1, 1}, {4, 1}, {4, 3}, {1, 3}}},
     "......\n"
     ".####.\n"
     ".####.\n"
     ".####.\n"
     "......\n"},
    {"HoleInside",
     7,
     7,
     {{{0, 0}, {6, 0}, {6, 6}, {0, 6}}, {{1, 1}, {5, 1}, {5, 5}, {1, 5}}},
     "#######\n"
     "#######\n"
     "##...##\n"
     "##...##\n"
     "##...##\n"
     "#######\n"
     "#######\n"},
    {"TwoApart",
     7,
     3,
     {{{0, 0}, {1, 0}, {1, 2}, {0, 2}}, {{4, 1}, {6, 1}}},
     "##.....\n"
     "##..###\n"
     "##.....\n"},
    {"BeyondTheCanvas",
     4,
     3,
     {{{-5, 1}, {20, 1}, {20, 9}, {-5, 9}}},
     "....\n"
     "####\n"
     "####\n"},
    {"OutsideTheCanvas",
     4,
     2,
     {{{10, 10}, {20, 10}, {20, 20}}},
     "....\n"
     "....\n"},
    {"Point",
     3,
     2,
     {{{1, 1}}},
     "...\n"
     ".#.\n"},
    {"EmptyContour",
     3,
     2,
     {{}, {{2, 0}}},
     "..#\n"
     "...\n"},
    {"NoContours",
     3,
     2,
     {},
     "...\n"
     "...\n"},
};

// An array whose regions have contours alone: the lists of runs are empty as a whole.
IVemRegionArrayPara ContoursAlone(const PaintedCase& c, const Hierarchy& hierarchy) {
  IVemRegionArrayPara para;
  para.Widths = {1, c.width};
  para.Heights = {1, c.height};
  para.Contours = {{{{0, 0}}}, c.contours};
  para.Hierarchies = {{}, hierarchy};
  return para;
}

TEST(IVemRegionArrayPara, ContoursAloneArePainted) {
  for (const PaintedCase& c : kPaintedCases) {
    SCOPED_TRACE(c.name);
    // The hierarchy plays no part, even if it makes no sense.
    IVemRegionArrayPara para = ContoursAlone(c, {{9, 8, 7, 6}});
    VemRegion region = RegionOf(kEntryA, kRing);
    para.Select(1, region);
    const RegionValue value = ValueOf(region);
    EXPECT_EQ(value.width, c.width);
    EXPECT_EQ(value.height, c.height);
    EXPECT_EQ(Picture(value.runs, c.width, c.height), c.picture);
    EXPECT_EQ(value.outlines, (Outlines{c.contours, {{9, 8, 7, 6}}}));
    EXPECT_EQ(Selected(para, 0), (RegionValue{1, 1, {{0, 0, 0}}, {{{{0, 0}}}, {}}}));
  }
}

TEST(IVemRegionArrayPara, PaintedRunsStandInTheCodersOrder) {
  IVemRegionArrayPara para = ContoursAlone(kPaintedCases[2], {});
  EXPECT_EQ(Selected(para, 1).runs, (Runs{{0, 0, 1}, {1, 0, 1}, {1, 4, 6}, {2, 0, 1}}));
}

TEST(IVemRegionArrayPara, OneListOfRunsKeepsContoursFromBeingPainted) {
  IVemRegionArrayPara para = ContoursAlone(kPaintedCases[0], {});
  para.Rows = {{}, {}};
  para.FirstColumns = {{}, {}};
  para.LastColumns = {{}, {}};
  EXPECT_EQ(Selected(para, 1), (RegionValue{6, 5, {}, {kPaintedCases[0].contours, {}}}));
}

// Contours are painted and delivered though the array has no hierarchies at all.
TEST(IVemRegionArrayPara, ContoursWithoutHierarchiesArePaintedAndDelivered) {
  const PaintedCase& c = kPaintedCases[0];
  IVemRegionArrayPara para = ContoursAlone(c, {});
  para.Hierarchies.clear();
  VemRegion region = RegionOf(kEntryA, kRing);
  para.Select(1, region);
  const RegionValue value = ValueOf(region);
  EXPECT_EQ(Picture(value.runs, c.width, c.height), c.picture);
  EXPECT_EQ(value.outlines, (Outlines{c.contours, {}}));
}

TEST(IVemRegionArrayPara, PaintingOnNoCanvasGivesNoRuns) {
  for (const cv::Size size : {cv::Size(0, 0), cv::Size(0, 4), cv::Size(4, 0)}) {
    SCOPED_TRACE(size.width);
    PaintedCase c = kPaintedCases[0];
    c.width = size.width;
    c.height = size.height;
    IVemRegionArrayPara para = ContoursAlone(c, {});
    EXPECT_EQ(Selected(para, 1), (RegionValue{c.width, c.height, {}, {c.contours, {}}}));
  }
}

TEST(IVemRegionArrayPara, PaintingOnANegativeCanvasRaises) {
  PaintedCase c = kPaintedCases[0];
  c.width = -1;
  IVemRegionArrayPara para = ContoursAlone(c, {});
  VemRegion region = RegionOf(kEntryA, kRing);
  const RegionValue before = ValueOf(region);
  EXPECT_THROW(para.Select(1, region), cv::Exception);
  EXPECT_EQ(ValueOf(region), before);
}

TEST(IVemRegionArrayPara, RemoveAndSwapAskTheRowsForTheRunTrack) {
  IVemRegionArrayPara para = ContoursAlone(kPaintedCases[0], {});
  para.Swap(0, 1);
  EXPECT_EQ(para.Widths, (Integers{1, 6}));
  EXPECT_EQ(para.Contours[0], kPaintedCases[0].contours);
  para.Remove(1);
  EXPECT_EQ(para.Widths, (Integers{1, 6}));
  EXPECT_EQ(para.Heights, (Integers{1, 5}));
  EXPECT_EQ(para.Contours.size(), 1u);
  EXPECT_EQ(para.Hierarchies.size(), 1u);
}

// Whoever writes the fields may leave the lists of a track uneven: one of each tells its length,
// and not the same one for both operations.
TEST(IVemRegionArrayPara, RemoveAsksTheHierarchiesAndSwapTheContoursForTheContourTrack) {
  IVemRegionArrayPara oneHierarchy;
  oneHierarchy.Contours = {kSquare.contours, kRing.contours};
  oneHierarchy.Hierarchies = {kSquare.hierarchy};
  oneHierarchy.Remove(1);
  EXPECT_EQ(oneHierarchy.Contours, (std::vector<Contours>{kSquare.contours, kRing.contours}));
  oneHierarchy.Swap(0, 1);
  EXPECT_EQ(oneHierarchy.Contours, (std::vector<Contours>{kRing.contours, kSquare.contours}));

  IVemRegionArrayPara oneList;
  oneList.Contours = {kSquare.contours};
  oneList.Hierarchies = {kSquare.hierarchy, kRing.hierarchy};
  oneList.Swap(0, 1);
  EXPECT_EQ(oneList.Hierarchies, (std::vector<Hierarchy>{kSquare.hierarchy, kRing.hierarchy}));
  oneList.Remove(1);
  EXPECT_EQ(oneList.Hierarchies, std::vector<Hierarchy>{kSquare.hierarchy});
}

TEST(IVemRegionArrayPara, RemoveAndSwapAskNoOtherListOfTheRunTrack) {
  IVemRegionArrayPara para;
  para.Widths = para.Heights = {1, 2};
  para.FirstColumns = para.LastColumns = {{3}, {4}};
  para.Rows = {{5}};
  para.Swap(0, 1);
  para.Remove(1);
  EXPECT_EQ(para.Widths, (Integers{1, 2}));
  EXPECT_EQ(para.FirstColumns, (std::vector<Integers>{{3}, {4}}));
  para.Widths = {1};
  para.Rows = {{5}, {6}};
  para.Swap(0, 1);
  EXPECT_EQ(para.Rows, (std::vector<Integers>{{6}, {5}}));
  EXPECT_EQ(para.Heights, (Integers{2, 1}));
  para.Remove(1);
  EXPECT_EQ(para.Rows, std::vector<Integers>{{6}});
  EXPECT_EQ(para.Heights, Integers{2});
}

// --- Copies ---

TEST(IVemRegionArrayPara, CopiesAreDeep) {
  IVemRegionArrayPara source;
  Append(source, kEntryA, kSquare);
  Append(source, kEntryB, kRing);
  const Tracks expected = {{kEntryA, kEntryB}, {kSquare, kRing}};
  IVemRegionArrayPara copy(source);
  IVemRegionArrayPara assigned;
  Append(assigned, kEntryC);
  EXPECT_EQ(&(assigned = source), &assigned);
  source.Widths[0] = source.Heights[0] = source.Rows[0][0] = 99;
  source.FirstColumns[0][0] = source.LastColumns[0][0] = 99;
  source.Contours[0][0][0].x = 99;
  source.Hierarchies[0][0][0] = 99;
  ExpectTracks(copy, expected);
  ExpectTracks(assigned, expected);
  const IVemRegionArrayPara& itself = assigned;
  assigned = itself;
  ExpectTracks(assigned, expected);
}

TEST(IVemRegionArrayPara, ClearEmptiesAllListsAndGivesStorageBack) {
  IVemRegionArrayPara para;
  Append(para, kEntryA, kSquare);
  para.Clear();
  EXPECT_EQ(para.Length(), 0);
  ExpectTracks(para, {});
  EXPECT_EQ(para.Widths.capacity() + para.Heights.capacity() + para.Rows.capacity(), 0u);
  EXPECT_EQ(para.FirstColumns.capacity() + para.LastColumns.capacity(), 0u);
  EXPECT_EQ(para.Contours.capacity() + para.Hierarchies.capacity(), 0u);
  Append(para, kEntryB, kRing);
  ExpectTracks(para, {{kEntryB}, {kRing}});
}

}  // namespace
