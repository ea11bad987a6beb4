#ifndef I_VEM_OVERLAY_H_
#define I_VEM_OVERLAY_H_

#include <opencv2/core.hpp>

#include "VemContour.h"
#include "VemExport.h"
#include "VemFont.h"
#include "VemImage.h"
#include "VemOverlayType.h"
#include "VemPoint.h"
#include "VemPointArray.h"
#include "VemROI.h"
#include "VemRegion.h"
#include "VemTuple.h"

/// One graphic element for a display to draw: the implementation object behind VemOverlay.
///
/// Coordinates, radii and lengths are pixels, rows growing downward. Angles are degrees and grow
/// counter-clockwise as the image is seen: 0 points along growing columns, 90 toward smaller rows.
/// Nothing is drawn here; mode and count of rakes and spokes, colours and fonts are carried for the
/// display.
///
/// A setter replaces the element. One that refuses its arguments leaves no element: the type
/// VemOverlayNone and no numbers. Pen, brush, and the pixels or runs of an earlier element stay in
/// the record whatever is set; of the operations below, only SetImage, SetRegion and Reset touch
/// pixels or runs; assignment replaces everything.
///
/// A reader returns false and leaves its outputs alone when the element is of another kind, or, but
/// for image and region, has no numbers. Else it writes all outputs and then tells whether what it
/// has written passes its test, which is told beside it where it is not the setter's. Coordinates
/// come back rounded to float unless told otherwise, and other numbers as they were set.
///
/// Nothing is reported; what throws is the allocator, OpenCV's included. Use an object from one
/// thread at a time; reading it from several at once is safe.
class VEM_EXPORT IVemOverlay {
 public:
  IVemOverlay();  ///< No element, the pen 0, 0, 255 of width 1, the brush 227, 224, 184 of mode 0.
  /// Copies all fields; the pixels are shared with `other` through `cv::Mat`'s reference count.
  IVemOverlay(const IVemOverlay& other);
  /// Copies all fields, with pixels of its own.
  IVemOverlay& operator=(const IVemOverlay& other);
  ~IVemOverlay();

  /// A point. Stored x before y.
  void SetPoint(const VemPoint& point);
  /// A segment with an arrow head, between two points that must differ.
  void SetArrowLine(const VemPoint& p1, const VemPoint& p2);
  /// A segment between two points that must differ.
  void SetLine(const VemPoint& p1, const VemPoint& p2);
  /// A rectangle. Refused unless `p2` is greater in x and in y.
  void SetRect1(const VemPoint& p1, const VemPoint& p2);
  /// A rake in a rectangle as above, of a mode from 0 to 3 and a count of at least 2.
  void SetRect1(const VemPoint& p1, const VemPoint& p2, int mode, int count);
  /// A circle; the radius must be above 0.
  void SetCircle(const VemPoint& center, double radius);
  /// A rotated ellipse. `radius1` is the semi-axis along the direction `angle`, `radius2` the one
  /// across; both must be above 0, either may be the larger.
  void SetEllipse(const VemPoint& center, double radius1, double radius2, double angle);
  /// A polygon of at least 3 points; the closing point is not listed.
  void SetPolygon(const VemPointArray& points);
  /// An open chain of segments, of at least 3 points: 2 are refused here too.
  void SetPolyLine(const VemPointArray& points);
  /// A rotated rectangle. `length1` is the full side along the direction `angle`, `length2` the one
  /// across; both must be above 0.
  void SetRect2(const VemPoint& center, double length1, double length2, double angle);
  /// A rake in a rotated rectangle as above, of a mode from 0 to 3 and a count of at least 2.
  void SetRect2(const VemPoint& center, double length1, double length2, double angle, int mode,
                int count);
  /// A ring, from `startAngle` on for `sweepAngle` degrees. The radii must be above 0 and the outer
  /// one the greater; the sweep must not be negative.
  void SetTorus(const VemPoint& center, double innerRadius, double outerRadius, double startAngle,
                double sweepAngle);
  /// Spokes in a ring as above, of mode 4 or 5 and a count of at least 2.
  void SetTorus(const VemPoint& center, double innerRadius, double outerRadius, double startAngle,
                double sweepAngle, int mode, int count);
  /// An arc, from `startAngle` on for `sweepAngle` degrees. The radius must be above 0, the sweep
  /// not negative. Stored x before y.
  void SetArc(const VemPoint& center, double radius, double startAngle, double sweepAngle);
  /// A chain of at least 3 listed points.
  void SetIrregular(const VemPointArray& points);
  /// A text; `text` is copied and must not be null. The font's Flag0 is not kept.
  void SetText(VemPoint& point, const char* text, VemFont& font);
  /// An image; its pixels are copied. The point is stored x before y.
  void SetImage(VemPoint& point, VemImage& image);
  /// The canvas and the runs of a region, copied; its outlines are not taken.
  void SetRegion(VemRegion& region);

