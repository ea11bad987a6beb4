// One object of every class, for the debugger to show, and some that are none.
//
// With a folder as an argument, compares the pictures that the debugger has left in it with the
// objects; "live" behind it says that the mask of a shape is among them.

#include <cmath>
#include <cstddef>
#include <cstdio>
#include <initializer_list>
#include <new>
#include <string>
#include <vector>

#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>

#include "VemData.h"

// By their names alone a debugger finds these without debug information.
VemVar number(42);
VemVar ratio(2.0);
VemVar caption("scratch \"A\"");
VemVar nothing;
VemVarArray mixed;
VemVarArray many;
Vem2DVarArray table;

VemPoint corner(1.5, 2);
Vem3DPoint spot(1, 2, 3.25);
VemPointArray corners;
Vem3DPointArray spots;
VemLine edge(0, 0, 3, 4);
VemCircle hole(10, 20, 2.5);
VemContour outline;
VemContourArray outlines;

VemImage photo;
VemImage small;
VemImage noImage;
VemMatrix matrix;
VemMatrix bigMatrix(100, 200, VemMatrixType64F);
VemFeatureDescriptor descriptor;
VemImageArray photos;
VemMatrixArray matrices;
VemMorphStructure cross;
VemMorphStructure square;
VemMorphStructure unset;
VemMorphStructure stale;
VemMatrix heights;
VemMatrix extremes;
VemMatrix traces;
cv::Mat scan;
cv::Mat deep;
cv::Mat two;

VemRegion region;
VemRegion largeRegion;
VemRegion uneven;
VemRegion strayed;
VemRegion noRegion;
VemRegionArray regions;
VemRegionArray crowd;
VemRLC coder;

VemROI rect1;
VemROI circle;
VemROI torus;
VemROI noShape;
VemROI polygon;
VemROI irregular;
VemROI rect2;
VemROI line;
VemROI verticalLine;
VemROI ellipse;
VemROI arc;
VemROI dot;
VemROI mask;
VemROI refused;
VemROI wide;
VemROI far;
VemROIArray rois;

VemOverlay pointOverlay;
VemOverlay rakeOverlay;
VemOverlay spokeOverlay;
VemOverlay arcOverlay;
VemOverlay polygonOverlay;
VemOverlay textOverlay;
VemOverlay imageOverlay;
VemOverlay regionOverlay;
VemOverlay noOverlay;
VemOverlayPath path;
VemFont font;

Vem1DCode code1D;
VemDMCode codeDM;
VemQRCode codeQR;
VemPDF417Code codePDF417;
VemVCode codeV;
Vem1DCodeArray codes1D;
VemDMCodeArray codesDM;
VemQRCodeArray codesQR;
VemPDF417CodeArray codesPDF417;
VemVCodeArray codesV;
VemFeaturePoint feature(1, 2, 3, 4, 5, 6, 7);
VemFeaturePointArray features;
VemScratchFeature scratch;
VemScratchGroup group;
VemScratchLayer layer;
VemScratchLayerArray layers;

VemVar* invalidValue;
VemPoint* invalidPoint;
VemPointArray* cleared;
VemVar* nullValue;

// Places without objects: zeros, and words that a test fills in.
alignas(16) unsigned char zeros[256];
alignas(16) unsigned char garbage[4096];

// Objects that are no more.
VemVar* goneValue;
VemVarArray* goneList;
VemRegion* goneRegion;
VemROI* goneROI;
VemImage* goneImage;
VemRegionArray* goneRegions;
VemROIArray* goneROIs;

