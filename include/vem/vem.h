#ifndef VEM_VEM_VEM_H_
#define VEM_VEM_VEM_H_

/// The companions that need nothing but this library and the standard library: all but vem/json.h,
/// which needs nlohmann-json, and vem/opencv.h and vem/view.h, which need OpenCV.

#include "vem/make.h"
#include "vem/print.h"
#include "vem/range.h"
#include "vem/region.h"
#include "vem/value.h"

#endif  // VEM_VEM_VEM_H_
