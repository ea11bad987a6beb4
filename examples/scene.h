#ifndef EXAMPLES_SCENE_H_
#define EXAMPLES_SCENE_H_

#include <string>
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

/// A picture as its file has it, and what is measured on it.
struct Picture {
  VemImage image;      ///< In the file's size, channels and depth.
  VemImage grey;       ///< One channel, of 8 or 16 bits or of 32-bit floats.
  double black = 0;    ///< What a grey pixel holds at least.
  double white = 255;  ///< What a grey pixel holds at most.
};

/// The picture that a program's first argument names, or without one a drawn picture. Prints what
/// is taken of it, or what is wrong; empty when the file can't be read.
Picture GetPicture(int argc, char** argv);

/// One region of interest of every shape, placed on a picture of any size. Those that do not lie on
/// it are left out, and named with the reason.
std::vector<Shape> PlaceShapes(const Picture& picture);

/// The region's runs as far as they lie on the picture: a region knows its canvas, but no picture.
std::vector<Span> SpansOf(VemRegion& region, const VemImage& image);

/// A colored copy of a picture to show results on, of 8 or 16 bits. A picture keeps its size; one
/// on which nothing could be told apart is enlarged by a whole number, which is printed.
class Show {
 public:
  explicit Show(const Picture& picture);

  /// The same picture once more, as it is by now.
  Show Copy() const;

  /// Tints the pixels of a shape. Single pixels would be lost in the picture: where a shape has no
  /// others, each gets a dot.
  void Tint(const std::vector<Span>& spans, const cv::Scalar& color);
  /// Draws an outline as a line through the centres of its pixels, with a dot at each vertex.
  void Outline(const std::vector<cv::Point>& vertices, const cv::Scalar& color);
  /// Draws a dashed line between two pixels.
  void Dashes(const cv::Point& from, const cv::Point& to, const cv::Scalar& color);
  /// Marks a pixel by a cross.
  void Cross(const cv::Point& pixel, const cv::Scalar& color);
  /// Writes a shape's name beside it.
  void Name(const Shape& shape);
  /// Writes a remark in small letters below a pixel.
  void Remark(const cv::Point& pixel, const std::string& text, const cv::Scalar& color);

  const cv::Mat& Canvas() const { return canvas_; }

 private:
  cv::Point Center(const cv::Point& pixel) const;
  void Dot(const cv::Point& pixel, int radius, const cv::Scalar& color);
  void Write(const std::string& text, const cv::Point& place, double size, const cv::Scalar& color);
  cv::Scalar Shade(const cv::Scalar& color) const { return color * light_; }

  cv::Mat canvas_;
  int scale_;
  double light_;  // What 1 of 255 is in the canvas's depth.
};

/// Where a point lies; false for any other shape.
bool PlaceOf(VemROI roi, cv::Point* pixel);

/// Writes a picture; false, with a message, when it can't be written.
bool WritePicture(const char* path, const cv::Mat& picture);

#endif  // EXAMPLES_SCENE_H_
