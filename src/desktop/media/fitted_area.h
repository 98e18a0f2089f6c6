// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QRectF>
#include <QSize>

#include "forms/control.h"

namespace corvane {

struct MovieExtent {
    Twips width = 0;
    Twips height = 0;
};

/// The movie control's size. windowSize: 0 the picture's own size, 1 double, 2, 3, 4 a quarter, a half and 0.707 of the
/// screen's width and height; another value counts as 0. At 0 and 1 the height is the picture's plus 30 twips, the
/// control's borders above and below. A movie without a picture (empty size) takes 320 by 240 pixels.
MovieExtent movieExtent(QSize picturePixels, int windowSize, MovieExtent screen);

/// The largest rectangle of the picture's shape in the middle of an area; empty when either is empty.
QRectF fittedInto(QSize picture, const QRectF& area);

}  // namespace corvane
