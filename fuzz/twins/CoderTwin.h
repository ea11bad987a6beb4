#ifndef FUZZ_TWINS_CODER_TWIN_H_
#define FUZZ_TWINS_CODER_TWIN_H_

#include <cstddef>
#include <vector>

#include <opencv2/core.hpp>

#include "VemRLC.h"

/// Numbers by pixel, with a border of one pixel around.
class Grid {
 public:
  Grid(int width, int height)
      : width_(width), height_(height), values_(Size(width + 2) * Size(height + 2)) {}

  int Width() const { return width_; }
  int Height() const { return height_; }
  int& At(int x, int y) { return values_[Size(y + 1) * Size(width_ + 2) + Size(x + 1)]; }
  int At(int x, int y) const { return const_cast<Grid*>(this)->At(x, y); }
  bool Holds(int x, int y) const { return x >= -1 && x <= width_ && y >= -1 && y <= height_; }

 private:
  static std::size_t Size(int value) { return static_cast<std::size_t>(value); }

  int width_;
  int height_;
  std::vector<int> values_;
};

/// The pixels of an outline.
using PixelChain = std::vector<cv::Point>;

/// What the coder must give, in its three forms.
struct CodedRaster {
  std::vector<Run> runs;
  std::vector<std::vector<Run>> components;
  std::vector<PixelChain> outlines;
  std::vector<cv::Vec4i> hierarchy;
};

/// Codes pixels, those that are not 0, by loops, flooding and walks along the cracks between
/// pixels. As slow as it is plain.
CodedRaster CodePlainly(const Grid& pixels);

#endif  // FUZZ_TWINS_CODER_TWIN_H_
