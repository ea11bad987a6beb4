#ifndef VEM_ROI_H_
#define VEM_ROI_H_

#include "IVemROIPara.h"
#include "VemContourArray.h"
#include "VemExport.h"
#include "VemPoint.h"
#include "VemPointArray.h"
#include "VemTuple.h"

/// A region of interest: a rectangle, a circle, a ring, a polygon or another shape told by numbers,
/// or a mask of runs.
///
/// Coordinates, radii and lengths are pixels, rows growing downward. Angles are degrees and grow
/// counter-clockwise as the image is seen: 0 points along growing columns, 90 toward smaller rows.
///
/// A generator that refuses its numbers leaves no shape: the type VemROINone. The two generators
/// from points are thinner, as told there. A reader returns whether the shape is of its kind and
/// its numbers make sense. Coordinates come back rounded to float; radii, lengths and angles do
/// not. No pointer may be null.
///
/// Copies are deep, and arguments are copied, never changed. Nothing is reported; what throws is
/// the allocator, and `cv::Exception` from GetMask where a canvas would be wider or higher than
/// integers can tell. Use an object from one thread at a time; reading it from several at once is
/// safe.
///
/// The handle owns an IVemROIPara, alone.
class VEM_EXPORT VemROI {
 public:
  VemROI();                     ///< No shape.
  VemROI(int);                  ///< No shape; the argument has no effect.
  VemROI(const VemROI& other);  ///< A deep copy.
  /// A deep copy, in place. Assigned to itself, a region of interest stays as it is.
  VemROI& operator=(const VemROI& other);
  ~VemROI();

  /// A point.
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
  /// A mask of the pixels that the contours cover when they are filled, even-odd over all of them,
  /// their outlines included, on a canvas that must be at least 2 by 2. Coordinates are rounded to
  /// the nearest pixel, halves to the even one. What lies outside the canvas is lost. No raster is
  /// made, so the canvas may be of any size.
  void GenMask(VemContourArray& contours, int width, int height);

  /// The readers return false and leave their outputs alone when the shape is of another kind, or
  /// has no numbers since a generator from points dropped them; GetPoint alone does not ask for
  /// numbers. Otherwise the outputs are written, and the result tells whether they, rounded as they
  /// are, pass the generator's test; but the sweep of a ring or an arc must be above 0 here.
  bool GetPoint(VemPoint* point);
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
  /// origin, not from the shape. Runs are clipped at row 0 and column 0 alone: they may lie beyond
  /// any image, and where a row of a polygon or a rotated rectangle lies left of column 0, its run
  /// begins at 0 and ends before. A shape wholly left of or above the origin gives false and a
  /// canvas of 0 by 0; no shape gives false, and a point true, with the canvas left alone. A
  /// polygon, an irregular shape, a rotated rectangle or an ellipse that ends at column or row -1
  /// counts as reaching in: it gives true, with a canvas side of 1.
  ///
  /// Most shapes lose the fraction of their numbers first. What is covered then:
  /// - a rectangle: all pixels between its corners, both included;
  /// - a circle at row y: one run a row from y - radius + 1 to y + radius - 2; the canvas ends at
  ///   the circle's right and lower edge;
  /// - a rotated rectangle: upright, all pixels between its corners, both included, so that one of
  ///   200 by 80 covers 201 by 81; tilted, one run a row between its edges. Upright is what an
  ///   angle without its fraction makes a multiple of 90;
  /// - a line: in each row the pixel on it by the slope without its fraction: a line wider than
  ///   high has no pixels. A line that is vertical once its numbers have lost their fraction, as
  ///   from column 3.1 to 3.9, is a fault of the processor (SIGFPE), and so is a slope of the
  ///   smallest integer by -1;
  /// - an ellipse: one run a row between the pixels whose distances to the foci add up to the
  ///   longer axis, which may end a row before the last;
  /// - an arc: its samples, one for each degree in angular order, then its start once more, each a
  ///   run of its own;
  /// - an irregular shape: its listed pixels alone, each a run of its own;
  /// - a polygon: its border, drawn as 8-connected lines, and the pixels between, even-odd;
  /// - a ring: the pixels between two chains of points, one for each degree, borders included. It
  ///   is whole where the sweep without its fraction is above 358, else a sector with straight
  ///   ends;
  /// - a mask: its runs as they are.
  ///
  /// The time goes with the rows and runs, that of an arc with its sweep, however many turns: each
  /// degree takes about a tenth of a microsecond and 56 bytes. A start angle of 2147483648 or more
  /// counts as the smallest integer, so that the arc has 4.3e9 samples. Room is asked for before
  /// anything is made; where the call throws, the arrays are empty and the canvas is as it was.
  bool GetMask(VemVarArray* rows, VemVarArray* firstColumns, VemVarArray* lastColumns, int* width,
               int* height) const;

  /// The outlines of the shape, as whole numbers.
  ///
  /// Rectangles, polygons, irregular shapes, lines, rings and arcs pass their vertices, clipped
  /// nowhere: a vertex may be negative. All but a line and a whole ring are closed by their first
  /// vertex again; an arc ends with its start point, which for a fractional start is not its first
  /// sample. Circles, ellipses and masks are filled on the canvas and traced; the outlines of holes
  /// stand in the list with nothing to tell them from outer ones. A circle is here all pixels whose
  /// centres are no farther than the radius; an ellipse a polygon of points on it, 5 degrees apart,
  /// for small ones up to 90. A ring whose sweep without its fraction is a multiple of 360, 0 among
  /// them, is whole and gives two contours, the inner one first, neither closed by a repeated
  /// vertex; a sector gives one.
  ///
  /// The array is emptied first. Result and canvas are told as in the run form; but a circle's
  /// canvas is a column and a row larger, and an axis-parallel rectangle that ends at column or row
  /// -1 gives true, with a canvas side of 0. Outlines need not enclose exactly the pixels of the
  /// runs, and a vertical line is harmless.
  ///
  /// No raster is made: the time goes with the shape's own rows and vertices, and that of arcs and
  /// rings with their sweep, a sample for each degree, however many turns: each degree takes about
  /// a tenth of a microsecond and 24 bytes for an arc, twice as much for a ring. A start angle of
  /// 2147483648 or more counts as the smallest integer, so that there are 4.3e9 degrees. Where the
  /// call throws, the array is empty and the canvas is as it was.
  bool GetMask(VemContourArray* contours, int* width, int* height) const;

  /// Drops the shape.
  void Reset();
  VemROIType ROIType() const;  ///< The kind of the shape.

 private:
  friend class IVemOverlay;
  friend class VemROIArray;

  IVemROIPara* impl_;
};

#endif  // VEM_ROI_H_
