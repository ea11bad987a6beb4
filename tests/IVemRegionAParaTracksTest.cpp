#include "IVemRegionAPara.h"

#include <algorithm>
#include <cstddef>
#include <random>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "support/RegionTracks.h"

namespace {

using Runs = std::vector<::Run>;

// A list of regions beside a plain model that everything is done to as well.
class RandomTracks {
 public:
  explicit RandomTracks(unsigned seed) : random_(seed) {}

  void Step() {
    if (model_.entries.size() > 10 || model_.outlines.size() > 10) return Clear();
    switch (Below(12)) {
      case 0:
      case 1:
      case 2:
        return AppendRegion();
      case 3:
        return AppendLists();
      case 4:
        return AppendOutlines();
      case 5:
      case 6:
        return Insert();
      case 7:
        return Remove();
      case 8:
        return Replace();
      case 9:
        return Swap();
      case 10:
        return Select();
      default:
        return Below(2) == 0 ? Union() : Copy();
    }
  }

  void Compare() {
    EXPECT_EQ(para_.Length(), Length());
    ExpectTracks(para_, model_);
  }

 private:
  int Below(int end) { return static_cast<int>(random_() % static_cast<unsigned>(end)); }
  int Length() { return static_cast<int>(model_.entries.size()); }
  int OutlineCount() { return static_cast<int>(model_.outlines.size()); }
  int AnyPosition() { return Below(std::max(Length(), OutlineCount()) + 4) - 2; }

  Integers RandomList(std::size_t length) {
    Integers list(length);
    for (int& value : list) value = Below(30) - 5;
    return list;
  }

  Entry RandomEntry() {
    const auto length = static_cast<std::size_t>(Below(4));
    const int width = Below(40) - 5;
    return {width, Below(40) - 5, RandomList(length), RandomList(length), RandomList(length)};
  }

  Outlines RandomOutlines() {
    Outlines outlines;
    for (int i = Below(3); i > 0; --i) {
      outlines.contours.emplace_back();
      for (int k = Below(3); k > 0; --k) outlines.contours.back().emplace_back(Below(9), Below(9));
    }
    for (int i = Below(3); i > 0; --i) outlines.hierarchy.push_back({Below(9), i, -1, -1});
    return outlines;
  }

  void Clear() {
    para_.Clear();
    model_ = Tracks();
  }

  void AppendRegion() {
    const Entry entry = RandomEntry();
    const Outlines outlines = RandomOutlines();
    VemRegion region = RegionOf(entry, outlines);
    const bool withFlag = Below(3) == 0;
    if (withFlag) {
      para_.Append(region, Below(2) == 0);
    } else {
      para_.Append(region);
    }
    model_.entries.push_back(entry);
    if (!withFlag && !outlines.hierarchy.empty()) model_.outlines.push_back(outlines);
  }

  void AppendLists() {
    const auto length = [&] { return static_cast<std::size_t>(Below(3)); };
    Entry entry = {Below(9), Below(9), RandomList(length()), RandomList(length()), {}};
    entry.lastColumns = RandomList(std::max(entry.rows.size(), length()));
    para_.Append(entry.width, entry.height, entry.rows, entry.firstColumns, entry.lastColumns);
    if (!entry.rows.empty() && entry.rows.size() == entry.firstColumns.size()) {
      model_.entries.push_back(entry);
    }
  }

  void AppendOutlines() {
    Outlines outlines = RandomOutlines();
    para_.Append(outlines.contours, outlines.hierarchy, Below(2) == 0);
    model_.outlines.push_back(outlines);
  }

  void Insert() {
    const Entry entry = RandomEntry();
    const Outlines outlines = RandomOutlines();
    const bool both = !outlines.hierarchy.empty();
    const int position = Below((both ? std::min(Length(), OutlineCount()) : Length()) + 1);
    VemRegion region = RegionOf(entry, outlines);
    para_.Insert(position, region);
    model_.entries.insert(model_.entries.begin() + position, entry);
    if (both) model_.outlines.insert(model_.outlines.begin() + position, outlines);
  }

  void Remove() {
    const int position = AnyPosition();
    para_.Remove(position);
    if (position < 0) return;
    if (position < OutlineCount()) model_.outlines.erase(model_.outlines.begin() + position);
    if (position < Length()) model_.entries.erase(model_.entries.begin() + position);
  }

  void Replace() {
    const int end = OutlineCount() == 0 ? Length() : std::min(Length(), OutlineCount());
    if (end == 0) return;
    const auto position = static_cast<std::size_t>(Below(end));
    const Entry entry = RandomEntry();
    const Outlines outlines = RandomOutlines();
    VemRegion region = RegionOf(entry, outlines);
    para_.Replace(static_cast<int>(position), region);
    model_.entries[position] = entry;
    if (!model_.outlines.empty()) model_.outlines[position] = outlines;
  }

  void Swap() {
    const int a = AnyPosition();
    const int b = AnyPosition();
    para_.Swap(a, b);
    if (std::min(a, b) < 0) return;
    const int last = std::max(a, b);
    if (last < Length()) std::swap(Item(model_.entries, a), Item(model_.entries, b));
    if (last < OutlineCount()) std::swap(Item(model_.outlines, a), Item(model_.outlines, b));
  }

  template <typename T>
  static T& Item(std::vector<T>& list, int position) {
    return list.at(static_cast<std::size_t>(position));
  }

  static Runs RunsOf(const Entry& entry) {
    Runs runs;
    for (std::size_t i = 0; i < entry.rows.size(); ++i) {
      runs.push_back({entry.rows[i], entry.firstColumns[i], entry.lastColumns[i]});
    }
    return runs;
  }

  void Select() {
    const int position = AnyPosition();
    if (OutlineCount() > 0 && position >= OutlineCount() && position < Length()) return;
    VemRegion region = RegionOf(kEntryA, kRing);
    RegionValue expected = ValueOf(region);
    para_.Select(position, region);
    if (position >= 0 && position < Length()) {
      const Entry& entry = Item(model_.entries, position);
      expected.width = entry.width;
      expected.height = entry.height;
      expected.runs = RunsOf(entry);
      if (OutlineCount() > 0) expected.outlines = Item(model_.outlines, position);
    }
    EXPECT_EQ(ValueOf(region), expected);
  }

  void Union() {
    VemRegion region = RegionOf(kEntryA, kRing);
    para_.Union(region);
    RegionValue expected{0, 0, {}, kRing};
    for (const Entry& entry : model_.entries) {
      expected.width = std::max(expected.width, entry.width);
      expected.height = std::max(expected.height, entry.height);
      const Runs runs = RunsOf(entry);
      expected.runs.insert(expected.runs.end(), runs.begin(), runs.end());
    }
    EXPECT_EQ(ValueOf(region), expected);
  }

  void Copy() {
    const IVemRegionArrayPara copy(para_);
    para_.Clear();
    para_ = copy;
  }

  std::mt19937 random_;
  IVemRegionArrayPara para_;
  Tracks model_;
};

TEST(IVemRegionArrayParaTracks, RandomOperationsAreThoseOfTwoPlainLists) {
  RandomTracks tracks(20260102);
  for (int i = 0; i < 20000; ++i) {
    SCOPED_TRACE(i);
    tracks.Step();
    tracks.Compare();
    if (HasFailure()) return;
  }
}

}  // namespace
