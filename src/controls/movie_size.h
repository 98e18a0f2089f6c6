// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/control.h"

namespace corvane {

struct MovieExtent {
    Twips width = 0;
    Twips height = 0;
};

/// The movie control's size. windowSize: 0 the picture's own size, 1 double, 2, 3, 4 a quarter, a half and 0.707 of the
/// screen's width and height; another value counts as 0. At 0 and 1 the height is the picture's plus 30 twips, the
/// control's borders above and below. A movie without a picture (0 by 0 pixels) takes 320 by 240 pixels.
MovieExtent movieExtent(int pictureWidth, int pictureHeight, int windowSize, MovieExtent screen);

}  // namespace corvane
