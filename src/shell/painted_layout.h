// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "forms/form.h"
#include "forms/rectangle.h"

namespace corvane {

// Where the controls of a painted form lie, in twips.

/// A control's own rectangle.
Rectangle placeOf(const Control& control);
/// An image is as large as its picture, whatever room it was given.
Rectangle imagePlace(const Image& image);
/// A label without a width reaches to the next label of its line, or to the form's edge.
Rectangle labelPlace(const Form& form, const Label& label);
/// Where a control draws; empty: nowhere.
Rectangle paintPlace(const Form& form, const Control& control);
/// What takes the mouse for a control; empty: nothing. A label without a width is only as wide as its text, which the
/// caller measures: textWidth, twips.
Rectangle hitPlace(const Form& form, const Control& control, double textWidth);

/// The picture a control shows now; pressed: it is held down by the mouse.
const Picture& pictureShown(const Control& control, bool pressed);

struct PixelPlace {
    int x = 0, y = 0, width = 0, height = 0;
    bool operator==(const PixelPlace&) const = default;
};

/// The whole pixels of the skin that a place, in twips, fills.
PixelPlace snapped(const Rectangle& twips);

/// A step of composing a painted form at its skin's own resolution, bottom to top.
struct CompositionStep {
    const Control* control = nullptr;
    const Picture* picture = nullptr;  ///< drawn at the place's corner, cut to the place; null: the place is filled
    Colour colour = kBlack;
    PixelPlace place;  ///< whole pixels of the skin
};

/// What to draw over the form's own picture, which lies at its corner on black. pressed: the button that is held down,
/// or null.
std::vector<CompositionStep> compositionOf(const Form& form, const Control* pressed);

}  // namespace corvane
