// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pictures/picture_check.h"
#include "pictures/picture_pixels.h"

namespace corvane {

/// The first picture of a GIF file on its screen. What the picture leaves free has the background colour; where a
/// colour counts as a hole, that and the holes are transparent.
PicturePixels readGif(PictureBytes& file, const DecodingBounds& bounds);

}  // namespace corvane
