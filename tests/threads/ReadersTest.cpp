#include <atomic>
#include <cstddef>
#include <cstring>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

#include "VemData.h"
#include "support/Files.h"

// One object of every kind, read from several threads at once. The thread sanitizer watches.

namespace {

constexpr int kThreads = 4;
constexpr int kRounds = 100;

// Reads on every thread, and tells whether every reading went right.
testing::AssertionResult ReadTogether(const std::function<bool()>& reading) {
  std::atomic<int> right{0};
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([&] {
      for (int round = 0; round < kRounds; ++round) right += reading() ? 1 : 0;
    });
  }
  for (std::thread& thread : threads) thread.join();
  if (right == kThreads * kRounds) return testing::AssertionSuccess();
  return testing::AssertionFailure() << right << " of " << kThreads * kRounds << " went right";
}

VemPointArray Corners() {
  VemPointArray points;
  for (VemPoint point : {VemPoint(2, 1), VemPoint(30, 4), VemPoint(25, 28), VemPoint(3, 20)}) {
    points.Append(point);
  }
  return points;
}

VemContour Outline() {
  VemPointArray points = Corners();
  VemContour contour;
  contour.FromPointArray(points);
  return contour;
}

VemRegion Pixels() {
  VemPointArray points = Corners();
  return VemRegion(40, 30, points);
}

VemImage Picture(int value) {
  const std::vector<unsigned char> bytes(48, static_cast<unsigned char>(value));
  return VemImage(const_cast<unsigned char*>(bytes.data()), 24, 2, 8, 3, VemImageType8U);
}

// An array of two copies of an element, seen as one that may only be read.
template <typename Array, typename Element>
Array TwoOf(Element element) {
  Array array;
  array.Append(element);
  array.Append(element);
  return array;
}

TEST(Readers, OfValues) {
  const VemVar number(3.75);
  const VemVar whole(7);
  const VemVar text("shared");
  EXPECT_TRUE(ReadTogether([&] {
    const VemVar copy(text);
    return number.I() == 3 && number.L() == 3 && number.D() == 3.75 && number.F() == 3.75f &&
           whole.I() == 7 && whole.ValType() == VemVarLong && copy == text && number != whole &&
           std::strcmp(text.S(), "shared") == 0 && (number + number).D() == 7.5;
  }));
}

TEST(Readers, OfValueArrays) {
  VemVarArray array(VemVarArray("three") + VemVarArray(3) + VemVarArray(2.5));
  const VemVarArray& constant = array;
  const auto table = TwoOf<Vem2DVarArray>(array);
  EXPECT_TRUE(ReadTogether([&] {
    VemVar out;
    constant.Select(0, &out);
    VemVarArray row;
    table.Select(1, &row);
    return constant.Length() == 3 && std::strcmp(out.S(), "three") == 0 && constant[1].I() == 3 &&
           array[2].D() == 2.5 && array.IndexOf(VemVar(3)) == 1 &&
           (constant + constant).Length() == 6 && row == constant && table[0] == constant &&
           table.Length() == 2;
  }));
}

TEST(Readers, OfPoints) {
  VemPointArray points = Corners();
  const VemPointArray& constant = points;
  const auto space = TwoOf<Vem3DPointArray>(Vem3DPoint(1, 2, 3));
  VemLine line(0, 0, 3, 4);
  VemCircle circle(1, 2, 3);
  EXPECT_TRUE(ReadTogether([&] {
    const VemPointArray copy(constant);
    VemPoint point, middle;
    constant.Select(1, &point);
    line.MidPoint(&middle);
    return copy.Length() == 4 && point.x == 30 && points[3].y == 20 && constant[0].y == 1 &&
           space.Length() == 2 && space[1].z == 3 && line.Length() == 5 && middle.y == 2 &&
           line.VerticalAngle() > 36 && line.HorizonalAngle() > 53 && circle.Area() > 28 &&
           circle.Perimeter() > 18;
  }));
}

