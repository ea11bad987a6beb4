#include "VemVCodeArray.h"

#define VEM_ARRAY VemVCodeArray
#define VEM_ELEMENT VemVCode
#define VEM_APPEND_ALL ReserveAndAppendAll
#include "values/TypedArrayMembers.inc"
