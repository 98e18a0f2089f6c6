// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "pictures/picture_pixels.h"

struct mpv_node;

namespace corvane {

// What the library says of a movie, made fit to be believed.

/// A picture can say that its pixels are a thousand times as wide as high: it keeps that shape, in a window's size.
PictureSize sensiblePicture(PictureSize said);

/// What a file says of its length, in seconds; 0 for what is no length.
double sensibleLength(double seconds);

/// Program streams have no index: an exact seek must start so many seconds before its target.
double seekOffset(const std::string& format);

/// A picture that the library gives as its bytes; without pixels where it is none. Their highest byte says nothing.
PicturePixels moviePicture(const mpv_node& raw);

/// The library's word for an error, as a sentence.
std::string movieError(int error);

}  // namespace corvane
