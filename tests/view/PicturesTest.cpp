#include <algorithm>
#include <cstring>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

#include "Scenes.h"
#include "VemContourArray.h"
#include "VemOverlayPath.h"
#include "vem/view.h"

namespace {

using vem::channel_order;
using vem::draw;
using vem::draw_style;

// A solid square, as no drawing has it but a wide line: 20 by 20 pixels around the middle.
const draw_style kSolid(10, 100, 200, 40);

void Solid(cv::Mat& picture, const draw_style& style = kSolid,
           channel_order order = channel_order::bgr) {
  EXPECT_TRUE(draw(picture, PointsOf({{16, 16}}), style, order));
}

cv::Scalar Middle(const cv::Mat& picture) { return cv::mean(picture(cv::Rect(16, 16, 1, 1))); }

struct TypeCase {
  const char* name;
  int type;
  channel_order order;
  cv::Scalar expected;
};

// The grey of 10, 100, 200 is 0.114 * 10 + 0.587 * 100 + 0.299 * 200 = 119.64 of 255.
const TypeCase kTypes[] = {
    {"8U grey", CV_8UC1, channel_order::bgr, {120}},
    {"8U grey, other order", CV_8UC1, channel_order::rgb, {120}},
    {"8U", CV_8UC3, channel_order::bgr, {10, 100, 200}},
    {"8U, red first", CV_8UC3, channel_order::rgb, {200, 100, 10}},
    {"8U with opacity", CV_8UC4, channel_order::bgr, {10, 100, 200, 255}},
    {"8U with opacity, red first", CV_8UC4, channel_order::rgb, {200, 100, 10, 255}},
    {"16U grey", CV_16UC1, channel_order::bgr, {30747}},
    {"16U", CV_16UC3, channel_order::bgr, {2570, 25700, 51400}},
    {"16U with opacity", CV_16UC4, channel_order::rgb, {51400, 25700, 2570, 65535}},
    {"32F", CV_32FC3, channel_order::bgr, {10 / 255.0, 100 / 255.0, 200 / 255.0}},
    {"32F with opacity", CV_32FC4, channel_order::bgr, {10 / 255.0, 100 / 255.0, 200 / 255.0, 1}},
    {"64F", CV_64FC3, channel_order::rgb, {200 / 255.0, 100 / 255.0, 10 / 255.0}},
    {"64F grey", CV_64FC1, channel_order::bgr, {30747 / 65535.0}},
};

}  // namespace

TEST(Pictures, TellColoursInTheirType) {
  for (const TypeCase& c : kTypes) {
    SCOPED_TRACE(c.name);
    cv::Mat picture(33, 33, c.type, cv::Scalar::all(0));
    Solid(picture, kSolid, c.order);
    EXPECT_EQ(picture.type(), c.type);
    const cv::Scalar middle = Middle(picture);
    for (int i = 0; i < 4; ++i) EXPECT_NEAR(middle[i], c.expected[i], 1e-6) << i;
  }
}

TEST(Pictures, OfOtherTypesAreRefused) {
  for (const int depth : {CV_8S, CV_16S, CV_32S, 7}) {
    for (const int channels : {1, 2, 3, 4, 5, 32}) {
      cv::Mat picture = cv::Mat::zeros(33, 33, CV_MAKETYPE(depth, channels));
      const cv::Mat before = picture.clone();
      EXPECT_FALSE(draw(picture, Circle(16, 16, 9)));
      const std::size_t row = static_cast<std::size_t>(picture.cols) * picture.elemSize();
      for (int y = 0; y < 33; ++y) ASSERT_EQ(std::memcmp(picture.ptr(y), before.ptr(y), row), 0);
    }
  }
  for (const int type : {CV_8UC2, CV_16UC2, CV_32FC(5), CV_64FC(2), CV_8UC(512)}) {
    cv::Mat picture = cv::Mat::zeros(33, 33, type);
    EXPECT_FALSE(draw(picture, Circle(16, 16, 9)));
  }
}

TEST(Pictures, WithoutPixelsAreRefusedByEveryForm) {
  const int sizes[] = {4, 4, 4};
  cv::Mat pictures[] = {cv::Mat(), cv::Mat(0, 5, CV_8UC3), cv::Mat(5, 0, CV_8UC1),
                        cv::Mat(3, sizes, CV_8UC1, cv::Scalar(0))};
  for (cv::Mat& picture : pictures) {
    const int rows = picture.rows, cols = picture.cols;
    EXPECT_FALSE(draw(picture, VemOverlayPath()));
    EXPECT_FALSE(draw(picture, VemOverlay()));
    EXPECT_FALSE(draw(picture, Circle(1, 1, 1)));
    EXPECT_FALSE(draw(picture, VemRegion()));
    EXPECT_FALSE(draw(picture, VemContour()));
    EXPECT_FALSE(draw(picture, VemContourArray()));
    EXPECT_FALSE(draw(picture, VemPointArray()));
    EXPECT_EQ(picture.rows, rows);
    EXPECT_EQ(picture.cols, cols);
  }
}

