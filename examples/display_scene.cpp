#include "display_scene.h"

#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include "VemOverlay.h"
#include "VemROI.h"
#include "VemRegion.h"
#include "display_shapes.h"

namespace {

constexpr int kColumns = 6;
constexpr int kRows = 3;
constexpr int kCell = 240;
constexpr int kCaption = 40;  // The strip below a cell, for its name.

// The middle of a cell, in pixels.
cv::Point2d Middle(int column, int row) {
  return cv::Point2d((column + 0.5) * kCell, row * (kCell + kCaption) + 0.5 * kCell + 8);
}

// --- The picture ---

constexpr int kBright = 176;
constexpr int kGrey = 120;
constexpr int kDark = 34;

const Chain kWire = {{-85, 30}, {-50, -45}, {-10, 25}, {30, -40}, {85, 35}};
const Chain kRivets = {{0, -78}, {62, -42}, {80, 22}, {34, 74}, {-40, 66}, {-80, 12}, {-56, -52}};

Chain Moved(const Chain& chain, const cv::Point2d& by) {
  Chain moved;
  for (const cv::Point2d& p : chain) moved.push_back(p + by);
  return moved;
}

// The first row of parts: a pin, an edge, a lever, a wire, a pipe, rivets.
void DrawThinParts(cv::Mat& picture) {
  Fill(picture, {CircleOf(Middle(0, 0), 46)}, kBright);
  Fill(picture, {CircleOf(Middle(0, 0), 20)}, kDark);
  Fill(picture, {RectangleOf(Middle(1, 0) + cv::Point2d(0, 42), 170, 84, 0)}, kBright);
  Fill(picture, {RectangleOf(Middle(2, 0), 190, 62, 28)}, kBright);
  Fill(picture, {RectangleOf(Middle(2, 0), 150, 22, 28)}, kDark);
  Stroke(picture, Moved(kWire, Middle(3, 0)), false, kBright, 26);
  Stroke(picture, ArcOf(Middle(4, 0), 72, -30, 240), false, kBright, 34);
  for (const cv::Point2d& rivet : kRivets) {
    Fill(picture, {CircleOf(Middle(5, 0) + rivet, 17)}, kBright);
  }
}

// The second row: a chip, a bar, a bore, a gasket, a washer, a nut.
void DrawThickParts(cv::Mat& picture) {
  Fill(picture, {RectangleOf(Middle(0, 1), 150, 110, 0)}, kDark);
  for (int i = -2; i <= 2; ++i) {
    Fill(picture, {RectangleOf(Middle(0, 1) + cv::Point2d(28 * i, 0), 12, 144, 0)}, kBright);
  }
  Fill(picture, {RectangleOf(Middle(0, 1), 150, 104, 0)}, kDark);
  Fill(picture, {RectangleOf(Middle(1, 1), 180, 70, 30)}, kBright);
  Fill(picture, {RectangleOf(Middle(1, 1), 120, 16, 30)}, kGrey);
  Fill(picture, {CircleOf(Middle(2, 1), 84)}, kBright);
  Fill(picture, {CircleOf(Middle(2, 1), 62)}, kDark);
  Fill(picture, {EllipseOf(Middle(3, 1), 96, 58, 25), EllipseOf(Middle(3, 1), 62, 28, 25)},
       kBright);
  Fill(picture, {CircleOf(Middle(4, 1), 90), CircleOf(Middle(4, 1), 44)}, kBright);
  Fill(picture, {GearOf(Middle(5, 1), 62, 92, 6), CircleOf(Middle(5, 1), 26)}, kBright);
}

// The third row: stripes, an oblique strip, a gear, a label, an empty place, a blot of glue.
void DrawMeasuredParts(cv::Mat& picture) {
  Fill(picture, {RectangleOf(Middle(0, 2), 90, 150, 0)}, kBright);
  Fill(picture, {RectangleOf(Middle(1, 2), 220, 70, 30)}, kBright);
  Fill(picture, {GearOf(Middle(2, 2), 76, 96, 14), CircleOf(Middle(2, 2), 36)}, kBright);
  Fill(picture, {RectangleOf(Middle(3, 2), 200, 110, 0)}, 226);
  Fill(picture, {BlobOf(Middle(5, 2), 70)}, kBright);
}

}  // namespace

