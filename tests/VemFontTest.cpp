#include "VemFont.h"

#include <cstddef>
#include <type_traits>

#include <gtest/gtest.h>

#include "support/Support.h"

namespace {

static_assert(offsetof(VemFont, Name) == 0, "the stated order of the fields");
static_assert(offsetof(VemFont, Size) == 16, "the stated order of the fields");
static_assert(offsetof(VemFont, Weight) == 24, "the stated order of the fields");
static_assert(offsetof(VemFont, Flag0) == 32, "the stated order of the fields");
static_assert(offsetof(VemFont, Flag1) == 33, "the stated order of the fields");
static_assert(offsetof(VemFont, Flag2) == 34, "the stated order of the fields");
static_assert(offsetof(VemFont, Flag3) == 35, "the stated order of the fields");
static_assert(sizeof(VemFont) == 40, "no further field");
static_assert(std::is_same<decltype(VemFont::Flag0), unsigned char>::value, "flags are bytes");
static_assert(!std::is_polymorphic<VemFont>::value, "no virtual operations");

void ExpectFont(const VemFont& font, const VemVar& name, long size, long weight, int flag0,
                int flag1, int flag2, int flag3) {
  EXPECT_TRUE(Same(font.Name, name)) << testing::PrintToString(font.Name);
  EXPECT_EQ(font.Size, size);
  EXPECT_EQ(font.Weight, weight);
  EXPECT_EQ(font.Flag0, flag0);
  EXPECT_EQ(font.Flag1, flag1);
  EXPECT_EQ(font.Flag2, flag2);
  EXPECT_EQ(font.Flag3, flag3);
}

VemFont DistinctFont() {
  VemFont font;
  font.Name = VemVar("Mono");
  font.Size = 5000000000L;
  font.Weight = -6;
  font.Flag0 = 11;
  font.Flag1 = 12;
  font.Flag2 = 13;
  font.Flag3 = 255;
  return font;
}

void ExpectDistinctFont(const VemFont& font) {
  ExpectFont(font, "Mono", 5000000000L, -6, 11, 12, 13, 255);
}

TEST(VemFont, Default) { ExpectFont(VemFont(), "Times", 9, 1, 0, 1, 0, 0); }

TEST(VemFont, NameAndSizeHaveOtherWeightAndFlags) {
  VemVar name("Mono");
  const VemFont font(name, 12);
  name = VemVar("Changed");
  ExpectFont(font, "Mono", 12, 500, 0, 0, 0, 0);
}

TEST(VemFont, NameMayBeOfAnyKind) {
  VemVar number(7);
  ExpectFont(VemFont(number, -12), 7, -12, 500, 0, 0, 0, 0);
  VemVar none;
  ExpectFont(VemFont(none, 0), VemVar(), 0, 500, 0, 0, 0, 0);
}

TEST(VemFont, CopiesAllFieldsDeeply) {
  VemFont source = DistinctFont();
  const VemFont copy(source);
  VemFont assigned;
  VemFont& returned = assigned = source;
  EXPECT_EQ(&returned, &assigned);
  EXPECT_NE(copy.Name.S(), source.Name.S());
  source = VemFont();
  ExpectDistinctFont(copy);
  ExpectDistinctFont(assigned);
}

TEST(VemFont, AssignmentToItselfChangesNothing) {
  VemFont font = DistinctFont();
  const VemFont& same = font;
  font = same;
  ExpectDistinctFont(font);
}

}  // namespace