TEST(Readers, OfContours) {
  VemContour contour = Outline();
  const auto array = TwoOf<VemContourArray>(contour);
  const double perimeter = contour.Perimeter();
  const double area = contour.Area();
  EXPECT_TRUE(ReadTogether([&] {
    const VemContour copy(contour);
    VemPointArray points;
    contour.ToPointArray(&points);
    VemContour selected;
    array.Select(1, &selected);
    return copy.Length() == 4 && points.Length() == 4 && contour.Perimeter() == perimeter &&
           contour.Area() == area && selected.Area() == area && array[0].Length() == 4 &&
           array.Length() == 2;
  }));
}

TEST(Readers, OfImages) {
  VemImage image = Picture(9);
  const auto array = TwoOf<VemImageArray>(image);
  EXPECT_TRUE(ReadTogether([&] {
    VemImage copy(image);
    VemImage deep = image.DeepCopy();
    VemImage shallow = image.ShallowCopy();
    VemImage selected;
    array.Select(1, &selected);
    VemImage read = array[0];
    return image.Width() == 8 && image.Height() == 2 && image.Step() == 24 &&
           image.Channels() == 3 && image.BitDepth() == VemImageType8U &&
           image.ImageData()[5] == 9 && copy.ImageData() == image.ImageData() &&
           deep.ImageData() != image.ImageData() && shallow.ImageData()[1] == 9 &&
           selected.ImageData()[2] == 9 && read.ImageData()[3] == 9 && array.Length() == 2;
  }));
}

TEST(Readers, OfMatrices) {
  VemMatrix matrix(2, 3, VemMatrixType32F);
  matrix.SetTo(1.5);
  const auto array = TwoOf<VemMatrixArray>(matrix);
  const VemFeatureDescriptor descriptor(matrix.Mat());
  EXPECT_TRUE(ReadTogether([&] {
    VemVar value;
    matrix.Select(1, 2, &value);
    const VemMatrix copy(matrix);
    const VemMatrix deep = matrix.DeepCopy();
    const VemMatrix read = array[1];
    VemFeatureDescriptor numbers(descriptor);
    return value.D() == 1.5 && matrix.Rows() == 2 && copy.MatrixData() == matrix.MatrixData() &&
           deep.Cols() == 3 && read.Type() == VemMatrixType32F && array.Length() == 2 &&
           numbers.Row() == 2 && numbers.Col() == 3 && numbers.MatData() != nullptr;
  }));
}

TEST(Readers, OfMorphStructures) {
  std::vector<int> table(15, 7);
  VemMorphStructure structure;
  ASSERT_EQ(structure.CreateElement(3, 5, 2, 1, VemMorphStructureCustom, table.data()), 0);
  EXPECT_TRUE(ReadTogether([&] {
    const VemMorphStructure copy(structure);
    int rows = 0, cols = 0, anchorX = 0, anchorY = 0;
    VemMorphStructureType type = VemMorphStructureUnset;
    int* values = nullptr;
    structure.QueryInfo(&rows, &cols, &anchorX, &anchorY, &type, &values);
    return rows == 3 && cols == 5 && type == VemMorphStructureCustom && values[14] == 7;
  }));
}

TEST(Readers, OfRegions) {
  VemRegion region = Pixels();
  auto array = TwoOf<VemRegionArray>(region);
  const VemRegionArray& constant = array;
  EXPECT_TRUE(ReadTogether([&] {
    const VemRegion copy(region);
    VemVarArray rows, firstColumns, lastColumns;
    region.GetRegionRuns(&rows, &firstColumns, &lastColumns);
    VemRegion selected, all;
    array.Select(1, &selected);
    array.Union(&all);
    return copy.Width() == 40 && rows.Length() == 4 && lastColumns[0].I() == 2 &&
           selected.Height() == 30 && all.Width() == 40 && constant[0].Width() == 40 &&
           constant.Length() == 2;
  }));
}

