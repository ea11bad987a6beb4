// What a copy holds: four forms of classes, before and after `b = a`.
#include <string>

#include "Board.h"
#include "Pictures.h"

namespace {

constexpr int kWidth = 460;
constexpr int kHeight = 190;

// A box with a name on its upper edge.
void Box(Board& board, int x, int y, int width, int height, const std::string& text,
         const Ink& fill, const Ink& ink) {
  board.Fill(x, y, width, height, fill);
  board.Frame(x, y, width, height, ink, 2);
  board.Text(x + 10, y + 0.5 * height + 5, text, kBlack, 9);
}

void Title(Board& board, int x, int y, const std::string& name, const std::string& rule) {
  board.Text(x, y, name, kBlack, 12);
  board.Text(x, y + 20, rule, kGrey, 9);
}

void DrawFlat(Board& board, int x, int y) {
  Title(board, x, y, "Flat values", "VemPoint, VemLine, VemCircle: the numbers themselves");
  Box(board, x, y + 50, 150, 40, "a: x 3, y 4", kPaleGreen, kGreen);
  Box(board, x, y + 110, 150, 40, "b: x 3, y 4", kPaleGreen, kGreen);
}

void DrawDeep(Board& board, int x, int y) {
  Title(board, x, y, "Handles that own", "VemROI, VemRegion, VemOverlay, arrays: two blocks");
  Box(board, x, y + 50, 70, 40, "a", kPaleBlue, kBlue);
  Box(board, x, y + 110, 70, 40, "b", kPaleBlue, kBlue);
  board.Arrow(x + 72, y + 70, x + 166, y + 70, kBlue);
  board.Arrow(x + 72, y + 130, x + 166, y + 130, kBlue);
  Box(board, x + 170, y + 50, 220, 40, "Params, runs, ...", kPaleBlue, kBlue);
  Box(board, x + 170, y + 110, 220, 40, "Params, runs, ... copied", kPaleBlue, kBlue);
}

void DrawShared(Board& board, int x, int y) {
  Title(board, x, y, "Images and matrices", "VemImage, VemMatrix: one buffer, counted by cv::Mat");
  Box(board, x, y + 50, 70, 40, "a", kPaleRed, kRed);
  Box(board, x, y + 110, 70, 40, "b", kPaleRed, kRed);
  board.Arrow(x + 72, y + 70, x + 166, y + 94, kRed);
  board.Arrow(x + 72, y + 130, x + 166, y + 108, kRed);
  Box(board, x + 170, y + 80, 220, 42, "pixels, 2 references", kPaleRed, kRed);
  board.Text(x + 170, y + 144, "b = a.DeepCopy() clones them", kGrey, 9);
}

void DrawArrays(Board& board, int x, int y) {
  Title(board, x, y, "Arrays of images", "VemImageArray, VemMatrixArray: clones in, clones out");
  Box(board, x, y + 50, 100, 40, "image", kPaleRed, kRed);
  board.Arrow(x + 102, y + 70, x + 196, y + 70, kRed);
  board.Text(x + 108, y + 62, "Append", kGrey, 8);
  Box(board, x + 200, y + 50, 190, 40, "[0]: a clone", kPaleBlue, kBlue);
  Box(board, x, y + 110, 100, 40, "array[0]", kPaleRed, kRed);
  board.Arrow(x + 198, y + 92, x + 104, y + 126, kBlue);
  board.Text(x + 170, y + 136, "a clone of the clone", kGrey, 9);
}

}  // namespace

void DrawOwning(const std::string& folder) {
  Board board(2 * kWidth + 20, 2 * kHeight + 20);
  DrawFlat(board, 20, 30);
  DrawDeep(board, 20 + kWidth, 30);
  DrawShared(board, 20, 30 + kHeight);
  DrawArrays(board, 20 + kWidth, 30 + kHeight);
  Save(folder, "owning.png", board);
}
