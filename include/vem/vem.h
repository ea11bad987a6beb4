#ifndef VEM_VEM_VEM_H_
#define VEM_VEM_VEM_H_

/// The companions that link nothing but this library. Regions and overlays are read where they
/// stand, by headers of ours that need OpenCV's include path. Not among them are vem/json.h, which
/// needs nlohmann-json, vem/opencv.h, which is for OpenCV's types, and vem/view.h, which is a
/// library of its own.

#include "vem/make.h"
#include "vem/print.h"
#include "vem/range.h"
#include "vem/region.h"
#include "vem/value.h"

#endif  // VEM_VEM_VEM_H_
