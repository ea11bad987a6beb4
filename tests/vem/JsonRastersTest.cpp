#include "vem/json.h"

#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

namespace {

using nlohmann::json;

template <typename T>
T Again(const T& value) {
  return vem::from_json<T>(json::parse(vem::to_json(value).dump()));
}

template <typename T>
std::string Message(const std::string& document) {
  try {
    vem::from_json<T>(json::parse(document));
  } catch (const vem::json_error& error) {
    return error.what();
  }
  return "no error";
}

// Bytes that differ from each other, not all of them numbers.
cv::Mat Filled(int rows, int cols, int type) {
  cv::Mat raster(rows, cols, type);
  const std::size_t size = raster.total() * raster.elemSize();
  for (std::size_t i = 0; i < size; ++i) {
    raster.data[i] = static_cast<unsigned char>(i * 167 + 251);
  }
  return raster;
}

void ExpectSameBytes(const cv::Mat& a, const cv::Mat& b) {
  ASSERT_EQ(a.size(), b.size());
  ASSERT_EQ(a.type(), b.type());
  for (int row = 0; row < a.rows; ++row) {
    if (a.cols == 0) break;
    ASSERT_EQ(std::memcmp(a.ptr(row), b.ptr(row), static_cast<std::size_t>(a.cols) * a.elemSize()),
              0)
        << row;
  }
}

TEST(VemJsonRaster, ImagesTellSizeChannelsAndDepth) {
  unsigned char pixels[] = {0, 1, 2, 253, 254, 255};
  const VemImage image(pixels, 0, 1, 2, 3, VemImageType8U);
  EXPECT_EQ(vem::to_json(image).dump(),
            R"({"channels":3,"class":"VemImage","depth":"8U","height":1,"pixels":"AAEC/f7/",)"
            R"("version":1,"width":2})");
}

TEST(VemJsonRaster, EveryDepthAndChannelCountComesBack) {
  for (int depth = 0; depth < 7; ++depth) {
    for (int channels : {1, 2, 3, 4, 5, 512}) {
      for (int width = 1; width < 5; ++width) {
        SCOPED_TRACE(testing::Message() << depth << ' ' << channels << ' ' << width);
        VemImage image;
        image.Mat() = Filled(3, width, CV_MAKETYPE(depth, channels));
        ExpectSameBytes(Again(image).Mat(), image.Mat());
        const VemFeatureDescriptor numbers(image.Mat());
        const VemFeatureDescriptor again = Again(numbers);
        ExpectSameBytes(vem::parts(again), image.Mat());
      }
    }
  }
}

TEST(VemJsonRaster, PartsOfAnImageAreWrittenAlone) {
  const cv::Mat whole = Filled(9, 11, CV_8UC3);
  VemImage image;
  image.Mat() = whole(cv::Rect(2, 3, 5, 4));
  const VemImage again = Again(image);
  ExpectSameBytes(again.Mat(), image.Mat());
  EXPECT_TRUE(again.Mat().isContinuous());
}

TEST(VemJsonRaster, EmptyImagesComeBack) {
  EXPECT_EQ(vem::to_json(VemImage()).dump(),
            R"({"channels":1,"class":"VemImage","depth":"8U","height":0,"pixels":"",)"
            R"("version":1,"width":0})");
  EXPECT_EQ(Again(VemImage()).Width(), 0);
  EXPECT_EQ(Again(VemImage()).ImageData(), nullptr);
  // A cleared matrix keeps its type.
  VemMatrix matrix(2, 3, VemMatrixType64F);
  matrix.Clear();
  EXPECT_EQ(Again(matrix).Type(), VemMatrixType64F);
  EXPECT_EQ(Again(matrix).Rows(), 0);
  VemImage wide;
  wide.Mat() = cv::Mat(0, 7, CV_16UC2);
  EXPECT_EQ(Again(wide).Width(), 7);
  EXPECT_EQ(Again(wide).Channels(), 2);
}

TEST(VemJsonRaster, MatricesKeepTheirNumbers) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  double numbers[] = {-0.0, 0.1, nan, std::numeric_limits<double>::infinity(), 5e-324, -1};
  const VemMatrix matrix(numbers, 2, 3, VemMatrixType64F);
  const VemMatrix again = Again(matrix);
  EXPECT_EQ(again.Rows(), 2);
  EXPECT_EQ(again.Cols(), 3);
  EXPECT_EQ(std::memcmp(again.MatrixData(), numbers, sizeof numbers), 0);
}

