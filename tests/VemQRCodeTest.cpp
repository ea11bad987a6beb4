#include "VemQRCode.h"

#include <cstddef>

#include <gtest/gtest.h>

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

}  // namespace
