#ifndef MASKS_CONTOUR_FILL_H_
#define MASKS_CONTOUR_FILL_H_

#include <cstddef>
#include <vector>

#include <opencv2/core.hpp>

#include "masks/RunSink.h"

/// A canvas, to which shapes are clipped, and those of its rows that are wanted: from firstRow to
/// the one before endRow.
struct FillArea {
  FillArea(int canvasWidth, int canvasHeight)
      : width(canvasWidth), height(canvasHeight), firstRow(0), endRow(canvasHeight) {}

  int width;
  int height;
  int firstRow;
  int endRow;
};

/// Closed contours, one after the other in one list: each from a topmost vertex round to it again,
/// so that every two points side by side are an edge.
struct FillContours {
  std::vector<cv::Point> points;
  std::vector<std::size_t> ends;  ///< For each contour, where it ends among the points.

  /// Calls `visit(first, end)` with the points of each contour.
  template <typename Visit>
  void ForEach(Visit visit) const {
    const cv::Point* first = points.data();
    for (const std::size_t end : ends) {
      visit(first, points.data() + end);
      first = points.data() + end;
    }
  }
};

/// The edges of a contour that lead downward, or upward, until it turns: its points from `upper` to
/// `lower`, on or back through the list. A level side comes twice, there and back.
struct FillSide {
  const cv::Point* upper;
  const cv::Point* lower;
};

/// Fills closed contours: the pixels on their borders and those between them, even-odd over all
/// contours together. Integers alone decide, so the pixels are the same on every machine.
///
/// Borders. Each edge, the one from the last vertex to the first included, is clipped to the canvas
/// and drawn as an 8-connected line from left to right; where two pixels are equally near, the line
/// stays in its row, or if steep in its column, for longer.
///
/// Inside. An edge that is not level crosses the rows from its upper end to the one before its
/// lower end. It starts at the upper end and advances by `(dx << 16) / dy`, truncated, in units of
/// 1/65536 pixel. In each row the crossings are sorted and paired; a pair covers the whole columns
/// from its first to its second crossing, both included.
///
/// Vertices may lie anywhere: rows and columns outside the area are never walked.
class ContourFill {
 public:
  explicit ContourFill(const FillArea& area) : area_(area) {}

  /// Makes room for as many contours' points in all, so that they are not moved meanwhile.
  void Reserve(std::size_t contours, std::size_t points) {
    contours_.points.reserve(points + contours);
    contours_.ends.reserve(contours);
  }

  /// Adds a contour; one without points adds nothing.
  void Add(const std::vector<cv::Point>& contour);

  /// Hands the pixels of all contours to the sink.
  void Fill(RunSink& sink) const;

 private:
  FillArea area_;
  FillContours contours_;
};

#endif  // MASKS_CONTOUR_FILL_H_
