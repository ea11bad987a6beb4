#include "VemFeatureDescriptor.h"

#include <cstddef>
#include <cstring>
#include <memory>
#include <new>
#include <type_traits>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

#include "support/PrivateAccess.h"

struct PrivateVemFeatureDescriptorMat {
  using Type = cv::Mat* VemFeatureDescriptor::*;
  friend Type PrivateOf(PrivateVemFeatureDescriptorMat);
};

template struct PrivateAccess<PrivateVemFeatureDescriptorMat, &VemFeatureDescriptor::mat>;

namespace {

using Descriptor = VemFeatureDescriptor;

static_assert(sizeof(Descriptor) == sizeof(void*) && !std::is_polymorphic_v<Descriptor>);
static_assert(std::is_same_v<decltype(&Descriptor::Row), int (Descriptor::*)() const>);
static_assert(std::is_same_v<decltype(&Descriptor::Col), int (Descriptor::*)() const>);
static_assert(std::is_same_v<decltype(&Descriptor::MatData), unsigned char* (Descriptor::*)()>);
static_assert(std::is_same_v<decltype(&Descriptor::operator=),
                             Descriptor& (Descriptor::*)(const Descriptor&)>);
static_assert(std::is_constructible_v<Descriptor, const cv::Mat&> &&
              !std::is_convertible_v<const cv::Mat&, Descriptor>);

cv::Mat*& MatOf(Descriptor& descriptor) {
  return descriptor.*PrivateOf(PrivateVemFeatureDescriptorMat());
}

// Numbers of the given type that differ from their neighbours.
cv::Mat Numbers(int rows, int columns, int type) {
  cv::Mat numbers(rows, columns, type);
  for (int row = 0; row < rows; ++row) {
    unsigned char* const bytes = numbers.ptr(row);
    for (int i = 0; i < columns * static_cast<int>(numbers.elemSize()); ++i) {
      bytes[i] = static_cast<unsigned char>(row * 31 + i * 7 + 1);
    }
  }
  return numbers;
}

bool SameBytes(const cv::Mat& a, const cv::Mat& b) {
  if (a.rows != b.rows || a.cols != b.cols || a.type() != b.type()) return false;
  const std::size_t rowSize = static_cast<std::size_t>(a.cols) * a.elemSize();
  for (int row = 0; row < a.rows; ++row) {
    if (std::memcmp(a.ptr(row), b.ptr(row), rowSize) != 0) return false;
  }
  return true;
}

void ExpectHolds(Descriptor& descriptor, const cv::Mat& numbers) {
  EXPECT_EQ(descriptor.Row(), numbers.rows);
  EXPECT_EQ(descriptor.Col(), numbers.cols);
  EXPECT_EQ(descriptor.MatData(), MatOf(descriptor)->data);
  EXPECT_TRUE(SameBytes(*MatOf(descriptor), numbers));
  EXPECT_TRUE(MatOf(descriptor)->isContinuous());
}

void ExpectEmpty(Descriptor& descriptor) {
  ASSERT_NE(MatOf(descriptor), nullptr);
  EXPECT_EQ(descriptor.Row(), 0);
  EXPECT_EQ(descriptor.Col(), 0);
  EXPECT_EQ(descriptor.MatData(), nullptr);
  EXPECT_EQ(MatOf(descriptor)->type(), 0);
  EXPECT_EQ(MatOf(descriptor)->u, nullptr);
}

TEST(VemFeatureDescriptor, DefaultIsEmpty) {
  Descriptor descriptor;
  ExpectEmpty(descriptor);
}

TEST(VemFeatureDescriptor, TakesACopyOfAnyMatrix) {
  for (const int type : {CV_8UC1, CV_8SC3, CV_16UC2, CV_32SC1, CV_32FC1, CV_32FC4, CV_64FC1}) {
    SCOPED_TRACE(type);
    cv::Mat numbers = Numbers(5, 7, type);
    Descriptor descriptor(numbers);
    ExpectHolds(descriptor, numbers);
    EXPECT_NE(descriptor.MatData(), numbers.data);
    numbers.setTo(cv::Scalar::all(9));
    ExpectHolds(descriptor, Numbers(5, 7, type));
  }
}

TEST(VemFeatureDescriptor, CopiesHavePackedRows) {
  const cv::Mat whole = Numbers(6, 8, CV_32FC1);
  const cv::Mat part = whole(cv::Rect(2, 1, 3, 4));
  Descriptor descriptor(part);
  ExpectHolds(descriptor, part);
}

TEST(VemFeatureDescriptor, MatrixWithoutAreaIsEmpty) {
  Descriptor noRows(cv::Mat(0, 5, CV_32FC1));
  ExpectEmpty(noRows);
  Descriptor noColumns(cv::Mat(5, 0, CV_32FC1));
  ExpectEmpty(noColumns);
}

TEST(VemFeatureDescriptor, CopiesShareNothing) {
  const cv::Mat numbers = Numbers(3, 4, CV_32FC1);
  auto source = std::make_unique<Descriptor>(numbers);
  Descriptor copy(*source);
  Descriptor target(Numbers(9, 9, CV_8UC1));
  Descriptor& result = (target = *source);
  EXPECT_EQ(&result, &target);
  EXPECT_NE(MatOf(copy), MatOf(*source));
  EXPECT_NE(MatOf(target), MatOf(*source));
  EXPECT_NE(copy.MatData(), source->MatData());
  EXPECT_NE(target.MatData(), source->MatData());

  copy.MatData()[0] = 200;
  target.MatData()[1] = 201;
  ExpectHolds(*source, numbers);
  source->MatData()[2] = 202;
  source.reset();
  cv::Mat expected = numbers.clone();
  expected.data[0] = 200;
  ExpectHolds(copy, expected);
  numbers.copyTo(expected);
  expected.data[1] = 201;
  ExpectHolds(target, expected);
}

TEST(VemFeatureDescriptor, CopiesOfAnEmptyDescriptorAreEmpty) {
  const Descriptor source;
  Descriptor copy(source);
  ExpectEmpty(copy);
  Descriptor target(Numbers(2, 2, CV_32FC1));
  target = source;
  ExpectEmpty(target);
}

TEST(VemFeatureDescriptor, AssignmentReleasesTheOldBuffer) {
  Descriptor target(Numbers(2, 2, CV_32FC1));
  const cv::Mat old = *MatOf(target);
  ASSERT_EQ(old.u->refcount, 2);
  target = Descriptor(Numbers(3, 3, CV_8UC1));
  EXPECT_EQ(old.u->refcount, 1);
  EXPECT_TRUE(SameBytes(old, Numbers(2, 2, CV_32FC1)));
}

TEST(VemFeatureDescriptor, SelfAssignmentKeepsTheNumbersInANewBuffer) {
  Descriptor descriptor(Numbers(3, 4, CV_32FC1));
  const Descriptor& alias = descriptor;
  const unsigned char* const before = descriptor.MatData();
  descriptor = alias;
  ExpectHolds(descriptor, Numbers(3, 4, CV_32FC1));
  EXPECT_NE(descriptor.MatData(), before);

  Descriptor empty;
  const Descriptor& emptyAlias = empty;
  empty = emptyAlias;
  ExpectEmpty(empty);
}

// Stands in for OpenCV's default allocator as long as it lives, and fails.
class FailingAllocator : public cv::MatAllocator {
 public:
  enum Failure { kOpenCV, kMemory, kNumber };

