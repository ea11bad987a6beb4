#include "VemMatrix.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstring>
#include <functional>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

#include "support/Matrices.h"
#include "support/PrivateAccess.h"
#include "support/ProbeAllocator.h"

struct PrivateVemMatrixMat {
  using Type = cv::Mat* VemMatrix::*;
  friend Type PrivateOf(PrivateVemMatrixMat);
};

template struct PrivateAccess<PrivateVemMatrixMat, &VemMatrix::mat>;

namespace {

static_assert(sizeof(VemMatrix) == sizeof(void*), "a handle is one pointer");
static_assert(!std::is_polymorphic<VemMatrix>::value, "no virtual operations");
static_assert(sizeof(VemMatrixType) == sizeof(int), "a type is an int");
static_assert(VemMatrixType8U == CV_8UC1 && VemMatrixType8S == CV_8SC1 &&
                  VemMatrixType16U == CV_16UC1 && VemMatrixType16S == CV_16SC1 &&
                  VemMatrixType32S == CV_32SC1 && VemMatrixType32F == CV_32FC1 &&
                  VemMatrixType64F == CV_64FC1,
              "types are OpenCV's type codes");
static_assert(VemMatrixType8U == 0 && VemMatrixType64F == 6, "types are numbered from 0 to 6");
[[maybe_unused]] constexpr void (VemMatrix::*kSelect)(int, int, VemVar*) = &VemMatrix::Select;
[[maybe_unused]] constexpr void (VemMatrix::*kReplace)(int, int, VemVar&) = &VemMatrix::Replace;
[[maybe_unused]] constexpr void (VemMatrix::*kSetTo)(VemVar) = &VemMatrix::SetTo;
[[maybe_unused]] constexpr void* (VemMatrix::*kMatrixData)() const = &VemMatrix::MatrixData;

cv::Mat*& MatOf(VemMatrix& matrix) { return matrix.*PrivateOf(PrivateVemMatrixMat()); }

// --- Construction ---

TEST(VemMatrix, DefaultIsEmpty) {
  VemMatrix matrix;
  ExpectEmpty(matrix);
  EXPECT_TRUE(Same(At(matrix, 0, 0), "untouched"));
  Put(matrix, 0, 0, 1);
  matrix.SetTo(1);
  ExpectEmpty(matrix);
}

TEST(VemMatrix, SizedIsAllZero) {
  for (const TypeCase& c : kTypes) {
    SCOPED_TRACE(c.name);
    VemMatrix matrix(2, 3, c.type);
    ExpectMatrix(matrix, 2, 3, c.type, Doubles(6, 0));
    EXPECT_EQ(matrix.Mat().step[0], static_cast<std::size_t>(3 * c.size));
    VemMatrix large(37, 41, c.type);
    ExpectMatrix(large, 37, 41, c.type, Doubles(37 * 41, 0));
  }
}

struct SizeCase {
  const char* name;
  int rows, cols;
};

const SizeCase kNoSizes[] = {
    {"NoColumns", 3, 0},
    {"NoRows", 0, 3},
    {"Nothing", 0, 0},
    {"NegativeRows", -1, 3},
    {"NegativeCols", 3, -1},
    {"Negative", -2, -2},
    {"SmallestRows", INT_MIN, 1},
    {"SmallestCols", 1, INT_MIN},
};

TEST(VemMatrix, SizedWithoutASizeIsEmpty) {
  for (const SizeCase& c : kNoSizes) {
    SCOPED_TRACE(c.name);
    VemMatrix matrix(c.rows, c.cols, VemMatrixType32F);
    ExpectEmpty(matrix);
  }
}

TEST(VemMatrix, UnknownTypesGiveTheEmptyMatrix) {
  double data[6] = {};
  for (const int type : kBadTypes) {
    SCOPED_TRACE(type);
    VemMatrix sized(2, 3, TypeOf(type));
    ExpectEmpty(sized);
    VemMatrix copied(data, 2, 3, TypeOf(type));
    ExpectEmpty(copied);
    VemMatrix nothing(nullptr, -2, 3, TypeOf(type));
    ExpectEmpty(nothing);
  }
}

TEST(VemMatrix, BufferIsCopiedInPackedRows) {
  for (const TypeCase& c : kTypes) {
    for (const SizeCase& size :
         {SizeCase{"", 1, 1}, SizeCase{"", 1, 5}, SizeCase{"", 5, 1}, SizeCase{"", 4, 3}}) {
      SCOPED_TRACE(testing::Message() << c.name << ' ' << size.rows << " by " << size.cols);
      std::vector<unsigned char> bytes(static_cast<std::size_t>(size.rows * size.cols * c.size));
      for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<unsigned char>(7 * i);
      const std::vector<unsigned char> before = bytes;
      VemMatrix matrix(bytes.data(), size.rows, size.cols, c.type);
      std::fill(bytes.begin(), bytes.end(), static_cast<unsigned char>(0));
      EXPECT_EQ(matrix.Rows(), size.rows);
      EXPECT_EQ(matrix.Cols(), size.cols);
      EXPECT_EQ(matrix.Type(), c.type);
      EXPECT_NE(matrix.MatrixData(), bytes.data());
      EXPECT_EQ(std::memcmp(matrix.MatrixData(), before.data(), before.size()), 0);
    }
  }
}

TEST(VemMatrix, BufferStandsByRowThenByColumn) {
  short data[] = {0, 1, 2, 10, 11, 12};
  VemMatrix matrix(data, 2, 3, VemMatrixType16S);
  ExpectMatrix(matrix, 2, 3, VemMatrixType16S, kCounting);
}

TEST(VemMatrix, BufferWithoutAreaGivesTheEmptyMatrix) {
  double data[4] = {};
  for (void* buffer : {static_cast<void*>(data), static_cast<void*>(nullptr)}) {
    for (const SizeCase& c :
         {SizeCase{"NoRows", 0, 3}, SizeCase{"NoColumns", 3, 0}, SizeCase{"Nothing", 0, 0},
          SizeCase{"NegativeRows", -3, 0}, SizeCase{"NegativeCols", 0, -3}}) {
      SCOPED_TRACE(c.name);
      VemMatrix matrix(buffer, c.rows, c.cols, VemMatrixType64F);
      ExpectEmpty(matrix);
    }
  }
}

TEST(VemMatrix, BufferOfAnImpossibleSizeRaises) {
  double data[4] = {};
  EXPECT_THROW(VemMatrix(nullptr, 2, 2, VemMatrixType64F), cv::Exception);
  EXPECT_THROW(VemMatrix(nullptr, -2, -2, VemMatrixType64F), cv::Exception);
  EXPECT_THROW(VemMatrix(data, -2, 2, VemMatrixType64F), cv::Exception);
  EXPECT_THROW(VemMatrix(data, 2, -2, VemMatrixType64F), cv::Exception);
  EXPECT_THROW(VemMatrix(data, -2, -2, VemMatrixType64F), cv::Exception);
}

// --- SetMatrix and Clear ---

TEST(VemMatrix, SetMatrixOfTheSameSizeAndTypeClearsInPlace) {
  for (const TypeCase& c : kTypes) {
    SCOPED_TRACE(c.name);
    VemMatrix matrix = Counting(c.type);
    VemMatrix sharing = matrix;
    const void* data = matrix.MatrixData();
    matrix.SetMatrix(2, 3, c.type);
    EXPECT_EQ(matrix.MatrixData(), data);
    EXPECT_EQ(References(matrix), 2);
    ExpectMatrix(matrix, 2, 3, c.type, Doubles(6, 0));
    ExpectMatrix(sharing, 2, 3, c.type, Doubles(6, 0));
  }
}

TEST(VemMatrix, SetMatrixOfAnotherSizeOrTypeLetsTheOldElementsGo) {
  const struct {
    const char* name;
    int rows, cols;
    VemMatrixType type;
  } cases[] = {
      {"Size", 3, 2, VemMatrixType16S},
      {"Larger", 20, 30, VemMatrixType16S},
      {"TypeOfOtherWidth", 2, 3, VemMatrixType64F},
      {"TypeOfSameWidth", 2, 3, VemMatrixType16U},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    VemMatrix matrix = Counting(VemMatrixType16S);
    VemMatrix sharing = matrix;
    matrix.SetMatrix(c.rows, c.cols, c.type);
    const auto count = static_cast<std::size_t>(c.rows * c.cols);
    ExpectMatrix(matrix, c.rows, c.cols, c.type, Doubles(count, 0));
    ExpectMatrix(sharing, 2, 3, VemMatrixType16S, kCounting);
    EXPECT_EQ(References(sharing), 1);
  }
}

TEST(VemMatrix, SetMatrixRefusesBadArguments) {
  VemMatrix matrix = Counting(VemMatrixType32F);
  for (const SizeCase& c : kNoSizes) matrix.SetMatrix(c.rows, c.cols, VemMatrixType32F);
  for (const int type : kBadTypes) matrix.SetMatrix(2, 3, TypeOf(type));
  ExpectMatrix(matrix, 2, 3, VemMatrixType32F, kCounting);
}

TEST(VemMatrix, ClearLetsElementsGoAndKeepsTheType) {
  for (const TypeCase& c : kTypes) {
    SCOPED_TRACE(c.name);
    VemMatrix matrix = Counting(c.type);
    VemMatrix sharing = matrix;
    matrix.Clear();
    EXPECT_EQ(matrix.Rows(), 0);
    EXPECT_EQ(matrix.Cols(), 0);
    EXPECT_EQ(matrix.Type(), c.type);
    EXPECT_EQ(matrix.MatrixData(), nullptr);
    EXPECT_EQ(References(sharing), 1);
    ExpectMatrix(sharing, 2, 3, c.type, kCounting);
    matrix.SetTo(1);
    EXPECT_TRUE(Same(At(matrix, 0, 0), "untouched"));
    matrix.SetMatrix(1, 2, c.type);
    ExpectMatrix(matrix, 1, 2, c.type, {0, 0});
  }
}

// --- Copies ---

struct SharingCase {
  const char* name;
  std::function<VemMatrix(const VemMatrix& source)> copy;
};

const SharingCase kSharingCases[] = {
    {"CopyConstructor", [](const VemMatrix& source) { return VemMatrix(source); }},
    {"ShallowCopy", [](const VemMatrix& source) { return source.ShallowCopy(); }},
    {"Assignment",
     [](const VemMatrix& source) {
       VemMatrix target = Counting(VemMatrixType8S);
       EXPECT_EQ(&(target = source), &target);
       return target;
     }},
};

TEST(VemMatrix, CopiesShareElements) {
  for (const SharingCase& c : kSharingCases) {
    SCOPED_TRACE(c.name);
    VemMatrix source = Counting(VemMatrixType32F);
    VemMatrix copy = c.copy(source);
    EXPECT_NE(&copy.Mat(), &source.Mat());
    EXPECT_EQ(copy.MatrixData(), source.MatrixData());
    EXPECT_EQ(References(source), 2);
    Put(source, 0, 0, 5);
    ExpectMatrix(copy, 2, 3, VemMatrixType32F, {5, 1, 2, 10, 11, 12});
    copy.SetTo(7);
    ExpectMatrix(source, 2, 3, VemMatrixType32F, Doubles(6, 7));

    VemMatrix empty;
    VemMatrix emptyCopy = c.copy(empty);
    ExpectEmpty(emptyCopy);
  }
}

TEST(VemMatrix, AssignmentLetsTheOldElementsGo) {
  VemMatrix first = Counting(VemMatrixType8U);
  VemMatrix second = first;
  second = Counting(VemMatrixType64F);
  EXPECT_EQ(References(first), 1);
  ExpectMatrix(first, 2, 3, VemMatrixType8U, kCounting);
  ExpectMatrix(second, 2, 3, VemMatrixType64F, kCounting);
}

TEST(VemMatrix, SelfAssignmentChangesNothing) {
  VemMatrix matrix = Counting(VemMatrixType8U);
  const VemMatrix& itself = matrix;
  const void* data = matrix.MatrixData();
  EXPECT_EQ(&(matrix = itself), &matrix);
  EXPECT_EQ(matrix.MatrixData(), data);
  EXPECT_EQ(References(matrix), 1);
  ExpectMatrix(matrix, 2, 3, VemMatrixType8U, kCounting);
}

TEST(VemMatrix, DeepCopySharesNothing) {
  for (const TypeCase& c : kTypes) {
    SCOPED_TRACE(c.name);
    VemMatrix source = Counting(c.type);
    VemMatrix copy = source.DeepCopy();
    EXPECT_EQ(References(source), 1);
    source.SetTo(9);
    ExpectMatrix(copy, 2, 3, c.type, kCounting);
    Put(copy, 0, 0, 8);
    ExpectMatrix(source, 2, 3, c.type, Doubles(6, 9));
  }
}

TEST(VemMatrix, DeepCopyPacksRows) {
  VemMatrix whole(4, 5, VemMatrixType16U);
  whole.SetTo(3);
  VemMatrix part;
  part.Mat() = whole.Mat()(cv::Rect(1, 1, 3, 2));
  VemMatrix copy = part.DeepCopy();
  EXPECT_EQ(copy.Mat().step[0], 6u);
  ExpectMatrix(copy, 2, 3, VemMatrixType16U, Doubles(6, 3));
}

TEST(VemMatrix, DeepCopyOfAnEmptyMatrixIsEmpty) {
  VemMatrix none = VemMatrix().DeepCopy();
  ExpectEmpty(none);
  VemMatrix cleared = Counting(VemMatrixType64F);
  cleared.Clear();
  VemMatrix copy = cleared.DeepCopy();
  ExpectEmpty(copy);
}

TEST(VemMatrix, MatIsTheMatrixItself) {
  VemMatrix matrix = Counting(VemMatrixType64F);
  matrix.Mat().at<double>(1, 2) = 4.5;
  EXPECT_EQ(At(matrix, 1, 2).D(), 4.5);
  const VemMatrix& constant = matrix;
  EXPECT_EQ(&constant.Mat(), &matrix.Mat());
  EXPECT_EQ(MatOf(matrix), &matrix.Mat());
}

// --- Failures while copying ---

// Its matrix claims more dimensions than the 32 that OpenCV has room for: copying that raises.
struct UncopyableMatrix {
  UncopyableMatrix() { matrix.Mat().dims = 33; }
  ~UncopyableMatrix() { matrix.Mat().dims = 0; }

