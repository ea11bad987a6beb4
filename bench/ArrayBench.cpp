// Arrays of regions beside plain lists of runs, and arrays of images beside plain clones.

#include <vector>

#include <benchmark/benchmark.h>
#include <opencv2/core.hpp>

#include "VemImageArray.h"
#include "VemRegionArray.h"

namespace {

// Row, first column, last column.
using PlainRegion = std::vector<cv::Vec3i>;

constexpr int kRegions = 1000;
constexpr int kRuns = 1000;
constexpr int kWidth = 640;

PlainRegion MakePlainRegion() {
  PlainRegion region;
  for (int i = 0; i < kRuns; ++i) region.emplace_back(i, i % 100, 100 + i % 500);
  return region;
}

VemRegion MakeRegion() {
  VemVarArray rows;
  VemVarArray firstColumns;
  VemVarArray lastColumns;
  for (const cv::Vec3i& run : MakePlainRegion()) {
    rows.Append(run[0]);
    firstColumns.Append(run[1]);
    lastColumns.Append(run[2]);
  }
  return VemRegion(kWidth, kRuns, rows, firstColumns, lastColumns);
}

VemRegionArray MakeRegionArray() {
  VemRegionArray array;
  VemRegion region = MakeRegion();
  for (int i = 0; i < kRegions; ++i) array.Append(region);
  return array;
}

std::vector<PlainRegion> MakePlainRegions() {
  return std::vector<PlainRegion>(kRegions, MakePlainRegion());
}

void CountRuns(benchmark::State& state) {
  state.SetItemsProcessed(state.iterations() * kRegions * kRuns);
}

void RegionArrayAppend(benchmark::State& state) {
  VemRegion region = MakeRegion();
  for (auto _ : state) {
    VemRegionArray array;
    for (int i = 0; i < kRegions; ++i) array.Append(region);
    benchmark::DoNotOptimize(array.Length());
  }
  CountRuns(state);
}

void PlainRegionsAppend(benchmark::State& state) {
  const PlainRegion region = MakePlainRegion();
  for (auto _ : state) {
    std::vector<PlainRegion> regions;
    for (int i = 0; i < kRegions; ++i) regions.push_back(region);
    benchmark::DoNotOptimize(regions.data());
    benchmark::ClobberMemory();
  }
  CountRuns(state);
}

void RegionArraySelect(benchmark::State& state) {
  VemRegionArray array = MakeRegionArray();
  VemRegion region;
  for (auto _ : state) {
    for (int i = 0; i < kRegions; ++i) array.Select(i, &region);
    benchmark::ClobberMemory();
  }
  CountRuns(state);
}

void PlainRegionsSelect(benchmark::State& state) {
  const std::vector<PlainRegion> regions = MakePlainRegions();
  PlainRegion selected;
  for (auto _ : state) {
    for (const PlainRegion& region : regions) {
      selected = region;
      benchmark::DoNotOptimize(selected.data());
      benchmark::ClobberMemory();
    }
  }
  CountRuns(state);
}

void RegionArrayUnion(benchmark::State& state) {
  VemRegionArray array = MakeRegionArray();
  for (auto _ : state) {
    VemRegion region;
    array.Union(&region);
    benchmark::DoNotOptimize(region.Width());
  }
  CountRuns(state);
}

void PlainRegionsUnion(benchmark::State& state) {
  const std::vector<PlainRegion> regions = MakePlainRegions();
  for (auto _ : state) {
    PlainRegion all;
    for (const PlainRegion& region : regions) all.insert(all.end(), region.begin(), region.end());
    benchmark::DoNotOptimize(all.data());
    benchmark::ClobberMemory();
  }
  CountRuns(state);
}

// Square, of 8-bit gray.
VemImage MakeImage(benchmark::State& state) {
  const int size = static_cast<int>(state.range(0));
  VemImage image;
  image.Mat() = cv::Mat(size, size, CV_8UC1, cv::Scalar(7));
  return image;
}

void CountBytes(benchmark::State& state) {
  state.SetBytesProcessed(state.iterations() * state.range(0) * state.range(0));
}

// The array is emptied each time, as the plain clone is destroyed each time.
void ImageArrayAppend(benchmark::State& state) {
  VemImage image = MakeImage(state);
  VemImageArray array;
  for (auto _ : state) {
    array.Append(image);
    array.Clear();
  }
  CountBytes(state);
}

void ImageArrayRead(benchmark::State& state) {
  VemImage image = MakeImage(state);
  VemImageArray array;
  array.Append(image);
  const VemImageArray& constant = array;
  for (auto _ : state) {
    VemImage read = constant[0];
    benchmark::DoNotOptimize(read.ImageData());
  }
  CountBytes(state);
}

void PlainClone(benchmark::State& state) {
  const VemImage image = MakeImage(state);
  for (auto _ : state) {
    const cv::Mat clone = image.Mat().clone();
    benchmark::DoNotOptimize(clone.data);
  }
  CountBytes(state);
}

BENCHMARK(RegionArrayAppend)->Unit(benchmark::kMillisecond);
BENCHMARK(PlainRegionsAppend)->Unit(benchmark::kMillisecond);
BENCHMARK(RegionArraySelect)->Unit(benchmark::kMillisecond);
BENCHMARK(PlainRegionsSelect)->Unit(benchmark::kMillisecond);
BENCHMARK(RegionArrayUnion)->Unit(benchmark::kMillisecond);
BENCHMARK(PlainRegionsUnion)->Unit(benchmark::kMillisecond);
BENCHMARK(ImageArrayAppend)->ArgName("size")->Arg(64)->Arg(1024)->Unit(benchmark::kMicrosecond);
BENCHMARK(ImageArrayRead)->ArgName("size")->Arg(64)->Arg(1024)->Unit(benchmark::kMicrosecond);
BENCHMARK(PlainClone)->ArgName("size")->Arg(64)->Arg(1024)->Unit(benchmark::kMicrosecond);

}  // namespace
