// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <map>
#include <memory>
#include <vector>

#include "linux/native/binder.h"
#include "linux/native/form_scale.h"
#include "linux/windowing/form_window.h"
#include "shell/access_keys.h"

namespace corvane {

/// The window of a dialog form: a widget a control, each kept in step with its control by a binder. Enter presses the
/// form's Default button, Escape its Cancel button. Of the form's own key events F1 alone is raised: its controls take
/// the other keys.
class NativeWindow : public QDialog, public FormWindow {
public:
    NativeWindow(Form& form, DesktopContext& context);
    ~NativeWindow() override;

    int textWidth(const std::string& text) override;
    void beginDrag() override;
    void reject() override;

    /// Runs a handler of the form, then brings the widgets in step. For input of the widgets.
    void run(const EventLoop::Handler& handler);
    /// Posts a handler of the form (a drop, a request to close).
    void later(EventLoop::Handler handler) { post(std::move(handler)); }
    /// Raises what may close the form or put up a box, as an event of its own: the widget's own handler ends first. Not
    /// while a box is up, which only an assistive program would reach past.
    void command(const Event<>& event);
    /// The binder's flush() is called soon: several changes of a control are shown as one.
    void flushSoon(Binder& binder);

    const FormScale& scale() const { return scale_; }
    const AccessKeys& keys() const { return keys_; }
    /// The widget of a control, or null.
    QWidget* widgetOf(const Control& control) const;
    MouseArgs mouseArgs(const QWidget& widget, const QMouseEvent& event, bool isMove) const;

protected:
    void onBound() override;
    void onUnbinding() override;
    void propertyChanged(Control& control, PropertyId property) override;

    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void makeWidgets();
    void orderTabs();
    void formChanged(PropertyId property);
    void takeScale();
    void takeSize();
    void putInPlace();
    void focusFirst();
    void flush();
    void watchAlt(const QKeyEvent& event);
    bool takeHelpKey(const QKeyEvent& event);
    void showMnemonics(bool shown);
    void dragStep(const QMouseEvent& event);

    std::vector<std::unique_ptr<Binder>> binders_;  ///< in the form's paint order
    std::map<const Control*, Binder*> byControl_;
    std::vector<Binder*> waiting_;  ///< to be flushed
    FormScale scale_;
    AccessKeys keys_;
    std::unique_ptr<QStyle> style_;
    bool shownBefore_ = false;
    bool taking_ = false;    ///< the window itself changes the form's properties
    bool dragging_ = false;  ///< the form asked to be moved with the pointer
    QPoint pressedAt_;       ///< of the screen, at the last press
    QPoint windowAt_;        ///< the window's place at the last press
};

}  // namespace corvane
