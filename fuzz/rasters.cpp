// Takes masks from raster to runs to contours and back, over every member that does so. What must
// hold:
//
// - a raster read as runs or as outlines and painted again is the raster;
// - painting runs is a loop over their pixels, clipped at all sides;
// - a mask made of outlines has the raster's runs; one made of runs keeps them as they are, and its
//   outlines are those of its painted pixels;
// - regions made of a raster's pixels have its runs, and carry them through a region array and an
//   overlay.

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

#include "ByteReader.h"
#include "IVemROIPara.h"
#include "IVemRegionAPara.h"
#include "Require.h"
#include "VemOverlay.h"
#include "VemROI.h"
#include "VemRegion.h"
#include "VemRegionArray.h"
#include "support/OutlineReference.h"
#include "support/Support.h"

namespace {

using Runs = std::vector<Run>;

/// Three arrays of runs.
struct Triple {
  Triple() {}
  explicit Triple(const Runs& runs) {
    for (const Run& run : runs) {
      rows.Append(run.Row);
      firsts.Append(run.FirstColumn);
      lasts.Append(run.LastColumn);
    }
  }
  Runs List() const {
    Require(rows.Length() == firsts.Length() && rows.Length() == lasts.Length(),
            "the arrays have one length");
    return RunsOf(rows, firsts, lasts);
  }

