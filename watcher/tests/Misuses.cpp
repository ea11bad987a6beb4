#include "watcher/tests/Misuses.h"

#include <limits>
#include <vector>

#include <opencv2/core.hpp>

#include "VemData.h"
#include "VemRegionData.h"
#include "watcher/tests/Child.h"

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr long kSmallest = std::numeric_limits<long>::min();

const volatile void* volatile g_place;
volatile double g_number;  // Without a use of what it gives, a call is none.

VemVarArray Numbers(int count) {
  VemVarArray numbers;
  for (int i = 0; i < count; ++i) numbers.Append(i);
  return numbers;
}

VemPointArray Points(int count) {
  VemPointArray points;
  VemPoint point(5, 5);
  for (int i = 0; i < count; ++i) points.Append(point);
  return points;
}

template <typename T>
void AssignToItself(T& object, T& itself) {
  object = itself;
}

void MisuseValues() {
  VemVar text("text");
  VemVar number(3);
  VemVar real(1.5);
  VemVar nothing;
  VemVar result;
  InChild([&] { AssignToItself(text, text); });
  InChild([&] { text.CopyCtrlVal(text); });
  InChild([] { VemVar(static_cast<const char*>(nullptr)); });
  g_number = text.F();
  g_number = nothing.D();
  static_cast<void>(number.S());
  static_cast<void>(real.S());
  static_cast<void>(nothing.S());
  result = text + number;
  result = number - real;
  result = number * nothing;
  result = text / number;
  result = real % real;
  result = number % real;
  result = text % number;
  result = nothing % number;
  InChild([&] { number / VemVar(0); });
  InChild([&] { VemVar(kSmallest) / VemVar(-1); });
  InChild([&] { number % nothing; });
}

/// What the arrays have in common. The array has one element.
template <typename Array, typename T>
void MisuseArray(Array& array, T& value) {
  array.Insert(array.Length() + 1, value);
  array.Remove(-1);
  array.Replace(1, value);
  array.Swap(7, 0);
  array.Swap(0, 8);
  array.Select(3, &value);
  InChild([&] { array.Select(0, nullptr); });
  InChild([&] { static_cast<const Array&>(array)[2]; });
}

template <typename Array, typename T>
void MisuseArray() {
  Array array;
  T value;
  array.Append(value);
  MisuseArray(array, value);
}

template <typename Array, typename T>
void MisuseArrayInPlace() {
  Array array;
  T value;
  array.Append(value);
  MisuseArray(array, value);
  g_place = &array[5];
  InChild([&] { array.Append(array[6]); });
}

template <typename Array>
void MisuseTexts(Array& array) {
  InChild([&] { array.Replace(0, array[0]); });
  InChild([&] { array.Swap(0, 0); });
  InChild([&] { array.Select(0, &array[0]); });
}

void MisuseValueArrays() {
  VemVarArray empty;
  g_place = &empty[5];
  Vem2DVarArray table;
  InChild([&] { table[3].Remove(0); });
  InChild([&] { empty.Select(0, &empty[6]); });
  MisuseArrayInPlace<VemVarArray, VemVar>();
  MisuseArrayInPlace<Vem2DVarArray, VemVarArray>();
  VemVarArray texts("text");
  MisuseTexts(texts);
  texts.IndexOf(VemVar(1), -1);
  InChild([] { VemVarArray(static_cast<const char*>(nullptr)); });
  MisuseInlined();
}

void MisuseTypedArrays() {
  MisuseArrayInPlace<VemPointArray, VemPoint>();
  MisuseArrayInPlace<Vem3DPointArray, Vem3DPoint>();
  MisuseArrayInPlace<VemFeaturePointArray, VemFeaturePoint>();
  MisuseArray<VemContourArray, VemContour>();
  MisuseArray<VemImageArray, VemImage>();
  MisuseArray<VemMatrixArray, VemMatrix>();
  MisuseArray<VemROIArray, VemROI>();
  MisuseArray<VemRegionArray, VemRegion>();

  VemImage image;
  VemImageArray images;
  images.Append(image);
  AssignToItself(images, images);
  VemMatrix matrix;
  VemMatrixArray matrices;
  matrices.Append(matrix);
  AssignToItself(matrices, matrices);
  VemROI roi;
  VemROIArray rois;
  rois.Append(roi);
  AssignToItself(rois, rois);
}

