#ifndef CODER_BIT_ROW_H_
#define CODER_BIT_ROW_H_

#include <cstddef>
#include <cstdint>
#include <opencv2/core.hpp>

constexpr int kWordBits = 64;

/// The words that the bits of a row of `columns` pixels take.
inline std::size_t WordCount(int columns) {
  return (static_cast<std::size_t>(columns) + kWordBits - 1) / kWordBits;
}

/// Reads one row of a raster of one channel as bits: pixel 64 * i + k is bit k of `words[i]`, set
/// where the pixel is not zero. Bits beyond the row's end are 0.
void ReadBits(const cv::Mat& raster, int row, std::uint64_t* words);

#endif  // CODER_BIT_ROW_H_
