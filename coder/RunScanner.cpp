#include "coder/RunScanner.h"

#include <algorithm>

#include "coder/BitRow.h"

namespace {

// Writes the columns at which a row of bits changes between background and foreground, counted from
// background before its first pixel to background behind its last: the first column of a run, then
// the column behind its last, and so on. Returns the end of what it wrote.
int* FindEdges(const std::vector<std::uint64_t>& words, int* edges) {
  std::uint64_t before = 0;
  std::int64_t column = 0;
  for (const std::uint64_t word : words) {
    for (std::uint64_t bits = word ^ (word << 1 | before); bits != 0; bits &= bits - 1) {
      *edges++ = static_cast<int>(column) + __builtin_ctzll(bits);
    }
    before = word >> (kWordBits - 1);
    column += kWordBits;
  }
  if (before != 0) *edges++ = static_cast<int>(column);
  return edges;
}

// A raster of several channels or dimensions counts as one without rows.
int CodedRows(const cv::Mat& raster) {
  return raster.dims == 2 && raster.channels() == 1 && !raster.empty() ? raster.rows : 0;
}

}  // namespace

RunScanner::RunScanner(const cv::Mat& raster)
    : raster_(raster), rows_(CodedRows(raster)), row_(-1), aboveBegin_(0), rowBegin_(0) {
  if (rows_ == 0) return;
  words_.resize(WordCount(raster.cols));
  edges_.resize(static_cast<std::size_t>(raster.cols) + 1);
}

// Room for as many runs as there will be when the rows to come are like those read, and for twice
// what there is: each move to a larger block touches all of it again.
std::size_t RunScanner::ExpectedRuns(std::size_t count) const {
  const std::size_t read = static_cast<std::size_t>(row_) + 1;
  const std::size_t expected = count * static_cast<std::size_t>(rows_) / read;
  return std::max(expected + expected / 16, 2 * count);
}

bool RunScanner::NextRow(std::vector<Run>& runs) {
  if (++row_ >= rows_) return false;
  aboveBegin_ = rowBegin_;
  rowBegin_ = runs.size();
  ReadBits(raster_, row_, words_.data());
  const int* const end = FindEdges(words_, edges_.data());
  const int* edge = edges_.data();
  const std::size_t count = rowBegin_ + static_cast<std::size_t>(end - edge) / 2;
  if (count > runs.capacity()) runs.reserve(ExpectedRuns(count));
  runs.resize(count);
  for (std::size_t i = rowBegin_; edge != end; edge += 2) {
    runs[i++] = {row_, edge[0], edge[1] - 1};
  }
  return true;
}
