#include "VemQRCodeArray.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

#include "support/ArrayContract.h"
#include "support/CodeRecords.h"
#include "support/PrivateAccess.h"

struct PrivateVemQRCodeArrayStore {
  using Type = std::vector<VemQRCode>* VemQRCodeArray::*;
  friend Type PrivateOf(PrivateVemQRCodeArrayStore);
};

template struct PrivateAccess<PrivateVemQRCodeArrayStore, &VemQRCodeArray::store_>;

namespace {

struct Traits : RecordTraits<VemQRCodeFields> {
  using Array = VemQRCodeArray;

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
INSTANTIATE_TYPED_TEST_SUITE_P(VemQRCodeArray, ConstAccessContract, Traits);

TEST(VemQRCodeArray, EveryWayInAndOutMakesTextsOfItsOwn) {
  VemQRCode record = Traits::Make(1);
  VemQRCodeArray array;
  array.Append(record);
  array.Insert(0, record);
  array.Append(array);
  VemQRCode out;
  array.Select(0, &out);
  std::set<const char*> blocks = {record.Value.S(), out.Value.S()};
  for (int i = 0; i < array.Length(); ++i) blocks.insert(array[i].Value.S());
  EXPECT_EQ(blocks.size(), 6u);
}

}  // namespace
