#include <sys/wait.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>

#include "support/Files.h"

namespace {

struct Result {
  int status;
  std::string output;
};

// Brightness grows from column to column, by a step that 8 bits could not hold.
cv::Mat DeepRamp(int width, int height) {
  cv::Mat ramp(height, width, CV_16UC1);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x)
      ramp.at<std::uint16_t>(y, x) = static_cast<std::uint16_t>(3 * x);
  }
  return ramp;
}

class Demo : public testing::Test {
 protected:
  // Writes the picture and runs the program on it, in a folder of its own.
  Result Run(const std::string& program, const std::string& name, const cv::Mat& picture) const {
    EXPECT_TRUE(cv::imwrite(folder_ / name, picture));
    const std::string line = "cd '" + folder_.Path() + "' && '" + program + "' '" + name + "' 2>&1";
    FILE* const pipe = popen(line.c_str(), "r");
    if (!pipe) return {-1, ""};
    std::string output;
    char part[256];
    while (std::fgets(part, sizeof(part), pipe)) output += part;
    const int status = pclose(pipe);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, output};
  }

  cv::Mat Written(const std::string& name) const {
    return cv::imread(folder_ / name, cv::IMREAD_UNCHANGED);
  }

  TemporaryFolder folder_;
};

bool Has(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

TEST_F(Demo, KeepsTheSizeAndDepthOfADeepPicture) {
  const cv::Mat ramp = DeepRamp(640, 480);
  const Result road = Run(MASK_ROAD, "ramp.png", ramp);
  EXPECT_EQ(road.status, 0);
  EXPECT_TRUE(Has(road.output, "ramp.png: 640 x 480, 1 channel of 16 bits\n")) << road.output;
  EXPECT_TRUE(Has(road.output, "scaled by 0.5 across and 0.5 down")) << road.output;
  EXPECT_FALSE(Has(road.output, "times as large")) << road.output;
  // The rectangle covers the columns 60 to 205: three times as much in the picture's own values.
  EXPECT_TRUE(Has(road.output, "    397.5      180      615")) << road.output;
  const cv::Mat shown = Written("mask_road.png");
  EXPECT_EQ(shown.type(), CV_16UC3);
  EXPECT_EQ(shown.size(), ramp.size());
  // Where no shape lies, the picture is as it was.
  EXPECT_EQ(shown.at<cv::Vec3w>(479, 500), cv::Vec3w::all(1500));

  EXPECT_EQ(Run(MASK_OUTLINES, "ramp.png", ramp).status, 0);
  const cv::Mat both = Written("mask_outlines.png");
  EXPECT_EQ(both.type(), CV_16UC3);
  EXPECT_EQ(both.size(), cv::Size(2 * 640, 480));
}

TEST_F(Demo, KeepsColorsAndSaysWhatItMeasures) {
  const cv::Mat picture(480, 640, CV_8UC3, cv::Scalar(200, 100, 50));
  const Result road = Run(MASK_ROAD, "color.png", picture);
  EXPECT_EQ(road.status, 0);
  EXPECT_TRUE(Has(road.output, "3 channels of 8 bits\nMeasured is the brightness of its colours."))
      << road.output;
  const cv::Mat shown = Written("mask_road.png");
  EXPECT_EQ(shown.type(), CV_8UC3);
  EXPECT_EQ(shown.size(), picture.size());
  EXPECT_EQ(shown.at<cv::Vec3b>(479, 500), cv::Vec3b(200, 100, 50));
}

TEST_F(Demo, SaysThatFloatsAreShownInEightBits) {
  cv::Mat picture(480, 640, CV_32FC1, cv::Scalar(-0.5));
  picture.at<float>(479, 639) = 0.5;
  const Result road = Run(MASK_ROAD, "float.tif", picture);
  EXPECT_EQ(road.status, 0);
  EXPECT_TRUE(Has(road.output, "1 channel of 32-bit floats\n")) << road.output;
  EXPECT_TRUE(Has(road.output, "shown in 8 bits, from its least to its greatest value"))
      << road.output;
  EXPECT_TRUE(Has(road.output, "    -0.5     -0.5     -0.5")) << road.output;
  EXPECT_EQ(Written("mask_road.png").type(), CV_8UC3);
  EXPECT_EQ(Written("mask_road.png").size(), picture.size());
}

TEST_F(Demo, NamesWhatIsLeftOutOfASmallPicture) {
  const cv::Mat picture(18, 24, CV_8UC1, cv::Scalar(90));
  const Result road = Run(MASK_ROAD, "small.png", picture);
  EXPECT_EQ(road.status, 0);
  EXPECT_TRUE(Has(road.output, "Circle is left out: it has no pixels here.\n")) << road.output;
  EXPECT_TRUE(Has(road.output, "Mask is left out: it has no pixels here.\n")) << road.output;
  EXPECT_FALSE(Has(road.output, "\nCircle  ")) << road.output;
  EXPECT_TRUE(Has(road.output, "\nPolygon  ")) << road.output;
  EXPECT_TRUE(Has(road.output, "Shown 14 times as large: a pixel is a square of 14.\n"));
  EXPECT_EQ(Written("mask_road.png").size(), cv::Size(14 * 24, 14 * 18));
}

TEST_F(Demo, NamesWhatReachesBeyondThePicture) {
  // One column: the line needs two, since it must not be upright.
  const Result outlines = Run(MASK_OUTLINES, "thin.png", cv::Mat(960, 1, CV_8UC1, cv::Scalar(0)));
  EXPECT_EQ(outlines.status, 0);
  EXPECT_TRUE(Has(outlines.output, "Line is left out: it reaches beyond the picture.\n"))
      << outlines.output;
  EXPECT_TRUE(Has(outlines.output, "Mask is left out: it is too small here to be a shape.\n"))
      << outlines.output;
  EXPECT_FALSE(Has(outlines.output, "\nLine  ")) << outlines.output;
}

TEST_F(Demo, ExplainsTheChordAndShowsThePoint) {
  const cv::Mat picture(960, 1280, CV_8UC1, cv::Scalar(0));
  const Result outlines = Run(MASK_OUTLINES, "black.png", picture);
  EXPECT_EQ(outlines.status, 0);
  EXPECT_TRUE(Has(outlines.output, "The contour of an arc ends with its start point."))
      << outlines.output;
  EXPECT_TRUE(Has(outlines.output, "A point has neither runs nor contours")) << outlines.output;
  const cv::Mat both = Written("mask_outlines.png");
  const auto at = [&](int x, int y) { return both.at<cv::Vec3b>(y, x); };
  // The point's colour at its place, in both halves.
  EXPECT_EQ(at(620, 780), cv::Vec3b(190, 70, 240));
  EXPECT_EQ(at(1280 + 620, 780), cv::Vec3b(190, 70, 240));
  // The chord from (211, 788) to (450, 790) is dashed: some of it is drawn, some is not.
  int drawn = 0;
  int left = 0;
  for (int x = 230; x < 430; ++x) {
    const bool isDrawn = at(1280 + x, 788) != cv::Vec3b() || at(1280 + x, 789) != cv::Vec3b() ||
                         at(1280 + x, 790) != cv::Vec3b();
    ++(isDrawn ? drawn : left);
    EXPECT_EQ(at(x, 789), cv::Vec3b()) << x;  // The runs have none.
  }
  EXPECT_GT(drawn, 50);
  EXPECT_GT(left, 50);
}

TEST_F(Demo, SaysThatItCannotReadAPicture) {
  WriteBytes(folder_ / "bad.png", {1, 2, 3});
  const std::string line = "cd '" + folder_.Path() + "' && '" MASK_ROAD "' bad.png >/dev/null 2>&1";
  const int status = std::system(line.c_str());
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 1);
}

}  // namespace
