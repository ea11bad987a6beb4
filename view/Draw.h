#ifndef VIEW_DRAW_H_
#define VIEW_DRAW_H_

#include <initializer_list>
#include <string>

#include "VemFont.h"
#include "VemOverlay.h"
#include "VemPointArray.h"
#include "VemROI.h"
#include "VemRegion.h"
#include "vem/view.h"
#include "view/Canvas.h"
#include "view/PixelSet.h"
#include "view/Shapes.h"

// What can be drawn on a canvas, whose picture was found fit for it.

void DrawOverlay(Canvas& canvas, VemOverlay& overlay);
void DrawRoi(Canvas& canvas, const VemROI& roi, const vem::draw_style& style);
void DrawText(Canvas& canvas, const cv::Point2d& place, const std::string& text,
              const VemFont& font, const Color& color);

/// For what reads an object, though it is not const.
template <typename T>
T& Readable(const T& object) {
  return const_cast<T&>(object);
}

cv::Point2d PointOf(const VemPoint& point);
Chain ChainOf(const VemPointArray& points);
bool AreFinite(const VemPoint& point, std::initializer_list<double> values);

/// What the runs of a region, or of the mask of a region of interest, cover of a picture.
PixelSet PixelsOf(const VemRegion& region, const cv::Size& picture);
PixelSet PixelsOf(const VemROI& roi, const cv::Size& picture);

#endif  // VIEW_DRAW_H_
