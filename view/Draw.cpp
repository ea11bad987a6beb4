#include "view/Draw.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "VemContour.h"
#include "VemContourArray.h"
#include "VemOverlayPath.h"
#include "view/Pen.h"

cv::Point2d PointOf(const VemPoint& point) { return {point.x, point.y}; }

Chain ChainOf(const VemPointArray& points) {
  Chain chain;
  chain.reserve(static_cast<std::size_t>(points.Length()));
  for (int i = 0; i < points.Length(); ++i) chain.push_back(PointOf(points[i]));
  return chain;
}

bool AreFinite(const VemPoint& point, std::initializer_list<double> values) {
  return IsFinite(PointOf(point)) &&
         std::all_of(values.begin(), values.end(), [](double value) { return IsFinite(value); });
}

PixelSet PixelsOf(const VemRegion& region, const cv::Size& picture) {
  VemVarArray rows, firstColumns, lastColumns;
  Readable(region).GetRegionRuns(&rows, &firstColumns, &lastColumns);
  PixelSet pixels(picture);
  pixels.Add(rows, firstColumns, lastColumns);
  return pixels;
}

PixelSet PixelsOf(const VemROI& roi, const cv::Size& picture) {
  VemVarArray rows, firstColumns, lastColumns;
  int width = 0, height = 0;
  roi.GetMask(&rows, &firstColumns, &lastColumns, &width, &height);
  PixelSet pixels(picture);
  pixels.Add(rows, firstColumns, lastColumns);
  return pixels;
}

namespace {

Chain ChainOf(const VemContour& contour) {
  VemPointArray points;
  Readable(contour).ToPointArray(&points);
  return ::ChainOf(points);
}

// The runs of contours on a canvas as large as the picture, or larger where it is narrow.
void TintContours(Canvas& canvas, VemContourArray& contours, const Color& color) {
  constexpr int kLeast = 2;
  const cv::Size size = canvas.Size();
  VemROI mask;
  mask.GenMask(contours, std::max(size.width, kLeast), std::max(size.height, kLeast));
  PixelsOf(mask, size).Lay(canvas, color, kTint);
}

// A mask's points are whole numbers of 32 bits.
bool FitsPoints(const Chain& chain) {
  constexpr double kLimit = 2147483647;
  return std::all_of(chain.begin(), chain.end(), [](const cv::Point2d& p) {
    return std::abs(p.x) < kLimit && std::abs(p.y) < kLimit;
  });
}

void DrawContours(Canvas& canvas, const VemContourArray& contours, const vem::draw_style& style) {
  std::vector<Chain> chains;
  std::vector<Chain> finite;
  VemContourArray mask;
  for (int i = 0; i < contours.Length(); ++i) {
    VemContour contour = contours[i];
    chains.push_back(ChainOf(contour));
    if (!IsFinite(chains.back())) continue;
    finite.push_back(chains.back());
    mask.Append(contour);
  }
  Pen pen(canvas, ColorOf(style), style.width);
  if (style.filled && std::all_of(finite.begin(), finite.end(), FitsPoints)) {
    TintContours(canvas, mask, ColorOf(style));
  } else if (style.filled) {
    pen.Tint(finite, ColorOf(style));
  }
  for (const Chain& chain : chains) pen.Open(chain);
}

void DrawRegion(Canvas& canvas, const VemRegion& region, const vem::draw_style& style) {
  const PixelSet pixels = PixelsOf(region, canvas.Size());
  if (style.filled) pixels.Lay(canvas, ColorOf(style), kTint);
  if (style.width >= 1) pixels.LayBorder(canvas, ColorOf(style), style.width);
}

void DrawPoints(Canvas& canvas, const VemPointArray& points, const vem::draw_style& style) {
  Chain finite = ChainOf(points);
  finite.erase(std::remove_if(finite.begin(), finite.end(),
                              [](const cv::Point2d& p) { return !IsFinite(p); }),
               finite.end());
  Pen pen(canvas, ColorOf(style), style.width);
  pen.Dots(finite, pen.Width() + 0.5);
}

// Draws where a picture is fit for it.
template <typename DrawOn>
bool On(cv::Mat& picture, vem::channel_order order, DrawOn drawOn) {
  if (!Canvas::Takes(picture)) return false;
  Canvas canvas(picture, order);
  drawOn(canvas);
  return true;
}

}  // namespace

namespace vem {

bool draw(cv::Mat& picture, const VemOverlayPath& path, channel_order order) {
  return On(picture, order, [&](Canvas& canvas) {
    for (int i = 0; i < path.Length(); ++i) DrawOverlay(canvas, Readable(path)[i]);
  });
}

bool draw(cv::Mat& picture, const VemOverlay& overlay, channel_order order) {
  return On(picture, order, [&](Canvas& canvas) { DrawOverlay(canvas, Readable(overlay)); });
}

bool draw(cv::Mat& picture, const VemROI& roi, const draw_style& style, channel_order order) {
  return On(picture, order, [&](Canvas& canvas) { DrawRoi(canvas, roi, style); });
}

bool draw(cv::Mat& picture, const VemRegion& region, const draw_style& style, channel_order order) {
  return On(picture, order, [&](Canvas& canvas) { DrawRegion(canvas, region, style); });
}

bool draw(cv::Mat& picture, const VemContour& contour, const draw_style& style,
          channel_order order) {
  VemContourArray contours;
  contours.Append(Readable(contour));
  return draw(picture, contours, style, order);
}

bool draw(cv::Mat& picture, const VemContourArray& contours, const draw_style& style,
          channel_order order) {
  return On(picture, order, [&](Canvas& canvas) { DrawContours(canvas, contours, style); });
}

bool draw(cv::Mat& picture, const VemPointArray& points, const draw_style& style,
          channel_order order) {
  return On(picture, order, [&](Canvas& canvas) { DrawPoints(canvas, points, style); });
}

}  // namespace vem
