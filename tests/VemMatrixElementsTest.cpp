#include "VemMatrix.h"

#include <climits>
#include <cmath>
#include <cstddef>
#include <cstring>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

#include "support/Matrices.h"

namespace {

// --- Select and Replace ---

struct StoreCase {
  VemMatrixType type;
  VemVar given;
  VemVar stored;
};

const StoreCase kStoreCases[] = {
    {VemMatrixType8U, 300, 255},
    {VemMatrixType8U, 256, 255},
    {VemMatrixType8U, 255, 255},
    {VemMatrixType8U, 0, 0},
    {VemMatrixType8U, -1, 0},
    {VemMatrixType8U, -5, 0},
    {VemMatrixType8U, 1.9, 1},
    {VemMatrixType8U, -0.9, 0},
    {VemMatrixType8U, 254.99, 254},
    {VemMatrixType8U, 4294967296L, 0},
    {VemMatrixType8U, 4294967296L + 77, 77},
    {VemMatrixType8U, 2147483648L, 0},
    {VemMatrixType8U, 4294967296.0, 0},
    {VemMatrixType8U, kNaN, 0},
    {VemMatrixType8U, kInfinity, 0},
    {VemMatrixType8S, 200, 127},
    {VemMatrixType8S, 128, 127},
    {VemMatrixType8S, 127, 127},
    {VemMatrixType8S, -1, -1},
    {VemMatrixType8S, -128, -128},
    {VemMatrixType8S, -129, -128},
    {VemMatrixType8S, -200, -128},
    {VemMatrixType8S, -1.9, -1},
    {VemMatrixType8S, kNaN, -128},
    {VemMatrixType8S, 4294967296L + 5, 5},
    {VemMatrixType8S, 2147483648L, -128},
    {VemMatrixType16U, 70000, 65535},
    {VemMatrixType16U, 65536, 65535},
    {VemMatrixType16U, 65535, 65535},
    {VemMatrixType16U, 32768, 32768},
    {VemMatrixType16U, -1, 0},
    {VemMatrixType16U, 1e9, 65535},
    {VemMatrixType16U, 4294967296L + 5, 5},
    {VemMatrixType16U, 2147483648L, 0},
    {VemMatrixType16S, 40000, 32767},
    {VemMatrixType16S, 32768, 32767},
    {VemMatrixType16S, 32767, 32767},
    {VemMatrixType16S, -32768, -32768},
    {VemMatrixType16S, -32769, -32768},
    {VemMatrixType16S, -1, -1},
    {VemMatrixType16S, 4294967296L + 5, 5},
    {VemMatrixType16S, 2147483648L, -32768},
    {VemMatrixType32S, INT_MAX, INT_MAX},
    {VemMatrixType32S, INT_MIN, INT_MIN},
    {VemMatrixType32S, 1.9, 1},
    {VemMatrixType32S, -1.9, -1},
    {VemMatrixType32S, 2147483648L, INT_MIN},
    {VemMatrixType32S, 4294967296L + 5, 5},
    {VemMatrixType32S, 2147483648.0, INT_MIN},
    {VemMatrixType32S, kNaN, INT_MIN},
    {VemMatrixType32F, 16777217L, 16777216.0},
    // Rounded once: through a double the last bit is lost, and the tie goes down.
    {VemMatrixType32F, (1L << 60) + (1L << 36) + 1, 1152921642045800448.0},
    {VemMatrixType32F, 0.1, static_cast<double>(0.1f)},
    {VemMatrixType32F, -3, -3.0},
    {VemMatrixType32F, 1e300, kInfinity},
    {VemMatrixType32F, -kInfinity, -kInfinity},
    {VemMatrixType64F, 0.1, 0.1},
    {VemMatrixType64F, 1e300, 1e300},
    {VemMatrixType64F, 9007199254740993L, 9007199254740992.0},
    {VemMatrixType64F, -7, -7.0},
    {VemMatrixType64F, -0.0, -0.0},
};

TEST(VemMatrixElements, ReplaceLimitsAndSelectReads) {
  for (const StoreCase& c : kStoreCases) {
    SCOPED_TRACE(testing::Message() << c.type << ' ' << testing::PrintToString(c.given));
    VemMatrix matrix = Counting(c.type);
    VemVar given = c.given;
    matrix.Replace(1, 1, given);
    EXPECT_TRUE(Same(given, c.given));
    EXPECT_TRUE(Same(At(matrix, 1, 1), c.stored)) << testing::PrintToString(At(matrix, 1, 1));
    Put(matrix, 1, 1, 11);
    ExpectMatrix(matrix, 2, 3, c.type, kCounting);
  }
}

TEST(VemMatrixElements, NotANumberPassesThroughFloatingTypes) {
  for (const VemMatrixType type : {VemMatrixType32F, VemMatrixType64F}) {
    VemMatrix matrix = Counting(type);
    Put(matrix, 0, 0, kNaN);
    EXPECT_EQ(At(matrix, 0, 0).ValType(), VemVarDouble);
    EXPECT_TRUE(std::isnan(At(matrix, 0, 0).D()));
  }
}

TEST(VemMatrixElements, SelectGivesIntegersOrDoubles) {
  for (const TypeCase& c : kTypes) {
    SCOPED_TRACE(c.name);
    const int kind = c.type < VemMatrixType32F ? VemVarLong : VemVarDouble;
    EXPECT_EQ(At(Counting(c.type), 1, 2).ValType(), kind);
  }
}

TEST(VemMatrixElements, SelectReadsTheWidthAndSignOfTheType) {
  unsigned char bytes[16];
  std::memset(bytes, 0xff, sizeof(bytes));
  const double kOnes[] = {255, -1, 65535, -1, -1};
  for (int type = VemMatrixType8U; type <= VemMatrixType32S; ++type) {
    SCOPED_TRACE(type);
    VemMatrix matrix(bytes, 1, 2, TypeOf(type));
    EXPECT_EQ(At(matrix, 0, 0).D(), kOnes[type]);
    EXPECT_EQ(At(matrix, 0, 1).D(), kOnes[type]);
  }
}

TEST(VemMatrixElements, IndicesOutOfRangeChangeNothing) {
  const int kBad[][2] = {{-1, 0},      {0, -1},      {2, 0},       {0, 3},
                         {2, 3},       {1, 3},       {-1, -1},     {INT_MIN, 0},
                         {0, INT_MIN}, {INT_MAX, 0}, {0, INT_MAX}, {INT_MAX, INT_MAX}};
  for (const TypeCase& c : kTypes) {
    SCOPED_TRACE(c.name);
    VemMatrix matrix = Counting(c.type);
    for (const auto& index : kBad) {
      EXPECT_TRUE(Same(At(matrix, index[0], index[1]), "untouched"));
      Put(matrix, index[0], index[1], 99);
    }
    ExpectMatrix(matrix, 2, 3, c.type, kCounting);
  }
}

TEST(VemMatrixElements, ForeignTypesAreLeftAlone) {
  VemMatrix matrix;
  matrix.Mat() = cv::Mat(2, 2, CV_8UC3, cv::Scalar(1, 2, 3));
  const cv::Mat before = matrix.Mat().clone();
  EXPECT_TRUE(Same(At(matrix, 0, 0), "untouched"));
  Put(matrix, 0, 0, 9);
  matrix.SetTo(9);
  EXPECT_EQ(std::memcmp(matrix.MatrixData(), before.data, 12), 0);
  EXPECT_EQ(static_cast<int>(matrix.Type()), CV_8UC3);
}

// --- SetTo ---

struct FillCase {
  VemMatrixType type;
  VemVar given;
  double filled;
};

// The narrow types read an integer, truncated; the others a double, which is rounded to the even
// number at a half.
const FillCase kFillCases[] = {
    {VemMatrixType8U, 4294967296L + 77, 0},
    {VemMatrixType16S, 4294967296L + 77, -32768},
    {VemMatrixType8U, 1.9, 1},
    {VemMatrixType8U, 300, 255},
    {VemMatrixType8U, -5, 0},
    {VemMatrixType8U, 4294967296L, 0},
    {VemMatrixType8U, 1000000L, 255},
    {VemMatrixType8S, -1.9, -1},
    {VemMatrixType8S, 200, 127},
    {VemMatrixType8S, -200, -128},
    {VemMatrixType16U, 2.5, 2},
    {VemMatrixType16U, 3.9, 3},
    {VemMatrixType16U, 70000, 65535},
    {VemMatrixType16S, -3.9, -3},
    {VemMatrixType16S, -40000, -32768},
    {VemMatrixType32S, 1.9, 2},
    {VemMatrixType32S, 1.5, 2},
    {VemMatrixType32S, 2.5, 2},
    {VemMatrixType32S, -1.5, -2},
    {VemMatrixType32S, -7, -7},
    {VemMatrixType32S, 1e10, INT_MIN},
    {VemMatrixType32S, kNaN, INT_MIN},
    {VemMatrixType32F, 0.1, static_cast<double>(0.1f)},
    {VemMatrixType32F, 5, 5},
    {VemMatrixType64F, 0.1, 0.1},
    {VemMatrixType64F, 9007199254740993L, 9007199254740992.0},
};

TEST(VemMatrixElements, SetToFillsEveryElement) {
  for (const FillCase& c : kFillCases) {
    SCOPED_TRACE(testing::Message() << c.type << ' ' << testing::PrintToString(c.given));
    for (const cv::Size size :
         {cv::Size(1, 1), cv::Size(3, 2), cv::Size(17, 5), cv::Size(50, 40)}) {
      VemMatrix matrix(size.height, size.width, c.type);
      matrix.SetTo(c.given);
      const Doubles expected(static_cast<std::size_t>(size.area()), c.filled);
      ExpectMatrix(matrix, size.height, size.width, c.type, expected);
    }
  }
}

TEST(VemMatrixElements, SetToAndReplaceDifferForIntegers) {
  VemMatrix matrix(1, 2, VemMatrixType32S);
  matrix.SetTo(1.9);
  Put(matrix, 0, 1, 1.9);
  EXPECT_EQ(Elements(matrix), (Doubles{2, 1}));
}

}  // namespace
