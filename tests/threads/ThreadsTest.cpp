#include <atomic>
#include <cstddef>
#include <functional>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

#include "VemImage.h"
#include "VemOverlay.h"
#include "VemOverlayPath.h"
#include "VemRLC.h"
#include "VemROI.h"
#include "VemRegion.h"

// What the library promises about threads, in a program of its own: the thread sanitizer watches
// it.

namespace {

constexpr int kThreads = 4;
constexpr int kRounds = 200;

void OnThreads(const std::function<void(int)>& work) {
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) threads.emplace_back(work, i);
  for (std::thread& thread : threads) thread.join();
}

VemROI Ring() {
  VemPoint center(60, 50);
  VemROI roi;
  roi.GenTorus(center, 20, 40, 30, 200);
  return roi;
}

int CountRuns(const VemROI& roi) {
  VemVarArray rows, firstColumns, lastColumns;
  int width = 0, height = 0;
  roi.GetMask(&rows, &firstColumns, &lastColumns, &width, &height);
  VemRegion region(width, height, rows, firstColumns, lastColumns);
  VemOverlay overlay;
  overlay.GenRegion(region);
  VemOverlayPath path;
  path.AddOverlay(overlay);
  return path.Length() == 1 ? rows.Length() : 0;
}

TEST(Threads, SeparateObjectsMayBeUsedAtOnce) {
  const int expected = CountRuns(Ring());
  std::atomic<int> same{0};
  OnThreads([&](int) {
    for (int i = 0; i < kRounds; ++i) same += CountRuns(Ring()) == expected ? 1 : 0;
  });
  EXPECT_EQ(same, kThreads * kRounds);
}

TEST(Threads, OneObjectMayBeReadFromSeveral) {
  const VemROI roi = Ring();
  const VemVarArray values(VemVarArray("text") + VemVarArray(2.5) + VemVarArray(7));
  const int expected = CountRuns(roi);
  std::atomic<int> same{0};
  OnThreads([&](int) {
    for (int i = 0; i < kRounds; ++i) {
      const VemVarArray copy(values);
      const VemROI other(roi);
      same += copy == values && CountRuns(other) == expected ? 1 : 0;
    }
  });
  EXPECT_EQ(same, kThreads * kRounds);
}

TEST(Threads, ImagesThatSharePixelsMayDieOnDifferentThreads) {
  std::vector<unsigned char> data(64 * 64, 9);
  for (int round = 0; round < kRounds; ++round) {
    std::vector<VemImage> images(kThreads);
    {
      const VemImage source(data.data(), 64, 64, 64, 1, VemImageType8U);
      for (VemImage& image : images) image = source;
    }
    std::atomic<int> sum{0};
    OnThreads([&](int i) {
      VemImage mine(images[static_cast<std::size_t>(i)]);
      images[static_cast<std::size_t>(i)] = VemImage();
      sum += mine.ImageData()[100];
    });
    ASSERT_EQ(sum, 9 * kThreads);
  }
}

TEST(Threads, OneRasterMayBeCodedFromSeveral) {
  cv::Mat raster(70, 130, CV_8UC1);
  cv::randu(raster, 0, 2);
  const auto outlines = [&] {
    std::vector<cv::Point> points;
    std::vector<int> pointStarts, runStarts;
    std::vector<cv::Vec4i> hierarchy;
    std::vector<::Run> runs;
    VemRLC::FindContours(raster, 1, &points, &pointStarts, &hierarchy, nullptr, &runs, &runStarts,
                         true, -1, -1, 1, false);
    return points;
  };
  const std::vector<cv::Point> expected = outlines();
  std::atomic<int> same{0};
  OnThreads([&](int) {
    for (int i = 0; i < kRounds; ++i) same += outlines() == expected ? 1 : 0;
  });
  EXPECT_EQ(same, kThreads * kRounds);
}

}  // namespace
