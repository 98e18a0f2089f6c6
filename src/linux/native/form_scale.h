// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QRect>
#include <QSize>

#include "forms/control.h"

namespace corvane {

/// Twips of a form to logical screen pixels. Across and down differ when the system's font does from the one that the
/// forms were laid out for, so that no text is cut.
class FormScale {
public:
    static constexpr int kLetters = 174;  ///< width of the sample text in the font the forms were laid out for, pixels
    static constexpr int kLine = 14;      ///< height of a line in that font

    FormScale() = default;
    FormScale(double across, double down) : across_(across), down_(down) {}

    double across() const { return across_; }
    double down() const { return down_; }
    /// Grows so that a control of this size has room for what it wants.
    void makeRoom(QSize wanted, Twips width, Twips height);

    int x(Twips twips) const;
    int y(Twips twips) const;
    QSize size(Twips width, Twips height) const { return {x(width), y(height)}; }
    QRect rectangle(const Control& control) const;
    Twips twipsAcross(double pixels) const { return static_cast<Twips>(pixels / across_) * kTwipsPerPixel; }
    Twips twipsDown(double pixels) const { return static_cast<Twips>(pixels / down_) * kTwipsPerPixel; }

private:
    double across_ = 1.0;
    double down_ = 1.0;
};

}  // namespace corvane
