#include "Vem2DVarArray.h"

#define VEM_ARRAY Vem2DVarArray
#define VEM_ELEMENT VemVarArray
#define VEM_APPEND_ALL ReserveAndAppendAll
#include "values/TypedArrayMembers.inc"
