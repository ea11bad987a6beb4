#include "VemQRCodeArray.h"

#include <vector>

#include <gtest/gtest.h>

#include "support/ArrayContract.h"
#include "support/CodeRecords.h"
#include "support/PrivateAccess.h"

struct PrivateVemQRCodeArrayStore {
  using Type = std::vector<VemQRCode>* VemQRCodeArray::*;
  friend Type PrivateOf(PrivateVemQRCodeArrayStore);
};

template struct PrivateAccess<PrivateVemQRCodeArrayStore, &VemQRCodeArray::store_>;

namespace {

struct Traits : RecordTraits<VemQRCodeArray, VemQRCodeFields> {
  static bool IsDefault(const VemQRCode& record) {
    return Same(record.SymbolType, VemVar("QR Mode 2")) &&
           Same(record.Polarity, VemVar("BlackOnWhite")) && record.Value.ValType() == VemVarNone &&
           record.Points2.Length() == 0;
  }
  static std::vector<VemQRCode>* Store(VemQRCodeArray& array) {
    return array.*PrivateOf(PrivateVemQRCodeArrayStore());
  }
};

INSTANTIATE_TYPED_TEST_SUITE_P(VemQRCodeArray, ArrayContract, Traits);
INSTANTIATE_TYPED_TEST_SUITE_P(VemQRCodeArray, ReferenceContract, Traits);
INSTANTIATE_TYPED_TEST_SUITE_P(VemQRCodeArray, ConstAccessContract, Traits);
INSTANTIATE_TYPED_TEST_SUITE_P(VemQRCodeArray, RecordArrayContract, Traits);

}  // namespace
