#ifndef EXAMPLES_DISPLAY_SCENE_H_
#define EXAMPLES_DISPLAY_SCENE_H_

#include "VemImage.h"
#include "VemOverlayPath.h"

/// A plate of parts, six by three, in grey.
VemImage DrawPicture();

/// What an inspection of that picture hands to a display: for each part the element that fits it,
/// one of every kind, and the kind's name below.
VemOverlayPath BuildPath(const VemImage& picture);

#endif  // EXAMPLES_DISPLAY_SCENE_H_