// Every shape in both forms of masks, and the way to a raster and back.
TEST(Readers, OfRegionsOfInterest) {
  VemPoint center(60, 50), corner(90, 80);
  VemPointArray points = Corners();
  std::vector<VemROI> rois(9);
  rois[0].GenRect1(center, corner);
  rois[1].GenCircle(center, 12);
  rois[2].GenTorus(center, 20, 40, 30, 200);
  rois[3].GenRect2(center, 30, 20, 25);
  rois[4].GenLine(center, corner);
  rois[5].GenEllipse(center, 30, 20, 25);
  rois[6].GenArc(center, 30, 20, 250);
  rois[7].GenPolygon(points);
  rois[8].GenIrregular(points);
  const auto array = TwoOf<VemROIArray>(rois[2]);
  const auto measure = [](const VemROI& roi) {
    VemVarArray rows, firstColumns, lastColumns;
    VemContourArray contours;
    int width = 0, height = 0;
    roi.GetMask(&rows, &firstColumns, &lastColumns, &width, &height);
    int sum = rows.Length() + 1000 * width;
    roi.GetMask(&contours, &width, &height);
    for (int i = 0; i < contours.Length(); ++i) sum += contours[i].Length();
    return sum + 1000000 * height;
  };
  std::vector<int> expected;
  for (const VemROI& roi : rois) expected.push_back(measure(roi));
  EXPECT_TRUE(ReadTogether([&] {
    bool right = array.Length() == 2 && array[1].ROIType() == VemROITorus;
    for (std::size_t i = 0; i < rois.size(); ++i) {
      const VemROI copy(rois[i]);
      right = right && measure(rois[i]) == expected[i] && copy.ROIType() == rois[i].ROIType();
    }
    VemPoint read;
    double radius = 0;
    return right && rois[1].GetCircle(&read, &radius) && radius == 12;
  }));
}

TEST(Readers, OfMaskRasters) {
  VemROI roi;
  VemPoint center(60, 50);
  roi.GenTorus(center, 20, 40, 30, 200);
  VemVarArray rows, firstColumns, lastColumns;
  VemContourArray contours;
  int width = 0, height = 0;
  ASSERT_TRUE(roi.GetMask(&rows, &firstColumns, &lastColumns, &width, &height));
  ASSERT_TRUE(roi.GetMask(&contours, &width, &height));
  IVemROIPara para;
  cv::Mat raster = para.ToMAT(rows, firstColumns, lastColumns, width, height);
  cv::Mat painted = para.ToMAT(contours, width, height);
  const int pixels = cv::countNonZero(raster);
  EXPECT_TRUE(ReadTogether([&] {
    VemVarArray r, f, l;
    VemContourArray outlines;
    int w = 0, h = 0;
    para.MatToMask(raster, &r, &f, &l, &w, &h);
    para.MatToMask(painted, &outlines, &w, &h);
    const cv::Mat again = para.ToMAT(contours, width, height);
    return r.Length() == rows.Length() && outlines.Length() == 1 && w == width && h == height &&
           cv::countNonZero(para.ToMAT(rows, firstColumns, lastColumns, width, height)) == pixels &&
           cv::norm(again, painted, cv::NORM_INF) == 0;
  }));
}

