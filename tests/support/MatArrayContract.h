#ifndef TESTS_SUPPORT_MAT_ARRAY_CONTRACT_H_
#define TESTS_SUPPORT_MAT_ARRAY_CONTRACT_H_

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <new>
#include <opencv2/core.hpp>
#include <ostream>
#include <random>
#include <vector>

#include "support/CopyArrayContract.h"
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

/// An array of handles on matrices. `HandleKind` tells:
///
///     using Array, Element;
///     static std::vector<cv::Mat*>*& Store(Array&);
///     static cv::Mat*& Pointer(Element&);
///     static constexpr int kMostChannels;
template <typename HandleKind>
struct MatArrayKind {
  using Handle = HandleKind;
  using Array = typename HandleKind::Array;
  using Element = typename HandleKind::Element;
  using Value = PlainMat;

  static Value Sample(int i) {
    Value value = {1 + i % 3, 2 + i % 2, CV_MAKETYPE(i % 7, 1), {}};
    return Filled(value, static_cast<unsigned char>(20 * i + 1));
  }

  static Value Random(std::mt19937& random) {
    const auto below = [&](int end) {
      return static_cast<int>(random() % static_cast<unsigned>(end));
    };
    if (below(6) == 0) return Value();
    const int type = CV_MAKETYPE(below(7), 1 + below(HandleKind::kMostChannels));
    Value value = {1 + below(3), 1 + below(3), type, {}};
    return Filled(value, static_cast<unsigned char>(below(256)));
  }

  static Element Make(const Value& value) {
    Element element;
    element.Mat() = MatOf(value);
    return element;
  }
  static Value Read(Element& element) { return PlainOf(element.Mat()); }
  static Value Stored(const Value& value) { return value; }
  static Value Selected(const Value&, const Value& element) { return element; }

  static void Disturb(Element& element) {
    cv::Mat& mat = element.Mat();
    if (!mat.empty()) std::memset(mat.data, 0xee, mat.total() * mat.elemSize());
  }

  // Takes back what the array leaves allocated, which must be whole.
  static void Replace(Array& array, int index, Element& element) {
    const std::vector<cv::Mat*> before = *HandleKind::Store(array);
    array.Replace(index, element);
    if (index < 0 || static_cast<std::size_t>(index) >= before.size()) return;
    cv::Mat* const displaced = before[static_cast<std::size_t>(index)];
    EXPECT_TRUE(displaced->u == nullptr || displaced->u->refcount == 1);
    delete displaced;
  }

  static constexpr bool kSelfAssignmentEmpties = true;
  static constexpr bool kTestsPositions = true;

 private:
  static Value Filled(Value value, unsigned char first) {
    const auto size = value.rows * value.cols * static_cast<int>(CV_ELEM_SIZE(value.type));
    for (int i = 0; i < size; ++i) value.bytes.push_back(static_cast<unsigned char>(first + i));
    return value;
  }
};

/// What arrays of images and of matrices have in common beyond other arrays.
template <typename Kind>
class MatArrayContract : public CopyArrayContract<Kind> {};

TYPED_TEST_SUITE_P(MatArrayContract);

TYPED_TEST_P(MatArrayContract, EveryReadIsACloneOfItsOwn) {
  const typename TypeParam::Array array = this->ArrayOf(this->Samples(1, 2));
  typename TypeParam::Element first = array[0];
  typename TypeParam::Element second = array[0];
  typename TypeParam::Element third;
  array.Select(0, &third);
  EXPECT_NE(first.Mat().data, second.Mat().data);
  EXPECT_NE(first.Mat().data, third.Mat().data);
  for (typename TypeParam::Element* read : {&first, &second, &third}) {
    EXPECT_EQ(read->Mat().u->refcount, 1);
    EXPECT_EQ(TypeParam::Read(*read), TypeParam::Sample(1));
  }
}

