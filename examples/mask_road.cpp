// The road of a mask: a shape becomes runs, the runs become a region, and the region tells which
// pixels of a picture to measure.
//
//     mask_road [picture]
//
// Without a picture the program draws one of its own: a plate with parts. It places one region of
// interest of every shape on the picture, prints a table of what lies under each, and writes
// mask_road.png, the picture with each shape's runs tinted and its name beside it. The picture
// keeps its size and depth, or the program says what it did.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

#include "VemImage.h"
#include "VemROI.h"
#include "VemRegion.h"
#include "scene.h"

namespace {

struct Measurement {
  int runs = 0;
  long pixels = 0;
  double mean = 0;
  double minimum = 0;
  double maximum = 0;
  int width = 0;
  int height = 0;
  double microseconds = 0;
};

// Shape to runs, runs to region: the road itself, and how long it takes.
VemRegion MakeRegion(const VemROI& roi, Measurement& result) {
  VemVarArray rows;
  VemVarArray firstColumns;
  VemVarArray lastColumns;
  int width = 0;
  int height = 0;
  const auto start = std::chrono::steady_clock::now();
  roi.GetMask(&rows, &firstColumns, &lastColumns, &width, &height);
  VemRegion region(width, height, rows, firstColumns, lastColumns);
  const std::chrono::duration<double, std::micro> time = std::chrono::steady_clock::now() - start;
  result.runs = rows.Length();
  result.width = region.Width();
  result.height = region.Height();
  result.microseconds = time.count();
  return region;
}

void MeasureGrey(const VemImage& image, const std::vector<Span>& spans, Measurement& result) {
  double sum = 0;
  cv::Mat values;
  for (const Span& span : spans) {
    // Of whatever depth the picture is, doubles hold its values.
    image.Mat().row(span.row).colRange(span.first, span.end).convertTo(values, CV_64F);
    const double* const end = values.ptr<double>() + values.cols;
    for (const double* value = values.ptr<double>(); value != end; ++value) {
      sum += *value;
      result.minimum = result.pixels == 0 ? *value : std::min(result.minimum, *value);
      result.maximum = result.pixels == 0 ? *value : std::max(result.maximum, *value);
      ++result.pixels;
    }
  }
  if (result.pixels > 0) result.mean = sum / static_cast<double>(result.pixels);
}

void PrintRow(const char* name, const Measurement& m) {
  char canvas[32];
  std::snprintf(canvas, sizeof(canvas), "%d x %d", m.width, m.height);
  std::printf("%-10s %6d %8ld  %11s %8.6g %8.6g %8.6g %9.1f\n", name, m.runs, m.pixels, canvas,
              m.mean, m.minimum, m.maximum, m.microseconds);
}

}  // namespace

int main(int argc, char** argv) {
  const Picture picture = GetPicture(argc, argv);
  if (picture.image.Width() == 0) return 1;
  const std::vector<Shape> shapes = PlaceShapes(picture);
  Show show(picture);
  std::printf("%-10s %6s %8s  %11s %8s %8s %8s %9s\n", "shape", "runs", "pixels", "canvas", "mean",
              "min", "max", "us");
  for (const Shape& shape : shapes) {
    Measurement result;
    VemRegion region = MakeRegion(shape.roi, result);
    const std::vector<Span> spans = SpansOf(region, picture.grey);
    MeasureGrey(picture.grey, spans, result);
    PrintRow(shape.name, result);
    show.Tint(spans, shape.color);
    cv::Point place;
    if (PlaceOf(shape.roi, &place)) show.Cross(place, shape.color);
  }
  std::printf("A point has no runs; its place is marked by a cross.\n");
  for (const Shape& shape : shapes) show.Name(shape);
  return WritePicture("mask_road.png", show.Canvas()) ? 0 : 1;
}
