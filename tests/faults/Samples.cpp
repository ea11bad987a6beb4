#include "faults/Samples.h"

#include <string>

#include <opencv2/core.hpp>

namespace {

VemVar Text(int number) {
  return VemVar(("a text that needs a block of its own, " + std::to_string(number)).c_str());
}

}  // namespace

VemVarArray Numbers(const std::vector<int>& values) {
  VemVarArray array;
  for (const int value : values) array.Append(value);
  return array;
}

VemPointArray Points(const std::vector<VemPoint>& points) {
  VemPointArray array;
  for (VemPoint point : points) array.Append(point);
  return array;
}

template <>
VemVar Sample(int number) {
  return Text(number);
}
template <>
VemVarArray Sample(int number) {
  VemVarArray array;
  array.Append(number);
  array.Append(Text(number));
  array.Append(0.5 * number);
  array.Append(Text(-number));
  return VemVarArray(array);
}
template <>
VemPoint Sample(int number) {
  return VemPoint(number, -number);
}
template <>
Vem3DPoint Sample(int number) {
  return Vem3DPoint(number, -number, 0.5);
}
template <>
VemContour Sample(int number) {
  VemPointArray points = ArrayOf<VemPointArray>(3 + number % 3, number);
  VemContour contour;
  contour.FromPointArray(points);
  return contour;
}
template <>
VemImage Sample(int number) {
  cv::Mat pixels(3, 4 + number % 3, CV_8UC3, cv::Scalar(number, 2, 3));
  VemImage image;
  image.Mat() = pixels;
  return image.DeepCopy();
}
template <>
VemMatrix Sample(int number) {
  VemMatrix matrix(2, 3 + number % 2, VemMatrixType64F);
  matrix.SetTo(VemVar(number));
  return matrix.DeepCopy();
}
template <>
VemRegion Sample(int number) {
  VemVarArray rows, firstColumns, lastColumns;
  for (int i = 0; i <= number % 4; ++i) {
    rows.Append(number + i);
    firstColumns.Append(i);
    lastColumns.Append(number + 2 * i);
  }
  return VemRegion(rows, firstColumns, lastColumns);
}
template <>
VemROI Sample(int number) {
  VemROI roi;
  VemPointArray points = Points({{1.0 * number, 2}, {9, 3}, {5, 12}, {2, 7}});
  roi.GenPolygon(points);
  return roi;
}
template <>
VemFeaturePoint Sample(int number) {
  VemFeaturePoint point(1, 2, 3, 4, 5, number, 7);
  point.ValueF = 6;
  return point;
}

namespace {

template <typename Record>
void SetWords(Record& record, int number) {
  record.Number = number;
  record.Word0 = record.Word1 = record.Word2 = record.Word3 = record.Word4 = record.Word5 = 5;
}

template <typename Record>
void SetSymbol(Record& record, int number) {
  SetWords(record, number);
  record.Value = Text(number);
  record.Value3 = Text(3 * number);
  record.Count0 = record.Count1 = record.Count2 = number;
  record.Real0 = record.Real1 = 0.5;
  record.Points0 = ArrayOf<VemPointArray>(2, number);
  record.Points2 = ArrayOf<VemPointArray>(3, number);
}

}  // namespace

