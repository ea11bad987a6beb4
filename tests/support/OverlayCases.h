#ifndef TESTS_SUPPORT_OVERLAY_CASES_H_
#define TESTS_SUPPORT_OVERLAY_CASES_H_

#include <vector>

#include "support/OverlayKinds.h"

/// The rules of the kinds that are told by numbers, as rows that hold for the implementation and
/// for the handle alike.

/// Arguments that are accepted, and the values that are stored then.
struct StoredCase {
  const char* name;
  VemOverlayType type;
  Doubles arguments;
  std::vector<VemVar> values;
};
extern const std::vector<StoredCase> kStoredCases;

/// Arguments that are refused.
struct RefusedCase {
  const char* name;
  VemOverlayType type;
  Doubles arguments;
};
extern const std::vector<RefusedCase> kRefusedCases;

/// What a reader makes of stored values.
struct ReadCase {
  const char* name;
  VemOverlayType type;
  std::vector<VemVar> values;
  Reading expected;
};
extern const std::vector<ReadCase> kReadCases;

#endif  // TESTS_SUPPORT_OVERLAY_CASES_H_
