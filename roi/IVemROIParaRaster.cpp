#include "IVemROIPara.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <vector>

#include <opencv2/core.hpp>

#include "masks/Canvas.h"
#include "masks/ContourFill.h"
#include "masks/MaskCoder.h"
#include "masks/RunTriple.h"
#include "masks/TripleWriter.h"

namespace {

// Clips the run on all four sides.
void PaintRun(cv::Mat& raster, const Run& run) {
  if (run.Row < 0 || run.Row >= raster.rows) return;
  const int first = std::max(run.FirstColumn, 0);
  const int last = std::min(run.LastColumn, raster.cols - 1);
  if (first > last) return;
  std::memset(raster.ptr(run.Row) + first, 255, static_cast<std::size_t>(last - first) + 1);
}

void Replace(VemVarArray* rows, VemVarArray* firstColumns, VemVarArray* lastColumns,
             const std::vector<Run>& found) {
  RunTriple runs(*rows, *firstColumns, *lastColumns);
  runs.Clear();
  runs.Append(found);
}

template <typename From, typename To>
void ConvertPoints(const std::vector<std::vector<From>>& source,
                   std::vector<std::vector<To>>& target) {
  target.resize(source.size());
  for (std::size_t i = 0; i < source.size(); ++i) {
    target[i].assign(source[i].begin(), source[i].end());
  }
}

// Coordinates are rounded, halves to the even neighbour.
void FillRounded(const std::vector<std::vector<cv::Point2d>>& contours, int width, int height,
                 RunSink& sink) {
  ContourFill fill(FillArea(width, height));
  std::vector<cv::Point> rounded;
  for (const std::vector<cv::Point2d>& contour : contours) {
    rounded.assign(contour.begin(), contour.end());
    fill.Add(rounded);
  }
  fill.Fill(sink);
}

void FillAllOrNothing(const std::vector<std::vector<cv::Point2d>>& contours, int width, int height,
                      RunTriple& runs) {
  TripleWriter writer(runs);
  try {
    FillRounded(contours, width, height, writer);
  } catch (...) {
    runs.Clear();
    throw;
  }
}

}  // namespace

// No shape until all runs are there, so that a failure leaves none.
void IVemROIPara::GenMask(VemContourArray& contours, int width, int height) {
  Reset();
  Width = 0;
  Height = 0;
  if (width < 2 || height < 2) return;
  RunTriple runs(Rows, FirstColumns, LastColumns);
  FillAllOrNothing(*contours.store_, width, height, runs);
  Width = width;
  Height = height;
  Type = VemROIMask;
}

cv::Mat IVemROIPara::ToMAT(VemVarArray& rows, VemVarArray& firstColumns, VemVarArray& lastColumns,
                           int width, int height) {
  cv::Mat raster = EmptyRaster(width, height);
  const RunTriple runs(rows, firstColumns, lastColumns);
  for (std::size_t i = 0; i < runs.Count(); ++i) PaintRun(raster, runs.At(i));
  return raster;
}

cv::Mat IVemROIPara::ToMAT(VemContourArray& contours, int width, int height) {
  cv::Mat raster = EmptyRaster(width, height);
  RunPainter painter(raster);
  FillRounded(*contours.store_, width, height, painter);
  return raster;
}

void IVemROIPara::MatToMask(cv::Mat& raster, VemVarArray* rows, VemVarArray* firstColumns,
                            VemVarArray* lastColumns, int* width, int* height) {
  Replace(rows, firstColumns, lastColumns, ListRuns(raster));
  *width = raster.cols;
  *height = raster.rows;
}

void IVemROIPara::MatToMask(cv::Mat& raster, VemContourArray* contours, int* width, int* height) {
  std::vector<std::vector<cv::Point2d>> traced;
  VectorI2D(TraceClosed(raster), traced);
  contours->store_->swap(traced);
  *width = raster.cols;
  *height = raster.rows;
}

void IVemROIPara::VectorI2D(std::vector<std::vector<cv::Point_<int>>> source,
                            std::vector<std::vector<cv::Point_<double>>>& target) {
  ConvertPoints(source, target);
}

// The conversion rounds halves to the even neighbour.
void IVemROIPara::VectorD2I(std::vector<std::vector<cv::Point_<double>>> source,
                            std::vector<std::vector<cv::Point_<int>>>& target) {
  ConvertPoints(source, target);
}
