// Writes out the members whose bodies stand in the headers, for programs that call them by name.
#define VEM_EMIT_MEMBERS
#include "Vem3DPoint.h"
#include "VemCircle.h"
#include "VemLine.h"
#include "VemPoint.h"

// Copies and destructors of flat values are trivial, and no compiler writes those out: these
// functions stand under their names. A constructor and a destructor have two each, for an object of
// its own and for a part of another. An assignment gives the object's address, as a reference is
// given.

#define EXPORT_COPY(Class, name)                                                        \
  VEM_EXPORT void Class##CopyWhole(Class*, const Class&) __asm__("_ZN" name "C1ERKS_"); \
  VEM_EXPORT void Class##CopyPart(Class*, const Class&) __asm__("_ZN" name "C2ERKS_");  \
  VEM_EXPORT void Class##DestroyWhole(Class*) __asm__("_ZN" name "D1Ev");               \
  VEM_EXPORT void Class##DestroyPart(Class*) __asm__("_ZN" name "D2Ev");                \
  void Class##CopyWhole(Class* self, const Class& other) { *self = other; }             \
  void Class##CopyPart(Class* self, const Class& other) { *self = other; }              \
  void Class##DestroyWhole(Class*) {}                                                   \
  void Class##DestroyPart(Class*) {}

#define EXPORT_ASSIGNMENT(Class, name)                                                 \
  VEM_EXPORT Class* Class##Assign(Class*, const Class&) __asm__("_ZN" name "aSERKS_"); \
  Class* Class##Assign(Class* self, const Class& other) { return &(*self = other); }

extern "C" {

EXPORT_COPY(VemPoint, "8VemPoint")
EXPORT_ASSIGNMENT(VemPoint, "8VemPoint")
EXPORT_COPY(Vem3DPoint, "10Vem3DPoint")
EXPORT_ASSIGNMENT(Vem3DPoint, "10Vem3DPoint")
EXPORT_COPY(VemLine, "7VemLine")
EXPORT_COPY(VemCircle, "9VemCircle")

}  // extern "C"
