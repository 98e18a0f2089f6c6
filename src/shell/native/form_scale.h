// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/control.h"
#include "shell/native/pixels.h"

namespace corvane {

/// Twips of a dialog to screen pixels. Across and down differ when the system's font does from the one that the forms
/// were laid out for, so that no text is cut.
class FormScale {
public:
    /// What is measured in the system's font.
    static constexpr const char* kSampleText = "Aa Gg 0123456789 Page List";

    FormScale() = default;
    FormScale(double across, double down) : across_(across), down_(down) {}
    /// From the size of the sample text; never less than `least` pixels to one of the form.
    FormScale(PixelSize sample, double least);

    bool operator==(const FormScale&) const = default;

    double across() const { return across_; }
    /// Grows so that a control of this size has room for what it wants.
    void makeRoom(PixelSize wanted, Twips width, Twips height);

    int x(Twips twips) const;
    int y(Twips twips) const;
    PixelSize size(Twips width, Twips height) const { return {x(width), y(height)}; }
    /// Edges are rounded, not sizes: neighbours that touch still touch.
    PixelRect rectangle(Twips left, Twips top, Twips width, Twips height) const;
    Twips twipsAcross(double pixels) const { return static_cast<Twips>(pixels / across_) * kTwipsPerPixel; }
    Twips twipsDown(double pixels) const { return static_cast<Twips>(pixels / down_) * kTwipsPerPixel; }

private:
    double across_ = 1.0;
    double down_ = 1.0;
};

}  // namespace corvane