template <>
Vem1DCode Sample(int number) {
  Vem1DCode code;
  SetWords(code, number);
  code.Word6 = code.Word7 = 7;
  code.Value = Text(number);
  code.Points = ArrayOf<VemPointArray>(4, number);
  return code;
}
template <>
VemDMCode Sample(int number) {
  VemDMCode code;
  SetSymbol(code, number);
  return code;
}
template <>
VemQRCode Sample(int number) {
  VemQRCode code;
  SetSymbol(code, number);
  code.Count3 = 3;
  code.Word6 = 6;
  return code;
}
template <>
VemPDF417Code Sample(int number) {
  VemPDF417Code code;
  SetWords(code, number);
  code.Value = Text(number);
  code.Count0 = code.Count1 = code.Count2 = number;
  code.Real0 = code.Real1 = code.Real2 = 0.5;
  code.Points = ArrayOf<VemPointArray>(4, number);
  return code;
}
template <>
VemVCode Sample(int number) {
  VemVCode code;
  code.Count0 = code.Count1 = code.Count2 = number;
  code.Real0 = code.Real1 = code.Real2 = 0.5f;
  code.Value0 = Text(number);
  code.Value3 = Text(-number);
  code.Points = ArrayOf<VemPointArray>(4, number);
  return code;
}
template <>
VemScratchFeature Sample(int number) {
  return {1, 2, number, 4};
}
template <>
VemScratchGroup Sample(int number) {
  VemVar label = Text(number);
  VemScratchGroup group(label);
  for (int i = 0; i < 3; ++i) {
    group.Append({1, 2, (number + 7 * i) % 10, static_cast<std::uint32_t>(i)});
  }
  return group;
}
template <>
VemScratchLayer Sample(int number) {
  VemScratchLayer layer(VemScratchPrecessing{number, 1.5f, 2, 3, 4, 5});
  for (int i = 0; i < 3; ++i) layer.Append(Sample<VemScratchGroup>(number + i));
  return layer;
}
template <>
VemScratchLayerArray Sample(int number) {
  VemScratchLayerArray array;
  for (int i = 0; i < 2; ++i) {
    VemScratchLayer layer = Sample<VemScratchLayer>(number + i);
    array.Append(layer);
  }
  return array;
}
template <>
VemFont Sample(int number) {
  VemVar name = Text(number);
  return VemFont(name, number);
}
template <>
VemMorphStructure Sample(int number) {
  int table[] = {number, 1, 0, 1, 1, 1};
  VemMorphStructure structure;
  structure.CreateElement(2, 3, 1, 1, VemMorphStructureCustom, table);
  return structure;
}
template <>
VemFeatureDescriptor Sample(int number) {
  return VemFeatureDescriptor(cv::Mat(2, 5, CV_8UC1, cv::Scalar(number)));
}

VemRegion OutlinedRegion(int number) {
  VemRegion plain = Sample<VemRegion>(number);
  IVemRegionArrayPara para;
  para.Append(plain);
  std::vector<std::vector<cv::Point>> contours = {{{0, 0}, {3, 0}, {3, 3}}, {{1, 1}}};
  std::vector<cv::Vec4i> hierarchy = {{-1, -1, 1, -1}, {-1, -1, -1, 0}};
  para.Append(contours, hierarchy, true);
  para.Select(0, plain);
  return plain;
}

template <>
IVemRegionArrayPara Sample(int number) {
  IVemRegionArrayPara para;
  for (int i = 0; i < 3; ++i) {
    VemRegion region = OutlinedRegion(number + i);
    para.Append(region);
  }
  return IVemRegionArrayPara(para);
}

VemROI Mask() {
  VemVarArray rows = Numbers({1, 2, 4});
  VemVarArray firstColumns = Numbers({0, 3, 2});
  VemVarArray lastColumns = Numbers({5, 4, 6});
  VemROI roi;
  roi.GenMask(rows, firstColumns, lastColumns, 8, 6);
  return roi;
}

template <>
VemOverlay Sample(int number) {
  VemPoint point(number, 2);
  VemFont font = Sample<VemFont>(number);
  VemOverlay overlay;
  overlay.GenText(point, "what the overlay says, at some length", font);
  return overlay;
}

VemOverlay ImageOverlay() {
  VemPoint point(1, 2);
  VemImage image = Sample<VemImage>(1);
  VemOverlay overlay;
  overlay.GenImage(point, image);
  VemRegion region = Sample<VemRegion>(2);
  overlay.GenRegion(region);
  return overlay;
}

VemOverlayPath Path() {
  VemOverlayPath path;
  VemOverlay text = Sample<VemOverlay>(1);
  VemOverlay image = ImageOverlay();
  path.AddOverlay(text);
  path.AddOverlay(image);
  return VemOverlayPath(path);
}
