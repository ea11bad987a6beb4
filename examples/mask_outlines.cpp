// The outlines of a mask: each shape as runs on the left, as outlines on the right.
//
//     mask_outlines [picture]
//
// Without a picture the program draws one of its own. It places one region of interest of every
// shape on the picture, prints how many contours and vertices each has, and writes
// mask_outlines.png: both forms of every shape side by side, with a dot at each vertex. The contour
// of an arc ends with its start point: as a closed chain it has a chord, drawn dashed, that is no
// part of the arc. A point has neither runs nor contours; a cross marks it.

#include <algorithm>
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

// The samples of an arc as a line; dashed, the chord that closes them.
void ShowArc(std::vector<cv::Point> vertices, const cv::Scalar& color, Show& show) {
  const cv::Point start = vertices.back();
  vertices.pop_back();
  if (vertices.empty()) return;
  show.Outline(vertices, color);
  show.Dashes(vertices.back(), start, color);
  const cv::Point left(std::min(vertices.back().x, start.x), std::max(vertices.back().y, start.y));
  show.Remark(left, "dashed: its closing chord", color);
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
    if (shape.roi.ROIType() == VemROIArc) {
      ShowArc(Vertices(contour), shape.color, show);
    } else {
      show.Outline(Vertices(contour), shape.color);
    }
    vertices += contour.Length();
    length += contour.Perimeter();
  }
  cv::Point place;
  if (PlaceOf(shape.roi, &place)) show.Cross(place, shape.color);
  std::printf("%-10s %9d %9d %10.1f\n", shape.name, contours.Length(), vertices, length);
}

}  // namespace

int main(int argc, char** argv) {
  const Picture picture = GetPicture(argc, argv);
  if (picture.image.Width() == 0) return 1;
  const std::vector<Shape> shapes = PlaceShapes(picture);
  Show runs(picture);
  Show outlines = runs.Copy();
  std::printf("%-10s %9s %9s %10s\n", "shape", "contours", "vertices", "length");
  for (const Shape& shape : shapes) {
    runs.Tint(RunForm(shape.roi, picture.grey), shape.color);
    cv::Point place;
    if (PlaceOf(shape.roi, &place)) runs.Cross(place, shape.color);
    ShowOutlines(shape, outlines);
  }
  std::printf(
      "The contour of an arc ends with its start point. Its last segment is the chord between its\n"
      "ends, drawn dashed and counted in its length, though no part of the arc.\n"
      "A point has neither runs nor contours; its place is marked by a cross.\n");
  for (const Shape& shape : shapes) {
    runs.Name(shape);
    outlines.Name(shape);
  }
  cv::Mat both;
  cv::hconcat(runs.Canvas(), outlines.Canvas(), both);
  return WritePicture("mask_outlines.png", both) ? 0 : 1;
}