template <typename Array, typename Code>
void MisuseCodes(VemVar Code::*value) {
  MisuseArrayInPlace<Array, Code>();
  Code code;
  code.*value = VemVar("text");
  Array array;
  array.Append(code);
  MisuseTexts(array);
}

void MisuseResults() {
  MisuseCodes<Vem1DCodeArray>(&Vem1DCode::Value);
  MisuseCodes<VemDMCodeArray>(&VemDMCode::Value);
  MisuseCodes<VemPDF417CodeArray>(&VemPDF417Code::Value);
  MisuseCodes<VemQRCodeArray>(&VemQRCode::Value);
  MisuseCodes<VemVCodeArray>(&VemVCode::Value3);
}

template <typename List, typename T>
void MisuseScratch(T& value) {
  List list;
  InChild([&] { list.Insert(1, value); });
  InChild([&] { list.Remove(0); });
  InChild([&] { static_cast<const List&>(list)[0]; });
  InChild([&] { list[-1]; });
}

void MisuseScratches() {
  VemScratchFeature feature = {};
  MisuseScratch<VemScratchGroup>(feature);
  VemScratchGroup group;
  MisuseScratch<VemScratchLayer>(group);
  VemScratchLayer layer;
  MisuseScratch<VemScratchLayerArray>(layer);
}

void MisuseGeometry() {
  VemPoint point(5, 5);
  VemLine line(point, point);
  VemLine(1, 2, 1, 2);
  line.VerticalAngle();
  line.HorizonalAngle();
  InChild([&] { line.MidPoint(nullptr); });
  VemContour contour;
  InChild([&] { contour.ToPointArray(nullptr); });
}

void MisuseRasters() {
  unsigned char bytes[12] = {};
  VemImage(bytes, 2, 2, 2, 1, static_cast<VemImageType>(7));
  InChild([&] { VemImage(bytes, 0, 1, 1, 0, VemImageType8U); });
  VemImage image(bytes, 2, 2, 2, 1, VemImageType8U);
  image.CreateImage(bytes, 2, -2, 2, 1, VemImageType8U);
  image.CreateImage(bytes, 2, 2, -2, 1, VemImageType8U);
  image.CreateImage(bytes, 2, 2, 2, 2, VemImageType8U);
  image.CreateImage(bytes, 2, 2, 2, 1, static_cast<VemImageType>(-1));
  image.CreateImage(bytes, 3, 2, 2, 1, VemImageType8U);
  image.SaveImage("picture.tiff");
  image.SaveImage("picture.tiff", 3);
  image.SaveImage(L"picture.webp");
  image.SaveImage(L"picture.webp", 3);
  InChild([&] { image.SaveImage(static_cast<const char*>(nullptr)); });
  image.ReadImage(static_cast<const char*>(nullptr));
  image.ReadImage(static_cast<const wchar_t*>(nullptr));

  VemMatrix(bytes, 2, 2, static_cast<VemMatrixType>(7));
  VemMatrix(-1, 2, VemMatrixType8U);
  VemMatrix(2, -1, VemMatrixType8U);
  VemMatrix(2, 2, static_cast<VemMatrixType>(-1));
  VemMatrix matrix(2, 3, VemMatrixType8U);
  matrix.SetMatrix(0, 2, VemMatrixType8U);
  matrix.SetMatrix(2, 0, VemMatrixType8U);
  matrix.SetMatrix(2, 2, static_cast<VemMatrixType>(7));
  VemVar value(7);
  matrix.Replace(2, 0, value);
  matrix.Replace(0, 3, value);
  matrix.Select(-1, 0, &value);
  matrix.Select(0, -1, &value);
  VemVar text("text");
  matrix.Replace(0, 0, text);
  matrix.SetTo(text);
}

