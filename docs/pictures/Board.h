#ifndef DOCS_PICTURES_BOARD_H_
#define DOCS_PICTURES_BOARD_H_

#include <string>
#include <vector>

#include <opencv2/core.hpp>

#include "VemContourArray.h"
#include "VemOverlay.h"
#include "VemROI.h"
#include "VemTuple.h"

/// A colour, blue before green before red.
struct Ink {
  int blue, green, red;
};

constexpr Ink kBlack = {40, 40, 40};
constexpr Ink kGrey = {140, 140, 140};
constexpr Ink kLight = {225, 225, 225};
constexpr Ink kBlue = {200, 110, 30};
constexpr Ink kPaleBlue = {245, 222, 195};
constexpr Ink kRed = {50, 50, 205};
constexpr Ink kPaleRed = {205, 205, 250};
constexpr Ink kGreen = {70, 140, 40};
constexpr Ink kPaleGreen = {205, 238, 205};
constexpr Ink kOrange = {20, 120, 230};

/// Runs of pixels as one list, for pictures.
struct PixelRun {
  int row, first, last;
};

std::vector<PixelRun> RunsOf(const VemVarArray& rows, const VemVarArray& firstColumns,
                             const VemVarArray& lastColumns);

/// A white sheet in blue, green and red to draw on, in its own pixels.
class Board {
 public:
  Board(int width, int height);

  /// A filled box, its corners included.
  void Fill(int x, int y, int width, int height, const Ink& ink);
  void Frame(int x, int y, int width, int height, const Ink& ink, int line = 1);
  void Line(double x1, double y1, double x2, double y2, const Ink& ink, int line = 1);
  void Dashes(double x1, double y1, double x2, double y2, const Ink& ink);
  void Arrow(double x1, double y1, double x2, double y2, const Ink& ink, int line = 2);
  /// A text with its lower left corner at a pixel; `size` is the height of a capital letter.
  void Text(double x, double y, const std::string& text, const Ink& ink = kBlack, long size = 10,
            bool isBold = false);
  /// An overlay of any kind, drawn as a display does.
  void Draw(VemOverlay overlay, const Ink& ink, long line = 2, bool isFilled = false);

  cv::Mat& Picture() { return picture_; }
  const cv::Mat& Picture() const { return picture_; }

 private:
  cv::Mat picture_;
};

/// Pixels as squares on a board, with the numbers of columns and rows beside them.
class Grid {
 public:
  /// Of `columns` by `rows` squares of `cell` pixels, the first with its corner at (left, top). Two
  /// more lines of text beside it must have room for the numbers.
  Grid(Board& board, int left, int top, int columns, int rows, int cell);

  /// Fills the square of a pixel, within its lines.
  void Tint(int column, int row, const Ink& ink);
  /// Fills the squares of a run; a frame holds them together.
  void Run(const PixelRun& run, const Ink& fill, const Ink& frame);
  /// Lines through the centres of pixels, with a dot at each vertex.
  void Outline(VemContour contour, const Ink& ink, int line = 2);
  void Dot(double column, double row, const Ink& ink, int line = 3);
  /// The edge of a canvas that begins at pixel (0, 0).
  void Canvas(int width, int height, const Ink& ink);
  /// Where the centre of a pixel lies on the board.
  double X(double column) const { return left_ + (column + 0.5) * cell_ - 0.5; }
  double Y(double row) const { return top_ + (row + 0.5) * cell_ - 0.5; }
  int Cell() const { return cell_; }

 private:
  bool Contains(int column, int row) const {
    return column >= 0 && column < columns_ && row >= 0 && row < rows_;
  }

  Board& board_;
  int left_, top_, columns_, rows_, cell_;
};

/// Writes a picture into the folder; ends the program where it can't.
void Save(const std::string& folder, const std::string& name, const Board& board);

#endif  // DOCS_PICTURES_BOARD_H_
