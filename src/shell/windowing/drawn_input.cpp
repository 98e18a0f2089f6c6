// SPDX-License-Identifier: GPL-3.0-or-later
// What mouse, keyboard, drops and assistive programs do to the drawn controls of a window.
#include "shell/drops.h"
#include "shell/windowing/drawn_window.h"

namespace corvane {

Pointer::Place DrawnWindow::toForm(Place at) const {
    const double unit = static_cast<double>(kTwipsPerPixel) / screens_.factor();
    return {at.x * unit, at.y * unit};
}

// --- Mouse -------------------------------------------------------------------------------------------------------

void DrawnWindow::mouseDown(int button, int shift, Place at, PixelPoint onScreen, bool isDouble) {
    if (!bound() || button == 0) return;
    setFocused(nullptr);
    if (button == kLeftButton) {
        pressedAt_ = onScreen;
        windowAt_ = {surface_->place().x, surface_->place().y};
    }
    pointer_.press(button, shift, toForm(at), isDouble);
}

void DrawnWindow::mouseMoved(int shift, bool anyHeld, Place at, PixelPoint onScreen) {
    if (!bound()) return;
    // It came up where nobody told it: over another desktop, behind a lock.
    if (pointer_.holdsButton() && !anyHeld) return loseMouse();
    if (pointer_.dragging()) {
        dragStep(onScreen);
    } else {
        pointer_.move(shift, toForm(at));
    }
}

void DrawnWindow::mouseUp(int button, int shift, Place at) {
    if (bound()) pointer_.release(button, shift, toForm(at));
}

void DrawnWindow::loseMouse() {
    pointer_.lose();
    surface_->letMouseGo();
}

/// The grabbed point stays under the pointer. The panel goes with it from the press on; a short way on it is a click
/// all the same, by a hand that is not quite still. A media window stays until the way is that of a drag.
void DrawnWindow::dragStep(PixelPoint now) {
    const PixelPoint way{now.x - pressedAt_.x, now.y - pressedAt_.y};
    if (!pointer_.wasMoved() && surface_->isDrag(way.x, way.y)) {
        pointer_.moved();
        if (surface_->dragBySystem()) return loseMouse();
    }
    if (pointer_.wasMoved() || dragsAtOnce()) surface_->moveTo({windowAt_.x + way.x, windowAt_.y + way.y});
}

DrawnWindow::Tip DrawnWindow::tipAt(Place at) const {
    if (!bound()) return {};
    const Control& control = controlAt(at);
    return {toolTip(control), pixelsOf(control)};
}

// --- Drops -------------------------------------------------------------------------------------------------------

void DrawnWindow::dropped(const DropData& data, Place at) {
    if (!bound()) return;
    auto* const under = dynamic_cast<MouseControl*>(pointer_.hit(toForm(at)));
    if (under != nullptr && under->OLEDragDrop.isTied()) {
        post([under, data] { under->OLEDragDrop.raise(data); });
    } else {
        dropFiles(data);
    }
}

bool DrawnWindow::takesFiles() const { return bound() && fileTakerOf(form()) != nullptr; }

void DrawnWindow::dropFiles(const DropData& dropped) {
    MouseControl* const taker = bound() ? fileTakerOf(form()) : nullptr;
    if (taker != nullptr) post([taker, dropped] { taker->OLEDragDrop.raise(dropped); });
}

// --- Keyboard ----------------------------------------------------------------------------------------------------

bool DrawnWindow::keyDown(const KeyArgs& key, bool isRepeat, int character) {
    if (!bound()) return false;
    if (takeFocusKey(key, isRepeat)) return true;
    enter([&] {
        form().KeyDown.raise(key);
        if (character != 0 && bound()) raiseTyped(character);
    });
    return false;
}

void DrawnWindow::typed(int character) {
    enter([&] { raiseTyped(character); });
}

void DrawnWindow::raiseTyped(int character) {
    form().KeyPress.raise(character);
    PictureBox* const box = bound() ? keyBox() : nullptr;
    if (box != nullptr) box->KeyPress.raise(character);
}

/// Only a picture box can hold the keyboard focus here.
PictureBox* DrawnWindow::keyBox() const {
    for (Control* control : form().controls()) {
        if (control->kind() != ControlKind::PictureBox || !control->Visible) continue;
        auto* const box = static_cast<PictureBox*>(control);
        if (box->KeyPress.isTied()) return box;
    }
    return nullptr;
}

void DrawnWindow::keyUp(const KeyArgs& key) {
    enter([&] { form().KeyUp.raise(key); });
}

/// True: the form is not given the key.
bool DrawnWindow::takeFocusKey(const KeyArgs& key, bool isRepeat) {
    const KeyboardFocus::Answer answer = keyboard_.keyDown(form(), key, isRepeat);
    Control* const control = keyboard_.control();
    switch (answer.act) {
        case KeyboardFocus::Act::Move:
            showRing();
            surface_->focusChanged();
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

void DrawnWindow::setFocused(Control* control) {
    if (keyboard_.control() == control) return;
    keyboard_.set(control);
    showRing();
    surface_->focusChanged();
}

void DrawnWindow::showRing() {
    if (focused() != nullptr && !focused()->Visible) keyboard_.set(nullptr);
    const Rectangle around = focused() != nullptr ? pixelsOf(*focused()) : Rectangle();
    if (around == ring_) return;
    ring_ = around;
    surface_->showRing(around);
}

// --- Assistive programs ------------------------------------------------------------------------------------------

/// The mouse could press something here now: no box and no menu is up, and the window is on the screen.
bool DrawnWindow::takesMouse() const {
    return bound() && surface_->frame().isShown() && surface_->takesInput() && !pointer_.holdsButton() &&
           !eventLoop().held();
}

void DrawnWindow::clickMiddle(Control& control, int button) {
    if (takesMouse() && (&control == &form() || control.Visible)) pointer_.click(control, button);
}

void DrawnWindow::pressSoon(Control& control, int button) {
    surface_->later([this, &control, button] { clickMiddle(control, button); });
}

void DrawnWindow::setValueSoon(MouseControl& control, double value) {
    surface_->later([this, &control, value] {
        if (!takesMouse() || !control.Visible || !control.Enabled) return;
        enter([&] { control.SetAccessibleValue.raise(value); });
    });
}

}  // namespace corvane