  explicit FailingAllocator(Failure failure)
      : failure_(failure), replaced_(cv::Mat::getDefaultAllocator()) {
    cv::Mat::setDefaultAllocator(this);
  }
  ~FailingAllocator() override { cv::Mat::setDefaultAllocator(replaced_); }

  cv::UMatData* allocate(int, const int*, int, void*, std::size_t*, cv::AccessFlag,
                         cv::UMatUsageFlags) const override {
    if (failure_ == kOpenCV) CV_Error(cv::Error::StsNoMem, "out of memory on demand");
    if (failure_ == kMemory) throw std::bad_alloc();
    throw 1;
  }
  bool allocate(cv::UMatData*, cv::AccessFlag, cv::UMatUsageFlags) const override { return false; }
  void deallocate(cv::UMatData* data) const override {
    cv::Mat::getStdAllocator()->deallocate(data);
  }

 private:
  Failure failure_;
  cv::MatAllocator* replaced_;
};

TEST(VemFeatureDescriptor, CopyThatFailsIsEmpty) {
  for (const auto failure :
       {FailingAllocator::kOpenCV, FailingAllocator::kMemory, FailingAllocator::kNumber}) {
    SCOPED_TRACE(failure);
    const cv::Mat numbers = Numbers(3, 4, CV_32FC1);
    Descriptor source(numbers);
    Descriptor target(Numbers(2, 2, CV_8UC1));
    {
      const FailingAllocator allocator(failure);
      Descriptor copy(source);
      ExpectEmpty(copy);
      Descriptor fromMatrix(numbers);
      ExpectEmpty(fromMatrix);
      EXPECT_EQ(&(target = source), &target);
    }
    ExpectEmpty(target);
    ExpectHolds(source, numbers);
  }
}

// A handle that has lost its matrix. Its destructor meets the null pointer as well.
struct LostDescriptor : Descriptor {
  LostDescriptor() {
    delete MatOf(*this);
    MatOf(*this) = nullptr;
  }
};

TEST(VemFeatureDescriptor, ReadersWithoutAMatrix) {
  LostDescriptor descriptor;
  EXPECT_EQ(descriptor.Row(), 0);
  EXPECT_EQ(descriptor.Col(), 0);
  EXPECT_EQ(descriptor.MatData(), nullptr);
}

TEST(VemFeatureDescriptor, AssignmentMakesAMissingMatrix) {
  LostDescriptor descriptor;
  descriptor.Descriptor::operator=(Descriptor(Numbers(3, 4, CV_32FC1)));
  ExpectHolds(descriptor, Numbers(3, 4, CV_32FC1));
}

}  // namespace
