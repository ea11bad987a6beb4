#ifndef PLATFORM_AVX2_H_
#define PLATFORM_AVX2_H_

#include <cpuid.h>

/// Whether the processor has AVX2 and the instructions for bits that come with it, and the system
/// saves the wide registers. Asked of the processor itself, since the compiler's own record of it
/// is set up while the library is loaded.
inline bool OffersAvx2() {
  unsigned a, b, c, d;
  constexpr unsigned kPopcnt = 1u << 23, kOsxsave = 1u << 27, kAvx = 1u << 28;
  constexpr unsigned kNeeded = kPopcnt | kOsxsave | kAvx;
  if (__get_cpuid(1, &a, &b, &c, &d) == 0 || (c & kNeeded) != kNeeded) return false;
  unsigned low, high;
  asm("xgetbv" : "=a"(low), "=d"(high) : "c"(0));
  if ((low & 6) != 6) return false;
  constexpr unsigned kBmi = 1u << 3, kAvx2 = 1u << 5;
  return __get_cpuid_count(7, 0, &a, &b, &c, &d) != 0 && (b & (kBmi | kAvx2)) == (kBmi | kAvx2);
}

#endif  // PLATFORM_AVX2_H_
