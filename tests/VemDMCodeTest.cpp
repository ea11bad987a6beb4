#include "VemDMCode.h"

#include <cstddef>

#include <gtest/gtest.h>

#include "support/CodeRecords.h"

namespace {

static_assert(sizeof(VemDMCode) == 192);

INSTANTIATE_TYPED_TEST_SUITE_P(VemDMCode, RecordContract, VemDMCodeFields);

TEST(VemDMCode, FieldsHaveTheirTypes) {
  EXPECT_EQ(TypesOf<VemDMCodeFields>(), "iVVVVViiiddPPPwwwwww");
}

TEST(VemDMCode, NewRecordHasItsTextsAndNothingElse) {
  VemDMCode record;
  EXPECT_EQ(record.SymbolType.ValType(), VemVarString);
  EXPECT_STREQ(record.SymbolType.S(), "ECC-200 ");
  EXPECT_EQ(record.Polarity.ValType(), VemVarString);
  EXPECT_STREQ(record.Polarity.S(), "BlackOnWhite");
  record.SymbolType = VemVar();
  record.Polarity = VemVar();
  EXPECT_TRUE(HoldsNothing<VemDMCodeFields>(record));
}

}  // namespace
