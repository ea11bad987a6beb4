#ifndef VEM_FONT_H_
#define VEM_FONT_H_

#include "VemExport.h"
#include "VemVar.h"

/// How a text overlay is to be written. The library carries these values and gives them no meaning.
///
/// What throws is the allocator alone. Use a font from one thread at a time; reading it from
/// several at once is safe.
struct VEM_EXPORT VemFont {
  /// "Times", size 9, weight 1, the second flag 1 and the others 0.
  VemFont();
  /// A copy of the name, the size, weight 500, all flags 0: not the weight and flags of VemFont().
  VemFont(VemVar& name, long size);
  VemFont(const VemFont& other);  ///< Copies all fields, the name deeply.
  /// Copies all fields, the name deeply. Assigned to itself, a font stays as it is.
  VemFont& operator=(const VemFont& other);
  ~VemFont();

  VemVar Name;          ///< The name of the typeface.
  long Size;            ///< The size of the letters.
  long Weight;          ///< The weight of the letters.
  unsigned char Flag0;  ///< An attribute that a text overlay does not keep.
  unsigned char Flag1;  ///< An attribute.
  unsigned char Flag2;  ///< An attribute.
  unsigned char Flag3;  ///< An attribute.
};

#endif  // VEM_FONT_H_
