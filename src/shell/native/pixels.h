// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>

namespace corvane {

/// Pixels of the screen, as the tool kit of the desktop counts them.
struct PixelSize {
    int width = 0;
    int height = 0;
    bool operator==(const PixelSize&) const = default;
};

struct PixelPoint {
    int x = 0;
    int y = 0;
    bool operator==(const PixelPoint&) const = default;
};

struct PixelRect {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    int right() const { return left + width; }  ///< outside, as is bottom()
    int bottom() const { return top + height; }
    PixelSize size() const { return {width, height}; }
    bool operator==(const PixelRect&) const = default;
};

/// Around that middle, moved inside the room; what is larger than the room begins at its corner.
inline PixelRect placedInside(const PixelRect& room, PixelPoint middle, PixelSize size) {
    const auto within = [](int start, int length, int from, int to) {
        return std::max(from, std::min(start, to - length));
    };
    return {within(middle.x - (size.width - 1) / 2, size.width, room.left, room.right()),
            within(middle.y - (size.height - 1) / 2, size.height, room.top, room.bottom()), size.width, size.height};
}

}  // namespace corvane
