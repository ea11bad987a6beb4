#include <gtest/gtest.h>
#include <opencv2/core/utility.hpp>

// Some tests fork to see a fault happen, which is only safe without OpenCV's worker threads.
int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  cv::setNumThreads(1);
  return RUN_ALL_TESTS();
}