void MisuseMorphology() {
  int values[4] = {1, 2, 3, 4};
  const auto kCustom = VemMorphStructureCustom;
  VemMorphStructure structure;
  structure.CreateElement(0, 2, 0, 0, kCustom, values);
  structure.CreateElement(2, 0, 0, 0, kCustom, values);
  structure.CreateElement(2, 2, -2, 0, kCustom, values);
  structure.CreateElement(2, 2, 0, -2, kCustom, values);
  structure.CreateElement(2, 2, 0, 0, static_cast<VemMorphStructureType>(-1), values);
  structure.CreateElement(2, 2, 0, 2, kCustom, values);
  structure.CreateElement(2, 2, 2, 0, kCustom, values);
  structure.CreateElement(2, 2, 0, 0, kCustom, nullptr);
  structure.CreateElement(2, 2, 0, 0, VemMorphStructureUnset, values);
  structure.CreateElement(2, 2, 0, 0, kCustom, values);
  InChild([&] { AssignToItself(structure, structure); });
  InChild([&] {
    int number = 0;
    VemMorphStructureType type;
    int* table = nullptr;
    structure.QueryInfo(&number, &number, &number, &number, &type, &table);
    structure.CreateElement(2, 2, 0, 0, kCustom, table);
  });
  InChild([&] { structure.QueryInfo(nullptr, values, values, values, nullptr, nullptr); });
}

void MisuseRegions() {
  VemVarArray two = Numbers(2);
  VemVarArray three = Numbers(3);
  VemRegion(two, two, three);
  VemRegion(5, 5, two, three, two);
  VemRegion(0, 5, two, two, two);
  VemPointArray points;
  static_cast<void>(VemRegion(points));
  VemPoint left(0, 5);
  points.Append(left);
  static_cast<void>(VemRegion(points));
  VemPoint above(5, 0);
  points.Replace(0, above);
  static_cast<void>(VemRegion(points));
  VemRegion(5, 0, points);
  VemRegion region(two, two, two);
  InChild([&] { region.GetRegionRuns(&two, &two, nullptr); });

  IVemRegionArrayPara parts;
  parts.Insert(1, region);
  parts.Remove(0);
  parts.Replace(0, region);
  parts.Swap(0, 1);
  parts.Select(-1, region);
  std::vector<int> lists[2] = {{}, {1}};
  parts.Append(5, 5, lists[0], lists[1], lists[1]);
  parts.Append(5, 5, lists[1], lists[0], lists[1]);
  parts.Append(5, 5, lists[1], lists[1], lists[0]);
  IVemRegionArrayPara outlined;
  outlined.Append(region);
  outlined.Hierarchies.emplace_back(1);
  outlined.Contours.emplace_back(1);
  outlined.Select(0, region);
  parts.Append(5, 5, lists[1], lists[1], lists[1]);
  parts.Insert(1, region);
  std::vector<int> longer = {1, 2};
  parts.Append(5, 5, lists[1], lists[1], longer);
  std::vector<std::vector<cv::Point>> contours(2);
  std::vector<cv::Vec4i> hierarchy(1);
  parts.Append(contours, hierarchy, true);

  VemRegion uneven;
  uneven.SetRuns(three, two, two);
  parts.Append(uneven);
  parts.Append(uneven, true);
  parts.Insert(0, uneven);
  parts.Replace(0, uneven);
  VemRegionArray array;
  array.Append(uneven);
  array.Insert(0, uneven);
  array.Replace(0, uneven);
}

