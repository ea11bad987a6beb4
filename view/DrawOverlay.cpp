#include "view/Draw.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include "VemImage.h"
#include "view/Pen.h"

namespace {

int Whole(long value) { return static_cast<int>(std::min(std::max(value, -(1L << 30)), 1L << 30)); }

// An element's pen and brush.
struct Tools {
  explicit Tools(VemOverlay& overlay) {
    long a = 0, b = 0, c = 0, d = 0;
    overlay.GetPen(&a, &b, &c, &d);
    pen = ColorOf(a, b, c);
    width = std::max(Whole(d), 1);
    overlay.GetBrush(&a, &b, &c, &d);
    brush = ColorOf(a, b, c);
    filled = d == 1;
  }

  Color pen;
  Color brush;
  int width;
  bool filled;
};

// Which of `count` arrows are drawn: from `first` to the one before `end`, every `step`th.
struct Picked {
  int first;
  int end;
  int step;
};

class OverlayDrawing {
 public:
  OverlayDrawing(Canvas& canvas, VemOverlay& overlay)
      : canvas_(canvas),
        overlay_(overlay),
        tools_(overlay),
        pen_(canvas, tools_.pen, tools_.width) {}

  void Draw();

 private:
  void DrawPoint();
  void DrawLine();
  void DrawArrowLine();
  void DrawPolygon();
  void DrawPolyLine();
  void DrawIrregular();
  void DrawRect1();
  void DrawRakeRect1();
  void DrawRect2();
  void DrawRakeRect2();
  void DrawCircle();
  void DrawEllipse();
  void DrawArc();
  void DrawTorus();
  void DrawSpokes();
  void DrawLabel();
  void DrawImage();
  void DrawRegion();

  // Filled by the brush, outlined by the pen.
  void Area(const std::vector<Chain>& outlines);
  void Rake(const Chain& rectangle, int mode, int count);
  double Apart() const;
  Picked Pick(double first, double last, int count, double spacing) const;
  std::vector<Picked> PickSpokes(const cv::Point2d& center, double outer, double start,
                                 double sweep, int count) const;

