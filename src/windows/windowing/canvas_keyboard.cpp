// SPDX-License-Identifier: GPL-3.0-or-later
// The drawn controls without the mouse: by the keyboard and by assistive programs.
#include <cmath>

#include "windows/windowing/accessible_form.h"
#include "windows/windowing/canvas_window.h"

namespace corvane {

/// True: the form is not given the key.
bool CanvasWindow::takeFocusKey(const KeyArgs& key, bool isRepeat) {
    Control* const before = keyboard_.control();
    const KeyboardFocus::Answer answer = keyboard_.keyDown(form(), key, isRepeat);
    Control* const control = keyboard_.control();
    switch (answer.act) {
        case KeyboardFocus::Act::Move:
            if (control != before) focusMoved();
            return false;
        case KeyboardFocus::Act::Press:
            clickMiddle(*control);
            return true;
        case KeyboardFocus::Act::SetValue:
            run([&] { static_cast<MouseControl*>(control)->SetAccessibleValue.raise(answer.value); });
            return true;
        case KeyboardFocus::Act::None:
            break;
    }
    return false;
}

void CanvasWindow::setFocused(Control* control) {
    if (keyboard_.control() == control) return;
    keyboard_.set(control);
    focusMoved();
}

void CanvasWindow::focusMoved() {
    InvalidateRect(handle(), nullptr, FALSE);
    const Control* const control = keyboard_.control();
    if (control == nullptr || !bound()) return;
    NotifyWinEvent(EVENT_OBJECT_FOCUS, handle(), OBJID_CLIENT, accessible_->childOf(*control));
}

Rectangle CanvasWindow::ring() const {
    const Control* const control = keyboard_.control();
    return control != nullptr && control->Visible ? pixels(hitRect(*control)) : Rectangle();
}

/// The mouse could press something here now: no box and no menu is up, and the window is on the screen.
bool CanvasWindow::takesMouse() const {
    return bound() && IsWindowVisible(handle()) != 0 && IsWindowEnabled(handle()) != 0 && !pointer_.holdsButton() &&
           !context().loop.held();
}

void CanvasWindow::clickMiddle(Control& control) {
    if (takesMouse() && control.Visible) pointer_.click(control, kLeftButton);
}

void CanvasWindow::pressSoon(Control& control) {
    post([this, &control] { clickMiddle(control); });
}

void CanvasWindow::setValueSoon(MouseControl& control, double value) {
    post([this, &control, value] {
        if (takesMouse() && control.Visible && control.Enabled) control.SetAccessibleValue.raise(value);
    });
}

RECT CanvasWindow::screenPlace(const Control& control) const {
    const Rectangle place = pixels(hitRect(control));
    return {std::lround(place.x), std::lround(place.y), std::lround(place.right()), std::lround(place.bottom())};
}

}  // namespace corvane
