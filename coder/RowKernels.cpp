#include "coder/RowKernels.h"

#include <atomic>

const RowKernels& BestRowKernels() {
  static std::atomic<const RowKernels*> best{nullptr};
  const RowKernels* kernels = best.load(std::memory_order_relaxed);
  if (kernels == nullptr) {  // Whoever asks at the same time gets the same answer.
    kernels = kAvx2Kernels.isOffered() ? &kAvx2Kernels : &kSse2Kernels;
    best.store(kernels, std::memory_order_relaxed);
  }
  return *kernels;
}
