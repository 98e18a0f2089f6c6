// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/windowing/full_screen_window.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include "linux/windowing/media_canvas.h"

namespace corvane {

namespace {
constexpr int kRestMs = 2000;
}

FullScreenWindow::FullScreenWindow(MediaCanvas& owner) : owner_(owner) {
    setWindowFlags(Qt::Window | Qt::FramelessWindowHint);
    setWindowTitle(owner.windowTitle());
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_NoSystemBackground);
    setAttribute(Qt::WA_InputMethodEnabled, false);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    rest_.setSingleShot(true);
    rest_.setInterval(kRestMs);
    connect(&rest_, &QTimer::timeout, this, [this] { setCursor(Qt::BlankCursor); });
}

bool FullScreenWindow::event(QEvent* event) {
    switch (event->type()) {
        case QEvent::KeyPress:
            owner_.keyDown(static_cast<QKeyEvent&>(*event));
            return true;
        case QEvent::KeyRelease:
            owner_.keyUp(static_cast<QKeyEvent&>(*event));
            return true;
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseMove:
        case QEvent::MouseButtonRelease:
        case QEvent::Wheel:
            return mouse(event);
        case QEvent::FocusOut:
            owner_.focusLost(static_cast<QFocusEvent*>(event)->reason());
            break;
        case QEvent::Show:
            rest_.start();
            break;
        case QEvent::Hide:
            rest_.stop();
            break;
        default:
            break;
    }
    return QWidget::event(event);
}

bool FullScreenWindow::mouse(QEvent* event) {
    unsetCursor();
    rest_.start();
    // The movie control fills this window, so positions are the same in both.
    QCoreApplication::sendEvent(&owner_, event);
    return true;
}

void FullScreenWindow::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    QRegion black(rect());
    if (owner_.movie() != nullptr) black -= owner_.movie()->covered(rect(), devicePixelRatioF());
    for (const QRect& part : black) painter.fillRect(part, Qt::black);
    if (owner_.movie() == nullptr) return;
    owner_.movie()->paint(painter, rect());
    painter.end();
    owner_.movie()->showIn(*this, rect());
}

void FullScreenWindow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    owner_.filledSizeChanged();
    update();
}

void FullScreenWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    if (DrawnWindow* const window = owner_.live()) window->requestClose();
}

}  // namespace corvane
