// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "forms/rectangle.h"

namespace corvane {

/// Pixels of a window without a title bar that must be in sight, both ways, for a hand to drag it back. Of a smaller
/// window all of it.
inline constexpr double kGrabbable = 24;

/// A screen, in the unit of the window's place.
struct ScreenArea {
    Rectangle shows;  ///< a window is in sight there
    Rectangle room;   ///< where a window that is brought back may lie: without bars and docks
};

/// Where a window belongs: its own place while some screen shows a grabbable part of it, else wholly inside the screen
/// that shows most of it, or the nearest one. A window larger than that starts at its corner. Without a screen it
/// stays.
Rectangle placeInSight(const Rectangle& window, const std::vector<ScreenArea>& screens);

}  // namespace corvane
