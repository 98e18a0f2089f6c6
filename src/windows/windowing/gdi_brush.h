// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "shell/windowing/pixel_brush.h"
#include "windows/windowing/dib.h"

namespace corvane {

/// Before the brush, which draws into it.
struct DibOwner {
    explicit DibOwner(const RECT& part) : dib(part.right - part.left, part.bottom - part.top) {}
    Dib dib;
};

/// Draws the controls of a form into a bitmap of the part that must be painted: pictures pixel by pixel, texts by the
/// system.
class GdiBrush final : private DibOwner, public PixelBrush {
public:
    /// dirty: the part, pixels of the client area, which has that size. stretched: kept for the next painting.
    GdiBrush(const RECT& dirty, PixelSize client, double scale, StretchedPicture& stretched)
        : DibOwner(dirty),
          PixelBrush(
              {dib.pixels(), {static_cast<int>(dirty.left), static_cast<int>(dirty.top), dib.width(), dib.height()}},
              client, scale, stretched),
          dirty_(dirty) {}

    void text(const std::string& text, const Rectangle& place, Colour colour,
              const std::vector<Rectangle>& covered) override;
    /// The mark around a control; empty: none.
    void ring(const Rectangle& around);

    /// Copies what was drawn to its place on the screen.
    void show(HDC screen) { dib.show(screen, dirty_.left, dirty_.top); }

private:
    RECT dirty_;
};

}  // namespace corvane
