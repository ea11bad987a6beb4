#include "VemPDF417Code.h"

#include <cstddef>

#include <gtest/gtest.h>

#include "support/CodeRecords.h"

namespace {

static_assert(sizeof(VemPDF417Code) == 152);

INSTANTIATE_TYPED_TEST_SUITE_P(VemPDF417Code, RecordContract, VemPDF417CodeFields);

TEST(VemPDF417Code, FieldsHaveTheirTypes) {
  EXPECT_EQ(TypesOf<VemPDF417CodeFields>(), "iVVViiidddPwwwwww");
}

TEST(VemPDF417Code, NewRecordHasItsTextsAndNothingElse) {
  VemPDF417Code record;
  EXPECT_EQ(record.Polarity.ValType(), VemVarString);
  EXPECT_STREQ(record.Polarity.S(), "BlackOnWhite");
  record.Polarity = VemVar();
  EXPECT_TRUE(HoldsNothing<VemPDF417CodeFields>(record));
}

}  // namespace
