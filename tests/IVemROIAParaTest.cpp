#include "IVemROIAPara.h"

#include <cstddef>
#include <cstring>
#include <new>
#include <type_traits>

#include <gtest/gtest.h>

#include "support/Support.h"

namespace {

static_assert(std::is_standard_layout<IVemROIArrayPara>::value, "a plain class");
static_assert(!std::is_polymorphic<IVemROIArrayPara>::value, "no virtual operations");
static_assert(offsetof(IVemROIArrayPara, Params) == 0, "the order of the fields");
static_assert(offsetof(IVemROIArrayPara, Width) == 8, "the order of the fields");
static_assert(offsetof(IVemROIArrayPara, Height) == 12, "the order of the fields");
static_assert(offsetof(IVemROIArrayPara, Rows) == 16, "the order of the fields");
static_assert(offsetof(IVemROIArrayPara, FirstColumns) == 24, "the order of the fields");
static_assert(offsetof(IVemROIArrayPara, LastColumns) == 32, "the order of the fields");
static_assert(offsetof(IVemROIArrayPara, Type) == 40, "the order of the fields");
static_assert(sizeof(IVemROIArrayPara) == 48, "no further field");

IVemROIArrayPara Filled() {
  IVemROIArrayPara para;
  para.Params = VemVarArray(1.5);
  para.Width = 640;
  para.Height = 480;
  para.Rows = VemVarArray(2);
  para.FirstColumns = VemVarArray(3);
  para.LastColumns = VemVarArray(4);
  para.Type = VemROITorus;
  return para;
}

void ExpectFilled(const IVemROIArrayPara& para) {
  EXPECT_TRUE(Same(para.Params, VemVarArray(1.5)));
  EXPECT_EQ(para.Width, 640);
  EXPECT_EQ(para.Height, 480);
  EXPECT_TRUE(Same(para.Rows, VemVarArray(2)));
  EXPECT_TRUE(Same(para.FirstColumns, VemVarArray(3)));
  EXPECT_TRUE(Same(para.LastColumns, VemVarArray(4)));
  EXPECT_EQ(para.Type, VemROITorus);
}

TEST(IVemROIArrayPara, DefaultMakesEmptyArraysAndNothingElse) {
  alignas(IVemROIArrayPara) unsigned char memory[sizeof(IVemROIArrayPara)];
  std::memset(memory, 0x5a, sizeof(memory));
  // Hides from the compiler that the memory was written before the object lived in it.
  unsigned char* place = memory;
  asm volatile("" : "+r"(place) : : "memory");
  auto* para = new (place) IVemROIArrayPara;
  asm volatile("" : "+r"(para) : : "memory");
  EXPECT_EQ(para->Width, 0x5a5a5a5a);
  EXPECT_EQ(para->Height, 0x5a5a5a5a);
  EXPECT_EQ(static_cast<int>(para->Type), 0x5a5a5a5a);
  EXPECT_EQ(para->Params.Length(), 0);
  EXPECT_EQ(para->Rows.Length(), 0);
  EXPECT_EQ(para->FirstColumns.Length(), 0);
  EXPECT_EQ(para->LastColumns.Length(), 0);
  para->~IVemROIArrayPara();
}

TEST(IVemROIArrayPara, CopiesTakeAllFields) {
  IVemROIArrayPara source = Filled();
  const IVemROIArrayPara copy(source);
  IVemROIArrayPara assigned;
  EXPECT_EQ(&(assigned = source), &assigned);
  for (VemVarArray* array :
       {&source.Params, &source.Rows, &source.FirstColumns, &source.LastColumns}) {
    (*array)[0] = VemVar(99);
  }
  source.Width = source.Height = 99;
  source.Type = VemROIMask;
  ExpectFilled(copy);
  ExpectFilled(assigned);
  const IVemROIArrayPara& itself = assigned;
  assigned = itself;
  ExpectFilled(assigned);
}

TEST(IVemROIArrayPara, IsMaskByTypeAlone) {
  IVemROIArrayPara para = Filled();
  for (int type = -1; type <= 13; ++type) {
    para.Type = static_cast<VemROIType>(type);
    EXPECT_EQ(para.IsMask(), type == 11) << type;
  }
}

}  // namespace
