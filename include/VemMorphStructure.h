#ifndef VEM_MORPH_STRUCTURE_H_
#define VEM_MORPH_STRUCTURE_H_

/// @file
/// The structure of a morphological operation and its shapes.

#include "VemExport.h"

/// The kind of a structuring element. Every other value that is not negative is a kind as well,
/// stored and handed back without a meaning here.
enum VemMorphStructureType : int {
  VemMorphStructureCustom = 3,  ///< told by a table of values
  VemMorphStructureUnset = 4    ///< a record that nobody has set
};

/// The structuring element of a morphology operation: its size, its anchor, its kind and, for
/// VemMorphStructureCustom, a table of `rows * cols` values, row after row.
///
/// The record does no morphology. Arguments name the rows before the columns, but the anchor's
/// column (x) before its row (y).
///
/// A copy of a custom element is no faithful one: see the copy constructor. What throws is the
/// allocator alone. Use an object from one thread at a time; reading it from several at once is
/// safe.
class VEM_EXPORT VemMorphStructure {
 public:
  VemMorphStructure();  ///< 0 by 0, anchor (0, 0), VemMorphStructureUnset, no table.
  /// Copies size, anchor and kind. Of a custom table only the first quarter comes along, `rows *
  /// cols` bytes; the other values are indeterminate. Read a custom table from the object on which
  /// CreateElement was called. Raises `std::bad_array_new_length` where `rows * cols` overflows to
  /// a negative number.
  VemMorphStructure(const VemMorphStructure& other);
  /// As the copy constructor, over the old element. Assigned to itself, a custom element loses all
  /// its values. A record that held a table and becomes another kind keeps the old table's pointer,
  /// no longer valid. After a throw the record has its new size, anchor and kind, and no table of
  /// its own.
  VemMorphStructure& operator=(const VemMorphStructure& other);
  ~VemMorphStructure();

  /// Sets the element and returns 0, or an error code:
  ///
  /// - 1203020: `newRows` or `newCols` below 1, an anchor below -1, or a negative `newType`;
  /// - 1203021: `newAnchorY` not below `newRows`;
  /// - 1203022: `newAnchorX` not below `newCols`.
  ///
  /// These leave the record unchanged, and are tested in this order. An anchor of -1 is stored as
  /// it is. For VemMorphStructureCustom the `newRows * newCols` integers at `newValues` are copied;
  /// null gives 1203020 too, but the record has its new size and kind by then and has lost its
  /// table. For any other kind `newValues` is ignored. It must not be the record's own table, which
  /// is released first.
  long CreateElement(int newRows, int newCols, int newAnchorX, int newAnchorY,
                     VemMorphStructureType newType, int* newValues);
  /// Writes the element to the six pointers, none of which may be null, and returns 0.
  ///
  /// `*tableOut` is the record's own table, no copy: it lives until the next CreateElement,
  /// assignment or the record's end. It means something for VemMorphStructureCustom alone: once the
  /// record has lost a table it may be any pointer, which must not be followed.
  long QueryInfo(int* rowsOut, int* colsOut, int* anchorXOut, int* anchorYOut,
                 VemMorphStructureType* typeOut, int** tableOut);

 private:
  void CopyTable(const VemMorphStructure& other);
  void ReleaseTable();

  int cols;
  int rows;
  int anchorX;
  int anchorY;
  int* values;
  VemMorphStructureType type;
  bool ownsValues_;
};

#endif  // VEM_MORPH_STRUCTURE_H_
