#include "values/WordKernels.h"

#include "platform/BestKernels.h"

const WordKernels& BestWordKernels() { return BestKernels(kAvx2Words, kSse2Words); }