/// Of a region of interest and of its implementation object.
template <typename Roi>
void MisuseRoi(Roi& roi) {
  VemPoint p1(5, 5);
  VemPoint right(6, 5);
  VemPoint below(5, 6);
  roi.GenRect1(p1, below);
  roi.GenRect1(p1, right);
  roi.GenCircle(p1, kNaN);
  roi.GenTorus(p1, 0, 2, 0, 90);
  roi.GenTorus(p1, 2, 2, 0, 90);
  roi.GenTorus(p1, 1, 2, 0, -90);
  roi.GenRect2(p1, 0, 1, 0);
  roi.GenRect2(p1, 1, 0, 0);
  roi.GenLine(p1, p1);
  roi.GenEllipse(p1, 0, 1, 0);
  roi.GenEllipse(p1, 1, 0, 0);
  roi.GenArc(p1, 0, 0, 90);
  roi.GenArc(p1, 1, 0, -90);
  VemVarArray two = Numbers(2);
  VemVarArray three = Numbers(3);
  roi.GenPolygon(two, two);
  roi.GenPolygon(two, three);
  VemPointArray points = Points(2);
  roi.GenPolygon(points);
  roi.GenIrregular(points);
  roi.GenMask(two, two, two, 1, 5);
  roi.GenMask(two, two, three, 5, 5);
  VemContourArray contours;
  roi.GenMask(contours, 5, 1);

  int width = 0;
  int height = 0;
  roi.GenLine(p1, below);
  InChild([&] { roi.GetMask(&two, &two, &two, &width, &height); });
  InChild([&] { roi.GetMask(&contours, &width, nullptr); });
  InChild([&] { roi.GetLine(&p1, nullptr); });
}

void MisuseRois() {
  VemROI roi;
  MisuseRoi(roi);
  IVemROIPara parts;
  MisuseRoi(parts);
  VemPoint upper(5, -1);
  VemPoint lower(4, 2147483647);
  parts.GenLine(upper, lower);
  VemVarArray runs;
  int size = 0;
  InChild([&] { parts.GetMask(&runs, &runs, &runs, &size, &size); });
  VemVarArray one = Numbers(1);
  parts.ToMAT(one, one, runs, 2, 2);
  cv::Mat coloured(2, 2, CV_8UC3);
  parts.MatToMask(coloured, &runs, &runs, &runs, &size, &size);
  VemContourArray contours;
  parts.MatToMask(coloured, &contours, &size, &size);

  roi.GenMask(one, one, one, 5, 5);
  VemROIArray array;
  array.Append(roi);
  array.Select(0, &roi);
}

