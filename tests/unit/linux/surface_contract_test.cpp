// SPDX-License-Identifier: GPL-3.0-or-later
#include "contract/surface_contract.h"

#include <QKeyEvent>
#include <QMouseEvent>

#include "linux/qt_loop.h"
#include "linux/windowing/media_canvas.h"
#include "shell/windowing/make_drawn.h"
#include "unit/linux/offscreen.h"

namespace corvane::contract {
namespace {

/// The surface of this desktop, without a display.
class QtSurfaceStage : public SurfaceStage {
public:
    QtSurfaceStage() { test::offscreenApplication(); }
    std::unique_ptr<DrawnWindow> makeWindow(Form& form) override {
        return makeDrawn<CanvasWindow, MediaCanvas>(form, context_);
    }
    EventLoop& loop() override { return loop_; }
    bool waitFor(const std::function<bool()>& condition) override { return test::waitUntil(condition); }
    void press(DrawnWindow& window, int x, int y, int button, bool isDouble) override {
        held_ |= qtButton(button);
        send(window, isDouble ? QEvent::MouseButtonDblClick : QEvent::MouseButtonPress, {x, y}, qtButton(button));
    }
    void move(DrawnWindow& window, int x, int y) override { send(window, QEvent::MouseMove, {x, y}, Qt::NoButton); }
    void release(DrawnWindow& window, int x, int y, int button) override {
        held_ &= ~Qt::MouseButtons(qtButton(button));
        send(window, QEvent::MouseButtonRelease, {x, y}, qtButton(button));
    }
    void type(DrawnWindow& window, char letter) override {
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, Qt::Key_A + (letter - 'a'), {}, QString(QLatin1Char(letter)));
            QCoreApplication::sendEvent(&widgetOf(window), &event);
        }
    }
    void close(DrawnWindow& window) override { widgetOf(window).close(); }
    void minimise(DrawnWindow& window) override { widgetOf(window).showMinimized(); }

private:
    static QWidget& widgetOf(const DrawnWindow& window) { return dynamic_cast<QWidget&>(window.surface()); }
    static Qt::MouseButton qtButton(int button) {
        return button == kLeftButton ? Qt::LeftButton : button == kRightButton ? Qt::RightButton : Qt::MiddleButton;
    }
    void send(DrawnWindow& window, QEvent::Type type, QPoint at, Qt::MouseButton button) {
        QMouseEvent event(type, at, widgetOf(window).mapToGlobal(at), button, held_, {});
        QCoreApplication::sendEvent(&widgetOf(window), &event);
    }

    QtLoop loop_;
    DesktopContext context_{loop_};
    Qt::MouseButtons held_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Qt, SurfaceContract, QtSurfaceStage);

}  // namespace
}  // namespace corvane::contract
