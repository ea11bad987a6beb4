#include "VemQRCode.h"

#include <gtest/gtest.h>

#include <cstddef>

#include "support/CodeRecords.h"

namespace {

static_assert(sizeof(VemQRCode) == 200);

INSTANTIATE_TYPED_TEST_SUITE_P(VemQRCode, RecordContract, VemQRCodeFields);

TEST(VemQRCode, FieldsHaveTheirTypes) {
  EXPECT_EQ(TypesOf<VemQRCodeFields>(), "iVVVVViiiiddPPPwwwwwww");
}

TEST(VemQRCode, NewRecordHasItsTextsAndNothingElse) {
  VemQRCode record;
  EXPECT_EQ(record.SymbolType.ValType(), VemVarString);
  EXPECT_STREQ(record.SymbolType.S(), "QR Mode 2");
  EXPECT_EQ(record.Polarity.ValType(), VemVarString);
  EXPECT_STREQ(record.Polarity.S(), "BlackOnWhite");
  record.SymbolType = VemVar();
  record.Polarity = VemVar();
  EXPECT_TRUE(HoldsNothing<VemQRCodeFields>(record));
}

TEST(VemQRCode, EveryRecordHasTextsOfItsOwn) {
  const VemQRCode first;
  const VemQRCode second;
  const VemQRCode copy(first);
  VemQRCode target;
  target = first;
  for (const VemQRCode* other : {&second, &copy, static_cast<const VemQRCode*>(&target)}) {
    EXPECT_NE(other->SymbolType.S(), first.SymbolType.S());
    EXPECT_STREQ(other->SymbolType.S(), "QR Mode 2");
    EXPECT_NE(other->Polarity.S(), first.Polarity.S());
    EXPECT_STREQ(other->Polarity.S(), "BlackOnWhite");
  }
}

}  // namespace
