#ifndef MASKS_LINE_CLIP_H_
#define MASKS_LINE_CLIP_H_

#include <cstdint>

/// A point of a line in pixels, or in whatever part of one both it and its canvas are told.
struct LinePoint {
  std::int64_t x;
  std::int64_t y;
};

/// Clips a line to columns 0 to width - 1 and rows 0 to height - 1, with quotients truncated: its
/// ends to the rows first, the second with the first as it was moved, then both to the columns.
/// False where nothing is left.
bool ClipLine(LinePoint& a, LinePoint& b, std::int64_t width, std::int64_t height);

#endif  // MASKS_LINE_CLIP_H_
