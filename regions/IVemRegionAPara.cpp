#include "IVemRegionAPara.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include <opencv2/core.hpp>

#include "VemRegionData.h"
#include "masks/Canvas.h"
#include "masks/ContourFill.h"
#include "masks/RunSink.h"
#include "masks/RunTriple.h"
#include "values/TypedArray.h"

namespace {

// The runs of one region as an array keeps them.
struct IntRuns {
  std::vector<int> rows;
  std::vector<int> firstColumns;
  std::vector<int> lastColumns;
};

IntRuns TakeApart(VemRegionData& region) {
  const RunTriple source(region.Rows, region.FirstColumns, region.LastColumns);
  return {source.Rows(), source.FirstColumns(), source.LastColumns()};
}

// The outlines of one region as an array keeps them.
struct OutlineLists {
  std::vector<std::vector<cv::Point>> contours;
  std::vector<cv::Vec4i> hierarchy;
};

// Room for one more item in each list of a track is made before any of them changes: a failed
// allocation leaves them all as they were.

void MakeRunRoom(IVemRegionArrayPara& array) {
  typed_array::MakeRoom(array.Widths, 1);
  typed_array::MakeRoom(array.Heights, 1);
  typed_array::MakeRoom(array.Rows, 1);
  typed_array::MakeRoom(array.FirstColumns, 1);
  typed_array::MakeRoom(array.LastColumns, 1);
}

void MakeOutlineRoom(IVemRegionArrayPara& array) {
  typed_array::MakeRoom(array.Contours, 1);
  typed_array::MakeRoom(array.Hierarchies, 1);
}

void PushBack(IVemRegionArrayPara& array, int width, int height, IntRuns runs) {
  MakeRunRoom(array);
  array.Widths.push_back(width);
  array.Heights.push_back(height);
  array.Rows.push_back(std::move(runs.rows));
  array.FirstColumns.push_back(std::move(runs.firstColumns));
  array.LastColumns.push_back(std::move(runs.lastColumns));
}

// There must be room.
void PushBack(IVemRegionArrayPara& array, OutlineLists outlines) {
  array.Hierarchies.push_back(std::move(outlines.hierarchy));
  array.Contours.push_back(std::move(outlines.contours));
}

// The end is a position too. One beyond it has no meaning, and foreign memory is left alone.
template <typename T>
void InsertAt(std::vector<T>& list, int position, T item) {
  if (position < 0 || static_cast<std::size_t>(position) > list.size()) return;
  list.insert(list.begin() + position, std::move(item));
}

// A bad position has no meaning here either.
template <typename T>
void Assign(std::vector<T>& list, int position, T item) {
  if (typed_array::InRange(list, position)) typed_array::At(list, position).swap(item);
}

template <typename T>
bool HasBoth(const std::vector<T>& list, int a, int b) {
  return typed_array::InRange(list, a) && typed_array::InRange(list, b);
}

template <typename T>
void Exchange(std::vector<T>& list, int a, int b) {
  if (HasBoth(list, a, b)) {
    std::swap(typed_array::At(list, a), typed_array::At(list, b));
  }
}

int Largest(const std::vector<int>& values) {
  int largest = 0;
  for (const int value : values) largest = std::max(largest, value);
  return largest;
}

// A list that is too short for the entry gives none.
const std::vector<int>& ItemOrNone(const std::vector<std::vector<int>>& list, std::size_t entry) {
  static const std::vector<int> none;
  return entry < list.size() ? list[entry] : none;
}

// Makes the region's runs those of the array's entries from `begin` to before `end`. Runs are
// written over the region's own, once there is room for all.
void ReplaceRuns(VemRegionData& region, const IVemRegionArrayPara& array, std::size_t begin,
                 std::size_t end) {
  std::size_t count = 0;
  for (std::size_t i = begin; i < end; ++i) count += array.Rows[i].size();
  RunTriple runs(region.Rows, region.FirstColumns, region.LastColumns);
  runs.Reserve(count);
  std::size_t position = 0;
  for (std::size_t i = begin; i < end; ++i) {
    runs.Write(position, array.Rows[i], ItemOrNone(array.FirstColumns, i),
               ItemOrNone(array.LastColumns, i));
    position += array.Rows[i].size();
  }
  runs.Truncate(count);
}

// The pixels that contours cover on a canvas.
void PaintRuns(VemRegionData& region, const std::vector<std::vector<cv::Point>>& contours,
               int width, int height) {
  RequireCanvas(width, height);
  ContourFill fill(FillArea(width, height));
  for (const std::vector<cv::Point>& contour : contours) fill.Add(contour);
  std::vector<Run> painted;
  RunLister lister(painted);
  fill.Fill(lister);
  RunTriple runs(region.Rows, region.FirstColumns, region.LastColumns);
  runs.Reserve(painted.size());
  runs.Clear();
  runs.Append(painted);
}

}  // namespace

IVemRegionArrayPara::IVemRegionArrayPara() = default;
IVemRegionArrayPara::IVemRegionArrayPara(const IVemRegionArrayPara& other) = default;
IVemRegionArrayPara::~IVemRegionArrayPara() = default;

IVemRegionArrayPara& IVemRegionArrayPara::operator=(const IVemRegionArrayPara& other) {
  if (this == &other) return *this;
  IVemRegionArrayPara copy(other);
  Widths.swap(copy.Widths);
  Heights.swap(copy.Heights);
  Contours.swap(copy.Contours);
  Hierarchies.swap(copy.Hierarchies);
  Rows.swap(copy.Rows);
  FirstColumns.swap(copy.FirstColumns);
  LastColumns.swap(copy.LastColumns);
  return *this;
}

