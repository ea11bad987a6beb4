#include "VemDMCodeArray.h"

#define VEM_ARRAY VemDMCodeArray
#define VEM_ELEMENT VemDMCode
#define VEM_APPEND_ALL ReserveAndAppendAll
#include "values/TypedArrayMembers.inc"
