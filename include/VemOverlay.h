#ifndef VEM_OVERLAY_H_
#define VEM_OVERLAY_H_

#include "VemContour.h"
#include "VemExport.h"
#include "VemFont.h"
#include "VemImage.h"
#include "VemOverlayType.h"
#include "VemPoint.h"
#include "VemPointArray.h"
#include "VemROI.h"
#include "VemRegion.h"
#include "VemVar.h"

class IVemOverlay;

/// One graphic element for a display to draw over an image: a shape, a text, an image or a region,
/// with a pen and a brush. Nothing is drawn here; mode and count of rakes and spokes, colours and
/// fonts are carried for the display.
///
/// Coordinates, radii and lengths are pixels, rows growing downward. Angles are degrees and grow
/// counter-clockwise as the image is seen: 0 points along growing columns, 90 toward smaller rows.
///
/// A generator replaces the element. One that refuses its arguments leaves no element: the type
/// VemOverlayNone and no numbers. Pen, brush, and the pixels or runs of an earlier element stay
/// whatever is generated; of the operations below, only GenImage, GenRegion and Reset touch pixels
/// or runs; assignment replaces everything.
///
/// Test OverlayType before reading. A reader returns false when the element is of another kind or
/// has no numbers; points and arrays then stay as they were, and other outputs are told beside it.
/// Else it writes all outputs and then tells whether what it has written passes its test, which is
/// told beside it where it is not the generator's. Coordinates come back rounded to float unless
/// told otherwise, and other numbers as they were set.
///
/// Copies are deep, pixels included, and arguments are copied, never changed. No pointer may be
/// null unless told otherwise. Nothing is reported; what throws is the allocator, OpenCV's
/// included: the overlay is then sound, but its element may be incomplete. Use an object from one
/// thread at a time; reading it from several at once is safe.
///
/// The handle owns an IVemOverlay, alone.
class VEM_EXPORT VemOverlay {
 public:
  VemOverlay();  ///< No element, the pen 0, 0, 255 of width 1, the brush 227, 224, 184 of mode 0.
  VemOverlay(const VemOverlay& other);  ///< A deep copy.
  /// A deep copy, in place. Assigned to itself, an overlay stays as it is.
  VemOverlay& operator=(const VemOverlay& other);
  ~VemOverlay();

  /// A point.
  void GenPoint(VemPoint& point);
  /// A segment with an arrow head, between two points that must differ.
  void GenArrowLine(VemPoint& p1, VemPoint& p2);
  /// A segment between two points that must differ.
  void GenLine(VemPoint& p1, VemPoint& p2);
  /// A rectangle. Refused unless `p2` is greater in x and in y.
  void GenRect1(VemPoint& p1, VemPoint& p2);
  /// A rake in a rectangle as above, of a mode from 0 to 3 and a count of at least 2.
  void GenRakeRect1(VemPoint& p1, VemPoint& p2, int mode, int count);
  /// A circle; the radius must be above 0.
  void GenCircle(VemPoint& center, double radius);
  /// A rotated ellipse. `radius1` is the semi-axis along the direction `angle`, `radius2` the one
  /// across; both must be above 0, either may be the larger.
  void GenEllipse(VemPoint& center, double radius1, double radius2, double angle);
  /// A polygon of at least 3 points; the closing point is not listed.
  void GenPolygon(const VemPointArray& points);
  /// An open chain of segments, of at least 3 points: 2 are refused here too.
  void GenPolyLine(const VemPointArray& points);
  /// A rotated rectangle. `length1` is the full side along the direction `angle`, `length2` the one
  /// across; both must be above 0.
  void GenRect2(VemPoint& center, double length1, double length2, double angle);
  /// A rake in a rotated rectangle as above, of a mode from 0 to 3 and a count of at least 2.
  void GenRakeRect2(VemPoint& center, double length1, double length2, double angle, int mode,
                    int count);
  /// A ring, from `startAngle` on for `sweepAngle` degrees. The radii must be above 0 and the outer
  /// one the greater; the sweep must not be negative.
  void GenTorus(VemPoint& center, double innerRadius, double outerRadius, double startAngle,
                double sweepAngle);
  /// Spokes in a ring as above, of mode 4 or 5 and a count of at least 2.
  void GenSpokeTorus(VemPoint& center, double innerRadius, double outerRadius, double startAngle,
                     double sweepAngle, int mode, int count);
  /// An arc, from `startAngle` on for `sweepAngle` degrees. The radius must be above 0, the sweep
  /// not negative.
  void GenArc(VemPoint& center, double radius, double startAngle, double sweepAngle);
  /// A chain of at least 3 listed points.
  void GenIrregular(const VemPointArray& points);
  /// A text; `text` is copied and must not be null. The font's Flag0 is not kept.
  void GenText(VemPoint& point, const char* text, VemFont& font);
  /// An image; its pixels are copied, and their channels keep the order that the image has.
  void GenImage(VemPoint& point, VemImage& image);
  /// The canvas and the runs of a region; its outlines are not taken.
  void GenRegion(VemRegion& region);

