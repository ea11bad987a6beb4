#include <algorithm>
#include <climits>
#include <cmath>
#include <random>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/imgproc.hpp>

#include "IVemROIPara.h"
#include "support/FillReference.h"
#include "support/OutlineReference.h"
#include "support/Support.h"

// The fill of contours as callers reach it, against the rule pixel by pixel and, where the
// installed OpenCV draws by that rule, against OpenCV.

namespace {

using IntChain = std::vector<cv::Point>;
using IntChains = std::vector<IntChain>;

#if CV_VERSION_MAJOR == 3 || (CV_VERSION_MAJOR == 4 && CV_VERSION_MINOR <= 7)
constexpr bool kOpenCVDrawsByTheRule = true;
#else
constexpr bool kOpenCVDrawsByTheRule = false;
#endif

#ifdef VEM_SANITIZED
constexpr int kThoroughness = 1;
#else
constexpr int kThoroughness = 20;
#endif

int Below(std::mt19937_64& random, int end) {
  return static_cast<int>(random() % static_cast<unsigned>(end));
}

int Between(std::mt19937_64& random, std::int64_t low, std::int64_t high) {
  const auto range = static_cast<std::uint64_t>(high - low) + 1;
  return static_cast<int>(low + static_cast<std::int64_t>(random() % range));
}

cv::Point Anywhere(std::mt19937_64& random, const cv::Size& canvas, std::int64_t reach) {
  return cv::Point(Between(random, std::max<std::int64_t>(-reach, INT_MIN),
                           std::min<std::int64_t>(canvas.width + reach, INT_MAX)),
                   Between(random, std::max<std::int64_t>(-reach, INT_MIN),
                           std::min<std::int64_t>(canvas.height + reach, INT_MAX)));
}

IntChain Ring(const cv::Point& center, int radius, int vertices) {
  IntChain ring;
  for (int i = 0; i < vertices; ++i) {
    const double angle = 6.283185307 * i / vertices;
    ring.emplace_back(center.x + static_cast<int>(radius * std::cos(angle)),
                      center.y + static_cast<int>(radius * std::sin(angle)));
  }
  return ring;
}

// One contour of some kind: free, collinear, with spikes, with repeated points, a ring, level and
// upright edges alone.
IntChain AnyContour(std::mt19937_64& random, const cv::Size& canvas, std::int64_t reach,
                    int mostVertices) {
  const int count = 1 + Below(random, mostVertices);
  IntChain contour;
  const int kind = Below(random, 8);
  if (kind == 0) {
    const cv::Point center = Anywhere(random, canvas, 0);
    return Ring(center, 1 + Below(random, canvas.width + canvas.height), 3 + count);
  }
  for (int i = 0; i < count; ++i) {
    cv::Point p = Anywhere(random, canvas, reach);
    if (!contour.empty()) {
      const cv::Point before = contour.back();
      if (kind == 1 && Below(random, 2) == 0) p = before;             // A point again.
      if (kind == 2) (Below(random, 2) == 0 ? p.x : p.y) = before.y;  // Many of one coordinate.
      if (kind == 3) (i % 2 == 0 ? p.x = before.x : p.y = before.y);  // Level and upright.
      if (kind == 4 && contour.size() >= 2) p = contour[contour.size() - 2];  // There and back.
    }
    contour.push_back(p);
  }
  return contour;
}

cv::Mat Painted(const IntChains& contours, const cv::Size& canvas) {
  Chains chains;
  for (const IntChain& contour : contours) chains.emplace_back(contour.begin(), contour.end());
  VemContourArray array = ContoursOf(chains);
  return IVemROIPara().ToMAT(array, canvas.width, canvas.height);
}

cv::Mat Drawn(const IntChains& contours, const cv::Size& canvas) {
  cv::Mat raster = cv::Mat::zeros(canvas, CV_8UC1);
  cv::drawContours(raster, contours, -1, cv::Scalar(255), cv::FILLED, 8, cv::noArray(), INT_MAX);
  return raster;
}

std::vector<Run> RunsOfPixels(const cv::Mat& pixels) {
  std::vector<Run> runs;
  for (int row = 0; row < pixels.rows; ++row) {
    for (int column = 0; column < pixels.cols; ++column) {
      if (pixels.at<unsigned char>(row, column) == 0) continue;
      if (column == 0 || pixels.at<unsigned char>(row, column - 1) == 0) {
        runs.push_back({row, column, column});
      }
      runs.back().LastColumn = column;
    }
  }
  return runs;
}

bool Equal(const cv::Mat& a, const cv::Mat& b) {
  return std::equal(a.begin<unsigned char>(), a.end<unsigned char>(), b.begin<unsigned char>(),
                    b.end<unsigned char>());
}

struct Family {
  const char* name;
  int sets;  // Times the thoroughness.
  int largestSide;
  std::int64_t reach;  // Beyond the canvas.
  int mostContours;
  int mostVertices;
};

const Family kFamilies[] = {
    {"Specks", 18000, 3, 2, 3, 4},     {"Inside", 15000, 24, 0, 3, 8},
    {"Crossing", 15000, 24, 30, 3, 8}, {"Strips", 2000, 200, 50, 2, 12},
    {"Crowded", 500, 60, 20, 4, 200},  {"Far", 250, 30, 30000, 3, 8},
    {"Large", 5, 4000, 500, 3, 60},
};

class MaskFill : public testing::TestWithParam<Family> {
 protected:
  IntChains Next() {
    const Family& family = GetParam();
    canvas_ =
        cv::Size(1 + Below(random_, family.largestSide), 1 + Below(random_, family.largestSide));
    IntChains contours(1 + random_() % static_cast<unsigned>(family.mostContours));
    for (IntChain& contour : contours) {
      contour = AnyContour(random_, canvas_, family.reach, family.mostVertices);
    }
    return contours;
  }

