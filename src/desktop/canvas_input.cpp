// SPDX-License-Identifier: GPL-3.0-or-later
#include <QApplication>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QWindow>

#include "desktop/canvas_window.h"
#include "desktop/input_map.h"

namespace corvane {

namespace {

MouseControl* asMouse(Control* control) { return dynamic_cast<MouseControl*>(control); }

bool isButton(const Control& control) { return control.kind() == ControlKind::CommandButton; }

}  // namespace

Control* CanvasWindow::hit(QPointF position) const {
    const auto& controls = form().controls();
    for (auto each = controls.rbegin(); each != controls.rend(); ++each) {
        if ((*each)->Visible && hitRect(**each).contains(position)) return *each;
    }
    return &form();
}

MouseArgs CanvasWindow::mouseArgs(const Control& control, int button, Qt::KeyboardModifiers modifiers,
                                  QPointF position) const {
    const QPointF corner = &control == &form() ? QPointF() : hitRect(control).topLeft();
    const QPointF inside = position - corner;
    const bool pixels = control.kind() == ControlKind::PictureBox &&
                        static_cast<const PictureBox&>(control).Scale == ScaleMode::InPixels;
    const float unit = pixels ? kTwipsPerPixel : 1.0F;
    return {button, shiftState(modifiers), context().toTwips(inside.x()) / unit, context().toTwips(inside.y()) / unit};
}

void CanvasWindow::setHeld(bool held) {
    if (held_ == held) return;
    held_ = held;
    if (target_ != nullptr) pressedChanged(*target_);
}

void CanvasWindow::letGo() {
    setHeld(false);
    target_ = nullptr;
    buttons_ = 0;
    dragging_ = false;
}

void CanvasWindow::loseMouse() {
    MouseControl* const mouse = asMouse(target_);
    const int held = buttons_;
    letGo();
    if (mouse == nullptr) return;
    for (const int button : {kLeftButton, kRightButton, kMiddleButton}) {
        // A right release opens the menu: nobody asked for that here.
        if ((held & button) == 0 || button == kRightButton) continue;
        post([mouse, button] { mouse->MouseUp.raise({button, 0, 0, 0}); });
    }
}

void CanvasWindow::mousePressEvent(QMouseEvent* event) {
    const int button = buttonCode(event->button());
    if (!bound() || button == 0) return;
    setFocused(nullptr);
    pressedAt_ = event->globalPosition().toPoint();
    windowAt_ = pos();
    const bool isDouble = event->type() == QEvent::MouseButtonDblClick;
    Control* target = buttons_ != 0 && target_ != nullptr ? target_ : hit(event->position());
    press(*target, button, event->modifiers(), event->position(), isDouble);
}

void CanvasWindow::mouseDoubleClickEvent(QMouseEvent* event) { mousePressEvent(event); }

void CanvasWindow::press(Control& chosen, int button, Qt::KeyboardModifiers modifiers, QPointF position,
                         bool isDouble) {
    Control* target = &chosen;
    if (!target->Enabled && target != &form()) {
        // A disabled control takes no click; the other buttons of the mouse mean the form beneath it.
        if (button == kLeftButton) return;
        target = &form();
    }
    MouseControl* const mouse = asMouse(target);
    if (mouse == nullptr) return;
    target_ = target;
    buttons_ |= button;
    moved_ = false;
    if (button == kLeftButton && isButton(*target)) setHeld(true);
    const MouseArgs args = mouseArgs(*target, button, modifiers, position);
    enter([&] { mouse->MouseDown.raise(args); });
    if (!bound() || target_ != target || !isDouble || button != kLeftButton || isButton(*target)) return;
    enter([&] { mouse->DblClick.raise(); });
}

void CanvasWindow::mouseMoveEvent(QMouseEvent* event) {
    if (!bound()) return;
    if (dragging_ && dragStep(event->globalPosition().toPoint())) return;
    Control* const target = target_ != nullptr ? target_ : hit(event->position());
    MouseControl* const mouse = asMouse(target);
    if (mouse == nullptr || (!target->Enabled && target != &form())) return;
    if (target == target_ && isButton(*target) && (buttons_ & kLeftButton) != 0) {
        setHeld(hitRect(*target).contains(event->position()));
    }
    if (!mouse->MouseMove.isTied()) return;
    const MouseArgs args = mouseArgs(*target, 0, event->modifiers(), event->position());
    enter([&] { mouse->MouseMove.raise(args); });
}

void CanvasWindow::mouseReleaseEvent(QMouseEvent* event) {
    const int button = buttonCode(event->button());
    if (bound() && (buttons_ & button) != 0) release(button, event->modifiers(), event->position());
}

void CanvasWindow::release(int button, Qt::KeyboardModifiers modifiers, QPointF position) {
    Control* const target = target_;
    MouseControl* const mouse = asMouse(target);
    buttons_ &= ~button;
    if (button == kLeftButton) dragging_ = false;
    const bool inside = target == &form() ? rect().contains(position.toPoint()) : hitRect(*target).contains(position);
    const bool click =
        button == kLeftButton && inside && !moved_ && target->Visible && (target->Enabled || target == &form());
    if (button == kLeftButton) setHeld(false);
    if (buttons_ == 0) target_ = nullptr;
    const MouseArgs args = mouseArgs(*target, button, modifiers, position);
    const bool released = button != kLeftButton || !moved_;
    enter([&] {
        if (click && isButton(*target)) mouse->Click.raise();
        if (released && bound()) mouse->MouseUp.raise(args);
        if (click && bound() && !isButton(*target)) mouse->Click.raise();
    });
}

void CanvasWindow::beginDrag() {
    if (target_ == nullptr || (buttons_ & kLeftButton) == 0) return;
    dragging_ = true;
}

bool CanvasWindow::dragStep(QPoint globalPosition) {
    const QPoint way = globalPosition - pressedAt_;
    if (!moved_) {
        if (way.manhattanLength() < QApplication::startDragDistance()) return true;
        moved_ = true;
        move(windowAt_ + way);  // the window manager would leave the way so far out
        if (windowHandle() != nullptr && windowHandle()->startSystemMove()) {
            letGo();  // the window manager has the pointer now: no release will come
            return true;
        }
    }
    move(windowAt_ + way);
    return true;
}

void CanvasWindow::keyPressEvent(QKeyEvent* event) { keyDown(*event); }

void CanvasWindow::keyReleaseEvent(QKeyEvent* event) { keyUp(*event); }

void CanvasWindow::keyDown(QKeyEvent& event) {
    event.accept();
    const KeyArgs args = keyArgs(event);
    if (takeFocusKey(args, event.isAutoRepeat())) return;
    const int character = typedCharacter(event);
    enter([&] {
        form().KeyDown.raise(args);
        if (character == 0 || !bound()) return;
        form().KeyPress.raise(character);
        PictureBox* const box = bound() ? keyBox() : nullptr;
        if (box != nullptr) box->KeyPress.raise(character);
    });
}

/// Only a picture box can hold the keyboard focus here.
PictureBox* CanvasWindow::keyBox() const {
    for (Control* control : form().controls()) {
        if (control->kind() != ControlKind::PictureBox || !control->Visible) continue;
        auto* const box = static_cast<PictureBox*>(control);
        if (box->KeyPress.isTied()) return box;
    }
    return nullptr;
}

void CanvasWindow::keyUp(QKeyEvent& event) {
    event.accept();
    if (event.isAutoRepeat()) return;
    const KeyArgs args = keyArgs(event);
    enter([&] { form().KeyUp.raise(args); });
}

void CanvasWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (bound() && takesFiles()) event->acceptProposedAction();
}

