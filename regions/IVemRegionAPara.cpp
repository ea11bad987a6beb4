#include "IVemRegionAPara.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include <opencv2/core.hpp>

#include "VemRegionData.h"
#include "masks/Canvas.h"
#include "masks/ContourFill.h"
#include "masks/RunTriple.h"
#include "masks/TripleWriter.h"
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

void PushBack(IVemRegionArrayPara& array, int width, int height, IntRuns runs) {
  array.Widths.push_back(width);
  array.Heights.push_back(height);
  array.Rows.push_back(std::move(runs.rows));
  array.FirstColumns.push_back(std::move(runs.firstColumns));
  array.LastColumns.push_back(std::move(runs.lastColumns));
}

// The end is a position too. One beyond it has no meaning, and foreign memory is left alone.
template <typename T>
void InsertAt(std::vector<T>& list, int position, T item) {
  if (position < 0 || static_cast<std::size_t>(position) > list.size()) return;
  list.insert(list.begin() + position, std::move(item));
}

// A bad position has no meaning here either.
void Assign(std::vector<std::vector<int>>& list, int position, std::vector<int> item) {
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
    runs.Write(position, array.Rows[i], array.FirstColumns[i], array.LastColumns[i]);
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
  RunTriple runs(region.Rows, region.FirstColumns, region.LastColumns);
  runs.Clear();
  TripleWriter writer(runs);
  fill.Fill(writer);
}

}  // namespace

IVemRegionArrayPara::IVemRegionArrayPara() = default;
IVemRegionArrayPara::IVemRegionArrayPara(const IVemRegionArrayPara& other) = default;
IVemRegionArrayPara& IVemRegionArrayPara::operator=(const IVemRegionArrayPara& other) = default;
IVemRegionArrayPara::~IVemRegionArrayPara() = default;

void IVemRegionArrayPara::Append(VemRegion& region) {
  const VemRegionData& data = *region.data_;
  Append(region, false);
  if (data.Hierarchy.empty()) return;
  Hierarchies.push_back(data.Hierarchy);
  Contours.push_back(data.Contours);
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
  Contours.push_back(contours);
  Hierarchies.push_back(hierarchy);
}

void IVemRegionArrayPara::Insert(int position, VemRegion& region) {
  const VemRegionData& data = *region.data_;
  IntRuns runs = TakeApart(*region.data_);
  InsertAt(Widths, position, data.Width);
  InsertAt(Heights, position, data.Height);
  InsertAt(Rows, position, std::move(runs.rows));
  InsertAt(FirstColumns, position, std::move(runs.firstColumns));
  InsertAt(LastColumns, position, std::move(runs.lastColumns));
  if (data.Hierarchy.empty()) return;
  InsertAt(Hierarchies, position, data.Hierarchy);
  InsertAt(Contours, position, data.Contours);
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
  const VemRegionData& data = *region.data_;
  IntRuns runs = TakeApart(*region.data_);
  typed_array::Replace(Widths, position, data.Width);
  typed_array::Replace(Heights, position, data.Height);
  Assign(Rows, position, std::move(runs.rows));
  Assign(FirstColumns, position, std::move(runs.firstColumns));
  Assign(LastColumns, position, std::move(runs.lastColumns));
  if (Hierarchies.empty()) return;
  typed_array::Replace(Hierarchies, position, data.Hierarchy);
  typed_array::Replace(Contours, position, data.Contours);
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
  if (Rows.empty()) {
    PaintRuns(data, typed_array::ElementCopy(Contours, position), width, height);
  } else {
    const bool any = typed_array::InRange(Rows, position);
    const auto entry = static_cast<std::size_t>(position);
    ReplaceRuns(data, *this, entry, any ? entry + 1 : entry);
  }
  if (Rows.empty() || !Hierarchies.empty()) {
    data.Hierarchy = typed_array::ElementCopy(Hierarchies, position);
    data.Contours = typed_array::ElementCopy(Contours, position);
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
