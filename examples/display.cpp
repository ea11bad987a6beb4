// A stand-in for a display: builds one overlay path with every kind of element over a picture and
// draws it with OpenCV.
//
//     display
//
// The picture is a plate of parts, six by three. Each part gets the element that an inspection
// would show on it, and the kind's name below. The program writes display.png. What a pen's
// colours, a brush's mode, a rake's mode and a font's weight mean is for the display to settle;
// this one has
//
//     colours    blue, green, red
//     brush      mode 0 leaves a shape empty, 1 fills it, the picture shining through
//     rake       arrows from one side of the rectangle to the opposite one: with mode 0 and 1
//                along its first side, 2 and 3 along its second, the odd modes backwards
//     spokes     lines from the inner to the outer circle with mode 4, the other way with mode 5
//     font       a weight of 500 and above is bold

#include <cstddef>
#include <cstdio>
#include <string>
#include <vector>

#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "VemImage.h"
#include "VemOverlay.h"
#include "VemOverlayPath.h"
#include "VemRegion.h"
#include "display_scene.h"
#include "display_shapes.h"

namespace {

/// Draws overlays on a picture in blue, green, red.
class Display {
 public:
  explicit Display(const VemImage& picture) {
    cv::cvtColor(picture.Mat(), canvas_, cv::COLOR_GRAY2BGR);
  }

  void Draw(VemOverlayPath& path) {
    for (int i = 0; i < path.Length(); ++i) Draw(path[i]);
  }

  const cv::Mat& Canvas() const { return canvas_; }

 private:
  void Draw(VemOverlay& overlay);
  void DrawPoint(VemOverlay& overlay);
  void DrawSegment(VemOverlay& overlay, bool arrow);
  void DrawChain(VemOverlay& overlay);
  void DrawRect1(VemOverlay& overlay, bool rake);
  void DrawRect2(VemOverlay& overlay, bool rake);
  void DrawRound(VemOverlay& overlay);
  void DrawRing(VemOverlay& overlay, bool spokes);
  void DrawText(VemOverlay& overlay);
  void DrawImage(VemOverlay& overlay);
  void DrawRegion(VemOverlay& overlay);

  // Filled by the brush, outlined by the pen.
  void Area(const std::vector<Chain>& outlines);
  void Open(const Chain& chain) { Stroke(canvas_, chain, false, pen_, width_); }
  void Arrow(const cv::Point2d& from, const cv::Point2d& to);
  void Rake(const Chain& rectangle, int mode, int count);
  void Blend(const cv::Mat& layer);

