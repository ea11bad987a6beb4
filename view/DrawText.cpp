#include "view/Draw.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

#include <opencv2/imgproc.hpp>

namespace {

constexpr double kCapitals = 21;  // The height of capital letters at scale 1.
constexpr long kLargest = 8000;   // What OpenCV's arithmetic takes.

// Characters that OpenCV has: printable ASCII. Others, of however many bytes, become one '?' each.
std::string Printable(const std::string& text) {
  std::string printable;
  int missing = 0;  // Bytes of the character that was begun.
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    const bool goesOn = (byte & 0xc0) == 0x80;
    if (goesOn && missing > 0) {
      --missing;
      continue;
    }
    missing = byte >= 0xc0 ? 1 + (byte >= 0xe0) + (byte >= 0xf0) : 0;
    printable.push_back(byte >= ' ' && byte <= '~' ? c : '?');
  }
  return printable;
}

// A box that holds a text's letters and its strokes' width, around a place at (0, 0).
cv::Rect2d BoxOf(const std::string& text, double scale) {
  constexpr double kWidest = 40, kAscent = 40, kDescent = 20, kStroke = 8;
  return {-kStroke - kWidest * scale, -kAscent * scale - kStroke,
          kWidest * scale * static_cast<double>(text.size() + 2) + 2 * kStroke,
          (kAscent + kDescent) * scale + 2 * kStroke};
}

// The part of the picture that a box at a place may cover.
cv::Rect Seen(const cv::Rect2d& box, const cv::Point2d& place, const cv::Size& picture) {
  const double left = std::max(std::floor(place.x + box.x), 0.0);
  const double top = std::max(std::floor(place.y + box.y), 0.0);
  const double right = std::min(std::ceil(place.x + box.x + box.width), 1.0 * picture.width);
  const double bottom = std::min(std::ceil(place.y + box.y + box.height), 1.0 * picture.height);
  if (left >= right || top >= bottom) return {};
  return {static_cast<int>(left), static_cast<int>(top), static_cast<int>(right - left),
          static_cast<int>(bottom - top)};
}

// How far a character leads at scale 1.
double Advance(char c, int face) {
  return cv::getTextSize(std::string(1, c), face, 1, 0, nullptr).width;
}

// Cuts off what stands left and right of a picture, and brings the place to the first letter left.
std::string Seen(const std::string& text, int face, double scale, int width, cv::Point2d& place) {
  constexpr double kBeside = 40;   // How far a letter reaches to each side, and more.
  constexpr double kStep = 65536;  // OpenCV takes a scale in steps.
  const double stepped = cvRound(scale * kStep) / kStep;
  double advances[128];
  for (char c = ' '; c <= '~'; ++c) advances[static_cast<int>(c)] = Advance(c, face) * stepped;
  const double left = -kBeside * scale, right = width + kBeside * scale;
  std::size_t first = 0;
  double skipped = 0;
  for (; first < text.size(); ++first) {
    const double advance = advances[static_cast<int>(text[first])];
    if (place.x + skipped + advance >= left) break;
    skipped += advance;
  }
  double x = place.x + skipped;
  std::size_t end = first;
  for (; end < text.size() && x <= right; ++end) x += advances[static_cast<int>(text[end])];
  place.x += skipped;
  return text.substr(first, end - first);
}

bool HasSerifs(const VemFont& font) {
  return font.Name.ValType() == VemVarString && std::strcmp(font.Name.S(), "Times") == 0;
}

}  // namespace

void DrawText(Canvas& canvas, const cv::Point2d& place, const std::string& text,
              const VemFont& font, const Color& color) {
  constexpr double kFar = 1e8;  // So that a place is a whole number of 32 bits.
  if (font.Size < 1 || !(std::abs(place.x) < kFar && std::abs(place.y) < kFar)) return;
  const double scale = static_cast<double>(std::min(font.Size, kLargest)) / kCapitals;
  const int face = HasSerifs(font) ? cv::FONT_HERSHEY_COMPLEX : cv::FONT_HERSHEY_SIMPLEX;
  cv::Point2d start = place;
  const std::string shown = Seen(Printable(text), face, scale, canvas.Size().width, start);
  const cv::Rect seen = Seen(BoxOf(shown, scale), start, canvas.Size());
  if (shown.empty() || seen.area() == 0) return;

  cv::Mat letters = cv::Mat::zeros(seen.size(), CV_8UC1);
  const int stroke = font.Weight >= 500 ? 2 : 1;
  cv::putText(letters, shown, cv::Point(cvRound(start.x), cvRound(start.y)) - seen.tl(), face,
              scale, cv::Scalar(255), stroke, cv::LINE_AA);
  std::vector<unsigned char> weights;
  for (int row = 0; row < letters.rows; ++row) {
    weights.assign(letters.ptr(row), letters.ptr(row) + letters.cols);
    canvas.Lay(seen.y + row, seen.x, weights, color);
  }
}
