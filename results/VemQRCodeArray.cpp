#include "VemQRCodeArray.h"

#define VEM_ARRAY VemQRCodeArray
#define VEM_ELEMENT VemQRCode
#define VEM_APPEND_ALL ReserveAndAppendAll
#include "values/TypedArrayMembers.inc"
