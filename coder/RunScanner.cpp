#include "coder/RunScanner.h"

#include <memory>

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

// The scratch of a raster's runs: what two rows need at most, and enough for many rows with few.
std::size_t BufferRoom(int columns) { return 2 * EdgeRoom(columns) + 2048; }

}  // namespace

RunScanner::RunScanner(const cv::Mat& raster)
    : rows_(CodedRows(raster)),
      kernels_(BestRowKernels()),
      findEdges_(kernels_.findEdges[KindOf(raster.depth())]),
      next_{raster.data, rows_ > 0 ? raster.step[0] : 0,
            static_cast<std::size_t>(raster.cols) * raster.elemSize1(), raster.cols, rows_} {}

void ListRuns(const cv::Mat& raster, std::vector<Run>& runs) {
  RunScanner scanner(raster);
  if (scanner.Rows() == 0) return;
  const std::size_t room = BufferRoom(scanner.Columns());
  const std::unique_ptr<Edge[]> edges(new Edge[room]);
  EdgeRows found;
  found.begin = edges.get();
  found.end = found.begin + room;
  RunBlock block(scanner.Kernels(), scanner.Rows(), runs);
  int row = 0;
  while (scanner.FindEdges(found)) {
    for (int i = 0; i < found.count; ++i) {
      const Edge* const begin = found.Row(i);
      block.Add(begin, static_cast<std::size_t>(found.ends[i] - begin) / 2, row++);
    }
    scanner.ForgetAbove();
  }
  block.Finish();
}
