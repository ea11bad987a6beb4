#ifndef MASKS_SPARSE_FILL_H_
#define MASKS_SPARSE_FILL_H_

#include <cstdint>

#include "masks/ContourFill.h"

/// Fills row by row with the edges that the row meets at hand, in their order: its time goes with
/// the edges' rows, whatever the area's width. They cross `edgeRows` rows in all.
void FillSparsely(const std::vector<FillSide>& sides, const FillArea& area, std::int64_t edgeRows,
                  RunSink& sink);

#endif  // MASKS_SPARSE_FILL_H_
