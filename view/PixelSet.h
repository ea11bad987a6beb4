#ifndef VIEW_PIXEL_SET_H_
#define VIEW_PIXEL_SET_H_

#include <vector>

#include <opencv2/core.hpp>

#include "VemRLC.h"
#include "VemTuple.h"
#include "view/Canvas.h"

/// Those pixels of a picture that runs cover.
class PixelSet {
 public:
  explicit PixelSet(const cv::Size& picture) : picture_(picture) {}

  /// Adds runs, of which any part may lie beyond the picture. Where the arrays differ in length,
  /// the shortest counts; what is no number counts as 0.
  void Add(const VemVarArray& rows, const VemVarArray& firstColumns,
           const VemVarArray& lastColumns);

  /// Lays a colour over all pixels, each of them once.
  void Lay(Canvas& canvas, const Color& color, int part) const;

  /// Lays a colour over the outermost pixels: those no farther than `width` steps, level, upright
  /// or oblique, from a pixel of the picture that is not in the set.
  void LayBorder(Canvas& canvas, const Color& color, int width) const;

 private:
  cv::Size picture_;
  std::vector<Run> runs_;  // Inside the picture.
};

#endif  // VIEW_PIXEL_SET_H_
