#ifndef TESTS_SUPPORT_PIXEL_COUNTER_H_
#define TESTS_SUPPORT_PIXEL_COUNTER_H_

#include <cstddef>

#include <opencv2/core.hpp>

/// Counts the buffers of pixels that OpenCV asks for as long as it lives.
class PixelCounter : public cv::MatAllocator {
 public:
  PixelCounter() : replaced_(cv::Mat::getDefaultAllocator()) { cv::Mat::setDefaultAllocator(this); }
  ~PixelCounter() override { cv::Mat::setDefaultAllocator(replaced_); }

  cv::UMatData* allocate(int dims, const int* sizes, int type, void* data, std::size_t* step,
                         cv::AccessFlag flags, cv::UMatUsageFlags usage) const override {
    ++count_;
    return cv::Mat::getStdAllocator()->allocate(dims, sizes, type, data, step, flags, usage);
  }
  bool allocate(cv::UMatData*, cv::AccessFlag, cv::UMatUsageFlags) const override { return false; }
  void deallocate(cv::UMatData* data) const override {
    cv::Mat::getStdAllocator()->deallocate(data);
  }

  /// The buffers asked for since the last call.
  int Take() {
    const int count = count_;
    count_ = 0;
    return count;
  }

 private:
  mutable int count_ = 0;
  cv::MatAllocator* replaced_;
};

#endif  // TESTS_SUPPORT_PIXEL_COUNTER_H_
