#include "Vem1DCode.h"

#include <cstddef>

#include <gtest/gtest.h>

#include "support/CodeRecords.h"

namespace {

static_assert(sizeof(Vem1DCode) == 96);

INSTANTIATE_TYPED_TEST_SUITE_P(Vem1DCode, RecordContract, Vem1DCodeFields);

TEST(Vem1DCode, FieldsHaveTheirTypes) { EXPECT_EQ(TypesOf<Vem1DCodeFields>(), "iVPwwwwwwww"); }

TEST(Vem1DCode, NewRecordHoldsNothing) {
  const Vem1DCode record;
  EXPECT_TRUE(HoldsNothing<Vem1DCodeFields>(record));
}

}  // namespace
