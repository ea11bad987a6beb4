// Each shape of a region of interest three times: its numbers, its runs, its outline.
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "Board.h"
#include "Pictures.h"
#include "VemPointArray.h"
#include "vem/view.h"

namespace {

constexpr int kColumns = 16;
constexpr int kRows = 13;
constexpr int kCell = 20;
constexpr int kLeft = 24;
constexpr int kTop = 38;
constexpr int kPanel = kLeft + kColumns * kCell + 12;
constexpr int kHeight = kTop + kRows * kCell + 30;

VemPointArray Points(const std::vector<VemPoint>& list) {
  VemPointArray points;
  for (VemPoint point : list) points.Append(point);
  return points;
}

// A shape, told in pixels that are `scale` wide with the first one's centre at `x`, `y`.
struct Place {
  double x = 0;
  double y = 0;
  double scale = 1;

  VemPoint At(double column, double row) const {
    return VemPoint(x + column * scale, y + row * scale);
  }
};

struct Sample {
  const char* name;
  const char* numbers;
  std::function<VemROI(const Place&)> make;
};

VemROI Rect1(const Place& p) {
  VemROI roi;
  VemPoint from = p.At(2, 3), to = p.At(10, 8);
  roi.GenRect1(from, to);
  return roi;
}

VemROI Circle(const Place& p) {
  VemROI roi;
  VemPoint center = p.At(7, 5);
  roi.GenCircle(center, 4 * p.scale);
  return roi;
}

VemROI Torus(const Place& p) {
  VemROI roi;
  VemPoint center = p.At(7, 5);
  roi.GenTorus(center, 2 * p.scale, 5 * p.scale, 45, 270);
  return roi;
}

VemROI Polygon(const Place& p) {
  VemROI roi;
  VemPointArray points = Points({p.At(1, 1), p.At(12, 3), p.At(7, 5), p.At(10, 10), p.At(2, 8)});
  roi.GenPolygon(points);
  return roi;
}

VemROI Irregular(const Place& p) {
  VemROI roi;
  VemPointArray points = Points({p.At(3, 2), p.At(9, 1), p.At(12, 5), p.At(8, 9), p.At(2, 7)});
  roi.GenIrregular(points);
  return roi;
}

VemROI Rect2(const Place& p) {
  VemROI roi;
  VemPoint center = p.At(7, 5);
  roi.GenRect2(center, 10 * p.scale, 4 * p.scale, 30);
  return roi;
}

VemROI Ellipse(const Place& p) {
  VemROI roi;
  VemPoint center = p.At(7, 5);
  roi.GenEllipse(center, 6 * p.scale, 3 * p.scale, 30);
  return roi;
}

VemROI Line(const Place& p) {
  VemROI roi;
  VemPoint from = p.At(3, 1), to = p.At(8, 10);
  roi.GenLine(from, to);
  return roi;
}

VemROI Arc(const Place& p) {
  VemROI roi;
  VemPoint center = p.At(7, 6);
  roi.GenArc(center, 5 * p.scale, 30, 120);
  return roi;
}

VemROI Point(const Place& p) {
  VemROI roi;
  VemPoint point = p.At(6, 4);
  roi.GenPoint(point);
  return roi;
}

// A house with a hole, and a square apart.
VemContourArray Contours(const Place& p) {
  const std::vector<std::vector<VemPoint>> chains = {
      {p.At(1, 4), p.At(5, 0), p.At(9, 4), p.At(9, 9), p.At(1, 9)},
      {p.At(3, 4), p.At(7, 4), p.At(7, 7), p.At(3, 7)},
      {p.At(11, 3), p.At(13, 3), p.At(13, 5), p.At(11, 5)}};
  VemContourArray contours;
  for (const std::vector<VemPoint>& chain : chains) {
    VemPointArray points = Points(chain);
    VemContour contour;
    contour.FromPointArray(points);
    contours.Append(contour);
  }
  return contours;
}

VemROI Mask(const Place& p) {
  VemContourArray contours = Contours(p);
  VemROI roi;
  roi.GenMask(contours, 14, 11);
  return roi;
}

// The contours that a mask is made of.
void DrawChains(Grid& grid) {
  const VemContourArray contours = Contours(Place());
  for (int i = 0; i < contours.Length(); ++i) {
    VemPointArray points;
    contours[i].ToPointArray(&points);
    VemPoint first = points[0];
    points.Append(first);  // A contour is open unless it ends where it began.
    VemContour closed;
    closed.FromPointArray(points);
    grid.Outline(closed, kRed);
  }
}

void DrawNumbers(Board& board, Grid& grid, const Sample& sample) {
  Place place;
  place.x = grid.X(0);
  place.y = grid.Y(0);
  place.scale = grid.Cell();
  const VemROI roi = sample.make(place);
  if (roi.ROIType() == VemROIMask) return DrawChains(grid);
  vem::draw(board.Picture(), roi, vem::draw_style(kRed.blue, kRed.green, kRed.red, 2));
  if (roi.ROIType() != VemROIRect1) return;
  grid.Dot(2, 3, kRed);
  grid.Dot(10, 8, kRed);
}

std::string CanvasText(int width, int height) {
  if (width == 0) return "no canvas told";
  return "canvas " + std::to_string(width) + " x " + std::to_string(height);
}

void DrawRuns(Board& board, Grid& grid, int left, const VemROI& roi) {
  VemVarArray rows, firstColumns, lastColumns;
  int width = 0, height = 0;
  roi.GetMask(&rows, &firstColumns, &lastColumns, &width, &height);
  int pixels = 0;
  for (const PixelRun& run : RunsOf(rows, firstColumns, lastColumns)) {
    grid.Run(run, kPaleBlue, kBlue);
    pixels += run.last - run.first + 1;
  }
  if (width > 0) grid.Canvas(width, height, kGrey);
  char text[96];
  std::snprintf(text, sizeof(text), "%d runs, %d pixels, %s", rows.Length(), pixels,
                CanvasText(width, height).c_str());
  board.Text(left, kHeight - 8, text);
}

void DrawOutline(Board& board, Grid& grid, int left, const VemROI& roi) {
  VemVarArray rows, firstColumns, lastColumns;
  int width = 0, height = 0;
  roi.GetMask(&rows, &firstColumns, &lastColumns, &width, &height);
  for (const PixelRun& run : RunsOf(rows, firstColumns, lastColumns)) {
    for (int column = run.first; column <= run.last; ++column) {
      grid.Tint(column, run.row, kPaleBlue);
    }
  }
  VemContourArray contours;
  width = height = 0;
  roi.GetMask(&contours, &width, &height);
  int vertices = 0;
  for (int i = 0; i < contours.Length(); ++i) {
    grid.Outline(contours[i], kGreen);
    vertices += contours[i].Length();
  }
  if (width > 0) grid.Canvas(width, height, kGrey);
  char text[96];
  std::snprintf(text, sizeof(text), "%d contour%s, %d vertices, %s", contours.Length(),
                contours.Length() == 1 ? "" : "s", vertices, CanvasText(width, height).c_str());
  board.Text(left, kHeight - 8, text);
}

void DrawShape(const std::string& folder, const Sample& sample) {
  Board board(3 * kPanel, kHeight);
  const VemROI roi = sample.make(Place());
  const char* const kTitles[] = {"numbers", "runs", "outline"};
  for (int i = 0; i < 3; ++i) {
    const int left = i * kPanel + kLeft;
    board.Text(left, 14, kTitles[i], kBlack, 12);
    Grid grid(board, left, kTop, kColumns, kRows, kCell);
    if (i == 0) {
      DrawNumbers(board, grid, sample);
      board.Text(left, kHeight - 8, sample.numbers);
    } else if (i == 1) {
      DrawRuns(board, grid, left, roi);
    } else {
      DrawOutline(board, grid, left, roi);
    }
  }
  Save(folder, std::string("shape_") + sample.name + ".png", board);
}

}  // namespace

void DrawShapes(const std::string& folder) {
  const Sample kSamples[] = {
      {"rect1", "(2, 3) to (10, 8)", Rect1},
      {"circle", "center (7, 5), radius 4", Circle},
      {"torus", "center (7, 5), radii 2 and 5, 45 for 270", Torus},
      {"polygon", "(1, 1) (12, 3) (7, 5) (10, 10) (2, 8)", Polygon},
      {"irregular", "(3, 2) (9, 1) (12, 5) (8, 9) (2, 7)", Irregular},
      {"rect2", "center (7, 5), 10 by 4, angle 30", Rect2},
      {"ellipse", "center (7, 5), radii 6 and 3, angle 30", Ellipse},
      {"line", "(3, 1) to (8, 10)", Line},
      {"arc", "center (7, 6), radius 5, 30 for 120", Arc},
      {"point", "(6, 4)", Point},
      {"mask", "from three contours, on 14 x 11", Mask},
  };
  for (const Sample& sample : kSamples) DrawShape(folder, sample);
}
