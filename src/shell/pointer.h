// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/form.h"
#include "forms/rectangle.h"
#include "platform/event_loop.h"

namespace corvane {

/// The mouse on a form whose controls are drawn: which control it means, which events follow a press and a release, and
/// what happens when the pointer is taken away. Positions are twips of the form. A form may be detached inside one of
/// its own events: the host then says that it is not bound, and its controls are left alone.
class Pointer {
public:
    struct Place {
        double x = 0, y = 0;
    };

    /// The window that has the mouse.
    class Host {
    public:
        virtual bool bound() const = 0;
        virtual Form& form() const = 0;  ///< only while bound
        /// The rectangle that takes the mouse for a control; empty: none.
        virtual Rectangle hitRect(const Control& control) const = 0;
        /// A control was pressed or let go: its picture changes.
        virtual void pressedChanged(Control& control) = 0;
        virtual void enter(const EventLoop::Handler& handler) = 0;  ///< runs a handler of the form now
        virtual void post(EventLoop::Handler handler) = 0;          ///< runs it later, unless the form has gone

    protected:
        ~Host() = default;
    };

    explicit Pointer(Host& host) : host_(host) {}

    /// The visible control at a place, the topmost; the form where there is none.
    Control* hit(Place at) const;
    /// The button that is held down with the pointer inside; null: none.
    const Control* pressed() const { return held_ ? target_ : nullptr; }
    bool holdsButton() const { return buttons_ != 0; }

    void press(int button, int shift, Place at, bool isDouble);
    /// A button pressed and released in the middle of a control, whatever lies above it.
    void click(Control& control, int button);
    void move(int shift, Place at);
    void release(int button, int shift, Place at);
    /// A control is hidden or disabled: it is no longer held.
    void controlChanged(const Control& control, PropertyId property);
    /// The pointer is taken away while a button is held (a box, a menu, minimised): what was pressed is let go.
    void lose();
    /// As lose(), without telling anyone.
    void letGo();
    /// The window goes, perhaps after its controls: as letGo(), and no control is looked at.
    void forget();

    /// The form asked to be moved with the pointer: true while a left press lasts.
    bool dragging() const { return dragging_; }
    void beginDrag();
    /// The window has really been moved: the release is no click.
    void moved() { moved_ = true; }
    bool wasMoved() const { return moved_; }  ///< since the press of the left button

private:
    MouseArgs arguments(const Control& control, int button, int shift, Place at) const;
    Rectangle placeOf(const Control& control) const;
    void pressOn(Control& chosen, int button, int shift, Place at, bool isDouble);
    void setHeld(bool held);

    Host& host_;
    Control* target_ = nullptr;  ///< has the mouse from press to release
    int buttons_ = 0;            ///< held on the target
    bool held_ = false;          ///< the target is a button, held by the left button, with the pointer inside
    bool dragging_ = false;
    bool moved_ = false;
};

}  // namespace corvane
