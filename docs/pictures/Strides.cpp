// A part of an image: the same rows, the same step.
#include <string>

#include "Board.h"
#include "Pictures.h"

void DrawStrides(const std::string& folder) {
  Board board(720, 260);
  Grid grid(board, 40, 60, 16, 8, 20);
  for (int row = 2; row < 6; ++row) {
    for (int column = 5; column < 11; ++column) grid.Tint(column, row, kPaleBlue);
  }
  board.Frame(40 + 5 * 20, 60 + 2 * 20, 6 * 20 + 1, 4 * 20 + 1, kBlue, 2);
  board.Text(40, 20, "an image of 16 x 8, and its part (5, 2), 6 x 4", kBlack, 12);
  board.Arrow(40, 236, 360, 236, kRed);
  board.Arrow(360, 236, 40, 236, kRed);
  board.Text(40, 256, "step: bytes from row to row, of the part too", kRed, 9);
  grid.Dot(5, 2, kBlue, 5);
  board.Text(390, 106, "data of the part", kBlue);
  board.Dashes(380, 102, grid.X(5) + 8, grid.Y(2), kBlue);
  board.Text(390, 150, "DeepCopy(), a clone and every buffer that");
  board.Text(390, 168, "is copied in have packed rows: a step of");
  board.Text(390, 186, "width x channels x bytes of a channel.");
  Save(folder, "strides.png", board);
}
