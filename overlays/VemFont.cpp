#include "VemFont.h"

VemFont::VemFont() : Name("Times"), Size(9), Weight(1), Flag0(0), Flag1(1), Flag2(0), Flag3(0) {}

VemFont::VemFont(VemVar& name, long size)
    : Name(name), Size(size), Weight(500), Flag0(0), Flag1(0), Flag2(0), Flag3(0) {}

VemFont::VemFont(const VemFont& other) = default;

VemFont& VemFont::operator=(const VemFont& other) {
  if (this == &other) return *this;  // A text must not be assigned to itself.
  Name = other.Name;
  Size = other.Size;
  Weight = other.Weight;
  Flag0 = other.Flag0;
  Flag1 = other.Flag1;
  Flag2 = other.Flag2;
  Flag3 = other.Flag3;
  return *this;
}

VemFont::~VemFont() = default;
