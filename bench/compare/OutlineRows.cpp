// Tracing the outlines, beside OpenCV's.

#include <algorithm>

#include <opencv2/imgproc.hpp>

#include "VemRLC.h"
#include "compare/Compare.h"
#include "compare/Rasters.h"

namespace {

// OpenCV names it in its C headers only.
constexpr int kLinkRuns = 5;

using Contours = std::vector<std::vector<cv::Point>>;

struct Traced {
  std::vector<cv::Point> points;
  std::vector<int> pointStarts;
  std::vector<cv::Vec4i> hierarchy;
  std::vector<Run> runs;
  std::vector<int> runStarts;
};

Traced TracedOutlines(cv::Mat& raster) {
  Traced traced;
  VemRLC::FindContours(raster, 1, &traced.points, &traced.pointStarts, &traced.hierarchy, nullptr,
                       &traced.runs, &traced.runStarts, true, -1, -1, 1, false);
  return traced;
}

// In lists of their own, as OpenCV has them.
Contours CodedOutlines(cv::Mat& raster) {
  Traced traced = TracedOutlines(raster);
  Contours contours;
  VemRLC::Convert(traced.points, traced.pointStarts, contours);
  return contours;
}

Contours OpenCVOutlines(const cv::Mat& raster, int method) {
  Contours contours;
  std::vector<cv::Vec4i> hierarchy;
  cv::findContours(raster, contours, hierarchy, cv::RETR_CCOMP, method);
  return contours;
}

bool Before(const std::vector<cv::Point>& a, const std::vector<cv::Point>& b) {
  const auto before = [](const cv::Point& p, const cv::Point& q) {
    return p.y != q.y ? p.y < q.y : p.x < q.x;
  };
  return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(), before);
}

bool Same(Contours a, Contours b) {
  std::sort(a.begin(), a.end(), Before);
  std::sort(b.begin(), b.end(), Before);
  return a == b;
}

struct Bars {
  double contours;
  double linkRuns;
  double contoursMedian = 0;
};

void Add(const std::string& input, const cv::Mat& source, const Bars& bars,
         std::vector<Row>& rows) {
  cv::Mat raster = source;
  Row row;
  row.work = "outlines";
  row.input = input;
  row.ours = [=]() mutable { Keep(CodedOutlines(raster).size()); };
  const auto peer = [=](int method) {
    return [=] { Keep(OpenCVOutlines(raster, method).size()); };
  };
  row.peers = {{"findContours", peer(cv::CHAIN_APPROX_SIMPLE), bars.contours, bars.contoursMedian},
               {"link-runs", peer(kLinkRuns), bars.linkRuns, 0}};
  row.agree = [=]() mutable {
    return Same(CodedOutlines(raster), OpenCVOutlines(raster, cv::CHAIN_APPROX_SIMPLE));
  };
  rows.push_back(row);
}

// OpenCV's time grows with the square of the number of outlines: noise stands alone, and is traced
// only.
void AddNoise(int size, int grain, int percent, std::vector<Row>& rows) {
  cv::Mat raster = NoiseRaster(size, grain, percent);
  Row row;
  row.work = "outlines, packed";
  row.input = "noise " + std::to_string(size) + ", grain " + std::to_string(grain) + ", " +
              std::to_string(percent) + " %";
  row.ours = [=]() mutable { Keep(TracedOutlines(raster).pointStarts.size()); };
  row.units = 2 * static_cast<double>(TracedOutlines(raster).runs.size());
  row.unit = "run end";
  row.limitNanoseconds = 20;
  rows.push_back(row);
}

}  // namespace

void AddOutlineRows(const Setting& setting, std::vector<Row>& rows) {
  const int small = setting.small ? 64 : 512;
  const int large = setting.small ? 100 : 2048;
  if (setting.pictures.empty()) {
    for (const int size : {small, large}) {
      Add("solid " + std::to_string(size), SolidRaster(size), {size == small ? 2.5 : 4.5, 1.0},
          rows);
    }
    for (const int percent : {20, 50, 80}) {
      for (const int size : {small, large}) AddNoise(size, 1, percent, rows);
    }
  }
  for (const NamedRaster& picture : PictureRasters(setting)) {
    Add(picture.name, picture.raster, {1.0, 0, 3.3}, rows);
  }
}
