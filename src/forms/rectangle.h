// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>

namespace corvane {

/// A rectangle in whatever unit its user counts; right and bottom edges lie outside. Without width or height: empty.
struct Rectangle {
    double x = 0, y = 0, width = 0, height = 0;

    double right() const { return x + width; }
    double bottom() const { return y + height; }
    bool empty() const { return width <= 0 || height <= 0; }
    bool contains(double px, double py) const { return px >= x && py >= y && px < right() && py < bottom(); }
    Rectangle scaled(double factor) const { return {x * factor, y * factor, width * factor, height * factor}; }
    bool operator==(const Rectangle&) const = default;
};

inline Rectangle common(const Rectangle& a, const Rectangle& b) {
    const double x = std::max(a.x, b.x);
    const double y = std::max(a.y, b.y);
    return {x, y, std::min(a.right(), b.right()) - x, std::min(a.bottom(), b.bottom()) - y};
}

}  // namespace corvane
