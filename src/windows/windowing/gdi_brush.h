// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "shell/native/pixels.h"
#include "shell/windowing/surface.h"
#include "windows/windowing/dib.h"
#include "windows/windowing/scaled_picture.h"

namespace corvane {

/// Draws the controls of a form into a bitmap of the part that must be painted: pictures pixel by pixel, texts by the
/// system.
class GdiBrush final : public Brush {
public:
    /// dirty: the part, pixels of the client area, which has that size. scaled: kept for the next painting.
    GdiBrush(const RECT& dirty, PixelSize client, double scale, ScaledPicture& scaled)
        : target_(dirty.right - dirty.left, dirty.bottom - dirty.top),
          dirty_(dirty),
          client_(client),
          scale_(scale),
          scaled_(scaled) {}

    void skin(const Picture& background, const std::vector<CompositionStep>& steps) override;
    void disc(const Rectangle& place, Colour colour, const std::vector<Rectangle>& covered) override;
    void text(const std::string& text, const Rectangle& place, Colour colour,
              const std::vector<Rectangle>& covered) override;
    void pictures(const std::vector<ShownPicture>& pictures) override;
    /// The mark around a control; empty: none.
    void ring(const Rectangle& around);

    /// Copies what was drawn to its place on the screen.
    void show(HDC screen) { target_.show(screen, dirty_.left, dirty_.top); }

private:
    Dib target_;
    RECT dirty_;
    PixelSize client_;
    double scale_;
    ScaledPicture& scaled_;
};

}  // namespace corvane
