#ifndef VEM_V_CODE_H_
#define VEM_V_CODE_H_

#include "VemExport.h"
#include "VemPointArray.h"
#include "VemVar.h"

/// A V code, as a code reader reports it.
///
/// The fields stand in the order in which readers write them; the layout is part of the binary
/// interface. The library gives them no meaning. Numbers have no value until somebody writes them:
/// the constructor leaves them as the memory was. Unlike the other codes, it has no leading number,
/// no words, and reals of 32 bits.
///
/// Copies are deep, field by field; a record must not be assigned to itself while it holds a text.
/// What throws is the allocator alone. Use an object from one thread at a time; reading it from
/// several at once is safe.
class VEM_EXPORT VemVCode {
 public:
  VemVCode();  ///< No values, no points; the numbers are left unwritten.
  VemVCode(const VemVCode& other) = default;             ///< A deep copy.
  VemVCode& operator=(const VemVCode& other) = default;  ///< Copies every field.
  ~VemVCode();

  int Count0;            ///< Unwritten at first.
  int Count1;            ///< Unwritten at first.
  int Count2;            ///< Unwritten at first.
  float Real0;           ///< Unwritten at first.
  float Real1;           ///< Unwritten at first.
  float Real2;           ///< Unwritten at first.
  VemVar Value0;         ///< VemVarNone at first.
  VemVar Value1;         ///< VemVarNone at first.
  VemVar Value2;         ///< VemVarNone at first.
  VemVar Value3;         ///< VemVarNone at first.
  VemPointArray Points;  ///< Empty at first.
};

#endif  // VEM_V_CODE_H_
