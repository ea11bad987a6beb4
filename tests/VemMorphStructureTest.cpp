#include "VemMorphStructure.h"

#include <malloc.h>

#include <algorithm>
#include <climits>
#include <csignal>
#include <cstddef>
#include <cstring>
#include <new>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "support/HeapCounter.h"

namespace {

using Structure = VemMorphStructure;
using Table = std::vector<int>;

static_assert(sizeof(Structure) == 32 && !std::is_polymorphic_v<Structure>);
static_assert(sizeof(VemMorphStructureType) == sizeof(int));
static_assert(VemMorphStructureCustom == 3 && VemMorphStructureUnset == 4);
static_assert(std::is_same_v<decltype(&Structure::CreateElement),
                             long (Structure::*)(int, int, int, int, VemMorphStructureType, int*)>);
static_assert(
    std::is_same_v<decltype(&Structure::QueryInfo),
                   long (Structure::*)(int*, int*, int*, int*, VemMorphStructureType*, int**)>);
static_assert(
    std::is_same_v<decltype(&Structure::operator=), Structure& (Structure::*)(const Structure&)>);

VemMorphStructureType Type(int value) { return static_cast<VemMorphStructureType>(value); }

struct Info {
  int rows = -7, cols = -7, anchorX = -7, anchorY = -7;
  VemMorphStructureType type = Type(-7);
  int* values = nullptr;
};

Info InfoOf(Structure& structure) {
  Info info;
  EXPECT_EQ(structure.QueryInfo(&info.rows, &info.cols, &info.anchorX, &info.anchorY, &info.type,
                                &info.values),
            0);
  return info;
}

void ExpectInfo(Structure& structure, int rows, int cols, int anchorX, int anchorY, int type) {
  const Info info = InfoOf(structure);
  EXPECT_EQ(info.rows, rows);
  EXPECT_EQ(info.cols, cols);
  EXPECT_EQ(info.anchorX, anchorX);
  EXPECT_EQ(info.anchorY, anchorY);
  EXPECT_EQ(info.type, type);
}

Table TableOf(Structure& structure) {
  const Info info = InfoOf(structure);
  return Table(info.values, info.values + info.rows * info.cols);
}

// Values of which every byte differs from its neighbours.
Table Values(int count) {
  Table values;
  for (int i = 0; i < count; ++i) values.push_back(0x01020304 + i * 0x10101);
  return values;
}

Structure Custom(int rows, int cols) {
  Structure structure;
  Table values = Values(rows * cols);
  EXPECT_EQ(structure.CreateElement(rows, cols, 0, 0, VemMorphStructureCustom, values.data()), 0);
  return structure;
}

TEST(VemMorphStructure, DefaultIsUnset) {
  Structure structure;
  ExpectInfo(structure, 0, 0, 0, 0, VemMorphStructureUnset);
  EXPECT_EQ(InfoOf(structure).values, nullptr);
}

// The fields one by one, as a caller who knows the layout finds them.
TEST(VemMorphStructure, FieldsStandColumnsFirst) {
  Structure structure;
  ASSERT_EQ(structure.CreateElement(3, 5, 4, 2, Type(1), nullptr), 0);
  int head[4];
  std::memcpy(head, static_cast<const void*>(&structure), sizeof(head));
  EXPECT_EQ(Table(head, head + 4), Table({5, 3, 4, 2}));
  const char* const bytes = reinterpret_cast<const char*>(&structure);
  int type;
  std::memcpy(&type, bytes + 24, sizeof(type));
  EXPECT_EQ(type, 1);

  Table values = Values(4);
  ASSERT_EQ(structure.CreateElement(2, 2, 0, 0, VemMorphStructureCustom, values.data()), 0);
  int* table;
  std::memcpy(&table, bytes + 16, sizeof(table));
  EXPECT_EQ(table, InfoOf(structure).values);
}

struct CreateCase {
  const char* name;
  int rows, cols, anchorX, anchorY, type;
  long expected;
};

const CreateCase kCreateCases[] = {
    {"LastColumnAndRow", 3, 5, 4, 2, 0, 0},
    {"AnchorOfMinusOne", 3, 5, -1, -1, 0, 0},
    {"Smallest", 1, 1, 0, 0, 0, 0},
    {"Largest", INT_MAX, INT_MAX, INT_MAX - 1, INT_MAX - 1, 0, 0},
    {"Type1", 3, 5, 1, 1, 1, 0},
    {"Type2", 3, 5, 1, 1, 2, 0},
    {"Unset", 3, 5, 1, 1, 4, 0},
    {"TypeBeyondAll", 3, 5, 1, 1, INT_MAX, 0},

    {"NoRows", 0, 5, 0, 0, 0, 1203020},
    {"NoColumns", 3, 0, 0, 0, 0, 1203020},
    {"NegativeRows", -3, 5, 0, 0, 0, 1203020},
    {"NegativeColumns", 3, INT_MIN, 0, 0, 0, 1203020},
    {"AnchorXBelowMinusOne", 3, 5, -2, 0, 0, 1203020},
    {"AnchorYBelowMinusOne", 3, 5, 0, -2, 0, 1203020},
    {"NegativeType", 3, 5, 0, 0, -1, 1203020},
    {"AnchorYOnTheRows", 3, 5, 4, 3, 0, 1203021},
    {"AnchorXOnTheColumns", 3, 5, 5, 2, 0, 1203022},
    {"BothAnchorsTooLarge", 3, 5, 5, 3, 0, 1203021},
    {"NoRowsBeforeTheAnchors", 0, 5, 9, 9, 0, 1203020},
    {"NegativeTypeBeforeTheAnchors", 3, 5, 9, 9, -1, 1203020},
    {"AnchorsAreTestedForACustomKindToo", 3, 5, 5, 0, 3, 1203022},
};

TEST(VemMorphStructure, CreateElementTestsItsArguments) {
  for (const CreateCase& c : kCreateCases) {
    SCOPED_TRACE(c.name);
    Structure structure = Custom(2, 2);
    Structure unset;
    for (Structure* target : {&structure, &unset}) {
      EXPECT_EQ(target->CreateElement(c.rows, c.cols, c.anchorX, c.anchorY, Type(c.type), nullptr),
                c.expected);
    }
    if (c.expected == 0) {
      ExpectInfo(structure, c.rows, c.cols, c.anchorX, c.anchorY, c.type);
      ExpectInfo(unset, c.rows, c.cols, c.anchorX, c.anchorY, c.type);
      EXPECT_EQ(InfoOf(unset).values, nullptr);
    } else {
      ExpectInfo(structure, 2, 2, 0, 0, VemMorphStructureCustom);
      EXPECT_EQ(InfoOf(structure).values[0], Values(1)[0]);
      ExpectInfo(unset, 0, 0, 0, 0, VemMorphStructureUnset);
    }
  }
}

TEST(VemMorphStructure, OnlyTheCustomKindTakesATable) {
  Table values = Values(15);
  for (const int type : {0, 1, 2, 4, 5, 1000}) {
    Structure structure;
    EXPECT_EQ(structure.CreateElement(3, 5, 1, 1, Type(type), values.data()), 0);
    EXPECT_EQ(InfoOf(structure).values, nullptr) << type;
  }
}

TEST(VemMorphStructure, CustomTableIsACopyOfTheCallers) {
  Structure structure;
  Table values = Values(15);
  EXPECT_EQ(structure.CreateElement(3, 5, -1, 2, VemMorphStructureCustom, values.data()), 0);
  ExpectInfo(structure, 3, 5, -1, 2, VemMorphStructureCustom);
  EXPECT_NE(InfoOf(structure).values, values.data());
  std::fill(values.begin(), values.end(), 9);
  EXPECT_EQ(TableOf(structure), Values(15));

  InfoOf(structure).values[14] = 99;
  EXPECT_EQ(TableOf(structure)[14], 99);
  EXPECT_EQ(values[14], 9);
}

TEST(VemMorphStructure, ANewElementReplacesTheOldOne) {
  Structure structure = Custom(2, 2);
  Table values(12, -4);
  EXPECT_EQ(structure.CreateElement(4, 3, 1, 2, VemMorphStructureCustom, values.data()), 0);
  ExpectInfo(structure, 4, 3, 1, 2, VemMorphStructureCustom);
  EXPECT_EQ(TableOf(structure), values);
}

TEST(VemMorphStructure, CustomKindWithoutATableIsAnErrorThatSticks) {
  Structure structure;
  EXPECT_EQ(structure.CreateElement(3, 5, 1, 1, VemMorphStructureCustom, nullptr), 1203020);
  ExpectInfo(structure, 3, 5, 1, 1, VemMorphStructureCustom);
  EXPECT_EQ(InfoOf(structure).values, nullptr);

  Structure full = Custom(2, 2);
  EXPECT_EQ(full.CreateElement(3, 5, 1, 1, VemMorphStructureCustom, nullptr), 1203020);
  ExpectInfo(full, 3, 5, 1, 1, VemMorphStructureCustom);
  EXPECT_NE(InfoOf(full).values, nullptr);
}

// The pointer of a lost table stays, and none of these releases it again.
TEST(VemMorphStructure, ALostTableIsReleasedOnce) {
  Structure structure = Custom(2, 2);
  const int* const table = InfoOf(structure).values;
  EXPECT_EQ(structure.CreateElement(3, 3, 0, 0, Type(0), nullptr), 0);
  EXPECT_EQ(InfoOf(structure).values, table);
  EXPECT_EQ(structure.CreateElement(3, 3, 0, 0, Type(1), nullptr), 0);
  structure = Structure();
  EXPECT_EQ(InfoOf(structure).values, table);

  Table values = Values(4);
  EXPECT_EQ(structure.CreateElement(2, 2, 0, 0, VemMorphStructureCustom, values.data()), 0);
  EXPECT_EQ(TableOf(structure), values);
  EXPECT_EQ(structure.CreateElement(2, 2, 0, 0, VemMorphStructureCustom, nullptr), 1203020);
  EXPECT_EQ(structure.CreateElement(2, 2, 0, 0, VemMorphStructureCustom, values.data()), 0);
  structure = Structure();
  structure = Custom(1, 3);
  ExpectInfo(structure, 1, 3, 0, 0, VemMorphStructureCustom);
}

TEST(VemMorphStructure, CopiesOfOtherKindsHaveNoTable) {
  Structure source = Custom(2, 2);
  ASSERT_EQ(source.CreateElement(3, 5, 4, -1, Type(7), nullptr), 0);
  Structure copy(source);
  ExpectInfo(copy, 3, 5, 4, -1, 7);
  EXPECT_EQ(InfoOf(copy).values, nullptr);
  Structure target;
  EXPECT_EQ(&(target = source), &target);
  ExpectInfo(target, 3, 5, 4, -1, 7);
  EXPECT_EQ(InfoOf(target).values, nullptr);
}

// Rows and columns both count: 15 bytes are three values and three quarters of a fourth.
TEST(VemMorphStructure, TheQuarterIsTheProductOfRowsAndColumns) {
  const Table values = Values(15);
  for (const auto& size : {std::make_pair(3, 5), std::make_pair(5, 3), std::make_pair(1, 15)}) {
    SCOPED_TRACE(testing::PrintToString(size));
    const Structure source = Custom(size.first, size.second);
    Structure copy(source);
    Structure target = Custom(5, 5);
    target = source;
    for (Structure* other : {&copy, &target}) {
      EXPECT_EQ(std::memcmp(InfoOf(*other).values, values.data(), 15), 0);
    }
  }
}

TEST(VemMorphStructure, CustomCopiesHoldTheFirstQuarter) {
  Table values = Values(4);
  Structure source;
  ASSERT_EQ(source.CreateElement(2, 2, 1, -1, VemMorphStructureCustom, values.data()), 0);
  Structure copy(source);
  Structure target = Custom(5, 5);
  target = source;
  for (Structure* other : {&copy, &target}) {
    ExpectInfo(*other, 2, 2, 1, -1, VemMorphStructureCustom);
    EXPECT_NE(InfoOf(*other).values, InfoOf(source).values);
    EXPECT_EQ(InfoOf(*other).values[0], values[0]);
    InfoOf(*other).values[0] = 5;
  }
  EXPECT_EQ(TableOf(source), values);
}

// Makes the allocator fill what it hands out, so that a test sees what nobody has written.
class FilledMemory {
 public:
  FilledMemory() { mallopt(M_PERTURB, 0x5a); }
  FilledMemory(const FilledMemory&) = delete;
  FilledMemory& operator=(const FilledMemory&) = delete;
  ~FilledMemory() { mallopt(M_PERTURB, 0); }
};

TEST(VemMorphStructure, CustomCopiesHoldNoMoreThanTheFirstQuarter) {
  constexpr int kRows = 61;
  constexpr int kCols = 99;
  constexpr std::size_t kQuarter = kRows * kCols;  // In bytes, and no multiple of four.
  const Table values = Values(kRows * kCols);
  Structure source = Custom(kRows, kCols);
  const FilledMemory filled;
  Structure copy(source);
  Structure target;
  target = source;
  for (Structure* other : {&copy, &target}) {
    const int* const table = InfoOf(*other).values;
    EXPECT_EQ(std::memcmp(table, values.data(), kQuarter), 0);
    int taken = 0;
    for (std::size_t i = kQuarter / sizeof(int); i < values.size(); ++i) {
      if (table[i] == values[i]) ++taken;
    }
    const auto byteAt = [](const int* list, std::size_t at) {
      return reinterpret_cast<const unsigned char*>(list)[at];
    };
    if (byteAt(table, kQuarter) == byteAt(values.data(), kQuarter)) ++taken;
    EXPECT_EQ(taken, 0);
  }
}

// There is nothing to copy from, and nothing is.
TEST(VemMorphStructure, CopiesOfACustomElementWithoutATable) {
  Structure never;
  ASSERT_EQ(never.CreateElement(2, 2, 0, 0, VemMorphStructureCustom, nullptr), 1203020);
  Structure lost = Custom(2, 2);
  ASSERT_EQ(lost.CreateElement(2, 2, 0, 0, VemMorphStructureCustom, nullptr), 1203020);
  for (const Structure* source : {&never, &lost}) {
    Structure copy(*source);
    ExpectInfo(copy, 2, 2, 0, 0, VemMorphStructureCustom);
    InfoOf(copy).values[3] = 1;
    Structure target = Custom(3, 3);
    target = *source;
    ExpectInfo(target, 2, 2, 0, 0, VemMorphStructureCustom);
    InfoOf(target).values[3] = 1;
  }
}

TEST(VemMorphStructure, SelfAssignmentKeepsAllButTheTable) {
  Structure other;
  ASSERT_EQ(other.CreateElement(3, 5, 4, 2, Type(1), nullptr), 0);
  const Structure& otherAlias = other;
  other = otherAlias;
  ExpectInfo(other, 3, 5, 4, 2, 1);

  Structure custom = Custom(2, 2);
  const Structure& alias = custom;
  EXPECT_EQ(&(custom = alias), &custom);
  ExpectInfo(custom, 2, 2, 0, 0, VemMorphStructureCustom);
  for (int i = 0; i < 4; ++i) InfoOf(custom).values[i] = i;
  EXPECT_EQ(TableOf(custom), Table({0, 1, 2, 3}));
}

// 65,536 by 65,535 is a negative number of 32 bits; 65,536 by 65,536 is 0.
TEST(VemMorphStructure, SizesOfCopiesAreNumbersOf32Bits) {
  Structure source;
  ASSERT_EQ(source.CreateElement(65536, 65535, 0, 0, VemMorphStructureCustom, nullptr), 1203020);
  EXPECT_THROW(Structure copy(source), std::bad_array_new_length);
  Structure target = Custom(2, 2);
  EXPECT_THROW(target = source, std::bad_array_new_length);
  ExpectInfo(target, 65536, 65535, 0, 0, VemMorphStructureCustom);
  EXPECT_EQ(target.CreateElement(3, 5, 4, 2, Type(1), nullptr), 0);

  ASSERT_EQ(source.CreateElement(65536, 65536, 0, 0, VemMorphStructureCustom, nullptr), 1203020);
  Structure copy(source);
  ExpectInfo(copy, 65536, 65536, 0, 0, VemMorphStructureCustom);
}

#ifndef VEM_SANITIZED
// A table of four million million bytes: nothing is raised, and what comes back is written to.
TEST(VemMorphStructure, ATableBeyondMemoryFaults) {
  Structure structure;
  Table values = Values(1);
  EXPECT_EXIT(
      structure.CreateElement(1 << 20, 1 << 20, 0, 0, VemMorphStructureCustom, values.data()),
      testing::KilledBySignal(SIGSEGV), "");
}
#endif

TEST(VemMorphStructure, AssignmentGivesTheOldTableBack) {
  VemMorphStructure source;
  int values[] = {1, 2, 3, 4};
  ASSERT_EQ(source.CreateElement(2, 2, -1, -1, VemMorphStructureCustom, values), 0);
  const HeapCounter heap;
  {
    VemMorphStructure target(source);
    target = source;
  }
  EXPECT_EQ(heap.Kept(), 0);
}

}  // namespace
