#ifndef RASTER_MAT_COPY_H_
#define RASTER_MAT_COPY_H_

#include <opencv2/core.hpp>

// How a handle on a `cv::Mat` copies it. Whatever OpenCV raises on the way is swallowed, and the
// target is left empty.
//
// Every constructor gives its handle a `cv::Mat`. Some operations of images, matrices, descriptors
// and their arrays test for a missing one all the same, and their neighbours do not: this is meant.

inline void ShareOrEmpty(const cv::Mat& source, cv::Mat& target) {
  try {
    target = source;
  } catch (...) {
    target = cv::Mat();
  }
}

// The clone is complete before the target lets go of its buffer, so the two may be the same.
inline void CloneOrEmpty(const cv::Mat& source, cv::Mat& target) {
  try {
    target = source.clone();
  } catch (...) {
    target = cv::Mat();
  }
}

#endif  // RASTER_MAT_COPY_H_
