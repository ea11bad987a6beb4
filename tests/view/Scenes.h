#ifndef TESTS_VIEW_SCENES_H_
#define TESTS_VIEW_SCENES_H_

#include <functional>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include <opencv2/core.hpp>

#include "VemContour.h"
#include "VemOverlay.h"
#include "VemPointArray.h"
#include "VemROI.h"
#include "VemRegion.h"

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// A small picture of every kind that is drawn.
struct Scene {
  std::string name;
  std::function<void(cv::Mat&)> draw;
};

const std::vector<Scene>& Scenes();

/// Whether OpenCV writes a part of it, which may differ from version to version.
bool HasText(const Scene& scene);

/// What a scene is drawn on: a plain slope of grey, 72 by 64.
cv::Mat Ground();

VemPointArray PointsOf(const std::vector<std::pair<double, double>>& points);
VemContour ContourOf(const std::vector<std::pair<double, double>>& points);
/// Runs of row, first and last column.
VemRegion RegionOf(const std::vector<std::vector<int>>& runs, int width, int height);

/// Makers by value, since the classes take references.
VemROI Rect1(double x1, double y1, double x2, double y2);
VemROI Circle(double x, double y, double radius);

#endif  // TESTS_VIEW_SCENES_H_
