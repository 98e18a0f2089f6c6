// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/rectangle.h"
#include "shell/native/pixels.h"

namespace corvane {

/// The largest rectangle of the picture's shape in the middle of an area; empty when either is empty.
Rectangle fittedInto(PixelSize picture, const Rectangle& area);

/// Where a movie's frames are seen: the picture in its own size, the area in the window's units, and how many of the
/// screen's pixels a unit has.
struct FrameRoom {
    PixelSize picture;
    PixelRect area;
    double ratio = 1;
    PixelSize target = {};  ///< the area's size in the screen's pixels as the window told it; empty: it has not yet
};

/// The size in which a frame is drawn to be painted there, in the screen's pixels. Empty: nothing is to be seen.
PixelSize framePixels(const FrameRoom& room);
/// Where a frame drawn in that size is painted, in the window's units: on whole pixels of the screen where the area is
/// what the window told, so that it is not filtered again.
Rectangle framePlace(const FrameRoom& room, PixelSize pixels);
/// What a painted frame covers wholly.
PixelRect frameCovers(const FrameRoom& room);
/// Where a frame lies that somebody else shows, in the screen's pixels of the window.
PixelRect frameShown(const FrameRoom& room);

}  // namespace corvane