TYPED_TEST_P(MatArrayContract, ElementsShareWithNothing) {
  typename TypeParam::Array array;
  typename TypeParam::Element element = TypeParam::Make(TypeParam::Sample(1));
  array.Append(element);
  array.Insert(0, element);
  TypeParam::Replace(array, 1, element);
  array.Append(array);
  typename TypeParam::Array copy(array);
  copy = array;
  EXPECT_EQ(element.Mat().u->refcount, 1);
  for (typename TypeParam::Array* each : {&array, &copy}) {
    ASSERT_EQ(each->Length(), 4);
    for (const cv::Mat* mat : *TypeParam::Handle::Store(*each)) EXPECT_EQ(mat->u->refcount, 1);
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
  EXPECT_EQ((*TypeParam::Handle::Store(array))[0]->step[0], 6u);
  EXPECT_EQ(read.Mat().size(), cv::Size(3, 4));
}

TYPED_TEST_P(MatArrayContract, EmptyElementsCount) {
  typename TypeParam::Array array;
  typename TypeParam::Element empty;
  array.Append(empty);
  EXPECT_EQ(array.Length(), 1);
  typename TypeParam::Element read = array[0];
  EXPECT_EQ(TypeParam::Read(read), PlainMat());
  typename TypeParam::Element out = TypeParam::Make(TypeParam::Sample(1));
  array.Select(0, &out);
  EXPECT_EQ(TypeParam::Read(out), PlainMat());
}

TYPED_TEST_P(MatArrayContract, ElementsWithoutAreaLoseTheirType) {
  typename TypeParam::Element element;
  element.Mat() = cv::Mat(0, 5, CV_32FC1);
  typename TypeParam::Array array;
  array.Append(element);
  typename TypeParam::Element read = array[0];
  EXPECT_EQ(TypeParam::Read(read), PlainMat());
}

TYPED_TEST_P(MatArrayContract, SelectLeavesOldPixelsToThoseWhoShareThem) {
  const typename TypeParam::Array array = this->ArrayOf(this->Samples(1, 2));
  // Of the size and type of the element, so that its buffer could be used again.
  PlainMat old = TypeParam::Sample(1);
  old.bytes.assign(old.bytes.size(), 9);
  typename TypeParam::Element out = TypeParam::Make(old);
  typename TypeParam::Element sharing = out;
  array.Select(0, &out);
  EXPECT_EQ(TypeParam::Read(out), TypeParam::Sample(1));
  EXPECT_EQ(TypeParam::Read(sharing), old);
  EXPECT_EQ(sharing.Mat().u->refcount, 1);
}

TYPED_TEST_P(MatArrayContract, SelectMakesAMissingMatrix) {
  const typename TypeParam::Array array = this->ArrayOf(this->Samples(1, 2));
  typename TypeParam::Element out;
  delete TypeParam::Handle::Pointer(out);
  TypeParam::Handle::Pointer(out) = nullptr;
  array.Select(1, &out);
  EXPECT_EQ(TypeParam::Handle::Pointer(out), nullptr);
  array.Select(0, &out);
  EXPECT_EQ(TypeParam::Read(out), TypeParam::Sample(1));
}

TYPED_TEST_P(MatArrayContract, PixelsAreCopiedOnceEachAndNeverBySwapOrRemove) {
  typename TypeParam::Element element = TypeParam::Make(TypeParam::Sample(1));
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
  const std::vector<cv::Mat*> before = *TypeParam::Handle::Store(array);
  array.Swap(0, 3);
  array.Remove(1);
  EXPECT_EQ(*TypeParam::Handle::Store(array),
            (std::vector<cv::Mat*>{before[3], before[2], before[0]}));
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
  typename TypeParam::Array array = this->ArrayOf(this->Samples(0, 9));
  const std::size_t capacity = TypeParam::Handle::Store(array)->capacity();
  typename TypeParam::Array source = this->ArrayOf(this->Samples(0, 2));
  EXPECT_EQ(&(array = source), &source);
  EXPECT_EQ(TypeParam::Handle::Store(array)->capacity(), capacity);
  array.Clear();
  EXPECT_EQ(TypeParam::Handle::Store(array)->capacity(), 0u);
}

TYPED_TEST_P(MatArrayContract, RemovedAndClearedElementsAreReleased) {
  typename TypeParam::Array array = this->ArrayOf(this->Samples(0, 4));
  const std::vector<cv::Mat*>& store = *TypeParam::Handle::Store(array);
  std::vector<cv::Mat> witnesses;
  for (const cv::Mat* mat : store) witnesses.push_back(*mat);
  array.Remove(1);
  EXPECT_EQ(witnesses[1].u->refcount, 1);
  EXPECT_EQ(witnesses[0].u->refcount, 2);
  array.Clear();
  for (const cv::Mat& witness : witnesses) EXPECT_EQ(witness.u->refcount, 1);
}

// An array whose one element will be displaced. Not inlined: leak checkers are told its name.
template <typename Kind>
__attribute__((noinline)) typename Kind::Array ArrayForReplaceToLeaveAnElement() {
  return CopyArrayContract<Kind>::ArrayOf({Kind::Sample(1)});
}

// Leaves the displaced element to the end of the process.
TYPED_TEST_P(MatArrayContract, ReplaceLeavesTheDisplacedElementAllocated) {
  typename TypeParam::Array array = ArrayForReplaceToLeaveAnElement<TypeParam>();
  const cv::Mat* const displaced = (*TypeParam::Handle::Store(array))[0];
  typename TypeParam::Element element = TypeParam::Make(TypeParam::Sample(2));
  array.Replace(0, element);
  EXPECT_NE((*TypeParam::Handle::Store(array))[0], displaced);
  EXPECT_EQ(this->Contents(array), this->Samples(2, 3));
  EXPECT_EQ(PlainOf(*displaced), TypeParam::Sample(1));
  EXPECT_EQ(displaced->u->refcount, 1);
}

// Leaves the header of each clone that failed: leak checkers are told its name.
TYPED_TEST_P(MatArrayContract, FailedClonesPassToTheCaller) {
  typename TypeParam::Array array = this->ArrayOf(this->Samples(0, 3));
  typename TypeParam::Element element = TypeParam::Make(TypeParam::Sample(5));
  const auto expected = this->Samples(0, 3);
  for (const auto failure : {ProbeAllocator::kOpenCV, ProbeAllocator::kMemory}) {
    {
      const ProbeAllocator probe(failure);
      const auto expectRaised = [&](auto operation) {
        if (failure == ProbeAllocator::kOpenCV) {
          EXPECT_THROW(operation(), cv::Exception);
        } else {
          EXPECT_THROW(operation(), std::bad_alloc);
        }
      };
      const typename TypeParam::Array& constant = array;
      expectRaised([&] { array.Append(element); });
      expectRaised([&] { array.Append(array); });
      expectRaised([&] { array.Insert(0, element); });
      expectRaised([&] { array.Replace(0, element); });
      expectRaised([&] { array.Select(0, &element); });
      expectRaised([&] { constant[0]; });
      expectRaised([&] { typename TypeParam::Array copy(array); });
      typename TypeParam::Array target;
      expectRaised([&] { target = array; });
      EXPECT_EQ(target.Length(), 0);
    }
    EXPECT_EQ(this->Contents(array), expected);
    EXPECT_EQ(TypeParam::Read(element), TypeParam::Sample(5));
  }
}

TYPED_TEST_P(MatArrayContract, LengthOfAMissingStoreIs0) {
  typename TypeParam::Array array = this->ArrayOf(this->Samples(0, 3));
  std::vector<cv::Mat*>* const store = TypeParam::Handle::Store(array);
  TypeParam::Handle::Store(array) = nullptr;
  EXPECT_EQ(array.Length(), 0);
  TypeParam::Handle::Store(array) = store;
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
