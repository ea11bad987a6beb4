#include "masks/RunSink.h"

#include <cstring>

void RunBatch::Finish() {
  if (end_ != runs_.get()) sink_.Add(runs_.get(), end_);
  end_ = runs_.get();
}

void RunBatch::MakeRoom(std::size_t count) {
  Finish();
  if (static_cast<std::size_t>(limit_ - end_) < count) SetRoom(count);
}

void RunPainter::Add(Run* first, Run* end) {
  for (const Run* run = first; run != end; ++run) {
    const int length = run->LastColumn - run->FirstColumn + 1;
    std::memset(raster_.ptr(run->Row, run->FirstColumn), 255, static_cast<std::size_t>(length));
  }
}
