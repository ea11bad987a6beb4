#ifndef TESTS_SUPPORT_IMAGE_BYTES_H_
#define TESTS_SUPPORT_IMAGE_BYTES_H_

#include <cstddef>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

#include "VemImage.h"

// Images as the bytes of their pixels.

using Bytes = std::vector<unsigned char>;

struct TypeCase {
  const char* name;
  VemImageType type;
  int size;  ///< Of one channel, in bytes.
};

inline const TypeCase kTypeCases[] = {
    {"8U", VemImageType8U, 1},   {"8S", VemImageType8S, 1},   {"16U", VemImageType16U, 2},
    {"16S", VemImageType16S, 2}, {"32S", VemImageType32S, 4}, {"32F", VemImageType32F, 4},
    {"64F", VemImageType64F, 8},
};

inline VemImageType TypeOf(int value) { return static_cast<VemImageType>(value); }

/// Bytes that differ from their neighbours, from row to row too.
inline Bytes Pattern(int size, int seed = 0) {
  Bytes bytes(static_cast<std::size_t>(size));
  for (int i = 0; i < size; ++i) {
    bytes[static_cast<std::size_t>(i)] = static_cast<unsigned char>(seed + 37 * i + i / 7);
  }
  return bytes;
}

/// The rows that start at `first` and follow each other by `step`, without what lies between them.
inline Bytes Rows(const Bytes& buffer, int first, int step, int height, int rowSize) {
  Bytes rows;
  for (int row = 0; row < height; ++row) {
    for (int i = 0; i < rowSize; ++i) {
      rows.push_back(buffer.at(static_cast<std::size_t>(first + row * step + i)));
    }
  }
  return rows;
}

/// The bytes of an image, its rows taken to be packed.
inline Bytes PackedBytes(VemImage& image, int rowSize) {
  const unsigned char* data = image.ImageData();
  if (data == nullptr) return Bytes();
  return Bytes(data, data + static_cast<std::ptrdiff_t>(rowSize) * image.Height());
}

inline void ExpectEmpty(VemImage& image) {
  EXPECT_EQ(image.Width(), 0);
  EXPECT_EQ(image.Height(), 0);
  EXPECT_EQ(image.Step(), 0);
  EXPECT_EQ(image.ImageData(), nullptr);
  EXPECT_EQ(image.Channels(), 1);
  EXPECT_EQ(image.BitDepth(), VemImageType8U);
  EXPECT_EQ(image.Mat().type(), 0);
  EXPECT_EQ(image.Mat().dims, 0);
  EXPECT_EQ(image.Mat().u, nullptr);
}

inline void ExpectImage(VemImage& image, int height, int width, int channels, const TypeCase& type,
                        const Bytes& expected) {
  const int rowSize = width * channels * type.size;
  ASSERT_EQ(image.Height(), height);
  ASSERT_EQ(image.Width(), width);
  ASSERT_EQ(image.Channels(), channels);
  ASSERT_EQ(image.BitDepth(), type.type);
  ASSERT_EQ(image.Step(), rowSize);
  ASSERT_EQ(PackedBytes(image, rowSize), expected);
}

/// A 2 by 2 image of one byte per pixel: 1, 2 above 3, 4.
inline VemImage SmallImage() {
  unsigned char pixels[] = {1, 2, 3, 4};
  return VemImage(pixels, 2, 2, 2, 1, VemImageType8U);
}

inline void ExpectSmallImage(VemImage& image) {
  ExpectImage(image, 2, 2, 1, kTypeCases[0], {1, 2, 3, 4});
}

inline int References(VemImage& image) {
  return image.Mat().u == nullptr ? 0 : image.Mat().u->refcount;
}

#endif  // TESTS_SUPPORT_IMAGE_BYTES_H_
