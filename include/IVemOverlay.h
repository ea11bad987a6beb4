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

/// One graphic element for a display to draw: the implementation object behind VemOverlay, which
/// tells what each kind of element takes and refuses. Told here is how it is stored, and where the
/// readers differ.
///
/// A reader returns false and leaves its outputs alone when the element is of another kind, or, but
/// for image and region, has no numbers. Else it writes all outputs and then tells whether what it
/// has written passes its test, as told at the reader of the handle.
///
/// Nothing is reported; what throws is the allocator, OpenCV's included. Use an object from one
/// thread at a time; reading it from several at once is safe.
class VEM_EXPORT IVemOverlay {
 public:
  IVemOverlay();  ///< As a new VemOverlay.
  /// Copies all fields; the pixels are shared with `other` through `cv::Mat`'s reference count.
  IVemOverlay(const IVemOverlay& other);
  /// Copies all fields, with pixels of its own.
  IVemOverlay& operator=(const IVemOverlay& other);
  ~IVemOverlay();

  void SetPoint(const VemPoint& point);  ///< VemOverlay::GenPoint. Stored x before y.
  void SetArrowLine(const VemPoint& p1, const VemPoint& p2);  ///< VemOverlay::GenArrowLine
  void SetLine(const VemPoint& p1, const VemPoint& p2);       ///< VemOverlay::GenLine
  void SetRect1(const VemPoint& p1, const VemPoint& p2);      ///< VemOverlay::GenRect1
  /// VemOverlay::GenRakeRect1
  void SetRect1(const VemPoint& p1, const VemPoint& p2, int mode, int count);
  void SetCircle(const VemPoint& center, double radius);  ///< VemOverlay::GenCircle
  /// VemOverlay::GenEllipse
  void SetEllipse(const VemPoint& center, double radius1, double radius2, double angle);
  void SetPolygon(const VemPointArray& points);   ///< VemOverlay::GenPolygon
  void SetPolyLine(const VemPointArray& points);  ///< VemOverlay::GenPolyLine
  /// VemOverlay::GenRect2
  void SetRect2(const VemPoint& center, double length1, double length2, double angle);
  /// VemOverlay::GenRakeRect2
  void SetRect2(const VemPoint& center, double length1, double length2, double angle, int mode,
                int count);
  /// VemOverlay::GenTorus
  void SetTorus(const VemPoint& center, double innerRadius, double outerRadius, double startAngle,
                double sweepAngle);
  /// VemOverlay::GenSpokeTorus
  void SetTorus(const VemPoint& center, double innerRadius, double outerRadius, double startAngle,
                double sweepAngle, int mode, int count);
  /// VemOverlay::GenArc. Stored x before y.
  void SetArc(const VemPoint& center, double radius, double startAngle, double sweepAngle);
  void SetIrregular(const VemPointArray& points);  ///< VemOverlay::GenIrregular
  /// VemOverlay::GenText
  void SetText(VemPoint& point, const char* text, VemFont& font);
  void SetImage(VemPoint& point, VemImage& image);  ///< VemOverlay::GenImage. Stored x before y.
  void SetRegion(VemRegion& region);                ///< VemOverlay::GenRegion

  void FromROI(const VemROI& roi);                                  ///< VemOverlay::FromROI
  void FromContour(const VemContour& contour);                      ///< VemOverlay::FromContour
  void SetPen(long color0, long color1, long color2, long width);   ///< VemOverlay::SetPen
  void SetBrush(long color0, long color1, long color2, long mode);  ///< VemOverlay::SetBrush
  void Reset();  ///< VemOverlay::Reset. The pixels' type stays.

  bool GetPoint(VemPoint* point) const;                 ///< True if it is a point.
  bool GetArrowLine(VemPoint* p1, VemPoint* p2) const;  ///< VemOverlay::GetArrowLine
  bool GetLine(VemPoint* p1, VemPoint* p2) const;       ///< VemOverlay::GetLine
  bool GetRect1(VemPoint* p1, VemPoint* p2) const;      ///< VemOverlay::GetRect1
  /// VemOverlay::GetRakeRect1
  bool GetRect1(VemPoint* p1, VemPoint* p2, int* mode, int* count) const;
  bool GetCircle(VemPoint* center, double* radius) const;  ///< VemOverlay::GetCircle
  /// VemOverlay::GetEllipse
  bool GetEllipse(VemPoint* center, double* radius1, double* radius2, double* angle) const;
  bool GetPolygon(VemPointArray* points) const;   ///< VemOverlay::GetPolygon
  bool GetPolyLine(VemPointArray* points) const;  ///< VemOverlay::GetPolyLine
  /// VemOverlay::GetRect2
  bool GetRect2(VemPoint* center, double* length1, double* length2, double* angle) const;
  /// VemOverlay::GetRakeRect2
  bool GetRect2(VemPoint* center, double* length1, double* length2, double* angle, int* mode,
                int* count) const;
  /// VemOverlay::GetTorus
  bool GetTorus(VemPoint* center, double* innerRadius, double* outerRadius, double* startAngle,
                double* sweepAngle) const;
  /// VemOverlay::GetSpokeTorus
  bool GetTorus(VemPoint* center, double* innerRadius, double* outerRadius, double* startAngle,
                double* sweepAngle, int* mode, int* count) const;
  /// VemOverlay::GetArc
  bool GetArc(VemPoint* center, double* radius, double* startAngle, double* sweepAngle) const;
  bool GetIrregular(VemPointArray* points) const;  ///< VemOverlay::GetIrregular
  /// A text: `*text` becomes the one text, `*font`, which must not be null, all but Flag0, which
  /// stays as it was.
  bool GetText(VemPoint* point, VemVarArray* text, VemFont* font) const;
  bool GetImage(VemPoint* point, VemImage* image) const;  ///< The image gets pixels of its own.
  bool GetRegion(VemRegion* region);  ///< Replaces canvas and runs; outlines stay.

  /// VemOverlay::GetPen, but returns 0.
  int GetPen(long* color0, long* color1, long* color2, long* width);
  /// VemOverlay::GetBrush, but returns 0.
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
