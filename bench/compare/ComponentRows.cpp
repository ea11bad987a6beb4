// Finding the components, beside OpenCV's algorithms that label every pixel.

#include <opencv2/imgproc.hpp>

#include "VemRLC.h"
#include "compare/Compare.h"
#include "compare/Rasters.h"

namespace {

struct Algorithm {
  const char* name;
  int type;
};

#if CV_VERSION_MAJOR > 4 || (CV_VERSION_MAJOR == 4 && CV_VERSION_MINOR >= 5)
const Algorithm kAlgorithms[] = {{"SAUF", cv::CCL_WU}, {"BBDT", cv::CCL_GRANA}, {"Spaghetti", 2}};
#else
const Algorithm kAlgorithms[] = {{"SAUF", cv::CCL_WU}, {"BBDT", cv::CCL_GRANA}};
#endif

int CodedComponents(cv::Mat& raster) {
  VemRLC coder;
  coder.SetParam(1, 9, false, -1, -1, -1, false, false);
  coder.Calc(raster, true);
  return coder.ComponentCount;
}

int LabelledComponents(const cv::Mat& raster, int type) {
  cv::Mat labels;
  return cv::connectedComponents(raster, labels, 8, CV_32S, type) - 1;
}

double NoiseBar(int grain) { return grain == 1 ? 1.1 : grain == 4 ? 2.5 : 4.5; }

void Add(const std::string& input, const cv::Mat& source, double bar, double medianBar,
         std::vector<Row>& rows) {
  cv::Mat raster = source;
  Row row;
  row.work = "components";
  row.input = input;
  row.ours = [=]() mutable { Keep(static_cast<std::size_t>(CodedComponents(raster))); };
  for (const Algorithm& algorithm : kAlgorithms) {
    const int type = algorithm.type;
    row.peers.push_back({algorithm.name,
                         [=] { Keep(static_cast<std::size_t>(LabelledComponents(raster, type))); },
                         bar, medianBar});
  }
  row.agree = [=]() mutable {
    return CodedComponents(raster) == LabelledComponents(raster, cv::CCL_WU);
  };
  rows.push_back(row);
}

}  // namespace

void AddComponentRows(const Setting& setting, std::vector<Row>& rows) {
  const int small = setting.small ? 64 : 512;
  const int large = setting.small ? 100 : 2048;
  if (setting.pictures.empty()) {
    for (const int size : {small, large}) {
      Add("solid " + std::to_string(size), SolidRaster(size), size == small ? 17 : 45, 0, rows);
    }
    for (const int grain : {1, 4, 16}) {
      for (const int percent : {20, 50, 80}) {
        for (const int size : {small, large}) {
          Add("noise " + std::to_string(size) + ", grain " + std::to_string(grain) + ", " +
                  std::to_string(percent) + " %",
              NoiseRaster(size, grain, percent), NoiseBar(grain), 0, rows);
        }
      }
    }
  }
  for (const NamedRaster& picture : PictureRasters(setting)) {
    Add(picture.name, picture.raster, 1.0, 5.0, rows);
  }
}
