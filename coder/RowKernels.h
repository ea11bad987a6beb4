#ifndef CODER_ROW_KERNELS_H_
#define CODER_ROW_KERNELS_H_

#include <cstddef>
#include <cstdint>

#include "VemRLC.h"

constexpr int kWordBits = 64;

/// What edges and runs may be written, and edges read, beyond those that there are.
constexpr std::size_t kSlack = 8;

/// The kinds of pixels that differ in how background is told.
enum PixelKind { kByte, kShort, kInt, kHalf, kFloat, kDouble, kPixelKinds };

/// What is done with single rows, in one of the ways that processors offer.
struct RowKernels {
  const char* name;
  bool (*isOffered)();  ///< Whether this processor and its system can run it.

  /// Writes the columns at which a row changes between background and foreground, counted from
  /// background before its first pixel to background behind its last: the first column of a run,
  /// then the column behind its last, and so on. Returns the end of what it wrote. Nothing outside
  /// the row's own bytes is read.
  int* (*findEdges[kPixelKinds])(const void* pixels, int columns, int* edges);

  /// Makes `count` runs of a row from their edges.
  void (*storeRuns)(const int* edges, std::size_t count, int row, Run* runs);
};

extern const RowKernels kSse2Kernels;
extern const RowKernels kAvx2Kernels;

/// The best that the processor offers.
const RowKernels& BestRowKernels();

#endif  // CODER_ROW_KERNELS_H_
