#ifndef PLATFORM_BEST_KERNELS_H_
#define PLATFORM_BEST_KERNELS_H_

#include <atomic>

/// The table of functions to use, of two that do the same: the faster one where this processor and
/// its system offer it, which is asked once. A type of table has one choice in a library.
template <typename Kernels>
const Kernels& BestKernels(const Kernels& faster, const Kernels& everywhere) {
  static std::atomic<const Kernels*> best{nullptr};
  const Kernels* kernels = best.load(std::memory_order_relaxed);
  if (kernels == nullptr) {  // Whoever asks at the same time gets the same answer.
    kernels = faster.isOffered() ? &faster : &everywhere;
    best.store(kernels, std::memory_order_relaxed);
  }
  return *kernels;
}

#endif  // PLATFORM_BEST_KERNELS_H_
