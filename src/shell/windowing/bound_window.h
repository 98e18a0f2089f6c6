// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "forms/form.h"
#include "platform/event_loop.h"

namespace corvane {

/// A window of the desktop, whatever is in it. Made hidden.
class WindowFrame {
public:
    virtual void activate() = 0;  ///< raises the window and gives it the keyboard focus
    virtual void putAway() = 0;   ///< hides it
    virtual bool isShown() const = 0;
    virtual void refresh() = 0;                          ///< paints now what has changed
    virtual int textWidth(const std::string& text) = 0;  ///< pixels of a form, in the form's font
    /// Its place in the order of windows and no more; both as Windows::SetWindowPos has them.
    virtual void stack(int insertAfter, std::uint32_t flags) = 0;

protected:
    ~WindowFrame() = default;
};

/// The window of one form: shows it as its properties say and hands input to its events. Bound when its form is
/// attached. A form may be detached inside one of its own events: unbind() then hides the window at once, and who owns
/// this object destroys it when no code of it runs any more. So it may touch itself after an event, but its form and
/// controls only while bound() is true.
class BoundWindow : protected ControlObserver {
public:
    BoundWindow(Form& form, EventLoop& loop) : form_(&form), loop_(loop) {}
    BoundWindow(const BoundWindow&) = delete;
    BoundWindow& operator=(const BoundWindow&) = delete;
    ~BoundWindow() override;

    virtual WindowFrame& frame() = 0;
    virtual void refresh() { frame().refresh(); }  ///< paints now what has changed
    virtual void beginDrag() {}                    ///< the left button is down: moves the window with the pointer

    /// Observes the form and each of its controls, then onBound().
    void bind();
    /// The form goes: hides the window; no event is raised afterwards.
    void unbind();
    bool bound() const { return form_ != nullptr; }
    Form& form() const { return *form_; }  ///< only while bound

protected:
    /// Runs a handler of the form for mouse or keyboard input, counted by the loop; not when unbound.
    void enter(const EventLoop::Handler& handler);
    /// Posts a handler; dropped when the window is unbound before its turn.
    void post(EventLoop::Handler handler);
    EventLoop& eventLoop() const { return loop_; }

    virtual void onBound() {}      ///< after bind(): build up what depends on the form
    virtual void onUnbinding() {}  ///< before unbind() lets go of the form

private:
    void stopObserving();

    Form* form_;
    EventLoop& loop_;
    bool observing_ = false;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);  ///< gone when unbound: posted handlers are dropped
};

}  // namespace corvane
