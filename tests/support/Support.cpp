#include "support/Support.h"

#include <algorithm>
#include <cstring>

#include <gtest/gtest.h>

void PrintTo(const VemVar& value, std::ostream* out) {
  switch (value.ValType()) {
    case VemVarLong:
      *out << "long " << value.L();
      return;
    case VemVarDouble:
      *out << "double " << value.D();
      return;
    case VemVarString:
      *out << "string \"" << value.S() << '"';
      return;
    default:
      *out << "none";
  }
}

void PrintTo(const VemVarArray& values, std::ostream* out) {
  *out << '{';
  for (int i = 0; i < values.Length(); ++i) {
    if (i > 0) *out << ", ";
    PrintTo(values[i], out);
  }
  *out << '}';
}

void PrintTo(const VemPoint& point, std::ostream* out) {
  *out << '(' << point.x << ", " << point.y << ')';
}

void PrintTo(const Vem3DPoint& point, std::ostream* out) {
  *out << '(' << point.x << ", " << point.y << ", " << point.z << ')';
}

void PrintTo(const Run& run, std::ostream* out) {
  *out << '(' << run.Row << ", " << run.FirstColumn << ", " << run.LastColumn << ')';
}

bool operator==(const Run& a, const Run& b) {
  return a.Row == b.Row && a.FirstColumn == b.FirstColumn && a.LastColumn == b.LastColumn;
}

bool Same(const VemVar& a, const VemVar& b) {
  if (a.ValType() != b.ValType()) return false;
  switch (a.ValType()) {
    case VemVarLong:
      return a.L() == b.L();
    case VemVarDouble: {
      const double x = a.D();
      const double y = b.D();
      return std::memcmp(&x, &y, sizeof(x)) == 0;
    }
    case VemVarString:
      return std::strcmp(a.S(), b.S()) == 0;
    default:
      return true;
  }
}

bool Same(const VemVarArray& a, const VemVarArray& b) {
  if (a.Length() != b.Length()) return false;
  for (int i = 0; i < a.Length(); ++i) {
    if (!Same(a[i], b[i])) return false;
  }
  return true;
}

std::vector<Run> RunsOf(const VemVarArray& rows, const VemVarArray& firstColumns,
                        const VemVarArray& lastColumns) {
  EXPECT_EQ(rows.Length(), firstColumns.Length());
  EXPECT_EQ(rows.Length(), lastColumns.Length());
  std::vector<Run> runs;
  for (int i = 0; i < rows.Length(); ++i) {
    EXPECT_EQ(rows[i].ValType(), VemVarLong);
    EXPECT_EQ(firstColumns[i].ValType(), VemVarLong);
    EXPECT_EQ(lastColumns[i].ValType(), VemVarLong);
    runs.push_back({rows[i].I(), firstColumns[i].I(), lastColumns[i].I()});
  }
  return runs;
}

cv::Mat Raster(const std::string& picture) {
  const auto width = picture.find('\n');
  const auto height = std::count(picture.begin(), picture.end(), '\n');
  if (height == 0 || width == 0) return cv::Mat();
  cv::Mat raster(static_cast<int>(height), static_cast<int>(width), CV_8UC1);
  for (std::size_t i = 0; i < picture.size(); ++i) {
    const int column = static_cast<int>(i % (width + 1));
    if (column == raster.cols) continue;
    raster.at<unsigned char>(static_cast<int>(i / (width + 1)), column) =
        picture[i] == '#' ? 255 : 0;
  }
  return raster;
}

std::string Picture(const cv::Mat& raster) {
  std::string picture;
  for (int row = 0; row < raster.rows; ++row) {
    for (int column = 0; column < raster.cols; ++column) {
      picture += raster.at<unsigned char>(row, column) != 0 ? '#' : '.';
    }
    picture += '\n';
  }
  return picture;
}

std::string Picture(const std::vector<Run>& runs, int width, int height) {
  cv::Mat raster = cv::Mat::zeros(height, width, CV_8UC1);
  for (const Run& run : runs) {
    if (run.Row < 0 || run.Row >= height) continue;
    const int last = std::min(run.LastColumn, width - 1);
    for (int column = std::max(run.FirstColumn, 0); column <= last; ++column) {
      raster.at<unsigned char>(run.Row, column) = 255;
    }
  }
  return Picture(raster);
}
