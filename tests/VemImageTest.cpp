#include "VemImage.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

#include "support/ImageBytes.h"
#include "support/PrivateAccess.h"
#include "support/ProbeAllocator.h"

struct PrivateVemImageMat {
  using Type = cv::Mat* VemImage::*;
  friend Type PrivateOf(PrivateVemImageMat);
};

template struct PrivateAccess<PrivateVemImageMat, &VemImage::mat>;

namespace {

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

}  // namespace
