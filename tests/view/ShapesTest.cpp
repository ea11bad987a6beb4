#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

#include "Scenes.h"
#include "VemContourArray.h"
#include "VemTuple.h"
#include "vem/view.h"

// Drawings beside what they are to cover, found pixel by pixel.

namespace {

using vem::draw;
using vem::draw_style;

constexpr int kSide = 48;
const draw_style kInside(255, 255, 255, 0, true);

cv::Mat Black() { return cv::Mat::zeros(kSide, kSide, CV_8UC1); }

// How much of a pixel a shape covers, by samples.
template <typename Inside>
double Share(int row, int column, Inside inside) {
  constexpr int kSamples = 16;
  int hits = 0;
  for (int i = 0; i < kSamples; ++i) {
    for (int j = 0; j < kSamples; ++j) {
      const double x = column - 0.5 + (j + 0.5) / kSamples, y = row - 0.5 + (i + 0.5) / kSamples;
      hits += inside(cv::Point2d(x, y)) ? 1 : 0;
    }
  }
  return static_cast<double>(hits) / (kSamples * kSamples);
}

template <typename Inside>
void ExpectShares(const cv::Mat& picture, double full, Inside inside) {
  for (int row = 0; row < picture.rows; ++row) {
    for (int column = 0; column < picture.cols; ++column) {
      ASSERT_NEAR(picture.at<unsigned char>(row, column), full * Share(row, column, inside),
                  full / 14)
          << "row " << row << ", column " << column;
    }
  }
}

double DistanceToSegment(const cv::Point2d& p, const cv::Point2d& a, const cv::Point2d& b) {
  const cv::Point2d along = b - a;
  const double length = along.dot(along);
  const double t = length == 0 ? 0 : std::min(std::max((p - a).dot(along) / length, 0.0), 1.0);
  return cv::norm(p - (a + t * along));
}

// Where a row crosses an odd number of edges right of a point.
bool InsideEvenOdd(const cv::Point2d& p, const std::vector<cv::Point2d>& chain) {
  bool inside = false;
  for (std::size_t i = 0; i < chain.size(); ++i) {
    const cv::Point2d a = chain[i], b = chain[(i + 1) % chain.size()];
    if ((a.y <= p.y) == (b.y <= p.y)) continue;
    if (a.x + (p.y - a.y) * (b.x - a.x) / (b.y - a.y) > p.x) inside = !inside;
  }
  return inside;
}

class Dice {
 public:
  explicit Dice(unsigned seed) : engine_(seed) {}
  double Real(double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(engine_);
  }
  int Int(int low, int high) { return std::uniform_int_distribution<int>(low, high)(engine_); }
  std::vector<cv::Point2d> Chain(int length, double low, double high) {
    std::vector<cv::Point2d> chain;
    for (int i = 0; i < length; ++i) chain.emplace_back(Real(low, high), Real(low, high));
    return chain;
  }

 private:
  std::mt19937 engine_;
};

VemPointArray ArrayOf(const std::vector<cv::Point2d>& chain) {
  VemPointArray array;
  for (const cv::Point2d& p : chain) {
    VemPoint point(p.x, p.y);
    array.Append(point);
  }
  return array;
}

cv::Mat MaskOf(const VemROI& roi) {
  VemVarArray rows, firsts, lasts;
  int width = 0, height = 0;
  roi.GetMask(&rows, &firsts, &lasts, &width, &height);
  cv::Mat mask = Black();
  for (int i = 0; i < rows.Length(); ++i) {
    const int row = rows[i].I();
    if (row < 0 || row >= kSide) continue;
    for (int x = std::max(firsts[i].I(), 0); x <= std::min(lasts[i].I(), kSide - 1); ++x) {
      mask.at<unsigned char>(row, x) = 115;
    }
  }
  return mask;
}

}  // namespace

TEST(Shapes, LinesCoverWhatIsNoFartherThanHalfTheirWidth) {
  Dice dice(1);
  for (int round = 0; round < 60; ++round) {
    const std::vector<cv::Point2d> chain = dice.Chain(dice.Int(2, 4), -60, 110);
    const int width = dice.Int(1, 30);
    SCOPED_TRACE(testing::Message() << round << ", width " << width);
    cv::Mat picture = Black();
    VemContour contour;
    VemPointArray points = ArrayOf(chain);
    contour.FromPointArray(points);
    draw(picture, contour, draw_style(255, 255, 255, width));
    ExpectShares(picture, 255, [&](const cv::Point2d& p) {
      for (std::size_t i = 1; i < chain.size(); ++i) {
        if (DistanceToSegment(p, chain[i - 1], chain[i]) <= width / 2.0) return true;
      }
      return false;
    });
    if (HasFatalFailure()) return;
  }
}

TEST(Shapes, PolygonsAreFilledEvenOdd) {
  Dice dice(2);
  for (int round = 0; round < 60; ++round) {
    SCOPED_TRACE(round);
    std::vector<cv::Point2d> chain = dice.Chain(dice.Int(3, 7), -60, 110);
    for (cv::Point2d& p : chain) p = {static_cast<float>(p.x), static_cast<float>(p.y)};
    // So far away that the inside is not the mask's.
    const std::vector<cv::Point2d> far = {chain[0], {40000, chain[0].y}};
    chain.insert(chain.begin(), far.begin(), far.end());
    VemROI roi;
    VemPointArray points = ArrayOf(chain);
    roi.GenPolygon(points);
    cv::Mat picture = Black();
    draw(picture, roi, kInside);
    ExpectShares(picture, 115, [&](const cv::Point2d& p) { return InsideEvenOdd(p, chain); });
    if (HasFatalFailure()) return;
  }
}

