#include "VemVCode.h"

#include <cstddef>

#include <gtest/gtest.h>

#include "support/CodeRecords.h"

namespace {

static_assert(sizeof(VemVCode) == 96);

INSTANTIATE_TYPED_TEST_SUITE_P(VemVCode, RecordContract, VemVCodeFields);

TEST(VemVCode, FieldsHaveTheirTypes) { EXPECT_EQ(TypesOf<VemVCodeFields>(), "iiifffVVVVP"); }

TEST(VemVCode, NewRecordHoldsNothing) {
  const VemVCode record;
  EXPECT_TRUE(HoldsNothing<VemVCodeFields>(record));
}

}  // namespace
