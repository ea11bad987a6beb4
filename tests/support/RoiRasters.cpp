#include "support/RoiRasters.h"

#include <gtest/gtest.h>

VemVarArray Values(const std::vector<int>& values) {
  VemVarArray array;
  for (int value : values) array.Append(VemVar(value));
  return array;
}

cv::Mat Paint(const Runs& runs, int width, int height) {
  Triple triple(runs);
  return IVemROIPara().ToMAT(triple.rows, triple.firsts, triple.lasts, width, height);
}

cv::Mat Paint(const Chains& chains, int width, int height) {
  VemContourArray contours = ContoursOf(chains);
  return IVemROIPara().ToMAT(contours, width, height);
}

Runs PlainRuns(const cv::Mat& raster) {
  Runs runs;
  for (int row = 0; row < raster.rows; ++row) {
    for (int column = 0; column < raster.cols; ++column) {
      if (raster.at<unsigned char>(row, column) == 0) continue;
      const bool goesOn = column > 0 && raster.at<unsigned char>(row, column - 1) != 0;
      if (!goesOn) runs.push_back({row, column, column});
      runs.back().LastColumn = column;
    }
  }
  return runs;
}

RunsOfRaster ReadRuns(cv::Mat raster) {
  VemVarArray rows(70);
  VemVarArray firsts("old");
  VemVarArray lasts(7.5);
  RunsOfRaster read;
  IVemROIPara().MatToMask(raster, &rows, &firsts, &lasts, &read.width, &read.height);
  read.runs = RunsOf(rows, firsts, lasts);
  return read;
}

OutlineMask ReadContours(cv::Mat raster) {
  VemContourArray contours = ContoursOf({{{1, 2}, {3, 4}}, {}, {{5, 6}}});
  OutlineMask read{true, {}, -7, -9};
  IVemROIPara().MatToMask(raster, &contours, &read.width, &read.height);
  read.contours = PointsOf(contours);
  return read;
}

cv::Mat Noise(std::mt19937& random, int width, int height, unsigned percent) {
  cv::Mat raster(height, width, CV_8UC1);
  for (int row = 0; row < height; ++row) {
    for (int column = 0; column < width; ++column) {
      raster.at<unsigned char>(row, column) = random() % 100 < percent ? 255 : 0;
    }
  }
  return raster;
}

IVemROIPara Circle() {
  IVemROIPara para;
  VemPoint center(5, 6);
  para.GenCircle(center, 3);
  return para;
}

void ExpectNone(const IVemROIPara& para) {
  EXPECT_EQ(para.Type, VemROINone);
  EXPECT_EQ(para.Width, 0);
  EXPECT_EQ(para.Height, 0);
  EXPECT_EQ(para.Params.Length(), 0);
  EXPECT_EQ(para.Rows.Length(), 0);
  EXPECT_EQ(para.FirstColumns.Length(), 0);
  EXPECT_EQ(para.LastColumns.Length(), 0);
}

void ExpectMask(const IVemROIPara& para, const Runs& runs, int width, int height) {
  EXPECT_EQ(para.Type, VemROIMask);
  EXPECT_TRUE(para.IsMask());
  EXPECT_EQ(para.Width, width);
  EXPECT_EQ(para.Height, height);
  EXPECT_EQ(para.Params.Length(), 0);
  EXPECT_EQ(RunsOf(para.Rows, para.FirstColumns, para.LastColumns), runs);
}

void ExpectMask(const VemROI& roi, const Runs& runs, int width, int height) {
  EXPECT_EQ(roi.ROIType(), VemROIMask);
  Triple out;
  int gotWidth = -1;
  int gotHeight = -1;
  EXPECT_TRUE(roi.GetMask(&out.rows, &out.firsts, &out.lasts, &gotWidth, &gotHeight));
  EXPECT_EQ(RunsOf(out.rows, out.firsts, out.lasts), runs);
  EXPECT_EQ(gotWidth, width);
  EXPECT_EQ(gotHeight, height);
}
