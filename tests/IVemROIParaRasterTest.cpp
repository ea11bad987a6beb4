#include "IVemROIPara.h"

#include <climits>
#include <random>

#include <gtest/gtest.h>
#include <opencv2/imgproc.hpp>

#include "support/RoiRasters.h"

namespace {

// --- MatToMask --------------------------------------------------------------------------------

TEST(IVemROIParaRaster, RasterIsReadAsRuns) {
  const RunsOfRaster read = ReadRuns(Raster("#..##\n.....\n.#.#.\n#####\n"));
  EXPECT_EQ(read.runs, (Runs{{0, 0, 0}, {0, 3, 4}, {2, 1, 1}, {2, 3, 3}, {3, 0, 4}}));
  EXPECT_EQ(read.width, 5);
  EXPECT_EQ(read.height, 4);
}

TEST(IVemROIParaRaster, RasterIsReadAsClosedContours) {
  EXPECT_EQ(ReadContours(Raster("......\n.####.\n.#..#.\n.####.\n")),
            (OutlineMask{true,
                         {{{1, 1}, {1, 3}, {4, 3}, {4, 1}, {1, 1}},
                          {{1, 2}, {2, 1}, {3, 1}, {4, 2}, {3, 3}, {2, 3}, {1, 2}}},
                         6,
                         4}));
  EXPECT_EQ(ReadContours(Raster("...#\n#...\n")),
            (OutlineMask{true, {{{3, 0}, {3, 0}}, {{0, 1}, {0, 1}}}, 4, 2}));
}

TEST(IVemROIParaRaster, RasterWithoutForegroundGivesItsSizeAlone) {
  const cv::Mat blank = cv::Mat::zeros(7, 9, CV_8UC1);
  const RunsOfRaster read = ReadRuns(blank);
  EXPECT_EQ(read.runs, Runs());
  EXPECT_EQ(read.width, 9);
  EXPECT_EQ(read.height, 7);
  EXPECT_EQ(ReadContours(blank), (OutlineMask{true, {}, 9, 7}));
  const RunsOfRaster none = ReadRuns(cv::Mat());
  EXPECT_EQ(none.runs, Runs());
  EXPECT_EQ(none.width, 0);
  EXPECT_EQ(none.height, 0);
  EXPECT_EQ(ReadContours(cv::Mat()), (OutlineMask{true, {}, 0, 0}));
}

TEST(IVemROIParaRaster, AnyPixelThatIsNotZeroIsForeground) {
  const cv::Mat raster = (cv::Mat_<unsigned char>(2, 5) << 0, 1, 128, 254, 0, 255, 0, 0, 0, 2);
  EXPECT_EQ(ReadRuns(raster).runs, (Runs{{0, 1, 3}, {1, 0, 0}, {1, 4, 4}}));
  EXPECT_EQ(ReadContours(raster).contours, TracedContours(raster));
}

TEST(IVemROIParaRaster, PartOfALargerRasterIsReadAlone) {
  std::mt19937 random(41);
  const cv::Mat large = Noise(random, 50, 40, 60);
  const cv::Mat before = large.clone();
  const cv::Mat part = large(cv::Rect(7, 5, 21, 17));
  EXPECT_EQ(ReadRuns(part).runs, PlainRuns(part));
  EXPECT_EQ(ReadContours(part), (OutlineMask{true, TracedContours(part), 21, 17}));
  EXPECT_TRUE(SamePixels(large, before));
}

// --- Point lists ------------------------------------------------------------------------------

TEST(IVemROIParaRaster, IntegersAreWidenedExactly) {
  const Chains expected = {
      {{1, -2}, {2147483647, -2147483648.0}}, {}, {{16777217, 0}, {5, 6}, {5, 6}}};
  for (std::size_t length : {0U, 2U, 9U}) {
    Chains target(length, Chain(5, cv::Point2d(7, 8)));
    IVemROIPara().VectorI2D({{{1, -2}, {INT_MAX, INT_MIN}}, {}, {{16777217, 0}, {5, 6}, {5, 6}}},
                            target);
    EXPECT_EQ(target, expected);
  }
  Chains target = expected;
  IVemROIPara().VectorI2D({}, target);
  EXPECT_EQ(target, Chains());
}

TEST(IVemROIParaRaster, DoublesAreRoundedHalvesToEven) {
  const struct {
    double value;
    int rounded;
  } cases[] = {
      {0, 0},
      {-0.0, 0},
      {0.5, 0},
      {1.5, 2},
      {2.5, 2},
      {3.5, 4},
      {-0.5, 0},
      {-1.5, -2},
      {-2.5, -2},
      {-3.5, -4},
      {0.49999999, 0},
      {0.50000001, 1},
      {-2.51, -3},
      {-2.49, -2},
      {2.9, 3},
      {-2.9, -3},
      {1e9 + 0.5, 1000000000},
      {1e9 + 1.5, 1000000002},
      {2147483647, INT_MAX},
      {-2147483648.0, INT_MIN},
      {2147483646.5, INT_MAX - 1},
      {1e10, INT_MIN},
      {-1e10, INT_MIN},
      {kInfinity, INT_MIN},
      {-kInfinity, INT_MIN},
      {kNaN, INT_MIN},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.value);
    IntChains target = {{{9, 9}, {9, 9}}, {{9, 9}}};
    IVemROIPara().VectorD2I({{{c.value, 7}, {-8, c.value}}, {}}, target);
    EXPECT_EQ(target, (IntChains{{{c.rounded, 7}, {-8, c.rounded}}, {}}));
  }
  IntChains target = {{{9, 9}}};
  IVemROIPara().VectorD2I({}, target);
  EXPECT_EQ(target, IntChains());
}

