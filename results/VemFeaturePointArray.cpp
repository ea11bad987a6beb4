#include "VemFeaturePointArray.h"

#define VEM_ARRAY VemFeaturePointArray
#define VEM_ELEMENT VemFeaturePoint
#define VEM_APPEND_ALL ReserveAndAppendAll
#include "values/TypedArrayMembers.inc"
