#include "support/RegionTracks.h"

#include <cstddef>

#include <gtest/gtest.h>

bool operator==(const Entry& a, const Entry& b) {
  return a.width == b.width && a.height == b.height && a.rows == b.rows &&
         a.firstColumns == b.firstColumns && a.lastColumns == b.lastColumns;
}

void PrintTo(const Entry& entry, std::ostream* out) {
  *out << entry.width << " by " << entry.height << ' ' << testing::PrintToString(entry.rows)
       << testing::PrintToString(entry.firstColumns) << testing::PrintToString(entry.lastColumns);
}

namespace {

Tracks TracksOf(const IVemRegionArrayPara& para) {
  Tracks tracks;
  const std::size_t count = para.Rows.size();
  EXPECT_EQ(para.Widths.size(), count);
  EXPECT_EQ(para.Heights.size(), count);
  EXPECT_EQ(para.FirstColumns.size(), count);
  EXPECT_EQ(para.LastColumns.size(), count);
  EXPECT_EQ(para.Contours.size(), para.Hierarchies.size());
  for (std::size_t i = 0; i < count; ++i) {
    tracks.entries.push_back({para.Widths.at(i), para.Heights.at(i), para.Rows[i],
                              para.FirstColumns.at(i), para.LastColumns.at(i)});
  }
  for (std::size_t i = 0; i < para.Contours.size(); ++i) {
    tracks.outlines.push_back({para.Contours[i], para.Hierarchies.at(i)});
  }
  return tracks;
}

}  // namespace

void ExpectTracks(const IVemRegionArrayPara& para, const Tracks& expected) {
  const Tracks tracks = TracksOf(para);
  EXPECT_EQ(tracks.entries, expected.entries);
  EXPECT_EQ(tracks.outlines, expected.outlines);
}

VemRegion RegionOf(const Entry& entry, const Outlines& outlines) {
  RegionValue value{entry.width, entry.height, {}, outlines};
  for (std::size_t i = 0; i < entry.rows.size(); ++i) {
    value.runs.push_back({entry.rows[i], entry.firstColumns.at(i), entry.lastColumns.at(i)});
  }
  return MakeRegion(value);
}