TEST(Shapes, RoundOutlinesAreRoundAtEverySize) {
  Dice dice(3);
  for (const double radius : {0.3, 2.0, 9.0, 20.0, 100.0, 5e3, 2e6, 1e9}) {
    for (int round = 0; round < 6; ++round) {
      const double angle = dice.Real(0, 2 * CV_PI);
      const cv::Point2d rim(dice.Real(4, 44), dice.Real(4, 44));
      const cv::Point2d center = rim - radius * cv::Point2d(std::cos(angle), std::sin(angle));
      const cv::Point2d known(static_cast<float>(center.x), static_cast<float>(center.y));
      SCOPED_TRACE(testing::Message() << radius << ", " << round);
      cv::Mat picture = Black();
      draw(picture, Circle(known.x, known.y, radius), draw_style(255, 255, 255, 3));
      ExpectShares(picture, 255, [&](const cv::Point2d& p) {
        return std::abs(cv::norm(p - known) - radius) <= 1.5;
      });
      if (HasFatalFailure()) return;
    }
  }
}

TEST(Shapes, RegionsOfInterestAreFilledByTheirMasks) {
  Dice dice(4);
  for (int round = 0; round < 300; ++round) {
    SCOPED_TRACE(round);
    VemROI roi;
    VemPoint center(dice.Real(-10, 60), dice.Real(-10, 60)), other(60, dice.Real(60, 90));
    VemPointArray points = ArrayOf(dice.Chain(5, -20, 70));
    switch (round % 6) {
      case 0:
        roi.GenRect1(center, other);
        break;
      case 1:
        roi.GenCircle(center, dice.Real(1, 40));
        break;
      case 2:
        roi.GenTorus(center, dice.Real(1, 9), dice.Real(10, 40), dice.Real(-400, 400),
                     dice.Real(1, 400));
        break;
      case 3:
        roi.GenRect2(center, dice.Real(1, 60), dice.Real(1, 60), dice.Real(-400, 400));
        break;
      case 4:
        roi.GenEllipse(center, dice.Real(1, 40), dice.Real(1, 40), dice.Real(-400, 400));
        break;
      default:
        roi.GenPolygon(points);
    }
    cv::Mat picture = Black();
    EXPECT_TRUE(draw(picture, roi, kInside));
    EXPECT_EQ(cv::norm(picture, MaskOf(roi), cv::NORM_INF), 0) << roi.ROIType();
  }
}

// However far it reaches; a circle's mask is a row shorter at the bottom than at the top.
TEST(Shapes, RegionsOfInterestAreFilledByTheirMasksUpToALimit) {
  const auto covered = [](double radius) {
    cv::Mat picture = Black();
    draw(picture, Circle(20, 20 - radius, radius), kInside);
    return cv::countNonZero(picture.col(20));
  };
  EXPECT_EQ(covered(32000), 20 - 1);
  EXPECT_EQ(covered(32767), 20 - 1);
  EXPECT_EQ(covered(40000), 20 + 1);
}

TEST(Shapes, ContoursAreFilledByTheirMask) {
  Dice dice(5);
  for (int round = 0; round < 50; ++round) {
    VemContourArray contours;
    for (int i = 0; i < 3; ++i) {
      VemContour contour;
      VemPointArray points = ArrayOf(dice.Chain(4, -20, 70));
      contour.FromPointArray(points);
      contours.Append(contour);
    }
    VemROI roi;
    roi.GenMask(contours, kSide, kSide);
    cv::Mat picture = Black();
    draw(picture, contours, kInside);
    EXPECT_EQ(cv::norm(picture, MaskOf(roi), cv::NORM_INF), 0) << round;
  }
}

// A pixel is outermost if one that is no more than `width` steps away is not in the region.
TEST(Shapes, RegionsAreBorderedByTheirOutermostPixels) {
  Dice dice(6);
  for (int round = 0; round < 60; ++round) {
    cv::Mat inside = Black();
    std::vector<std::vector<int>> runs;
    for (int i = 0; i < 60; ++i) {
      const int row = dice.Int(-5, 60), first = dice.Int(-5, 50), last = first + dice.Int(-2, 30);
      runs.push_back({row, first, last});
      if (row < 0 || row >= kSide) continue;
      for (int x = std::max(first, 0); x <= std::min(last, kSide - 1); ++x) {
        inside.at<unsigned char>(row, x) = 255;
      }
    }
    const int width = dice.Int(1, 4);
    cv::Mat expected = Black();
    for (int y = 0; y < kSide; ++y) {
      for (int x = 0; x < kSide; ++x) {
        const cv::Rect near(x - width, y - width, 2 * width + 1, 2 * width + 1);
        double least = 0;
        cv::minMaxLoc(inside(near & cv::Rect(0, 0, kSide, kSide)), &least);
        const bool border = inside.at<unsigned char>(y, x) != 0 && least == 0;
        expected.at<unsigned char>(y, x) = border ? 255 : 0;
      }
    }
    cv::Mat picture = Black();
    draw(picture, RegionOf(runs, 9, 9), draw_style(255, 255, 255, width));
    EXPECT_EQ(cv::norm(picture, expected, cv::NORM_INF), 0) << round;
  }
}

TEST(Shapes, RegionsAreTintedOnceWhereRunsOverlap) {
  cv::Mat picture = Black();
  draw(picture, RegionOf({{5, 2, 9}, {5, 2, 9}, {5, 4, 20}}, 9, 9), kInside);
  EXPECT_EQ(cv::countNonZero(picture), 19);
  EXPECT_EQ(cv::countNonZero(picture == 115), 19);
}