  /// Takes over the kind and the numbers of a region of interest. A mask becomes a region without
  /// its runs: GetRegion gives what the overlay held before. An arc's center comes back from GetArc
  /// with x and y exchanged. No shape leaves no element, and the old numbers in place.
  void FromROI(const VemROI& roi);
  /// Makes the element an irregular chain and adds the contour's points to the numbers there are:
  /// twice the same contour gives all its points twice. No contour is refused.
  void FromContour(const VemContour& contour);

  /// Three colour components and a width, of each the low 32 bits. The components are carried in
  /// the order given: which colour each of them means, the display settles. The pen counts as
  /// chosen by the caller from then on.
  void SetPen(long color0, long color1, long color2, long width);
  /// Three colour components and a mode, of each the low 32 bits, as those of the pen. The brush
  /// counts as chosen by the caller from then on.
  void SetBrush(long color0, long color1, long color2, long mode);

  /// Drops the element with its pixels and runs. Canvas, pen and brush stay.
  void Reset();

  /// The point, not rounded. True always: on another element the point stays as it was.
  bool GetPoint(VemPoint* point);
  bool GetArrowLine(VemPoint* p1, VemPoint* p2);  ///< True if the points differ.
  bool GetLine(VemPoint* p1, VemPoint* p2);       ///< True if the points differ.
  bool GetRect1(VemPoint* p1, VemPoint* p2);      ///< True if p2 is greater in x and y.
  /// True if the corners differ in x and in y, in whichever order, and mode and count are in range.
  /// On another element mode and count stay as they were.
  bool GetRakeRect1(VemPoint* p1, VemPoint* p2, int* mode, int* count);
  /// The center is not rounded. On another element the radius is indeterminate.
  bool GetCircle(VemPoint* center, double* radius);
  /// On another element the radii and the angle are indeterminate.
  bool GetEllipse(VemPoint* center, double* radius1, double* radius2, double* angle);
  bool GetPolygon(VemPointArray* points);   ///< Replaces the points. True from 3 points on.
  bool GetPolyLine(VemPointArray* points);  ///< As GetPolygon.
  /// On another element the lengths and the angle are indeterminate.
  bool GetRect2(VemPoint* center, double* length1, double* length2, double* angle);
  /// Lengths and angle are rounded to float too, and a mode of 4 passes here. On another element
  /// the doubles are indeterminate; mode and count stay as they were.
  bool GetRakeRect2(VemPoint* center, double* length1, double* length2, double* angle, int* mode,
                    int* count);
  /// The radii are rounded to float too. The sweep must be above 0 here. On another element the
  /// doubles are indeterminate.
  bool GetTorus(VemPoint* center, double* innerRadius, double* outerRadius, double* startAngle,
                double* sweepAngle);
  /// Equal radii pass here, and an inner radius of 0; the sweep must be above 0. On another element
  /// the doubles are indeterminate; mode and count stay as they were.
  bool GetSpokeTorus(VemPoint* center, double* innerRadius, double* outerRadius, double* startAngle,
                     double* sweepAngle, int* mode, int* count);
  /// The sweep must be above 0 here. On another element the doubles are indeterminate.
  bool GetArc(VemPoint* center, double* radius, double* startAngle, double* sweepAngle);
  bool GetIrregular(VemPointArray* points);  ///< As GetPolygon.
  /// The text, its position and its font but for Flag0. `font` may be null. True always; to be
  /// called on a text alone.
  bool GetText(VemPoint* point, VemVar* text, VemFont* font);
  /// The position and a copy of the pixels. True always: on another element both stay as they were.
  bool GetImage(VemPoint* point, VemImage* image);
  /// The canvas and the runs; outlines stay. True always: on another element the region stays as it
  /// was.
  bool GetRegion(VemRegion* region);

  /// Writes the three colour components and the width; returns 1.
  int GetPen(long* color0, long* color1, long* color2, long* width);
  /// Writes the three colour components and the mode; returns 1.
  int GetBrush(long* color0, long* color1, long* color2, long* mode);
  int OverlayType();  ///< The kind of the element, one of VemOverlayType.

 private:
  friend class IVemOverlayPath;

  void Swap(VemOverlay& other);

  IVemOverlay* impl_;
};

#endif  // VEM_OVERLAY_H_