  VemVarArray rows;
  VemVarArray firsts;
  VemVarArray lasts;
};

Runs PlainRuns(const cv::Mat& raster) {
  Runs runs;
  for (int y = 0; y < raster.rows; ++y) {
    for (int x = 0; x < raster.cols; ++x) {
      if (raster.at<unsigned char>(y, x) == 0) continue;
      if (x == 0 || raster.at<unsigned char>(y, x - 1) == 0) runs.push_back({y, x, x});
      runs.back().LastColumn = x;
    }
  }
  return runs;
}

cv::Mat PaintedPlainly(const Runs& runs, const cv::Size& canvas) {
  cv::Mat raster = cv::Mat::zeros(canvas, CV_8UC1);
  for (const Run& run : runs) {
    for (int x = 0; x < canvas.width; ++x) {
      if (run.Row < 0 || run.Row >= canvas.height) continue;
      if (run.FirstColumn > x || x > run.LastColumn) continue;
      raster.at<unsigned char>(run.Row, x) = 255;
    }
  }
  return raster;
}

void RequireSame(const cv::Mat& raster, const cv::Mat& expected, const char* what) {
  Require(raster.type() == CV_8UC1 && raster.size() == expected.size(), what, " has its size");
  for (int y = 0; y < raster.rows; ++y) {
    for (int x = 0; x < raster.cols; ++x) {
      const int pixel = raster.at<unsigned char>(y, x);
      if (pixel == (expected.at<unsigned char>(y, x) != 0 ? 255 : 0)) continue;
      Fail(what, " is\n", Picture(raster), "not\n", Picture(expected));
    }
  }
}

template <typename List>
void RequireSame(const List& list, const List& expected, const char* what) {
  if (list == expected) return;
  Fail(what, ": ", testing::PrintToString(list), " is ", testing::PrintToString(expected));
}

// --- From a raster ------------------------------------------------------------------------------

cv::Mat ReadRaster(ByteReader& in, const cv::Size& canvas) {
  cv::Mat raster = cv::Mat::zeros(canvas, CV_8UC1);
  const int shift = in.Byte();
  for (int y = 0; y < canvas.height && !in.IsEmpty(); ++y) {
    for (int x = 0; x < canvas.width; x += 8) {
      const unsigned bits = in.Byte();
      for (int i = 0; i < 8 && x + i < canvas.width; ++i) {
        const bool set = (bits >> i & 1) != 0;
        raster.at<unsigned char>(y, x + i) = set ? static_cast<unsigned char>(shift | 1) : 0;
      }
    }
    // Rows like the one above make shapes.
    if (y > 0 && (shift & 4) != 0) raster.row(y) |= raster.row(y - 1);
  }
  return raster;
}

void RequireRunsBack(cv::Mat& raster, const Runs& expected) {
  IVemROIPara para;
  Triple triple(Runs{{7, 7, 7}});
  int width = -1;
  int height = -1;
  para.MatToMask(raster, &triple.rows, &triple.firsts, &triple.lasts, &width, &height);
  Require(width == raster.cols && height == raster.rows, "MatToMask tells the raster's size");
  RequireSame(triple.List(), expected, "the runs of a raster");
  RequireSame(para.ToMAT(triple.rows, triple.firsts, triple.lasts, width, height), raster,
              "a raster of its runs");
}

// The runs behind a mask, by its run form.
Runs RunsOfMask(const VemROI& mask, const cv::Size& canvas) {
  Triple triple;
  int width = -1;
  int height = -1;
  const bool result = mask.GetMask(&triple.rows, &triple.firsts, &triple.lasts, &width, &height);
  Require(result && cv::Size(width, height) == canvas, "a mask has its canvas");
  return triple.List();
}

Chains OutlinesOfMask(const VemROI& mask, const cv::Size& canvas) {
  VemContourArray contours;
  int width = -1;
  int height = -1;
  Require(mask.GetMask(&contours, &width, &height) && cv::Size(width, height) == canvas,
          "a mask's outlines have its canvas");
  return PointsOf(contours);
}

Runs RunsOfRegion(VemRegion& region) {
  Triple triple(Runs{{7, 7, 7}});
  region.GetRegionRuns(&triple.rows, &triple.firsts, &triple.lasts);
  return triple.List();
}

// An array that has outlines alone paints them.
void RequireRegionOfOutlines(const Chains& outlines, const cv::Size& canvas, const Runs& expected) {
  IVemRegionArrayPara array;
  array.Widths.push_back(canvas.width);
  array.Heights.push_back(canvas.height);
  std::vector<std::vector<cv::Point>> contours;
  for (const Chain& chain : outlines) contours.emplace_back(chain.begin(), chain.end());
  std::vector<cv::Vec4i> hierarchy(contours.size());
  array.Append(contours, hierarchy, true);
  VemRegion region;
  array.Select(0, region);
  RequireSame(RunsOfRegion(region), expected, "a region of outlines");
  Require(region.Width() == canvas.width && region.Height() == canvas.height, "its canvas");
}

void RequireOutlinesBack(cv::Mat& raster, const Runs& expected) {
  IVemROIPara para;
  VemContourArray contours = ContoursOf({{{1, 2}}});
  int width = -1;
  int height = -1;
  para.MatToMask(raster, &contours, &width, &height);
  Require(width == raster.cols && height == raster.rows, "MatToMask tells the raster's size");
  RequireSame(PointsOf(contours), TracedContours(raster), "the outlines of a raster");
  RequireSame(para.ToMAT(contours, width, height), raster, "a raster of its outlines");
  RequireRegionOfOutlines(PointsOf(contours), raster.size(), expected);
  VemROI mask;
  mask.GenMask(contours, width, height);
  if (width < 2 || height < 2) return Require(mask.ROIType() == VemROINone, "too small a canvas");
  RequireSame(RunsOfMask(mask, raster.size()), expected, "a mask of a raster's outlines");
  RequireSame(OutlinesOfMask(mask, raster.size()), PointsOf(contours), "its outlines");
}

// --- Regions ------------------------------------------------------------------------------------

bool StandsBefore(const Run& a, const Run& b) {
  return a.Row != b.Row ? a.Row < b.Row : a.FirstColumn < b.FirstColumn;
}

// Runs stand component by component there.
void RequireRegion(VemRegion region, const cv::Size& canvas, const Runs& expected) {
  Require(region.Width() == canvas.width && region.Height() == canvas.height,
          "a region has its canvas");
  Runs runs = RunsOfRegion(region);
  std::sort(runs.begin(), runs.end(), StandsBefore);
  RequireSame(runs, expected, "a region of a raster's pixels");
}

void RequireRegions(const cv::Mat& raster, const Runs& expected) {
  VemPointArray points;
  for (const Run& run : expected) {
    for (int x = run.FirstColumn; x <= run.LastColumn; ++x) {
      VemPoint point(x + 0.75, run.Row + 0.25);  // Fractions are dropped.
      points.Append(point);
    }
  }
  VemRegion stated(raster.cols, raster.rows, points);
  RequireRegion(stated, raster.size(), expected);
  if (points.Length() == 0) return;

  int right = 0;
  int bottom = 0;
  for (const Run& run : expected) {
    right = std::max(right, run.LastColumn);
    bottom = std::max(bottom, run.Row);
  }
  const bool refused = right < 1 || bottom < 1;
  RequireRegion(VemRegion(points), refused ? cv::Size() : cv::Size(right + 1, bottom + 1),
                refused ? Runs() : expected);

  VemRegionArray array;
  array.Append(stated);
  array.Append(stated);
  const Runs runs = RunsOfRegion(stated);
  VemRegion read = array[1];
  RequireSame(RunsOfRegion(read), runs, "a region through an array");
  VemOverlay overlay;
  overlay.GenRegion(read);
  VemRegion shown;
  overlay.GetRegion(&shown);
  RequireSame(RunsOfRegion(shown), runs, "a region through an overlay");
  VemRegion united;
  array.Union(&united);
  Require(RunsOfRegion(united).size() == 2 * runs.size(), "a union merges nothing");
}

// --- From runs ----------------------------------------------------------------------------------

Runs ReadRuns(ByteReader& in, const cv::Size& canvas) {
  const auto end = [&](int size) {
    const int kind = in.Byte();
    if (kind < 230) return in.Between(-3, size + 3);
    return kind < 240 ? INT_MAX - in.Below(3) : kind < 250 ? INT_MIN + in.Below(3) : in.Raw<int>();
  };
  Runs runs;
  for (int left = in.Below(40); left > 0 && !in.IsEmpty(); --left) {
    Run run = {end(canvas.height), end(canvas.width), end(canvas.width)};
    if (!runs.empty() && (run.LastColumn & 1) != 0) {  // Beside the one before.
      run.Row = runs.back().Row;
      run.FirstColumn = runs.back().LastColumn == INT_MAX ? 0 : runs.back().LastColumn + 1;
    }
    runs.push_back(run);
  }
  return runs;
}

void RequireMaskOfRuns(const Runs& runs, const cv::Size& canvas) {
  Triple triple(runs);
  const cv::Mat expected = PaintedPlainly(runs, canvas);
  const cv::Mat painted =
      IVemROIPara().ToMAT(triple.rows, triple.firsts, triple.lasts, canvas.width, canvas.height);
  RequireSame(painted, expected, "a raster of any runs");
  VemROI mask;
  mask.GenMask(triple.rows, triple.firsts, triple.lasts, canvas.width, canvas.height);
  if (canvas.width < 2 || canvas.height < 2) return;
  RequireSame(RunsOfMask(mask, canvas), runs, "a mask of any runs");
  RequireSame(OutlinesOfMask(mask, canvas), TracedContours(expected), "its outlines");
}

// A region takes any runs; its canvas holds the largest row and last column.
void RequireRegionOfRuns(const Runs& runs, const cv::Size& canvas) {
  Triple triple(runs);
  VemRegion stated(canvas.width, canvas.height, triple.rows, triple.firsts, triple.lasts);
  RequireSame(RunsOfRegion(stated), runs, "a region of any runs");
  VemRegion inferred(triple.rows, triple.firsts, triple.lasts);
  if (runs.empty()) return Require(inferred.Width() == 0, "no runs give no region");
  int right = 0;
  int bottom = 0;
  for (const Run& run : runs) {
    right = std::max(right, run.LastColumn);
    bottom = std::max(bottom, run.Row);
  }
  if (right == INT_MAX || bottom == INT_MAX) return;
  Require(inferred.Width() == right + 1 && inferred.Height() == bottom + 1,
          "a region's canvas holds its runs");
  RequireSame(RunsOfRegion(inferred), runs, "a region of runs alone");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ByteReader in(data, size);
  const bool fromRuns = in.Flag();
  const cv::Size canvas(1 + in.Below(in.Flag() ? 200 : 40), 1 + in.Below(30));
  if (fromRuns) {
    const Runs runs = ReadRuns(in, canvas);
    RequireMaskOfRuns(runs, canvas);
    RequireRegionOfRuns(runs, canvas);
    return 0;
  }
  cv::Mat raster = ReadRaster(in, canvas);
  const cv::Mat before = raster.clone();
  const Runs runs = PlainRuns(raster);
  RequireRunsBack(raster, runs);
  RequireOutlinesBack(raster, runs);
  RequireRegions(raster, runs);
  Require(std::equal(raster.datastart, raster.dataend, before.datastart), "a raster is only read");
  return 0;
}
