#include "view/Canvas.h"

#include <algorithm>
#include <cstddef>
#include <type_traits>

namespace {

// How the 16 bits of a component are told in a channel.
std::uint16_t In(std::uint16_t value, const std::uint16_t*) { return value; }
float In(std::uint16_t value, const float*) { return static_cast<float>(value) / 65535; }
double In(std::uint16_t value, const double*) { return static_cast<double>(value) / 65535; }
unsigned char In(std::uint16_t value, const unsigned char*) {
  return static_cast<unsigned char>((value + 128) / 257);
}

std::uint16_t Out(std::uint16_t value) { return value; }
std::uint16_t Out(unsigned char value) { return static_cast<std::uint16_t>(value * 257); }
std::uint16_t Out(double value) {
  const double part = value > 0 ? std::min(value, 1.0) : 0.0;  // What is no number is 0.
  return static_cast<std::uint16_t>(part * 65535 + 0.5);
}

template <typename T>
T Mix(T below, T above, unsigned weight) {
  const unsigned sum = below * (255u - weight) + above * weight;
  return static_cast<T>((sum + 127) / 255);
}
double Mix(double below, double above, unsigned weight) {
  return weight == 255 ? above : below + (above - below) * weight / 255;
}
float Mix(float below, float above, unsigned weight) {
  return weight == 255 ? above : below + (above - below) * static_cast<float>(weight) / 255;
}

// The brightness of a colour, in parts of 1000.
std::uint16_t Grey(const Color& color) {
  const unsigned sum = 114u * color.blue + 587u * color.green + 299u * color.red;
  return static_cast<std::uint16_t>((sum + 500) / 1000);
}

// A colour as the channels of a picture have it.
template <typename T>
struct Samples {
  Samples(const Color& color, int channels, vem::channel_order order) {
    const T* const kind = nullptr;
    const bool swapped = order == vem::channel_order::rgb;
    channel[0] = In(channels == 1 ? Grey(color) : swapped ? color.red : color.blue, kind);
    channel[1] = In(color.green, kind);
    channel[2] = In(swapped ? color.blue : color.red, kind);
    channel[3] = In(std::uint16_t{65535}, kind);
  }

  T channel[4];
};

template <int Channels, typename T>
void LayPixels(T* pixels, const std::vector<unsigned char>& weights, const Samples<T>& samples) {
  for (const unsigned weight : weights) {
    if (weight != 0) {
      for (int c = 0; c < Channels; ++c) pixels[c] = Mix(pixels[c], samples.channel[c], weight);
    }
    pixels += Channels;
  }
}

// The number of channels is told to the compiler, which takes half of the time.
template <typename T>
void LayRow(T* pixels, int channels, const std::vector<unsigned char>& weights,
            const Samples<T>& samples) {
  if (channels == 1) return LayPixels<1>(pixels, weights, samples);
  if (channels == 3) return LayPixels<3>(pixels, weights, samples);
  LayPixels<4>(pixels, weights, samples);
}

template <typename T>
Color ColorAt(const T* pixel, int channels) {
  const std::uint16_t first = Out(pixel[0]);
  if (channels == 1) return {first, first, first};
  return {first, Out(pixel[1]), Out(pixel[2])};
}

template <typename T>
unsigned char OpacityAt(const T* pixel, int channels) {
  if (channels != 4) return 255;
  return static_cast<unsigned char>((Out(pixel[3]) + 128) / 257);
}

// Calls `visit` with a null pointer to the type of a matrix's channels.
template <typename Visit>
void WithDepth(const cv::Mat& mat, Visit visit) {
  switch (mat.depth()) {
    case CV_8U:
      return visit(static_cast<unsigned char*>(nullptr));
    case CV_16U:
      return visit(static_cast<std::uint16_t*>(nullptr));
    case CV_32F:
      return visit(static_cast<float*>(nullptr));
    case CV_64F:
      return visit(static_cast<double*>(nullptr));
    default:
      return;
  }
}

// Lays rows of coverage, all in one colour.
class ColorSink final : public RowSink {
 public:
  ColorSink(Canvas& canvas, const Color& color, int part)
      : canvas_(canvas), color_(color), part_(part) {}

  void Add(int row, int first, const std::vector<unsigned char>& weights) override {
    if (part_ == kOpaque) return canvas_.Lay(row, first, weights, color_);
    parts_.clear();
    for (const int weight : weights) {
      parts_.push_back(static_cast<unsigned char>((weight * part_ + 127) / 255));
    }
    canvas_.Lay(row, first, parts_, color_);
  }

 private:
  Canvas& canvas_;
  Color color_;
  int part_;
  std::vector<unsigned char> parts_;
};

std::uint16_t Component(long value) {
  return static_cast<std::uint16_t>(std::min(std::max(value, 0L), 255L) * 257);
}

}  // namespace

Color ColorOf(long blue, long green, long red) {
  return {Component(blue), Component(green), Component(red)};
}

Color ColorOf(const vem::draw_style& style) { return ColorOf(style.blue, style.green, style.red); }

bool Canvas::Takes(const cv::Mat& picture) {
  const int depth = picture.depth(), channels = picture.channels();
  return picture.dims == 2 && picture.data != nullptr && picture.rows > 0 && picture.cols > 0 &&
         (channels == 1 || channels == 3 || channels == 4) &&
         (depth == CV_8U || depth == CV_16U || depth == CV_32F || depth == CV_64F);
}

void Canvas::Lay(int row, int first, const std::vector<unsigned char>& weights,
                 const Color& color) {
  const int channels = picture_.channels();
  WithDepth(picture_, [&](auto* kind) {
    using T = std::remove_pointer_t<decltype(kind)>;
    T* const pixels = picture_.ptr<T>(row) + static_cast<std::ptrdiff_t>(first) * channels;
    LayRow(pixels, channels, weights, Samples<T>(color, channels, order_));
  });
}

void Canvas::Lay(Coverage& coverage, const Color& color, int part) {
  ColorSink sink(*this, color, part);
  coverage.HandOut(sink);
}

void Canvas::LayImage(const cv::Mat& image, std::int64_t x, std::int64_t y) {
  const std::int64_t firstRow = std::max<std::int64_t>(y, 0),
                     firstColumn = std::max<std::int64_t>(x, 0);
  const std::int64_t endRow = std::min<std::int64_t>(y + image.rows, picture_.rows);
  const std::int64_t endColumn = std::min<std::int64_t>(x + image.cols, picture_.cols);
  const int channels = image.channels();
  std::vector<unsigned char> weight(1);
  WithDepth(image, [&](auto* kind) {
    using T = std::remove_pointer_t<decltype(kind)>;
    for (std::int64_t row = firstRow; row < endRow; ++row) {
      const T* const pixels = image.ptr<T>(static_cast<int>(row - y));
      for (std::int64_t column = firstColumn; column < endColumn; ++column) {
        const T* const pixel = pixels + (column - x) * channels;
        weight[0] = OpacityAt(pixel, channels);
        Lay(static_cast<int>(row), static_cast<int>(column), weight, ColorAt(pixel, channels));
      }
    }
  });
}
