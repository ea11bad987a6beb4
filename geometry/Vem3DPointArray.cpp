#include "Vem3DPointArray.h"

#define VEM_ARRAY Vem3DPointArray
#define VEM_ELEMENT Vem3DPoint
#define VEM_APPEND_ALL AppendAll
#include "values/TypedArrayMembers.inc"
