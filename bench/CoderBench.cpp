// The coder beside OpenCV's own functions and beside the limit, a plain read of the raster.

#include <cstdint>
#include <numeric>
#include <random>
#include <vector>

#include <benchmark/benchmark.h>
#include <opencv2/imgproc.hpp>

#include "VemRLC.h"

namespace {

// Nested plates, rings and bars: long runs, few outlines.
cv::Mat Solid(int size) {
  cv::Mat raster = cv::Mat::zeros(size, size, CV_8UC1);
  const cv::Scalar on(255);
  const cv::Scalar off(0);
  cv::rectangle(raster, cv::Rect(size / 16, size / 16, size * 7 / 8, size * 7 / 8), on, cv::FILLED);
  cv::circle(raster, cv::Point(size / 2, size / 2), size / 3, off, cv::FILLED);
  cv::circle(raster, cv::Point(size / 2, size / 2), size / 4, on, cv::FILLED);
  const float unit = static_cast<float>(size) / 10;
  const cv::RotatedRect tilted(cv::Point2f(5, 5) * unit, cv::Size2f(3 * unit, unit), 30.0f);
  cv::ellipse(raster, tilted, off, cv::FILLED);
  for (int i = 0; i < 8; ++i) {
    cv::rectangle(raster, cv::Rect(size / 10 + i * size / 10, size / 10, size / 40, size / 12), off,
                  cv::FILLED);
  }
  return raster;
}

// Independent pixels, half of them foreground: the shortest runs there are.
cv::Mat Noise(int size) {
  std::mt19937 random(1);
  cv::Mat raster(size, size, CV_8UC1);
  for (int row = 0; row < size; ++row) {
    for (int column = 0; column < size; ++column) {
      raster.at<unsigned char>(row, column) = (random() & 1) != 0 ? 255 : 0;
    }
  }
  return raster;
}

enum Content { kSolid, kNoise };

cv::Mat Input(benchmark::State& state) {
  const int size = static_cast<int>(state.range(1));
  state.SetLabel(state.range(0) == kSolid ? "solid" : "noise");
  return state.range(0) == kSolid ? Solid(size) : Noise(size);
}

void CountBytes(benchmark::State& state, const cv::Mat& raster) {
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(raster.total()));
}

void PlainRead(benchmark::State& state) {
  const cv::Mat raster = Input(state);
  const auto* const words = reinterpret_cast<const std::uint64_t*>(raster.data);
  const std::size_t count = raster.total() / sizeof(*words);
  for (auto _ : state) {
    benchmark::DoNotOptimize(std::accumulate(words, words + count, std::uint64_t{0}));
  }
  CountBytes(state, raster);
}

void Calc(benchmark::State& state, char mode) {
  cv::Mat raster = Input(state);
  for (auto _ : state) {
    VemRLC coder;
    coder.SetParam(1, mode, true, -1, -1, 1, false, false);
    coder.Calc(raster, true);
    benchmark::DoNotOptimize(coder.FillRuns.data());
    benchmark::DoNotOptimize(coder.ComponentRuns.data());
  }
  CountBytes(state, raster);
}

void Runs(benchmark::State& state) { Calc(state, 6); }
void Components(benchmark::State& state) { Calc(state, 9); }

void OpenCVComponents(benchmark::State& state) {
  const cv::Mat raster = Input(state);
  for (auto _ : state) {
    cv::Mat labels;
    benchmark::DoNotOptimize(cv::connectedComponents(raster, labels, 8, CV_32S));
  }
  CountBytes(state, raster);
}

void Outlines(benchmark::State& state) {
  cv::Mat raster = Input(state);
  for (auto _ : state) {
    std::vector<cv::Point> points;
    std::vector<int> pointStarts;
    std::vector<cv::Vec4i> hierarchy;
    std::vector<Run> runs;
    std::vector<int> runStarts;
    std::vector<std::vector<cv::Point>> contours;
    VemRLC::FindContours(raster, 1, &points, &pointStarts, &hierarchy, nullptr, &runs, &runStarts,
                         true, -1, -1, 1, false);
    VemRLC::Convert(points, pointStarts, contours);
    benchmark::DoNotOptimize(contours.data());
  }
  CountBytes(state, raster);
}

void OpenCVOutlines(benchmark::State& state) {
  const cv::Mat raster = Input(state);
  for (auto _ : state) {
    std::vector<std::vector<cv::Point>> contours;
    std::vector<cv::Vec4i> hierarchy;
    cv::findContours(raster, contours, hierarchy, cv::RETR_CCOMP, cv::CHAIN_APPROX_SIMPLE);
    benchmark::DoNotOptimize(contours.data());
  }
  CountBytes(state, raster);
}

void Rasters(benchmark::internal::Benchmark* bench) {
  bench->ArgNames({"content", "size"})->Unit(benchmark::kMicrosecond);
  for (const int content : {kSolid, kNoise}) {
    for (const int size : {512, 4096}) bench->Args({content, size});
  }
}

// OpenCV's outlines of noise take time that grows with the square of their number: the large raster
// would take minutes.
void RastersForOpenCVOutlines(benchmark::internal::Benchmark* bench) {
  bench->ArgNames({"content", "size"})->Unit(benchmark::kMicrosecond);
  bench->Args({kSolid, 512})->Args({kSolid, 4096})->Args({kNoise, 512});
}

BENCHMARK(PlainRead)->Apply(Rasters);
BENCHMARK(Runs)->Apply(Rasters);
BENCHMARK(Components)->Apply(Rasters);
BENCHMARK(OpenCVComponents)->Apply(Rasters);
BENCHMARK(Outlines)->Apply(Rasters);
BENCHMARK(OpenCVOutlines)->Apply(RastersForOpenCVOutlines);

}  // namespace