// Overlays, their implementation object and both paths name their generators by another verb.
#define VEM_MISUSE_GENERATORS(object, Verb) \
  (object).Verb##ArrowLine(p1, p1);         \
  (object).Verb##Line(p1, p1);              \
  (object).Verb##Rect1(p1, below);          \
  (object).Verb##Rect1(p1, right);          \
  (object).Verb##Circle(p1, 0);             \
  (object).Verb##Ellipse(p1, kNaN, 1, 0);   \
  (object).Verb##Ellipse(p1, 1, kNaN, 0);   \
  (object).Verb##Rect2(p1, 0, 1, 0);        \
  (object).Verb##Rect2(p1, 1, 0, 0);        \
  (object).Verb##Torus(p1, 0, 2, 0, 90);    \
  (object).Verb##Torus(p1, 2, 1, 0, 90);    \
  (object).Verb##Torus(p1, 1, 2, 0, kNaN);  \
  (object).Verb##Arc(p1, -1, 0, 90);        \
  (object).Verb##Arc(p1, 1, 0, -1);         \
  (object).Verb##Polygon(points);           \
  (object).Verb##PolyLine(points);          \
  (object).Verb##Irregular(points);         \
  InChild([&] { (object).Verb##Text(p1, nullptr, font); })

// An implementation object has no names of their own for rakes and spokes.
#define VEM_MISUSE_RAKES(object, Rect1, Rect2, Torus) \
  (object).Rect1(p1, right, 0, 2);                    \
  (object).Rect1(p1, both, 4, 2);                     \
  (object).Rect1(p1, both, 0, 1);                     \
  (object).Rect2(p1, 0, 1, 0, 0, 2);                  \
  (object).Rect2(p1, 1, 1, 0, -1, 2);                 \
  (object).Rect2(p1, 1, 1, 0, 3, 1);                  \
  (object).Torus(p1, 1, 1, 0, 90, 4, 2);              \
  (object).Torus(p1, 1, 2, 0, 90, 3, 2);              \
  (object).Torus(p1, 1, 2, 0, 90, 5, 1)

void MisuseOverlays() {
  VemPoint p1(5, 5);
  VemPoint right(6, 5);
  VemPoint below(5, 6);
  VemPoint both(6, 6);
  VemPointArray points = Points(2);
  VemFont font;

  VemOverlay overlay;
  VEM_MISUSE_GENERATORS(overlay, Gen);
  VEM_MISUSE_RAKES(overlay, GenRakeRect1, GenRakeRect2, GenSpokeTorus);
  VemROI mask;
  VemVarArray none;
  mask.GenMask(none, none, none, 5, 5);
  overlay.FromROI(mask);
  VemROI roi;
  overlay.FromROI(roi);
  overlay.GetPoint(&p1);
  VemImage image;
  overlay.GetImage(&p1, &image);
  VemRegion region;
  overlay.GetRegion(&region);
  VemVar text;
  InChild([&] { overlay.GetText(&p1, &text, nullptr); });
  InChild([&] { overlay.GetText(&p1, nullptr, nullptr); });

  IVemOverlay parts;
  VEM_MISUSE_GENERATORS(parts, Set);
  VEM_MISUSE_RAKES(parts, SetRect1, SetRect2, SetTorus);
  parts.FromROI(roi);
  parts.FromROI(mask);

  VemOverlayPath path;
  path.AddOverlay(overlay);
  path.Insert(2, overlay);
  path.Remove(1);
  path.Replace(-1, overlay);
  g_place = &path[1];
  InChild([&] { static_cast<const VemOverlayPath&>(path)[1]; });
  path.AddLine(p1, p1);
  path.AddRect1(p1, right);
  path.AddPolygon(points);
  VEM_MISUSE_RAKES(path, AddRakeRect1, AddRakeRect2, AddSpokeTorus);

  IVemOverlayPath list;
  list.Insert(1, overlay);
  list.Remove(0);
  list.Replace(0, overlay);
  g_place = &list[0];
  VEM_MISUSE_GENERATORS(list, Add);
  VEM_MISUSE_RAKES(list, AddRakeRect1, AddRakeRect2, AddSpokeTorus);
}

void MisuseCoder() {
  cv::Mat coloured(2, 2, CV_8UC3);
  const int sizes[] = {2, 2, 2};
  cv::Mat solid(3, sizes, CV_8U);
  VemRLC coder;
  coder.Calc(coloured, false);
  coder.Calc(solid, false);
  std::vector<cv::Point> points(3);
  std::vector<int> starts = {0, 4};
  std::vector<cv::Vec4i> hierarchy;
  std::vector<Run> runs;
  VemRLC::FindContours(coloured, 1, &points, &starts, &hierarchy, nullptr, &runs, &starts, true, -1,
                       -1, 1, false);
  InChild([&] {
    VemRLC::FindContours(coloured, 1, nullptr, &starts, &hierarchy, nullptr, &runs, &starts, true,
                         -1, -1, 1, false);
  });
  std::vector<std::vector<cv::Point>> contours;
  points.resize(3);
  starts = {0, 4};
  InChild([&] { VemRLC::Convert(points, starts, contours); });
  starts = {2, 1};
  InChild([&] { VemRLC::Convert(points, starts, contours); });
}

}  // namespace

void MisuseEverything() {
  MisuseValues();
  MisuseValueArrays();
  MisuseTypedArrays();
  MisuseResults();
  MisuseScratches();
  MisuseGeometry();
  MisuseRasters();
  MisuseMorphology();
  MisuseRegions();
  MisuseRois();
  MisuseOverlays();
  MisuseCoder();
}
