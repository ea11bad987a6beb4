#include "VemImage.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <memory>
#include <new>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

#include "support/ImageBytes.h"
#include "support/ProbeAllocator.h"

namespace {

// --- The buffer constructor ---

struct StepCase {
  const char* name;
  int extra;      // Channels that a step is wider than a row.
  bool zero;      // The step is told as 0.
  bool backward;  // The step is negative, and the data points to the row that lies last.
};

const StepCase kStepCases[] = {
    {"Packed", 0, false, false},
    {"Zero", 0, true, false},
    {"PaddedByOneChannel", 1, false, false},
    {"PaddedByFourteen", 14, false, false},
    {"NarrowerByOneChannel", -1, false, false},
    {"HalfARow", -2, false, false},
    {"Negative", 0, false, true},
    {"NegativeAndPadded", 3, false, true},
    {"NegativeAndNarrow", -1, false, true},
};

void ConstructFromBuffer(const TypeCase& type, int channels, int height, int width,
                         const StepCase& step) {
  const int rowSize = width * channels * type.size;
  const int distance = rowSize + step.extra * type.size;
  const int size = distance * (height - 1) + rowSize;
  Bytes buffer = Pattern(size);
  const int first = step.backward ? distance * (height - 1) : 0;
  const int signedDistance = step.backward ? -distance : distance;
  const Bytes expected = Rows(buffer, first, signedDistance, height, rowSize);

  VemImage image(buffer.data() + first, step.zero ? 0 : signedDistance, height, width, channels,
                 type.type);
  std::fill(buffer.begin(), buffer.end(), static_cast<unsigned char>(0));
  ExpectImage(image, height, width, channels, type, expected);
}

TEST(VemImageBuffer, ConstructorCopiesEveryTypeChannelCountAndStep) {
  for (const TypeCase& type : kTypeCases) {
    SCOPED_TRACE(type.name);
    for (const int channels : {1, 2, 3, 4, 5, 512}) {
      SCOPED_TRACE(channels);
      for (const StepCase& step : kStepCases) {
        SCOPED_TRACE(step.name);
        ConstructFromBuffer(type, channels, 2, 4, step);
        ConstructFromBuffer(type, channels, 5, 4, step);
        ConstructFromBuffer(type, channels, 3, 7, step);
      }
    }
  }
}

TEST(VemImageBuffer, ConstructorDropsPadding) {
  Bytes buffer(16 * 10, 255);
  for (std::size_t i = 0; i < buffer.size(); ++i) {
    if (i % 16 < 10) buffer[i] = static_cast<unsigned char>(i / 16 * 10 + i % 16);
  }
  VemImage image(buffer.data(), 16, 10, 10, 1, VemImageType8U);
  Bytes expected;
  for (int i = 0; i < 100; ++i) expected.push_back(static_cast<unsigned char>(i));
  ExpectImage(image, 10, 10, 1, kTypeCases[0], expected);
}

TEST(VemImageBuffer, ConstructorRepeatsPixelsOfNarrowRows) {
  unsigned char buffer[] = {1, 2, 3, 4, 5};
  VemImage image(buffer, 1, 3, 3, 1, VemImageType8U);
  ExpectImage(image, 3, 3, 1, kTypeCases[0], {1, 2, 3, 2, 3, 4, 3, 4, 5});
}

TEST(VemImageBuffer, ConstructorTakesAnyStepForASingleRow) {
  for (const TypeCase& type : kTypeCases) {
    SCOPED_TRACE(type.name);
    for (const int step : {0, 1, 3, 7, 30, 1000000, -1, -8, INT_MAX, INT_MIN}) {
      SCOPED_TRACE(step);
      Bytes buffer = Pattern(15 * type.size);
      VemImage image(buffer.data(), step, 1, 5, 3, type.type);
      ExpectImage(image, 1, 5, 3, type, buffer);
    }
  }
}

TEST(VemImageBuffer, ConstructorKeepsNothingOfTheBuffer) {
  auto buffer = std::make_unique<Bytes>(Pattern(12));
  const Bytes expected = *buffer;
  VemImage image(buffer->data(), 6, 2, 2, 3, VemImageType8U);
  EXPECT_NE(image.ImageData(), buffer->data());
  buffer.reset();
  ExpectImage(image, 2, 2, 3, kTypeCases[0], expected);
}

TEST(VemImageBuffer, ConstructorLeavesTheBufferAlone) {
  Bytes buffer = Pattern(12);
  const Bytes before = buffer;
  VemImage image(buffer.data(), 6, 2, 2, 3, VemImageType8U);
  std::fill(image.ImageData(), image.ImageData() + 12, static_cast<unsigned char>(0));
  EXPECT_EQ(buffer, before);
}

struct BufferCase {
  const char* name;
  bool data;  // Whether there is a buffer; it has 64 bytes.
  int step;
  int height;
  int width;
  int channels;
  int type;
};

VemImage Construct(const BufferCase& c, Bytes& buffer) {
  return VemImage(c.data ? buffer.data() : nullptr, c.step, c.height, c.width, c.channels,
                  TypeOf(c.type));
}

const BufferCase kEmptyCases[] = {
    {"Type7", true, 2, 2, 2, 1, 7},
    {"Type8", true, 2, 2, 2, 1, 8},
    {"TypeMinus1", true, 2, 2, 2, 1, -1},
    {"TypeLargest", true, 2, 2, 2, 1, INT_MAX},
    {"TypeSmallest", true, 2, 2, 2, 1, INT_MIN},
    {"UnknownTypeWithoutData", false, 2, 2, 2, 1, 7},
    {"UnknownTypeNegativeSize", true, 2, -2, 2, 1, 7},
    {"UnknownTypeTwoChannels", true, 4, 2, 2, 2, -1},
    {"NoRows", true, 16, 0, 4, 1, VemImageType32F},
    {"NoColumns", true, 16, 4, 0, 3, VemImageType64F},
    {"NoRowsNoColumns", true, 16, 0, 0, 2, VemImageType16S},
    {"NoRowsStepZero", true, 0, 0, 4, 1, VemImageType32S},
    {"NoColumnsStepZero", true, 0, 4, 0, 4, VemImageType8S},
    {"NoRowsNarrowStep", true, 4, 0, 4, 1, VemImageType32F},
    {"NoRowsNegativeStep", true, -16, 0, 4, 1, VemImageType32F},
    {"NoRowsNegativeWidth", true, 16, 0, -4, 1, VemImageType32F},
    {"NoColumnsNegativeHeight", true, 16, -4, 0, 1, VemImageType32F},
    {"NoColumnsNegativeHeightStepZero", true, 0, -4, 0, 1, VemImageType32F},
    {"NoColumnsOneRowAnyStep", true, 3, 1, 0, 1, VemImageType32F},
    {"NoRowsWithoutData", false, 16, 0, 4, 1, VemImageType32F},
    {"NoColumnsWithoutData", false, 0, 4, 0, 3, VemImageType16U},
    {"NoColumnsNegativeHeightWithoutData", false, 0, -4, 0, 3, VemImageType16U},
};

TEST(VemImageBuffer, ConstructorGivesTheEmptyImage) {
  for (const BufferCase& c : kEmptyCases) {
    SCOPED_TRACE(c.name);
    Bytes buffer = Pattern(64);
    VemImage image = Construct(c, buffer);
    ExpectEmpty(image);
  }
}

const BufferCase kRaisingCases[] = {
    {"Step30For32F", true, 30, 2, 7, 1, VemImageType32F},
    {"Step30For32S", true, 30, 2, 7, 1, VemImageType32S},
    {"Step7For16U", true, 7, 2, 3, 1, VemImageType16U},
    {"Step7For16S", true, 7, 2, 3, 1, VemImageType16S},
    {"Step12For64F", true, 12, 2, 1, 1, VemImageType64F},
    {"NegativeStepNoMultiple", true, -6, 2, 1, 1, VemImageType32F},
    {"NarrowStepNoMultiple", true, 3, 2, 2, 1, VemImageType32F},
    {"StepNoMultipleNoRows", true, 30, 0, 7, 1, VemImageType32F},
    {"NoData", false, 2, 2, 2, 1, VemImageType8U},
    {"NoDataStepZero", false, 0, 2, 2, 3, VemImageType64F},
    {"NoDataOneRow", false, 2, 1, 2, 1, VemImageType8U},
    {"NoDataNegativeSizes", false, 2, -2, -2, 1, VemImageType8U},
    {"NegativeHeight", true, 2, -2, 2, 1, VemImageType8U},
    {"NegativeHeightStepZero", true, 0, -2, 2, 1, VemImageType8U},
    {"NegativeWidth", true, 2, 2, -2, 1, VemImageType8U},
    {"NegativeWidthStepZero", true, 0, 2, -2, 3, VemImageType16U},
    {"NegativeWidthOneRow", true, 2, 1, -2, 1, VemImageType8U},
    {"NegativeHeightAndWidth", true, 2, -2, -2, 1, VemImageType8U},
    {"SmallestHeightAndWidth", true, 0, INT_MIN, INT_MIN, 1, VemImageType8U},
    {"AsManyBytesAsNoIntegerCounts", true, 0, 1 << 30, 1 << 30, 2, VemImageType64F},
};

TEST(VemImageBuffer, ConstructorLetsOpenCVRaise) {
  for (const BufferCase& c : kRaisingCases) {
    SCOPED_TRACE(c.name);
    Bytes buffer = Pattern(64);
    EXPECT_THROW(Construct(c, buffer), cv::Exception);
  }
}

TEST(VemImageBuffer, ConstructorLetsFailedAllocationsPass) {
  unsigned char pixels[] = {1, 2, 3, 4};
  {
    const ProbeAllocator probe(ProbeAllocator::kOpenCV);
    EXPECT_THROW(VemImage(pixels, 2, 2, 2, 1, VemImageType8U), cv::Exception);
  }
  const ProbeAllocator probe(ProbeAllocator::kMemory);
  EXPECT_THROW(VemImage(pixels, 2, 2, 2, 1, VemImageType8U), std::bad_alloc);
}

// --- CreateImage ---

TEST(VemImageBuffer, CreateImageCopiesEveryType) {
  for (const TypeCase& type : kTypeCases) {
    SCOPED_TRACE(type.name);
    for (const int channels : {1, 3}) {
      SCOPED_TRACE(channels);
      for (const int height : {1, 2, 5}) {
        const int rowSize = 7 * channels * type.size;
        Bytes buffer = Pattern(height * rowSize);
        const Bytes expected = buffer;
        VemImage image = SmallImage();
        EXPECT_TRUE(image.CreateImage(buffer.data(), rowSize, height, 7, channels, type.type));
        std::fill(buffer.begin(), buffer.end(), static_cast<unsigned char>(0));
        ExpectImage(image, height, 7, channels, type, expected);
      }
    }
  }
}

TEST(VemImageBuffer, CreateImageTakesNoStepButThePackedOne) {
  for (const TypeCase& type : kTypeCases) {
    SCOPED_TRACE(type.name);
    for (const int channels : {1, 3}) {
      for (const int height : {1, 2}) {
        const int rowSize = 3 * channels * type.size;
        for (const int step :
             {0, rowSize - type.size, rowSize - 1, rowSize + 1, rowSize + type.size, -rowSize}) {
          SCOPED_TRACE(step);
          Bytes buffer = Pattern(4 * rowSize);
          VemImage image = SmallImage();
          EXPECT_FALSE(
              image.CreateImage(buffer.data() + rowSize, step, height, 3, channels, type.type));
          ExpectSmallImage(image);
        }
      }
    }
  }
}

const BufferCase kRefusedCases[] = {
    {"NegativeHeight", true, 2, -2, 2, 1, VemImageType8U},
    {"NegativeWidth", true, -2, 2, -2, 1, VemImageType8U},
    {"NegativeHeightAndWidth", true, -2, -2, -2, 1, VemImageType8U},
    {"NegativeHeightNoColumns", true, 0, -2, 0, 1, VemImageType8U},
    {"NegativeWidthNoRows", true, -2, 0, -2, 1, VemImageType8U},
    {"NegativeHeightUnknownType", true, 2, -2, 2, 1, 7},
    {"NegativeWidthUnknownType", true, -2, 2, -2, 1, -1},
    {"NegativeHeightWithoutData", false, 2, -2, 2, 1, VemImageType8U},
    {"TwoChannels", true, 4, 2, 2, 2, VemImageType8U},
    {"FourChannels", true, 8, 2, 2, 4, VemImageType8U},
    {"FiveChannels", true, 10, 2, 2, 5, VemImageType8U},
    {"ManyChannels", true, 512, 1, 1, 512, VemImageType8U},
    {"NoChannels", true, 0, 2, 2, 0, VemImageType8U},
    {"MinusOneChannel", true, -2, 2, 2, -1, VemImageType8U},
    {"MinusThreeChannels", true, -6, 2, 2, -3, VemImageType8U},
    {"TwoChannelsUnknownType", true, 4, 2, 2, 2, 7},
    {"TwoChannelsWithoutData", false, 4, 2, 2, 2, VemImageType8U},
    {"TwoChannelsNoRows", true, 4, 0, 2, 2, VemImageType8U},
    {"PaddedStep", true, 16, 4, 10, 1, VemImageType8U},
    {"NarrowStep", true, 1, 2, 2, 1, VemImageType8U},
    {"StepZero", true, 0, 2, 2, 1, VemImageType8U},
    {"NegativeStep", true, -2, 1, 2, 1, VemImageType8U},
    {"StepNoMultiple", true, 30, 2, 7, 1, VemImageType32F},
    {"PaddedSingleRow", true, 3, 1, 2, 1, VemImageType8U},
    {"StepZeroSingleRow", true, 0, 1, 2, 1, VemImageType8U},
    {"WrongStepWithoutData", false, 3, 2, 2, 1, VemImageType8U},
    {"WrongStepNoRows", true, 0, 0, 2, 1, VemImageType8U},
    {"WrongStepNoColumns", true, 1, 2, 0, 1, VemImageType8U},
};

const BufferCase kIgnoredCases[] = {
    {"Type7", true, 2, 2, 2, 1, 7},
    {"Type8", true, 2, 2, 2, 1, 8},
    {"TypeMinus1", true, 2, 2, 2, 1, -1},
    {"TypeLargest", true, 2, 2, 2, 1, INT_MAX},
    {"TypeSmallest", true, 2, 2, 2, 1, INT_MIN},
    {"ThreeChannels", true, 6, 2, 2, 3, 7},
    {"WrongStep", true, 3, 2, 2, 1, 7},
    {"WithoutData", false, 2, 2, 2, 1, 7},
    {"NoRows", true, 2, 0, 2, 1, 7},
    {"NoColumns", true, 0, 2, 0, 1, -1},
};

const BufferCase kEmptyingCases[] = {
    {"NoRows", true, 12, 0, 3, 1, VemImageType32F},
    {"NoColumns", true, 0, 3, 0, 3, VemImageType64F},
    {"NoRowsNoColumns", true, 0, 0, 0, 3, VemImageType16S},
    {"NoRowsWithoutData", false, 9, 0, 3, 3, VemImageType8S},
    {"NoColumnsWithoutData", false, 0, 3, 0, 1, VemImageType16U},
    // A row's size is taken in 32 bits: these wrap.
    {"RowOf4GiB", true, 0, 0, 1 << 29, 1, VemImageType64F},
    {"RowOf4GiBAnd8", true, 8, 0, (1 << 29) + 1, 1, VemImageType64F},
    {"RowOf2GiB", true, INT_MIN, 0, 1 << 30, 1, VemImageType16U},
    {"RowOf3GiB", true, -(1 << 30), 0, 1 << 30, 3, VemImageType8U},
};

bool Create(VemImage& image, const BufferCase& c, Bytes& buffer) {
  return image.CreateImage(c.data ? buffer.data() : nullptr, c.step, c.height, c.width, c.channels,
                           TypeOf(c.type));
}

TEST(VemImageBuffer, CreateImageRefuses) {
  for (const BufferCase& c : kRefusedCases) {
    SCOPED_TRACE(c.name);
    Bytes buffer = Pattern(512);
    VemImage image = SmallImage();
    const unsigned char* data = image.ImageData();
    EXPECT_FALSE(Create(image, c, buffer));
    EXPECT_EQ(image.ImageData(), data);
    ExpectSmallImage(image);
  }
}

TEST(VemImageBuffer, CreateImageAcceptsAndIgnoresUnknownTypes) {
  for (const BufferCase& c : kIgnoredCases) {
    SCOPED_TRACE(c.name);
    Bytes buffer = Pattern(64);
    VemImage image = SmallImage();
    const unsigned char* data = image.ImageData();
    EXPECT_TRUE(Create(image, c, buffer));
    EXPECT_EQ(image.ImageData(), data);
    ExpectSmallImage(image);
  }
}

TEST(VemImageBuffer, CreateImageOfNoAreaEmpties) {
  for (const BufferCase& c : kEmptyingCases) {
    SCOPED_TRACE(c.name);
    Bytes buffer = Pattern(64);
    VemImage image = SmallImage();
    VemImage sharing = image;
    EXPECT_TRUE(Create(image, c, buffer));
    ExpectEmpty(image);
    ExpectSmallImage(sharing);
  }
}

TEST(VemImageBuffer, CreateImageRaisesWithoutData) {
  for (const BufferCase& c : {BufferCase{"Rows", false, 2, 2, 2, 1, VemImageType8U},
                              BufferCase{"SingleRow", false, 24, 1, 1, 3, VemImageType64F}}) {
    SCOPED_TRACE(c.name);
    Bytes buffer;
    VemImage image = SmallImage();
    EXPECT_THROW(Create(image, c, buffer), cv::Exception);
    ExpectSmallImage(image);
  }
}

TEST(VemImageBuffer, CreateImageKeepsTheOldImageWhenItsCopyFails) {
  unsigned char pixels[] = {5, 6, 7, 8};
  VemImage image = SmallImage();
  {
    const ProbeAllocator probe(ProbeAllocator::kOpenCV);
    EXPECT_THROW(image.CreateImage(pixels, 2, 2, 2, 1, VemImageType8U), cv::Exception);
  }
  ExpectSmallImage(image);
  {
    const ProbeAllocator probe(ProbeAllocator::kMemory);
    EXPECT_THROW(image.CreateImage(pixels, 2, 2, 2, 1, VemImageType8U), std::bad_alloc);
  }
  ExpectSmallImage(image);
}

TEST(VemImageBuffer, CreateImageFillsAnEmptyImage) {
  unsigned char pixels[] = {5, 6, 7, 8};
  VemImage image;
  EXPECT_TRUE(image.CreateImage(pixels, 2, 2, 2, 1, VemImageType8U));
  ExpectImage(image, 2, 2, 1, kTypeCases[0], {5, 6, 7, 8});
}

TEST(VemImageBuffer, CreateImageNeverReusesStorage) {
  unsigned char pixels[] = {5, 6, 7, 8};
  VemImage image = SmallImage();
  const unsigned char* old = image.ImageData();
  EXPECT_TRUE(image.CreateImage(pixels, 2, 2, 2, 1, VemImageType8U));
  EXPECT_NE(image.ImageData(), old);
  ExpectImage(image, 2, 2, 1, kTypeCases[0], {5, 6, 7, 8});
}

TEST(VemImageBuffer, CreateImageLeavesOldPixelsToThoseWhoShareThem) {
  unsigned char pixels[] = {5, 6, 7, 8};
  VemImage image = SmallImage();
  VemImage sharing = image;
  EXPECT_TRUE(image.CreateImage(pixels, 2, 2, 2, 1, VemImageType8U));
  ExpectSmallImage(sharing);
  EXPECT_EQ(References(sharing), 1);
  EXPECT_EQ(References(image), 1);
  ExpectImage(image, 2, 2, 1, kTypeCases[0], {5, 6, 7, 8});
}

TEST(VemImageBuffer, CreateImageTakesItsOwnPixels) {
  VemImage image = SmallImage();
  EXPECT_TRUE(image.CreateImage(image.ImageData() + 1, 3, 1, 1, 3, VemImageType8U));
  ExpectImage(image, 1, 1, 3, kTypeCases[0], {2, 3, 4});
}

TEST(VemImageBuffer, ConstructorCutsTheChannelsAsOpenCVDoes) {
  const struct {
    int channels;
    int expected;
  } kCases[] = {{0, 512},  {-1, 511},   {1, 1},         {512, 512},    {513, 1},
                {600, 88}, {1024, 512}, {INT_MAX, 511}, {INT_MIN, 512}};
  Bytes buffer = Pattern(512);
  for (const auto& c : kCases) {
    const VemImage image(buffer.data(), 0, 1, 1, c.channels, VemImageType8U);
    EXPECT_EQ(image.Channels(), c.expected) << c.channels;
  }
}

}  // namespace
