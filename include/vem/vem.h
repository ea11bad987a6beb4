#ifndef VEM_VEM_VEM_H_
#define VEM_VEM_VEM_H_

/// All companions that need nothing but the library and the standard library.

#include "vem/make.h"
#include "vem/print.h"
#include "vem/range.h"
#include "vem/value.h"

#endif  // VEM_VEM_VEM_H_
