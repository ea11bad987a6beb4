#include "vem/opencv.h"

#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/imgproc.hpp>

namespace {

std::string Picture(const cv::Mat& mask) {
  std::string picture;
  for (int row = 0; row < mask.rows; ++row) {
    for (int column = 0; column < mask.cols; ++column) {
      const int pixel = mask.at<unsigned char>(row, column);
      picture += pixel == 255 ? '#' : pixel == 0 ? '.' : '?';
    }
    picture += '\n';
  }
  return picture;
}

VemRegion RegionOf(const std::vector<vem::pixel_run>& runs, int width, int height) {
  VemVarArray rows;
  VemVarArray firsts;
  VemVarArray lasts;
  for (const vem::pixel_run& run : runs) {
    rows.Append(run.row);
    firsts.Append(run.first_column);
    lasts.Append(run.last_column);
  }
  VemRegion region;
  region.CreateRegion(width, height, rows, firsts, lasts);
  return region;
}

TEST(VemOpenCvPoint, PointsPassWithoutRounding) {
  EXPECT_EQ(vem::from_cv(cv::Point(3, -4)).y, -4);
  EXPECT_EQ(vem::from_cv(cv::Point2f(0.1f, 2)).x, static_cast<double>(0.1f));
  EXPECT_EQ(vem::from_cv(cv::Point2d(0.1, 2)).x, 0.1);
  EXPECT_EQ(vem::to_cv(VemPoint(0.1, 2)), cv::Point2d(0.1, 2));
  EXPECT_EQ(vem::to_point2f(VemPoint(16777217, 2)), cv::Point2f(16777216, 2));
}

TEST(VemOpenCvPoint, PixelsAreRoundedAsOpenCvRounds) {
  for (double x = -4; x <= 4; x += 0.125) {
    const VemPoint point(x, -x);
    EXPECT_EQ(vem::to_pixel(point), cv::Point(cv::Point2d(x, -x))) << x;
  }
  EXPECT_EQ(vem::to_pixel(VemPoint(2147483647.4, -2147483648.5)),
            cv::Point(2147483647, -2147483647 - 1));
  EXPECT_THROW(vem::to_pixel(VemPoint(2147483647.5, 0)), std::invalid_argument);
  EXPECT_THROW(vem::to_pixel(VemPoint(0, std::nan(""))), std::invalid_argument);
  EXPECT_THROW(vem::to_pixel(VemPoint(-std::numeric_limits<double>::infinity(), 0)),
               std::invalid_argument);
}

TEST(VemOpenCvRect, RectanglesHoldTheSamePixels) {
  for (const cv::Rect& rect : {cv::Rect(1, 2, 3, 4), cv::Rect(0, 0, 2, 2), cv::Rect(5, 0, 2, 9)}) {
    const VemROI roi = vem::from_cv(rect);
    cv::Mat expected = cv::Mat::zeros(12, 12, CV_8UC1);
    expected(rect).setTo(255);
    EXPECT_EQ(Picture(vem::to_mask(roi, 12, 12)), Picture(expected));
    EXPECT_EQ(vem::to_rect(roi), rect);
  }
  EXPECT_EQ(vem::to_rect(vem::from_cv(cv::Rect(-7, -9, 3, 4))), cv::Rect(-7, -9, 3, 4));
  EXPECT_THROW(vem::from_cv(cv::Rect(0, 0, 1, 5)), std::invalid_argument);
  EXPECT_THROW(vem::from_cv(cv::Rect(0, 0, 5, 0)), std::invalid_argument);
}

TEST(VemOpenCvRect, CornersLoseTheirFractions) {
  VemPoint p1(1.9, 2.9);
  VemPoint p2(3.1, 4.9);
  VemROI roi;
  roi.GenRect1(p1, p2);
  EXPECT_EQ(vem::to_rect(roi), cv::Rect(1, 2, 3, 3));
  EXPECT_EQ(cv::countNonZero(vem::to_mask(roi)), 9);
  VemPoint far(1e10, 5);
  roi.GenRect1(p1, far);
  EXPECT_THROW(vem::to_rect(roi), std::invalid_argument);
  VemPoint low(-2e9, 0);
  VemPoint high(2e9, 5);
  roi.GenRect1(low, high);
  EXPECT_THROW(vem::to_rect(roi), std::invalid_argument);
  roi.GenCircle(p1, 3);
  EXPECT_THROW(vem::to_rect(roi), std::invalid_argument);
}

TEST(VemOpenCvRect, BoxesEndBehindTheirPixels) {
  EXPECT_EQ(vem::to_cv(vem::pixel_box{1, 2, 3, 5}), cv::Rect(1, 2, 3, 4));
  EXPECT_EQ(vem::to_cv(vem::pixel_set().bounding_box()), cv::Rect(0, 0, 0, 0));
  EXPECT_THROW(vem::to_cv(vem::pixel_box{-2, 0, 2147483647, 0}), std::invalid_argument);
}

TEST(VemOpenCvRotatedRect, AnglesTurnTheSameWayAsSeen) {
  for (float angle : {-170.f, -90.f, -30.f, 0.f, 10.f, 45.f, 90.f, 135.f, 200.f}) {
    SCOPED_TRACE(angle);
    const cv::RotatedRect rect(cv::Point2f(100, 90), cv::Size2f(80, 30), angle);
    const VemROI roi = vem::from_cv(rect);
    const cv::Mat mask = vem::to_mask(roi, 200, 180);

    cv::Point2f corners[4];
    rect.points(corners);
    std::vector<cv::Point> polygon;
    for (const cv::Point2f& corner : corners) polygon.push_back(cv::Point(corner));
    cv::Mat expected = cv::Mat::zeros(180, 200, CV_8UC1);
    cv::fillConvexPoly(expected, polygon, cv::Scalar(255));
    // The two round their corners in ways of their own: along the border pixels may differ.
    EXPECT_GT(cv::countNonZero(mask & expected), 2200);
    EXPECT_LT(cv::countNonZero(mask ^ expected), 300);

    const cv::RotatedRect again = vem::to_rotated_rect(roi);
    EXPECT_EQ(again.center, rect.center);
    EXPECT_EQ(again.size, rect.size);
    EXPECT_EQ(again.angle, rect.angle);
  }
}

TEST(VemOpenCvRotatedRect, WhatIsNoneRaises) {
  EXPECT_THROW(vem::from_cv(cv::RotatedRect(cv::Point2f(1, 2), cv::Size2f(0, 3), 0)),
               std::invalid_argument);
  EXPECT_THROW(vem::to_rotated_rect(vem::from_cv(cv::Rect(0, 0, 5, 5))), std::invalid_argument);
}

TEST(VemOpenCvMat, ImagesShareThePixelsOfAPart) {
  cv::Mat whole(9, 11, CV_8UC3, cv::Scalar(1, 2, 3));
  cv::Mat part = whole(cv::Rect(2, 3, 5, 4));
  VemImage image = vem::share_image(part);
  EXPECT_EQ(image.Width(), 5);
  EXPECT_EQ(image.Height(), 4);
  EXPECT_EQ(image.Step(), 33);
  EXPECT_EQ(image.Channels(), 3);
  EXPECT_EQ(image.ImageData(), part.data);
  image.ImageData()[1] = 77;
  EXPECT_EQ(whole.at<cv::Vec3b>(3, 2)[1], 77);

  const cv::Mat back = vem::share_mat(image);
  EXPECT_EQ(back.data, part.data);
  EXPECT_EQ(back.step[0], 33u);

  // The pixels outlive the matrix that they came from.
  whole.release();
  part.release();
  EXPECT_EQ(image.ImageData()[1], 77);
}

TEST(VemOpenCvMat, CopiesAreTheirOwn) {
  cv::Mat whole(9, 11, CV_16UC1, cv::Scalar(7));
  VemImage image = vem::copy_image(whole(cv::Rect(2, 3, 5, 4)));
  EXPECT_EQ(image.Step(), 10);
  whole.setTo(8);
  EXPECT_EQ(image.Mat().at<unsigned short>(3, 4), 7);
}

TEST(VemOpenCvMat, WhatIsNoImageRaises) {
  const int sizes[] = {2, 2, 2};
  EXPECT_THROW(vem::share_image(cv::Mat(3, sizes, CV_8U)), std::invalid_argument);
  EXPECT_EQ(vem::share_image(cv::Mat()).Width(), 0);
  EXPECT_EQ(vem::share_image(cv::Mat(0, 7, CV_8UC3)).Width(), 0);
  EXPECT_EQ(vem::share_image(cv::Mat(0, 7, CV_8UC3)).Channels(), 1);
}

TEST(VemOpenCvMat, MatricesKeepPackedRows) {
  cv::Mat whole(4, 5, CV_64F, cv::Scalar(1));
  VemMatrix shared = vem::share_matrix(whole);
  EXPECT_EQ(shared.MatrixData(), whole.data);
  EXPECT_EQ(vem::share_mat(shared).data, whole.data);
  EXPECT_THROW(vem::share_matrix(whole(cv::Rect(0, 0, 2, 2))), std::invalid_argument);
  EXPECT_THROW(vem::share_matrix(cv::Mat(2, 2, CV_64FC2)), std::invalid_argument);
  VemMatrix copied = vem::copy_matrix(whole(cv::Rect(0, 0, 2, 2)));
  whole.setTo(2);
  VemVar value;
  copied.Select(1, 1, &value);
  EXPECT_EQ(value.D(), 1);
  EXPECT_EQ(copied.Cols(), 2);
  EXPECT_THROW(vem::copy_matrix(cv::Mat(2, 2, CV_8UC2)), std::invalid_argument);
  EXPECT_EQ(vem::copy_matrix(cv::Mat(0, 3, CV_32S)).Cols(), 0);
}

TEST(VemOpenCvContour, ContoursPassBothWays) {
  const std::vector<std::vector<cv::Point>> contours = {
      {cv::Point(1, 2), cv::Point(-3, 4)}, {}, {cv::Point(2147483647, -5)}};
  const VemContourArray array = vem::contours_from_cv(contours);
  ASSERT_EQ(array.Length(), 3);
  EXPECT_EQ(array[0].Length(), 2);
  EXPECT_EQ(vem::to_pixels(array), contours);

  const std::vector<cv::Point2d> points = {cv::Point2d(0.1, 0.5), cv::Point2d(1.5, 2.5)};
  const VemContour contour = vem::contour_from_cv(points);
  EXPECT_EQ(vem::to_cv(contour), points);
  EXPECT_EQ(vem::to_pixels(contour), (std::vector<cv::Point>{cv::Point(0, 0), cv::Point(2, 2)}));
  EXPECT_EQ(vem::to_cv(vem::contours_from_cv(std::vector<std::vector<cv::Point2d>>{points}))[0],
            points);
}

TEST(VemOpenCvContour, OutlinesOfOpenCvMakeTheMaskAgain) {
  cv::Mat mask = cv::Mat::zeros(40, 50, CV_8UC1);
  cv::circle(mask, cv::Point(20, 20), 15, cv::Scalar(255), cv::FILLED);
  std::vector<std::vector<cv::Point>> contours;
  cv::findContours(mask.clone(), contours, cv::RETR_EXTERNAL, cv::CHAIN_APPROX_SIMPLE);
  VemContourArray array = vem::contours_from_cv(contours);
  VemROI roi;
  roi.GenMask(array, 50, 40);
  EXPECT_EQ(Picture(vem::to_mask(roi)), Picture(mask));
}

TEST(VemOpenCvMask, RunsAreCutByTheCanvas) {
  const VemRegion region = RegionOf(
      {{0, -5, 1}, {1, 3, 99}, {-1, 0, 3}, {3, 0, 3}, {2, 2, 1}, {1, 0, 0}, {1, 0, 0}}, 5, 3);
  EXPECT_EQ(Picture(vem::to_mask(region)), "##...\n#..##\n.....\n");
  EXPECT_EQ(Picture(vem::to_mask(region, 2, 4)), "##\n#.\n..\n##\n");
  EXPECT_EQ(Picture(vem::to_mask(vem::pixel_set(region), 5, 3)), "##...\n#..##\n.....\n");
  EXPECT_TRUE(vem::to_mask(VemRegion()).empty());
  const VemRegion extremes = RegionOf({{1, -2147483647 - 1, 2147483647}, {2147483647, 0, 1}}, 3, 2);
  EXPECT_EQ(Picture(vem::to_mask(extremes)), "...\n###\n");
}

TEST(VemOpenCvMask, CanvasesOfNegativeSizeRaise) {
  EXPECT_THROW(vem::to_mask(RegionOf({{0, 0, 1}}, -3, 4)), cv::Exception);
}

TEST(VemOpenCvMask, ShapesAreThoseOfGetMask) {
  VemPoint center(10, 9);
  VemROI roi;
  roi.GenTorus(center, 3, 7, 20, 200);
  VemVarArray rows;
  VemVarArray firsts;
  VemVarArray lasts;
  int width = 0;
  int height = 0;
  roi.GetMask(&rows, &firsts, &lasts, &width, &height);
  const cv::Mat expected = IVemROIPara().ToMAT(rows, firsts, lasts, width, height);
  EXPECT_EQ(Picture(vem::to_mask(roi)), Picture(expected));
  EXPECT_GT(cv::countNonZero(expected), 0);
}

TEST(VemOpenCvMask, WhatHasNoPixelsGivesNone) {
  VemPoint point(3, 4);
  VemROI roi;
  EXPECT_TRUE(vem::to_mask(roi).empty());
  roi.GenPoint(point);
  EXPECT_TRUE(vem::to_mask(roi).empty());
  EXPECT_EQ(cv::countNonZero(vem::to_mask(roi, 9, 9)), 0);
}

TEST(VemOpenCvMask, VerticalLinesRaise) {
  VemPoint p1(3.1, 4);
  VemPoint p2(3.9, 40);
  VemROI roi;
  roi.GenLine(p1, p2);
  EXPECT_THROW(vem::to_mask(roi), std::invalid_argument);
  VemPoint top(0, 0);
  VemPoint bottom(-1, -2147483648.0);
  roi.GenLine(top, bottom);
  EXPECT_THROW(vem::to_mask(roi, 5, 5), std::invalid_argument);
  // Left of the origin GetMask gives false, and divides by nothing.
  VemPoint above(-5, -9);
  VemPoint below(-5, -1);
  roi.GenLine(above, below);
  EXPECT_TRUE(vem::to_mask(roi).empty());
  EXPECT_EQ(cv::countNonZero(vem::to_mask(roi, 5, 5)), 0);
  VemPoint p3(8, 9);
  VemPoint p4(10, 15);
  roi.GenLine(p3, p4);
  EXPECT_GT(cv::countNonZero(vem::to_mask(roi, 20, 20)), 0);
}

}  // namespace
