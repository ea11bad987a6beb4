#include "VemRegion.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include <opencv2/core.hpp>

#include "VemRegionData.h"
#include "masks/Canvas.h"
#include "masks/MaskCoder.h"
#include "masks/RunTriple.h"
#include "values/Processor.h"

namespace {

bool SameLength(const VemVarArray& rows, const VemVarArray& firstColumns,
                const VemVarArray& lastColumns) {
  return rows.Length() == firstColumns.Length() && rows.Length() == lastColumns.Length();
}

// Compares the untruncated coordinate: an infinity becomes the smallest integer here, and what
// follows it may lie outside the mask.
void Raise(int& largest, double coordinate) {
  if (coordinate > static_cast<double>(largest)) largest = TruncateToInt(coordinate);
}

void Plot(const VemPoint& point, cv::Mat& mask) {
  const int x = TruncateToInt(point.x);
  const int y = TruncateToInt(point.y);
  if (x >= 0 && x < mask.cols && y >= 0 && y < mask.rows) mask.ptr(y)[x] = 255;
}

}  // namespace

VemRegion::VemRegion() : data_(new VemRegionData) {}

VemRegion::VemRegion(VemVarArray& rows, VemVarArray& firstColumns, VemVarArray& lastColumns)
    : VemRegion() {
  if (!SameLength(rows, firstColumns, lastColumns) || rows.Length() < 1) return;
  RunTriple runs(data_->Rows, data_->FirstColumns, data_->LastColumns);
  runs.Reserve(static_cast<std::size_t>(rows.Length()));
  const RunTriple::Extent largest = runs.AppendMeasured({rows, firstColumns, lastColumns});
  SetWidth(WrapAdd(largest.column, 1));
  SetHeight(WrapAdd(largest.row, 1));
}

VemRegion::VemRegion(int width, int height, VemVarArray& rows, VemVarArray& firstColumns,
                     VemVarArray& lastColumns)
    : VemRegion() {
  if (!SameLength(rows, firstColumns, lastColumns) || width < 1 || height < 1) return;
  CreateRegion(width, height, rows, firstColumns, lastColumns);
}

VemRegion::VemRegion(VemPointArray& points) : VemRegion() {
  const VemPoint first = static_cast<const VemPointArray&>(points)[0];
  int largestX = TruncateToInt(first.x);
  int largestY = TruncateToInt(first.y);
  for (int i = 0; i < points.Length(); ++i) {
    Raise(largestX, points[i].x);
    Raise(largestY, points[i].y);
  }
  if (largestY < 1 || largestX < 1) return;
  CodePoints(points, WrapAdd(largestX, 1), WrapAdd(largestY, 1));
}

VemRegion::VemRegion(int width, int height, VemPointArray& points) : VemRegion() {
  if (width < 1 || height < 1) return;
  CodePoints(points, width, height);
}

VemRegion::VemRegion(const VemRegion& other) : VemRegion() { *this = other; }

VemRegion& VemRegion::operator=(const VemRegion& other) {
  if (data_ == nullptr) data_ = new VemRegionData;
  const VemRegionData& source = *other.data_;
  const bool outlined = !source.Contours.empty();
  std::vector<cv::Vec4i> hierarchy;
  std::vector<std::vector<cv::Point>> contours;
  if (outlined) {
    hierarchy = source.Hierarchy;
    contours = source.Contours;
  }
  CreateRegion(source.Width, source.Height, other.data_->Rows, other.data_->FirstColumns,
               other.data_->LastColumns);
  if (!outlined) return *this;
  data_->Hierarchy.swap(hierarchy);
  data_->Contours.swap(contours);
  return *this;
}

VemRegion::~VemRegion() { delete data_; }

void VemRegion::SetWidth(int width) { data_->Width = width; }
void VemRegion::SetHeight(int height) { data_->Height = height; }

// Room for all three comes first: numbers are then assigned without an allocation.
void VemRegion::SetRuns(VemVarArray& rows, VemVarArray& firstColumns, VemVarArray& lastColumns) {
  const int longest = std::max({rows.Length(), firstColumns.Length(), lastColumns.Length()});
  RunTriple(data_->Rows, data_->FirstColumns, data_->LastColumns)
      .Reserve(static_cast<std::size_t>(longest));
  data_->Rows = rows;
  data_->FirstColumns = firstColumns;
  data_->LastColumns = lastColumns;
}

void VemRegion::CreateRegion(int width, int height, VemVarArray& rows, VemVarArray& firstColumns,
                             VemVarArray& lastColumns) {
  SetRuns(rows, firstColumns, lastColumns);
  SetWidth(width);
  SetHeight(height);
}

int VemRegion::Width() const { return data_->Width; }
int VemRegion::Height() const { return data_->Height; }

void VemRegion::GetRegionRuns(VemVarArray* rows, VemVarArray* firstColumns,
                              VemVarArray* lastColumns) {
  *rows = data_->Rows;
  *firstColumns = data_->FirstColumns;
  *lastColumns = data_->LastColumns;
}

// The trip through a mask merges duplicate and neighbouring points into runs.
void VemRegion::CodePoints(VemPointArray& points, int width, int height) {
  cv::Mat mask = EmptyRaster(width, height);
  for (int i = 0; i < points.Length(); ++i) Plot(points[i], mask);
  const std::vector<Run> runs = ListComponentRuns(mask);
  data_->Width = width;
  data_->Height = height;
  RunTriple(data_->Rows, data_->FirstColumns, data_->LastColumns).Append(runs);
}
