#include "coder/RowKernels.h"

#include "platform/BestKernels.h"

const RowKernels& BestRowKernels() { return BestKernels(kAvx2Kernels, kSse2Kernels); }
