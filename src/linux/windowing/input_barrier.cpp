// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/windowing/input_barrier.h"

#include <QGuiApplication>
#include <QWindow>

namespace corvane {

namespace {

bool isInput(QEvent::Type type) {
    switch (type) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseMove:
        case QEvent::Wheel:
        case QEvent::Enter:
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::ShortcutOverride:
        case QEvent::ContextMenu:
        case QEvent::TouchBegin:
        case QEvent::TouchUpdate:
        case QEvent::TouchEnd:
        case QEvent::TouchCancel:
        case QEvent::TabletPress:
        case QEvent::TabletMove:
        case QEvent::TabletRelease:
        case QEvent::NativeGesture:
        case QEvent::DragEnter:
        case QEvent::DragMove:
        case QEvent::Drop:
        case QEvent::Close:
            return true;
        default:
            return false;
    }
}

}  // namespace

InputBarrier::InputBarrier(QWidget& open) : open_(open) {
    for (QWindow* const each : QGuiApplication::topLevelWindows()) {
        if (!each->isVisible() || !shuts(each)) continue;
        QEvent blocked(QEvent::WindowBlocked);  // what is held there is let go
        QCoreApplication::sendEvent(each, &blocked);
    }
    qApp->installEventFilter(this);
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, [this](const QWindow* now) {
        if (now != nullptr && shuts(now)) show();
    });
}

bool InputBarrier::shuts(const QObject* window) const {
    return window->isWindowType() && window != open_.windowHandle();
}

void InputBarrier::show() {
    open_.raise();
    open_.activateWindow();
}

bool InputBarrier::eventFilter(QObject* to, QEvent* event) {
    if (!isInput(event->type()) || !shuts(to)) return false;
    if (event->type() == QEvent::MouseButtonPress) show();
    event->ignore();
    return true;
}

}  // namespace corvane
