#ifndef CODER_ROW_KERNELS_H_
#define CODER_ROW_KERNELS_H_

#include <cstddef>
#include <cstdint>

#include "VemRLC.h"

/// A column at which a row changes between background and foreground, counted from background
/// before its first pixel to background behind its last: the first column of a run, then the column
/// behind its last, and so on.
using Edge = std::uint32_t;

/// Behind the edges of each row stand two that no run reaches.
constexpr Edge kNoEdge = UINT32_MAX;
constexpr std::size_t kClosingEdges = 2;

/// The elements behind edges and runs that may be written, and behind edges read, without effect.
constexpr std::size_t kSlack = 8;

/// The most edges that a row takes, and may touch.
constexpr std::size_t EdgeRoom(int columns) {
  return static_cast<std::size_t>(columns) + 1 + kClosingEdges + kSlack;
}

/// The kinds of pixels that differ in how background is told.
enum PixelKind { kByte, kShort, kInt, kHalf, kFloat, kDouble, kPixelKinds };

/// Rows that are still to be read.
struct PixelRows {
  const unsigned char* pixels;  ///< The next row.
  std::size_t step;             ///< From a row to the next, in bytes.
  std::size_t rowBytes;
  int columns;
  int count;

  // What lets a row be recognised that is like the one above it.
  const Edge* above = nullptr;     ///< The edges of the row above the next; null if unknown.
  const Edge* aboveEnd = nullptr;  ///< The end of them.
  int differing = 0;               ///< How many rows in turn differed from the one above them.
};

/// Where the edges of some rows go, one row behind the other.
struct EdgeRows {
  static constexpr int kMost = 64;

  Edge* begin;            ///< The edges of the first row.
  const Edge* end;        ///< The end of the room. There is enough for one row.
  bool likeAbove[kMost];  ///< For each row whether it surely has the edges of the one above it.
  Edge* ends[kMost];      ///< For each row the end of its edges, behind which it is closed.
  int count = 0;          ///< The number of rows.

  Edge* Row(int i) const { return i == 0 ? begin : ends[i - 1] + kClosingEdges; }
};

/// What is done with rows, in one of the ways that processors offer.
struct RowKernels {
  const char* name;
  bool (*isOffered)();  ///< Whether this processor and its system can run it.

  /// Finds the edges of as many rows as there are, or have room. Of the raster, nothing outside the
  /// rows' own bytes is read.
  void (*findEdges[kPixelKinds])(PixelRows& rows, EdgeRows& found);

  /// Makes `count` runs of a row from their edges.
  void (*storeRuns)(const Edge* edges, std::size_t count, int row, Run* runs);
};

extern const RowKernels kSse2Kernels;
extern const RowKernels kAvx2Kernels;

/// The best that the processor offers.
const RowKernels& BestRowKernels();

#endif  // CODER_ROW_KERNELS_H_
