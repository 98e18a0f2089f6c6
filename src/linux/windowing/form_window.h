// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPoint>
#include <QPointer>
#include <QWidget>
#include <memory>
#include <string>

#include "forms/form.h"
#include "linux/graveyard.h"
#include "platform/event_loop.h"

class QScreen;

namespace corvane {

/// What every window of this desktop needs besides its form. Not owned; outlives the windows.
struct DesktopContext {
    EventLoop& loop;
    double scale = 1.0;  ///< logical screen pixels to a form's pixel (15 twips), 0.5 to 4; from CORVANE_SCALE

    QPointer<QWidget> panel;     ///< the window of the painted form that was attached last
    QPointer<QWidget> box = {};  ///< the message box that is up; null: none is
    Graveyard graveyard{loop};   ///< for windows and menus that are shown no more

    QScreen* screen() const;  ///< the panel's; the primary one before it is shown
    /// Where a form's position counts from. Painted forms: the primary screen's corner, wherever they are moved; the
    /// others, which are centred when they open: the corner of the panel's screen.
    QPoint origin(const Form& form) const;
    int toPixels(Twips twips) const;  ///< nearest logical screen pixel
    Twips toTwips(double pixels) const;
};

/// The window of one form: shows it as its properties say and hands input to its events. Bound when its form is
/// attached. A form may be detached inside one of its own events: unbind() then hides the window at once and the object
/// goes to the graveyard, so a binder may touch itself after an event, but its form and controls only while bound() is
/// true.
class FormWindow : protected ControlObserver {
public:
    FormWindow(Form& form, DesktopContext& context);
    FormWindow(const FormWindow&) = delete;
    FormWindow& operator=(const FormWindow&) = delete;
    ~FormWindow() override;

    virtual QWidget* widget() = 0;                   ///< the top-level widget, owned by this object
    virtual void refresh();                          ///< paints now what has changed
    virtual int textWidth(const std::string& text);  ///< pixels of a form, in the form's font
    virtual void activate();                         ///< raises the window and gives it the keyboard focus
    virtual void beginDrag() {}                      ///< the left button is down: moves the window with the pointer

    /// Observes the form and each of its controls, then onBound().
    void bind();
    /// The form goes: hides the window; no event is raised afterwards.
    void unbind();
    bool bound() const { return form_ != nullptr; }
    Form& form() const { return *form_; }  ///< only while bound
    DesktopContext& context() const { return context_; }

protected:
    /// Runs a handler of the form for mouse or keyboard input, counted by the loop; not when unbound.
    void enter(const EventLoop::Handler& handler);
    /// Posts a handler; dropped when the window is unbound before its turn.
    void post(EventLoop::Handler handler);

    virtual void onBound() {}      ///< after bind(): build up what depends on the form
    virtual void onUnbinding() {}  ///< before unbind() lets go of the form

private:
    void stopObserving();

    Form* form_;
    DesktopContext& context_;
    bool observing_ = false;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);  ///< gone when unbound: posted handlers are dropped
};

/// Text as the form has it: UTF-8 where it is valid, else byte by byte (so that nothing is lost from sight).
QString toQString(const std::string& text);

}  // namespace corvane
