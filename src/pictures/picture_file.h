// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

#include "pictures/picture_check.h"
#include "pictures/picture_pixels.h"

namespace corvane {

/// Decodes a file of one kind. May throw std::bad_alloc.
using PictureReader = std::function<PicturePixels(PictureBytes& file, const DecodingBounds& bounds)>;

/// The picture in a file: BMP and GIF by readers of our own, JPEG and PNG by the desktop's. The content says which it
/// is. What is none of them is given to `other`, where there is one. A file of more than kMaxPictureBytes, one that
/// ends too early and one that the memory does not suffice for fail with their reason.
PicturePixels readPicture(PictureBytes& file, const DecodingBounds& bounds, const PictureReader& jpeg,
                          const PictureReader& png, const PictureReader& other = {});

}  // namespace corvane