  /// Takes over the kind and the numbers of a region of interest. A mask becomes a region without
  /// its runs: GetRegion gives what the record holds. An arc's center comes back from GetArc with x
  /// and y exchanged. No shape leaves no element, and the old numbers in place.
  void FromROI(const VemROI& roi);
  /// Makes the element an irregular chain and adds the contour's points to the numbers there are:
  /// twice the same contour gives all its points twice. No contour is refused.
  void FromContour(const VemContour& contour);

  /// Three colour components and a width, of each the low 32 bits. The pen counts as chosen by the
  /// caller from then on.
  void SetPen(long color0, long color1, long color2, long width);
  /// Three colour components and a mode, of each the low 32 bits. The brush counts as chosen by the
  /// caller from then on.
  void SetBrush(long color0, long color1, long color2, long mode);

  /// Drops the element with its pixels and runs. Canvas, pen and brush stay.
  void Reset();

  bool GetPoint(VemPoint* point) const;                 ///< True. Not rounded.
  bool GetArrowLine(VemPoint* p1, VemPoint* p2) const;  ///< True if the points differ.
  bool GetLine(VemPoint* p1, VemPoint* p2) const;       ///< True if the points differ.
  bool GetRect1(VemPoint* p1, VemPoint* p2) const;      ///< True if p2 is greater in x and y.
  /// The rake in a rectangle. True if the corners differ in x and in y, in whichever order, and
  /// mode and count are in range.
  bool GetRect1(VemPoint* p1, VemPoint* p2, int* mode, int* count) const;
  bool GetCircle(VemPoint* center, double* radius) const;  ///< The center is not rounded.
  bool GetEllipse(VemPoint* center, double* radius1, double* radius2,
                  double* angle) const;           ///< True if both radii are above 0.
  bool GetPolygon(VemPointArray* points) const;   ///< Replaces the points. True from 3 points on.
  bool GetPolyLine(VemPointArray* points) const;  ///< As GetPolygon.
  bool GetRect2(VemPoint* center, double* length1, double* length2,
                double* angle) const;  ///< True if both lengths are above 0.
  /// The rake in a rotated rectangle. Lengths and angle are rounded to float too, and a mode of 4
  /// passes here.
  bool GetRect2(VemPoint* center, double* length1, double* length2, double* angle, int* mode,
                int* count) const;
  /// A ring. Its radii are rounded to float too. The sweep must be above 0 here.
  bool GetTorus(VemPoint* center, double* innerRadius, double* outerRadius, double* startAngle,
                double* sweepAngle) const;
  /// Spokes. Equal radii pass here, and an inner radius of 0; the sweep must be above 0.
  bool GetTorus(VemPoint* center, double* innerRadius, double* outerRadius, double* startAngle,
                double* sweepAngle, int* mode, int* count) const;
  /// An arc. The sweep must be above 0 here.
  bool GetArc(VemPoint* center, double* radius, double* startAngle, double* sweepAngle) const;
  bool GetIrregular(VemPointArray* points) const;  ///< As GetPolygon.
  /// A text: `*text` becomes the one text, `*font` all but Flag0, which stays as it was.
  bool GetText(VemPoint* point, VemVarArray* text, VemFont* font) const;
  bool GetImage(VemPoint* point, VemImage* image) const;  ///< The image gets pixels of its own.
  bool GetRegion(VemRegion* region);  ///< Replaces canvas and runs; outlines stay.

  /// Writes the three colour components and the width; returns 0.
  int GetPen(long* color0, long* color1, long* color2, long* width);
  /// Writes the three colour components and the mode; returns 0.
  int GetBrush(long* color0, long* color1, long* color2, long* mode);
  bool isRedrawPen();       ///< Whether SetPen was ever called.
  bool isRedrawBrush();     ///< Whether SetBrush was ever called.
  int OverlayType() const;  ///< The kind of the element, one of VemOverlayType.

  VemOverlayType Type = VemOverlayNone;  ///< The kind of the element.
  VemVarArray Params;        ///< The element's values, y before x but for point, arc and image.
  cv::Mat Image;             ///< The pixels of an image.
  int Width = 0;             ///< Columns of a region's canvas.
  int Height = 0;            ///< Rows of a region's canvas.
  VemVarArray Rows;          ///< The rows of a region's runs.
  VemVarArray FirstColumns;  ///< The first columns of a region's runs.
  VemVarArray LastColumns;   ///< The last columns of a region's runs, included.
  int PenColor0 = 0;         ///< First colour component of the pen.
  int PenColor1 = 0;         ///< Second colour component of the pen.
  int PenColor2 = 255;       ///< Third colour component of the pen.
  int BrushColor0 = 227;     ///< First colour component of the brush.
  int BrushColor1 = 224;     ///< Second colour component of the brush.
  int BrushColor2 = 184;     ///< Third colour component of the brush.
  int BrushMode = 0;         ///< The brush's mode.
  int PenWidth = 1;          ///< The pen's width.
  bool RedrawPen = false;    ///< Whether a caller chose the pen.
  bool RedrawBrush = false;  ///< Whether a caller chose the brush.
};

#endif  // I_VEM_OVERLAY_H_
