// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "shell/accessible/accessible_window.h"
#include "shell/windowing/drawn_window.h"

namespace corvane {

/// A window whose controls are drawn, for the accessible tree. A desktop says besides whether the keyboard is there.
class DrawnAccess : public AccessibleWindow {
public:
    explicit DrawnAccess(Surface& surface) : surface_(&surface) {}

    Form* form() const override { return drawn() != nullptr ? &drawn()->form() : nullptr; }
    Rectangle placeOf(const Control& control) const override { return drawn()->pixelsOf(control); }
    Rectangle area() const override;
    bool isShown() const override { return surface_->frame().isShown(); }
    bool isMinimised() const override { return surface_->isMinimised(); }
    bool isUsable() const override { return drawn()->form().Enabled; }
    Control* focused() const override { return drawn()->focused(); }
    bool isPressed(const Control& control) const override { return drawn()->pressed() == &control; }
    void focus(Control& control) override;
    void pressSoon(Control& control, int button) override { drawn()->pressSoon(control, button); }
    void setValueSoon(MouseControl& control, double value) override { drawn()->setValueSoon(control, value); }

    /// The surface goes.
    void leave() { surface_ = nullptr; }

protected:
    ~DrawnAccess() = default;

private:
    DrawnWindow* drawn() const { return surface_ != nullptr ? surface_->live() : nullptr; }

    Surface* surface_;
};

}  // namespace corvane
