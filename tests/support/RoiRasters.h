#ifndef TESTS_SUPPORT_ROI_RASTERS_H_
#define TESTS_SUPPORT_ROI_RASTERS_H_

#include <random>
#include <vector>

#include <opencv2/core.hpp>

#include "IVemROIPara.h"
#include "VemROI.h"
#include "support/ImageSamples.h"
#include "support/OutlineReference.h"
#include "support/Support.h"

using Runs = std::vector<Run>;
using IntChain = std::vector<cv::Point>;
using IntChains = std::vector<IntChain>;

const Chain kSquare = {{1, 1}, {4, 1}, {4, 3}, {1, 3}};

/// Three arrays of runs.
struct Triple {
  Triple() {}
  explicit Triple(const Runs& runs) {
    for (const Run& run : runs) {
      rows.Append(VemVar(run.Row));
      firsts.Append(VemVar(run.FirstColumn));
      lasts.Append(VemVar(run.LastColumn));
    }
  }

  VemVarArray rows;
  VemVarArray firsts;
  VemVarArray lasts;
};

/// What MatToMask gives in run form.
struct RunsOfRaster {
  Runs runs;
  int width = -7;
  int height = -9;
};

/// Whole numbers as the library takes them.
VemVarArray Values(const std::vector<int>& values);

/// What ToMAT paints.
cv::Mat Paint(const Runs& runs, int width, int height);
cv::Mat Paint(const Chains& chains, int width, int height);

/// The maximal runs of a raster, row by row.
Runs PlainRuns(const cv::Mat& raster);

/// What MatToMask reads, into arguments that hold something already.
RunsOfRaster ReadRuns(cv::Mat raster);
OutlineMask ReadContours(cv::Mat raster);

/// Pixels of 255 and 0 at random.
cv::Mat Noise(std::mt19937& random, int width, int height, unsigned percent);

/// A shape that holds something already.
IVemROIPara Circle();

/// That nothing is left of a shape.
void ExpectNone(const IVemROIPara& para);

/// That a shape is just this mask.
void ExpectMask(const IVemROIPara& para, const Runs& runs, int width, int height);

/// The same, by what GetMask gives for the mask behind the handle.
void ExpectMask(const VemROI& roi, const Runs& runs, int width, int height);

#endif  // TESTS_SUPPORT_ROI_RASTERS_H_
