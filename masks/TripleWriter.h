#ifndef MASKS_TRIPLE_WRITER_H_
#define MASKS_TRIPLE_WRITER_H_

#include "masks/RunSink.h"
#include "masks/RunTriple.h"

/// Appends runs to a triple.
class TripleWriter final : public RunSink {
 public:
  explicit TripleWriter(RunTriple& runs) : runs_(runs) {}

  void AddRow(const Run* first, const Run* end) override {
    for (const Run* run = first; run != end; ++run) {
      runs_.Append(run->Row, run->FirstColumn, run->LastColumn);
    }
  }

 private:
  RunTriple& runs_;
};

#endif  // MASKS_TRIPLE_WRITER_H_
