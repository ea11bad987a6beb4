#ifndef TESTS_SUPPORT_MAT_ARRAY_CONTRACT_H_
#define TESTS_SUPPORT_MAT_ARRAY_CONTRACT_H_

#include <cstddef>
#include <cstring>
#include <new>
#include <ostream>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

#include "support/ArrayContract.h"
#include "support/HeapCounter.h"
#include "support/PrivateAccess.h"
#include "support/ProbeAllocator.h"

/// The contents of a matrix. An empty one has neither size nor type.
struct PlainMat {
  int rows = 0;
  int cols = 0;
  int type = 0;
  std::vector<unsigned char> bytes;
};

inline bool operator==(const PlainMat& a, const PlainMat& b) {
  return a.rows == b.rows && a.cols == b.cols && a.type == b.type && a.bytes == b.bytes;
}

inline void PrintTo(const PlainMat& plain, std::ostream* out) {
  *out << plain.rows << " by " << plain.cols << " of type " << plain.type << ' '
       << testing::PrintToString(plain.bytes);
}

inline cv::Mat MatOf(PlainMat plain) {
  if (plain.bytes.empty()) return cv::Mat();
  return cv::Mat(plain.rows, plain.cols, plain.type, plain.bytes.data()).clone();
}

/// The contents of a matrix whose rows must be packed.
inline PlainMat PlainOf(const cv::Mat& mat) {
  EXPECT_TRUE(mat.empty() || mat.isContinuous());
  const std::size_t size = mat.total() * mat.elemSize();
  return {mat.rows, mat.cols, mat.type(), std::vector<unsigned char>(mat.data, mat.data + size)};
}

/// An array of handles on matrices. Its test file adds:
///
///     static std::vector<cv::Mat*>*& Store(Array&);
///     static cv::Mat*& Pointer(Element&);
template <typename A, typename E, int kMostChannels>
struct MatArrayTraits : ArrayTraits<A, E> {
  using Assigned = const A&;
  static constexpr bool kSelfAssignmentEmpties = true;
  static constexpr bool kHasReferences = false;

  /// Of every type; some are empty, and those have no number.
  static PlainMat Plain(int number) {
    if (number % 13 == 7) return PlainMat();
    const int type = CV_MAKETYPE(number % 7, 1 + number % kMostChannels);
    PlainMat plain = {1 + number % 3, 2 + number % 2, type, {}};
    const auto size = plain.rows * plain.cols * static_cast<int>(CV_ELEM_SIZE(type));
    for (int i = 0; i < size; ++i) {
      plain.bytes.push_back(static_cast<unsigned char>(20 * number + 1 + i));
    }
    return plain;
  }

  static E Make(int number) {
    E element;
    element.Mat() = MatOf(Plain(number));
    return element;
  }
  static bool IsMade(const E& element, int number) {
    return PlainOf(element.Mat()) == Plain(number);
  }
  static bool IsDefault(const E& element) { return PlainOf(element.Mat()) == PlainMat(); }

  static void Disturb(E& element) {
    cv::Mat& mat = element.Mat();
    if (mat.empty()) mat = cv::Mat(1, 1, CV_8UC1);
    std::memset(mat.data, 0xee, mat.total() * mat.elemSize());
  }
};

/// Replaces an element and takes back what that leaves allocated, which must be whole.
template <typename Traits>
void ReplaceAndRelease(typename Traits::Array& array, int index,
                       typename Traits::Element& element) {
  const std::vector<cv::Mat*> before = *Traits::Store(array);
  array.Replace(index, element);
  if (index < 0 || static_cast<std::size_t>(index) >= before.size()) return;
  const cv::Mat* const displaced = before[static_cast<std::size_t>(index)];
  EXPECT_TRUE(displaced->u == nullptr || displaced->u->refcount == 1);
  delete displaced;
}

/// What arrays of images and of matrices have in common beyond other arrays.
template <typename Traits>
class MatArrayContract : public testing::Test {};

TYPED_TEST_SUITE_P(MatArrayContract);

TYPED_TEST_P(MatArrayContract, EveryReadIsACloneOfItsOwn) {
  const typename TypeParam::Array array = ArrayOf<TypeParam>({1});
  typename TypeParam::Element first = array[0];
  typename TypeParam::Element second = array[0];
  typename TypeParam::Element third;
  array.Select(0, &third);
  EXPECT_NE(first.Mat().data, second.Mat().data);
  EXPECT_NE(first.Mat().data, third.Mat().data);
  for (typename TypeParam::Element* read : {&first, &second, &third}) {
    EXPECT_EQ(read->Mat().u->refcount, 1);
    EXPECT_TRUE(TypeParam::IsMade(*read, 1));
  }
}

