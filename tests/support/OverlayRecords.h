#ifndef TESTS_SUPPORT_OVERLAY_RECORDS_H_
#define TESTS_SUPPORT_OVERLAY_RECORDS_H_

#include <string>
#include <vector>

#include "IVemOverlay.h"
#include "support/Support.h"

VemVarArray ArrayOf(const std::vector<VemVar>& values);
void ExpectValues(const IVemOverlay& overlay, const std::vector<VemVar>& values);
void ExpectNumbers(const VemVarArray& array, const std::vector<VemVar>& values);

/// A circle, all of whose fields differ from a new record's and from one another.
IVemOverlay FullOverlay();
void ExpectFullOverlay(const IVemOverlay& overlay);
/// Whether all fields but kind and values are those of FullOverlay, or these parts of them.
void ExpectRest(const IVemOverlay& overlay);
void ExpectRuns(const IVemOverlay& overlay, int row, int first, int last);
void ExpectPenAndBrush(const IVemOverlay& overlay);

VemImage ImageOf(const std::string& picture);
/// A region of one run.
VemRegion RegionOf(int width, int height, int row, int first, int last);
void ExpectRegion(VemRegion& region, int width, int height, const std::vector<Run>& runs);

#endif  // TESTS_SUPPORT_OVERLAY_RECORDS_H_