TEST(Readers, OfOverlays) {
  VemPoint center(60, 50);
  VemVar name("Mono");
  VemFont font(name, 12);
  VemImage image = Picture(5);
  VemRegion region = Pixels();
  VemPointArray points = Corners();
  VemOverlay circle, text, picture, pixels, polygon;
  circle.GenCircle(center, 12);
  text.GenText(center, "written", font);
  picture.GenImage(center, image);
  pixels.GenRegion(region);
  polygon.GenPolygon(points);
  VemOverlayPath path;
  for (VemOverlay* overlay : {&circle, &text, &picture, &pixels, &polygon}) {
    path.AddOverlay(*overlay);
  }
  const VemOverlayPath& constant = path;
  EXPECT_TRUE(ReadTogether([&] {
    VemPoint place;
    double radius = 0;
    VemVar words;
    VemFont used;
    VemImage shown;
    VemRegion covered;
    VemPointArray corners;
    long c0 = 0, c1 = 0, c2 = 0, width = 0;
    const VemOverlay copy(picture);
    circle.GetPen(&c0, &c1, &c2, &width);
    VemOverlay element = constant[4];
    return circle.GetCircle(&place, &radius) && radius == 12 &&
           text.GetText(&place, &words, &used) && used.Size == 12 &&
           std::strcmp(words.S(), "written") == 0 && picture.GetImage(&place, &shown) &&
           shown.ImageData()[7] == 5 && pixels.GetRegion(&covered) && covered.Width() == 40 &&
           polygon.GetPolygon(&corners) && corners.Length() == 4 && c2 == 255 &&
           path[1].OverlayType() == VemOverlayText && constant.Length() == 5 &&
           element.OverlayType() == VemOverlayPolygon;
  }));
}

template <typename Array, typename Code>
void ExpectReadableCodes() {
  Code code;
  const auto array = TwoOf<Array>(code);
  EXPECT_TRUE(ReadTogether([&] {
    const Code copy(code);
    Code selected;
    array.Select(1, &selected);
    const Array another(array);
    return array.Length() == 2 && another.Length() == 2;
  }));
}

TEST(Readers, OfCodes) {
  ExpectReadableCodes<Vem1DCodeArray, Vem1DCode>();
  ExpectReadableCodes<VemDMCodeArray, VemDMCode>();
  ExpectReadableCodes<VemQRCodeArray, VemQRCode>();
  ExpectReadableCodes<VemPDF417CodeArray, VemPDF417Code>();
  ExpectReadableCodes<VemVCodeArray, VemVCode>();
}

TEST(Readers, OfFeaturePoints) {
  const auto array = TwoOf<VemFeaturePointArray>(VemFeaturePoint(1, 2, 3, 4, 5, 6, 7));
  EXPECT_TRUE(ReadTogether([&] {
    VemFeaturePoint point;
    array.Select(1, &point);
    return point.IntValue == 6 && array[0].y == 2 && array.Length() == 2;
  }));
}

TEST(Readers, OfScratches) {
  VemVar label("scratch");
  VemScratchGroup group(label);
  for (int key = 0; key < 5; ++key) group.Append({1, 2, key, 3});
  VemScratchLayer layer;
  layer.Append(group);
  VemScratchLayerArray layers;
  layers.Append(layer);
  const VemScratchLayerArray& constant = layers;
  EXPECT_TRUE(ReadTogether([&] {
    const VemScratchLayerArray copy(constant);
    const VemScratchGroup& read = constant[0][0];
    return copy[0].GetGroupNum() == 1 && constant.GetLayerNum() == 1 && read[4].SortKey == 4 &&
           read.GetFeatureNum() == 5 && std::strcmp(copy[0][0].Label.S(), "scratch") == 0 &&
           layers[0][0][3].SortKey == 3 && constant[0].Settings.Param3 == 255;
  }));
}

TEST(Readers, OfFiles) {
  const TemporaryFolder folder;
  const std::string shared = folder / "shared.bmp";
  VemImage image = Picture(40);
  ASSERT_TRUE(image.SaveImage(shared.c_str()));
  std::atomic<int> next{0};
  EXPECT_TRUE(ReadTogether([&] {
    VemImage read, wide;
    const std::string own = folder / std::to_string(next++) + ".bmp";
    return read.ReadImage(shared.c_str()) && wide.ReadImage(Widen(shared).c_str()) &&
           read.ImageData()[9] == 40 && wide.Width() == 8 && image.SaveImage(own.c_str()) &&
           image.SaveImage(Widen(own).c_str()) && !read.SaveImage((folder / "no/a.bmp").c_str());
  }));
}

}  // namespace
