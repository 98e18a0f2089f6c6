// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pictures/picture_check.h"
#include "pictures/picture_pixels.h"

namespace corvane {

/// The picture of a PNG file by libpng, row by row. What it carries beside its picture (texts, profiles) is passed over
/// unread, because a few bytes of it can stand for any amount of memory.
PicturePixels readPng(PictureBytes& file, const DecodingBounds& bounds);

}  // namespace corvane
