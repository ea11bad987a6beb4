// The outlines of a mask: each shape as runs on the left, as outlines on the right.
//
//     mask_outlines [picture]
//
// Without a picture the program draws one of its own. It places one region of interest of every
// shape on the picture, prints how many contours and vertices each has, and writes
// mask_outlines.png: both forms of every shape side by side, with a dot at each vertex.

#include <cstdio>
#include <vector>

#include "VemContourArray.h"
#include "VemROI.h"
#include "VemRegion.h"
#include "scene.h"

namespace {

std::vector<Span> RunForm(const VemROI& roi, const VemImage& image) {
  VemVarArray rows;
  VemVarArray firstColumns;
  VemVarArray lastColumns;
  int width = 0;
  int height = 0;
  roi.GetMask(&rows, &firstColumns, &lastColumns, &width, &height);
  VemRegion region(width, height, rows, firstColumns, lastColumns);
  return SpansOf(region, image);
}

std::vector<cv::Point> Vertices(VemContour contour) {
  VemPointArray points;
  contour.ToPointArray(&points);
  std::vector<cv::Point> vertices;
  vertices.reserve(static_cast<std::size_t>(points.Length()));
  for (int i = 0; i < points.Length(); ++i) {
    vertices.emplace_back(cvRound(points[i].x), cvRound(points[i].y));
  }
  return vertices;
}

void ShowOutlines(const Shape& shape, Show& show) {
  VemContourArray contours;
  int width = 0;
  int height = 0;
  shape.roi.GetMask(&contours, &width, &height);
  int vertices = 0;
  double length = 0;
  for (int i = 0; i < contours.Length(); ++i) {
    const VemContour contour = contours[i];
    show.Outline(Vertices(contour), shape.color);
    vertices += contour.Length();
    length += contour.Perimeter();
  }
  std::printf("%-10s %9d %9d %10.1f\n", shape.name, contours.Length(), vertices, length);
}

}  // namespace

int main(int argc, char** argv) {
  const VemImage image = GetPicture(argc, argv);
  if (image.Width() == 0) return 1;
  Show runs(image);
  Show outlines(image);
  const std::vector<Shape> shapes = PlaceShapes(image);
  std::printf("%-10s %9s %9s %10s\n", "shape", "contours", "vertices", "length");
  for (const Shape& shape : shapes) {
    runs.Tint(RunForm(shape.roi, image), shape.color);
    ShowOutlines(shape, outlines);
  }
  for (const Shape& shape : shapes) {
    runs.Name(shape);
    outlines.Name(shape);
  }
  cv::Mat both;
  cv::hconcat(runs.Canvas(), outlines.Canvas(), both);
  return WritePicture("mask_outlines.png", both) ? 0 : 1;
}
