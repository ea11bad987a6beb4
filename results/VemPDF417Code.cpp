#include "VemPDF417Code.h"

#include <cstddef>

// Readers write these fields in place.
static_assert(offsetof(VemPDF417Code, Number) == 0);
static_assert(offsetof(VemPDF417Code, Value) == 8);
static_assert(offsetof(VemPDF417Code, Polarity) == 24);
static_assert(offsetof(VemPDF417Code, Value2) == 40);
static_assert(offsetof(VemPDF417Code, Count0) == 56);
static_assert(offsetof(VemPDF417Code, Count1) == 60);
static_assert(offsetof(VemPDF417Code, Count2) == 64);
static_assert(offsetof(VemPDF417Code, Real0) == 72);
static_assert(offsetof(VemPDF417Code, Real1) == 80);
static_assert(offsetof(VemPDF417Code, Real2) == 88);
static_assert(offsetof(VemPDF417Code, Points) == 96);
static_assert(offsetof(VemPDF417Code, Word0) == 104);
static_assert(offsetof(VemPDF417Code, Word1) == 112);
static_assert(offsetof(VemPDF417Code, Word2) == 120);
static_assert(offsetof(VemPDF417Code, Word3) == 128);
static_assert(offsetof(VemPDF417Code, Word4) == 136);
static_assert(offsetof(VemPDF417Code, Word5) == 144);
static_assert(sizeof(VemPDF417Code) == 152);

// Numbers and words stay as the memory was: this is meant.
VemPDF417Code::VemPDF417Code() { Polarity = VemVar("BlackOnWhite"); }

VemPDF417Code::~VemPDF417Code() = default;