  cv::Mat canvas_;
  cv::Scalar pen_;
  cv::Scalar brush_;
  int width_ = 1;
  bool filled_ = false;
};

void Display::Draw(VemOverlay& overlay) {
  long a = 0, b = 0, c = 0, d = 0;
  overlay.GetPen(&a, &b, &c, &d);
  pen_ = cv::Scalar(static_cast<double>(a), static_cast<double>(b), static_cast<double>(c));
  width_ = static_cast<int>(d);
  overlay.GetBrush(&a, &b, &c, &d);
  brush_ = cv::Scalar(static_cast<double>(a), static_cast<double>(b), static_cast<double>(c));
  filled_ = d == 1;

  switch (overlay.OverlayType()) {
    case VemOverlayPoint:
      return DrawPoint(overlay);
    case VemOverlayLine:
    case VemOverlayArrowLine:
      return DrawSegment(overlay, overlay.OverlayType() == VemOverlayArrowLine);
    case VemOverlayPolygon:
    case VemOverlayPolyLine:
    case VemOverlayIrregular:
      return DrawChain(overlay);
    case VemOverlayRect1:
    case VemOverlayRakeRect1:
      return DrawRect1(overlay, overlay.OverlayType() == VemOverlayRakeRect1);
    case VemOverlayRect2:
    case VemOverlayRakeRect2:
      return DrawRect2(overlay, overlay.OverlayType() == VemOverlayRakeRect2);
    case VemOverlayCircle:
    case VemOverlayEllipse:
    case VemOverlayArc:
      return DrawRound(overlay);
    case VemOverlayTorus:
    case VemOverlaySpokeTorus:
      return DrawRing(overlay, overlay.OverlayType() == VemOverlaySpokeTorus);
    case VemOverlayText:
      return DrawText(overlay);
    case VemOverlayImage:
      return DrawImage(overlay);
    case VemOverlayRegion:
      return DrawRegion(overlay);
    default:
      return;  // VemOverlayNone: an element that was refused.
  }
}

void Display::Blend(const cv::Mat& layer) {
  constexpr double kShare = 0.45;
  cv::addWeighted(layer, kShare, canvas_, 1 - kShare, 0, canvas_);
}

void Display::Area(const std::vector<Chain>& outlines) {
  if (filled_) {
    cv::Mat layer = canvas_.clone();
    Fill(layer, outlines, brush_);
    Blend(layer);
  }
  for (const Chain& outline : outlines) Stroke(canvas_, outline, true, pen_, width_);
}

void Display::Arrow(const cv::Point2d& from, const cv::Point2d& to) {
  const cv::Point2d along = (to - from) / cv::norm(to - from);
  const cv::Point2d across(-along.y, along.x);
  const double head = 5 + 3 * width_;
  const cv::Point2d neck = to - head * along;
  Open({from, neck});
  Fill(canvas_, {{to, neck + 0.5 * head * across, neck - 0.5 * head * across}}, pen_);
}

// Lines from one side of a rectangle to the opposite one, spread evenly; the mode tells the side.
void Display::Rake(const Chain& rectangle, int mode, int count) {
  struct Way {
    std::size_t start, end, side;  // Corners: a line's two, and the one to spread toward.
  };
  constexpr Way kWays[] = {{0, 1, 3}, {1, 0, 2}, {0, 3, 1}, {3, 0, 2}};
  if (mode > 3) return;  // A mode that reads back, but tells no side.
  const Way& way = kWays[mode];
  for (int i = 0; i < count; ++i) {
    const cv::Point2d spread = (rectangle[way.side] - rectangle[way.start]) * ((i + 0.5) / count);
    Arrow(rectangle[way.start] + spread, rectangle[way.end] + spread);
  }
}

void Display::DrawPoint(VemOverlay& overlay) {
  VemPoint point;
  overlay.GetPoint(&point);
  const cv::Point2d p(point.x, point.y);
  constexpr double kArm = 16;
  Stroke(canvas_, {p - cv::Point2d(kArm, 0), p + cv::Point2d(kArm, 0)}, false, pen_, 3);
  Stroke(canvas_, {p - cv::Point2d(0, kArm), p + cv::Point2d(0, kArm)}, false, pen_, 3);
}

void Display::DrawSegment(VemOverlay& overlay, bool arrow) {
  VemPoint from, to;
  if (!(arrow ? overlay.GetArrowLine(&from, &to) : overlay.GetLine(&from, &to))) return;
  const cv::Point2d start(from.x, from.y);
  const cv::Point2d end(to.x, to.y);
  if (arrow) return Arrow(start, end);
  Open({start, end});
}

void Display::DrawChain(VemOverlay& overlay) {
  VemPointArray points;
  if (!overlay.GetPolygon(&points) && !overlay.GetPolyLine(&points) &&
      !overlay.GetIrregular(&points)) {
    return;
  }
  Chain chain;
  for (int i = 0; i < points.Length(); ++i) chain.emplace_back(points[i].x, points[i].y);
  if (overlay.OverlayType() == VemOverlayPolyLine) return Open(chain);
  Area({chain});
  if (overlay.OverlayType() == VemOverlayPolygon) return;
  for (const cv::Point2d& p : chain) Fill(canvas_, {CircleOf(p, 2.0 * width_)}, pen_);
}

void Display::DrawRect1(VemOverlay& overlay, bool rake) {
  VemPoint p1, p2;
  int mode = 0, count = 0;
  if (!(rake ? overlay.GetRakeRect1(&p1, &p2, &mode, &count) : overlay.GetRect1(&p1, &p2))) return;
  const Chain rectangle = {{p1.x, p1.y}, {p2.x, p1.y}, {p2.x, p2.y}, {p1.x, p2.y}};
  Area({rectangle});
  Rake(rectangle, mode, count);
}

void Display::DrawRect2(VemOverlay& overlay, bool rake) {
  VemPoint center;
  double length1 = 0, length2 = 0, angle = 0;
  int mode = 0, count = 0;
  if (!(rake ? overlay.GetRakeRect2(&center, &length1, &length2, &angle, &mode, &count)
             : overlay.GetRect2(&center, &length1, &length2, &angle))) {
    return;
  }
  const Chain rectangle = RectangleOf({center.x, center.y}, length1, length2, angle);
  Area({rectangle});
  Rake(rectangle, mode, count);
}

void Display::DrawRound(VemOverlay& overlay) {
  VemPoint center;
  double a = 0, b = 0, c = 0;
  if (overlay.OverlayType() == VemOverlayArc && overlay.GetArc(&center, &a, &b, &c)) {
    Open(ArcOf({center.x, center.y}, a, b, c));
  } else if (overlay.OverlayType() == VemOverlayCircle && overlay.GetCircle(&center, &a)) {
    Area({CircleOf({center.x, center.y}, a)});
  } else if (overlay.GetEllipse(&center, &a, &b, &c)) {
    Area({EllipseOf({center.x, center.y}, a, b, c)});
  }
}

void Display::DrawRing(VemOverlay& overlay, bool spokes) {
  VemPoint point;
  double inner = 0, outer = 0, start = 0, sweep = 0;
  int mode = 0, count = 0;
  if (!(spokes ? overlay.GetSpokeTorus(&point, &inner, &outer, &start, &sweep, &mode, &count)
               : overlay.GetTorus(&point, &inner, &outer, &start, &sweep))) {
    return;
  }
  const cv::Point2d center(point.x, point.y);
  Chain outerArc = ArcOf(center, outer, start, sweep);
  Chain innerArc = ArcOf(center, inner, start, sweep);
  if (sweep >= 360) {
    Area({outerArc, innerArc});
  } else {
    outerArc.insert(outerArc.end(), innerArc.rbegin(), innerArc.rend());
    Area({outerArc});
  }
  for (int i = 0; i < count; ++i) {
    const double angle = start + sweep * (i + 0.5) / count;
    const bool outward = mode == 4;
    Arrow(Polar(center, outward ? inner : outer, angle),
          Polar(center, outward ? outer : inner, angle));
  }
}

void Display::DrawText(VemOverlay& overlay) {
  VemPoint place;
  VemVar text;
  VemFont font;
  overlay.GetText(&place, &text, &font);
  if (text.ValType() != VemVarString || font.Name.ValType() != VemVarString) return;
  const bool serifs = std::string(font.Name.S()) == "Times";
  const int face = serifs ? cv::FONT_HERSHEY_COMPLEX : cv::FONT_HERSHEY_SIMPLEX;
  const int stroke = font.Weight >= 500 ? 2 : 1;
  constexpr double kCapitals = 21;  // The height of capital letters at scale 1.
  const double scale = static_cast<double>(font.Size) / kCapitals;
  cv::putText(canvas_, text.S(), cv::Point(cvRound(place.x), cvRound(place.y)), face, scale, pen_,
              stroke, cv::LINE_AA);
}

void Display::DrawImage(VemOverlay& overlay) {
  VemPoint place;
  VemImage image;
  overlay.GetImage(&place, &image);
  const cv::Rect whole(cvRound(place.x), cvRound(place.y), image.Width(), image.Height());
  const cv::Rect shown = whole & cv::Rect(cv::Point(), canvas_.size());
  if (shown.area() == 0 || image.BitDepth() != VemImageType8U) return;
  cv::Mat pixels = image.Mat();
  if (image.Channels() == 1) cv::cvtColor(image.Mat(), pixels, cv::COLOR_GRAY2BGR);
  if (pixels.channels() != 3) return;
  pixels(shown - whole.tl()).copyTo(canvas_(shown));
  cv::rectangle(canvas_, whole, pen_, width_);
}

void Display::DrawRegion(VemOverlay& overlay) {
  VemRegion region;
  overlay.GetRegion(&region);
  VemVarArray rows, firstColumns, lastColumns;
  region.GetRegionRuns(&rows, &firstColumns, &lastColumns);
  cv::Mat layer = canvas_.clone();
  for (int i = 0; i < rows.Length(); ++i) {
    const cv::Rect run(cv::Point(firstColumns[i].I(), rows[i].I()),
                       cv::Point(lastColumns[i].I() + 1, rows[i].I() + 1));
    layer(run & cv::Rect(cv::Point(), layer.size())).setTo(filled_ ? brush_ : pen_);
  }
  Blend(layer);
}

}  // namespace

int main() {
  const VemImage picture = DrawPicture();
  VemOverlayPath path = BuildPath(picture);
  Display display(picture);
  display.Draw(path);
  if (!cv::imwrite("display.png", display.Canvas())) {
    std::fprintf(stderr, "display: cannot write display.png\n");
    return 1;
  }
  std::printf("%d overlays on a picture of %d x %d\n", path.Length(), picture.Width(),
              picture.Height());
  return 0;
}
