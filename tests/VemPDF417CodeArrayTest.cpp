#include "VemPDF417CodeArray.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

#include "support/ArrayContract.h"
#include "support/CodeRecords.h"
#include "support/PrivateAccess.h"

struct PrivateVemPDF417CodeArrayStore {
  using Type = std::vector<VemPDF417Code>* VemPDF417CodeArray::*;
  friend Type PrivateOf(PrivateVemPDF417CodeArrayStore);
};

template struct PrivateAccess<PrivateVemPDF417CodeArrayStore, &VemPDF417CodeArray::store_>;

namespace {

struct Traits : RecordTraits<VemPDF417CodeFields> {
  using Array = VemPDF417CodeArray;

  static bool IsDefault(const VemPDF417Code& record) {
    return Same(record.Polarity, VemVar("BlackOnWhite")) && record.Value.ValType() == VemVarNone &&
           record.Points.Length() == 0;
  }
  static std::vector<VemPDF417Code>* Store(VemPDF417CodeArray& array) {
    return array.*PrivateOf(PrivateVemPDF417CodeArrayStore());
  }
};

INSTANTIATE_TYPED_TEST_SUITE_P(VemPDF417CodeArray, ArrayContract, Traits);
INSTANTIATE_TYPED_TEST_SUITE_P(VemPDF417CodeArray, ConstAccessContract, Traits);

TEST(VemPDF417CodeArray, EveryWayInAndOutMakesTextsOfItsOwn) {
  VemPDF417Code record = Traits::Make(1);
  VemPDF417CodeArray array;
  array.Append(record);
  array.Insert(0, record);
  array.Append(array);
  VemPDF417Code out;
  array.Select(0, &out);
  std::set<const char*> blocks = {record.Value.S(), out.Value.S()};
  for (int i = 0; i < array.Length(); ++i) blocks.insert(array[i].Value.S());
  EXPECT_EQ(blocks.size(), 6u);
}

}  // namespace
