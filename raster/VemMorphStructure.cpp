#include "VemMorphStructure.h"

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>

#include "values/Processor.h"

VemMorphStructure::VemMorphStructure()
    : cols(0),
      rows(0),
      anchorX(0),
      anchorY(0),
      values(nullptr),
      type(VemMorphStructureUnset),
      ownsValues_(false) {
  static_assert(offsetof(VemMorphStructure, cols) == 0);
  static_assert(offsetof(VemMorphStructure, rows) == 4);
  static_assert(offsetof(VemMorphStructure, anchorX) == 8);
  static_assert(offsetof(VemMorphStructure, anchorY) == 12);
  static_assert(offsetof(VemMorphStructure, values) == 16);
  static_assert(offsetof(VemMorphStructure, type) == 24);
  static_assert(sizeof(VemMorphStructure) == 32, "the flag fits into what was padding");
}

VemMorphStructure::VemMorphStructure(const VemMorphStructure& other) : VemMorphStructure() {
  *this = other;
}

VemMorphStructure& VemMorphStructure::operator=(const VemMorphStructure& other) {
  rows = other.rows;
  cols = other.cols;
  anchorX = other.anchorX;
  anchorY = other.anchorY;
  type = other.type;
  ReleaseTable();
  if (type == VemMorphStructureCustom) CopyTable(other);
  return *this;
}

VemMorphStructure::~VemMorphStructure() { ReleaseTable(); }

long VemMorphStructure::CreateElement(int newRows, int newCols, int newAnchorX, int newAnchorY,
                                      VemMorphStructureType newType, int* newValues) {
  constexpr long kBadArgument = 1203020;
  constexpr long kBadAnchorRow = 1203021;
  constexpr long kBadAnchorColumn = 1203022;
  if (newRows < 1 || newCols < 1 || newAnchorX < -1 || newAnchorY < -1 || newType < 0) {
    return kBadArgument;
  }
  if (newRows <= newAnchorY) return kBadAnchorRow;
  if (newCols <= newAnchorX) return kBadAnchorColumn;

  rows = newRows;
  cols = newCols;
  anchorX = newAnchorX;
  anchorY = newAnchorY;
  type = newType;
  ReleaseTable();
  if (type != VemMorphStructureCustom) return 0;
  if (newValues == nullptr) return kBadArgument;

  // From malloc, and yet released with delete[]; a failure is not looked for. Both are meant.
  const std::size_t size =
      static_cast<std::size_t>(rows) * static_cast<std::size_t>(cols) * sizeof(int);
  values = static_cast<int*>(std::malloc(size));
  ownsValues_ = true;
  std::memcpy(values, newValues, size);
  return 0;
}

long VemMorphStructure::QueryInfo(int* rowsOut, int* colsOut, int* anchorXOut, int* anchorYOut,
                                  VemMorphStructureType* typeOut, int** tableOut) {
  *rowsOut = rows;
  *colsOut = cols;
  *anchorXOut = anchorX;
  *anchorYOut = anchorY;
  *typeOut = type;
  *tableOut = values;
  return 0;
}

// Copies as many bytes as the table has values, so a quarter of it: this is meant. A record without
// a table of its own, or this record itself, has nothing to copy from.
void VemMorphStructure::CopyTable(const VemMorphStructure& other) {
  const int product = WrapMultiply(rows, cols);
  // Compilers differ in what they throw for such a length.
  if (product < 0) throw std::bad_array_new_length();
  const auto count = static_cast<std::size_t>(product);
  int* const table = new int[count];
  if (other.ownsValues_) std::memcpy(table, other.values, count);
  values = table;
  ownsValues_ = true;
}

// The pointer stays as it is, no longer valid; the flag keeps it from being released again.
void VemMorphStructure::ReleaseTable() {
  if (ownsValues_) delete[] values;
  ownsValues_ = false;
}
