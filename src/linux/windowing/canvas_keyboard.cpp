// SPDX-License-Identifier: GPL-3.0-or-later
// The drawn controls without the mouse: by the keyboard and by assistive programs.
#include <QAccessible>
#include <QApplication>

#include "linux/windowing/accessible_form.h"
#include "linux/windowing/canvas_window.h"
#include "linux/windowing/focus_ring.h"

namespace corvane {

/// True: the form is not given the key.
bool CanvasWindow::takeFocusKey(const KeyArgs& key, bool isRepeat) {
    if (!bound()) return false;
    Control* const before = keyboard_.control();
    const KeyboardFocus::Answer answer = keyboard_.keyDown(form(), key, isRepeat);
    Control* const control = keyboard_.control();
    switch (answer.act) {
        case KeyboardFocus::Act::Move:
            if (control != before) showFocus();
            if (QAccessible::isActive()) announceFocus(*this);
            return false;
        case KeyboardFocus::Act::Press:
            clickMiddle(*control, kLeftButton);
            return true;
        case KeyboardFocus::Act::SetValue:
            enter([&] { static_cast<MouseControl*>(control)->SetAccessibleValue.raise(answer.value); });
            return true;
        case KeyboardFocus::Act::None:
            break;
    }
    return false;
}

void CanvasWindow::setFocused(Control* control) {
    if (keyboard_.control() == control) return;
    keyboard_.set(control);
    showFocus();
    if (QAccessible::isActive() && bound()) announceFocus(*this);
}

void CanvasWindow::showFocus() {
    Control* const control = keyboard_.control();
    if (control == nullptr || !control->Visible) {
        keyboard_.set(nullptr);
        if (ring_ != nullptr) ring_->hide();
        return;
    }
    if (ring_ == nullptr) ring_ = new FocusRing(*this);
    ring_->surround(placeOf(*control));
}

/// The mouse could press something here now: no box and no menu is up, and the window is on the screen.
bool CanvasWindow::takesMouse() const {
    return bound() && isVisible() && isEnabled() && !pointer_.holdsButton() && !context().loop.held() &&
           context().box.isNull() && QApplication::activePopupWidget() == nullptr;
}

void CanvasWindow::clickMiddle(Control& control, int button) {
    if (takesMouse() && (&control == &form() || control.Visible)) pointer_.click(control, button);
}

void CanvasWindow::pressSoon(Control& control, int button) {
    QMetaObject::invokeMethod(
        this, [this, &control, button] { clickMiddle(control, button); }, Qt::QueuedConnection);
}

void CanvasWindow::setValueSoon(MouseControl& control, double value) {
    const auto set = [this, &control, value] {
        if (takesMouse() && control.Visible && control.Enabled) {
            enter([&] { control.SetAccessibleValue.raise(value); });
        }
    };
    QMetaObject::invokeMethod(this, set, Qt::QueuedConnection);
}

}  // namespace corvane
