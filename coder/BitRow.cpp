#include "coder/BitRow.h"

#include <emmintrin.h>

#include <algorithm>
#include <cstring>

namespace {

std::uint64_t NonZero16(const std::uint8_t* bytes) {
  const __m128i pixels = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
  const int zeros = _mm_movemask_epi8(_mm_cmpeq_epi8(pixels, _mm_setzero_si128()));
  return static_cast<std::uint64_t>(zeros ^ 0xffff);
}

std::uint64_t NonZero64(const std::uint8_t* bytes) {
  return NonZero16(bytes) | NonZero16(bytes + 16) << 16 | NonZero16(bytes + 32) << 32 |
         NonZero16(bytes + 48) << 48;
}

void ReadBytes(const std::uint8_t* pixels, int columns, std::uint64_t* words) {
  const int whole = columns / kWordBits * kWordBits;
  for (int column = 0; column < whole; column += kWordBits) *words++ = NonZero64(pixels + column);
  if (whole == columns) return;
  std::uint8_t rest[kWordBits] = {};
  std::memcpy(rest, pixels + whole, static_cast<std::size_t>(columns - whole));
  *words = NonZero64(rest);
}

// Wider pixels become bytes first, a word at a time.
template <typename T, typename IsForeground>
void ReadWide(const T* pixels, int columns, std::uint64_t* words, IsForeground isForeground) {
  for (int column = 0, count; column < columns; column += count) {
    std::uint8_t bytes[kWordBits] = {};
    count = std::min(kWordBits, columns - column);
    for (int i = 0; i < count; ++i) bytes[i] = isForeground(pixels[column + i]);
    *words++ = NonZero64(bytes);
  }
}

template <typename T>
void ReadNumbers(const cv::Mat& raster, int row, std::uint64_t* words) {
  ReadWide(raster.ptr<T>(row), raster.cols, words, [](T pixel) { return !(pixel == T(0)); });
}

}  // namespace

void ReadBits(const cv::Mat& raster, int row, std::uint64_t* words) {
  switch (raster.depth()) {
    case CV_8U:
    case CV_8S:
      return ReadBytes(raster.ptr<std::uint8_t>(row), raster.cols, words);
    case CV_16U:
    case CV_16S:
      return ReadNumbers<std::uint16_t>(raster, row, words);
    case CV_32S:
      return ReadNumbers<std::int32_t>(raster, row, words);
    case CV_32F:
      return ReadNumbers<float>(raster, row, words);
    case CV_64F:
      return ReadNumbers<double>(raster, row, words);
    default:  // Half floats: zero but for the sign.
      return ReadWide(raster.ptr<std::uint16_t>(row), raster.cols, words,
                      [](std::uint16_t pixel) { return (pixel & 0x7fff) != 0; });
  }
}
