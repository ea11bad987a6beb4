#ifndef EXAMPLES_SCENE_H_
#define EXAMPLES_SCENE_H_

#include <vector>

#include <opencv2/core.hpp>

#include "VemImage.h"
#include "VemROI.h"
#include "VemRegion.h"

// What the mask programs share: a picture, one region of interest of every shape on it, and how
// they are shown.

/// Columns `first` to `end`, not included, of a row that lie on a picture.
struct Span {
  int row;
  int first;
  int end;
};

struct Shape {
  const char* name;
  cv::Scalar color;  ///< Blue, green, red.
  cv::Point label;   ///< Where the name stands.
  VemROI roi;
};

/// The picture that a program's first argument names, in grey, or without one a drawn picture.
/// Empty when the file can't be read; what is wrong has been printed then.
VemImage GetPicture(int argc, char** argv);

/// One region of interest of every shape, placed on a picture of any size.
std::vector<Shape> PlaceShapes(const VemImage& image);

/// The region's runs as far as they lie on the picture: a region knows its canvas, but no picture.
std::vector<Span> SpansOf(VemRegion& region, const VemImage& image);

/// A colored copy of a picture to show results on, enlarged by a whole number if it is small.
class Show {
 public:
  explicit Show(const VemImage& image);

  /// Tints the pixels of a shape. Single pixels would be lost in the picture: where a shape has no
  /// others, each gets a dot.
  void Tint(const std::vector<Span>& spans, const cv::Scalar& color);
  /// Draws an outline as a line through the centres of its pixels, with a dot at each vertex.
  void Outline(const std::vector<cv::Point>& vertices, const cv::Scalar& color);
  /// Writes a shape's name beside it.
  void Name(const Shape& shape);

  const cv::Mat& Canvas() const { return canvas_; }

 private:
  cv::Point Center(const cv::Point& pixel) const;
  void Dot(const cv::Point& pixel, int radius, const cv::Scalar& color);

  cv::Mat canvas_;
  int scale_;
};

/// Writes a picture; false, with a message, when it can't be written.
bool WritePicture(const char* path, const cv::Mat& picture);

#endif  // EXAMPLES_SCENE_H_
