// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pictures/picture_check.h"
#include "pictures/picture_pixels.h"

namespace corvane {

/// The picture of a bitmap file: 1 to 32 bits a pixel, rows from either side, plain or in runs of 4 or 8 bits, any
/// order of colours, headers of every version. What runs leave out has the first colour.
PicturePixels readBmp(PictureBytes& file, const DecodingBounds& bounds);

}  // namespace corvane
