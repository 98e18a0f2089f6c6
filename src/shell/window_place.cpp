// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/window_place.h"

#include <algorithm>

namespace corvane {

namespace {

bool isGrabbable(const Rectangle& window, const Rectangle& screen) {
    const Rectangle seen = common(window, screen);
    return seen.width >= std::min(kGrabbable, window.width) && seen.height >= std::min(kGrabbable, window.height);
}

double areaSeen(const Rectangle& window, const Rectangle& screen) {
    const Rectangle seen = common(window, screen);
    return seen.empty() ? 0 : seen.width * seen.height;
}

/// Square of the distance between two rectangles; 0: they touch.
double apart(const Rectangle& a, const Rectangle& b) {
    const double across = std::max({0.0, a.x - b.right(), b.x - a.right()});
    const double down = std::max({0.0, a.y - b.bottom(), b.y - a.bottom()});
    return across * across + down * down;
}

double inside(double start, double length, double from, double to) {
    return std::max(from, std::min(start, to - length));
}

}  // namespace

Rectangle placeInSight(const Rectangle& window, const std::vector<ScreenArea>& screens) {
    const auto shown = [&](const ScreenArea& screen) { return isGrabbable(window, screen.shows); };
    if (screens.empty() || std::any_of(screens.begin(), screens.end(), shown)) return window;
    const Rectangle& room = std::min_element(screens.begin(), screens.end(), [&](const auto& one, const auto& other) {
                                const double seen = areaSeen(window, one.shows);
                                const double seenOther = areaSeen(window, other.shows);
                                if (seen != seenOther) return seen > seenOther;
                                return apart(window, one.shows) < apart(window, other.shows);
                            })->room;
    return {inside(window.x, window.width, room.x, room.right()),
            inside(window.y, window.height, room.y, room.bottom()), window.width, window.height};
}

}  // namespace corvane
