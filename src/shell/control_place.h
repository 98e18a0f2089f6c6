// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/form.h"
#include "forms/rectangle.h"

namespace corvane {

/// Where a control lies on its form, twips. Picture boxes may be set in pixels.
inline Rectangle placeOnForm(const Control& control) {
    const bool pixels = control.kind() == ControlKind::PictureBox &&
                        static_cast<const PictureBox&>(control).Scale == ScaleMode::InPixels;
    const Rectangle asSet{static_cast<double>(control.Left), static_cast<double>(control.Top),
                          static_cast<double>(control.Width), static_cast<double>(control.Height)};
    return asSet.scaled(pixels ? static_cast<double>(kTwipsPerPixel) : 1.0);
}

}  // namespace corvane
