#include "Board.h"

#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstdlib>

#include <opencv2/imgcodecs.hpp>

#include "vem/view.h"

std::vector<PixelRun> RunsOf(const VemVarArray& rows, const VemVarArray& firstColumns,
                             const VemVarArray& lastColumns) {
  std::vector<PixelRun> runs;
  runs.reserve(static_cast<std::size_t>(rows.Length()));
  for (int i = 0; i < rows.Length(); ++i) {
    runs.push_back({rows[i].I(), firstColumns[i].I(), lastColumns[i].I()});
  }
  return runs;
}

Board::Board(int width, int height) : picture_(height, width, CV_8UC3, cv::Scalar::all(255)) {}

void Board::Fill(int x, int y, int width, int height, const Ink& ink) {
  const cv::Rect box = cv::Rect(x, y, width, height) & cv::Rect(cv::Point(), picture_.size());
  picture_(box).setTo(cv::Scalar(ink.blue, ink.green, ink.red));
}

void Board::Frame(int x, int y, int width, int height, const Ink& ink, int line) {
  Fill(x, y, width, line, ink);
  Fill(x, y + height - line, width, line, ink);
  Fill(x, y, line, height, ink);
  Fill(x + width - line, y, line, height, ink);
}

void Board::Line(double x1, double y1, double x2, double y2, const Ink& ink, int line) {
  VemPoint from(x1, y1), to(x2, y2);
  VemOverlay overlay;
  overlay.GenLine(from, to);
  Draw(overlay, ink, line);
}

void Board::Dashes(double x1, double y1, double x2, double y2, const Ink& ink) {
  constexpr double kDash = 5;
  const double length = std::hypot(x2 - x1, y2 - y1);
  const int dashes = static_cast<int>(length / (2 * kDash));
  for (int i = 0; i < dashes; ++i) {
    const double begin = 1.0 * i / dashes;
    const double end = begin + 0.5 / dashes;
    Line(x1 + (x2 - x1) * begin, y1 + (y2 - y1) * begin, x1 + (x2 - x1) * end, y1 + (y2 - y1) * end,
         ink);
  }
}

void Board::Arrow(double x1, double y1, double x2, double y2, const Ink& ink, int line) {
  VemPoint from(x1, y1), to(x2, y2);
  VemOverlay overlay;
  overlay.GenArrowLine(from, to);
  Draw(overlay, ink, line);
}

void Board::Text(double x, double y, const std::string& text, const Ink& ink, long size,
                 bool isBold) {
  VemVar name("Plain");
  VemFont font(name, size);
  font.Weight = isBold ? 500 : 1;
  VemPoint place(x, y);
  VemOverlay overlay;
  overlay.GenText(place, text.c_str(), font);
  Draw(overlay, ink);
}

void Board::Draw(VemOverlay overlay, const Ink& ink, long line, bool isFilled) {
  overlay.SetPen(ink.blue, ink.green, ink.red, line);
  overlay.SetBrush(ink.blue, ink.green, ink.red, isFilled ? 1 : 0);
  vem::draw(picture_, overlay);
}

Grid::Grid(Board& board, int left, int top, int columns, int rows, int cell)
    : board_(board), left_(left), top_(top), columns_(columns), rows_(rows), cell_(cell) {
  for (int i = 0; i <= columns; ++i) board.Fill(left + i * cell, top, 1, rows * cell + 1, kLight);
  for (int i = 0; i <= rows; ++i) board.Fill(left, top + i * cell, columns * cell + 1, 1, kLight);
  const int step = cell < 18 ? 5 : 2;
  for (int i = 0; i < columns; i += step) {
    board.Text(X(i) - (i < 10 ? 3 : 7), top - 4, std::to_string(i), kGrey, 7);
  }
  for (int i = 0; i < rows; i += step) {
    board.Text(left - (i < 10 ? 11 : 17), Y(i) + 4, std::to_string(i), kGrey, 7);
  }
}

void Grid::Tint(int column, int row, const Ink& ink) {
  if (!Contains(column, row)) return;
  board_.Fill(left_ + column * cell_ + 1, top_ + row * cell_ + 1, cell_ - 1, cell_ - 1, ink);
}

void Grid::Run(const PixelRun& run, const Ink& fill, const Ink& frame) {
  for (int column = run.first; column <= run.last; ++column) Tint(column, run.row, fill);
  if (run.first > run.last) return;
  board_.Frame(left_ + run.first * cell_ + 2, top_ + run.row * cell_ + 2,
               (run.last - run.first + 1) * cell_ - 3, cell_ - 3, frame);
}

void Grid::Outline(VemContour contour, const Ink& ink, int line) {
  VemPointArray points;
  contour.ToPointArray(&points);
  for (int i = 0; i < points.Length(); ++i) points[i].Reset(X(points[i].x), Y(points[i].y));
  contour.FromPointArray(points);
  const vem::draw_style style(ink.blue, ink.green, ink.red, line);
  vem::draw(board_.Picture(), contour, style);
  vem::draw(board_.Picture(), points, style);
}

void Grid::Dot(double column, double row, const Ink& ink, int line) {
  VemPointArray points;
  VemPoint point(X(column), Y(row));
  points.Append(point);
  vem::draw(board_.Picture(), points, vem::draw_style(ink.blue, ink.green, ink.red, line));
}

void Grid::Canvas(int width, int height, const Ink& ink) {
  board_.Frame(left_ - 1, top_ - 1, width * cell_ + 3, height * cell_ + 3, ink, 2);
}

void Save(const std::string& folder, const std::string& name, const Board& board) {
  const std::string path = folder + "/" + name;
  if (!cv::imwrite(path, board.Picture())) {
    std::fprintf(stderr, "cannot write %s\n", path.c_str());
    std::exit(1);
  }
}