TYPED_TEST_P(MatArrayContract, ElementsShareWithNothing) {
  typename TypeParam::Array array;
  typename TypeParam::Element element = TypeParam::Make(1);
  array.Append(element);
  array.Insert(0, element);
  TypeParam::Replace(array, 1, element);
  array.Append(array);
  typename TypeParam::Array copy(array);
  copy = array;
  EXPECT_EQ(element.Mat().u->refcount, 1);
  for (typename TypeParam::Array* each : {&array, &copy}) {
    ASSERT_EQ(each->Length(), 4);
    for (const cv::Mat* mat : *TypeParam::Store(*each)) EXPECT_EQ(mat->u->refcount, 1);
  }
}

TYPED_TEST_P(MatArrayContract, ClonesHavePackedRows) {
  cv::Mat whole(6, 8, CV_16UC1, cv::Scalar(7));
  typename TypeParam::Element part;
  part.Mat() = whole(cv::Rect(2, 1, 3, 4));
  typename TypeParam::Array array;
  array.Append(part);
  typename TypeParam::Element read = array[0];
  EXPECT_EQ(read.Mat().step[0], 6u);
  EXPECT_EQ((*TypeParam::Store(array))[0]->step[0], 6u);
  EXPECT_EQ(read.Mat().size(), cv::Size(3, 4));
}

TYPED_TEST_P(MatArrayContract, EmptyElementsCount) {
  typename TypeParam::Array array;
  typename TypeParam::Element empty;
  array.Append(empty);
  EXPECT_EQ(array.Length(), 1);
  typename TypeParam::Element read = array[0];
  EXPECT_TRUE(TypeParam::IsDefault(read));
  typename TypeParam::Element out = TypeParam::Make(1);
  array.Select(0, &out);
  EXPECT_TRUE(TypeParam::IsDefault(out));
}

TYPED_TEST_P(MatArrayContract, ElementsWithoutAreaLoseTheirType) {
  typename TypeParam::Element element;
  element.Mat() = cv::Mat(0, 5, CV_32FC1);
  typename TypeParam::Array array;
  array.Append(element);
  typename TypeParam::Element read = array[0];
  EXPECT_TRUE(TypeParam::IsDefault(read));
}

TYPED_TEST_P(MatArrayContract, SelectLeavesOldPixelsToThoseWhoShareThem) {
  const typename TypeParam::Array array = ArrayOf<TypeParam>({1});
  // Of the size and type of the element, so that its buffer could be used again.
  PlainMat old = TypeParam::Plain(1);
  old.bytes.assign(old.bytes.size(), 9);
  typename TypeParam::Element out;
  out.Mat() = MatOf(old);
  typename TypeParam::Element sharing = out;
  array.Select(0, &out);
  EXPECT_TRUE(TypeParam::IsMade(out, 1));
  EXPECT_EQ(PlainOf(sharing.Mat()), old);
  EXPECT_EQ(sharing.Mat().u->refcount, 1);
}

TYPED_TEST_P(MatArrayContract, SelectMakesAMissingMatrix) {
  const typename TypeParam::Array array = ArrayOf<TypeParam>({1});
  typename TypeParam::Element out;
  delete TypeParam::Pointer(out);
  TypeParam::Pointer(out) = nullptr;
  array.Select(1, &out);
  EXPECT_EQ(TypeParam::Pointer(out), nullptr);
  array.Select(0, &out);
  EXPECT_TRUE(TypeParam::IsMade(out, 1));
}

TYPED_TEST_P(MatArrayContract, PixelsAreCopiedOnceEachAndNeverBySwapOrRemove) {
  typename TypeParam::Element element = TypeParam::Make(1);
  const ProbeAllocator probe;
  typename TypeParam::Array array;
  array.Append(element);
  EXPECT_EQ(probe.allocations, 1);
  array.Insert(0, element);
  EXPECT_EQ(probe.allocations, 2);
  TypeParam::Replace(array, 1, element);
  EXPECT_EQ(probe.allocations, 3);
  array.Append(array);
  EXPECT_EQ(probe.allocations, 5);
  const std::vector<cv::Mat*> before = *TypeParam::Store(array);
  array.Swap(0, 3);
  array.Remove(1);
  EXPECT_EQ(*TypeParam::Store(array), (std::vector<cv::Mat*>{before[3], before[2], before[0]}));
  EXPECT_EQ(probe.allocations, 5);
  array.Select(0, &element);
  EXPECT_EQ(probe.allocations, 6);
  const typename TypeParam::Element read = array[0];
  EXPECT_EQ(probe.allocations, 7);
  const typename TypeParam::Array copy(array);
  EXPECT_EQ(probe.allocations, 10);
  array = copy;
  EXPECT_EQ(probe.allocations, 13);
}

TYPED_TEST_P(MatArrayContract, AssignmentReturnsTheSourceAndKeepsTheStorage) {
  typename TypeParam::Array array = ArrayOf<TypeParam>(UpTo(9));
  const std::size_t capacity = TypeParam::Store(array)->capacity();
  typename TypeParam::Array source = ArrayOf<TypeParam>(UpTo(2));
  EXPECT_EQ(&(array = source), &source);
  EXPECT_EQ(TypeParam::Store(array)->capacity(), capacity);
  array.Clear();
  EXPECT_EQ(TypeParam::Store(array)->capacity(), 0u);
}

