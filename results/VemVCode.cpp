#include "VemVCode.h"

#include <cstddef>

// Readers write these fields in place.
static_assert(offsetof(VemVCode, Count0) == 0);
static_assert(offsetof(VemVCode, Count1) == 4);
static_assert(offsetof(VemVCode, Count2) == 8);
static_assert(offsetof(VemVCode, Real0) == 12);
static_assert(offsetof(VemVCode, Real1) == 16);
static_assert(offsetof(VemVCode, Real2) == 20);
static_assert(offsetof(VemVCode, Value0) == 24);
static_assert(offsetof(VemVCode, Value1) == 40);
static_assert(offsetof(VemVCode, Value2) == 56);
static_assert(offsetof(VemVCode, Value3) == 72);
static_assert(offsetof(VemVCode, Points) == 88);
static_assert(sizeof(VemVCode) == 96);

// Numbers stay as the memory was: this is meant.
VemVCode::VemVCode() {}

VemVCode::~VemVCode() = default;
