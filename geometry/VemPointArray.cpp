#include "VemPointArray.h"

#define VEM_ARRAY VemPointArray
#define VEM_ELEMENT VemPoint
#define VEM_APPEND_ALL AppendAll
#include "values/TypedArrayMembers.inc"
