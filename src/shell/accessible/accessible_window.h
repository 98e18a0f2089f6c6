// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/form.h"
#include "forms/rectangle.h"

namespace corvane {

/// What the accessible tree asks of a window whose controls are drawn. Places are pixels of the window. What is asked
/// to be done is done later, as an event of its own, and only where the mouse could do it.
class AccessibleWindow {
public:
    virtual Form* form() const = 0;                               ///< null: it has gone, and nothing else is asked
    virtual Rectangle placeOf(const Control& control) const = 0;  ///< where it takes the mouse
    virtual Rectangle area() const = 0;                           ///< of the window itself
    virtual bool isShown() const = 0;                             ///< minimised or not
    virtual bool isMinimised() const = 0;
    virtual bool isUsable() const = 0;
    virtual bool hasKeyboard() const = 0;
    /// The control that has the keyboard focus inside the window; null: none.
    virtual Control* focused() const = 0;
    virtual bool isPressed(const Control& control) const = 0;
    virtual void focus(Control& control) = 0;  ///< at once; brings the window to the front
    /// A button of the mouse pressed and released in the middle of the control; or of the form: beside all controls.
    virtual void pressSoon(Control& control, int button) = 0;
    virtual void setValueSoon(MouseControl& control, double value) = 0;

protected:
    ~AccessibleWindow() = default;
};

}  // namespace corvane
