#ifndef VIEW_CANVAS_H_
#define VIEW_CANVAS_H_

#include <cstdint>
#include <vector>

#include <opencv2/core.hpp>

#include "vem/view.h"
#include "view/Coverage.h"

/// A colour of 16 bits a component.
struct Color {
  std::uint16_t blue;
  std::uint16_t green;
  std::uint16_t red;
};

/// From components of 0 to 255; what lies beyond counts as the nearest.
Color ColorOf(long blue, long green, long red);
Color ColorOf(const vem::draw_style& style);

/// Which part of a colour is laid over a picture, from 0 to 255.
constexpr int kOpaque = 255;
constexpr int kTint = 115;

/// A picture that can be drawn on, whatever its type.
class Canvas {
 public:
  /// Whether a picture can be drawn on.
  static bool Takes(const cv::Mat& picture);

  Canvas(cv::Mat& picture, vem::channel_order order) : picture_(picture), order_(order) {}

  cv::Size Size() const { return picture_.size(); }

  /// Lays a colour over the columns from `first` on, of which all must be in the picture, each with
  /// its weight from 0 to 255.
  void Lay(int row, int first, const std::vector<unsigned char>& weights, const Color& color);

  /// Lays what chains cover.
  void Lay(Coverage& coverage, const Color& color, int part);

  /// Lays an image, of a type that can be drawn on, with its upper left pixel at a place. Where it
  /// has four channels, the fourth is its opacity.
  void LayImage(const cv::Mat& image, std::int64_t x, std::int64_t y);

 private:
  cv::Mat& picture_;
  vem::channel_order order_;
};

#endif  // VIEW_CANVAS_H_
