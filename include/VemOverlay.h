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
/// with a pen and a brush. Nothing is drawn here.
///
/// Coordinates, radii and lengths are pixels, rows growing downward. Angles are degrees and grow
/// counter-clockwise as the image is seen: 0 points along growing columns, 90 toward smaller rows.
///
/// The handle owns an IVemOverlay, alone, and forwards to it: what a generator takes and refuses,
/// and what a reader gives, is told there. A refused generator leaves the type VemOverlayNone.
/// Where the readers of the handle differ, it is told here; test OverlayType before reading.
///
/// Copies are deep, pixels included. Use an object from one thread at a time; reading it from
/// several at once is safe.
class VEM_EXPORT VemOverlay {
 public:
  VemOverlay();                                    ///< No element, with the default pen and brush.
  VemOverlay(const VemOverlay& other);             ///< A deep copy.
  VemOverlay& operator=(const VemOverlay& other);  ///< A deep copy, in place.
  ~VemOverlay();

  void GenPoint(VemPoint& point);                 ///< IVemOverlay::SetPoint
  void GenArrowLine(VemPoint& p1, VemPoint& p2);  ///< IVemOverlay::SetArrowLine
  void GenLine(VemPoint& p1, VemPoint& p2);       ///< IVemOverlay::SetLine
  void GenRect1(VemPoint& p1, VemPoint& p2);      ///< IVemOverlay::SetRect1
  void GenRakeRect1(VemPoint& p1, VemPoint& p2, int mode, int count);  ///< IVemOverlay::SetRect1
  void GenCircle(VemPoint& center, double radius);                     ///< IVemOverlay::SetCircle
  void GenEllipse(VemPoint& center, double radius1, double radius2,
                  double angle);                  ///< IVemOverlay::SetEllipse
  void GenPolygon(const VemPointArray& points);   ///< IVemOverlay::SetPolygon
  void GenPolyLine(const VemPointArray& points);  ///< IVemOverlay::SetPolyLine
  void GenRect2(VemPoint& center, double length1, double length2,
                double angle);  ///< IVemOverlay::SetRect2
  void GenRakeRect2(VemPoint& center, double length1, double length2, double angle, int mode,
                    int count);  ///< IVemOverlay::SetRect2
  void GenTorus(VemPoint& center, double innerRadius, double outerRadius, double startAngle,
                double sweepAngle);  ///< IVemOverlay::SetTorus
  void GenSpokeTorus(VemPoint& center, double innerRadius, double outerRadius, double startAngle,
                     double sweepAngle, int mode, int count);  ///< IVemOverlay::SetTorus
  void GenArc(VemPoint& center, double radius, double startAngle,
              double sweepAngle);                                  ///< IVemOverlay::SetArc
  void GenIrregular(const VemPointArray& points);                  ///< IVemOverlay::SetIrregular
  void GenText(VemPoint& point, const char* text, VemFont& font);  ///< IVemOverlay::SetText
  void GenImage(VemPoint& point, VemImage& image);                 ///< IVemOverlay::SetImage
  void GenRegion(VemRegion& region);                               ///< IVemOverlay::SetRegion

  void FromROI(const VemROI& roi);                                  ///< IVemOverlay::FromROI
  void FromContour(const VemContour& contour);                      ///< IVemOverlay::FromContour
  void SetPen(long color0, long color1, long color2, long width);   ///< IVemOverlay::SetPen
  void SetBrush(long color0, long color1, long color2, long mode);  ///< IVemOverlay::SetBrush
  void Reset();                                                     ///< IVemOverlay::Reset

  /// The point. True always: on another element the point stays as it was.
  bool GetPoint(VemPoint* point);
  bool GetArrowLine(VemPoint* p1, VemPoint* p2);  ///< IVemOverlay::GetArrowLine
  bool GetLine(VemPoint* p1, VemPoint* p2);       ///< IVemOverlay::GetLine
  bool GetRect1(VemPoint* p1, VemPoint* p2);      ///< IVemOverlay::GetRect1
  bool GetRakeRect1(VemPoint* p1, VemPoint* p2, int* mode, int* count);  ///< IVemOverlay::GetRect1
  /// IVemOverlay::GetCircle, but on another element the number is indeterminate.
  bool GetCircle(VemPoint* center, double* radius);
  /// IVemOverlay::GetEllipse, but on another element the numbers are indeterminate.
  bool GetEllipse(VemPoint* center, double* radius1, double* radius2, double* angle);
  bool GetPolygon(VemPointArray* points);   ///< IVemOverlay::GetPolygon
  bool GetPolyLine(VemPointArray* points);  ///< IVemOverlay::GetPolyLine
  /// IVemOverlay::GetRect2, but on another element the numbers are indeterminate.
  bool GetRect2(VemPoint* center, double* length1, double* length2, double* angle);
  /// IVemOverlay::GetRect2, but on another element the doubles are indeterminate; mode and count
  /// stay as they were.
  bool GetRakeRect2(VemPoint* center, double* length1, double* length2, double* angle, int* mode,
                    int* count);
  /// IVemOverlay::GetTorus, but on another element the numbers are indeterminate.
  bool GetTorus(VemPoint* center, double* innerRadius, double* outerRadius, double* startAngle,
                double* sweepAngle);
  /// IVemOverlay::GetTorus, but on another element the doubles are indeterminate; mode and count
  /// stay as they were.
  bool GetSpokeTorus(VemPoint* center, double* innerRadius, double* outerRadius, double* startAngle,
                     double* sweepAngle, int* mode, int* count);
  /// IVemOverlay::GetArc, but on another element the numbers are indeterminate.
  bool GetArc(VemPoint* center, double* radius, double* startAngle, double* sweepAngle);
  bool GetIrregular(VemPointArray* points);  ///< IVemOverlay::GetIrregular
  /// The text, its position and its font but for Flag0. `font` may be null. True always; to be
  /// called on a text alone.
  bool GetText(VemPoint* point, VemVar* text, VemFont* font);
  /// The position and a copy of the pixels. True always: on another element both stay as they were.
  bool GetImage(VemPoint* point, VemImage* image);
  /// The canvas and the runs. True always: on another element the region stays as it was.
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
