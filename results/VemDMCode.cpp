#include "VemDMCode.h"

#include <cstddef>

// Readers write these fields in place.
static_assert(offsetof(VemDMCode, Number) == 0);
static_assert(offsetof(VemDMCode, Value) == 8);
static_assert(offsetof(VemDMCode, SymbolType) == 24);
static_assert(offsetof(VemDMCode, Polarity) == 40);
static_assert(offsetof(VemDMCode, Value3) == 56);
static_assert(offsetof(VemDMCode, Value4) == 72);
static_assert(offsetof(VemDMCode, Count0) == 88);
static_assert(offsetof(VemDMCode, Count1) == 92);
static_assert(offsetof(VemDMCode, Count2) == 96);
static_assert(offsetof(VemDMCode, Real0) == 104);
static_assert(offsetof(VemDMCode, Real1) == 112);
static_assert(offsetof(VemDMCode, Points0) == 120);
static_assert(offsetof(VemDMCode, Points1) == 128);
static_assert(offsetof(VemDMCode, Points2) == 136);
static_assert(offsetof(VemDMCode, Word0) == 144);
static_assert(offsetof(VemDMCode, Word1) == 152);
static_assert(offsetof(VemDMCode, Word2) == 160);
static_assert(offsetof(VemDMCode, Word3) == 168);
static_assert(offsetof(VemDMCode, Word4) == 176);
static_assert(offsetof(VemDMCode, Word5) == 184);
static_assert(sizeof(VemDMCode) == 192);

// Numbers and words stay as the memory was: this is meant.
VemDMCode::VemDMCode() {
  SymbolType = VemVar("ECC-200 ");
  Polarity = VemVar("BlackOnWhite");
}

VemDMCode::~VemDMCode() = default;
