#include "VemVCodeArray.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

#include "support/ArrayContract.h"
#include "support/CodeRecords.h"
#include "support/PrivateAccess.h"

struct PrivateVemVCodeArrayStore {
  using Type = std::vector<VemVCode>* VemVCodeArray::*;
  friend Type PrivateOf(PrivateVemVCodeArrayStore);
};

template struct PrivateAccess<PrivateVemVCodeArrayStore, &VemVCodeArray::store_>;

namespace {

struct Traits : RecordTraits<VemVCodeFields> {
  using Array = VemVCodeArray;

  static bool IsDefault(const VemVCode& record) { return HoldsNothing<VemVCodeFields>(record); }
  static std::vector<VemVCode>* Store(VemVCodeArray& array) {
    return array.*PrivateOf(PrivateVemVCodeArrayStore());
  }
};

INSTANTIATE_TYPED_TEST_SUITE_P(VemVCodeArray, ArrayContract, Traits);
INSTANTIATE_TYPED_TEST_SUITE_P(VemVCodeArray, ConstAccessContract, Traits);

TEST(VemVCodeArray, EveryWayInAndOutMakesTextsOfItsOwn) {
  VemVCode record = Traits::Make(1);
  VemVCodeArray array;
  array.Append(record);
  array.Insert(0, record);
  array.Append(array);
  VemVCode out;
  array.Select(0, &out);
  std::set<const char*> blocks = {record.Value0.S(), out.Value0.S()};
  for (int i = 0; i < array.Length(); ++i) blocks.insert(array[i].Value0.S());
  EXPECT_EQ(blocks.size(), 6u);
}

}  // namespace