void CanvasWindow::dropEvent(QDropEvent* event) {
    if (!bound()) return;
    event->setDropAction(Qt::CopyAction);
    event->accept();
    const DropData dropped = dropData(*event->mimeData());
    auto* const under = asMouse(hit(event->position()));
    if (under != nullptr && under->OLEDragDrop.isTied()) {
        post([under, dropped] { under->OLEDragDrop.raise(dropped); });
    } else {
        dropFiles(dropped);
    }
}

bool CanvasWindow::takesFiles() const {
    if (!bound() || !form().Enabled) return false;
    if (form().OLEDragDrop.isTied()) return true;
    for (Control* control : form().controls()) {
        const auto* mouse = asMouse(control);
        if (mouse != nullptr && mouse->OLEDragDrop.isTied()) return true;
    }
    return false;
}

void CanvasWindow::dropFiles(const DropData& dropped) {
    MouseControl* taker = &form();
    if (!taker->OLEDragDrop.isTied()) {
        for (Control* control : form().controls()) {
            auto* const mouse = asMouse(control);
            if (mouse == nullptr || !mouse->OLEDragDrop.isTied()) continue;
            taker = mouse;
            break;
        }
    }
    post([taker, dropped] { taker->OLEDragDrop.raise(dropped); });
}

}  // namespace corvane
