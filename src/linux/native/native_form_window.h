// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <map>
#include <memory>

#include "linux/native/widget_control.h"
#include "linux/pictures/thumbnails.h"
#include "linux/windowing/form_window.h"
#include "shell/native/dialog_window.h"

namespace corvane {

/// The window of a dialog form, a widget for each of its controls.
class NativeWindow : public QDialog, public DialogWindow<QtFrame> {
public:
    NativeWindow(Form& form, DesktopContext& context);
    ~NativeWindow() override;

    void beginDrag() override { dragging_ = true; }
    void reject() override { native_.cancel(); }

    // Each beside the class of its widget.
    std::unique_ptr<NativeButton> makeButton(const Control& control, NativeEvents& events) override;
    std::unique_ptr<NativeLabel> makeLabel(const Label& label, NativeEvents& events) override;
    std::unique_ptr<NativeMark> makeMark(const Image& image, NativeEvents& events) override;
    std::unique_ptr<NativeField> makeField(const TextBox& box, NativeEvents& events) override;
    std::unique_ptr<NativeStepper> makeStepper(const ScrollBar& bar, NativeEvents& events) override;
    std::unique_ptr<NativeChoice> makeChoice(const ItemsControl& control, NativeEvents& events) override;
    std::unique_ptr<NativeList> makeList(const ItemsControl& control, NativeEvents& events) override;

    ThumbnailReader* thumbnails() override { return &thumbnails_; }
    bool framesHold() const override { return true; }
    PixelSize textSize(const std::string& text) const override;
    double leastScale() const override { return 1.0; }
    void setTextShare(double share) override;
    void orderTabs(const std::vector<const Control*>& order) override;
    void focusFirst(const Control& control) override;
    void setTitle(const std::string& text) override;
    void enable(bool enabled) override { setEnabled(enabled); }
    void show(bool shown) override;
    void setState(WindowState state) override;
    void setInner(PixelSize size, PixelSize least) override;
    PixelSize outer() const override { return {width(), height()}; }
    void moveOuter(const PixelRect& place) override;
    PixelRect room() const override;
    void soon(EventLoop::Handler handler) override;

    // For the widgets.
    void add(const Control& control, QWidget& widget);
    QWidget* widgetOf(const Control& control) const;  ///< null: it has none
    QWidget& holderOf(const Control& control);        ///< the frame that it lies in, else the window
    void watchAlt(const QKeyEvent& event);
    void dragStep(const QMouseEvent& event);

protected:
    void onBound() override { native_.bind(form()); }

    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override { mouse(*event); }
    void mouseMoveEvent(QMouseEvent* event) override { mouse(*event); }
    void mouseReleaseEvent(QMouseEvent* event) override { mouse(*event); }

private:
    bool takeHelpKey(const QKeyEvent& event);
    void showMnemonics(bool shown);
    void mouse(const QMouseEvent& event);

    std::map<const Control*, QWidget*> widgets_;
    std::unique_ptr<QStyle> style_;
    Thumbnails thumbnails_;
    NativeForm native_;
    bool fontIsOurs_ = false;  ///< while it is changed here
    bool dragging_ = false;    ///< the form asked to be moved with the pointer
    QPoint pressedAt_;         ///< of the screen, at the last press
    QPoint windowAt_;          ///< the window's place at the last press
};

/// A mouse event of a widget as it is told.
NativeMouse nativeMouse(const QMouseEvent& event, const QWidget& widget);

}  // namespace corvane
