#ifndef TESTS_SUPPORT_VAR_ARRAYS_H_
#define TESTS_SUPPORT_VAR_ARRAYS_H_

#include <algorithm>
#include <vector>

#include <gtest/gtest.h>

#include "VemTuple.h"
#include "support/Support.h"

// Arrays of control values beside plain lists of them.

inline VemVarArray Of(const std::vector<VemVar>& values) {
  VemVarArray array;
  for (const VemVar& value : values) array.Append(value);
  return array;
}

/// The elements, seen through Select, for comparing with a list of values.
inline std::vector<VemVar> ValuesOf(const VemVarArray& array) {
  std::vector<VemVar> values;
  for (int i = 0; i < array.Length(); ++i) {
    VemVar value;
    array.Select(i, &value);
    values.push_back(value);
  }
  return values;
}

inline testing::AssertionResult Holds(const VemVarArray& array,
                                      const std::vector<VemVar>& expected) {
  const std::vector<VemVar> values = ValuesOf(array);
  const bool same = std::equal(values.begin(), values.end(), expected.begin(), expected.end(),
                               [](const VemVar& a, const VemVar& b) { return Same(a, b); });
  if (same) return testing::AssertionSuccess();
  return testing::AssertionFailure()
         << testing::PrintToString(values) << " instead of " << testing::PrintToString(expected);
}

/// Every kind, and two of each kind that holds something.
inline std::vector<VemVar> Mixed() { return {3L, "three", 3.5, VemVar(), -7, "", kInfinity}; }

#endif  // TESTS_SUPPORT_VAR_ARRAYS_H_
