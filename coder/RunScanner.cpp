#include "coder/RunScanner.h"

#include "coder/RunBlock.h"

namespace {

// A raster of several channels or dimensions counts as one without rows.
int CodedRows(const cv::Mat& raster) {
  return raster.dims == 2 && raster.channels() == 1 && !raster.empty() ? raster.rows : 0;
}

PixelKind KindOf(int depth) {
  switch (depth) {
    case CV_8U:
    case CV_8S:
      return kByte;
    case CV_16U:
    case CV_16S:
      return kShort;
    case CV_32S:
      return kInt;
    case CV_32F:
      return kFloat;
    case CV_64F:
      return kDouble;
    default:
      return kHalf;
  }
}

}  // namespace

RunScanner::RunScanner(const cv::Mat& raster)
    : raster_(raster),
      rows_(CodedRows(raster)),
      rowBytes_(static_cast<std::size_t>(raster.cols) * raster.elemSize1()),
      kernels_(BestRowKernels()),
      findEdges_(kernels_.findEdges[KindOf(raster.depth())]) {}

void ListRuns(const cv::Mat& raster, std::vector<Run>& runs) {
  RunScanner scanner(raster);
  if (scanner.Rows() == 0) return;
  RunBlock block(scanner.Kernels(), scanner.Rows(), runs);
  const std::size_t room = scanner.EdgeRoom();
  std::vector<int> rows(2 * room);
  int* edges = rows.data();
  int* end = edges;
  int* other = edges + room;
  for (int row = 0; row < scanner.Rows(); ++row) {
    int* const found = scanner.FindEdges(row, other, edges, end);
    if (found != nullptr) {
      std::swap(edges, other);
      end = found;
    }
    block.Add(edges, static_cast<std::size_t>(end - edges) / 2, row);
  }
  block.Finish();
}