TEST(IVemROIParaRaster, PointListsConvertBackAndForth) {
  std::mt19937 random(43);
  IntChains source(50);
  for (IntChain& chain : source) {
    chain.resize(random() % 20);
    for (cv::Point& p : chain) {
      p = cv::Point(static_cast<int>(random()), static_cast<int>(random()));
    }
  }
  IVemROIPara para;
  Chains widened;
  para.VectorI2D(source, widened);
  IntChains back;
  para.VectorD2I(widened, back);
  EXPECT_EQ(back, source);
}

// --- Round trips ------------------------------------------------------------------------------

// Raster to contours, to a mask, to its runs; and raster to runs, to a raster, to runs.
void ExpectRoundTrips(const cv::Mat& raster) {
  const Runs runs = PlainRuns(raster);
  const OutlineMask outlines = ReadContours(raster);
  ASSERT_EQ(outlines, (OutlineMask{true, TracedContours(raster), raster.cols, raster.rows}));
  VemContourArray contours = ContoursOf(outlines.contours);
  VemROI roi;
  roi.GenMask(contours, raster.cols, raster.rows);
  ExpectMask(roi, runs, raster.cols, raster.rows);

  const RunsOfRaster read = ReadRuns(raster);
  ASSERT_EQ(read.runs, runs);
  const cv::Mat painted = Paint(read.runs, read.width, read.height);
  ASSERT_TRUE(SamePixels(painted, raster)) << Picture(painted) << '\n' << Picture(raster);
  ASSERT_EQ(ReadRuns(painted).runs, runs);
}

TEST(IVemROIParaRaster, NoiseComesBack) {
  std::mt19937 random(47);
  for (unsigned percent : {0U, 1U, 5U, 20U, 35U, 50U, 60U, 75U, 90U, 97U, 100U}) {
    for (int i = 0; i < 60; ++i) {
      const int width = 2 + static_cast<int>(random() % 59);
      const int height = 2 + static_cast<int>(random() % 59);
      ExpectRoundTrips(Noise(random, width, height, percent));
      if (HasFailure()) FAIL() << percent << " percent";
    }
  }
}

TEST(IVemROIParaRaster, EverySmallRasterComesBack) {
  for (int bits = 0; bits < 1 << 12; ++bits) {
    cv::Mat raster(3, 4, CV_8UC1);
    for (int i = 0; i < 12; ++i) {
      raster.at<unsigned char>(i / 4, i % 4) = (bits >> i & 1) != 0 ? 255 : 0;
    }
    ExpectRoundTrips(raster);
    if (HasFailure()) FAIL() << Picture(raster);
  }
}

TEST(IVemROIParaRaster, NestedRingsComeBack) {
  for (int step : {1, 2, 3, 5}) {
    cv::Mat squares = cv::Mat::zeros(61, 53, CV_8UC1);
    cv::Mat circles = cv::Mat::zeros(90, 120, CV_8UC1);
    for (int k = 0; k * step < 45; ++k) {
      const cv::Scalar colour(k % 2 == 0 ? 255 : 0);
      const int inset = k * step;
      if (2 * inset < 53) {
        const cv::Rect rect(inset, inset, 53 - 2 * inset, 61 - 2 * inset);
        cv::rectangle(squares, rect, colour, cv::FILLED);
      }
      cv::circle(circles, cv::Point(60, 45), 60 - inset, colour, cv::FILLED);
    }
    ExpectRoundTrips(squares);
    ExpectRoundTrips(circles);
  }
}

TEST(IVemROIParaRaster, ShapesCutByTheBorderComeBack) {
  std::mt19937 random(53);
  for (int i = 0; i < 60; ++i) {
    const int width = i % 10 == 0 ? 400 : 60;
    const int height = i % 10 == 0 ? 300 : 45;
    cv::Mat raster = cv::Mat::zeros(height, width, CV_8UC1);
    for (int k = 0; k < 14; ++k) {
      const cv::Point center(static_cast<int>(random()) % (width + 20),
                             static_cast<int>(random()) % (height + 20));
      const cv::Size axes(1 + static_cast<int>(random() % 30), 1 + static_cast<int>(random() % 15));
      cv::ellipse(raster, center, axes, static_cast<double>(random() % 180), 0, 360,
                  cv::Scalar(k % 3 == 2 ? 0 : 255), k % 4 == 0 ? 1 : cv::FILLED);
    }
    ExpectRoundTrips(raster);
  }
}

}  // namespace
