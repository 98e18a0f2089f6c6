// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <memory>

#include "forms/form.h"
#include "forms/lists.h"

namespace corvane {

class NativeWindow;

/// Keeps one widget and its control in step. What the user does at the widget reaches the control through
/// NativeWindow::run; what the control's properties say reaches the widget with its signals blocked, so neither
/// echoes. The control is touched only while the window is bound. The widget belongs to its Qt parent.
class Binder {
public:
    Binder(NativeWindow& window, Control& control, QWidget* widget);
    Binder(const Binder&) = delete;
    Binder& operator=(const Binder&) = delete;
    virtual ~Binder() = default;

    Control& control() const { return control_; }
    QWidget& widget() const { return *widget_; }
    NativeWindow& window() const { return window_; }

    /// A property of the control has changed.
    virtual void changed(PropertyId property);
    /// Shows what changed() has put off.
    virtual void flush();
    /// Takes every property over.
    virtual void takeAll();
    /// The room that the widget's text needs, logical pixels; 0: no wish.
    virtual QSize wanted() const { return {0, 0}; }
    /// Form is going: the control may not be touched any more.
    virtual void release() {}
    /// The mouse went down on the widget and gives it the focus; mouse() follows.
    virtual void focusByMouse() {}
    /// The mouse went down, moved or went up on the widget. True: the widget itself gets nothing of it.
    virtual bool mouse(const QMouseEvent& /*event*/) { return false; }

    Twips designWidth() const { return designWidth_; }
    Twips designHeight() const { return designHeight_; }

protected:
    QString marked(const std::string& caption) const;  ///< as a text of the widget, its access key marked
    void flushSoon();

private:
    NativeWindow& window_;
    Control& control_;
    QWidget* widget_;
    Twips designWidth_;
    Twips designHeight_;
};

/// The binder for the control's kind, its widget under the parent; null for kinds that a dialog does not show.
std::unique_ptr<Binder> makeBinder(NativeWindow& window, Control& control, QWidget& parent);

// One a group of kinds.
std::unique_ptr<Binder> makeButtonBinder(NativeWindow& window, Control& control, QWidget& parent);
std::unique_ptr<Binder> makeLabelBinder(NativeWindow& window, Label& label, QWidget& parent);
std::unique_ptr<Binder> makeImageBinder(NativeWindow& window, Image& image, QWidget& parent);
std::unique_ptr<Binder> makeTextBinder(NativeWindow& window, TextBox& box, QWidget& parent);
std::unique_ptr<Binder> makeStepperBinder(NativeWindow& window, ScrollBar& bar, QWidget& parent);
std::unique_ptr<Binder> makeChoiceBinder(NativeWindow& window, ItemsControl& control, QWidget& parent);
std::unique_ptr<Binder> makeListBinder(NativeWindow& window, ItemsControl& control, QWidget& parent);

}  // namespace corvane