  Canvas& canvas_;
  VemOverlay& overlay_;
  Tools tools_;
  Pen pen_;
};

void OverlayDrawing::Draw() {
  switch (overlay_.OverlayType()) {
    case VemOverlayPoint:
      return DrawPoint();
    case VemOverlayLine:
      return DrawLine();
    case VemOverlayArrowLine:
      return DrawArrowLine();
    case VemOverlayPolygon:
      return DrawPolygon();
    case VemOverlayPolyLine:
      return DrawPolyLine();
    case VemOverlayIrregular:
      return DrawIrregular();
    case VemOverlayRect1:
      return DrawRect1();
    case VemOverlayRakeRect1:
      return DrawRakeRect1();
    case VemOverlayRect2:
      return DrawRect2();
    case VemOverlayRakeRect2:
      return DrawRakeRect2();
    case VemOverlayCircle:
      return DrawCircle();
    case VemOverlayEllipse:
      return DrawEllipse();
    case VemOverlayArc:
      return DrawArc();
    case VemOverlayTorus:
      return DrawTorus();
    case VemOverlaySpokeTorus:
      return DrawSpokes();
    case VemOverlayText:
      return DrawLabel();
    case VemOverlayImage:
      return DrawImage();
    case VemOverlayRegion:
      return DrawRegion();
    default:
      return;  // An element that was refused.
  }
}

void OverlayDrawing::Area(const std::vector<Chain>& outlines) {
  if (tools_.filled) pen_.Tint(outlines, tools_.brush);
  pen_.Closed(outlines);
}

// Of arrows that are spread evenly over [0, 1], those that come near the part between two numbers.
// Of such that stand nearer to each other than can be told apart only as many as fill their place.
Picked OverlayDrawing::Pick(double first, double last, int count, double spacing) const {
  if (!(first <= 1 && last >= 0)) return {0, 0, 1};
  const double from = std::max(first, 0.0) * count - 1, to = std::min(last, 1.0) * count + 1;
  const double step = std::min(static_cast<double>(count), Apart() / spacing);
  return {std::max(static_cast<int>(from), 0),
          static_cast<int>(std::min(to, static_cast<double>(count))),
          std::max(static_cast<int>(step), 1)};
}

// The distance from which on two arrows are told apart: nearer ones leave nothing between their
// lines.
double OverlayDrawing::Apart() const { return std::max(1.0, pen_.Width() / 64.0); }

// Arrows from one side of a rectangle to the opposite one, spread evenly; the mode tells the side.
void OverlayDrawing::Rake(const Chain& rectangle, int mode, int count) {
  struct Way {
    std::size_t start, end, lastStart, lastEnd;  // Corners: the first arrow's two, and the last's.
  };
  constexpr Way kWays[] = {{0, 1, 3, 2}, {1, 0, 2, 3}, {0, 3, 1, 2}, {3, 0, 2, 1}};
  if (mode < 0 || mode > 3) return;  // A mode that reads back, but tells no side.
  const Way& way = kWays[mode];
  const cv::Point2d start = rectangle[way.start], end = rectangle[way.end];
  const cv::Point2d lastStart = rectangle[way.lastStart], lastEnd = rectangle[way.lastEnd];

  // Where the reach of the picture lies along the side. A quarter of a number can be subtracted.
  const cv::Point2d toward = Direction(start, lastStart);
  const double length = Distance(start / 4, lastStart / 4);
  if (!(length > 0)) return;
  const Frame& reach = pen_.Reach();
  const double x1 = (reach.left / 4 - start.x / 4) * toward.x,
               x2 = (reach.right / 4 - start.x / 4) * toward.x;
  const double y1 = (reach.top / 4 - start.y / 4) * toward.y,
               y2 = (reach.bottom / 4 - start.y / 4) * toward.y;
  const Picked picked =
      Pick((std::min(x1, x2) + std::min(y1, y2)) / length,
           (std::max(x1, x2) + std::max(y1, y2)) / length, count, length / count * 4);
  std::vector<Arrow> arrows;
  for (std::int64_t i = picked.first; i < picked.end; i += picked.step) {
    const double part = (static_cast<double>(i) + 0.5) / count;
    arrows.push_back({Between(start, lastStart, part), Between(end, lastEnd, part)});
  }
  pen_.Arrows(arrows);
}

void OverlayDrawing::DrawPoint() {
  VemPoint point;
  overlay_.GetPoint(&point);
  pen_.Cross(PointOf(point));
}

void OverlayDrawing::DrawLine() {
  VemPoint from, to;
  if (overlay_.GetLine(&from, &to)) pen_.Open({PointOf(from), PointOf(to)});
}

void OverlayDrawing::DrawArrowLine() {
  VemPoint from, to;
  if (overlay_.GetArrowLine(&from, &to)) pen_.Arrows({{PointOf(from), PointOf(to)}});
}

void OverlayDrawing::DrawPolygon() {
  VemPointArray points;
  if (overlay_.GetPolygon(&points)) Area({ChainOf(points)});
}

void OverlayDrawing::DrawPolyLine() {
  VemPointArray points;
  if (overlay_.GetPolyLine(&points)) pen_.Open(ChainOf(points));
}

void OverlayDrawing::DrawIrregular() {
  VemPointArray points;
  if (!overlay_.GetIrregular(&points)) return;
  const Chain chain = ChainOf(points);
  Area({chain});
  pen_.Dots(chain, 2.0 * pen_.Width());
}

void OverlayDrawing::DrawRect1() {
  VemPoint p1, p2;
  if (overlay_.GetRect1(&p1, &p2)) Area({RectangleOf(PointOf(p1), PointOf(p2))});
}

void OverlayDrawing::DrawRakeRect1() {
  VemPoint p1, p2;
  int mode = 0, count = 0;
  if (!overlay_.GetRakeRect1(&p1, &p2, &mode, &count)) return;
  if (!IsFinite(PointOf(p1)) || !IsFinite(PointOf(p2))) return;
  const Chain rectangle = RectangleOf(PointOf(p1), PointOf(p2));
  Area({rectangle});
  Rake(rectangle, mode, count);
}

void OverlayDrawing::DrawRect2() {
  VemPoint center;
  double length1 = 0, length2 = 0, angle = 0;
  if (!overlay_.GetRect2(&center, &length1, &length2, &angle)) return;
  Area({RectangleOf(PointOf(center), length1, length2, angle)});
}

void OverlayDrawing::DrawRakeRect2() {
  VemPoint center;
  double length1 = 0, length2 = 0, angle = 0;
  int mode = 0, count = 0;
  if (!overlay_.GetRakeRect2(&center, &length1, &length2, &angle, &mode, &count)) return;
  if (!AreFinite(center, {length1, length2, angle})) return;
  const Chain rectangle = RectangleOf(PointOf(center), length1, length2, angle);
  Area({rectangle});
  Rake(rectangle, mode, count);
}

void OverlayDrawing::DrawCircle() {
  VemPoint center;
  double radius = 0;
  if (!overlay_.GetCircle(&center, &radius) || !AreFinite(center, {radius})) return;
  Area({CircleOf(PointOf(center), radius, pen_.Reach())});
}

void OverlayDrawing::DrawEllipse() {
  VemPoint center;
  double radius1 = 0, radius2 = 0, angle = 0;
  if (!overlay_.GetEllipse(&center, &radius1, &radius2, &angle)) return;
  if (!AreFinite(center, {radius1, radius2, angle})) return;
  Area({EllipseOf(PointOf(center), radius1, radius2, angle, pen_.Reach())});
}

void OverlayDrawing::DrawArc() {
  VemPoint center;
  double radius = 0, start = 0, sweep = 0;
  if (!overlay_.GetArc(&center, &radius, &start, &sweep)) return;
  if (!AreFinite(center, {radius, start, sweep})) return;
  pen_.Open(ArcOf(PointOf(center), radius, start, sweep, pen_.Reach()));
}

void OverlayDrawing::DrawTorus() {
  VemPoint center;
  double inner = 0, outer = 0, start = 0, sweep = 0;
  if (!overlay_.GetTorus(&center, &inner, &outer, &start, &sweep)) return;
  if (!AreFinite(center, {inner, outer, start, sweep})) return;
  Area(RingOf(PointOf(center), inner, outer, start, sweep, pen_.Reach()));
}

void OverlayDrawing::DrawSpokes() {
  VemPoint point;
  double inner = 0, outer = 0, start = 0, sweep = 0;
  int mode = 0, count = 0;
  if (!overlay_.GetSpokeTorus(&point, &inner, &outer, &start, &sweep, &mode, &count)) return;
  if (!AreFinite(point, {inner, outer, start, sweep})) return;
  const cv::Point2d center = PointOf(point);
  Area(RingOf(center, inner, outer, start, sweep, pen_.Reach()));
  const double tail = mode == 4 ? inner : outer, head = mode == 4 ? outer : inner;
  std::vector<Arrow> arrows;
  for (const Picked& picked : PickSpokes(center, outer, start, sweep, count)) {
    for (std::int64_t i = picked.first; i < picked.end; i += picked.step) {
      const double angle = std::fmod(start, 360) + sweep * ((static_cast<double>(i) + 0.5) / count);
      arrows.push_back({Polar(center, tail, angle), Polar(center, head, angle)});
    }
  }
  pen_.Arrows(arrows);
}

// Seen from a center outside the picture's reach, the arrows that may come near lie between two
// angles, once in each turn. There are never more than have a place of their own.
std::vector<Picked> OverlayDrawing::PickSpokes(const cv::Point2d& center, double outer,
                                               double start, double sweep, int count) const {
  constexpr double kDegrees = 180 / CV_PI;
  const Frame& reach = pen_.Reach();
  const cv::Point2d middle((reach.left + reach.right) / 2, (reach.top + reach.bottom) / 2);
  const double radius = Distance(middle, {reach.right, reach.bottom});
  const double distance = Distance(middle, center);
  const double spacing = sweep / kDegrees / count * std::min(outer, distance + radius);
  double most = 8 * CV_PI * radius / Apart();
  if (distance <= radius) {
    Picked picked = Pick(0, 1, count, spacing);
    const double end = picked.first + most * picked.step;
    picked.end = static_cast<int>(std::min(end, static_cast<double>(picked.end)));
    return {picked};
  }
  const cv::Point2d toward = Direction(center, middle);
  const double half = std::asin(radius / distance) * kDegrees;
  const double at = std::fmod(std::atan2(-toward.y, toward.x) * kDegrees - start, 360);
  std::vector<Picked> picked;
  for (int turn = -1; (turn - 1) * 360.0 <= sweep && most > 0; ++turn) {
    const double there = at + turn * 360.0;
    picked.push_back(Pick((there - half) / sweep, (there + half) / sweep, count, spacing));
    const int arrows = std::max(picked.back().end - picked.back().first, 0) / picked.back().step;
    most -= 1 + arrows;
  }
  return picked;
}

void OverlayDrawing::DrawLabel() {
  VemPoint place;
  VemVar text;
  VemFont font;
  overlay_.GetText(&place, &text, &font);
  if (text.ValType() != VemVarString) return;
  DrawText(canvas_, PointOf(place), text.S(), font, tools_.pen);
}

void OverlayDrawing::DrawImage() {
  VemPoint place;
  VemImage image;
  overlay_.GetImage(&place, &image);
  constexpr double kFar = 1e15;  // Beyond every picture, and still a whole number.
  if (!(std::abs(place.x) < kFar && std::abs(place.y) < kFar)) return;
  if (image.Width() == 0 || image.Height() == 0) return;
  const double x = std::nearbyint(place.x), y = std::nearbyint(place.y);
  if (Canvas::Takes(image.Mat())) {
    canvas_.LayImage(image.Mat(), static_cast<std::int64_t>(x), static_cast<std::int64_t>(y));
  }
  pen_.Closed({RectangleOf({x, y}, {x + image.Width() - 1, y + image.Height() - 1})});
}

void OverlayDrawing::DrawRegion() {
  VemRegion region;
  overlay_.GetRegion(&region);
  PixelsOf(region, canvas_.Size()).Lay(canvas_, tools_.filled ? tools_.brush : tools_.pen, kTint);
}

}  // namespace

void DrawOverlay(Canvas& canvas, VemOverlay& overlay) { OverlayDrawing(canvas, overlay).Draw(); }
