#include "VemRegion.h"

#include <climits>
#include <cstddef>
#include <functional>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

#include "support/Regions.h"

// Other code reaches the fields by their places.
static_assert(offsetof(VemRegionData, Width) == 0 && offsetof(VemRegionData, Height) == 4 &&
              offsetof(VemRegionData, Rows) == 8 && offsetof(VemRegionData, FirstColumns) == 16 &&
              offsetof(VemRegionData, LastColumns) == 24 &&
              offsetof(VemRegionData, Hierarchy) == 32 && offsetof(VemRegionData, Contours) == 56 &&
              sizeof(VemRegionData) == 80);

namespace {

using Runs = std::vector<::Run>;
using Points = std::vector<VemPoint>;

static_assert(sizeof(VemRegion) == sizeof(void*), "a handle is one pointer");

VemVarArray Integers(const std::vector<int>& values) {
  VemVarArray array;
  for (const int value : values) array.Append(value);
  return array;
}

VemVarArray Count(int length) {
  return Integers(std::vector<int>(static_cast<std::size_t>(length)));
}

VemRegion FromRuns(const Runs& runs, int width, int height) {
  VemVarArray rows, firstColumns, lastColumns;
  for (const ::Run& run : runs) {
    rows.Append(run.Row);
    firstColumns.Append(run.FirstColumn);
    lastColumns.Append(run.LastColumn);
  }
  return VemRegion(width, height, rows, firstColumns, lastColumns);
}

struct Triple {
  VemVarArray rows, firstColumns, lastColumns;
};

Triple TripleOf(VemRegion& region) {
  Triple triple;
  region.GetRegionRuns(&triple.rows, &triple.firstColumns, &triple.lastColumns);
  return triple;
}

void ExpectTriple(VemRegion& region, const VemVarArray& rows, const VemVarArray& firstColumns,
                  const VemVarArray& lastColumns) {
  const Triple triple = TripleOf(region);
  EXPECT_TRUE(Same(triple.rows, rows)) << testing::PrintToString(triple.rows);
  EXPECT_TRUE(Same(triple.firstColumns, firstColumns))
      << testing::PrintToString(triple.firstColumns);
  EXPECT_TRUE(Same(triple.lastColumns, lastColumns)) << testing::PrintToString(triple.lastColumns);
}

void ExpectRegion(VemRegion& region, int width, int height, const Runs& runs) {
  EXPECT_EQ(region.Width(), width);
  EXPECT_EQ(region.Height(), height);
  const Triple triple = TripleOf(region);
  EXPECT_EQ(RunsOf(triple.rows, triple.firstColumns, triple.lastColumns), runs);
}

void ExpectOutlines(VemRegion& region, const Hierarchy& hierarchy, const Contours& contours) {
  EXPECT_EQ(Block(region)->Hierarchy, hierarchy);
  EXPECT_EQ(Block(region)->Contours, contours);
}

void ExpectEmpty(VemRegion& region) {
  ExpectRegion(region, 0, 0, {});
  ExpectOutlines(region, {}, {});
}

TEST(VemRegion, DefaultIsEmpty) {
  VemRegion region;
  ExpectEmpty(region);
}

// --- From run arrays ---

struct InferredCase {
  const char* name;
  std::vector<int> rows, firstColumns, lastColumns;
  int width, height;
};

const InferredCase kInferredCases[] = {
    {"LargestFirst", {4, 2}, {0, 0}, {9, 7}, 10, 5},
    {"LargestLast", {2, 4}, {0, 0}, {7, 9}, 10, 5},
    {"LargestInDifferentRuns", {1, 3, 2}, {0, 0, 0}, {6, 4, 5}, 7, 4},
    {"FirstColumnsDoNotCount", {4, 2}, {100, 200}, {9, 7}, 10, 5},
    {"Origin", {0}, {0}, {0}, 1, 1},
    {"OnlyNegative", {-3, -1}, {-9, -8}, {-2, -7}, 1, 1},
    {"NegativeBesidePositive", {-1, 3}, {-5, -6}, {5, -1}, 6, 4},
    {"UnsortedAndOverlapping", {3, 0, 3, 0}, {1, 0, 1, 2}, {2, 4, 2, 3}, 5, 4},
    {"LargestIntegerWraps", {INT_MAX}, {0}, {INT_MAX}, INT_MIN, INT_MIN},
};

TEST(VemRegion, RunsGiveTheCanvas) {
  for (const InferredCase& c : kInferredCases) {
    SCOPED_TRACE(c.name);
    VemVarArray rows = Integers(c.rows);
    VemVarArray firstColumns = Integers(c.firstColumns);
    VemVarArray lastColumns = Integers(c.lastColumns);
    VemRegion region(rows, firstColumns, lastColumns);
    EXPECT_EQ(region.Width(), c.width);
    EXPECT_EQ(region.Height(), c.height);
    ExpectTriple(region, rows, firstColumns, lastColumns);
    ExpectOutlines(region, {}, {});
  }
}

TEST(VemRegion, CanvasHoldsTheLargestOfManyRuns) {
  for (const int count : {1, 63, 64, 65, 255, 256, 257, 320, 700}) {
    VemVarArray rows, firstColumns, lastColumns;
    for (int i = 0; i < count; ++i) {
      rows.Append(2);
      firstColumns.Append(3);
      lastColumns.Append(4);
    }
    for (int i = 0; i < count; ++i) {
      rows[count - 1 - i] = VemVar(8);
      lastColumns[i] = VemVar(9);
      const VemRegion region(rows, firstColumns, lastColumns);
      ASSERT_EQ(region.Width(), 10) << "run " << i << " of " << count;
      ASSERT_EQ(region.Height(), 9) << "run " << count - 1 - i << " of " << count;
      rows[count - 1 - i] = VemVar(2);
      lastColumns[i] = VemVar(4);
    }
  }
}

TEST(VemRegion, RunsAreReadAsIntegersAndStoredAsTheyAre) {
  VemVarArray rows(4.9);
  rows.Append(5000000000.0);  // No int: reads as the smallest integer.
  VemVarArray firstColumns("first");
  firstColumns.Append(7);
  VemVarArray lastColumns(0x100000003L);  // Reads as 3, its low 32 bits.
  lastColumns.Append(2.5);
  VemRegion inferred(rows, firstColumns, lastColumns);
  EXPECT_EQ(inferred.Width(), 4);
  EXPECT_EQ(inferred.Height(), 5);
  ExpectTriple(inferred, rows, firstColumns, lastColumns);

  VemRegion stated(2, 1, rows, firstColumns, lastColumns);
  EXPECT_EQ(stated.Width(), 2);
  EXPECT_EQ(stated.Height(), 1);
  ExpectTriple(stated, rows, firstColumns, lastColumns);
}

// A text counts as 0, and the copies are the region's own.
TEST(VemRegion, RunsThatAreTextsAreCopied) {
  for (const int count : {1, 64, 65, 256, 320, 700}) {
    for (int text = 0; text < count; text += 37) {
      VemVarArray rows, firstColumns, lastColumns;
      for (int i = 0; i < count; ++i) {
        rows.Append(i == text ? VemVar("a row") : VemVar(2));
        firstColumns.Append(i);
        lastColumns.Append(i == text ? VemVar("the last column") : VemVar(4));
      }
      VemRegion region(rows, firstColumns, lastColumns);
      ASSERT_EQ(region.Width(), count == 1 ? 1 : 5) << "text " << text << " of " << count;
      ASSERT_EQ(region.Height(), count == 1 ? 1 : 3) << "text " << text << " of " << count;
      ExpectTriple(region, rows, firstColumns, lastColumns);
      VemVarArray copies[3];
      region.GetRegionRuns(&copies[0], &copies[1], &copies[2]);
      rows.Clear();
      lastColumns.Clear();
      EXPECT_STREQ(copies[0][text].S(), "a row");
      EXPECT_STREQ(copies[2][text].S(), "the last column");
    }
  }
}

TEST(VemRegion, RunArraysOfDifferentLengthsAreRefused) {
  const struct {
    const char* name;
    int rows, firstColumns, lastColumns;
  } cases[] = {
      {"ShortLastColumns", 3, 3, 2}, {"ShortFirstColumns", 3, 2, 3}, {"ShortRows", 2, 3, 3},
      {"NoLastColumns", 1, 1, 0},    {"NoFirstColumns", 1, 0, 1},    {"NoRows", 0, 1, 1},
      {"OnlyRows", 1, 0, 0},         {"OnlyFirstColumns", 0, 1, 0},  {"OnlyLastColumns", 0, 0, 1},
      {"AllDifferent", 1, 2, 3},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    VemVarArray rows = Count(c.rows);
    VemVarArray firstColumns = Count(c.firstColumns);
    VemVarArray lastColumns = Count(c.lastColumns);
    VemRegion inferred(rows, firstColumns, lastColumns);
    ExpectEmpty(inferred);
    VemRegion stated(10, 10, rows, firstColumns, lastColumns);
    ExpectEmpty(stated);
  }
}

TEST(VemRegion, NoRunsAreRefusedOnlyWithoutACanvas) {
  VemVarArray none;
  VemRegion inferred(none, none, none);
  ExpectEmpty(inferred);
  VemRegion stated(7, 3, none, none, none);
  ExpectRegion(stated, 7, 3, {});
}

TEST(VemRegion, StatedCanvasIsKept) {
  const Runs inside = {{2, 0, 6}, {0, 1, 1}};
  VemRegion region = FromRuns(inside, 7, 3);
  ExpectRegion(region, 7, 3, inside);
  ExpectOutlines(region, {}, {});

  const Runs outside = {{-4, -3, 900}, {70, 8, 2}};
  VemRegion small = FromRuns(outside, 1, 1);
  ExpectRegion(small, 1, 1, outside);
}

struct CanvasCase {
  const char* name;
  int width, height;
};

const CanvasCase kRefusedCanvases[] = {
    {"WidthZero", 0, 5},           {"HeightZero", 5, 0},           {"BothZero", 0, 0},
    {"WidthNegative", -1, 5},      {"HeightNegative", 5, -1},      {"BothNegative", -3, -3},
    {"WidthSmallest", INT_MIN, 5}, {"HeightSmallest", 5, INT_MIN},
};

TEST(VemRegion, CanvasBelow1By1IsRefused) {
  for (const CanvasCase& c : kRefusedCanvases) {
    SCOPED_TRACE(c.name);
    VemRegion withRuns = FromRuns({{0, 0, 0}}, c.width, c.height);
    ExpectEmpty(withRuns);
    VemRegion withoutRuns = FromRuns({}, c.width, c.height);
    ExpectEmpty(withoutRuns);
    VemPointArray points = PointArray({{0, 0}, {1, 1}});
    VemRegion withPoints(c.width, c.height, points);
    ExpectEmpty(withPoints);
    points.Clear();
    VemRegion withoutPoints(c.width, c.height, points);
    ExpectEmpty(withoutPoints);
  }
}

// --- Setters and readers ---

TEST(VemRegion, SetWidthAndHeightStoreAnyValueAndLeaveTheRest) {
  const Runs runs = {{2, 1, 8}, {0, 3, 3}};
  VemRegion region = FromRuns(runs, 9, 3);
  for (const int size : {4, 1, 0, -7, INT_MAX, INT_MIN}) {
    SCOPED_TRACE(size);
    region.SetWidth(size);
    ExpectRegion(region, size, 3, runs);
    region.SetWidth(9);
    region.SetHeight(size);
    ExpectRegion(region, 9, size, runs);
    region.SetHeight(3);
  }
}

TEST(VemRegion, SetRunsStoresArraysAsTheyAre) {
  const struct {
    const char* name;
    std::vector<int> rows, firstColumns, lastColumns;
  } cases[] = {
      {"EqualLengths", {50, 1}, {2, 3}, {1, 90}},
      {"DifferentLengths", {1, 2, 3}, {4}, {5, 6}},
      {"OnlyRows", {1}, {}, {}},
      {"Negative", {-1}, {-2}, {-3}},
      {"None", {}, {}, {}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    VemVarArray rows = Integers(c.rows);
    VemVarArray firstColumns = Integers(c.firstColumns);
    VemVarArray lastColumns = Integers(c.lastColumns);

    VemRegion set = FromRuns({{0, 0, 4}, {1, 0, 4}}, 5, 2);
    set.SetRuns(rows, firstColumns, lastColumns);
    EXPECT_EQ(set.Width(), 5);
    EXPECT_EQ(set.Height(), 2);
    ExpectTriple(set, rows, firstColumns, lastColumns);

    VemRegion created = FromRuns({{0, 0, 4}, {1, 0, 4}}, 5, 2);
    created.CreateRegion(-6, 0, rows, firstColumns, lastColumns);
    EXPECT_EQ(created.Width(), -6);
    EXPECT_EQ(created.Height(), 0);
    ExpectTriple(created, rows, firstColumns, lastColumns);
  }
}

TEST(VemRegion, CreateRegionTakesWidthBeforeHeight) {
  VemVarArray none;
  VemRegion region;
  region.CreateRegion(8, 3, none, none, none);
  ExpectRegion(region, 8, 3, {});
}

TEST(VemRegion, GetRegionRunsReplacesWhatTheArraysHeld) {
  VemRegion region = FromRuns({{2, 1, 8}, {0, 3, 4}}, 9, 3);
  VemVarArray rows("text");
  VemVarArray firstColumns = Integers({7, 7, 7, 7});
  VemVarArray lastColumns;
  region.GetRegionRuns(&rows, &firstColumns, &lastColumns);
  EXPECT_TRUE(Same(rows, Integers({2, 0})));
  EXPECT_TRUE(Same(firstColumns, Integers({1, 3})));
  EXPECT_TRUE(Same(lastColumns, Integers({8, 4})));

  VemRegion().GetRegionRuns(&rows, &firstColumns, &lastColumns);
  EXPECT_EQ(rows.Length(), 0);
  EXPECT_EQ(firstColumns.Length(), 0);
  EXPECT_EQ(lastColumns.Length(), 0);
}

struct RunsTakerCase {
  const char* name;
  std::function<void(VemRegion&, VemVarArray&, VemVarArray&, VemVarArray&)> take;
};

const RunsTakerCase kRunsTakerCases[] = {
    {"InferringConstructor",
     [](VemRegion& region, VemVarArray& rows, VemVarArray& firstColumns, VemVarArray& lastColumns) {
       region = VemRegion(rows, firstColumns, lastColumns);
     }},
    {"StatingConstructor",
     [](VemRegion& region, VemVarArray& rows, VemVarArray& firstColumns, VemVarArray& lastColumns) {
       region = VemRegion(9, 9, rows, firstColumns, lastColumns);
     }},
    {"SetRuns", [](VemRegion& region, VemVarArray& rows, VemVarArray& firstColumns,
                   VemVarArray& lastColumns) { region.SetRuns(rows, firstColumns, lastColumns); }},
    {"CreateRegion",
     [](VemRegion& region, VemVarArray& rows, VemVarArray& firstColumns, VemVarArray& lastColumns) {
       region.CreateRegion(9, 9, rows, firstColumns, lastColumns);
     }},
};

TEST(VemRegion, RunArraysAreCopiedInAndOut) {
  for (const RunsTakerCase& c : kRunsTakerCases) {
    SCOPED_TRACE(c.name);
    VemVarArray rows(2);
    VemVarArray firstColumns(1);
    VemVarArray lastColumns(8);
    VemRegion region;
    c.take(region, rows, firstColumns, lastColumns);
    for (VemVarArray* array : {&rows, &firstColumns, &lastColumns}) {
      (*array)[0] = VemVar(70);
      array->Append(71);
    }
    ExpectTriple(region, Integers({2}), Integers({1}), Integers({8}));

    Triple out = TripleOf(region);
    for (VemVarArray* array : {&out.rows, &out.firstColumns, &out.lastColumns}) {
      (*array)[0] = VemVar(80);
      array->Append(81);
    }
    ExpectTriple(region, Integers({2}), Integers({1}), Integers({8}));
  }
}

TEST(VemRegion, PointArraysAreLeftAlone) {
  VemPointArray points = PointArray({{2.5, -3.5}, {1.5, 4.5}});
  VemRegion inferred(points);
  VemRegion stated(9, 9, points);
  ASSERT_EQ(points.Length(), 2);
  EXPECT_EQ(points[0].x, 2.5);
  EXPECT_EQ(points[0].y, -3.5);
  EXPECT_EQ(points[1].x, 1.5);
  EXPECT_EQ(points[1].y, 4.5);
}

// --- Copies ---

const Hierarchy kOldHierarchy = {{-1, -1, 1, -1}, {-1, -1, -1, 0}};
const Contours kOldContours = {{{0, 0}, {0, 5}, {5, 5}}, {{1, 2}}};
const Hierarchy kNewHierarchy = {{7, 8, 9, 10}};
const Contours kNewContours = {{{3, 4}, {6, 7}}};

VemRegion WithOutlines(const Hierarchy& hierarchy, const Contours& contours) {
  VemRegion region = FromRuns({{2, 1, 8}, {0, 3, 4}}, 9, 3);
  Block(region)->Hierarchy = hierarchy;
  Block(region)->Contours = contours;
  return region;
}

// Changes whatever a region holds, in place.
void Disturb(VemRegion& region) {
  VemRegionData& data = *Block(region);
  data.Width = data.Height = 77;
  for (VemVarArray* array : {&data.Rows, &data.FirstColumns, &data.LastColumns}) {
    (*array)[0] = VemVar(78);
    array->Append(79);
  }
  data.Hierarchy[0][0] = 80;
  data.Contours[0][0].x = 81;
  data.Contours[0].pop_back();
}

struct OutlineCase {
  const char* name;
  Hierarchy hierarchy;
  Contours contours;
  Hierarchy copiedHierarchy;
  Contours copiedContours;
  Hierarchy assignedHierarchy;  // Over kOldHierarchy and kOldContours.
  Contours assignedContours;
};

const OutlineCase kOutlineCases[] = {
    {"Both", kNewHierarchy, kNewContours, kNewHierarchy, kNewContours, kNewHierarchy, kNewContours},
    {"Neither", {}, {}, {}, {}, kOldHierarchy, kOldContours},
    {"HierarchyAlone", kNewHierarchy, {}, {}, {}, kOldHierarchy, kOldContours},
    {"ContoursAlone", {}, kNewContours, {}, kNewContours, {}, kNewContours},
    {"ContourWithoutPoints", kNewHierarchy, {{}}, kNewHierarchy, {{}}, kNewHierarchy, {{}}},
};

TEST(VemRegion, OutlinesFollowTheSourcesContours) {
  for (const OutlineCase& c : kOutlineCases) {
    SCOPED_TRACE(c.name);
    const Runs runs = {{1, 0, 3}};
    VemRegion source = FromRuns(runs, 4, 2);
    Block(source)->Hierarchy = c.hierarchy;
    Block(source)->Contours = c.contours;

    VemRegion copy(source);
    ExpectRegion(copy, 4, 2, runs);
    ExpectOutlines(copy, c.copiedHierarchy, c.copiedContours);

    VemRegion fresh;
    fresh = source;
    ExpectRegion(fresh, 4, 2, runs);
    ExpectOutlines(fresh, c.copiedHierarchy, c.copiedContours);

    VemRegion target = WithOutlines(kOldHierarchy, kOldContours);
    EXPECT_EQ(&(target = source), &target);
    ExpectRegion(target, 4, 2, runs);
    ExpectOutlines(target, c.assignedHierarchy, c.assignedContours);

    ExpectRegion(source, 4, 2, runs);
    ExpectOutlines(source, c.hierarchy, c.contours);
  }
}

TEST(VemRegion, AssignmentOfAnEmptyRegionKeepsOldOutlines) {
  VemRegion target = WithOutlines(kOldHierarchy, kOldContours);
  target = VemRegion();
  ExpectRegion(target, 0, 0, {});
  ExpectOutlines(target, kOldHierarchy, kOldContours);
}

TEST(VemRegion, AssignmentKeepsAnOldHierarchyWithoutContours) {
  VemRegion target = FromRuns({{0, 0, 0}}, 1, 1);
  Block(target)->Hierarchy = kOldHierarchy;
  target = FromRuns({{1, 2, 3}}, 5, 6);
  ExpectRegion(target, 5, 6, {{1, 2, 3}});
  ExpectOutlines(target, kOldHierarchy, {});
}

TEST(VemRegion, CopiesAreDeep) {
  const Runs runs = {{2, 1, 8}, {0, 3, 4}};
  for (const bool assign : {false, true}) {
    SCOPED_TRACE(assign ? "Assignment" : "CopyConstructor");
    VemRegion source = WithOutlines(kOldHierarchy, kOldContours);
    VemRegion copy = assign ? VemRegion() : VemRegion(source);
    if (assign) copy = source;
    EXPECT_NE(Block(copy), Block(source));

    Disturb(source);
    ExpectRegion(copy, 9, 3, runs);
    ExpectOutlines(copy, kOldHierarchy, kOldContours);

    VemRegion second(copy);
    Disturb(second);
    ExpectRegion(copy, 9, 3, runs);
    ExpectOutlines(copy, kOldHierarchy, kOldContours);
  }
}

TEST(VemRegion, CopyOutlivesItsSource) {
  VemRegion copy;
  {
    const VemRegion source = WithOutlines(kOldHierarchy, kOldContours);
    copy = source;
  }
  ExpectRegion(copy, 9, 3, {{2, 1, 8}, {0, 3, 4}});
  ExpectOutlines(copy, kOldHierarchy, kOldContours);
}

TEST(VemRegion, CopiesKeepArraysOfDifferentLengthsAndKinds) {
  VemVarArray rows("text");
  VemVarArray firstColumns = Integers({1, 2, 3});
  VemVarArray lastColumns;
  VemRegion source;
  source.CreateRegion(-1, -2, rows, firstColumns, lastColumns);
  VemRegion copy(source);
  VemRegion target = FromRuns({{0, 0, 0}}, 1, 1);
  target = source;
  for (VemRegion* region : {&copy, &target}) {
    EXPECT_EQ(region->Width(), -1);
    EXPECT_EQ(region->Height(), -2);
    ExpectTriple(*region, rows, firstColumns, lastColumns);
  }
}

TEST(VemRegion, SelfAssignmentChangesNothing) {
  VemRegion region = WithOutlines(kOldHierarchy, kOldContours);
  const VemRegion& same = region;
  region = same;
  ExpectRegion(region, 9, 3, {{2, 1, 8}, {0, 3, 4}});
  ExpectOutlines(region, kOldHierarchy, kOldContours);
}

TEST(VemRegion, SettersLeaveOutlinesAlone) {
  VemVarArray array = Integers({1, 2});
  VemRegion region = WithOutlines(kOldHierarchy, kOldContours);
  region.SetWidth(1);
  region.SetHeight(2);
  ExpectOutlines(region, kOldHierarchy, kOldContours);
  region.SetRuns(array, array, array);
  ExpectOutlines(region, kOldHierarchy, kOldContours);
  region.CreateRegion(5, 5, array, array, array);
  ExpectOutlines(region, kOldHierarchy, kOldContours);
}

// --- A handle that has lost its block ---

// Its destructor meets the null pointer as well.
struct LostRegion : VemRegion {
  LostRegion() {
    delete Block(*this);
    Block(*this) = nullptr;
  }
};

TEST(VemRegion, DestructorAllowsAMissingBlock) {
  LostRegion region;
  EXPECT_EQ(Block(region), nullptr);
}

TEST(VemRegion, AssignmentMakesAMissingBlock) {
  const VemRegion source = WithOutlines(kOldHierarchy, kOldContours);
  LostRegion region;
  region.VemRegion::operator=(source);
  ExpectRegion(region, 9, 3, {{2, 1, 8}, {0, 3, 4}});
  ExpectOutlines(region, kOldHierarchy, kOldContours);
}

}  // namespace
