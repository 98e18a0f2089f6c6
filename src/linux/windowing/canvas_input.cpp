// SPDX-License-Identifier: GPL-3.0-or-later
#include <QApplication>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QWindow>

#include "linux/windowing/canvas_window.h"
#include "linux/windowing/input_map.h"
#include "shell/drops.h"

namespace corvane {

namespace {

bool placesItself() { return !QGuiApplication::platformName().startsWith(QLatin1String("wayland")); }

}  // namespace

Pointer::Place CanvasWindow::toForm(QPointF position) const {
    const double unit = static_cast<double>(kTwipsPerPixel) / context().scale;
    return {position.x() * unit, position.y() * unit};
}

void CanvasWindow::mousePressEvent(QMouseEvent* event) {
    const int button = buttonCode(event->button());
    if (!bound() || button == 0) return;
    setFocused(nullptr);
    if (button == kLeftButton) {
        pressedAt_ = event->globalPosition().toPoint();
        windowAt_ = pos();
    }
    const bool isDouble = event->type() == QEvent::MouseButtonDblClick;
    pointer_.press(button, shiftState(event->modifiers()), toForm(event->position()), isDouble);
}

void CanvasWindow::mouseDoubleClickEvent(QMouseEvent* event) { mousePressEvent(event); }

void CanvasWindow::mouseMoveEvent(QMouseEvent* event) {
    if (!bound()) return;
    // It came up where nobody told it: over another desktop, behind a lock.
    if (pointer_.holdsButton() && event->buttons() == Qt::NoButton) return pointer_.lose();
    if (pointer_.dragging()) {
        dragStep(event->globalPosition().toPoint());
    } else {
        pointer_.move(shiftState(event->modifiers()), toForm(event->position()));
    }
}

void CanvasWindow::mouseReleaseEvent(QMouseEvent* event) {
    if (!bound()) return;
    pointer_.release(buttonCode(event->button()), shiftState(event->modifiers()), toForm(event->position()));
}

/// The grabbed point stays under the pointer. The panel goes with it from the press on; a short way on it is a click
/// all the same, by a hand that is not quite still. A media window stays until the way is that of a drag.
void CanvasWindow::dragStep(QPoint globalPosition) {
    const QPoint way = globalPosition - pressedAt_;
    if (!pointer_.wasMoved() && way.manhattanLength() >= QApplication::startDragDistance()) {
        pointer_.moved();
        // Where a window cannot place itself (Wayland) the other side moves it, and leaves the way so far out.
        if (!placesItself() && windowHandle() != nullptr && windowHandle()->startSystemMove()) {
            pointer_.lose();  // no release will come
            return;
        }
    }
    if (pointer_.wasMoved() || form().style() == FormStyle::Painted) move(windowAt_ + way);
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
    auto* const under = dynamic_cast<MouseControl*>(pointer_.hit(toForm(event->position())));
    if (under != nullptr && under->OLEDragDrop.isTied()) {
        post([under, dropped] { under->OLEDragDrop.raise(dropped); });
    } else {
        dropFiles(dropped);
    }
}

bool CanvasWindow::takesFiles() const { return bound() && fileTakerOf(form()) != nullptr; }

void CanvasWindow::dropFiles(const DropData& dropped) {
    MouseControl* const taker = bound() ? fileTakerOf(form()) : nullptr;
    if (taker != nullptr) post([taker, dropped] { taker->OLEDragDrop.raise(dropped); });
}

}  // namespace corvane
