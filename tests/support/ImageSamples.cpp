#include "support/ImageSamples.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>

#include <opencv2/imgcodecs.hpp>

namespace {

using Bytes = std::vector<unsigned char>;

void AppendBigEndian(Bytes& bytes, std::uint32_t value) {
  for (int shift = 24; shift >= 0; shift -= 8) {
    bytes.push_back(static_cast<unsigned char>(value >> shift));
  }
}

std::uint32_t Crc(const Bytes& bytes, std::size_t first, std::size_t end) {
  std::uint32_t crc = 0xFFFFFFFF;
  for (std::size_t i = first; i < end; ++i) {
    crc ^= bytes[i];
    for (int bit = 0; bit < 8; ++bit) crc = crc >> 1 ^ ((crc & 1) != 0 ? 0xEDB88320 : 0);
  }
  return ~crc;
}

Bytes Chunk(const std::string& name, const Bytes& content) {
  Bytes chunk;
  AppendBigEndian(chunk, static_cast<std::uint32_t>(content.size()));
  chunk.insert(chunk.end(), name.begin(), name.end());
  chunk.insert(chunk.end(), content.begin(), content.end());
  AppendBigEndian(chunk, Crc(chunk, 4, chunk.size()));
  return chunk;
}

// A PNG opens with 8 bytes of signature and the 25 of its header.
constexpr std::ptrdiff_t kPngSignature = 8;
constexpr std::ptrdiff_t kPngBody = 33;

Bytes Encode(const std::string& extension, const cv::Mat& image) {
  Bytes bytes;
  cv::imencode(extension, image, bytes);
  return bytes;
}

Bytes HugePng() {
  Bytes png = Encode(".png", Texture(5, 7, CV_8UC1));
  Bytes header;
  AppendBigEndian(header, 0x7FFFFFFF);
  AppendBigEndian(header, 0x7FFFFFFF);
  header.insert(header.end(), png.begin() + 24, png.begin() + 29);
  const Bytes chunk = Chunk("IHDR", header);
  std::copy(chunk.begin(), chunk.end(), png.begin() + kPngSignature);
  return png;
}

Bytes HugeBmp(std::uint32_t width, std::uint32_t height) {
  Bytes bmp = Encode(".bmp", Texture(5, 7, CV_8UC3));
  for (std::size_t i = 0; i < 4; ++i) {
    bmp[18 + i] = static_cast<unsigned char>(width >> 8 * i);
    bmp[22 + i] = static_cast<unsigned char>(height >> 8 * i);
  }
  return bmp;
}

// The largest size that a JPEG's frame header has room for.
Bytes HugeJpeg() {
  Bytes jpeg = Encode(".jpg", Texture(5, 7, CV_8UC3));
  for (std::size_t i = 0; i + 9 < jpeg.size(); ++i) {
    if (jpeg[i] != 0xFF || jpeg[i + 1] != 0xC0) continue;
    for (std::size_t k = 5; k < 9; ++k) jpeg[i + k] = 0xFF;
    return jpeg;
  }
  return {};
}

Bytes Text(const std::string& text) { return Bytes(text.begin(), text.end()); }

void AddBroken(const ImageFile& sound, std::mt19937& random, std::vector<ImageFile>& broken) {
  const Bytes& bytes = sound.bytes;
  const bool isJpeg = bytes[0] == 0xFF && bytes[1] == 0xD8;
  for (const std::size_t part : {16u, 8u, 4u, 2u}) {
    if (isJpeg && part < 8) continue;  // Its decoder makes up pixels that are cut off.
    const auto size = static_cast<std::ptrdiff_t>(bytes.size() / part);
    broken.push_back(
        {"part_" + std::to_string(part) + '_' + sound.name, {bytes.begin(), bytes.begin() + size}});
  }
  Bytes noise(bytes.begin(), bytes.begin() + 8);
  for (int i = 0; i < 300; ++i) noise.push_back(static_cast<unsigned char>(random()));
  broken.push_back({"noise_" + sound.name, noise});
}

}  // namespace

