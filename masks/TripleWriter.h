#ifndef MASKS_TRIPLE_WRITER_H_
#define MASKS_TRIPLE_WRITER_H_

#include "masks/RunSink.h"
#include "masks/RunTriple.h"

/// Appends runs to a triple.
class TripleWriter final : public RunSink {
 public:
  explicit TripleWriter(RunTriple& runs) : runs_(runs) {}

  void Add(Run* first, Run* end) override { runs_.Append(first, end); }

 private:
  RunTriple& runs_;
};

#endif  // MASKS_TRIPLE_WRITER_H_
