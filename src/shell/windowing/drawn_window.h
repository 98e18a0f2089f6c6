// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

#include "forms/keyboard_focus.h"
#include "shell/pointer.h"
#include "shell/windowing/bound_window.h"
#include "shell/windowing/surface.h"

namespace corvane {

/// A borderless window whose controls are drawn. This class is what every desktop decides alike: its place, its state,
/// and what mouse and keyboard mean; the deriving classes say where controls are and paint them. Positions are pixels
/// of the surface.
class DrawnWindow : public BoundWindow, protected Pointer::Host {
public:
    using Place = Pointer::Place;

    /// loop and screens outlive it.
    DrawnWindow(Form& form, EventLoop& loop, const Screens& screens, std::unique_ptr<Surface> surface);
    ~DrawnWindow() override;

    Surface& surface() const { return *surface_; }
    WindowFrame& frame() override { return surface_->frame(); }
    bool bound() const override { return BoundWindow::bound(); }
    Form& form() const override { return BoundWindow::form(); }
    void refresh() override;
    /// Moves the window with the pointer once it has left the place of the press; ends with the button's release.
    void beginDrag() override { pointer_.beginDrag(); }
    /// Files from elsewhere (another start of the program) as a drop on this form.
    void dropFiles(const DropData& dropped);
    bool takesFiles() const;
    /// The form's CloseRequest, posted: who asks may do so while a box is up or a handler runs.
    void requestClose();
    /// Screens came, went or changed: stays in sight, and is painted anew in their density.
    void screensChanged();
    /// Screens::factor() is another one.
    virtual void scaleChanged();

    // What the surface tells. Nothing but settlePlace() and paint() may be called from inside a call to the surface.
    /// button: a code of forms; at: of the surface, onScreen: of the screen. anyHeld: a button is down.
    void mouseDown(int button, int shift, Place at, PixelPoint onScreen, bool isDouble);
    void mouseMoved(int shift, bool anyHeld, Place at, PixelPoint onScreen);
    void mouseUp(int button, int shift, Place at);
    /// notches: above 0 away from the user; parts of one are gathered until they are whole.
    void wheelTurned(double notches, int shift, Place at);
    /// The release will be another's: a box or a menu is up, the window is minimised.
    void loseMouse();
    bool holdsMouse() const { return pointer_.holdsButton(); }
    bool isDragged() const { return pointer_.dragging(); }
    /// character: what the key types, 0: nothing, or typed() follows. True: the key moved or pressed what has the ring;
    /// it types nothing.
    bool keyDown(const KeyArgs& key, bool isRepeat, int character = 0);
    void typed(int character);
    void keyUp(const KeyArgs& key);
    void keyboardCame(bool here);  ///< the keyboard focus came or went
    void activated();
    void moved();  ///< the window lies elsewhere
    void minimised(bool is);
    void dropped(const DropData& data, Place at);
    /// Takes the place that the form wants, if it has changed since.
    void settlePlace();
    virtual void paint(Brush& brush) const = 0;
    struct Tip {
        std::string text;    ///< empty: none
        Rectangle place;     ///< while the pointer is inside, pixels
        bool moves = false;  ///< it says something else at each place of the control
    };
    Tip tipAt(Place at) const;
    const Control& controlAt(Place at) const { return *pointer_.hit(toForm(at)); }

    // For assistive programs. What they ask for is done as an event of its own, and only where the mouse could do it.
    Rectangle pixelsOf(const Control& control) const { return pixels(hitRect(control)); }  ///< where it takes the mouse
    /// A button of the mouse pressed and released in the middle of the control.
    void pressSoon(Control& control, int button);
    void setValueSoon(MouseControl& control, double value);
    /// The control that has the keyboard focus, with its ring; null: none, every key is the form's.
    Control* focused() const { return keyboard_.control(); }
    void setFocused(Control* control);
    const Control* pressed() const { return pointer_.pressed(); }  ///< the button that is held down; null: none

protected:
    /// What to say when the pointer rests on a control.
    virtual std::string toolTip(const Control& control) const { return control.ToolTipText; }
    /// A control's appearance or place changed.
    virtual void controlChanged(Control& control, PropertyId property) = 0;
    /// A drag begins with the press; else once the pointer has left its place.
    virtual bool dragsAtOnce() const = 0;
    /// Puts the window where the form's properties say.
    virtual void takePlace();

    const Screens& screens() const { return screens_; }
    Rectangle pixels(const Rectangle& twips) const { return screens_.toPixels(twips); }

    // Pointer::Host; hitRect() is for the deriving class.
    void pressedChanged(Control& /*control*/) override {}
    void enter(const EventLoop::Handler& handler) override { BoundWindow::enter(handler); }
    void post(EventLoop::Handler handler) override { BoundWindow::post(std::move(handler)); }

    void onBound() override;
    void onUnbinding() override;
    void propertyChanged(Control& control, PropertyId property) override;

private:
    void formChanged(PropertyId property);
    void takeVisibility();
    void takeWindowState();
    enum class Sight { Screens, FreeOfBars };
    void keepInSight(Sight sight);
    bool isOnScreen() const;
    Place toForm(Place at) const;
    void dragStep(PixelPoint now);
    void raiseTyped(int character);
    PictureBox* keyBox() const;
    bool takeFocusKey(const KeyArgs& key, bool isRepeat);
    void showRing();
    bool takesMouse() const;
    void clickMiddle(Control& control, int button);
    bool isReachable() const;

    std::unique_ptr<Surface> surface_;
    const Screens& screens_;
    Pointer pointer_{*this};
    KeyboardFocus keyboard_;
    Rectangle ring_;                    ///< as it was told to the surface
    PixelPoint pressedAt_;              ///< of the screen
    PixelPoint windowAt_;               ///< the window's place at the press
    const Control* wheeled_ = nullptr;  ///< where the wheel was turned last; only compared
    double wheelRest_ = 0;              ///< of a notch, turned there so far
    bool stale_ = false;                ///< the form's place or size has changed since the window took it
    bool taking_ = false;               ///< form and window are being brought in step
};

}  // namespace corvane