cv::Mat Texture(int height, int width, int type) {
  cv::Mat image(height, width, type);
  const int channels = image.channels();
  const double scale = image.depth() == CV_16U ? 257 : image.depth() == CV_32F ? 0.01 : 1;
  cv::Mat wave(height, width * channels, CV_64F);
  for (int row = 0; row < height; ++row) {
    for (int column = 0; column < wave.cols; ++column) {
      const int channel = column % channels;
      const int value = 5 * row * (channel + 1) + 3 * (column / channels) + row * column % 17;
      wave.at<double>(row, column) = scale * ((value + 60 * channel) % 256);
    }
  }
  wave.reshape(channels).convertTo(image, image.depth());
  return image;
}

VemImage ImageOf(const cv::Mat& pixels) {
  VemImage image;
  image.Mat() = pixels;
  return image;
}

bool SamePixels(const cv::Mat& a, const cv::Mat& b) {
  return a.type() == b.type() && a.dims == b.dims && a.size() == b.size() &&
         (a.empty() || cv::norm(a, b, cv::NORM_INF) == 0);
}

cv::Mat WithoutAlpha(const cv::Mat& pixels) {
  if (pixels.channels() <= 3) return pixels;
  std::vector<cv::Mat> channels;
  cv::split(pixels, channels);
  channels.resize(3);
  cv::Mat color;
  cv::merge(channels, color);
  return color;
}

std::vector<unsigned char> TurnedPng(const cv::Mat& image) {
  const Bytes orientation = {'M', 'M', 0, 42, 0, 0, 0, 8,  // big-endian, first directory at 8
                             0,   1,                       // one entry
                             1,   18,  0, 3,               // orientation, a short
                             0,   0,   0, 1,  0, 6, 0, 0,  // one of them: a quarter turn
                             0,   0,   0, 0};
  Bytes png = Encode(".png", image);
  const Bytes chunk = Chunk("eXIf", orientation);
  png.insert(png.begin() + kPngBody, chunk.begin(), chunk.end());
  return png;
}

std::vector<ImageFile> SoundFiles() {
  const cv::Mat color = Texture(40, 48, CV_8UC3);
  return {{"grey.png", Encode(".png", Texture(9, 13, CV_8UC1))},
          {"color.png", Encode(".png", color)},
          {"alpha.png", Encode(".png", Texture(9, 13, CV_8UC4))},
          {"deep.png", Encode(".png", Texture(9, 13, CV_16UC1))},
          {"deep_alpha.png", Encode(".png", Texture(9, 13, CV_16UC4))},
          {"turned.png", TurnedPng(Texture(9, 13, CV_8UC4))},
          {"color.jpg", Encode(".jpg", color)},
          {"grey.jpg", Encode(".jpg", Texture(40, 48, CV_8UC1))},
          {"color.bmp", Encode(".bmp", color)},
          {"color.tif", Encode(".tif", color)},
          {"float.tif", Encode(".tif", Texture(9, 13, CV_32FC1))},
          {"alpha.tif", Encode(".tif", Texture(9, 13, CV_8UC4))},
          {"color.ppm", Encode(".ppm", color)},
          {"deep.pgm", Encode(".pgm", Texture(9, 13, CV_16UC1))}};
}

std::vector<ImageFile> BrokenFiles() {
  std::mt19937 random(417);
  std::vector<ImageFile> broken = {{"empty", {}},
                                   {"text", Text("no image at all")},
                                   {"huge.png", HugePng()},
                                   {"huge.jpg", HugeJpeg()},
                                   {"huge.bmp", HugeBmp(1U << 30, 1U << 30)},
                                   {"large.bmp", HugeBmp(30000, 30000)},
                                   {"upside_down.bmp", HugeBmp(7, 0x80000000)},
                                   {"huge.ppm", Text("P6 1000000 1000000 255 x")},
                                   {"negative.pgm", Text("P5 -1 5 255 x")},
                                   {"nothing.pbm", Text("P4 0 0 x")}};
  for (const ImageFile& sound : SoundFiles()) AddBroken(sound, random, broken);
  return broken;
}
