#ifndef MASKS_DENSE_FILL_H_
#define MASKS_DENSE_FILL_H_

#include "masks/ContourFill.h"

/// Fills edge by edge into planes of bits over the area: its time goes with the edges' rows and the
/// area's words of 64 pixels, in whatever order the edges lie.
void FillDensely(const FillContours& contours, const FillArea& area, RunSink& sink);

#endif  // MASKS_DENSE_FILL_H_
