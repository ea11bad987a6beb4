#include "Vem1DCode.h"

#include <cstddef>

// Readers write these fields in place.
static_assert(offsetof(Vem1DCode, Number) == 0);
static_assert(offsetof(Vem1DCode, Value) == 8);
static_assert(offsetof(Vem1DCode, Points) == 24);
static_assert(offsetof(Vem1DCode, Word0) == 32);
static_assert(offsetof(Vem1DCode, Word1) == 40);
static_assert(offsetof(Vem1DCode, Word2) == 48);
static_assert(offsetof(Vem1DCode, Word3) == 56);
static_assert(offsetof(Vem1DCode, Word4) == 64);
static_assert(offsetof(Vem1DCode, Word5) == 72);
static_assert(offsetof(Vem1DCode, Word6) == 80);
static_assert(offsetof(Vem1DCode, Word7) == 88);
static_assert(sizeof(Vem1DCode) == 96);

// Numbers and words stay as the memory was: this is meant.
Vem1DCode::Vem1DCode() {}

Vem1DCode::~Vem1DCode() = default;
