#include "values/WordKernels.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <vector>

#include <gtest/gtest.h>

namespace {

constexpr std::size_t kBehind = 4;  // Values behind the ones at work, which must stay.

std::vector<const WordKernels*> OfferedKernels() {
  std::vector<const WordKernels*> offered;
  for (const WordKernels* kernels : {&kSse2Words, &kAvx2Words}) {
    if (kernels->isOffered()) offered.push_back(kernels);
  }
  return offered;
}

std::vector<std::size_t> Counts() {
  std::vector<std::size_t> counts = {255, 256, 257, 1000, 4099};
  for (std::size_t count = 0; count <= 80; ++count) counts.push_back(count);
  return counts;
}

/// Numbers and nothings whose payloads have the looks of a kind.
std::vector<VemVar> Numbers(std::size_t count) {
  std::vector<VemVar> values;
  for (std::size_t i = 0; i < count; ++i) {
    const VemVar kinds[] = {VemVar(2L), VemVar(0x200000002L), VemVar(-1.5), VemVar()};
    values.push_back(kinds[i % 4]);
  }
  return values;
}

/// Every place among few values, and some among many.
std::vector<std::size_t> Places(std::size_t count) {
  std::vector<std::size_t> places;
  for (std::size_t i = 0; i<count; i += count> 100 ? 17 : 1) places.push_back(i);
  if (count > 0) places.push_back(count - 1);
  return places;
}

std::vector<int> Integers(std::size_t count) {
  std::vector<int> integers;
  for (std::size_t i = 0; i < count; ++i) {
    const int some[] = {static_cast<int>(i), -1, INT_MIN, INT_MAX, 0, -static_cast<int>(i)};
    integers.push_back(some[i % 6]);
  }
  return integers;
}

bool Same(const VemVar& a, const VemVar& b) {
  return a.ValType() == b.ValType() && (a == b || a.ValType() == VemVarNone);
}

bool SameWords(const VemVar* a, const VemVar* b, std::size_t count) {
  return std::memcmp(static_cast<const void*>(a), b, count * sizeof(VemVar)) == 0;
}

class WordKernelsTest : public testing::TestWithParam<const WordKernels*> {
 protected:
  const WordKernels& kernels_ = *GetParam();
};

TEST_P(WordKernelsTest, ATextIsFoundWhereverItStands) {
  for (const std::size_t count : Counts()) {
    std::vector<VemVar> values = Numbers(count + kBehind);
    values[count] = "behind";
    EXPECT_FALSE(kernels_.anyText(values.data(), count)) << count;
    for (const std::size_t place : Places(count)) {
      const VemVar number = values[place];
      values[place] = "text";
      EXPECT_TRUE(kernels_.anyText(values.data(), count)) << place << " of " << count;
      values[place] = number;
    }
  }
}

TEST_P(WordKernelsTest, WordsAreCopiedAndTextsTold) {
  for (const std::size_t count : Counts()) {
    std::vector<VemVar> source = Numbers(count + kBehind);
    std::vector<VemVar> target(count + kBehind, VemVar(77L));
    EXPECT_FALSE(kernels_.copy(target.data(), source.data(), count)) << count;
    EXPECT_TRUE(SameWords(target.data(), source.data(), count)) << count;
    EXPECT_TRUE(target[count] == VemVar(77L)) << count;
    for (const std::size_t place : Places(count)) {
      const VemVar number = source[place];
      source[place] = "text";
      EXPECT_TRUE(kernels_.copy(target.data(), source.data(), count)) << place << " of " << count;
      EXPECT_TRUE(SameWords(target.data(), source.data(), count)) << place << " of " << count;
      new (&target[place]) VemVar();  // The text is the source's.
      source[place] = number;
    }
  }
}

TEST_P(WordKernelsTest, WordsAreCopiedOverUpToAText) {
  for (const std::size_t count : Counts()) {
    const std::vector<VemVar> source = Numbers(count + kBehind);
    std::vector<VemVar> target(count + kBehind, VemVar(77L));
    EXPECT_EQ(kernels_.copyOver(target.data(), source.data(), count), count);
    EXPECT_TRUE(SameWords(target.data(), source.data(), count)) << count;
    EXPECT_TRUE(target[count] == VemVar(77L)) << count;
    for (const std::size_t place : Places(count)) {
      target.assign(count + kBehind, VemVar(77L));
      target[place] = "text";
      ASSERT_EQ(kernels_.copyOver(target.data(), source.data(), count), place) << count;
      EXPECT_TRUE(SameWords(target.data(), source.data(), place)) << place << " of " << count;
      EXPECT_STREQ(target[place].S(), "text");
      for (std::size_t i = place + 1; i < target.size(); ++i) {
        ASSERT_TRUE(target[i] == VemVar(77L)) << i << " of " << count;
      }
    }
  }
}

// The largest low half of integers whose high halves and places in a block are of no account.
TEST_P(WordKernelsTest, IntegersAreCopiedAndTheLargestTold) {
  for (const std::size_t count : Counts()) {
    std::vector<VemVar> source;
    for (std::size_t i = 0; i < count + kBehind; ++i) {
      const VemVar some[] = {VemVar(7L), VemVar(-1L), VemVar(0x300000005L), VemVar(-0x100000000L)};
      source.push_back(some[i % 4]);
    }
    source[count] = VemVar(1000L);
    const int most = count == 0 ? 0 : 7;
    for (const int before : {0, most, most + 1, INT_MAX}) {
      std::vector<VemVar> target(count + kBehind, VemVar(77L));
      int largest = before;
      EXPECT_TRUE(kernels_.copyIntegers(target.data(), source.data(), count, largest)) << count;
      EXPECT_EQ(largest, std::max(before, most)) << count;
      EXPECT_TRUE(SameWords(target.data(), source.data(), count)) << count;
      EXPECT_TRUE(target[count] == VemVar(77L)) << count;
    }
    std::vector<VemVar> target(count + kBehind);
    for (const std::size_t place : Places(count)) {
      const VemVar number = source[place];
      source[place] = VemVar(0x400000009L);
      int largest = 0;
      EXPECT_TRUE(kernels_.copyIntegers(target.data(), source.data(), count, largest));
      EXPECT_EQ(largest, 9) << place << " of " << count;
      for (const VemVar& other : {VemVar(0.0), VemVar(), VemVar("text")}) {
        source[place] = other;
        EXPECT_FALSE(kernels_.copyIntegers(target.data(), source.data(), count, largest)) << place;
        EXPECT_TRUE(SameWords(target.data(), source.data(), count)) << place << " of " << count;
        new (&target[place]) VemVar();  // The text is the source's.
      }
      source[place] = number;
    }
  }
}

TEST_P(WordKernelsTest, IntegersAreWritten) {
  for (const std::size_t count : Counts()) {
    const std::vector<int> integers = Integers(count);
    std::vector<VemVar> target(count + kBehind, VemVar(0.5));
    kernels_.write(target.data(), integers.data(), count);
    for (std::size_t i = 0; i < count; ++i) {
      EXPECT_TRUE(Same(target[i], VemVar(integers[i]))) << i << " of " << count;
    }
    EXPECT_TRUE(target[count] == VemVar(0.5)) << count;
  }
}

TEST_P(WordKernelsTest, IntegersAreWrittenUpToAText) {
  for (const std::size_t count : Counts()) {
    const std::vector<int> integers = Integers(count);
    std::vector<VemVar> target = Numbers(count + kBehind);
    target[count] = 0.5;
    EXPECT_EQ(kernels_.writeOver(target.data(), integers.data(), count), count);
    EXPECT_TRUE(target[count] == VemVar(0.5)) << count;
    for (const std::size_t place : Places(count)) {
      target = Numbers(count + kBehind);
      target[place] = "text";
      ASSERT_EQ(kernels_.writeOver(target.data(), integers.data(), count), place) << count;
      EXPECT_STREQ(target[place].S(), "text");
      const std::vector<VemVar> kept = Numbers(count + kBehind);
      for (std::size_t i = 0; i < count; ++i) {
        const VemVar expected = i < place ? VemVar(integers[i]) : kept[i];
        if (i != place) {
          ASSERT_TRUE(Same(target[i], expected)) << i << ", " << place;
        }
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Each, WordKernelsTest, testing::ValuesIn(OfferedKernels()),
                         [](const auto& each) { return std::string(each.param->name); });

}  // namespace