void IVemRegionArrayPara::Append(VemRegion& region) {
  const VemRegionData& data = *region.data_;
  if (data.Hierarchy.empty()) return Append(region, false);
  OutlineLists outlines{data.Contours, data.Hierarchy};
  MakeOutlineRoom(*this);
  Append(region, false);
  PushBack(*this, std::move(outlines));
}

void IVemRegionArrayPara::Append(VemRegion& region, bool) {
  PushBack(*this, region.Width(), region.Height(), TakeApart(*region.data_));
}

void IVemRegionArrayPara::Append(int width, int height, std::vector<int>& rows,
                                 std::vector<int>& firstColumns, std::vector<int>& lastColumns) {
  if (rows.empty() || firstColumns.size() != rows.size() || lastColumns.empty()) return;
  PushBack(*this, width, height, {rows, firstColumns, lastColumns});
}

void IVemRegionArrayPara::Append(std::vector<std::vector<cv::Point>>& contours,
                                 std::vector<cv::Vec4i>& hierarchy, bool) {
  OutlineLists outlines{contours, hierarchy};
  MakeOutlineRoom(*this);
  PushBack(*this, std::move(outlines));
}

void IVemRegionArrayPara::Insert(int position, VemRegion& region) {
  VemRegionData& data = *region.data_;
  const bool outlined = !data.Hierarchy.empty();
  IntRuns runs = TakeApart(data);
  OutlineLists outlines;
  if (outlined) {
    outlines = {data.Contours, data.Hierarchy};
    MakeOutlineRoom(*this);
  }
  MakeRunRoom(*this);
  InsertAt(Widths, position, data.Width);
  InsertAt(Heights, position, data.Height);
  InsertAt(Rows, position, std::move(runs.rows));
  InsertAt(FirstColumns, position, std::move(runs.firstColumns));
  InsertAt(LastColumns, position, std::move(runs.lastColumns));
  if (!outlined) return;
  InsertAt(Hierarchies, position, std::move(outlines.hierarchy));
  InsertAt(Contours, position, std::move(outlines.contours));
}

void IVemRegionArrayPara::Remove(int position) {
  if (typed_array::InRange(Hierarchies, position)) {
    typed_array::Remove(Contours, position);
    typed_array::Remove(Hierarchies, position);
  }
  if (!typed_array::InRange(Rows, position)) return;
  typed_array::Remove(Rows, position);
  typed_array::Remove(FirstColumns, position);
  typed_array::Remove(LastColumns, position);
  typed_array::Remove(Widths, position);
  typed_array::Remove(Heights, position);
}

// The array decides whether outlines are taken, not the region as in Append and Insert: this is
// meant.
void IVemRegionArrayPara::Replace(int position, VemRegion& region) {
  VemRegionData& data = *region.data_;
  const bool outlined = !Hierarchies.empty();
  IntRuns runs = TakeApart(data);
  OutlineLists outlines;
  if (outlined) outlines = {data.Contours, data.Hierarchy};
  typed_array::Replace(Widths, position, data.Width);
  typed_array::Replace(Heights, position, data.Height);
  Assign(Rows, position, std::move(runs.rows));
  Assign(FirstColumns, position, std::move(runs.firstColumns));
  Assign(LastColumns, position, std::move(runs.lastColumns));
  if (!outlined) return;
  Assign(Hierarchies, position, std::move(outlines.hierarchy));
  Assign(Contours, position, std::move(outlines.contours));
}

void IVemRegionArrayPara::Swap(int a, int b) {
  if (HasBoth(Rows, a, b)) {
    Exchange(Widths, a, b);
    Exchange(Heights, a, b);
    Exchange(Rows, a, b);
    Exchange(FirstColumns, a, b);
    Exchange(LastColumns, a, b);
  }
  if (HasBoth(Contours, a, b)) {
    Exchange(Contours, a, b);
    Exchange(Hierarchies, a, b);
  }
}

void IVemRegionArrayPara::Clear() {
  typed_array::Clear(Widths);
  typed_array::Clear(Heights);
  typed_array::Clear(Contours);
  typed_array::Clear(Hierarchies);
  typed_array::Clear(Rows);
  typed_array::Clear(FirstColumns);
  typed_array::Clear(LastColumns);
}

int IVemRegionArrayPara::Length() { return typed_array::Length(Widths); }

// One list of runs, be it empty and of another region, is enough for contours not to be painted.
void IVemRegionArrayPara::Select(int position, VemRegion& region) {
  if (!typed_array::InRange(Widths, position)) return;
  VemRegionData& data = *region.data_;
  const int width = typed_array::ElementCopy(Widths, position);
  const int height = typed_array::ElementCopy(Heights, position);
  const bool outlined = Rows.empty() || !Hierarchies.empty();
  OutlineLists outlines;
  if (outlined) {
    outlines = {typed_array::ElementCopy(Contours, position),
                typed_array::ElementCopy(Hierarchies, position)};
  }
  if (Rows.empty()) {
    PaintRuns(data, outlines.contours, width, height);
  } else {
    const auto entry = static_cast<std::size_t>(position);
    ReplaceRuns(data, *this, entry, std::min(entry + 1, Rows.size()));
  }
  if (outlined) {
    data.Hierarchy.swap(outlines.hierarchy);
    data.Contours.swap(outlines.contours);
  }
  data.Width = width;
  data.Height = height;
}

void IVemRegionArrayPara::Union(VemRegion& region) {
  VemRegionData& data = *region.data_;
  ReplaceRuns(data, *this, 0, Rows.size());
  data.Width = Largest(Widths);
  data.Height = Largest(Heights);
}
