#ifndef VEM_VIEW_H_
#define VEM_VIEW_H_

#include "VemExport.h"

namespace cv {
class Mat;
}  // namespace cv

class VemContour;
class VemContourArray;
class VemOverlay;
class VemOverlayPath;
class VemPointArray;
class VemROI;
class VemRegion;

/// Drawing on OpenCV's pictures: a library of its own, libVemView.so.1.
///
/// Pictures. A `cv::Mat` of one, three or four channels, each of 8 or 16 bits without sign or of
/// 32 or 64 bits in floating point; it may be a part of a larger one. On any other, or an empty
/// one, nothing is drawn and the result is false. A picture keeps its size, its type and its
/// memory, and nothing outside it is ever written.
///
/// Colours. Overlays, styles and 8-bit channels tell 0 to 255; 255 is 65535 in 16 bits and 1.0 in
/// floating point. What lies beyond counts as the nearest. A grey picture takes a colour's
/// brightness; a fourth channel is opacity and becomes full where something is drawn.
///
/// Shapes. Whole coordinates are the centres of pixels. Edges are smooth: a pixel that is covered
/// in part takes on the colour in part. Angles are degrees, counter-clockwise as seen. A width
/// below 1 draws no line, and one above 32767 counts as that.
///
/// Numbers may be anything. A shape with a coordinate or a size that is not finite is not drawn,
/// and of one that reaches beyond the picture the part inside is. (Overlays and regions of interest
/// tell most of theirs as floats, of which none beyond 3.4e38 is finite.) What is told by points is
/// exact however far away they are; what is told by lengths, radii, angles or counts lies within
/// some 1e-15 of its size beside its place, which is a pixel from 1e15 on.
///
/// Time. An element costs at most the picture's rows for each of its points, runs, letters and
/// arrows, and the pixels that it covers; the size of its shapes adds nothing, nor do more arrows
/// than have a place of their own in the picture. A region of interest that is filled by its mask
/// costs the mask, of up to 65536 rows.
///
/// Memory. While it is drawn, an element takes some 16 bytes for each run, and 1 to 13 kilobytes
/// for each point or arrow, the more the wider the line.
///
/// Nothing is reported but the result; what throws is the allocator alone, OpenCV's included. No
/// argument but the picture is changed. Different pictures may be drawn on at once; parts of one
/// too, where they don't overlap.
namespace vem {

/// Which channel of a picture of three or four stands first: OpenCV's decoders give blue.
enum class channel_order : int {
  bgr = 0,  ///< Blue first.
  rgb = 1   ///< Red first.
};

/// How shapes without a pen of their own are drawn.
struct draw_style {
  draw_style() {}  ///< A red line, one pixel wide.
  /// A line, `filled` or not; colours from 0 to 255, width in pixels.
  draw_style(int blueValue, int greenValue, int redValue, int lineWidth = 1, bool fill = false)
      : blue(blueValue), green(greenValue), red(redValue), width(lineWidth), filled(fill) {}

  int blue = 0;         ///< From 0 to 255.
  int green = 0;        ///< From 0 to 255.
  int red = 255;        ///< From 0 to 255.
  int width = 1;        ///< Of the line, in pixels.
  bool filled = false;  ///< Whether the inside is tinted, the picture shining through.
};

/// Draws the elements of a path, in its order, as below.
VEM_EXPORT bool draw(cv::Mat& picture, const VemOverlayPath& path,
                     channel_order order = channel_order::bgr);

/// Draws an element, with its pen and brush; one without type draws nothing and gives true.
///
/// The three components of pen and brush are taken as blue, green, red. A pen's width below 1
/// counts as 1. A brush of mode 1 tints the inside of shapes, the picture shining through; with any
/// other mode they stay empty. What readers of the element refuse, as an arc of sweep 0, is not
/// drawn.
///
/// - A point is a cross, 33 pixels wide.
/// - A rake is a rectangle with `count` arrows from one side to the opposite one: with mode 0 and 1
///   along its first side, 2 and 3 along its second, the odd modes backwards.
/// - Spokes are a ring with `count` arrows, outward with mode 4, inward with mode 5.
/// - An irregular chain is closed, with a dot at each point.
/// - A text has its lower left corner at its point. The size is the height of capital letters in
///   pixels, taken as 8000 at most; below 1, or with its point 1e8 pixels away, it is not drawn. A
///   weight of 500 and above is bold; "Times" has serifs, and every other name has not. OpenCV
///   writes it: what is no printable ASCII becomes a `?`, and pixels may differ from version to
///   version.
/// - An image has its upper left pixel at its point and a frame in the pen's colour. Its channels
///   are taken as blue, green, red and opacity; its depth may be any that a picture may have.
/// - A region's pixels are tinted, in the brush's colour with mode 1, else in the pen's.
///
/// Of arrows that stand nearer to each other than a pixel, or 1/64 of the line's width, only as
/// many are drawn as fill their place; of spokes that go round more than once, as many as have a
/// place once around.
VEM_EXPORT bool draw(cv::Mat& picture, const VemOverlay& overlay,
                     channel_order order = channel_order::bgr);

/// Draws a region of interest by its outline.
///
/// Filled, exactly those pixels are tinted that VemROI::GetMask gives; but where one of the shape's
/// numbers is 32768 or more, or -32768 or less, the inside of the outline. A line, an arc and a
/// point have no inside. The outline of a mask runs along its own outermost pixels.
VEM_EXPORT bool draw(cv::Mat& picture, const VemROI& roi, const draw_style& style = draw_style(),
                     channel_order order = channel_order::bgr);

/// Draws a region's outermost pixels, a band as wide as the line. Filled, all its pixels are tinted
/// first. Its canvas does not count.
VEM_EXPORT bool draw(cv::Mat& picture, const VemRegion& region,
                     const draw_style& style = draw_style(),
                     channel_order order = channel_order::bgr);

/// Draws a contour as the open chain that it is; filled, as an array with this contour alone.
VEM_EXPORT bool draw(cv::Mat& picture, const VemContour& contour,
                     const draw_style& style = draw_style(),
                     channel_order order = channel_order::bgr);

/// Draws contours as open chains. Filled, the pixels are tinted that they cover, even-odd over all
/// of them, their borders included, as VemROI::GenMask has it; where one has a coordinate of 2^31
/// or beyond, which no mask can tell, what they cover is tinted with smooth edges.
VEM_EXPORT bool draw(cv::Mat& picture, const VemContourArray& contours,
                     const draw_style& style = draw_style(),
                     channel_order order = channel_order::bgr);

/// Draws each point as a dot, twice as wide as the line and one pixel more.
VEM_EXPORT bool draw(cv::Mat& picture, const VemPointArray& points,
                     const draw_style& style = draw_style(),
                     channel_order order = channel_order::bgr);

}  // namespace vem

#endif  // VEM_VIEW_H_
