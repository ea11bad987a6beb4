#include "Vem1DCodeArray.h"

#include "values/TypedArray.h"

// In range, nothing of the array is read; out of range, the memory at that position is. This is
// meant, and no other array does it.
template <>
Vem1DCode typed_array::ElementCopy(const std::vector<Vem1DCode>& elements, int index) {
  return InRange(elements, index) ? Vem1DCode() : *(elements.data() + index);
}

#define VEM_ARRAY Vem1DCodeArray
#define VEM_ELEMENT Vem1DCode
#define VEM_APPEND_ALL ReserveAndAppendAll
#include "values/TypedArrayMembers.inc"
