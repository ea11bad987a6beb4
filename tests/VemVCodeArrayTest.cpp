#include "VemVCodeArray.h"

#include <vector>

#include <gtest/gtest.h>

#include "support/ArrayContract.h"
#include "support/CodeRecords.h"
#include "support/PrivateAccess.h"

struct PrivateVemVCodeArrayStore {
  using Type = std::vector<VemVCode>* VemVCodeArray::*;
  friend Type PrivateOf(PrivateVemVCodeArrayStore);
};

template struct PrivateAccess<PrivateVemVCodeArrayStore, &VemVCodeArray::store_>;

namespace {

struct Traits : RecordTraits<VemVCodeArray, VemVCodeFields> {
  static bool IsDefault(const VemVCode& record) { return HoldsNothing<VemVCodeFields>(record); }
  static std::vector<VemVCode>* Store(VemVCodeArray& array) {
    return array.*PrivateOf(PrivateVemVCodeArrayStore());
  }
};

INSTANTIATE_TYPED_TEST_SUITE_P(VemVCodeArray, ArrayContract, Traits);
INSTANTIATE_TYPED_TEST_SUITE_P(VemVCodeArray, ReferenceContract, Traits);
INSTANTIATE_TYPED_TEST_SUITE_P(VemVCodeArray, ConstAccessContract, Traits);
INSTANTIATE_TYPED_TEST_SUITE_P(VemVCodeArray, RecordArrayContract, Traits);

}  // namespace