// Parts on a brushed plate, lit from the upper left.
VemImage DrawPicture() {
  cv::Mat picture(kRows * (kCell + kCaption) + 10, kColumns * kCell, CV_8UC1, cv::Scalar(70));
  for (int y = 0; y < picture.rows; y += 3) {
    picture.row(y).setTo(cv::Scalar(66 + (y * 7) % 9));
  }
  DrawThinParts(picture);
  DrawThickParts(picture);
  DrawMeasuredParts(picture);
  for (int y = 0; y < picture.rows; ++y) {
    unsigned char* pixels = picture.ptr(y);
    for (int x = 0; x < picture.cols; ++x) {
      const double light = 1.12 - 0.22 * x / picture.cols - 0.16 * y / picture.rows;
      pixels[x] = cv::saturate_cast<unsigned char>(pixels[x] * light);
    }
  }
  return VemImage(picture.data, static_cast<int>(picture.step), picture.rows, picture.cols, 1,
                  VemImageType8U);
}

namespace {

// --- The drawing: what an inspection hands to a display ---

struct Color {
  long blue, green, red;
};

constexpr Color kYellow = {60, 215, 255};
constexpr Color kGreen = {90, 220, 110};
constexpr Color kCyan = {235, 205, 60};
constexpr Color kOrange = {50, 150, 255};
constexpr Color kPink = {190, 110, 255};
constexpr Color kWhite = {240, 240, 240};

VemPoint PointOf(const cv::Point2d& p) { return VemPoint(p.x, p.y); }

VemPointArray PointsOf(const Chain& chain) {
  VemPointArray points;
  for (const cv::Point2d& p : chain) {
    VemPoint point = PointOf(p);
    points.Append(point);
  }
  return points;
}

// An overlay with a pen of its own; a brush fills it in the same colour.
VemOverlay Outlined(const Color& color, long width = 5) {
  VemOverlay overlay;
  overlay.SetPen(color.blue, color.green, color.red, width);
  return overlay;
}

VemOverlay Filled(const Color& color) {
  VemOverlay overlay = Outlined(color);
  overlay.SetBrush(color.blue, color.green, color.red, 1);
  return overlay;
}

void AddLines(VemOverlayPath& path) {
  // Straight to the path, with the default pen.
  VemPoint point = PointOf(Middle(0, 0));
  path.AddPoint(point);

  VemOverlay line = Outlined(kYellow);
  VemPoint from = PointOf(Middle(1, 0) + cv::Point2d(-100, 0));
  VemPoint to = PointOf(Middle(1, 0) + cv::Point2d(100, 0));
  line.GenLine(from, to);
  path.AddOverlay(line);

  VemOverlay arrow = Outlined(kOrange, 6);
  from = PointOf(Polar(Middle(2, 0), -95, 28));
  to = PointOf(Polar(Middle(2, 0), 95, 28));
  arrow.GenArrowLine(from, to);
  path.AddOverlay(arrow);

  VemOverlay chain = Outlined(kCyan);
  chain.GenPolyLine(PointsOf(Moved(kWire, Middle(3, 0))));
  path.AddOverlay(chain);

  VemOverlay arc = Outlined(kGreen);
  VemPoint center = PointOf(Middle(4, 0));
  arc.GenArc(center, 72, -30, 240);
  path.AddOverlay(arc);

  // From a contour, as a measurement hands one on.
  VemContour contour;
  VemPointArray rivets = PointsOf(Moved(kRivets, Middle(5, 0)));
  contour.FromPointArray(rivets);
  VemOverlay irregular = Outlined(kPink);
  irregular.FromContour(contour);
  path.AddOverlay(irregular);
}

void AddAreas(VemOverlayPath& path) {
  VemOverlay rectangle = Outlined(kYellow);
  VemPoint from = PointOf(Middle(0, 1) + cv::Point2d(-84, -78));
  VemPoint to = PointOf(Middle(0, 1) + cv::Point2d(84, 78));
  rectangle.GenRect1(from, to);
  path.AddOverlay(rectangle);

  VemOverlay rotated = Filled(kOrange);
  VemPoint center = PointOf(Middle(1, 1));
  rotated.GenRect2(center, 180, 70, 30);
  path.AddOverlay(rotated);

  // From a region of interest, as an operator hands one on.
  VemROI roi;
  center = PointOf(Middle(2, 1));
  roi.GenCircle(center, 62);
  VemOverlay circle = Filled(kCyan);
  circle.FromROI(roi);
  path.AddOverlay(circle);

  VemOverlay ellipse = Outlined(kGreen);
  center = PointOf(Middle(3, 1));
  ellipse.GenEllipse(center, 96, 58, 25);
  path.AddOverlay(ellipse);

  VemOverlay torus = Filled(kPink);
  center = PointOf(Middle(4, 1));
  torus.GenTorus(center, 44, 90, 20, 250);
  path.AddOverlay(torus);

  VemOverlay polygon = Filled(kGreen);
  polygon.GenPolygon(PointsOf(GearOf(Middle(5, 1), 62, 92, 6)));
  path.AddOverlay(polygon);
}

void AddProbes(VemOverlayPath& path) {
  VemOverlay rake = Outlined(kYellow, 3);
  VemPoint from = PointOf(Middle(0, 2) + cv::Point2d(-90, -64));
  VemPoint to = PointOf(Middle(0, 2) + cv::Point2d(90, 64));
  rake.GenRakeRect1(from, to, 0, 7);
  path.AddOverlay(rake);

  VemOverlay rotated = Outlined(kOrange, 3);
  VemPoint center = PointOf(Middle(1, 2));
  rotated.GenRakeRect2(center, 150, 120, 30, 2, 8);
  path.AddOverlay(rotated);

  VemOverlay spokes = Outlined(kCyan, 3);
  center = PointOf(Middle(2, 2));
  spokes.GenSpokeTorus(center, 50, 108, -90, 360, 5, 28);
  path.AddOverlay(spokes);
}

// The runs of a shape, on the road from a region of interest to the display.
VemRegion BlobRegion() {
  VemPointArray points = PointsOf(BlobOf(Middle(5, 2), 70));
  VemROI roi;
  roi.GenPolygon(points);
  VemVarArray rows;
  VemVarArray firstColumns;
  VemVarArray lastColumns;
  int width = 0;
  int height = 0;
  roi.GetMask(&rows, &firstColumns, &lastColumns, &width, &height);
  return VemRegion(width, height, rows, firstColumns, lastColumns);
}

void AddContents(VemOverlayPath& path, const VemImage& picture) {
  VemOverlay text = Outlined({30, 110, 20});
  VemVar name("Times");
  VemFont font(name, 21);
  VemPoint place = PointOf(Middle(3, 2) + cv::Point2d(-84, -8));
  text.GenText(place, "12.40 mm", font);
  path.AddOverlay(text);
  font.Size = 16;
  place = PointOf(Middle(3, 2) + cv::Point2d(-84, 32));
  text.GenText(place, "in tolerance", font);
  path.AddOverlay(text);

  // A magnified part of the gear.
  const cv::Point corner = Middle(2, 2) + cv::Point2d(28, -98);
  VemImage inset;
  cv::resize(picture.Mat()(cv::Rect(corner, cv::Size(72, 72))), inset.Mat(), cv::Size(192, 192), 0,
             0, cv::INTER_CUBIC);
  VemOverlay image = Outlined(kWhite, 3);
  place = PointOf(Middle(4, 2) - cv::Point2d(96, 96));
  image.GenImage(place, inset);
  path.AddOverlay(image);

  VemOverlay region = Filled(kYellow);
  VemRegion blob = BlobRegion();
  region.GenRegion(blob);
  path.AddOverlay(region);
}

void AddCaptions(VemOverlayPath& path) {
  const char* const kNames[kRows][kColumns] = {
      {"Point", "Line", "ArrowLine", "PolyLine", "Arc", "Irregular"},
      {"Rect1", "Rect2", "Circle", "Ellipse", "Torus", "Polygon"},
      {"RakeRect1", "RakeRect2", "SpokeTorus", "Text", "Image", "Region"}};
  VemVar name("Plain");
  VemFont font(name, 18);
  VemOverlay caption = Outlined(kWhite);
  for (int row = 0; row < kRows; ++row) {
    for (int column = 0; column < kColumns; ++column) {
      VemPoint place = PointOf(Middle(column, row) + cv::Point2d(-100, 0.5 * kCell + 22));
      caption.GenText(place, kNames[row][column], font);
      path.AddOverlay(caption);
    }
  }
}

}  // namespace

VemOverlayPath BuildPath(const VemImage& picture) {
  VemOverlayPath path;
  AddLines(path);
  AddAreas(path);
  AddProbes(path);
  AddContents(path, picture);
  AddCaptions(path);
  return path;
}
