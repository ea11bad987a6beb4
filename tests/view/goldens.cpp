// Writes the pictures that the tests compare with, to be looked at before they are kept:
//
//     VemViewGoldens <folder> [sheet.png]
//
// The sheet shows them all, enlarged.

#include <cstdio>
#include <string>

#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "Scenes.h"

int main(int argc, char** argv) {
  if (argc < 2) return 2;
  constexpr int kColumns = 6, kScale = 4, kGap = 8;
  const int rows = (static_cast<int>(Scenes().size()) + kColumns - 1) / kColumns;
  const cv::Size size = Ground().size() * kScale, cell(size.width + kGap, size.height + kGap);
  cv::Mat sheet(rows * cell.height, kColumns * cell.width, CV_8UC3, cv::Scalar::all(255));
  int number = 0;
  for (const Scene& scene : Scenes()) {
    cv::Mat picture = Ground();
    scene.draw(picture);
    if (!cv::imwrite(argv[1] + ("/" + scene.name) + ".png", picture)) return 1;
    cv::Mat enlarged;
    cv::resize(picture, enlarged, size, 0, 0, cv::INTER_NEAREST);
    const cv::Point place(number % kColumns * cell.width, number / kColumns * cell.height);
    enlarged.copyTo(sheet(cv::Rect(place, size)));
    ++number;
  }
  if (argc > 2 && !cv::imwrite(argv[2], sheet)) return 1;
  std::printf("%d pictures\n", number);
  return 0;
}