TEST(Pictures, StayAsTheyAreWhereNothingIsToBeDrawn) {
  const cv::Mat before = Ground();
  cv::Mat picture = Ground();
  EXPECT_TRUE(draw(picture, VemOverlayPath()));
  EXPECT_TRUE(draw(picture, VemOverlay()));
  EXPECT_TRUE(draw(picture, VemROI()));
  EXPECT_TRUE(draw(picture, VemRegion(), draw_style(0, 0, 0, 3, true)));
  EXPECT_TRUE(draw(picture, VemContour(), draw_style(0, 0, 0, 3, true)));
  EXPECT_TRUE(draw(picture, VemContourArray(), draw_style(0, 0, 0, 3, true)));
  EXPECT_TRUE(draw(picture, VemPointArray()));
  EXPECT_TRUE(draw(picture, Circle(30, 30, 20), draw_style(0, 0, 0, 0, false)));
  EXPECT_TRUE(draw(picture, Circle(30, 30, 20), draw_style(0, 0, 0, -5, false)));
  EXPECT_EQ(cv::norm(picture, before, cv::NORM_INF), 0);
}

TEST(Pictures, KeepTheirMemory) {
  cv::Mat picture = Ground();
  const cv::Mat shared = picture;
  Solid(picture);
  EXPECT_EQ(picture.data, shared.data);
  EXPECT_EQ(shared.at<cv::Vec3b>(16, 16), cv::Vec3b(10, 100, 200));
}

// A part of a larger picture is drawn on as a picture of its own, and nothing around it changes.
TEST(Pictures, MayBePartsOfLargerOnes) {
  for (const Scene& scene : Scenes()) {
    SCOPED_TRACE(scene.name);
    cv::Mat alone = Ground();
    scene.draw(alone);
    cv::Mat large(100, 120, CV_8UC3, cv::Scalar(1, 2, 3));
    const cv::Rect place(17, 11, alone.cols, alone.rows);
    cv::Mat part = large(place);
    Ground().copyTo(part);
    scene.draw(part);
    EXPECT_FALSE(part.isContinuous());
    EXPECT_EQ(cv::norm(part, alone, cv::NORM_INF), 0);
    large(place).setTo(cv::Scalar(1, 2, 3));
    cv::Mat rest;
    cv::absdiff(large, cv::Mat(large.size(), large.type(), cv::Scalar(1, 2, 3)), rest);
    EXPECT_EQ(cv::norm(rest, cv::NORM_INF), 0);
  }
}

// Whatever the type, a drawing is the same but for its steps.
TEST(Pictures, OfAllDepthsLookTheSame) {
  for (const Scene& scene : Scenes()) {
    SCOPED_TRACE(scene.name);
    cv::Mat bytes = Ground();
    scene.draw(bytes);
    for (const int depth : {CV_16U, CV_32F, CV_64F}) {
      const double full = depth == CV_16U ? 65535 : 1;
      cv::Mat picture, back;
      Ground().convertTo(picture, depth, full / 255);
      scene.draw(picture);
      picture.convertTo(back, CV_8U, 255 / full);
      EXPECT_LE(cv::norm(back, bytes, cv::NORM_INF), 1) << depth;
    }
  }
}

TEST(Pictures, ChangeByAPartOfTheColourWhereItIsTransparent) {
  cv::Mat picture(40, 40, CV_8UC3, cv::Scalar(100, 100, 100));
  draw(picture, Rect1(5, 5, 30, 30), draw_style(0, 200, 255, 0, true));
  // 115 parts of 255.
  EXPECT_EQ(picture.at<cv::Vec3b>(16, 16), cv::Vec3b(55, 145, 170));
  EXPECT_EQ(picture.at<cv::Vec3b>(2, 16), cv::Vec3b(100, 100, 100));
}

TEST(Pictures, WithNumbersThatAreNoneGetThemReplaced) {
  cv::Mat picture(33, 33, CV_32FC3, cv::Scalar::all(kNaN));
  Solid(picture);
  EXPECT_NEAR(picture.at<cv::Vec3f>(16, 16)[1], 100 / 255.0, 1e-6);
}

TEST(Colours, BeyondTheirRangeCountAsTheNearest) {
  cv::Mat picture = Ground();
  Solid(picture, draw_style(-1000000, 1000000, 255, 40));
  EXPECT_EQ(picture.at<cv::Vec3b>(16, 16), cv::Vec3b(0, 255, 255));
}
