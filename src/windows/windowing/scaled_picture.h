// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

#include "forms/picture.h"
#include "forms/rectangle.h"
#include "windows/windowing/dib.h"

namespace corvane {

/// Draws one picture stretched. A reduced picture is averaged down once and kept for the next painting; an enlarged one
/// is enlarged as it is drawn, the visible part only, so that any enlargement costs no memory.
class ScaledPicture {
public:
    /// target holds the screen pixels of `dirty`. place: the whole stretched picture, visible: what may be drawn of it,
    /// both in pixels of the window.
    void draw(Dib& target, const RECT& dirty, const Picture& picture, const Rectangle& place, const Rectangle& visible);

private:
    Picture picture_;
    std::vector<std::uint32_t> reduced_;
    int width_ = 0;
    int height_ = 0;
};

}  // namespace corvane
