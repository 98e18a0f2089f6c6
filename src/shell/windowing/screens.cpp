// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/windowing/screens.h"

#include <cmath>

namespace corvane {

PixelPoint Screens::cornerFor(const Form& form) const {
    const Rectangle counted = form.style() == FormStyle::Painted ? primary() : ofPanel();
    return {static_cast<int>(counted.x), static_cast<int>(counted.y)};
}

int Screens::toPixels(Twips twips) const {
    return static_cast<int>(std::lround(static_cast<double>(twips) / static_cast<double>(kTwipsPerPixel) * factor()));
}

Twips Screens::toTwips(double pixels) const {
    return static_cast<Twips>(pixels / factor() * static_cast<double>(kTwipsPerPixel));
}

Rectangle Screens::toPixels(const Rectangle& twips) const {
    return twips.scaled(factor() / static_cast<double>(kTwipsPerPixel));
}

}  // namespace corvane
