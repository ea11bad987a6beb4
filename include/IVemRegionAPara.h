#ifndef I_VEM_REGION_A_PARA_H_
#define I_VEM_REGION_A_PARA_H_

#include <vector>

#include "VemExport.h"
#include "VemRegion.h"

namespace cv {
template <typename T>
class Point_;
template <typename T, int n>
class Vec;
}  // namespace cv

/// An ordered list of regions, taken apart: the implementation object behind VemRegionArray.
///
/// The fields are lists side by side, in two tracks. The run track has an item in each of its five
/// lists for every region. The contour track has an item in each of its two lists for every region
/// that came with a hierarchy, and for no other; nothing keeps it in step with the run track:
///
///     regions appended      without, with outlines A, with outlines B
///     run track             0        1                2
///     contour track         A        B
///
/// Region 0 is then delivered with the outlines A. Give all regions outlines, or none.
///
/// Runs are those of VemRegion, kept as plain integers in their order. Whoever writes the fields
/// keeps the five lists of the run track of one length; where they are not, nothing is read or
/// written past the end of one, and what a list lacks counts as 0 or as no runs.
///
/// Nothing is reported. What throws is the allocator, and OpenCV's where contours must be painted:
/// all lists are then as before, and so is a region that was to be written. Use an object from one
/// thread at a time; Length, Select and Union change nothing of it, and may run on several at once.
class VEM_EXPORT IVemRegionArrayPara {
 public:
  IVemRegionArrayPara();                                  ///< No regions.
  IVemRegionArrayPara(const IVemRegionArrayPara& other);  ///< A deep copy of all lists.
  /// Makes all lists deep copies of `other`'s. Assigned to itself, an object stays as it is.
  IVemRegionArrayPara& operator=(const IVemRegionArrayPara& other);
  ~IVemRegionArrayPara();

  /// Adds a region at the end of the run track. If it has a hierarchy, adds hierarchy and contours
  /// at the end of the contour track. Its rows alone tell how many runs there are.
  void Append(VemRegion& region);
  /// Adds a region at the end of the run track, never its contours. The flag has no effect.
  void Append(VemRegion& region, bool);
  /// Adds runs at the end of the run track. Refused without rows, without last columns, and with
  /// first columns of another number than rows; the number of last columns may be another.
  void Append(int width, int height, std::vector<int>& rows, std::vector<int>& firstColumns,
              std::vector<int>& lastColumns);
  /// Adds outlines at the end of the contour track. The flag has no effect.
  void Append(std::vector<std::vector<cv::Point_<int>>>& contours,
              std::vector<cv::Vec<int, 4>>& hierarchy, bool);
  /// Inserts a region before `position`, which must be from 0 to Length(): the end counts. If it
  /// has a hierarchy, inserts the outlines before `position` of the contour track, which must be
  /// that long.
  void Insert(int position, VemRegion& region);
  /// Removes an item of each track that has one at `position`.
  void Remove(int position);
  /// Overwrites the region at `position`, which must be below Length(). Outlines are overwritten if
  /// the array has any, by none if the region has none; an array without outlines takes none.
  void Replace(int position, VemRegion& region);
  /// Exchanges two items of each track that has both.
  void Swap(int a, int b);
  /// Empties all lists and gives their storage back.
  void Clear();

  int Length();  ///< The number of regions.
  /// Writes canvas and runs of one region over those of `region`, and its outlines if the array has
  /// any; if not, `region` keeps its own. Out of range, `region` stays as it was. A contour track
  /// that is too short gives no outlines.
  ///
  /// When no region of the array has a list of runs, only contours, the runs are those of its
  /// contours, painted filled on its canvas. A canvas of a negative size, or too large for memory,
  /// then raises `cv::Exception`, and `region` stays as it was.
  void Select(int position, VemRegion& region);
  /// Writes the runs of all regions, one region after the other, over those of `region`, on a
  /// canvas as wide as the widest and as high as the highest. Nothing is merged; outlines stay.
  void Union(VemRegion& region);

  std::vector<int> Widths;                                          ///< Columns of the canvas.
  std::vector<int> Heights;                                         ///< Rows of the canvas.
  std::vector<std::vector<std::vector<cv::Point_<int>>>> Contours;  ///< Contour track.
  std::vector<std::vector<cv::Vec<int, 4>>> Hierarchies;            ///< Contour track.
  std::vector<std::vector<int>> Rows;                               ///< The row of each run.
  std::vector<std::vector<int>> FirstColumns;  ///< The first column of each run.
  std::vector<std::vector<int>> LastColumns;   ///< The last column of each run, included.
};

#endif  // I_VEM_REGION_A_PARA_H_
