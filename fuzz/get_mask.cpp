// Turns shapes of any type over any numbers into runs and into outlines. What must hold:
//
// - where a slow twin can follow, both forms are its own: result, runs or outlines, canvas;
// - a handle with the same shape gives the same;
// - otherwise the three arrays have one length, no run begins left of or above the origin, and
// where
//   a canvas can't be told, a `cv::Exception` leaves the arrays empty and the canvas as it was;
// - the object stays as it is, and the time goes with the shape's own rows.
//
// Left out is what would take long by contract, shapes of many rows or degrees, and what faults by
// contract: the runs of upright lines.

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

#include "ByteReader.h"
#include "IVemROIPara.h"
#include "Require.h"
#include "VemROI.h"
#include "support/OutlineReference.h"
#include "support/RunMaskReference.h"
#include "support/Support.h"

namespace {

using Doubles = std::vector<double>;

constexpr int kWidthBefore = -7;
constexpr int kHeightBefore = -9;
constexpr double kMostRows = 4000;

/// A shape as it is stored: y before x.
struct Shape {
  int I(std::size_t k) const { return Truncated(params.at(k)); }
  double D(std::size_t k) const { return params.at(k); }

  int type;
  Doubles params;
  std::vector<Run> runs;  // Of a mask.
  int width;
  int height;
};

// --- What it costs ------------------------------------------------------------------------------

// The rows from one to another that lie on a canvas.
double Rows(double top, double bottom) { return std::max(bottom, 0.0) - std::max(top, 0.0); }

// Whether a size is small, or so large that nothing of it fits an integer.
bool IsSmallOrNone(double size) {
  return !(std::fabs(size) > kMostRows && std::fabs(size) < 1e11) && !(size < 0);
}

// Degrees from a start, truncated, to an end.
double Degrees(double start, double sweep) {
  return std::min(start + sweep, 2147483648.0) - Truncated(start);
}

double VertexRows(const Shape& s) {
  double top = INT_MAX;
  double bottom = INT_MIN;
  for (std::size_t k = 0; k < s.params.size(); k += 2) {
    top = std::min<double>(top, s.I(k));
    bottom = std::max<double>(bottom, s.I(k));
  }
  return Rows(top, bottom);
}

double Rect2Rows(const Shape& s) {
  const OutlineMask corners = ReferenceOutlines(VemROIRect2, s.params, 0, 0);
  double top = INT_MAX;
  double bottom = INT_MIN;
  for (const Chain& chain : corners.contours) {
    for (const cv::Point2d& p : chain) {
      top = std::min(top, p.y);
      bottom = std::max(bottom, p.y);
    }
  }
  return corners.contours.empty() ? 0 : Rows(top, bottom);
}

bool IsCheap(const Shape& s) {
  if (s.params.empty()) return true;
  switch (s.type) {
    case VemROIRect1:
    case VemROILine:
      return Rows(std::min(s.I(0), s.I(2)), std::max(s.I(0), s.I(2))) <= kMostRows;
    case VemROICircle:
      return s.I(2) <= kMostRows &&
             Rows(Truncated(1.0 + s.I(0) - s.I(2)), Truncated(-1.0 + s.I(0) + s.I(2))) <= kMostRows;
    case VemROIRect2:
      return Rect2Rows(s) <= kMostRows;
    case VemROIEllipse:
      return IsSmallOrNone(s.D(2)) && IsSmallOrNone(s.D(3));
    case VemROIArc:
      return !(Degrees(s.D(3), s.D(4)) > kMostRows);
    case VemROITorus:
      return !(Degrees(s.D(4), s.D(5)) > kMostRows) && s.I(3) <= kMostRows;
    case VemROIPolygon:
      return VertexRows(s) <= kMostRows;
    default:
      return true;
  }
}

// The runs of an upright line are a division by zero, those of one slope too large to tell.
bool Faults(const Shape& s) {
  if (s.type != VemROILine || s.params.empty()) return false;
  if (std::max(s.I(1), s.I(3)) < 0 || std::max(s.I(0), s.I(2)) < 0) return false;
  const unsigned across = static_cast<unsigned>(s.I(3)) - static_cast<unsigned>(s.I(1));
  return across == 0 || across == UINT_MAX;
}

// --- Whether the twins can follow ---------------------------------------------------------------

bool IsBetween(double value, double low, double high) { return value >= low && value <= high; }

bool IsWithin(const Shape& s, double most) {
  return std::all_of(s.params.begin(), s.params.end(), [&](double number) {
    return std::isnan(number) || std::fabs(number) <= most;
  });
}

bool IsFinite(const Shape& s) {
  return std::all_of(s.params.begin(), s.params.end(),
                     [](double number) { return std::isfinite(number); });
}

// Where the canvas fits the memory, and OpenCV draws what it is asked to.
bool HasTwins(const Shape& s) {
  if (s.params.empty()) return false;
  switch (s.type) {
    case VemROIRect1:
    case VemROIIrregular:
    case VemROIArc:
      return IsWithin(s, 1e9);
    case VemROILine:  // A float holds all of it.
      return IsFinite(s) && IsWithin(s, 1 << 23);
    case VemROICircle:
      return IsWithin(s, 500) && s.I(2) >= 0;
    case VemROIRect2:
      return IsWithin(s, 500);
    case VemROIEllipse:
      return IsWithin(s, 500) && s.D(2) >= 0 && s.D(3) >= 0;
    case VemROITorus:
      return IsFinite(s) && IsWithin(s, 1e5) && IsBetween(s.D(2), 0, 60) &&
             IsBetween(s.D(3), 0, 60);
    case VemROIPolygon:
      return IsFinite(s) && IsWithin(s, 120) && s.params.size() <= 24;
    default:
      return s.type != VemROIMask;
  }
}

// --- The library --------------------------------------------------------------------------------

void AppendRuns(const std::vector<Run>& runs, VemVarArray& rows, VemVarArray& firsts,
                VemVarArray& lasts) {
  for (const Run& run : runs) {
    rows.Append(run.Row);
    firsts.Append(run.FirstColumn);
    lasts.Append(run.LastColumn);
  }
}

IVemROIPara ParaOf(const Shape& s) {
  IVemROIPara para;
  para.Type = static_cast<VemROIType>(s.type);
  for (const double number : s.params) para.Params.Append(number);
  AppendRuns(s.runs, para.Rows, para.FirstColumns, para.LastColumns);
  para.Width = s.width;
  para.Height = s.height;
  return para;
}

template <typename Object>
bool ListRuns(const Object& object, RunMask* mask) {
  VemVarArray rows(7), firsts("text"), lasts;  // Whatever they hold is replaced.
  *mask = {false, {}, kWidthBefore, kHeightBefore};
  bool thrown = false;
  try {
    mask->result = object.GetMask(&rows, &firsts, &lasts, &mask->width, &mask->height);
  } catch (const cv::Exception&) {
    thrown = true;
  }
  const int length = rows.Length();
  Require(firsts.Length() == length && lasts.Length() == length, "the arrays have one length");
  for (int i = 0; i < length; ++i) {
    mask->runs.push_back({rows[i].I(), firsts[i].I(), lasts[i].I()});
  }
  return !thrown;
}

template <typename Object>
bool ListOutlines(Object& object, OutlineMask* mask) {
  VemContourArray contours = ContoursOf({{{1, 2}, {3, 4}}});
  *mask = {false, {}, kWidthBefore, kHeightBefore};
  bool thrown = false;
  try {
    mask->result = object.GetMask(&contours, &mask->width, &mask->height);
  } catch (const cv::Exception&) {
    thrown = true;
  }
  mask->contours = PointsOf(contours);
  return !thrown;
}

template <typename Mask>
void RequireEqual(const Shape& s, const Mask& mask, const Mask& expected, const char* what) {
  if (mask == expected) return;
  Fail(what, " of type ", s.type, " over ", testing::PrintToString(s.params), "\n",
       testing::PrintToString(mask), "\nis ", testing::PrintToString(expected));
}

const RunMask kNoRuns = {false, {}, kWidthBefore, kHeightBefore};
const OutlineMask kNoOutlines = {false, {}, kWidthBefore, kHeightBefore};

// A handle on the same shape; one without a shape where its generator refuses the numbers.
VemROI HandleOf(const Shape& s) {
  VemROI roi;
  if (s.params.empty()) return roi;
  const Doubles& p = s.params;
  VemPoint point = p.size() > 1 ? VemPoint(p[1], p[0]) : VemPoint();
  VemPoint second = p.size() > 3 ? VemPoint(p[3], p[2]) : VemPoint();
  VemPointArray points;
  VemVarArray rows, firsts, lasts;
  switch (s.type) {
    case VemROIRect1:
      roi.GenRect1(point, second);
      break;
    case VemROICircle:
      roi.GenCircle(point, p[2]);
      break;
    case VemROITorus:
      roi.GenTorus(point, p[2], p[3], p[4], p[5]);
      break;
    case VemROIPolygon:
    case VemROIIrregular:
      for (std::size_t k = 0; k + 1 < p.size(); k += 2) {
        VemPoint vertex(p[k + 1], p[k]);
        points.Append(vertex);
      }
      s.type == VemROIPolygon ? roi.GenPolygon(points) : roi.GenIrregular(points);
      break;
    case VemROIRect2:
      roi.GenRect2(point, p[2], p[3], p[4]);
      break;
    case VemROILine:
      roi.GenLine(point, second);
      break;
    case VemROIEllipse:
      roi.GenEllipse(point, p[2], p[3], p[4]);
      break;
    case VemROIArc:
      roi.GenArc(point, p[2], p[3], p[4]);
      break;
    case VemROIPoint:
      roi.GenPoint(point);
      break;
    case VemROIMask:
      AppendRuns(s.runs, rows, firsts, lasts);
      roi.GenMask(rows, firsts, lasts, s.width, s.height);
      break;
    default:
      break;
  }
  return roi;
}

void RequireUnchanged(const Shape& s, const IVemROIPara& para) {
  Require(para.Type == s.type && para.Width == s.width && para.Height == s.height &&
              para.Params.Length() == static_cast<int>(s.params.size()) &&
              para.Rows.Length() == static_cast<int>(s.runs.size()),
          "a shape is only read");
}

// --- The forms ----------------------------------------------------------------------------------

cv::Mat Painted(const Shape& s) {
  cv::Mat raster = cv::Mat::zeros(s.height, s.width, CV_8UC1);
  for (const Run& run : s.runs) {
    if (run.Row < 0 || run.Row >= s.height) continue;
    const int last = std::min(run.LastColumn, s.width - 1);
    for (int x = std::max(run.FirstColumn, 0); x <= last; ++x) {
      raster.at<unsigned char>(run.Row, x) = 255;
    }
  }
  return raster;
}

RunMask ExpectedRuns(const Shape& s) {
  if (s.type != VemROIMask) {
    return ReferenceRunMask(s.type, s.params, kWidthBefore, kHeightBefore);
  }
  if (s.width < 0 || s.height < 0) return {};
  return {true, s.runs, s.width, s.height};
}

OutlineMask ExpectedOutlines(const Shape& s) {
  if (s.type != VemROIMask) {
    return ReferenceOutlines(s.type, s.params, kWidthBefore, kHeightBefore);
  }
  if (s.width < 0 || s.height < 0) return {};
  return {true, TracedContours(Painted(s)), s.width, s.height};
}

void RequireRuns(const Shape& s, const IVemROIPara& para, const VemROI& roi) {
  if (Faults(s)) return;
  RunMask mask;
  const bool told = ListRuns(para, &mask);
  if (s.type == VemROIMask || HasTwins(s)) {
    Require(told, "the canvas of a small shape of type ", s.type, " can be told");
    RequireEqual(s, mask, ExpectedRuns(s), "runs");
  }
  if (!told) RequireEqual(s, mask, kNoRuns, "runs after a throw");
  if (s.type != VemROIMask) {
    for (const Run& run : mask.runs) Require(run.Row >= 0 && run.FirstColumn >= 0, "runs are cut");
  }
  if (roi.ROIType() != s.type) return;
  RunMask again;
  Require(ListRuns(roi, &again) == told, "a handle throws as its object does");
  RequireEqual(s, again, mask, "a handle's runs");
}

void RequireOutlines(const Shape& s, IVemROIPara& para, const VemROI& roi) {
  OutlineMask mask;
  const bool told = ListOutlines(para, &mask);
  if (s.type == VemROIMask || HasTwins(s)) {
    Require(told, "the canvas of a small shape of type ", s.type, " can be told");
    RequireEqual(s, mask, ExpectedOutlines(s), "outlines");
  }
  if (!told) RequireEqual(s, mask, kNoOutlines, "outlines after a throw");
  if (roi.ROIType() != s.type) return;
  OutlineMask again;
  Require(ListOutlines(roi, &again) == told, "a handle throws as its object does");
  RequireEqual(s, again, mask, "a handle's outlines");
}

// --- The input ----------------------------------------------------------------------------------

double Coordinate(ByteReader& in) {
  const int kind = in.Byte();
  if (kind < 100) return in.Between(-20, 100);
  if (kind < 160) return in.Between(-400, 1200) / 8.0;
  return kind < 200 ? in.Near() : in.Number();
}

double Angle(ByteReader& in) {
  const int kind = in.Byte();
  if (kind < 80) return 90 * in.Between(-9, 9);
  if (kind < 160) return in.Between(-720, 720);
  return kind < 200 ? in.Between(-2000, 8000) / 10.0 : in.Number();
}

// A count and the radii, lengths and angles of each type, behind the first point.
void ReadNumbers(ByteReader& in, Shape& s) {
  const auto add = [&](int coordinates, int angles) {
    for (int i = 0; i < coordinates; ++i) s.params.push_back(Coordinate(in));
    for (int i = 0; i < angles; ++i) s.params.push_back(Angle(in));
  };
  switch (s.type) {
    case VemROITorus:
      return add(4, 2);
    case VemROIRect2:
    case VemROIEllipse:
      return add(4, 1);
    case VemROIArc:
      return add(3, 2);
    case VemROIPolygon:
    case VemROIIrregular:
      return add(2 * (1 + in.Below(14)), 0);
    default:
      return add(6, 0);
  }
}

int RunEnd(ByteReader& in) { return in.Byte() < 230 ? in.Between(-4, 60) : in.Raw<int>(); }

Shape ReadShape(ByteReader& in) {
  Shape s = {in.Below(14), {}, {}, kWidthBefore, kHeightBefore};
  if (s.type == 13) s.type = in.Raw<int>();
  ReadNumbers(in, s);
  if (in.Byte() == 255) s.params.clear();  // As a generator from too few points leaves a shape.
  if (s.type == VemROIMask || in.Byte() > 240) {
    s.width = in.Between(-1, 50);
    s.height = in.Between(-1, 50);
    for (int left = in.Below(30); left > 0 && !in.IsEmpty(); --left) {
      const int row = RunEnd(in);
      const int first = RunEnd(in);
      s.runs.push_back({row, first, RunEnd(in)});
    }
  }
  return s;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ByteReader in(data, size);
  const Shape shape = ReadShape(in);
  if (!IsCheap(shape)) return 0;
  IVemROIPara para = ParaOf(shape);
  const VemROI roi = HandleOf(shape);
  RequireRuns(shape, para, roi);
  RequireOutlines(shape, para, roi);
  RequireUnchanged(shape, para);
  return 0;
}
