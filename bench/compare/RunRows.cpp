// Listing the runs, beside the loops that one writes without a coder.

#include <immintrin.h>

#include <cstdint>
#include <cstring>

#include "VemRLC.h"
#include "compare/Compare.h"
#include "compare/Rasters.h"

namespace {

std::vector<Run> CodedRuns(cv::Mat& raster) {
  VemRLC coder;
  coder.SetParam(1, 6, true, -1, -1, 1, false, false);
  coder.Calc(raster, true);
  return std::move(coder.FillRuns);
}

// From run to run by memchr: its pixels are 0 and 255.
std::vector<Run> MemchrRuns(const cv::Mat& raster) {
  std::vector<Run> runs;
  for (int row = 0; row < raster.rows; ++row) {
    const std::uint8_t* const begin = raster.ptr<std::uint8_t>(row);
    const std::uint8_t* const end = begin + raster.cols;
    for (const std::uint8_t* pixel = begin; pixel != end;) {
      const void* const first = std::memchr(pixel, 255, static_cast<std::size_t>(end - pixel));
      if (first == nullptr) break;
      pixel = static_cast<const std::uint8_t*>(first);
      const void* const behind = std::memchr(pixel, 0, static_cast<std::size_t>(end - pixel));
      const int column = static_cast<int>(pixel - begin);
      pixel = behind == nullptr ? end : static_cast<const std::uint8_t*>(behind);
      runs.push_back({row, column, static_cast<int>(pixel - begin) - 1});
    }
  }
  return runs;
}

// Pixel after pixel.
std::vector<Run> LoopRuns(const cv::Mat& raster) {
  std::vector<Run> runs;
  for (int row = 0; row < raster.rows; ++row) {
    const std::uint8_t* const pixels = raster.ptr<std::uint8_t>(row);
    for (int column = 0; column < raster.cols;) {
      if (pixels[column] == 0) {
        ++column;
        continue;
      }
      const int first = column;
      while (column < raster.cols && pixels[column] != 0) ++column;
      runs.push_back({row, first, column - 1});
    }
  }
  return runs;
}

// The limit: every byte read once.
__attribute__((target("avx2"))) std::uint64_t SumOfBytes(const cv::Mat& raster) {
  __m256i sums = _mm256_setzero_si256();
  std::uint64_t rest = 0;
  for (int row = 0; row < raster.rows; ++row) {
    const std::uint8_t* const pixels = raster.ptr<std::uint8_t>(row);
    int column = 0;
    for (; column + 32 <= raster.cols; column += 32) {
      const __m256i some = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(pixels + column));
      sums = _mm256_add_epi64(sums, _mm256_sad_epu8(some, _mm256_setzero_si256()));
    }
    for (; column < raster.cols; ++column) rest += pixels[column];
  }
  std::uint64_t parts[4];
  _mm256_storeu_si256(reinterpret_cast<__m256i*>(parts), sums);
  return rest + parts[0] + parts[1] + parts[2] + parts[3];
}

bool Same(const std::vector<Run>& a, const std::vector<Run>& b) {
  return a.size() == b.size() &&
         (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(Run)) == 0);
}

struct Bars {
  double memchr;
  double loop;
  double sum;
  double loopMedian = 0;
};

double NoiseBar(int grain) { return grain == 1 ? 2.5 : grain == 4 ? 2.0 : 1.0; }

void Add(const std::string& input, const cv::Mat& source, const Bars& bars,
         std::vector<Row>& rows) {
  cv::Mat raster = source;
  Row row;
  row.work = "runs";
  row.input = input;
  row.ours = [=]() mutable { Keep(CodedRuns(raster).size()); };
  row.peers = {{"memchr", [=] { Keep(MemchrRuns(raster).size()); }, bars.memchr, 0},
               {"row loop", [=] { Keep(LoopRuns(raster).size()); }, bars.loop, bars.loopMedian}};
  if (__builtin_cpu_supports("avx2")) {
    row.peers.push_back({"sum of bytes", [=] { Keep(SumOfBytes(raster)); }, bars.sum, 0});
  }
  row.agree = [=]() mutable {
    const std::vector<Run> runs = CodedRuns(raster);
    return Same(runs, MemchrRuns(raster)) && Same(runs, LoopRuns(raster));
  };
  rows.push_back(row);
}

}  // namespace

void AddRunRows(const Setting& setting, std::vector<Row>& rows) {
  const int small = setting.small ? 64 : 512;
  const int large = setting.small ? 100 : 2048;
  if (setting.pictures.empty()) {
    for (const int size : {small, large}) {
      Add("solid " + std::to_string(size), SolidRaster(size), {1.0, 0, size == small ? 0.4 : 0.75},
          rows);
    }
    for (const int grain : {1, 4, 16}) {
      for (const int percent : {20, 50, 80}) {
        for (const int size : {small, large}) {
          Add("noise " + std::to_string(size) + ", grain " + std::to_string(grain) + ", " +
                  std::to_string(percent) + " %",
              NoiseRaster(size, grain, percent), {NoiseBar(grain), 0, 0}, rows);
        }
      }
    }
  }
  for (const NamedRaster& picture : PictureRasters(setting)) {
    Add(picture.name, picture.raster, {1.0, 1.0, 0, 6.0}, rows);
  }
}
