#include "VemPDF417CodeArray.h"

#define VEM_ARRAY VemPDF417CodeArray
#define VEM_ELEMENT VemPDF417Code
#define VEM_APPEND_ALL ReserveAndAppendAll
#include "values/TypedArrayMembers.inc"
