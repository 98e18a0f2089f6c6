// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointF>
#include <QRectF>
#include <QWidget>

#include "forms/keyboard_focus.h"
#include "linux/windowing/form_window.h"
#include "shell/pointer.h"

namespace corvane {

class FocusRing;

/// A borderless window whose controls are drawn, not widgets. This class is its geometry, window state and input;
/// the deriving classes say where controls are and paint them. Positions are logical pixels of the widget.
class CanvasWindow : public QWidget, public FormWindow, protected Pointer::Host {
public:
    CanvasWindow(Form& form, DesktopContext& context);
    ~CanvasWindow() override;

    QWidget* widget() override { return this; }
    bool bound() const override { return FormWindow::bound(); }
    Form& form() const override { return FormWindow::form(); }
    /// Moves the window with the pointer once it has left the place of the press; ends with the button's release.
    void beginDrag() override { pointer_.beginDrag(); }
    /// Files from elsewhere (another start of the program) as a drop on this form.
    void dropFiles(const DropData& dropped);
    bool takesFiles() const;
    /// The form's CloseRequest, posted: the window manager may ask while a box is up or a handler runs.
    void requestClose();
    /// Screens came, went or changed: stays in sight, and is painted anew in their density.
    void screensChanged();

    // For assistive programs. What they ask for is done as an event of its own, and only where the mouse could do it.
    QRectF placeOf(const Control& control) const { return toWidget(hitRect(control)); }  ///< where it takes the mouse
    /// A button of the mouse pressed and released in the middle of the control.
    void pressSoon(Control& control, int button);
    void setValueSoon(MouseControl& control, double value);
    /// The control that has the keyboard focus, with its ring; null: none, every key is the form's.
    Control* focused() const { return keyboard_.control(); }
    void setFocused(Control* control);
    bool isHeld(const Control& control) const { return pressed() == &control; }
    void rememberAccessible() { isKnown_ = true; }  ///< assistive programs know of this window

protected:
    /// What to say when the pointer rests on a control.
    virtual QString toolTip(const Control& control) const;
    /// A control's appearance or place changed.
    virtual void controlChanged(Control& control, PropertyId property) = 0;
    /// Puts the window where the form's properties say.
    virtual void takeGeometry();
    QRect geometryOfForm() const;  ///< logical pixels of the screen

    const Control* pressed() const { return pointer_.pressed(); }
    QRectF toWidget(const Rectangle& twips) const;

    // Pointer::Host; hitRect() is for the deriving class.
    void pressedChanged(Control& /*control*/) override {}
    void enter(const EventLoop::Handler& handler) override { FormWindow::enter(handler); }
    void post(EventLoop::Handler handler) override { FormWindow::post(std::move(handler)); }

    // Also handed over by a surface elsewhere on the screen.
    void keyDown(QKeyEvent& event);
    void keyUp(QKeyEvent& event);
    void focusLost(Qt::FocusReason reason);

    void onBound() override;
    void onUnbinding() override;
    void propertyChanged(Control& control, PropertyId property) override;

    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void formChanged(PropertyId property);
    void takeVisibility();
    void takeWindowState();
    enum class Sight { Screens, FreeOfBars };
    void keepInSight(Sight sight);
    void tellPlace();  ///< to the form
    Pointer::Place toForm(QPointF position) const;
    PictureBox* keyBox() const;
    bool takeFocusKey(const KeyArgs& key, bool isRepeat);
    void showFocus();
    bool takesMouse() const;
    void clickMiddle(Control& control, int button);
    void dragStep(QPoint globalPosition);
    void showBeside();  ///< shown, and activated unless the user is in another program

    Pointer pointer_{*this};
    QPoint pressedAt_;     ///< of the screen
    QPoint windowAt_;      ///< the window's place at the press
    bool taking_ = false;  ///< the window itself changes the form's properties

    KeyboardFocus keyboard_;
    FocusRing* ring_ = nullptr;  ///< a child widget, made when it is first needed
    bool isKnown_ = false;       ///< to assistive programs
};

}  // namespace corvane
