// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cmath>

#include "forms/control.h"
#include "windows/api.h"

namespace corvane {

/// Twips of a form to screen pixels. Across and down differ when the system's font does from the one that the forms
/// were laid out for, so that no text is cut.
class FormScale {
public:
    static constexpr int kLetters = 174;  ///< width of the sample text in the font the forms were laid out for, pixels
    static constexpr int kLine = 14;      ///< height of a line in that font

    FormScale() = default;
    FormScale(double across, double down) : across_(across), down_(down) {}

    double across() const { return across_; }
    /// Grows so that a control of this size has room for what it wants.
    void makeRoom(SIZE wanted, Twips width, Twips height) {
        if (width > 0) across_ = std::max(across_, wanted.cx / pixels(width));
        if (height > 0) down_ = std::max(down_, wanted.cy / pixels(height));
    }
    int x(Twips twips) const { return static_cast<int>(std::lround(pixels(twips) * across_)); }
    int y(Twips twips) const { return static_cast<int>(std::lround(pixels(twips) * down_)); }
    Twips twipsAcross(double at) const { return static_cast<Twips>(at / across_) * kTwipsPerPixel; }
    Twips twipsDown(double at) const { return static_cast<Twips>(at / down_) * kTwipsPerPixel; }

private:
    static double pixels(Twips twips) { return static_cast<double>(twips) / static_cast<double>(kTwipsPerPixel); }

    double across_ = 1.0;
    double down_ = 1.0;
};

}  // namespace corvane