  std::mt19937_64 random_{7};
  cv::Size canvas_;
};

TEST_P(MaskFill, PaintsAsOpenCVDrawsUpToVersion47) {
  if (!kOpenCVDrawsByTheRule) GTEST_SKIP() << "this OpenCV draws by another rule";
  for (int i = 0; i < GetParam().sets * kThoroughness; ++i) {
    const IntChains contours = Next();
    ASSERT_TRUE(Equal(Painted(contours, canvas_), Drawn(contours, canvas_)))
        << canvas_ << testing::PrintToString(contours);
  }
}

TEST_P(MaskFill, PaintsByTheRule) {
  const bool large = GetParam().largestSide > 1000;
  for (int i = 0; i < (large ? 1 : GetParam().sets * kThoroughness / 20); ++i) {
    const IntChains contours = Next();
    ASSERT_TRUE(
        Equal(Painted(contours, canvas_), FilledByRule(contours, canvas_.width, canvas_.height)))
        << canvas_ << testing::PrintToString(contours);
  }
}

INSTANTIATE_TEST_SUITE_P(Kinds, MaskFill, testing::ValuesIn(kFamilies),
                         [](const auto& family) { return family.param.name; });

TEST(MaskFillFar, PaintsByTheRuleAtAnyDistance) {
  std::mt19937_64 random(11);
  int partly = 0;
  for (int i = 0; i < 1000 * kThoroughness; ++i) {
    const cv::Size canvas(1 + Below(random, 70), 1 + Below(random, 40));
    const std::int64_t reach = std::int64_t{1} << (15 + Below(random, 17));
    IntChains contours(1 + random() % 3);
    for (IntChain& contour : contours) contour = AnyContour(random, canvas, reach, 6);
    const cv::Mat expected = FilledByRule(contours, canvas.width, canvas.height);
    ASSERT_TRUE(Equal(Painted(contours, canvas), expected))
        << canvas << testing::PrintToString(contours);
    const int inside = cv::countNonZero(expected);
    partly += inside > 0 && inside < canvas.area() ? 1 : 0;
  }
  EXPECT_GT(partly, 100 * kThoroughness);
}

// Where there are many rows or columns, lines are long and edges few.
TEST(MaskFillFar, PaintsByTheRuleOnLongCanvases) {
  std::mt19937_64 random(14);
  for (int i = 0; i < 8 * kThoroughness; ++i) {
    const int shorter = 1 + Below(random, 12);
    const int longer = 2000 + Below(random, i % 4 == 0 ? 70000 : 6000);
    const cv::Size canvas = i % 2 == 0 ? cv::Size(shorter, longer) : cv::Size(longer, shorter);
    IntChains contours(1 + random() % 2);
    for (IntChain& contour : contours) contour = AnyContour(random, canvas, i % 3 * 20, 6);
    ASSERT_TRUE(
        Equal(Painted(contours, canvas), FilledByRule(contours, canvas.width, canvas.height)))
        << canvas << testing::PrintToString(contours);
  }
}

// The crossings of an edge drift by up to 1/65536 pixel in each row: where it has more than 32768
// of them, they may cover pixels beside its border.
TEST(MaskFillFar, PaintsByTheRuleBesideTallEdges) {
  const IntChain contours[] = {
      {{1, 0}, {5, 89999}, {12, 45000}},  // 2.91 units in each row become 2.
      {{14, 0}, {10, 89999}, {3, 45000}},
      {{1, 0}, {2, 31000}, {12, 15000}},
      {{1, 0}, {2, 33000}, {12, 15000}},  // 1.99 units become 1.
      {{14, 0}, {13, 33000}, {2, 15000}}};
  for (const IntChain& contour : contours) {
    const cv::Size canvas(16, 90000);
    EXPECT_TRUE(Equal(Painted({contour}, canvas), FilledByRule({contour}, 16, 90000)))
        << testing::PrintToString(contour);
  }
}

// OpenCV walks through every row of such an edge, so there are few of them.
TEST(MaskFillFar, PaintsAsOpenCVDrawsOverAllIntegers) {
  if (!kOpenCVDrawsByTheRule) GTEST_SKIP() << "this OpenCV draws by another rule";
  std::mt19937_64 random(12);
  for (int i = 0; i < 2 * kThoroughness; ++i) {
    const cv::Size canvas(40, 30);
    IntChain contour = AnyContour(random, canvas, INT_MAX, 4);
    // The upper end stands nearby, since OpenCV walks down from it.
    const int top =
        std::min_element(contour.begin(), contour.end(), [](const auto& a, const auto& b) {
          return a.y < b.y;
        })->y;
    if (top < -100000) {
      for (cv::Point& p : contour) p.y = std::max(p.y, -Below(random, 100000));
    }
    ASSERT_TRUE(Equal(Painted({contour}, canvas), Drawn({contour}, canvas)))
        << testing::PrintToString(contour);
  }
}

TEST(MaskFillRuns, MasksFromContoursAreTheRunsOfTheirPixels) {
  std::mt19937_64 random(13);
  for (int i = 0; i < 200 * kThoroughness; ++i) {
    // Wide and narrow canvases, few and many edges.
    const cv::Size canvas(2 + Below(random, i % 2 == 0 ? 30 : 3000), 2 + Below(random, 40));
    IntChains contours(1 + random() % 3);
    for (IntChain& contour : contours) contour = AnyContour(random, canvas, 40, 20);
    const cv::Mat pixels = Painted(contours, canvas);
    Chains chains;
    for (const IntChain& contour : contours) chains.emplace_back(contour.begin(), contour.end());
    VemContourArray array = ContoursOf(chains);
    IVemROIPara mask;
    mask.GenMask(array, canvas.width, canvas.height);
    ASSERT_EQ(RunsOf(mask.Rows, mask.FirstColumns, mask.LastColumns), RunsOfPixels(pixels))
        << canvas << testing::PrintToString(contours);
  }
}

// Far out on a wide canvas, lines are walked in larger numbers.
TEST(MaskFillRuns, ShapesAreTheSameFarOutOnTheCanvas) {
  constexpr int kOffset = (1 << 29) + 100;
  std::mt19937_64 random(15);
  for (int i = 0; i < 200; ++i) {
    const cv::Size size(60, 12);
    IntChain contour(3 + random() % 4);
    for (cv::Point& p : contour) p = {Below(random, size.width), Below(random, size.height)};
    std::vector<::Run> expected =
        RunsOfPixels(FilledByRule(IntChains{contour}, size.width, size.height));
    Chain chain;
    for (const cv::Point& p : contour) chain.emplace_back(p.x + kOffset, p.y);
    for (::Run& run : expected) {
      run.FirstColumn += kOffset;
      run.LastColumn += kOffset;
    }
    VemContourArray array = ContoursOf(Chains{chain});
    IVemROIPara mask;
    mask.GenMask(array, 1 << 30, size.height);
    ASSERT_EQ(RunsOf(mask.Rows, mask.FirstColumns, mask.LastColumns), expected)
        << testing::PrintToString(contour);
  }
}

}  // namespace
