#include "Vem1DCodeArray.h"

#include <cstring>
#include <vector>

#include <gtest/gtest.h>

#include "support/ArrayContract.h"
#include "support/CodeRecords.h"
#include "support/PrivateAccess.h"

struct PrivateVem1DCodeArrayStore {
  using Type = std::vector<Vem1DCode>* Vem1DCodeArray::*;
  friend Type PrivateOf(PrivateVem1DCodeArrayStore);
};

template struct PrivateAccess<PrivateVem1DCodeArrayStore, &Vem1DCodeArray::store_>;

namespace {

struct Traits : RecordTraits<Vem1DCodeArray, Vem1DCodeFields> {
  static constexpr bool kConstAccessReads = false;

  static std::vector<Vem1DCode>* Store(Vem1DCodeArray& array) {
    return array.*PrivateOf(PrivateVem1DCodeArrayStore());
  }
};

INSTANTIATE_TYPED_TEST_SUITE_P(Vem1DCodeArray, ArrayContract, Traits);
INSTANTIATE_TYPED_TEST_SUITE_P(Vem1DCodeArray, ReferenceContract, Traits);
INSTANTIATE_TYPED_TEST_SUITE_P(Vem1DCodeArray, RecordArrayContract, Traits);

// Makes a list of records look like the middle of a longer one, without owning it.
class Window {
 public:
  Window(std::vector<Vem1DCode>* records, int first, int length) : records_(records) {
    std::memcpy(bounds_, static_cast<void*>(records_), sizeof(bounds_));
    Vem1DCode* const begin = records->data() + first;
    Vem1DCode* const bounds[] = {begin, begin + length, begin + length};
    std::memcpy(static_cast<void*>(records_), bounds, sizeof(bounds));
  }
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;
  ~Window() { std::memcpy(static_cast<void*>(records_), bounds_, sizeof(bounds_)); }

 private:
  static_assert(sizeof(std::vector<Vem1DCode>) == 3 * sizeof(Vem1DCode*));

  std::vector<Vem1DCode>* records_;
  Vem1DCode* bounds_[3];
};

TEST(Vem1DCodeArray, ConstAccessReadsBeyondTheElementsOnly) {
  Vem1DCodeArray array = ArrayOf<Traits>(UpTo(9));
  {
    const Window window(Traits::Store(array), 3, 2);  // Numbers 4 and 5.
    const Vem1DCodeArray& constant = array;
    ASSERT_EQ(constant.Length(), 2);
    for (int index = -3; index < 0; ++index) {
      EXPECT_TRUE(Traits::IsMade(constant[index], 4 + index)) << index;
    }
    for (int index = 2; index < 6; ++index) {
      EXPECT_TRUE(Traits::IsMade(constant[index], 4 + index)) << index;
    }
    for (int index = 0; index < 2; ++index) {
      EXPECT_TRUE(HoldsNothing<Vem1DCodeFields>(constant[index])) << index;
    }
  }
  EXPECT_TRUE(Holds<Traits>(array, UpTo(9)));
}

TEST(Vem1DCodeArray, SelectAndTheReferenceReadARecord) {
  Vem1DCode record = Traits::Make(1);
  Vem1DCodeArray array;
  array.Append(record);
  Vem1DCode out;
  array.Select(0, &out);
  EXPECT_TRUE(Traits::IsMade(out, 1));
  EXPECT_TRUE(Traits::IsMade(array[0], 1));
}

}  // namespace
