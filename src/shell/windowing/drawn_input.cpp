// SPDX-License-Identifier: GPL-3.0-or-later
// What mouse, keyboard, drops and assistive programs do to the drawn controls of a window.
#include <algorithm>
#include <cmath>

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

/// A fine wheel tells parts of a notch. They belong to one control and one direction.
void DrawnWindow::wheelTurned(double notches, int shift, Place at) {
    constexpr double kMostNotches = 10;  // of one event: nobody turns it so far
    if (!isReachable() || std::isnan(notches) || notches == 0) return;
    Control* const under = pointer_.hit(toForm(at));
    if (under != wheeled_ || notches * wheelRest_ < 0) wheelRest_ = 0;
    wheeled_ = under;
    wheelRest_ += std::clamp(notches, -kMostNotches, kMostNotches);
    const double whole = std::trunc(wheelRest_);
    if (whole == 0) return;
    wheelRest_ -= whole;
    auto* const control = dynamic_cast<MouseControl*>(under);
    MouseControl& taker = control != nullptr && control->MouseWheel.isTied() ? *control : form();
    enter([&] { taker.MouseWheel.raise({static_cast<int>(whole), shift}); });
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
    const Rectangle place = pixelsOf(control);
    if (const auto* const mouse = dynamic_cast<const MouseControl*>(&control); mouse != nullptr && mouse->TipAt) {
        // Twips: no control that is drawn in pixels has such a tip.
        const double x = toForm(at).x - hitRect(control).x;
        const std::string text = mouse->TipAt(static_cast<float>(x));
        // A pixel on, another text is due.
        if (!text.empty()) return {text, {std::floor(at.x), place.y, 1, place.height}, true};
    }
    return {toolTip(control), place};
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
        form().KeyDown.raise({key.keyCode, key.shift, isRepeat});
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

/// The mouse means something here now: no box and no menu is up, and no button is held.
bool DrawnWindow::isReachable() const {
    return bound() && surface_->takesInput() && !pointer_.holdsButton() && !eventLoop().held();
}

/// It could press something here: the window is on the screen as well.
bool DrawnWindow::takesMouse() const { return isReachable() && surface_->frame().isShown(); }

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
