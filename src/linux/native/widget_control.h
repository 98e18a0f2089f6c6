// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <memory>

#include "shell/native/native_controls.h"

class QMouseEvent;

namespace corvane {

class NativeWindow;

/// A native control as a widget, which belongs to its Qt parent: the frame that holds it, else the window. Tells of the
/// focus; what else the user does is told by the classes of the kinds, while the window has its form.
class WidgetControl : public QObject, public virtual NativeControl {
public:
    /// The widget has been made under window.holderOf(control).
    WidgetControl(NativeWindow& window, QWidget* widget, const Control& control, NativeEvents& events);

    void place(const PixelRect& room) override;
    void show(bool shown) override { widget_->setVisible(shown); }
    void enable(bool enabled) override { widget_->setEnabled(enabled); }
    void setTip(const std::string& text) override;
    void focus() override { widget_->setFocus(Qt::OtherFocusReason); }
    PixelSize textSize(const std::string& text) const override;
    PixelSize ownSize() const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    /// The mouse went down, moved or went up on the widget. True: the widget itself gets nothing of it.
    virtual bool mouse(const QMouseEvent& /*event*/) { return false; }

    NativeWindow& window() const { return window_; }
    QWidget& widget() const { return *widget_; }
    NativeEvents& events() const { return events_; }

private:
    NativeWindow& window_;
    QWidget* widget_;
    NativeEvents& events_;
};

}  // namespace corvane
