#include "IVemROIPara.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <utility>
#include <vector>

#include <opencv2/core.hpp>

#include "masks/Canvas.h"
#include "masks/MaskCoder.h"
#include "masks/RoundFill.h"
#include "masks/RunCollector.h"
#include "masks/RunSink.h"
#include "masks/RunTriple.h"
#include "roi/ShapeGeometry.h"
#include "values/Processor.h"

// One function for each shape: it reads the shape's numbers in their stored order, y before x,
// lists the outlines and tells the canvas. False means that the shape lies left of or above the
// origin. Shapes that list their vertices clip nothing. Ring, circle and rectangle differ from
// their run forms, and are meant to.

namespace {

using Contour = std::vector<cv::Point>;
using Contours = std::vector<Contour>;

// Outlines of the shape that `fill` hands to a sink, on its canvas.
template <typename FillShape>
bool Trace(const Canvas& size, Contours& contours, Canvas& canvas, FillShape fill) {
  RequireCanvas(size.width, size.height);
  std::vector<Run> runs;
  RunLister lister(runs);
  fill(lister);
  contours = TraceClosed(runs);
  canvas = size;
  return true;
}

// The smallest canvas reaches to -1 here: a rectangle that ends at column -1 has an outline, but no
// runs.
bool Rect1Outline(const VemVarArray& params, Contours& contours, Canvas& canvas) {
  const PointPair p(params);
  const int right = std::max(p.x1, p.x2);
  const int bottom = std::max(p.y1, p.y2);
  if (right < -1 || bottom < -1) return false;
  contours = {{{p.x1, p.y1}, {p.x2, p.y1}, {p.x2, p.y2}, {p.x1, p.y2}, {p.x1, p.y1}}};
  canvas = CanvasTo(right, bottom);
  return true;
}

// All pixels within the radius: one row and column more than the run form has.
bool CircleOutlines(const VemVarArray& params, Contours& contours, Canvas& canvas) {
  const int column = params[1].I();
  const int row = params[0].I();
  const int radius = params[2].I();
  const int bottom = WrapAdd(row, radius);
  const int right = WrapAdd(column, radius);
  if (bottom < 0 || right < 0 || EndsBefore0(column, row, radius)) return false;
  RequireRadius(radius);
  const Canvas size = {TruncateToInt(right + 1.0), TruncateToInt(bottom + 1.0)};
  return Trace(size, contours, canvas, [&](RunSink& sink) {
    FillCircle(cv::Point(column, row), radius, cv::Size(size.width, size.height), sink);
  });
}

bool EllipseOutlines(const VemVarArray& params, Contours& contours, Canvas& canvas) {
  const EllipseBox ellipse(params);
  if (ellipse.reach.IsOutside()) return false;
  RequireRadius(ellipse.a);
  RequireRadius(ellipse.b);
  const Canvas size = ellipse.reach.ToCanvas();
  return Trace(size, contours, canvas, [&](RunSink& sink) {
    FillEllipse(ellipse.shape, cv::Size(size.width, size.height), sink);
  });
}

// A ring's radii stay fractions here, and the end angle is sampled.
bool TorusOutlines(const VemVarArray& params, Contours& contours, Canvas& canvas) {
  const int column = TruncateToInt(params[1].D());
  const int row = TruncateToInt(params[0].D());
  const double outerRadius = params[3].D();
  const double start = params[4].D();
  const double sweep = params[5].D();
  const double right = outerRadius + column;
  const double bottom = outerRadius + row;
  if (0 > right || 0 > bottom) return false;
  canvas = {TruncateToInt(right + 1.0), TruncateToInt(bottom + 1.0)};

  const cv::Point center(column, row);
  Contour inner = SampleDegrees(start, start + sweep, ArcEnd::kIncluded, params[2].D(), center);
  Contour outer = SampleDegrees(start, start + sweep, ArcEnd::kIncluded, outerRadius, center);
  const bool whole = !(static_cast<double>(TruncateToInt(sweep) % 360) > 0.05);
  if (whole) {
    contours.push_back(std::move(inner));
    contours.push_back(std::move(outer));
    return true;
  }
  inner.insert(inner.end(), outer.rbegin(), outer.rend());
  if (!inner.empty()) inner.push_back(cv::Point(inner.front()));
  contours.push_back(std::move(inner));
  return true;
}

bool VerticesOutline(const VemVarArray& params, Contours& contours, Canvas& canvas) {
  ClosedVertices vertices(params);
  if (vertices.reach.IsOutside()) return false;
  contours.push_back(std::move(vertices.points));
  canvas = vertices.reach.ToCanvas();
  return true;
}

bool Rect2Outline(const VemVarArray& params, Contours& contours, Canvas& canvas) {
  const RotatedCorners r(params);
  if (r.reach.IsOutside()) return false;
  contours = {Contour(r.corners.begin(), r.corners.end())};
  contours[0].push_back(r.corners[0]);
  canvas = r.reach.ToCanvas();
  return true;
}

bool LineOutline(const VemVarArray& params, Contours& contours, Canvas& canvas) {
  const PointPair p(params);
  if (p.IsOutside()) return false;
  contours = {{{p.x1, p.y1}, {p.x2, p.y2}}};
  canvas = CanvasTo(std::max(p.x1, p.x2), std::max(p.y1, p.y2));
  return true;
}

bool ArcOutline(const VemVarArray& params, Contours& contours, Canvas& canvas) {
  const ArcSamples arc(params);
  if (arc.outside) return false;
  contours.push_back(arc.List());
  canvas = arc.canvas;
  return true;
}

bool MaskOutlines(IVemROIPara& mask, Contours& contours, Canvas& canvas) {
  if (mask.Width < 0 || mask.Height < 0) return false;
  return Trace({mask.Width, mask.Height}, contours, canvas, [&](RunSink& sink) {
    const RunTriple runs(mask.Rows, mask.FirstColumns, mask.LastColumns);
    RunCollector collector(mask.Width, mask.Height);
    collector.Reserve(runs.Count());
    for (std::size_t i = 0; i < runs.Count(); ++i) {
      const Run run = runs.At(i);
      collector.Add(run.Row, run.FirstColumn, run.LastColumn);
    }
    collector.HandOut(sink);
  });
}

/// A shape that outlines are made of; null for those that have none.
using OutlineShape = bool (*)(const VemVarArray& params, Contours& contours, Canvas& canvas);

constexpr OutlineShape kOutlineShapes[] = {
    Rect1Outline,     // VemROIRect1
    CircleOutlines,   // VemROICircle
    TorusOutlines,    // VemROITorus
    nullptr,          // VemROINone
    VerticesOutline,  // VemROIPolygon
    VerticesOutline,  // VemROIIrregular
    Rect2Outline,     // VemROIRect2
    LineOutline,      // VemROILine
    EllipseOutlines,  // VemROIEllipse
    ArcOutline,       // VemROIArc
};

}  // namespace

bool IVemROIPara::GetMask(VemContourArray* contours, int* width, int* height) {
  contours->Clear();
  if (Type == VemROINone) return false;
  const OutlineShape shape = EntryFor(kOutlineShapes, Type);
  if (Type != VemROIMask && shape == nullptr) return true;
  Contours found;
  Canvas canvas = {0, 0};
  const bool reachesIn =
      Type == VemROIMask ? MaskOutlines(*this, found, canvas) : shape(Params, found, canvas);
  if (reachesIn) {
    std::vector<std::vector<cv::Point2d>> widened;
    VectorI2D(std::move(found), widened);
    contours->store_->swap(widened);
  }
  *width = reachesIn ? canvas.width : 0;
  *height = reachesIn ? canvas.height : 0;
  return reachesIn;
}
