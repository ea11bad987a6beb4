#include "view/Draw.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <vector>

#include "view/Pen.h"

namespace {

class RoiDrawing {
 public:
  RoiDrawing(Canvas& canvas, const VemROI& roi, const vem::draw_style& style)
      : canvas_(canvas),
        roi_(roi),
        color_(ColorOf(style)),
        width_(style.width),
        filled_(style.filled),
        pen_(canvas, color_, style.width) {}

  void Draw();

 private:
  void DrawPoint();
  void DrawLine();
  void DrawArc();
  void DrawRect1();
  void DrawCircle();
  void DrawTorus();
  void DrawRect2();
  void DrawEllipse();
  void DrawPolygon();
  void DrawIrregular();
  void DrawMask();

  // The inside, by the mask where the shape's numbers fit one, and the outlines.
  void Area(const std::vector<Chain>& outlines, bool fitsMask);

  Canvas& canvas_;
  const VemROI& roi_;
  Color color_;
  int width_;
  bool filled_;
  Pen pen_;
};

// A mask has as many rows as its shape and holds whole numbers of 32 bits.
constexpr double kMaskLimit = 32768;

bool FitsMask(double number) { return std::abs(number) < kMaskLimit; }

bool FitsMask(const cv::Point2d& p) { return FitsMask(p.x) && FitsMask(p.y); }

bool FitsMask(const Chain& chain) {
  return std::all_of(chain.begin(), chain.end(), [](const cv::Point2d& p) { return FitsMask(p); });
}

bool FitsMask(const VemPoint& center, std::initializer_list<double> numbers) {
  return FitsMask(PointOf(center)) && std::all_of(numbers.begin(), numbers.end(),
                                                  [](double number) { return FitsMask(number); });
}

void RoiDrawing::Draw() {
  switch (roi_.ROIType()) {
    case VemROIPoint:
      return DrawPoint();
    case VemROILine:
      return DrawLine();
    case VemROIArc:
      return DrawArc();
    case VemROIRect1:
      return DrawRect1();
    case VemROICircle:
      return DrawCircle();
    case VemROITorus:
      return DrawTorus();
    case VemROIRect2:
      return DrawRect2();
    case VemROIEllipse:
      return DrawEllipse();
    case VemROIPolygon:
      return DrawPolygon();
    case VemROIIrregular:
      return DrawIrregular();
    case VemROIMask:
      return DrawMask();
    default:
      return;
  }
}

void RoiDrawing::Area(const std::vector<Chain>& outlines, bool fitsMask) {
  if (filled_ && fitsMask) {
    PixelsOf(roi_, canvas_.Size()).Lay(canvas_, color_, kTint);
  } else if (filled_) {
    pen_.Tint(outlines, color_);
  }
  pen_.Closed(outlines);
}

void RoiDrawing::DrawPoint() {
  VemPoint point;
  if (Readable(roi_).GetPoint(&point)) pen_.Cross(PointOf(point));
}

void RoiDrawing::DrawLine() {
  VemPoint p1, p2;
  if (roi_.GetLine(&p1, &p2)) pen_.Open({PointOf(p1), PointOf(p2)});
}

void RoiDrawing::DrawArc() {
  VemPoint center;
  double radius = 0, start = 0, sweep = 0;
  if (!roi_.GetArc(&center, &radius, &start, &sweep)) return;
  if (!AreFinite(center, {radius, start, sweep})) return;
  pen_.Open(ArcOf(PointOf(center), radius, start, sweep, pen_.Reach()));
}

void RoiDrawing::DrawRect1() {
  VemPoint p1, p2;
  if (!roi_.GetRect1(&p1, &p2)) return;
  const Chain rectangle = RectangleOf(PointOf(p1), PointOf(p2));
  Area({rectangle}, FitsMask(rectangle));
}

void RoiDrawing::DrawCircle() {
  VemPoint center;
  double radius = 0;
  if (!roi_.GetCircle(&center, &radius) || !AreFinite(center, {radius})) return;
  Area({CircleOf(PointOf(center), radius, pen_.Reach())}, FitsMask(center, {radius}));
}

void RoiDrawing::DrawTorus() {
  VemPoint center;
  double inner = 0, outer = 0, start = 0, sweep = 0;
  if (!roi_.GetTorus(&center, &inner, &outer, &start, &sweep)) return;
  if (!AreFinite(center, {inner, outer, start, sweep})) return;
  Area(RingOf(PointOf(center), inner, outer, start, sweep, pen_.Reach()),
       FitsMask(center, {outer, start, sweep}));
}

void RoiDrawing::DrawRect2() {
  VemPoint center;
  double length1 = 0, length2 = 0, angle = 0;
  if (!roi_.GetRect2(&center, &length1, &length2, &angle)) return;
  if (!AreFinite(center, {length1, length2, angle})) return;
  Area({RectangleOf(PointOf(center), length1, length2, angle)},
       FitsMask(center, {length1, length2, angle}));
}

void RoiDrawing::DrawEllipse() {
  VemPoint center;
  double radius1 = 0, radius2 = 0, angle = 0;
  if (!roi_.GetEllipse(&center, &radius1, &radius2, &angle)) return;
  if (!AreFinite(center, {radius1, radius2, angle})) return;
  Area({EllipseOf(PointOf(center), radius1, radius2, angle, pen_.Reach())},
       FitsMask(center, {radius1, radius2, angle}));
}

void RoiDrawing::DrawPolygon() {
  VemPointArray points;
  if (!roi_.GetPolygon(&points)) return;
  const Chain chain = ChainOf(points);
  Area({chain}, FitsMask(chain));
}

void RoiDrawing::DrawIrregular() {
  VemPointArray points;
  if (!roi_.GetIrregular(&points)) return;
  const Chain chain = ChainOf(points);
  if (filled_ && FitsMask(chain)) PixelsOf(roi_, canvas_.Size()).Lay(canvas_, color_, kTint);
  pen_.Closed({chain});
}

void RoiDrawing::DrawMask() {
  const PixelSet pixels = PixelsOf(roi_, canvas_.Size());
  if (filled_) pixels.Lay(canvas_, color_, kTint);
  if (width_ >= 1) pixels.LayBorder(canvas_, color_, width_);
}

}  // namespace

void DrawRoi(Canvas& canvas, const VemROI& roi, const vem::draw_style& style) {
  RoiDrawing(canvas, roi, style).Draw();
}
