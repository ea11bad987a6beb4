#include "VemDMCodeArray.h"

#include <vector>

#include <gtest/gtest.h>

#include "support/ArrayContract.h"
#include "support/CodeRecords.h"
#include "support/PrivateAccess.h"

struct PrivateVemDMCodeArrayStore {
  using Type = std::vector<VemDMCode>* VemDMCodeArray::*;
  friend Type PrivateOf(PrivateVemDMCodeArrayStore);
};

template struct PrivateAccess<PrivateVemDMCodeArrayStore, &VemDMCodeArray::store_>;

namespace {

struct Traits : RecordTraits<VemDMCodeArray, VemDMCodeFields> {
  static bool IsDefault(const VemDMCode& record) {
    return Same(record.SymbolType, VemVar("ECC-200 ")) &&
           Same(record.Polarity, VemVar("BlackOnWhite")) && record.Value.ValType() == VemVarNone &&
           record.Points2.Length() == 0;
  }
  static std::vector<VemDMCode>* Store(VemDMCodeArray& array) {
    return array.*PrivateOf(PrivateVemDMCodeArrayStore());
  }
};

INSTANTIATE_TYPED_TEST_SUITE_P(VemDMCodeArray, ArrayContract, Traits);
INSTANTIATE_TYPED_TEST_SUITE_P(VemDMCodeArray, ReferenceContract, Traits);
INSTANTIATE_TYPED_TEST_SUITE_P(VemDMCodeArray, ConstAccessContract, Traits);
INSTANTIATE_TYPED_TEST_SUITE_P(VemDMCodeArray, RecordArrayContract, Traits);

}  // namespace
