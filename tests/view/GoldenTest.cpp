#include <set>
#include <string>

#include <gtest/gtest.h>
#include <opencv2/imgcodecs.hpp>

#include "Scenes.h"

namespace {

// Where two pictures differ, as a drawing of the rows that do.
std::string Difference(const cv::Mat& a, const cv::Mat& b) {
  std::string drawing;
  for (int y = 0; y < a.rows; ++y) {
    std::string row;
    for (int x = 0; x < a.cols; ++x) {
      row += a.at<cv::Vec3b>(y, x) == b.at<cv::Vec3b>(y, x) ? '.' : '#';
    }
    if (row.find('#') != std::string::npos)
      drawing += "row " + std::to_string(y) + " " + row + "\n";
  }
  return drawing;
}

cv::Mat Drawn(const Scene& scene) {
  cv::Mat picture = Ground();
  scene.draw(picture);
  return picture;
}

cv::Mat Golden(const Scene& scene) {
  return cv::imread(GOLDEN_FOLDER "/" + scene.name + ".png", cv::IMREAD_COLOR);
}

}  // namespace

TEST(Golden, EveryPictureIsTheOneKept) {
  for (const Scene& scene : Scenes()) {
    if (HasText(scene)) continue;
    SCOPED_TRACE(scene.name);
    const cv::Mat kept = Golden(scene), drawn = Drawn(scene);
    ASSERT_EQ(kept.size(), drawn.size());
    EXPECT_EQ(Difference(kept, drawn), "");
  }
}

// OpenCV writes the letters: its versions may differ in a few pixels, but not in where ink stands.
TEST(Golden, TextsAreNearlyTheOnesKept) {
  for (const Scene& scene : Scenes()) {
    if (!HasText(scene)) continue;
    SCOPED_TRACE(scene.name);
    const cv::Mat kept = Golden(scene), drawn = Drawn(scene), ground = Ground();
    ASSERT_EQ(kept.size(), drawn.size());
    const double ink = cv::norm(kept, ground, cv::NORM_L1);
    EXPECT_LT(cv::norm(kept, drawn, cv::NORM_L1), ink / 20);
    EXPECT_GT(ink, 10000);
  }
}

TEST(Golden, EveryPictureShowsSomething) {
  std::set<std::string> names;
  for (const Scene& scene : Scenes()) {
    EXPECT_NE(Difference(Ground(), Drawn(scene)), "") << scene.name;
    EXPECT_TRUE(names.insert(scene.name).second) << scene.name;
  }
}
