#include "VemRLC.h"

#include <cstddef>

#include <opencv2/core.hpp>

#include "coder/Components.h"
#include "coder/Outlines.h"
#include "coder/RunScanner.h"

static_assert(sizeof(Run) == 12 && offsetof(Run, Row) == 0 && offsetof(Run, FirstColumn) == 4 &&
                  offsetof(Run, LastColumn) == 8,
              "a run crosses the library's border as three packed integers");

namespace {

constexpr int kListRuns = 6;
constexpr int kFindComponents = 9;

}  // namespace

VemRLC::VemRLC() : ComponentCount(0), mode_(kListRuns) {}
VemRLC::~VemRLC() = default;

void VemRLC::SetParam(char, char mode, bool, int, int, int, bool, bool) { mode_ = mode; }

void VemRLC::Calc(cv::Mat& raster, bool) {
  ComponentCount = 0;
  ComponentRuns.clear();
  ComponentStarts.clear();
  FillRuns.clear();
  if (mode_ == kFindComponents) {
    ComponentCount = FindComponents(raster, ComponentRuns, ComponentStarts);
    return;
  }
  ListRuns(raster, FillRuns);
}

void VemRLC::FindContours(cv::Mat& raster, char, std::vector<cv::Point_<int>>* points,
                          std::vector<int>* pointStarts, std::vector<cv::Vec<int, 4>>* hierarchy,
                          std::vector<int>*, std::vector<Run>* runs, std::vector<int>* runStarts,
                          bool, int, int, int, bool) {
  points->clear();
  pointStarts->clear();
  hierarchy->clear();
  runs->clear();
  runStarts->clear();
  FindOutlines(raster, {*points, *pointStarts, *hierarchy, *runs, *runStarts});
}

void VemRLC::Convert(std::vector<cv::Point_<int>>& points, std::vector<int>& pointStarts,
                     std::vector<std::vector<cv::Point_<int>>>& contours) {
  contours.clear();
  contours.reserve(pointStarts.size());
  for (std::size_t i = 1; i < pointStarts.size(); ++i) {
    contours.emplace_back(points.begin() + pointStarts[i - 1], points.begin() + pointStarts[i]);
  }
}
