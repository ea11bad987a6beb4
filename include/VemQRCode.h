#ifndef VEM_QR_CODE_H_
#define VEM_QR_CODE_H_

#include <cstdint>

#include "VemExport.h"
#include "VemPointArray.h"
#include "VemVar.h"

/// A QR symbol, as a code reader reports it.
///
/// The fields stand in the order in which readers write them; the layout is part of the binary
/// interface. The library gives a meaning to none but SymbolType and Polarity. Numbers and words
/// have no value until somebody writes them: the constructor leaves them as the memory was.
///
/// Copies are deep, field by field; a record must not be assigned to itself, since it holds texts.
/// What throws is the allocator alone. Use an object from one thread at a time; reading it from
/// several at once is safe.
class VEM_EXPORT VemQRCode {
 public:
  VemQRCode();  ///< Writes SymbolType and Polarity; the numbers are left unwritten.
  VemQRCode(const VemQRCode& other) = default;             ///< A deep copy.
  VemQRCode& operator=(const VemQRCode& other) = default;  ///< Copies every field.
  ~VemQRCode();

  int Number;             ///< Unwritten at first.
  VemVar Value;           ///< VemVarNone at first.
  VemVar SymbolType;      ///< "QR Mode 2" at first.
  VemVar Polarity;        ///< "BlackOnWhite" at first.
  VemVar Value3;          ///< VemVarNone at first.
  VemVar Value4;          ///< VemVarNone at first.
  int Count0;             ///< Unwritten at first.
  int Count1;             ///< Unwritten at first.
  int Count2;             ///< Unwritten at first.
  int Count3;             ///< Unwritten at first.
  double Real0;           ///< Unwritten at first.
  double Real1;           ///< Unwritten at first.
  VemPointArray Points0;  ///< Empty at first.
  VemPointArray Points1;  ///< Empty at first.
  VemPointArray Points2;  ///< Empty at first.
  std::uint64_t Word0;    ///< 64 plain bits, copied as they are; unwritten at first, as all words.
  std::uint64_t Word1;    ///< 64 plain bits.
  std::uint64_t Word2;    ///< 64 plain bits.
  std::uint64_t Word3;    ///< 64 plain bits.
  std::uint64_t Word4;    ///< 64 plain bits.
  std::uint64_t Word5;    ///< 64 plain bits.
  std::uint64_t Word6;    ///< 64 plain bits.
};

#endif  // VEM_QR_CODE_H_
