// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pictures/picture_check.h"
#include "pictures/picture_pixels.h"

namespace corvane {

/// Decodes a file of one kind. May throw std::bad_alloc.
using PictureReader = PicturePixels (*)(PictureBytes& file, const DecodingBounds& bounds);

/// The picture in a file: BMP and GIF by readers of our own, the others by the desktop's. The content says which it is.
/// A file of more than kMaxPictureBytes, one that ends too early and one that the memory does not suffice for fail with
/// their reason.
PicturePixels readPicture(PictureBytes& file, const DecodingBounds& bounds, PictureReader jpeg, PictureReader png);

}  // namespace corvane
