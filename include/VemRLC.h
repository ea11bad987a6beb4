#ifndef VEM_RLC_H_
#define VEM_RLC_H_

#include <vector>

#include "VemExport.h"

namespace cv {
class Mat;
template <typename T>
class Point_;
template <typename T, int n>
class Vec;
}  // namespace cv

/// A horizontal run of foreground pixels, both ends included. Rows and columns are counted from the
/// top left pixel of the raster that was coded.
struct Run {
  int Row;          ///< The row of all its pixels.
  int FirstColumn;  ///< Its leftmost pixel.
  int LastColumn;   ///< Its rightmost pixel.
};

/// The run-length coder: turns a mask raster into runs, components and outlines.
///
/// A raster is a two-dimensional `cv::Mat` of one channel and any depth. A pixel that is not zero
/// is foreground. The raster is read and never written; its rows may be padded. A raster that
/// is empty, or has several channels, counts as one without foreground, and without foreground all
/// lists are left empty.
///
/// Work and memory are linear in the pixels, the runs and the outlines. Beside its results a call
/// takes, for a while, room for the edges of two rows (4 bytes a column each) and 24 KB. Finding
/// components takes instead some 20 bytes a run, as many a row and as many once a column, and sets
/// memory aside as if the rows to come had half as many runs again as those read; finding outlines
/// takes in addition 16 bytes a run and 4 bytes an outline. No row, run or outline has an
/// allocation of its own, but for the lists of Convert. What the processor offers decides how rows
/// are read, never what comes of it.
///
/// Components and outlines are 8-connected. Nothing is reported; what throws is the allocator, and
/// `std::length_error` where there are more than INT_MAX / 8 runs to outline, or INT_MAX runs and
/// rows to find components in. Use a coder from one thread at a time; the static operations may run
/// on any number.
class VEM_EXPORT VemRLC {
 public:
  VemRLC();  ///< Empty results, ready to list the runs of a raster.
  ~VemRLC();

  /// Sets what the following Calc does, by its second argument: 9 finds the components, anything
  /// else lists the runs. Callers pass `(1, 6, true, -1, -1, 1, false, false)` for the runs and
  /// `(1, 9, false, -1, -1, -1, false, false)` for the components; the other arguments have no
  /// effect.
  void SetParam(char, char mode, bool, int, int, int, bool, bool);

  /// Codes the raster. Listing runs fills FillRuns; finding components fills ComponentCount,
  /// ComponentRuns and ComponentStarts. The other results are emptied. The flag has no effect.
  void Calc(cv::Mat& raster, bool);

  /// Finds the outlines and the runs of the raster in one pass.
  ///
  /// Outlines are closed chains of vertices through the centres of border pixels, without a closing
  /// vertex and with a vertex only where the direction changes: those of `cv::findContours` with
  /// `RETR_CCOMP` and `CHAIN_APPROX_SIMPLE`. They stand in the order in which a scan by rows meets
  /// them: an outer border at its first pixel, a hole's border at the pixel left of the hole's
  /// first pixel.
  ///
  /// `points` gets the vertices of all outlines, `pointStarts` for each outline the index of its
  /// first vertex and a closing entry, the number of vertices. `hierarchy` gets for each outline
  /// the indices of the next and the previous outline of its level, of its first hole and of the
  /// outer border around it, each -1 where there is none. `runs` gets all runs by row, then by
  /// column; `runStarts` for each component, in the order of their first runs, the index in `runs`
  /// of its first run, and a closing entry, the number of runs.
  ///
  /// What the lists held is replaced. The unnamed arguments have no effect; callers pass
  /// `1`, `nullptr` and `true, -1, -1, 1, false`.
  static void FindContours(cv::Mat& raster, char, std::vector<cv::Point_<int>>* points,
                           std::vector<int>* pointStarts, std::vector<cv::Vec<int, 4>>* hierarchy,
                           std::vector<int>*, std::vector<Run>* runs, std::vector<int>* runStarts,
                           bool, int, int, int, bool);

  /// Splits the points of FindContours into one list for each outline. `contours` is replaced.
  static void Convert(std::vector<cv::Point_<int>>& points, std::vector<int>& pointStarts,
                      std::vector<std::vector<cv::Point_<int>>>& contours);

  int ComponentCount;              ///< The number of components.
  std::vector<Run> ComponentRuns;  ///< The runs of all components, one component after the other.
  /// For each component, in the order of their first runs, the index in ComponentRuns of its first
  /// run; then a closing entry, the number of runs. The runs of one component stand by row, then by
  /// column.
  std::vector<int> ComponentStarts;
  std::vector<Run> FillRuns;  ///< All runs of the raster, by row, then by column.

 private:
  int mode_;
};

#endif  // VEM_RLC_H_