  VemMatrix matrix;
};

TEST(VemMatrix, FailedCopiesAreEmpty) {
  UncopyableMatrix source;
  VemMatrix constructed(source.matrix);
  ExpectEmpty(constructed);
  VemMatrix assigned = Counting(VemMatrixType32F);
  assigned = source.matrix;
  ExpectEmpty(assigned);
}

TEST(VemMatrix, OnlyDeepCopySwallowsWhatAnAllocationRaises) {
  float data[4] = {};
  for (const auto failure : {ProbeAllocator::kMemory, ProbeAllocator::kOpenCV}) {
    SCOPED_TRACE(failure);
    VemMatrix matrix = Counting(VemMatrixType32F);
    const ProbeAllocator probe(failure);
    VemMatrix copy = matrix.DeepCopy();
    ExpectEmpty(copy);
    VemMatrix target;
    EXPECT_ANY_THROW(VemMatrix(2, 2, VemMatrixType32F));
    EXPECT_ANY_THROW(VemMatrix(data, 2, 2, VemMatrixType32F));
    EXPECT_ANY_THROW(target.SetMatrix(2, 2, VemMatrixType32F));
    EXPECT_EQ(probe.allocations, 4);
    matrix.SetMatrix(2, 3, VemMatrixType32F);  // In place: needs no memory.
    ExpectMatrix(matrix, 2, 3, VemMatrixType32F, Doubles(6, 0));
  }
}

// --- A handle that has lost its matrix ---

struct LostMatrix : VemMatrix {
  LostMatrix() {
    delete MatOf(*this);
    MatOf(*this) = nullptr;
  }
};

TEST(VemMatrix, DataAndDestructorAllowAMissingMatrix) {
  const LostMatrix matrix;
  EXPECT_EQ(matrix.MatrixData(), nullptr);
}

// The bytes of this size are 64 more than integers count to.
TEST(VemMatrix, SizeWhoseBytesWrapRaises) {
  EXPECT_THROW(VemMatrix(1073807362, 2147352580, VemMatrixType64F), cv::Exception);
  VemMatrix matrix(2, 3, VemMatrixType32F);
  EXPECT_THROW(matrix.SetMatrix(1073807362, 2147352580, VemMatrixType64F), cv::Exception);
  EXPECT_EQ(matrix.Mat().rows, 2);
}

}  // namespace
