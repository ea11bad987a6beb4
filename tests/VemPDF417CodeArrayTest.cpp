#include "VemPDF417CodeArray.h"

#include <vector>

#include <gtest/gtest.h>

#include "support/ArrayContract.h"
#include "support/CodeRecords.h"
#include "support/PrivateAccess.h"

struct PrivateVemPDF417CodeArrayStore {
  using Type = std::vector<VemPDF417Code>* VemPDF417CodeArray::*;
  friend Type PrivateOf(PrivateVemPDF417CodeArrayStore);
};

template struct PrivateAccess<PrivateVemPDF417CodeArrayStore, &VemPDF417CodeArray::store_>;

namespace {

struct Traits : RecordTraits<VemPDF417CodeArray, VemPDF417CodeFields> {
  static bool IsDefault(const VemPDF417Code& record) {
    return Same(record.Polarity, VemVar("BlackOnWhite")) && record.Value.ValType() == VemVarNone &&
           record.Points.Length() == 0;
  }
  static std::vector<VemPDF417Code>* Store(VemPDF417CodeArray& array) {
    return array.*PrivateOf(PrivateVemPDF417CodeArrayStore());
  }
};

INSTANTIATE_TYPED_TEST_SUITE_P(VemPDF417CodeArray, ArrayContract, Traits);
INSTANTIATE_TYPED_TEST_SUITE_P(VemPDF417CodeArray, ReferenceContract, Traits);
INSTANTIATE_TYPED_TEST_SUITE_P(VemPDF417CodeArray, ConstAccessContract, Traits);
INSTANTIATE_TYPED_TEST_SUITE_P(VemPDF417CodeArray, RecordArrayContract, Traits);

}  // namespace
