#include "values/WordKernels.h"

#include <atomic>

const WordKernels& BestWordKernels() {
  static std::atomic<const WordKernels*> best{nullptr};
  const WordKernels* kernels = best.load(std::memory_order_relaxed);
  if (kernels == nullptr) {  // Whoever asks at the same time gets the same answer.
    kernels = kAvx2Words.isOffered() ? &kAvx2Words : &kSse2Words;
    best.store(kernels, std::memory_order_relaxed);
  }
  return *kernels;
}
