// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <QKeyEvent>
#include <QMouseEvent>

#include "linux/pictures/qt_pictures.h"
#include "linux/qt_loop.h"
#include "linux/windowing/qt_windows.h"
#include "unit/linux/offscreen.h"

namespace corvane::test {

/// A picture of one colour.
inline Picture plain(int width, int height, QColor colour) {
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(colour);
    return Picture(std::make_shared<QtPicture>(image));
}

/// Windows without a display, a form of one style on them, and input as Qt sends it.
class WindowRig : public ::testing::Test {
protected:
    explicit WindowRig(FormStyle style, double scale = 1.0)
        : app_(offscreenApplication()), context{loop, scale, {}}, form("frmTried", style) {
        form.Width = 200 * kTwipsPerPixel;
        form.Height = 100 * kTwipsPerPixel;
    }
    ~WindowRig() override {
        windows.detach(form);
        waitUntil([] { return true; });
    }

    void attach() {
        windows.attach(form);
        form.Show();
        settle();
    }
    void settle() {
        waitUntil([this] { return loop.idle(); });
    }
    QWidget& widget() { return *windows.widgetOf(form); }
    QImage shown() { return widget().grab().toImage(); }

    void mouse(QEvent::Type type, QPoint at, Qt::MouseButton button, Qt::KeyboardModifiers modifiers = {}) {
        if (type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick) held_ |= button;
        if (type == QEvent::MouseButtonRelease) held_ &= ~Qt::MouseButtons(button);
        QMouseEvent event(type, at, widget().mapToGlobal(at), type == QEvent::MouseMove ? Qt::NoButton : button, held_,
                          modifiers);
        QCoreApplication::sendEvent(&widget(), &event);
    }
    void press(QPoint at, Qt::MouseButton button = Qt::LeftButton) { mouse(QEvent::MouseButtonPress, at, button); }
    void moveTo(QPoint at) { mouse(QEvent::MouseMove, at, Qt::NoButton); }
    void release(QPoint at, Qt::MouseButton button = Qt::LeftButton) { mouse(QEvent::MouseButtonRelease, at, button); }
    void click(QPoint at, Qt::MouseButton button = Qt::LeftButton) {
        press(at, button);
        release(at, button);
    }
    void key(QEvent::Type type, int code, Qt::KeyboardModifiers modifiers = {}, const QString& text = {}) {
        QKeyEvent event(type, code, modifiers, text);
        QCoreApplication::sendEvent(&widget(), &event);
    }

    static void place(Control& control, int left, int top, int width, int height) {
        control.Move(static_cast<float>(left) * kTwipsPerPixel, static_cast<float>(top) * kTwipsPerPixel);
        control.SetSize(static_cast<float>(width) * kTwipsPerPixel, static_cast<float>(height) * kTwipsPerPixel);
    }

private:
    QApplication& app_;
    Qt::MouseButtons held_;

protected:
    QtLoop loop;
    DesktopContext context;
    QtWindows windows{context};
    Form form;
    std::vector<std::string> seen;
};

}  // namespace corvane::test