TYPED_TEST_P(MatArrayContract, RemovedAndClearedElementsAreReleased) {
  typename TypeParam::Array array = ArrayOf<TypeParam>(UpTo(4));
  const std::vector<cv::Mat*>& store = *TypeParam::Store(array);
  std::vector<cv::Mat> witnesses;
  for (const cv::Mat* mat : store) witnesses.push_back(*mat);
  array.Remove(1);
  EXPECT_EQ(witnesses[1].u->refcount, 1);
  EXPECT_EQ(witnesses[0].u->refcount, 2);
  array.Clear();
  for (const cv::Mat& witness : witnesses) EXPECT_EQ(witness.u->refcount, 1);
}

// An array whose one element will be displaced. Not inlined: leak checkers are told its name.
template <typename Traits>
__attribute__((noinline)) typename Traits::Array ArrayForReplaceToLeaveAnElement() {
  return ArrayOf<Traits>({1});
}

// Leaves the displaced element to the end of the process.
TYPED_TEST_P(MatArrayContract, ReplaceLeavesTheDisplacedElementAllocated) {
  typename TypeParam::Array array = ArrayForReplaceToLeaveAnElement<TypeParam>();
  const cv::Mat* const displaced = (*TypeParam::Store(array))[0];
  typename TypeParam::Element element = TypeParam::Make(2);
  array.Replace(0, element);
  EXPECT_NE((*TypeParam::Store(array))[0], displaced);
  EXPECT_TRUE(Holds<TypeParam>(array, {2}));
  EXPECT_EQ(PlainOf(*displaced), TypeParam::Plain(1));
  EXPECT_EQ(displaced->u->refcount, 1);
}

// Leaves the header of each clone that failed: leak checkers are told its name.
TYPED_TEST_P(MatArrayContract, FailedClonesPassToTheCaller) {
  auto array = ArrayOf<TypeParam>(UpTo(3));
  const auto& constant = array;
  typename TypeParam::Element element = TypeParam::Make(5);
  for (const auto failure : {ProbeAllocator::kOpenCV, ProbeAllocator::kMemory}) {
    {
      const ProbeAllocator probe(failure);
      const auto expectRaised = [&](auto operation, long keptHeaders) {
        const HeapCounter blocks;
        if (failure == ProbeAllocator::kOpenCV) {
          EXPECT_THROW(operation(), cv::Exception);
        } else {
          EXPECT_THROW(operation(), std::bad_alloc);
        }
        EXPECT_EQ(blocks.Kept(), HeapCounter::kCounts ? keptHeaders : 0);
      };
      expectRaised([&] { array.Append(element); }, 1);
      expectRaised([&] { array.Append(array); }, 1);
      expectRaised([&] { array.Insert(0, element); }, 1);
      expectRaised([&] { array.Replace(0, element); }, 1);
      expectRaised([&] { typename TypeParam::Array copy(array); }, 1);
      expectRaised([&] { array.Select(0, &element); }, 0);
      expectRaised([&] { constant[0]; }, 0);
      typename TypeParam::Array target;
      expectRaised([&] { target = array; }, 1);
      EXPECT_EQ(target.Length(), 0);
    }
    EXPECT_TRUE(Holds<TypeParam>(array, UpTo(3)));
    EXPECT_TRUE(TypeParam::IsMade(element, 5));
  }
}

TYPED_TEST_P(MatArrayContract, LengthOfAMissingStoreIs0) {
  typename TypeParam::Array array = ArrayOf<TypeParam>(UpTo(3));
  std::vector<cv::Mat*>* const store = TypeParam::Store(array);
  TypeParam::Store(array) = nullptr;
  EXPECT_EQ(array.Length(), 0);
  TypeParam::Store(array) = store;
  EXPECT_EQ(array.Length(), 3);
}

REGISTER_TYPED_TEST_SUITE_P(MatArrayContract, EveryReadIsACloneOfItsOwn, ElementsShareWithNothing,
                            ClonesHavePackedRows, EmptyElementsCount,
                            ElementsWithoutAreaLoseTheirType,
                            SelectLeavesOldPixelsToThoseWhoShareThem, SelectMakesAMissingMatrix,
                            PixelsAreCopiedOnceEachAndNeverBySwapOrRemove,
                            AssignmentReturnsTheSourceAndKeepsTheStorage,
                            RemovedAndClearedElementsAreReleased,
                            ReplaceLeavesTheDisplacedElementAllocated, FailedClonesPassToTheCaller,
                            LengthOfAMissingStoreIs0);

#endif  // TESTS_SUPPORT_MAT_ARRAY_CONTRACT_H_