namespace {

VemPointArray Points(std::initializer_list<VemPoint> list) {
  VemPointArray points;
  for (VemPoint point : list) points.Append(point);
  return points;
}

VemVarArray Numbers(std::initializer_list<int> list) {
  VemVarArray numbers;
  for (int n : list) numbers.Append(VemVar(n));
  return numbers;
}

void FillValues() {
  mixed.Append(VemVar(2));
  mixed.Append(VemVar(2.0));
  mixed.Append(VemVar("2"));
  mixed.Append(VemVar());
  for (int i = 0; i < 300; ++i) many.Append(VemVar(i));
  table.Append(mixed);
  VemVarArray empty;
  table.Append(empty);
}

void FillGeometry() {
  corners = Points({{0, 0}, {4, 0}, {0, 3.5}});
  spots.Append(spot);
  outline.FromPointArray(corners);
  outlines.Append(outline);
  VemContour none;
  outlines.Append(none);
}

void FillRaster() {
  std::vector<unsigned char> pixels(640 * 480 * 3);
  for (std::size_t i = 0; i < pixels.size(); ++i) pixels[i] = static_cast<unsigned char>(i % 251);
  photo = VemImage(pixels.data(), 640 * 3, 480, 640, 3, VemImageType8U);
  unsigned short words[] = {0, 1, 256, 65535, 4660, 7};
  small = VemImage(reinterpret_cast<unsigned char*>(words), 6, 2, 3, 1, VemImageType16U);
  float reals[] = {0.5F, -1, 2.25F, 1e6F, 0.1F, 3};
  matrix = VemMatrix(reals, 2, 3, VemMatrixType32F);
  descriptor = VemFeatureDescriptor(cv::Mat(2, 2, CV_8UC1, cv::Scalar(7)));
  photos.Append(photo);
  photos.Append(noImage);
  matrices.Append(matrix);
  cross.CreateElement(3, 5, 2, 1, static_cast<VemMorphStructureType>(1), nullptr);
  int cells[] = {0, 1, 0, 1, 1, 1};
  square.CreateElement(2, 3, -1, -1, VemMorphStructureCustom, cells);
  stale.CreateElement(2, 3, 0, 0, VemMorphStructureCustom, cells);
  stale.CreateElement(3, 3, 1, 1, static_cast<VemMorphStructureType>(0), nullptr);
  float levels[] = {-1, 0, 1, 3, NAN, 2};
  heights = VemMatrix(levels, 2, 3, VemMatrixType32F);
  double farthest[] = {-1.7e308, 1.7e308, 0}, nearest[] = {0, 5e-324, 0};
  extremes = VemMatrix(farthest, 1, 3, VemMatrixType64F);
  traces = VemMatrix(nearest, 1, 3, VemMatrixType64F);
  scan = cv::Mat(2, 2, CV_8UC4, cv::Scalar(1, 2, 3, 4));
  deep = cv::Mat(2, 2, CV_16UC3, cv::Scalar(258, 2, 65535));
  two = cv::Mat(2, 2, CV_8UC2, cv::Scalar(1, 2));
}

void FillRegions() {
  VemVarArray rows = Numbers({1, 2, 2, 3}), firsts = Numbers({2, 1, 3, 2});
  VemVarArray lasts = Numbers({7, 4, 8, 7});
  region = VemRegion(10, 5, rows, firsts, lasts);
  largeRegion = VemRegion(640, 480, rows, firsts, lasts);
  strayed = VemRegion(5, 5, rows, firsts, lasts);
  VemVarArray two = Numbers({0, 1});
  uneven.CreateRegion(4, 4, rows, firsts, two);
  regions.Append(region);
  regions.Append(noRegion);
  for (int i = 0; i < 2000; ++i) crowd.Append(region);
  unsigned char pixels[] = {1, 0, 1, 1};
  cv::Mat raster(2, 2, CV_8UC1, pixels);
  coder.SetParam(1, 9, false, -1, -1, -1, false, false);
  coder.Calc(raster, true);

  mask.GenMask(rows, firsts, lasts, 10, 5);
}

void FillShapes() {
  VemPoint p1(10, 20), p2(13, 22), center(50, 40);
  rect1.GenRect1(p1, p2);
  circle.GenCircle(center, 12.5);
  torus.GenTorus(center, 5, 10, 30, 90);
  polygon.GenPolygon(corners);
  irregular.GenIrregular(corners);
  rect2.GenRect2(center, 20, 10, 30);
  line.GenLine(p1, p2);
  VemPoint below(10, 22);
  verticalLine.GenLine(p1, below);
  ellipse.GenEllipse(center, 20, 10, -45);
  arc.GenArc(center, 8, 0, 180);
  dot.GenPoint(p1);
  refused.GenCircle(center, 1);
  VemPointArray few = Points({{0, 0}});
  refused.GenPolygon(few);
  VemPoint beyond(2e9, 2e9);
  VemPoint middle(300, 200);
  wide.GenEllipse(middle, 250, 100, 20);
  far.GenRect1(p1, beyond);
  rois.Append(circle);
  rois.Append(mask);
  rois.Append(rect1);
}

void FillOverlays() {
  VemPoint p1(10, 20), p2(13, 22);
  VemFont bold(caption, 12);
  font = bold;
  pointOverlay.GenPoint(p1);
  pointOverlay.SetPen(255, 0, 0, 3);
  rakeOverlay.GenRakeRect2(p1, 20, 10, 30, 2, 5);
  spokeOverlay.GenSpokeTorus(p1, 5, 10, 0, 90, 4, 6);
  arcOverlay.GenArc(p1, 8, 0, 180);
  polygonOverlay.GenPolygon(corners);
  textOverlay.GenText(p1, "label", bold);
  imageOverlay.GenImage(p1, photo);
  regionOverlay.GenRegion(region);
  path.AddLine(p1, p2);
  path.AddCircle(p1, -1);
}

void FillResults() {
  code1D.Number = 1;
  code1D.Value = VemVar("4006381333931");
  code1D.Points = corners;
  for (std::uint64_t* word : {&code1D.Word0, &code1D.Word1, &code1D.Word2, &code1D.Word3,
                              &code1D.Word4, &code1D.Word5, &code1D.Word6, &code1D.Word7}) {
    *word = 0x10;
  }
  codeDM.Number = 2;
  codeDM.Count0 = codeDM.Count1 = codeDM.Count2 = 7;
  codeDM.Real0 = codeDM.Real1 = 0.25;
  codeDM.Word0 = codeDM.Word1 = codeDM.Word2 = codeDM.Word3 = codeDM.Word4 = codeDM.Word5 = 1;
  codeQR.Number = 3;
  codeQR.Count0 = codeQR.Count1 = codeQR.Count2 = codeQR.Count3 = 8;
  codeQR.Real0 = codeQR.Real1 = 0.5;
  codeQR.Word0 = codeQR.Word1 = codeQR.Word2 = codeQR.Word3 = codeQR.Word4 = codeQR.Word5 = 2;
  codeQR.Word6 = 3;
  codePDF417.Number = 4;
  codePDF417.Count0 = codePDF417.Count1 = codePDF417.Count2 = 9;
  codePDF417.Real0 = codePDF417.Real1 = codePDF417.Real2 = 1.5;
  codePDF417.Word0 = codePDF417.Word1 = codePDF417.Word2 = codePDF417.Word3 = codePDF417.Word4 =
      codePDF417.Word5 = 4;
  codeV.Count0 = codeV.Count1 = codeV.Count2 = 5;
  codeV.Real0 = codeV.Real1 = codeV.Real2 = 0.1F;
  codeV.Value0 = VemVar("AB 12");
  codes1D.Append(code1D);
  codesDM.Append(codeDM);
  codesQR.Append(codeQR);
  codesPDF417.Append(codePDF417);
  codesV.Append(codeV);

  feature.ValueF = 0.1F;
  features.Append(feature);
  scratch.Head0 = 1;
  scratch.Head1 = 2;
  scratch.SortKey = -3;
  scratch.Tail = 4;
  group.Label = VemVar("deep");
  group.Append(scratch);
  layer.Append(group);
  layers.Append(layer);
}

template <typename T>
T* Gone(const T& source) {
  T* object = new T(source);
  delete object;
  return object;
}

void FillHazards() {
  invalidValue = &mixed[99];
  invalidPoint = &corners[-1];
  goneValue = Gone(caption);
  goneList = Gone(many);
  goneRegion = Gone(region);
  goneROI = Gone(mask);
  goneImage = Gone(photo);
  goneRegions = Gone(regions);
  goneROIs = Gone(rois);
}

bool IsIn(const std::string& folder, const char* name, const cv::Mat& expected) {
  const cv::Mat found = cv::imread(folder + "/" + name + ".png", cv::IMREAD_UNCHANGED);
  const bool same = found.size() == expected.size() && found.type() == expected.type() &&
                    cv::norm(found, expected, cv::NORM_INF) == 0;
  if (!same) std::printf("%s.png is another picture\n", name);
  return same;
}

cv::Mat MaskOf(const VemROI& roi) {
  VemVarArray rows, firsts, lasts;
  int width = 0, height = 0;
  roi.GetMask(&rows, &firsts, &lasts, &width, &height);
  return IVemROIPara().ToMAT(rows, firsts, lasts, width, height);
}

int ComparePictures(const std::string& folder, bool live) {
  unsigned char grey[] = {0, 64, 128, 255, 0, 191};
  bool same = IsIn(folder, "photo", photo.Mat());
  same &= IsIn(folder, "small", small.Mat());
  same &= IsIn(folder, "scan", scan);
  same &= IsIn(folder, "deep", deep);
  same &= IsIn(folder, "heights", cv::Mat(2, 3, CV_8UC1, grey));
  unsigned char whole[] = {0, 255, 128}, least[] = {0, 255, 0};
  same &= IsIn(folder, "extremes", cv::Mat(1, 3, CV_8UC1, whole));
  same &= IsIn(folder, "traces", cv::Mat(1, 3, CV_8UC1, least));
  same &= IsIn(folder, "element", photo.Mat());
  same &= IsIn(folder, "overlay", photo.Mat());
  same &= IsIn(folder, "region", MaskOf(mask));
  if (live) same &= IsIn(folder, "circle", MaskOf(circle));
  return same ? 0 : 1;
}

}  // namespace

// Where the debugger stops.
extern "C" __attribute__((noinline)) void Stop(VemVar& outOfRange, const VemROI& byReference,
                                               VemPointArray* byPointer) {
  asm volatile("" : : "r"(&outOfRange), "r"(&byReference), "r"(byPointer) : "memory");
}

int main(int argc, char** argv) {
  FillValues();
  FillGeometry();
  FillRaster();
  FillRegions();
  FillShapes();
  FillOverlays();
  FillResults();
  FillHazards();
  if (argc > 1) return ComparePictures(argv[1], argc > 2);
  Stop(mixed[99], circle, &corners);
}
