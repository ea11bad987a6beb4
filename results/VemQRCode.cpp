#include "VemQRCode.h"

#include <cstddef>

// Readers write these fields in place.
static_assert(offsetof(VemQRCode, Number) == 0);
static_assert(offsetof(VemQRCode, Value) == 8);
static_assert(offsetof(VemQRCode, SymbolType) == 24);
static_assert(offsetof(VemQRCode, Polarity) == 40);
static_assert(offsetof(VemQRCode, Value3) == 56);
static_assert(offsetof(VemQRCode, Value4) == 72);
static_assert(offsetof(VemQRCode, Count0) == 88);
static_assert(offsetof(VemQRCode, Count1) == 92);
static_assert(offsetof(VemQRCode, Count2) == 96);
static_assert(offsetof(VemQRCode, Count3) == 100);
static_assert(offsetof(VemQRCode, Real0) == 104);
static_assert(offsetof(VemQRCode, Real1) == 112);
static_assert(offsetof(VemQRCode, Points0) == 120);
static_assert(offsetof(VemQRCode, Points1) == 128);
static_assert(offsetof(VemQRCode, Points2) == 136);
static_assert(offsetof(VemQRCode, Word0) == 144);
static_assert(offsetof(VemQRCode, Word1) == 152);
static_assert(offsetof(VemQRCode, Word2) == 160);
static_assert(offsetof(VemQRCode, Word3) == 168);
static_assert(offsetof(VemQRCode, Word4) == 176);
static_assert(offsetof(VemQRCode, Word5) == 184);
static_assert(offsetof(VemQRCode, Word6) == 192);
static_assert(sizeof(VemQRCode) == 200);

// Numbers and words stay as the memory was: this is meant.
VemQRCode::VemQRCode() {
  SymbolType = VemVar("QR Mode 2");
  Polarity = VemVar("BlackOnWhite");
}

VemQRCode::~VemQRCode() = default;
