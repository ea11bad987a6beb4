// Where coordinates and angles point.
#include <cmath>
#include <string>

#include "Board.h"
#include "Pictures.h"

namespace {

constexpr double kPi = 3.141592653589793;

void DrawAxes(const std::string& folder) {
  Board board(700, 340);
  constexpr int kCell = 30;
  Grid grid(board, 60, 60, 10, 8, kCell);
  board.Arrow(60, 28, 200, 28, kBlack);
  board.Text(206, 33, "x, columns");
  board.Arrow(22, 60, 22, 200, kBlack);
  board.Text(8, 222, "y,");
  board.Text(8, 238, "rows");
  grid.Tint(5, 2, kPaleRed);
  grid.Dot(5, 2, kRed, 4);
  grid.Tint(2, 6, kPaleBlue);
  grid.Tint(0, 0, kPaleGreen);
  grid.Dot(0, 0, kGreen, 4);
  grid.Dot(2.9, 6.4, kBlue, 4);

  constexpr int kText = 390;
  board.Text(kText, 76, "(0, 0) is the centre of the first pixel", kGreen);
  board.Text(kText, 120, "VemPoint(5, 2): x 5, y 2", kRed);
  board.Text(kText, 138, "row 2, column 5", kRed);
  board.Text(kText, 156, "in Params: 2, 5  (a point alone: 5, 2)", kRed);
  board.Text(kText, 200, "VemPoint(2.9, 6.4) loses its fraction", kBlue);
  board.Text(kText, 218, "in a shape: pixel (2, 6)", kBlue);
  board.Text(kText, 262, "A run is row, first column, last column,", kBlack);
  board.Text(kText, 280, "a canvas is width, then height.", kBlack);
  Save(folder, "coordinates.png", board);
}

void DrawCompass(Board& board) {
  constexpr double kX = 150;
  constexpr double kY = 160;
  const struct {
    double angle;
    const char* name;
    double dx, dy;
  } kDirections[] = {
      {0, "0", 10, 5}, {90, "90", -9, -8}, {180, "180", -36, 5}, {270, "270", -14, 20}};
  for (const auto& d : kDirections) {
    const double x = kX + 105 * std::cos(d.angle * kPi / 180);
    const double y = kY - 105 * std::sin(d.angle * kPi / 180);
    board.Arrow(kX, kY, x, y, kGrey);
    board.Text(x + d.dx, y + d.dy, d.name, kBlack, 11);
  }
  VemPoint center(kX, kY);
  VemOverlay arc;
  arc.GenArc(center, 60, 0, 50);
  board.Draw(arc, kRed, 3);
  const double x = kX + 60 * std::cos(50 * kPi / 180);
  const double y = kY - 60 * std::sin(50 * kPi / 180);
  board.Arrow(x + 8, y + 7, x - 8, y - 5, kRed, 3);
  board.Text(kX + 58, kY - 40, "grows", kRed);
}

void DrawAngles(const std::string& folder) {
  Board board(960, 330);
  DrawCompass(board);

  VemPoint center(480, 160);
  VemOverlay bar;
  bar.GenRect2(center, 220, 80, 30);
  board.Draw(bar, kBlue, 2, true);
  board.Dashes(480, 160, 600, 160, kGrey);
  const double c = std::cos(kPi / 6);
  const double s = std::sin(kPi / 6);
  board.Arrow(480, 160, 480 + 110 * c, 160 - 110 * s, kRed);
  board.Text(590, 92, "length1 / 2", kRed, 9);
  board.Arrow(480, 160, 480 - 40 * s, 160 - 40 * c, kGreen);
  board.Text(368, 118, "length2 / 2", kGreen, 9);
  VemOverlay arc;
  arc.GenArc(center, 90, 0, 30);
  board.Draw(arc, kBlack, 1);
  board.Text(602, 148, "30", kBlack, 9);
  board.Text(368, 312, "GenRect2(center, 220, 80, 30)", kBlack, 10);

  VemPoint middle(800, 160);
  VemOverlay ring;
  ring.GenTorus(middle, 50, 105, 45, 200);
  board.Draw(ring, kBlue, 2, true);
  board.Arrow(800, 160, 800 + 105 * std::cos(kPi / 4), 160 - 105 * std::sin(kPi / 4), kRed);
  board.Text(846, 132, "start 45", kRed, 9);
  VemOverlay sweep;
  sweep.GenArc(middle, 34, 45, 190);
  board.Draw(sweep, kGreen, 2);
  board.Arrow(778, 180, 785, 190, kGreen);
  board.Text(790, 206, "sweep 200", kGreen, 9);
  board.Text(680, 312, "GenTorus(center, 50, 105, 45, 200)", kBlack, 10);
  board.Text(60, 312, "degrees, as the image is seen", kBlack, 10);
  Save(folder, "angles.png", board);
}

}  // namespace

void DrawCoordinates(const std::string& folder) {
  DrawAxes(folder);
  DrawAngles(folder);
}
