// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

#include "forms/rectangle.h"

namespace corvane {

/// Pixels of a rectangle in memory that somebody else owns: rows from the top, 0xAARRGGBB, colours multiplied by alpha.
struct PixelsView {
    const std::uint32_t* data = nullptr;
    int width = 0, height = 0;
    std::uint32_t at(int x, int y) const {
        return data[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)];
    }
};

/// Opaque pixels to draw into. Places are pixels; what lies outside is left out.
class PixelBuffer {
public:
    PixelBuffer(int width, int height);

    int width() const { return width_; }
    int height() const { return height_; }
    std::uint32_t* row(int y) { return pixels_.data() + static_cast<std::ptrdiff_t>(y) * width_; }
    PixelsView view() const { return {pixels_.data(), width_, height_}; }

    void fill(int x, int y, int width, int height, std::uint32_t colour);
    /// Draws a picture over what is there, its corner at x, y, at most width by height of it. fromX, fromY: from which
    /// of its pixels on.
    void draw(const PixelsView& picture, int x, int y, int width, int height, int fromX = 0, int fromY = 0);
    /// The same with each pixel as a square of so many: `times` as many across and down.
    void drawLarger(const PixelsView& picture, int x, int y, int width, int height, int times);

private:
    int width_;
    int height_;
    std::vector<std::uint32_t> pixels_;
};

/// A picture stretched over a place, of which this part is wanted: part.width by part.height pixels at part.x, part.y
/// of the target the place is counted in. smooth: between its pixels, else the nearest one. Shrinking is not averaged.
void stretch(const PixelsView& picture, const Rectangle& place, int partX, int partY, int partWidth, int partHeight,
             bool smooth, std::uint32_t* target, int targetStride);

/// The picture made smaller, each pixel the average of those it stands for; width and height are at most the picture's.
std::vector<std::uint32_t> reduced(const PixelsView& picture, int width, int height);

/// One colour between two, by a share of 0 (the first) to 256 (the second).
std::uint32_t between(std::uint32_t first, std::uint32_t second, unsigned share);

/// How much of the pixel at x, y a filled ellipse in that place covers, 0 to 256.
unsigned ellipseCover(const Rectangle& place, int x, int y);

}  // namespace corvane
