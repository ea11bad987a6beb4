#include "masks/RunSink.h"

#include <cstring>

void RunPainter::AddRow(Run* first, Run* end) {
  unsigned char* const pixels = raster_.ptr(first->Row);
  for (const Run* run = first; run != end; ++run) {
    const int length = run->LastColumn - run->FirstColumn + 1;
    std::memset(pixels + run->FirstColumn, 255, static_cast<std::size_t>(length));
  }
}
