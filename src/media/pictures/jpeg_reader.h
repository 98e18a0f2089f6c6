// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pictures/picture_check.h"
#include "pictures/picture_pixels.h"

namespace corvane {

/// The picture of a JPEG file by libjpeg, upright, reduced by eighths while it is read to what there is room for.
/// Refuses what would take too long: one of more scans than any camera or program writes.
PicturePixels readJpeg(PictureBytes& file, const DecodingBounds& bounds);

/// The same by two threads, of which this one reads the upper share of the rows (0: all of them). The pixels are the
/// same. The file is held in memory meanwhile.
PicturePixels readJpegByTwo(PictureBytes& file, const DecodingBounds& bounds, double upperShare);

}  // namespace corvane
