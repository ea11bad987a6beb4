#ifndef TESTS_SUPPORT_PROBE_ALLOCATOR_H_
#define TESTS_SUPPORT_PROBE_ALLOCATOR_H_

#include <cstddef>
#include <new>

#include <opencv2/core.hpp>

/// Stands in for OpenCV's default allocator as long as it lives. It counts what it allocates, and
/// fails on demand.
class ProbeAllocator : public cv::MatAllocator {
 public:
  enum Failure { kNone, kOpenCV, kMemory, kNumber };

  explicit ProbeAllocator(Failure failure = kNone)
      : failure_(failure), replaced_(cv::Mat::getDefaultAllocator()) {
    cv::Mat::setDefaultAllocator(this);
  }
  ~ProbeAllocator() override { cv::Mat::setDefaultAllocator(replaced_); }

  cv::UMatData* allocate(int dims, const int* sizes, int type, void* data, std::size_t* step,
                         cv::AccessFlag flags, cv::UMatUsageFlags usage) const override {
    ++allocations;
    if (failure_ == kOpenCV) CV_Error(cv::Error::StsNoMem, "out of memory on demand");
    if (failure_ == kMemory) throw std::bad_alloc();
    if (failure_ == kNumber) throw 1;
    return cv::Mat::getStdAllocator()->allocate(dims, sizes, type, data, step, flags, usage);
  }
  bool allocate(cv::UMatData*, cv::AccessFlag, cv::UMatUsageFlags) const override { return false; }
  void deallocate(cv::UMatData* data) const override {
    cv::Mat::getStdAllocator()->deallocate(data);
  }

  mutable int allocations = 0;

 private:
  Failure failure_;
  cv::MatAllocator* replaced_;
};

#endif  // TESTS_SUPPORT_PROBE_ALLOCATOR_H_