TEST(VemJsonRaster, MatricesHaveOneChannel) {
  VemMatrix matrix;
  matrix.Mat() = cv::Mat(1, 1, CV_8UC3, cv::Scalar::all(7));
  EXPECT_THROW(vem::to_json(matrix), std::invalid_argument);
  nlohmann::json document = vem::to_json(VemMatrix(1, 1, VemMatrixType8U));
  document["channels"] = 3;
  document["pixels"] = "AAAA";
  EXPECT_THROW(vem::from_json<VemMatrix>(document), vem::json_error);
}

TEST(VemJsonRaster, ArraysComeBack) {
  VemImageArray images;
  VemImage image;
  images.Append(image);
  image.Mat() = Filled(2, 3, CV_16UC3);
  images.Append(image);
  const VemImageArray imagesAgain = Again(images);
  ASSERT_EQ(imagesAgain.Length(), 2);
  EXPECT_EQ(imagesAgain[0].Width(), 0);
  ExpectSameBytes(imagesAgain[1].Mat(), image.Mat());

  VemMatrixArray matrices;
  VemMatrix matrix;
  matrix.Mat() = Filled(3, 2, CV_32S);
  matrices.Append(matrix);
  const VemMatrixArray matricesAgain = Again(matrices);
  ASSERT_EQ(matricesAgain.Length(), 1);
  ExpectSameBytes(matricesAgain[0].Mat(), matrix.Mat());
}

TEST(VemJsonRaster, WhatIsNoRasterIsNotWritten) {
  const int sizes[] = {2, 2, 2};
  VemImage image;
  image.Mat() = cv::Mat(3, sizes, CV_8U);
  EXPECT_THROW(vem::to_json(image), std::invalid_argument);
}

struct Fault {
  const char* fields;
  const char* message;
};

TEST(VemJsonRaster, SizesMustAgreeWithThePixels) {
  const char* size = "/pixels: expected as many bytes as width, height, channels and depth tell";
  const Fault faults[] = {
      {R"("width":1,"height":1,"channels":1,"depth":"8U","pixels":"AA==")", "no error"},
      {R"("width":2,"height":1,"channels":1,"depth":"8U","pixels":"AA==")", size},
      {R"("width":1,"height":1,"channels":1,"depth":"8U","pixels":"")", size},
      {R"("width":0,"height":1,"channels":1,"depth":"8U","pixels":"AA==")", size},
      {R"("width":0,"height":2147483647,"channels":512,"depth":"64F","pixels":"")", "no error"},
      {R"("width":2147483647,"height":0,"channels":512,"depth":"64F","pixels":"")", "no error"},
      {R"("width":2147483647,"height":2147483647,"channels":512,"depth":"64F","pixels":"AAAA")",
       size},
      // 2^30 * 2^30 * 4 * 4 bytes are 0 in 64 bits.
      {R"("width":1073741824,"height":1073741824,"channels":4,"depth":"32F","pixels":"")", size},
      {R"("width":-1,"height":-1,"channels":1,"depth":"8U","pixels":"AA==")",
       "/width: expected an integer from 0 to 2147483647"},
      {R"("width":1,"height":1,"channels":0,"depth":"8U","pixels":"AA==")",
       "/channels: expected an integer from 1 to 512"},
      {R"("width":1,"height":1,"channels":513,"depth":"8U","pixels":"AA==")",
       "/channels: expected an integer from 1 to 512"},
      {R"("width":1,"height":1,"channels":1,"depth":"16F","pixels":"AAA=")",
       "/depth: expected \"8U\", \"8S\", \"16U\", \"16S\", \"32S\", \"32F\" or \"64F\""},
      {R"("width":1,"height":1,"channels":1,"depth":0,"pixels":"AA==")",
       "/depth: expected \"8U\", \"8S\", \"16U\", \"16S\", \"32S\", \"32F\" or \"64F\""},
      {R"("width":1,"height":1,"channels":1,"depth":"8U","pixels":[0])",
       "/pixels: expected bytes in base64"},
      {R"("width":1,"height":1,"channels":1,"depth":"8U","pixels":"A-==")",
       "/pixels: expected base64"},
  };
  for (const Fault& fault : faults) {
    const std::string document = std::string(R"({"version":1,)") + fault.fields + "}";
    EXPECT_EQ(Message<VemImage>(document), fault.message) << document;
  }
}

// --- Morphology structures ---

struct Element {
  int rows;
  int cols;
  int anchorX;
  int anchorY;
  VemMorphStructureType type;
  int* table;
};

