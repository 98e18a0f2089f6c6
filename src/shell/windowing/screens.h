// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "forms/form.h"
#include "forms/rectangle.h"
#include "shell/native/pixels.h"
#include "shell/window_place.h"

namespace corvane {

/// The screens, and how large forms are on them. A desktop says what there is; what follows from it is said here.
class Screens {
public:
    Screens() = default;
    Screens(const Screens&) = delete;
    Screens& operator=(const Screens&) = delete;
    virtual ~Screens() = default;

    virtual double factor() const = 0;                  ///< pixels of the screen to a form's pixel (15 twips)
    virtual Rectangle ofPanel() const = 0;              ///< the panel's, before it is shown the primary; empty: none
    virtual Rectangle primary() const = 0;              ///< empty: there is no screen
    virtual std::vector<ScreenArea> areas() const = 0;  ///< all of them

    /// Where a form's position counts from. Painted forms: the primary screen's corner, wherever they are moved; the
    /// others, which are centred when they open: the corner of the panel's screen.
    PixelPoint cornerFor(const Form& form) const;
    int toPixels(Twips twips) const;  ///< nearest pixel
    Twips toTwips(double pixels) const;
    Rectangle toPixels(const Rectangle& twips) const;  ///< exactly
};

}  // namespace corvane
