#include "VemImage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstddef>
#include <functional>
#include <memory>
#include <new>
#include <opencv2/core.hpp>
#include <vector>

#include "support/PrivateAccess.h"
#include "support/ProbeAllocator.h"

struct PrivateVemImageMat {
  using Type = cv::Mat* VemImage::*;
  friend Type PrivateOf(PrivateVemImageMat);
};

template struct PrivateAccess<PrivateVemImageMat, &VemImage::mat>;

namespace {

using Bytes = std::vector<unsigned char>;

static_assert(sizeof(VemImage) == sizeof(void*), "a handle is one pointer");
static_assert(sizeof(VemImageType) == sizeof(int), "a type is an int");
static_assert(VemImageType8U == 0 && VemImageType8S == 1 && VemImageType16U == 2 &&
                  VemImageType16S == 3 && VemImageType32S == 4 && VemImageType32F == 5 &&
                  VemImageType64F == 6,
              "types are numbered from 0 to 6");
static_assert(VemImageType8U == CV_8U && VemImageType8S == CV_8S && VemImageType16U == CV_16U &&
                  VemImageType16S == CV_16S && VemImageType32S == CV_32S &&
                  VemImageType32F == CV_32F && VemImageType64F == CV_64F,
              "types are OpenCV's depth codes");

struct TypeCase {
  const char* name;
  VemImageType type;
  int size;  // Of one channel, in bytes.
};

const TypeCase kTypeCases[] = {
    {"8U", VemImageType8U, 1},   {"8S", VemImageType8S, 1},   {"16U", VemImageType16U, 2},
    {"16S", VemImageType16S, 2}, {"32S", VemImageType32S, 4}, {"32F", VemImageType32F, 4},
    {"64F", VemImageType64F, 8},
};

VemImageType TypeOf(int value) { return static_cast<VemImageType>(value); }

// Bytes that differ from their neighbours, from row to row too.
Bytes Pattern(int size, int seed = 0) {
  Bytes bytes(static_cast<std::size_t>(size));
  for (int i = 0; i < size; ++i) {
    bytes[static_cast<std::size_t>(i)] = static_cast<unsigned char>(seed + 37 * i + i / 7);
  }
  return bytes;
}

// The rows that start at `first` and follow each other by `step`, without what lies between them.
Bytes Rows(const Bytes& buffer, int first, int step, int height, int rowSize) {
  Bytes rows;
  for (int row = 0; row < height; ++row) {
    for (int i = 0; i < rowSize; ++i) {
      rows.push_back(buffer.at(static_cast<std::size_t>(first + row * step + i)));
    }
  }
  return rows;
}

// The bytes of an image, its rows taken to be packed.
Bytes PackedBytes(VemImage& image, int rowSize) {
  const unsigned char* data = image.ImageData();
  if (data == nullptr) return Bytes();
  return Bytes(data, data + static_cast<std::ptrdiff_t>(rowSize) * image.Height());
}

void ExpectEmpty(VemImage& image) {
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

void ExpectImage(VemImage& image, int height, int width, int channels, const TypeCase& type,
                 const Bytes& expected) {
  const int rowSize = width * channels * type.size;
  ASSERT_EQ(image.Height(), height);
  ASSERT_EQ(image.Width(), width);
  ASSERT_EQ(image.Channels(), channels);
  ASSERT_EQ(image.BitDepth(), type.type);
  ASSERT_EQ(image.Step(), rowSize);
  ASSERT_EQ(PackedBytes(image, rowSize), expected);
}

// A 2 by 2 image of one byte per pixel: 1, 2 above 3, 4.
VemImage SmallImage() {
  unsigned char pixels[] = {1, 2, 3, 4};
  return VemImage(pixels, 2, 2, 2, 1, VemImageType8U);
}

void ExpectSmallImage(VemImage& image) { ExpectImage(image, 2, 2, 1, kTypeCases[0], {1, 2, 3, 4}); }

int References(VemImage& image) { return image.Mat().u == nullptr ? 0 : image.Mat().u->refcount; }

// Releases pixels, then fails.
class FailingRelease : public cv::MatAllocator {
 public:
  cv::UMatData* allocate(int, const int*, int, void*, std::size_t*, cv::AccessFlag,
                         cv::UMatUsageFlags) const override {
    return nullptr;
  }
  bool allocate(cv::UMatData*, cv::AccessFlag, cv::UMatUsageFlags) const override { return false; }
  void deallocate(cv::UMatData*) const override {}
  void unmap(cv::UMatData* data) const override {
    cv::Mat::getStdAllocator()->deallocate(data);
    throw 1;
  }
};

TEST(VemImage, DefaultIsEmpty) {
  VemImage image;
  ExpectEmpty(image);
}

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

TEST(VemImage, ConstructorCopiesEveryTypeChannelCountAndStep) {
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

TEST(VemImage, ConstructorDropsPadding) {
  Bytes buffer(16 * 10, 255);
  for (std::size_t i = 0; i < buffer.size(); ++i) {
    if (i % 16 < 10) buffer[i] = static_cast<unsigned char>(i / 16 * 10 + i % 16);
  }
  VemImage image(buffer.data(), 16, 10, 10, 1, VemImageType8U);
  Bytes expected;
  for (int i = 0; i < 100; ++i) expected.push_back(static_cast<unsigned char>(i));
  ExpectImage(image, 10, 10, 1, kTypeCases[0], expected);
}

TEST(VemImage, ConstructorRepeatsPixelsOfNarrowRows) {
  unsigned char buffer[] = {1, 2, 3, 4, 5};
  VemImage image(buffer, 1, 3, 3, 1, VemImageType8U);
  ExpectImage(image, 3, 3, 1, kTypeCases[0], {1, 2, 3, 2, 3, 4, 3, 4, 5});
}

TEST(VemImage, ConstructorTakesAnyStepForASingleRow) {
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

TEST(VemImage, ConstructorKeepsNothingOfTheBuffer) {
  auto buffer = std::make_unique<Bytes>(Pattern(12));
  const Bytes expected = *buffer;
  VemImage image(buffer->data(), 6, 2, 2, 3, VemImageType8U);
  EXPECT_NE(image.ImageData(), buffer->data());
  buffer.reset();
  ExpectImage(image, 2, 2, 3, kTypeCases[0], expected);
}

TEST(VemImage, ConstructorLeavesTheBufferAlone) {
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

TEST(VemImage, ConstructorGivesTheEmptyImage) {
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
};

TEST(VemImage, ConstructorLetsOpenCVRaise) {
  for (const BufferCase& c : kRaisingCases) {
    SCOPED_TRACE(c.name);
    Bytes buffer = Pattern(64);
    EXPECT_THROW(Construct(c, buffer), cv::Exception);
  }
}

TEST(VemImage, ConstructorLetsFailedAllocationsPass) {
  unsigned char pixels[] = {1, 2, 3, 4};
  {
    const ProbeAllocator probe(ProbeAllocator::kOpenCV);
    EXPECT_THROW(VemImage(pixels, 2, 2, 2, 1, VemImageType8U), cv::Exception);
  }
  const ProbeAllocator probe(ProbeAllocator::kMemory);
  EXPECT_THROW(VemImage(pixels, 2, 2, 2, 1, VemImageType8U), std::bad_alloc);
}

// --- CreateImage ---

TEST(VemImage, CreateImageCopiesEveryType) {
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

TEST(VemImage, CreateImageTakesNoStepButThePackedOne) {
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

TEST(VemImage, CreateImageRefuses) {
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

TEST(VemImage, CreateImageAcceptsAndIgnoresUnknownTypes) {
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

TEST(VemImage, CreateImageOfNoAreaEmpties) {
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

TEST(VemImage, CreateImageRaisesWithoutData) {
  for (const BufferCase& c : {BufferCase{"Rows", false, 2, 2, 2, 1, VemImageType8U},
                              BufferCase{"SingleRow", false, 24, 1, 1, 3, VemImageType64F}}) {
    SCOPED_TRACE(c.name);
    Bytes buffer;
    VemImage image = SmallImage();
    EXPECT_THROW(Create(image, c, buffer), cv::Exception);
    ExpectSmallImage(image);
  }
}

TEST(VemImage, CreateImageKeepsTheOldImageWhenItsCopyFails) {
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

TEST(VemImage, CreateImageFillsAnEmptyImage) {
  unsigned char pixels[] = {5, 6, 7, 8};
  VemImage image;
  EXPECT_TRUE(image.CreateImage(pixels, 2, 2, 2, 1, VemImageType8U));
  ExpectImage(image, 2, 2, 1, kTypeCases[0], {5, 6, 7, 8});
}

TEST(VemImage, CreateImageNeverReusesStorage) {
  unsigned char pixels[] = {5, 6, 7, 8};
  VemImage image = SmallImage();
  const unsigned char* old = image.ImageData();
  EXPECT_TRUE(image.CreateImage(pixels, 2, 2, 2, 1, VemImageType8U));
  EXPECT_NE(image.ImageData(), old);
  ExpectImage(image, 2, 2, 1, kTypeCases[0], {5, 6, 7, 8});
}

TEST(VemImage, CreateImageLeavesOldPixelsToThoseWhoShareThem) {
  unsigned char pixels[] = {5, 6, 7, 8};
  VemImage image = SmallImage();
  VemImage sharing = image;
  EXPECT_TRUE(image.CreateImage(pixels, 2, 2, 2, 1, VemImageType8U));
  ExpectSmallImage(sharing);
  EXPECT_EQ(References(sharing), 1);
  EXPECT_EQ(References(image), 1);
  ExpectImage(image, 2, 2, 1, kTypeCases[0], {5, 6, 7, 8});
}

TEST(VemImage, CreateImageTakesItsOwnPixels) {
  VemImage image = SmallImage();
  EXPECT_TRUE(image.CreateImage(image.ImageData() + 1, 3, 1, 1, 3, VemImageType8U));
  ExpectImage(image, 1, 1, 3, kTypeCases[0], {2, 3, 4});
}

// --- Copies ---

struct SharingCase {
  const char* name;
  std::function<VemImage(const VemImage& source)> copy;
};

const SharingCase kSharingCases[] = {
    {"CopyConstructor", [](const VemImage& source) { return VemImage(source); }},
    {"AssignmentToEmpty",
     [](const VemImage& source) {
       VemImage target;
       target = source;
       return target;
     }},
    {"AssignmentOverPixels",
     [](const VemImage& source) {
       VemImage target = SmallImage();
       target = source;
       return target;
     }},
    {"ShallowCopy", [](const VemImage& source) { return source.ShallowCopy(); }},
};

TEST(VemImage, CopiesSharePixels) {
  for (const SharingCase& c : kSharingCases) {
    SCOPED_TRACE(c.name);
    Bytes buffer = Pattern(4 * 3 * 4);
    auto source = std::make_unique<VemImage>(buffer.data(), 16, 3, 1, 4, VemImageType32F);
    VemImage copy = c.copy(*source);
    EXPECT_NE(&copy.Mat(), &source->Mat());
    EXPECT_EQ(copy.ImageData(), source->ImageData());
    EXPECT_EQ(References(*source), 2);
    ExpectImage(copy, 3, 1, 4, kTypeCases[5], buffer);

    source->ImageData()[5] = 200;
    EXPECT_EQ(copy.ImageData()[5], 200);
    copy.ImageData()[6] = 100;
    EXPECT_EQ(source->ImageData()[6], 100);
    source.reset();
    EXPECT_EQ(References(copy), 1);
    EXPECT_EQ(copy.ImageData()[5], 200);
  }
}

TEST(VemImage, CopiesOfAnEmptyImageAreEmpty) {
  for (const SharingCase& c : kSharingCases) {
    SCOPED_TRACE(c.name);
    VemImage source;
    VemImage copy = c.copy(source);
    EXPECT_NE(&copy.Mat(), &source.Mat());
    ExpectEmpty(copy);
    ExpectEmpty(source);
  }
  VemImage deep = VemImage().DeepCopy();
  ExpectEmpty(deep);
}

TEST(VemImage, CopyKeepsTheStepOfAPartOfALargerMatrix) {
  cv::Mat whole(6, 8, CV_8UC1, cv::Scalar(0));
  VemImage image;
  image.Mat() = whole(cv::Rect(2, 1, 3, 2));
  VemImage copy(image);
  EXPECT_EQ(copy.Step(), 8);
  EXPECT_EQ(copy.ImageData(), whole.ptr(1, 2));
}

TEST(VemImage, AssignmentReturnsTheTarget) {
  const VemImage source = SmallImage();
  VemImage target;
  VemImage& result = (target = source);
  EXPECT_EQ(&result, &target);
  EXPECT_EQ(&(target = target), &target);
}

TEST(VemImage, AssignmentReleasesOneReferenceToTheOldPixels) {
  VemImage first = SmallImage();
  VemImage second = first;
  VemImage third = first;
  ASSERT_EQ(References(first), 3);
  third = VemImage();
  EXPECT_EQ(References(first), 2);
  ExpectEmpty(third);
  ExpectSmallImage(first);
  second = SmallImage();
  EXPECT_EQ(References(first), 1);
  ExpectSmallImage(first);
}

TEST(VemImage, DestructorReleasesOneReference) {
  VemImage image = SmallImage();
  {
    VemImage copy = image;
    ASSERT_EQ(References(image), 2);
  }
  EXPECT_EQ(References(image), 1);
  ExpectSmallImage(image);
}

TEST(VemImage, SelfAssignmentChangesNothing) {
  VemImage image = SmallImage();
  const VemImage& same = image;
  const unsigned char* data = image.ImageData();
  image = same;
  EXPECT_EQ(image.ImageData(), data);
  EXPECT_EQ(References(image), 1);
  ExpectSmallImage(image);

  VemImage empty;
  const VemImage& sameEmpty = empty;
  empty = sameEmpty;
  ExpectEmpty(empty);
}

TEST(VemImage, AssignmentBetweenImagesThatShareChangesNothing) {
  VemImage image = SmallImage();
  VemImage copy = image;
  image = copy;
  EXPECT_EQ(References(image), 2);
  EXPECT_EQ(image.ImageData(), copy.ImageData());
  ExpectSmallImage(image);
}

TEST(VemImage, AssignmentTakesAnotherPartOfTheSamePixels) {
  Bytes buffer = Pattern(12);
  VemImage whole(buffer.data(), 4, 3, 4, 1, VemImageType8U);
  VemImage part;
  part.Mat() = whole.Mat()(cv::Rect(0, 0, 2, 1));
  part = whole;
  EXPECT_EQ(References(whole), 2);
  ExpectImage(part, 3, 4, 1, kTypeCases[0], buffer);
}

TEST(VemImage, DeepCopyHasPixelsOfItsOwn) {
  for (const TypeCase& type : kTypeCases) {
    SCOPED_TRACE(type.name);
    for (const int channels : {1, 2, 3, 4, 512}) {
      SCOPED_TRACE(channels);
      const int rowSize = 3 * channels * type.size;
      Bytes buffer = Pattern(2 * rowSize);
      VemImage source(buffer.data(), rowSize, 2, 3, channels, type.type);
      VemImage copy = source.DeepCopy();
      EXPECT_NE(copy.ImageData(), source.ImageData());
      EXPECT_EQ(References(source), 1);
      std::fill(source.ImageData(), source.ImageData() + 2 * rowSize,
                static_cast<unsigned char>(9));
      ExpectImage(copy, 2, 3, channels, type, buffer);
      copy.ImageData()[0] = 8;
      EXPECT_EQ(source.ImageData()[0], 9);
    }
  }
}

TEST(VemImage, DeepCopyPacksRows) {
  const struct {
    const char* name;
    cv::Rect part;
  } cases[] = {
      {"Middle", {2, 1, 3, 4}}, {"WholeRows", {0, 2, 8, 2}}, {"OneColumn", {7, 0, 1, 6}},
      {"OneRow", {1, 5, 4, 1}}, {"OnePixel", {3, 3, 1, 1}},
  };
  for (const TypeCase& type : kTypeCases) {
    SCOPED_TRACE(type.name);
    const int pixelSize = 3 * type.size;
    Bytes buffer = Pattern(8 * 6 * pixelSize);
    VemImage whole(buffer.data(), 8 * pixelSize, 6, 8, 3, type.type);
    for (const auto& c : cases) {
      SCOPED_TRACE(c.name);
      const Bytes expected = Rows(buffer, (c.part.y * 8 + c.part.x) * pixelSize, 8 * pixelSize,
                                  c.part.height, c.part.width * pixelSize);
      VemImage image;
      image.Mat() = whole.Mat()(c.part);
      VemImage copy = image.DeepCopy();
      ExpectImage(copy, c.part.height, c.part.width, 3, type, expected);
    }
  }
}

TEST(VemImage, DeepCopyOfNoAreaIsEmpty) {
  VemImage image;
  image.Mat() = cv::Mat(0, 5, CV_32FC3);
  VemImage noRows = image.DeepCopy();
  ExpectEmpty(noRows);
  image.Mat() = cv::Mat(5, 0, CV_16UC1);
  VemImage noColumns = image.DeepCopy();
  ExpectEmpty(noColumns);
}

TEST(VemImage, OnlyDeepCopiesAndBuffersAllocatePixelsOnceEach) {
  unsigned char pixels[] = {1, 2, 3, 4};
  const ProbeAllocator probe;
  VemImage image(pixels, 2, 2, 2, 1, VemImageType8U);
  EXPECT_EQ(probe.allocations, 1);
  image.CreateImage(pixels, 2, 2, 2, 1, VemImageType8U);
  EXPECT_EQ(probe.allocations, 2);
  const VemImage deep = image.DeepCopy();
  EXPECT_EQ(probe.allocations, 3);
  VemImage copy(image);
  copy = deep;
  const VemImage shallow = image.ShallowCopy();
  EXPECT_EQ(probe.allocations, 3);
}

// --- Failures while copying ---

// Its matrix claims more dimensions than the 32 that OpenCV has room for: copying that raises.
struct UnassignableImage {
  UnassignableImage() { image.Mat().dims = 33; }
  ~UnassignableImage() { image.Mat().dims = 0; }

  VemImage image;
};

TEST(VemImage, FailedCopyConstructionGivesTheEmptyImage) {
  const UnassignableImage source;
  {
    cv::Mat target;
    ASSERT_THROW(target = source.image.Mat(), cv::Exception);
  }
  VemImage copy(source.image);
  ExpectEmpty(copy);
  VemImage shallow = source.image.ShallowCopy();
  ExpectEmpty(shallow);
}

TEST(VemImage, FailedAssignmentEmptiesTheTarget) {
  const UnassignableImage source;
  VemImage target = SmallImage();
  VemImage sharing = target;
  EXPECT_EQ(&(target = source.image), &target);
  ExpectEmpty(target);
  ExpectSmallImage(sharing);
  EXPECT_EQ(References(sharing), 1);
}

TEST(VemImage, AssignmentCatchesWhatTheReleaseOfOldPixelsThrows) {
  const FailingRelease allocator;
  unsigned char pixels[] = {5, 6, 7, 8};
  VemImage source;
  source.Mat() = cv::Mat(2, 2, CV_8UC1, pixels);
  VemImage target = SmallImage();
  target.Mat().u->currAllocator = &allocator;
  target = source;
  ExpectEmpty(target);
}

TEST(VemImage, FailedDeepCopyIsEmpty) {
  for (const auto failure :
       {ProbeAllocator::kOpenCV, ProbeAllocator::kMemory, ProbeAllocator::kNumber}) {
    SCOPED_TRACE(failure);
    VemImage source = SmallImage();
    {
      const ProbeAllocator probe(failure);
      VemImage copy = source.DeepCopy();
      EXPECT_GT(probe.allocations, 0);
      ExpectEmpty(copy);
    }
    ExpectSmallImage(source);
  }
}

// --- Accessors ---

TEST(VemImage, AccessorsReadTheMatrix) {
  for (const TypeCase& type : kTypeCases) {
    SCOPED_TRACE(type.name);
    for (const int channels : {1, 2, 3, 4, 5, 8, 511, 512}) {
      SCOPED_TRACE(channels);
      cv::Mat whole(4, 6, CV_MAKETYPE(static_cast<int>(type.type), channels));
      VemImage image;
      image.Mat() = whole(cv::Rect(1, 2, 3, 2));
      const VemImage& constant = image;
      EXPECT_EQ(constant.Width(), 3);
      EXPECT_EQ(constant.Height(), 2);
      EXPECT_EQ(constant.Step(), 6 * channels * type.size);
      EXPECT_EQ(constant.Channels(), channels);
      EXPECT_EQ(constant.BitDepth(), type.type);
      EXPECT_EQ(image.ImageData(), whole.data + (2 * 6 + 1) * channels * type.size);
    }
  }
}

TEST(VemImage, BitDepthOfDepthCode7Is0) {
  for (const int channels : {1, 3, 512}) {
    VemImage image;
    image.Mat() = cv::Mat(2, 2, CV_MAKETYPE(7, channels));
    EXPECT_EQ(image.BitDepth(), 0);
    EXPECT_EQ(image.Channels(), channels);
    EXPECT_EQ(image.Width(), 2);
  }
}

TEST(VemImage, StepIsCutTo32Bits) {
  const struct {
    std::size_t step;
    int expected;
  } cases[] = {{0x7fffffffU, INT_MAX}, {0x80000000U, INT_MIN}, {0xfffffff0U, -16},
               {0x100000000U, 0},      {0x10000000aU, 10},     {0xfffffffffffffff8U, -8}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.step);
    VemImage image = SmallImage();
    image.Mat().step[0] = c.step;
    EXPECT_EQ(image.Step(), c.expected);
  }
}

TEST(VemImage, ImageDataIsWritable) {
  VemImage image = SmallImage();
  image.ImageData()[3] = 99;
  EXPECT_EQ(image.Mat().at<unsigned char>(1, 1), 99);
}

TEST(VemImage, MatIsTheMatrixItself) {
  VemImage image = SmallImage();
  const VemImage& constant = image;
  EXPECT_EQ(&constant.Mat(), &image.Mat());
  EXPECT_EQ(&image.Mat(), image.*PrivateOf(PrivateVemImageMat()));
  image.Mat().release();
  EXPECT_EQ(image.Width(), 0);
  EXPECT_EQ(image.ImageData(), nullptr);
}

// --- A handle that has lost its matrix ---

// Its destructor meets the null pointer as well.
struct LostImage : VemImage {
  LostImage() {
    cv::Mat*& matrix = this->*PrivateOf(PrivateVemImageMat());
    delete matrix;
    matrix = nullptr;
  }
};

TEST(VemImage, AccessorsWithoutAMatrix) {
  LostImage image;
  EXPECT_EQ(image.Width(), 0);
  EXPECT_EQ(image.Height(), 0);
  EXPECT_EQ(image.Step(), 0);
  EXPECT_EQ(image.ImageData(), nullptr);
  EXPECT_EQ(image.Channels(), 0);
}

TEST(VemImage, AssignmentMakesAMissingMatrix) {
  VemImage source = SmallImage();
  LostImage image;
  image.VemImage::operator=(source);
  ExpectSmallImage(image);
  EXPECT_EQ(image.ImageData(), source.ImageData());
}

TEST(VemImage, ConstructorCutsTheChannelsAsOpenCVDoes) {
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