Element Told(VemMorphStructure& structure) {
  Element e = {};
  structure.QueryInfo(&e.rows, &e.cols, &e.anchorX, &e.anchorY, &e.type, &e.table);
  return e;
}

TEST(VemJsonMorph, CustomStructuresKeepEveryValue) {
  VemMorphStructure structure;
  int values[] = {1, -2, 3, 2147483647, 0, -2147483647 - 1};
  structure.CreateElement(2, 3, -1, 1, VemMorphStructureCustom, values);
  const json document = vem::to_json(structure);
  EXPECT_EQ(document.dump(),
            R"({"anchor_x":-1,"anchor_y":1,"class":"VemMorphStructure","cols":3,"rows":2,"type":3,)"
            R"("values":[1,-2,3,2147483647,0,-2147483648],"version":1})");
  VemMorphStructure again;
  vem::from_json(document, again);
  const Element e = Told(again);
  EXPECT_EQ(e.rows, 2);
  EXPECT_EQ(e.cols, 3);
  EXPECT_EQ(e.anchorX, -1);
  EXPECT_EQ(e.anchorY, 1);
  EXPECT_EQ(e.type, VemMorphStructureCustom);
  EXPECT_EQ(std::vector<int>(e.table, e.table + 6), std::vector<int>(values, values + 6));

  VemMorphStructure made = vem::from_json<VemMorphStructure>(document);
  const Element m = Told(made);
  EXPECT_EQ(std::vector<int>(m.table, m.table + 6), std::vector<int>(values, values + 6));
}

TEST(VemJsonMorph, OtherStructuresComeBack) {
  VemMorphStructure structure;
  EXPECT_EQ(vem::to_json(Again(structure)), vem::to_json(structure));
  structure.CreateElement(2147483647, 2147483647, 5, 6, static_cast<VemMorphStructureType>(77),
                          nullptr);
  VemMorphStructure again = Again(structure);
  const Element e = Told(again);
  EXPECT_EQ(e.rows, 2147483647);
  EXPECT_EQ(e.anchorX, 5);
  EXPECT_EQ(e.type, 77);
}

TEST(VemJsonMorph, ALostTableIsNull) {
  VemMorphStructure structure;
  int values[] = {1, 2};
  structure.CreateElement(1, 2, 0, 0, VemMorphStructureCustom, values);
  structure.CreateElement(3, 3, 0, 0, VemMorphStructureCustom, nullptr);
  EXPECT_TRUE(vem::to_json(structure)["values"].is_null());
  EXPECT_EQ(vem::to_json(Again(structure)), vem::to_json(structure));
}

TEST(VemJsonMorph, FaultsAreTold) {
  const Fault faults[] = {
      {R"("rows":1,"cols":2,"anchor_x":0,"anchor_y":0,"type":3,"values":[1,2])", "no error"},
      {R"("rows":1,"cols":2,"anchor_x":0,"anchor_y":0,"type":3,"values":[1])",
       "/values: expected rows * cols integers"},
      {R"("rows":2147483647,"cols":2147483647,"anchor_x":0,"anchor_y":0,"type":3,"values":[1])",
       "/values: expected rows * cols integers"},
      {R"("rows":1,"cols":2,"anchor_x":0,"anchor_y":0,"type":3,"values":[1,2.0])",
       "/values/1: expected an integer"},
      {R"("rows":1,"cols":2,"anchor_x":0,"anchor_y":0,"type":3)", "/values: is missing"},
      {R"("rows":1,"cols":2,"anchor_x":0,"anchor_y":0,"type":0,"values":[1,2])",
       "/values: is no field of this object"},
      {R"("rows":0,"cols":0,"anchor_x":0,"anchor_y":0,"type":3,"values":[])",
       "/rows: expected an integer above 0"},
      {R"("rows":1,"cols":0,"anchor_x":0,"anchor_y":0,"type":0)",
       "/cols: expected an integer above 0"},
      {R"("rows":1,"cols":2,"anchor_x":2,"anchor_y":0,"type":0)",
       "/anchor_x: expected a column of the structure"},
      {R"("rows":1,"cols":2,"anchor_x":0,"anchor_y":1,"type":0)",
       "/anchor_y: expected a row of the structure"},
      {R"("rows":1,"cols":2,"anchor_x":-2,"anchor_y":0,"type":0)",
       "/anchor_x: expected an integer from -1 to 2147483647"},
  };
  for (const Fault& fault : faults) {
    const std::string document = std::string(R"({"version":1,)") + fault.fields + "}";
    EXPECT_EQ(Message<VemMorphStructure>(document), fault.message) << document;
  }
}

}  // namespace
