// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPoint>
#include <QRectF>
#include <QTimer>
#include <QWidget>

#include "linux/windowing/form_window.h"
#include "linux/windowing/scaled_picture.h"
#include "shell/windowing/drawn_window.h"

namespace corvane {

class FocusRing;

/// The surface of a window whose controls are drawn. Pixels are logical ones.
class CanvasWindow : public QWidget, public QtFrame, public Surface {
public:
    explicit CanvasWindow(DesktopContext& context);
    ~CanvasWindow() override;

    WindowFrame& frame() override { return *this; }

    bool bound() const { return live() != nullptr; }
    void rememberAccessible() { isKnown_ = true; }  ///< assistive programs know of this window

    // Also handed over by a surface elsewhere on the screen.
    void keyDown(QKeyEvent& event);
    void keyUp(QKeyEvent& event);
    void focusLost(Qt::FocusReason reason);

    // Surface
    void setCaption(const std::string& text) override;
    void setUsable(bool usable) override { setEnabled(usable); }
    void showUp() override;
    void showMinimised() override;
    void restore() override;
    bool isMinimised() const override { return isMinimized() || away_; }
    bool takesInput() const override;
    bool isAltDown() const override;
    void takeKeyboard() override { setFocus(); }
    PixelPlace place() const override;
    void setPlace(const PixelPlace& place) override;
    void moveTo(PixelPoint corner) override;
    void placeWanted() override;
    bool isDrag(int across, int down) const override;
    bool dragBySystem() override;
    void paintAnew(const PixelPlace& part) override { update(part.x, part.y, part.width, part.height); }
    void paintAllAnew() override { update(); }
    void showRing(const Rectangle& place) override;
    double labelWidth(const std::string& text, double height) const override;
    bool labelFits(const std::string& text, double height, double width) const override;
    bool isOpaque(const Picture& picture) const override;
    void controlChanged(Control& control, PropertyId property) override;
    void focusChanged() override;
    void formGoes() override;
    void later(EventLoop::Handler handler) override;

protected:
    /// Paints the controls; region: of this widget, what must be painted.
    void paintForm(QPainter& painter, const QRegion& region);

    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool focusNextPrevChild(bool /*next*/) override { return false; }  // Tab is a key like any other

private:
    bool asksAgain();

    ScaledPicture scaled_;
    FocusRing* ring_ = nullptr;  ///< a child widget, made when it is first needed
    bool isKnown_ = false;       ///< to assistive programs
    bool away_ = false;          ///< minimised, where nobody tells (Wayland)
    bool settles_ = false;       ///< it has just been shown: elsewhere is no place that anybody chose
    QTimer settling_;
    QPoint wanted_;  ///< where it was put last
};

}  // namespace corvane
