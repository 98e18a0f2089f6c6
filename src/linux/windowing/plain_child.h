// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <xcb/xcb.h>

#include <QObject>
#include <QPointer>
#include <QRect>
#include <QWidget>
#include <QWindow>
#include <memory>

namespace corvane {

/// A bare window of X11 on one of ours, for somebody else to draw in. What is typed and clicked on it is its parent's.
/// While the parent is not to be seen it is hidden, so that the parent is told when it comes back: it must be placed
/// anew when the parent is painted.
class PlainChild : public QObject {
public:
    /// Null: it is no window of X11, or has none yet.
    static std::unique_ptr<PlainChild> make(QWidget& window);
    ~PlainChild() override;

    xcb_window_t number() const { return number_; }
    bool isOf(const QWidget& window) const { return parent_ == window.windowHandle(); }
    /// Shown there, in device pixels of the parent. True: something changed, and the display has done it.
    bool place(const QRect& place);
    void hide();

private:
    PlainChild(xcb_connection_t* connection, QWindow& parent);
    bool eventFilter(QObject* watched, QEvent* event) override;
    /// Another connection finds what was done.
    void settle() const;

    xcb_connection_t* connection_;
    QPointer<QWindow> parent_;
    xcb_window_t number_ = XCB_WINDOW_NONE;
    QRect place_;
    bool shown_ = false;
};

}  // namespace corvane
