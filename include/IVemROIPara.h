#ifndef I_VEM_ROI_PARA_H_
#define I_VEM_ROI_PARA_H_

#include <vector>

#include "VemContourArray.h"
#include "VemExport.h"
#include "VemPoint.h"
#include "VemPointArray.h"
#include "VemROIType.h"
#include "VemTuple.h"

namespace cv {
class Mat;
}  // namespace cv

/// A region of interest, told by numbers: the implementation object behind VemROI.
///
/// Coordinates, radii and lengths are pixels, rows growing downward. Angles are degrees and grow
/// counter-clockwise as the image is seen: 0 points along growing columns, 90 toward smaller rows.
///
/// A generator that refuses its numbers leaves no shape: the type VemROINone. The two generators
/// from points are thinner, as told there. A reader returns whether the shape is of its kind and
/// its numbers make sense. Coordinates come back rounded to float; radii, lengths and angles do
/// not.
///
/// Nothing is reported; what throws is the allocator, and OpenCV's where a shape needs a raster too
/// large for memory. Use an object from one thread at a time; reading it from several at once is
/// safe.
class VEM_EXPORT IVemROIPara {
 public:
  /// No shape. Width and Height are left as the memory has them.
  IVemROIPara();
  /// Copies the arrays and the type. Width and Height are left as the memory has them.
  IVemROIPara(const IVemROIPara& other);
  /// Copies all fields.
  IVemROIPara& operator=(const IVemROIPara& other);
  ~IVemROIPara();

  /// A point. Stored x before y, unlike every other shape.
  void GenPoint(VemPoint& point);
  /// A rectangle from its upper left to its lower right corner, both included. Refused unless
  /// `p2` is greater in x and in y.
  void GenRect1(VemPoint& p1, VemPoint& p2);
  /// A filled circle; the radius must be above 0.
  void GenCircle(VemPoint& center, double radius);
  /// A ring, from `startAngle` on for `sweepAngle` degrees. The radii must be above 0 and the outer
  /// one the greater; the sweep must not be negative.
  void GenTorus(VemPoint& center, double innerRadius, double outerRadius, double startAngle,
                double sweepAngle);
  /// A rotated rectangle. `length1` is the full side along the direction `angle`, `length2` the
  /// one across; both must be above 0.
  void GenRect2(VemPoint& center, double length1, double length2, double angle);
  /// A segment between two points that must differ.
  void GenLine(VemPoint& p1, VemPoint& p2);
  /// A rotated ellipse. `radius1` is the semi-axis along the direction `angle`, `radius2` the one
  /// across; both must be above 0, either may be the larger.
  void GenEllipse(VemPoint& center, double radius1, double radius2, double angle);
  /// An arc, from `startAngle` on for `sweepAngle` degrees. The radius must be above 0, the sweep
  /// not negative.
  void GenArc(VemPoint& center, double radius, double startAngle, double sweepAngle);
  /// A filled polygon of at least 3 vertices; the closing vertex is not listed. Arrays that differ
  /// in length are refused.
  void GenPolygon(VemVarArray& rows, VemVarArray& cols);
  /// A filled polygon. With fewer than 3 points only the numbers are dropped: the old type stays,
  /// over no numbers.
  void GenPolygon(VemPointArray& points);
  /// A closed chain of pixels; with fewer than 3 points as GenPolygon.
  void GenIrregular(VemPointArray& points);

  /// A ready-made mask: copies of the runs, on a canvas that must be at least 2 by 2. Arrays that
  /// differ in length are refused. No run is looked at: an empty mask exists, and runs may lie
  /// outside the canvas.
  void GenMask(VemVarArray& rows, VemVarArray& firstColumns, VemVarArray& lastColumns, int width,
               int height);

  /// A mask of the pixels that the contours cover when they are painted, as ToMAT does, on a canvas
  /// that must be at least 2 by 2. What lies outside the canvas is lost.
  void GenMask(VemContourArray& contours, int width, int height);

  /// The readers return false and leave their outputs alone when the shape is of another kind, or
  /// has no numbers since a generator from points dropped them; GetPoint alone does not ask for
  /// numbers. Otherwise the outputs are written, and the result tells whether they, rounded as they
  /// are, pass the generator's test; but the sweep of a ring or an arc must be above 0 here.
  bool GetPoint(VemPoint* point) const;
  bool GetRect1(VemPoint* p1, VemPoint* p2) const;         ///< As GetPoint.
  bool GetCircle(VemPoint* center, double* radius) const;  ///< As GetPoint.
  bool GetTorus(VemPoint* center, double* innerRadius, double* outerRadius, double* startAngle,
                double* sweepAngle) const;  ///< As GetPoint.
  bool GetRect2(VemPoint* center, double* length1, double* length2,
                double* angle) const;              ///< As GetPoint.
  bool GetLine(VemPoint* p1, VemPoint* p2) const;  ///< As GetPoint.
  bool GetEllipse(VemPoint* center, double* radius1, double* radius2,
                  double* angle) const;  ///< As GetPoint.
  bool GetArc(VemPoint* center, double* radius, double* startAngle,
              double* sweepAngle) const;  ///< As GetPoint.
  /// As GetPoint; replaces both arrays. Alone among the readers it does not round coordinates.
  bool GetPolygon(VemVarArray* rows, VemVarArray* cols) const;
  bool GetPolygon(VemPointArray* points) const;    ///< As GetPoint; replaces.
  bool GetIrregular(VemPointArray* points) const;  ///< As GetPoint; replaces.

