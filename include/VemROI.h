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
/// The handle owns an IVemROIPara, alone, and forwards to it: what an operation takes, refuses and
/// returns is told there. Copies are deep. Use an object from one thread at a time; reading it from
/// several at once is safe.
class VEM_EXPORT VemROI {
 public:
  VemROI();                     ///< No shape.
  VemROI(int);                  ///< No shape; the argument has no effect.
  VemROI(const VemROI& other);  ///< A deep copy.
  /// A deep copy, in place.
  VemROI& operator=(const VemROI& other);
  ~VemROI();

  void GenPoint(VemPoint& point);                   ///< IVemROIPara::GenPoint
  void GenRect1(VemPoint& p1, VemPoint& p2);        ///< IVemROIPara::GenRect1
  void GenCircle(VemPoint& center, double radius);  ///< IVemROIPara::GenCircle
  void GenTorus(VemPoint& center, double innerRadius, double outerRadius, double startAngle,
                double sweepAngle);  ///< IVemROIPara::GenTorus
  void GenRect2(VemPoint& center, double length1, double length2,
                double angle);               ///< IVemROIPara::GenRect2
  void GenLine(VemPoint& p1, VemPoint& p2);  ///< IVemROIPara::GenLine
  void GenEllipse(VemPoint& center, double radius1, double radius2,
                  double angle);  ///< IVemROIPara::GenEllipse
  void GenArc(VemPoint& center, double radius, double startAngle,
              double sweepAngle);                         ///< IVemROIPara::GenArc
  void GenPolygon(VemVarArray& rows, VemVarArray& cols);  ///< IVemROIPara::GenPolygon
  void GenPolygon(VemPointArray& points);                 ///< IVemROIPara::GenPolygon
  void GenIrregular(VemPointArray& points);               ///< IVemROIPara::GenIrregular
  /// IVemROIPara::GenMask
  void GenMask(VemVarArray& rows, VemVarArray& firstColumns, VemVarArray& lastColumns, int width,
               int height);
  void GenMask(VemContourArray& contours, int width, int height);  ///< IVemROIPara::GenMask

  bool GetPoint(VemPoint* point);                          ///< IVemROIPara::GetPoint
  bool GetRect1(VemPoint* p1, VemPoint* p2) const;         ///< IVemROIPara::GetRect1
  bool GetCircle(VemPoint* center, double* radius) const;  ///< IVemROIPara::GetCircle
  bool GetTorus(VemPoint* center, double* innerRadius, double* outerRadius, double* startAngle,
                double* sweepAngle) const;  ///< IVemROIPara::GetTorus
  bool GetRect2(VemPoint* center, double* length1, double* length2,
                double* angle) const;              ///< IVemROIPara::GetRect2
  bool GetLine(VemPoint* p1, VemPoint* p2) const;  ///< IVemROIPara::GetLine
  bool GetEllipse(VemPoint* center, double* radius1, double* radius2,
                  double* angle) const;  ///< IVemROIPara::GetEllipse
  bool GetArc(VemPoint* center, double* radius, double* startAngle,
              double* sweepAngle) const;                        ///< IVemROIPara::GetArc
  bool GetPolygon(VemVarArray* rows, VemVarArray* cols) const;  ///< IVemROIPara::GetPolygon
  bool GetPolygon(VemPointArray* points) const;                 ///< IVemROIPara::GetPolygon
  bool GetIrregular(VemPointArray* points) const;               ///< IVemROIPara::GetIrregular

  /// IVemROIPara::GetMask
  bool GetMask(VemVarArray* rows, VemVarArray* firstColumns, VemVarArray* lastColumns, int* width,
               int* height) const;
  bool GetMask(VemContourArray* contours, int* width, int* height) const;  ///< IVemROIPara::GetMask

  void Reset();                ///< IVemROIPara::Reset
  VemROIType ROIType() const;  ///< IVemROIPara::ROIType

 private:
  friend class IVemOverlay;
  friend class VemROIArray;

  IVemROIPara* impl_;
};

#endif  // VEM_ROI_H_
