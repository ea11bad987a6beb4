#include "masks/LineClip.h"

namespace {

// Two coordinates' product may need more than 64 bits.
__extension__ typedef __int128 Wide;

bool IsWithin(std::int64_t value, std::int64_t size) { return value >= 0 && value < size; }

bool OnOneSide(std::int64_t a, std::int64_t b, std::int64_t size) {
  return (a < 0 && b < 0) || (a >= size && b >= size);
}

std::int64_t Nearest(std::int64_t value, std::int64_t size) { return value < 0 ? 0 : size - 1; }

// The part of `rise` that falls to `way` out of `run`.
std::int64_t Share(std::int64_t way, std::int64_t rise, std::int64_t run) {
  return static_cast<std::int64_t>(static_cast<Wide>(way) * rise / run);
}

void MoveToRows(LinePoint& end, const LinePoint& a, const LinePoint& b, std::int64_t height) {
  if (IsWithin(end.y, height)) return;
  const std::int64_t row = Nearest(end.y, height);
  end.x += Share(row - end.y, b.x - a.x, b.y - a.y);
  end.y = row;
}

void MoveToColumns(LinePoint& end, const LinePoint& a, const LinePoint& b, std::int64_t width) {
  if (IsWithin(end.x, width)) return;
  const std::int64_t column = Nearest(end.x, width);
  end.y += Share(column - end.x, b.y - a.y, b.x - a.x);
  end.x = column;
}

}  // namespace

bool ClipLine(LinePoint& a, LinePoint& b, std::int64_t width, std::int64_t height) {
  if (OnOneSide(a.x, b.x, width) || OnOneSide(a.y, b.y, height)) return false;
  MoveToRows(a, a, b, height);
  MoveToRows(b, a, b, height);
  if (OnOneSide(a.x, b.x, width)) return false;
  MoveToColumns(a, a, b, width);
  MoveToColumns(b, a, b, width);
  return true;
}