  /// The pixels of the shape as runs, each from its first to its last column, both included.
  ///
  /// The arrays are emptied first. `*width` and `*height` become the canvas, counted from the
  /// origin, not from the shape. Runs are clipped at row 0 and column 0 alone and may lie beyond
  /// any image. The numbers of most shapes lose their fraction first. A shape wholly left of or
  /// above the origin gives false and a canvas of 0 by 0; no shape gives false, and a point true,
  /// with the canvas left alone.
  ///
  /// A line must not be vertical (a fault of the processor, SIGFPE), and one that is wider than
  /// high has no runs. Of an irregular shape only the listed pixels appear.
  bool GetMask(VemVarArray* rows, VemVarArray* firstColumns, VemVarArray* lastColumns, int* width,
               int* height) const;

  /// The outlines of the shape, as whole numbers.
  ///
  /// Rectangles, polygons, irregular shapes, lines and arcs pass their vertices, clipped nowhere: a
  /// vertex may be negative. All but a line are closed by their first vertex again; an arc ends
  /// with its start point, which for a fractional start is not its first sample. Circles, ellipses
  /// and masks are painted on the canvas and traced; the outlines of holes stand in the list with
  /// nothing to tell them from outer ones. A whole ring gives two contours, the inner one first,
  /// neither closed by a repeated vertex; a sector gives one.
  ///
  /// The array is emptied first. Result and canvas are told as in the run form; but a circle's
  /// canvas is a column and a row larger, and an axis-parallel rectangle that ends at column or row
  /// -1 gives true, with a canvas side of 0. Outlines need not enclose exactly the pixels of the
  /// runs.
  bool GetMask(VemContourArray* contours, int* width, int* height);

  /// Paints runs into a new `CV_8UC1` raster of `height` rows by `width` columns: 255 inside, 0
  /// outside. Runs are clipped to the raster; the number of rows alone tells how many there are.
  /// The object itself is not read. A negative size is OpenCV's to refuse, as `cv::Exception`.
  cv::Mat ToMAT(VemVarArray& rows, VemVarArray& firstColumns, VemVarArray& lastColumns, int width,
                int height);
  /// Paints contours, filled even-odd over all of them, their outlines included, into a raster as
  /// above. Coordinates are rounded to the nearest pixel, halves to the even one. Contours within
  /// 32,767 pixels of the raster are painted as `cv::drawContours` does; of others the far part is
  /// cut off first.
  cv::Mat ToMAT(VemContourArray& contours, int width, int height);

  /// Reads a mask raster of one channel, in which any pixel that is not zero is inside, as runs by
  /// row, then by column. Replaces the arrays; `*width` and `*height` become the raster's size.
  void MatToMask(cv::Mat& raster, VemVarArray* rows, VemVarArray* firstColumns,
                 VemVarArray* lastColumns, int* width, int* height);
  /// Reads a mask raster as above as outlines, each closed by its first vertex again.
  void MatToMask(cv::Mat& raster, VemContourArray* contours, int* width, int* height);

  /// Widens integer point lists; `target` is replaced.
  void VectorI2D(std::vector<std::vector<cv::Point_<int>>> source,
                 std::vector<std::vector<cv::Point_<double>>>& target);
  /// Rounds point lists to the nearest whole numbers, halves to the even one; `target` is replaced.
  void VectorD2I(std::vector<std::vector<cv::Point_<double>>> source,
                 std::vector<std::vector<cv::Point_<int>>>& target);

  /// Drops the shape. Width and Height stay.
  void Reset();
  VemROIType ROIType() const;  ///< The kind of the shape.
  bool IsRect1() const;        ///< Whether it is an axis-parallel rectangle.
  bool IsMask() const;         ///< Whether it is a run mask.

  VemVarArray Params;        ///< The shape's numbers, doubles, y before x but for a point.
  VemROIType Type;           ///< The kind of the shape.
  int Width;                 ///< Columns of the canvas, of a mask only.
  int Height;                ///< Rows of the canvas, of a mask only.
  VemVarArray Rows;          ///< The rows of a mask's runs.
  VemVarArray FirstColumns;  ///< The first columns of a mask's runs.
  VemVarArray LastColumns;   ///< The last columns of a mask's runs, included.
};

#endif  // I_VEM_ROI_PARA_H_
