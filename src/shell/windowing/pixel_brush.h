// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

#include "pictures/pixels.h"
#include "shell/native/pixels.h"
#include "shell/windowing/surface.h"

namespace corvane {

/// What is drawn into: opaque pixels in memory that somebody else owns, 0xAARRGGBB, rows from the top.
struct PixelTarget {
    std::uint32_t* pixels = nullptr;
    PixelPlace place;  ///< what part of the surface they are
    std::uint32_t* at(int x, int y) const {
        return pixels + static_cast<std::ptrdiff_t>(y - place.y) * place.width + (x - place.x);
    }
};

/// Draws one picture stretched. A reduced picture is averaged down once and kept for the next painting; an enlarged one
/// is enlarged as it is drawn, the visible part only, so that any enlargement costs no memory.
class StretchedPicture {
public:
    /// place: the whole stretched picture, visible: what may be drawn of it, both in pixels of the surface.
    void draw(const PixelTarget& target, const Picture& picture, const Rectangle& place, const Rectangle& visible);

private:
    Picture picture_;
    std::vector<std::uint32_t> reduced_;
    int width_ = 0;
    int height_ = 0;
};

/// Draws pictures pixel by pixel, for a desktop whose tool kit does not; that one draws texts.
class PixelBrush : public Brush {
public:
    void skin(const Picture& background, const std::vector<CompositionStep>& steps) final;
    void disc(const Rectangle& place, Colour colour, const std::vector<Rectangle>& covered) final;
    void pictures(const std::vector<ShownPicture>& pictures) final;

protected:
    /// surface: its size; scale: its pixels to one of the skin; stretched: kept for the next painting.
    PixelBrush(const PixelTarget& target, PixelSize surface, double scale, StretchedPicture& stretched)
        : target_(target), surface_(surface), scale_(scale), stretched_(stretched) {}
    ~PixelBrush() = default;

    /// The whole pixels nearest to a place.
    static PixelPlace rounded(const Rectangle& place);

private:
    PixelTarget target_;
    PixelSize surface_;
    double scale_;
    StretchedPicture& stretched_;
};

}  // namespace corvane
