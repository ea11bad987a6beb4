// Every kind of overlay as a display draws it, with its numbers; modes and counts of rakes.
#include <string>
#include <vector>

#include "Board.h"
#include "Pictures.h"
#include "VemRegion.h"

namespace {

constexpr int kCell = 160;
constexpr int kCaption = 26;

VemPointArray Points(double x, double y, const std::vector<VemPoint>& list) {
  VemPointArray points;
  for (const VemPoint& p : list) {
    VemPoint point(x + p.x, y + p.y);
    points.Append(point);
  }
  return points;
}

// The element of a kind in a cell whose middle lies at (x, y).
VemOverlay Sample(int kind, double x, double y) {
  const std::vector<VemPoint> kChain = {{-55, 25}, {-25, -40}, {10, 30}, {50, -25}};
  VemPoint center(x, y), from(x - 55, y - 35), to(x + 55, y + 35);
  VemOverlay overlay;
  switch (kind) {
    case VemOverlayPoint:
      overlay.GenPoint(center);
      break;
    case VemOverlayArrowLine:
      overlay.GenArrowLine(from, to);
      break;
    case VemOverlayLine:
      overlay.GenLine(from, to);
      break;
    case VemOverlayRect1:
      overlay.GenRect1(from, to);
      break;
    case VemOverlayRakeRect1:
      overlay.GenRakeRect1(from, to, 0, 6);
      break;
    case VemOverlayCircle:
      overlay.GenCircle(center, 48);
      break;
    case VemOverlayEllipse:
      overlay.GenEllipse(center, 60, 32, 30);
      break;
    case VemOverlayPolygon:
      overlay.GenPolygon(Points(x, y, kChain));
      break;
    case VemOverlayPolyLine:
      overlay.GenPolyLine(Points(x, y, kChain));
      break;
    case VemOverlayRect2:
      overlay.GenRect2(center, 110, 60, 30);
      break;
    case VemOverlayRakeRect2:
      overlay.GenRakeRect2(center, 110, 60, 30, 0, 6);
      break;
    case VemOverlayTorus:
      overlay.GenTorus(center, 26, 54, 20, 250);
      break;
    case VemOverlaySpokeTorus:
      overlay.GenSpokeTorus(center, 26, 54, 20, 250, 4, 12);
      break;
    case VemOverlayArc:
      overlay.GenArc(center, 50, 20, 250);
      break;
    case VemOverlayIrregular:
      overlay.GenIrregular(Points(x, y, kChain));
      break;
    default:
      break;
  }
  return overlay;
}

VemOverlay TextSample(double x, double y) {
  VemVar name("Times");
  VemFont font(name, 16);
  VemPoint place(x - 58, y + 8);
  VemOverlay overlay;
  overlay.GenText(place, "12.4 mm", font);
  return overlay;
}

VemOverlay ImageSample(double x, double y) {
  cv::Mat pixels(70, 110, CV_8UC1);
  for (int row = 0; row < pixels.rows; ++row) {
    for (int column = 0; column < pixels.cols; ++column) {
      pixels.at<unsigned char>(row, column) =
          static_cast<unsigned char>((row / 10 + column / 10) % 2 == 0 ? 230 : 110);
    }
  }
  VemImage image;
  image.Mat() = pixels;
  VemPoint corner(x - 55, y - 35);
  VemOverlay overlay;
  overlay.GenImage(corner, image);
  return overlay;
}

VemOverlay RegionSample(double x, double y) {
  VemROI roi;
  VemPoint center(x, y);
  roi.GenTorus(center, 20, 50, 60, 300);
  VemVarArray rows, firstColumns, lastColumns;
  int width = 0, height = 0;
  roi.GetMask(&rows, &firstColumns, &lastColumns, &width, &height);
  VemRegion region(width, height, rows, firstColumns, lastColumns);
  VemOverlay overlay;
  overlay.GenRegion(region);
  return overlay;
}

void DrawKinds(const std::string& folder) {
  const struct {
    int kind;
    const char* name;
  } kKinds[] = {{VemOverlayPoint, "Point 1"},
                {VemOverlayArrowLine, "ArrowLine 2"},
                {VemOverlayLine, "Line 3"},
                {VemOverlayRect1, "Rect1 4"},
                {VemOverlayRakeRect1, "RakeRect1 5"},
                {VemOverlayCircle, "Circle 6"},
                {VemOverlayEllipse, "Ellipse 7"},
                {VemOverlayPolygon, "Polygon 8"},
                {VemOverlayPolyLine, "PolyLine 9"},
                {VemOverlayRect2, "Rect2 10"},
                {VemOverlayRakeRect2, "RakeRect2 11"},
                {VemOverlayTorus, "Torus 12"},
                {VemOverlaySpokeTorus, "SpokeTorus 13"},
                {VemOverlayArc, "Arc 14"},
                {VemOverlayIrregular, "Irregular 15"},
                {VemOverlayText, "Text 16"},
                {VemOverlayImage, "Image 18"},
                {VemOverlayRegion, "Region 19"}};
  constexpr int kColumns = 6;
  Board board(kColumns * kCell, 3 * (kCell + kCaption) + 6);
  int place = 0;
  for (const auto& kind : kKinds) {
    const int left = place % kColumns * kCell;
    const int top = place / kColumns * (kCell + kCaption);
    ++place;
    board.Fill(left + 6, top + 6, kCell - 12, kCell - 12, {244, 244, 244});
    const double x = left + 0.5 * kCell;
    const double y = top + 0.5 * kCell;
    VemOverlay overlay = Sample(kind.kind, x, y);
    if (kind.kind == VemOverlayText) overlay = TextSample(x, y);
    if (kind.kind == VemOverlayImage) overlay = ImageSample(x, y);
    if (kind.kind == VemOverlayRegion) overlay = RegionSample(x, y);
    const bool isFilled = place % 2 == 0 || kind.kind == VemOverlayRegion;
    board.Draw(overlay, kBlue, 2, isFilled);
    board.Text(left + 10, top + kCell + 12, kind.name, kBlack, 9);
  }
  Save(folder, "overlays.png", board);
}

void DrawRakes(const std::string& folder) {
  Board board(6 * kCell, kCell + kCaption + 6);
  for (int mode = 0; mode < 6; ++mode) {
    const int left = mode * kCell;
    VemPoint from(left + 25, 30), to(left + 135, 130), center(left + 80, 80);
    VemOverlay overlay;
    if (mode < 4) {
      overlay.GenRakeRect1(from, to, mode, 5);
    } else {
      overlay.GenSpokeTorus(center, 26, 66, 0, 300, mode, 10);
    }
    board.Fill(left + 6, 6, kCell - 12, kCell - 12, {244, 244, 244});
    board.Draw(overlay, kBlue, 2);
    board.Text(left + 10, kCell + 12,
               "mode " + std::to_string(mode) + ", count " + (mode < 4 ? "5" : "10"), kBlack, 9);
  }
  Save(folder, "rakes.png", board);
}

}  // namespace

void DrawOverlays(const std::string& folder) {
  DrawKinds(folder);
  DrawRakes(folder);
}
