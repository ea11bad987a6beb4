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

/// A region of interest, told by numbers: the implementation object behind VemROI, which tells what
/// generators, readers and both GetMask take, refuse and return. Told here is what is kept, and
/// what VemROI does not offer.
///
/// A radius that is negative, which only who writes the fields can store, raises `cv::Exception` in
/// the outline form of a circle or an ellipse that still reaches in, and in the run form of such a
/// ring's outer radius; in the other form of each, and for an arc, it gives true.
///
/// What throws is the allocator, and `cv::Exception` where a canvas can't be told. After a throw
/// from a generator or a Reset there is no shape, or one whose numbers are not all there; GetMask
/// tells what it leaves. Use an object from one thread at a time; reading it from several at once
/// is safe.
class VEM_EXPORT IVemROIPara {
 public:
  /// No shape. Width and Height are left as the memory has them.
  IVemROIPara();
  /// Copies the arrays and the type. Width and Height are left as the memory has them.
  IVemROIPara(const IVemROIPara& other);
  /// Copies all fields.
  IVemROIPara& operator=(const IVemROIPara& other);
  ~IVemROIPara();

  void GenPoint(VemPoint& point);                   ///< VemROI::GenPoint; stored x before y, alone.
  void GenRect1(VemPoint& p1, VemPoint& p2);        ///< VemROI::GenRect1
  void GenCircle(VemPoint& center, double radius);  ///< VemROI::GenCircle
  void GenTorus(VemPoint& center, double innerRadius, double outerRadius, double startAngle,
                double sweepAngle);  ///< VemROI::GenTorus
  void GenRect2(VemPoint& center, double length1, double length2,
                double angle);               ///< VemROI::GenRect2
  void GenLine(VemPoint& p1, VemPoint& p2);  ///< VemROI::GenLine
  void GenEllipse(VemPoint& center, double radius1, double radius2,
                  double angle);  ///< VemROI::GenEllipse
  void GenArc(VemPoint& center, double radius, double startAngle,
              double sweepAngle);                         ///< VemROI::GenArc
  void GenPolygon(VemVarArray& rows, VemVarArray& cols);  ///< VemROI::GenPolygon
  void GenPolygon(VemPointArray& points);                 ///< VemROI::GenPolygon
  void GenIrregular(VemPointArray& points);               ///< VemROI::GenIrregular
  /// VemROI::GenMask
  void GenMask(VemVarArray& rows, VemVarArray& firstColumns, VemVarArray& lastColumns, int width,
               int height);
  void GenMask(VemContourArray& contours, int width, int height);  ///< VemROI::GenMask

  bool GetPoint(VemPoint* point) const;                    ///< VemROI::GetPoint
  bool GetRect1(VemPoint* p1, VemPoint* p2) const;         ///< VemROI::GetRect1
  bool GetCircle(VemPoint* center, double* radius) const;  ///< VemROI::GetCircle
  bool GetTorus(VemPoint* center, double* innerRadius, double* outerRadius, double* startAngle,
                double* sweepAngle) const;  ///< VemROI::GetTorus
  bool GetRect2(VemPoint* center, double* length1, double* length2,
                double* angle) const;              ///< VemROI::GetRect2
  bool GetLine(VemPoint* p1, VemPoint* p2) const;  ///< VemROI::GetLine
  bool GetEllipse(VemPoint* center, double* radius1, double* radius2,
                  double* angle) const;  ///< VemROI::GetEllipse
  bool GetArc(VemPoint* center, double* radius, double* startAngle,
              double* sweepAngle) const;                        ///< VemROI::GetArc
  bool GetPolygon(VemVarArray* rows, VemVarArray* cols) const;  ///< VemROI::GetPolygon
  bool GetPolygon(VemPointArray* points) const;                 ///< VemROI::GetPolygon
  bool GetIrregular(VemPointArray* points) const;               ///< VemROI::GetIrregular

  /// VemROI::GetMask
  bool GetMask(VemVarArray* rows, VemVarArray* firstColumns, VemVarArray* lastColumns, int* width,
               int* height) const;
  bool GetMask(VemContourArray* contours, int* width, int* height);  ///< VemROI::GetMask

  /// Paints runs into a new `CV_8UC1` raster of `height` rows by `width` columns: 255 inside, 0
  /// outside. Runs are clipped to the raster; the number of rows alone tells how many there are.
  /// The object itself is not read. A negative size is OpenCV's to refuse, as `cv::Exception`.
  cv::Mat ToMAT(VemVarArray& rows, VemVarArray& firstColumns, VemVarArray& lastColumns, int width,
                int height);
  /// Paints contours, filled even-odd over all of them, their outlines included, into a raster as
  /// above. Coordinates are rounded to the nearest pixel, halves to the even one, and may lie at
  /// any distance: the time goes with the contours' rows on the raster.
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
