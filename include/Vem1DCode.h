#ifndef VEM_1D_CODE_H_
#define VEM_1D_CODE_H_

#include <cstdint>

#include "VemExport.h"
#include "VemPointArray.h"
#include "VemVar.h"

/// A linear barcode, as a code reader reports it.
///
/// The fields stand in the order in which readers write them; the layout is part of the binary
/// interface. The library gives them no meaning. Numbers and words have no value until somebody
/// writes them: the constructor leaves them as the memory was.
///
/// Copies are deep, field by field; a record must not be assigned to itself while it holds a text.
/// What throws is the allocator alone. Use an object from one thread at a time; reading it from
/// several at once is safe.
class VEM_EXPORT Vem1DCode {
 public:
  Vem1DCode();  ///< No value, no points; the numbers are left unwritten.
  Vem1DCode(const Vem1DCode& other) = default;             ///< A deep copy.
  Vem1DCode& operator=(const Vem1DCode& other) = default;  ///< Copies every field.
  ~Vem1DCode();

  int Number;            ///< Unwritten at first.
  VemVar Value;          ///< VemVarNone at first.
  VemPointArray Points;  ///< Empty at first.
  std::uint64_t Word0;   ///< 64 plain bits, copied as they are; unwritten at first, as all words.
  std::uint64_t Word1;   ///< 64 plain bits.
  std::uint64_t Word2;   ///< 64 plain bits.
  std::uint64_t Word3;   ///< 64 plain bits.
  std::uint64_t Word4;   ///< 64 plain bits.
  std::uint64_t Word5;   ///< 64 plain bits.
  std::uint64_t Word6;   ///< 64 plain bits.
  std::uint64_t Word7;   ///< 64 plain bits.
};

#endif  // VEM_1D_CODE_H_
