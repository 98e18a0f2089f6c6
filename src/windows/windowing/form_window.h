// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "forms/form.h"
#include "windows/api.h"
#include "windows/windows_loop.h"

namespace corvane {

/// What every window of this desktop needs besides its form. Not owned; outlives the windows.
struct DesktopContext {
    WindowsLoop& loop;
    double wanted = 1.0;   ///< size of the windows, 0.5 to 4; from CORVANE_SCALE
    HWND panel = nullptr;  ///< the window of the painted form that was attached last

    std::function<void()> sessionAsked = {};  ///< the system asks whether its session may end
    std::function<void()> sessionEnds = {};   ///< it ends: what is to be put back is, when this returns

    /// Screen pixels to a form's pixel (15 twips): what is wanted, at the dots per inch of the panel's screen.
    double scale() const;
    RECT screen() const;    ///< the panel's; the primary one before it is shown
    RECT workArea() const;  ///< of that screen, without the task bar
    /// Where a form's position counts from. Painted forms: the primary screen's corner, wherever they are moved; the
    /// others, which are centred when they open: the corner of the panel's screen.
    POINT origin(const Form& form) const;
    int toPixels(Twips twips) const;  ///< nearest screen pixel
    Twips toTwips(double pixels) const;
};

/// The window of one form: shows it as its properties say and hands input to its events. Bound when its form is
/// attached. A form may be detached inside one of its own events: unbind() then hides the window at once and the object
/// is destroyed when no message is being handled, so a binder may touch itself after an event, but its form and
/// controls only while bound() is true.
class FormWindow : protected ControlObserver {
public:
    FormWindow(Form& form, DesktopContext& context);
    FormWindow(const FormWindow&) = delete;
    FormWindow& operator=(const FormWindow&) = delete;
    ~FormWindow() override;

    HWND handle() const { return handle_; }
    virtual void refresh() { UpdateWindow(handle_); }    ///< paints now what has changed
    virtual int textWidth(const std::string& text) = 0;  ///< pixels of a form, in the form's font
    void activate();                                     ///< raises the window and gives it the keyboard focus
    virtual void beginDrag() {}                          ///< the left button is down: moves the window with the pointer
    /// The dots per inch have changed, or the panel went to a screen with others.
    virtual void takeScale() = 0;
    /// A key of the window that its controls need for themselves (Tab, Enter); true: it was handled.
    virtual bool filter(MSG& /*message*/) { return false; }

    /// Observes the form and each of its controls, then onBound().
    void bind();
    /// The form goes: hides the window; no event is raised afterwards.
    void unbind();
    bool isBound() const { return form_ != nullptr; }
    Form& shownForm() const { return *form_; }  ///< only while bound
    DesktopContext& context() const { return context_; }

    /// The window that a handle belongs to; null: none of ours.
    static FormWindow* of(HWND handle);

protected:
    /// Makes the window, hidden. Messages come to message() from now on.
    void create(DWORD style, DWORD extendedStyle);
    virtual LRESULT message(UINT message, WPARAM first, LPARAM second);

    /// Runs a handler of the form for mouse or keyboard input, counted by the loop; not when unbound.
    void run(const EventLoop::Handler& handler);
    /// Posts a handler; dropped when the window is unbound before its turn.
    void later(EventLoop::Handler handler);
    /// The form's CloseRequest, posted.
    void requestClose();

    virtual void onBound() {}      ///< after bind(): build up what depends on the form
    virtual void onUnbinding() {}  ///< before unbind() lets go of the form

private:
    static LRESULT CALLBACK procedure(HWND handle, UINT message, WPARAM first, LPARAM second);
    void stopObserving();

    Form* form_;
    DesktopContext& context_;
    HWND handle_ = nullptr;
    bool observing_ = false;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);  ///< gone when unbound: posted handlers are dropped
};

/// Another program's window has the keyboard: what opens by itself leaves it there.
bool anotherProgramIsInFront();

int shiftState();  ///< kShiftMask, kCtrlMask, kAltMask as they are held for the message being handled

}  // namespace corvane
