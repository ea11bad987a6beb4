#ifndef TESTS_SUPPORT_REGION_TRACKS_H_
#define TESTS_SUPPORT_REGION_TRACKS_H_

#include <ostream>
#include <vector>

#include "IVemRegionAPara.h"
#include "support/Regions.h"

using Integers = std::vector<int>;

/// One entry of the run track of a list of regions.
struct Entry {
  int width = 0;
  int height = 0;
  Integers rows;
  Integers firstColumns;
  Integers lastColumns;
};

bool operator==(const Entry& a, const Entry& b);
void PrintTo(const Entry& entry, std::ostream* out);

/// Both tracks, each as one list.
struct Tracks {
  std::vector<Entry> entries;
  std::vector<Outlines> outlines;
};

/// Compares all lists; those of one track must have one length.
void ExpectTracks(const IVemRegionArrayPara& para, const Tracks& expected);

/// The region that gives the entry, with outlines.
VemRegion RegionOf(const Entry& entry, const Outlines& outlines = Outlines());

const Outlines kSquare = {{{{0, 0}, {0, 3}, {3, 3}, {3, 0}}}, {{-1, -1, -1, -1}}};
const Outlines kRing = {{{{0, 0}, {0, 9}, {9, 9}, {9, 0}}, {{2, 2}, {7, 2}, {7, 7}}},
                        {{-1, -1, 1, -1}, {-1, -1, -1, 0}}};
const Outlines kHierarchyAlone = {{}, {{4, 5, 6, 7}}};
const Outlines kContoursAlone = {{{{1, 2}, {3, 4}}}, {}};

const Entry kEntryA = {7, 4, {3, 1}, {0, 2}, {6, 5}};
const Entry kEntryB = {9, 8, {2}, {1}, {8}};
const Entry kEntryC = {5, 6, {}, {}, {}};

#endif  // TESTS_SUPPORT_REGION_TRACKS_H_
