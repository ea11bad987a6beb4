#ifndef VEM_REGION_H_
#define VEM_REGION_H_

#include "VemExport.h"
#include "VemPointArray.h"
#include "VemTuple.h"

struct VemRegionData;

/// A set of pixels on a canvas, held as horizontal runs.
///
/// Run i covers row `rows[i]` from column `firstColumns[i]` to `lastColumns[i]`, both ends
/// included. Rows grow downward from 0, columns rightward. Runs are integers, stand in any order
/// and may overlap or lie outside the canvas; nothing sorts, merges or clips them. Where a canvas
/// is told, width comes before height.
///
/// Run arrays are copied, never kept or changed, and copies of a region are deep. Nothing is
/// reported: refused input gives the empty region, 0 by 0 without runs. What throws is the
/// allocator, and OpenCV's where points need a mask too large for memory; a region that was there
/// before is then as it was. Only where its new runs are texts, canvas and runs need not belong
/// together.
///
/// Use an object from one thread at a time; reading it from several at once is safe.
class VEM_EXPORT VemRegion {
 public:
  /// Empty: 0 by 0, without runs.
  VemRegion();
  /// Copies the runs, on a canvas that just holds them: the largest last column plus one wide, the
  /// largest row plus one high, each at least 1; the largest int wraps. Arrays that differ in
  /// length, or are empty, are refused.
  VemRegion(VemVarArray& rows, VemVarArray& firstColumns, VemVarArray& lastColumns);
  /// Copies the runs, on the stated canvas. Arrays that differ in length and a canvas below 1 by 1
  /// are refused; arrays without elements are not.
  VemRegion(int width, int height, VemVarArray& rows, VemVarArray& firstColumns,
            VemVarArray& lastColumns);
  /// The pixels of the points, their coordinates truncated toward zero, on a canvas that just holds
  /// them. Points left of or above the canvas are skipped. Points that all lie in row 0 or above,
  /// or all in column 0 or left of it, are refused. The runs stand component by component.
  ///
  /// The canvas is painted, and takes a byte for each of its pixels while it is. A largest
  /// coordinate of 2147483647 makes it negative by one too many, which raises `cv::Exception`.
  /// Coordinates beyond that count as the smallest int, and the search for the largest begins anew
  /// behind one. `points` must not be empty.
  VemRegion(VemPointArray& points);
  /// The pixels of the points, their coordinates truncated toward zero, on the stated canvas.
  /// Points outside are skipped; a canvas below 1 by 1 is refused. The runs stand component by
  /// component.
  VemRegion(int width, int height, VemPointArray& points);
  /// A deep copy. Outlines come along when there are contours.
  VemRegion(const VemRegion& other);
  /// Takes over canvas and runs. Outlines come along when `other` has contours; when it has none,
  /// the old outlines stay beside the new runs. Assigned to itself, a region stays as it is.
  VemRegion& operator=(const VemRegion& other);
  ~VemRegion();

  void SetWidth(int width);    ///< Stores the width; the runs stay as they are.
  void SetHeight(int height);  ///< Stores the height; the runs stay as they are.
  /// Stores the runs, whatever their lengths; canvas and outlines stay as they are.
  void SetRuns(VemVarArray& rows, VemVarArray& firstColumns, VemVarArray& lastColumns);
  /// Stores canvas and runs, without any test; outlines stay as they are.
  void CreateRegion(int width, int height, VemVarArray& rows, VemVarArray& firstColumns,
                    VemVarArray& lastColumns);

  int Width() const;   ///< Columns of the canvas.
  int Height() const;  ///< Rows of the canvas.
  /// Replaces the three arrays by copies of the runs. The pointers must not be null.
  void GetRegionRuns(VemVarArray* rows, VemVarArray* firstColumns, VemVarArray* lastColumns);

 private:
  friend class IVemRegionArrayPara;

  void CodePoints(VemPointArray& points, int width, int height);

  VemRegionData* data_;
};

#endif  // VEM_REGION_H_
