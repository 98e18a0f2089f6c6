// SPDX-License-Identifier: GPL-3.0-or-later
// What the tool kit tells a surface, in the words of its window.
#include <QApplication>
#include <QDropEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QToolTip>
#include <QWheelEvent>
#include <utility>

#include "linux/windowing/canvas_window.h"
#include "linux/windowing/input_map.h"
#include "linux/windowing/shown_text.h"

namespace corvane {

namespace {

DrawnWindow::Place placeIn(QPointF position) { return {position.x(), position.y()}; }

PixelPoint onScreen(const QMouseEvent& event) {
    const QPoint at = event.globalPosition().toPoint();
    return {at.x(), at.y()};
}

}  // namespace

void CanvasWindow::mousePressEvent(QMouseEvent* event) {
    DrawnWindow* const window = live();
    if (window == nullptr) return;
    window->mouseDown(buttonCode(event->button()), shiftState(event->modifiers()), placeIn(event->position()),
                      onScreen(*event), event->type() == QEvent::MouseButtonDblClick);
}

void CanvasWindow::mouseDoubleClickEvent(QMouseEvent* event) { mousePressEvent(event); }

void CanvasWindow::mouseMoveEvent(QMouseEvent* event) {
    DrawnWindow* const window = live();
    if (window == nullptr) return;
    window->mouseMoved(shiftState(event->modifiers()), event->buttons() != Qt::NoButton, placeIn(event->position()),
                       onScreen(*event));
}

void CanvasWindow::mouseReleaseEvent(QMouseEvent* event) {
    DrawnWindow* const window = live();
    if (window == nullptr) return;
    window->mouseUp(buttonCode(event->button()), shiftState(event->modifiers()), placeIn(event->position()));
}

void CanvasWindow::wheelEvent(QWheelEvent* event) {
    constexpr double kNotch = QWheelEvent::DefaultDeltasPerStep;
    event->accept();
    DrawnWindow* const window = live();
    if (window == nullptr) return;
    window->wheelTurned(event->angleDelta().y() / kNotch, shiftState(event->modifiers()), placeIn(event->position()));
}

void CanvasWindow::keyPressEvent(QKeyEvent* event) { keyDown(*event); }

void CanvasWindow::keyReleaseEvent(QKeyEvent* event) { keyUp(*event); }

void CanvasWindow::keyDown(QKeyEvent& event) {
    event.accept();
    if (DrawnWindow* const window = live()) {
        window->keyDown(keyArgs(event), event.isAutoRepeat(), typedCharacter(event));
    }
}

void CanvasWindow::keyUp(QKeyEvent& event) {
    event.accept();
    DrawnWindow* const window = live();
    if (window != nullptr && !event.isAutoRepeat()) window->keyUp(keyArgs(event));
}

void CanvasWindow::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    if (DrawnWindow* const window = live()) window->keyboardCame(true);
}

void CanvasWindow::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    focusLost(event->reason());
}

void CanvasWindow::focusLost(Qt::FocusReason reason) {
    DrawnWindow* const window = live();
    if (window == nullptr) return;
    if (reason == Qt::PopupFocusReason) window->loseMouse();  // a menu is up: it gets the release
    window->keyboardCame(false);
}

void CanvasWindow::dragEnterEvent(QDragEnterEvent* event) {
    const DrawnWindow* const window = live();
    if (window != nullptr && window->takesFiles()) event->acceptProposedAction();
}

/// Shift pressed on the way asks for another action, which has to be accepted anew.
void CanvasWindow::dragMoveEvent(QDragMoveEvent* event) {
    const DrawnWindow* const window = live();
    if (window != nullptr && window->takesFiles()) event->acceptProposedAction();
}

void CanvasWindow::dropEvent(QDropEvent* event) {
    DrawnWindow* const window = live();
    if (window == nullptr) return;
    event->setDropAction(Qt::CopyAction);
    event->accept();
    DropData files = dropData(*event->mimeData());
    files.toAdd = event->modifiers().testFlag(Qt::ShiftModifier);
    window->dropped(files, placeIn(event->position()));
}

void CanvasWindow::moveEvent(QMoveEvent* event) {
    QWidget::moveEvent(event);
    if (event->spontaneous() && asksAgain()) return;
    if (DrawnWindow* const window = live()) window->moved();
}

void CanvasWindow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    DrawnWindow* const window = live();
    if (window == nullptr) return;
    if (event->type() == QEvent::WindowStateChange) {
        window->minimised(isMinimised());
    } else if (event->type() == QEvent::ActivationChange && isActiveWindow()) {
        if (std::exchange(away_, false)) window->minimised(false);
        window->activated();
    }
}

void CanvasWindow::closeEvent(QCloseEvent* event) {
    event->ignore();  // the form decides
    if (DrawnWindow* const window = live()) window->requestClose();
}

bool CanvasWindow::event(QEvent* event) {
    DrawnWindow* const window = live();
    if (window != nullptr && event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        const DrawnWindow::Tip tip = window->tipAt(placeIn(help->pos()));
        const QString text = shownText(tip.text);
        const QRectF place(tip.place.x, tip.place.y, tip.place.width, tip.place.height);
        if (text.isEmpty()) {
            QToolTip::hideText();
        } else {
            QToolTip::showText(help->globalPos(), plainTip(text), this, place.toAlignedRect());
        }
        return true;
    }
    if (event->type() == QEvent::ScreenChangeInternal) update();  // it may be denser or less dense
    if (event->type() == QEvent::WindowBlocked && window != nullptr) window->loseMouse();  // a box is up
    return QWidget::event(event);
}

}  // namespace corvane
