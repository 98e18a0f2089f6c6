// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "pictures/picture_check.h"
#include "pictures/picture_pixels.h"

namespace corvane {

/// The decoder of the system (a plug-in of the tool kit) that files of that type are given to, "webp" for "WEBP";
/// empty: it has none, or the type is none of those. Asks for the plug-ins at the first call; any thread.
std::string systemDecoderOf(const std::string& extension);

/// The picture of a file by that decoder: of an animation the first, of an icon the largest. The decoder cannot be
/// asked to stop: it runs in a thread of its own, which is left behind when the picture is given up or takes longer
/// than kLongestSystemDecoding. Where too many were left behind no further one is begun.
PicturePixels readBySystem(PictureBytes& file, const DecodingBounds& bounds, const std::string& decoder);

}  // namespace corvane
