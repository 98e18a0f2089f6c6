// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/event_loop.h"
#include "shell/access_keys.h"
#include "shell/native/binder.h"
#include "shell/native/form_scale.h"
#include "shell/native/native_controls.h"

namespace corvane {

/// A dialog form on its window: a binder for each of its controls, the window's size, place and state, the first
/// focus. Escape presses the form's Cancel button. Of the form's own key events F1 alone is raised: its controls take
/// the other keys, and what they leave a form that takes keys. The form may go inside each of its events; nothing of it
/// is touched afterwards.
class NativeForm {
public:
    /// Both outlive it.
    NativeForm(EventLoop& loop, NativeSurface& surface) : loop_(loop), surface_(surface) {}
    NativeForm(const NativeForm&) = delete;
    NativeForm& operator=(const NativeForm&) = delete;

    /// Makes the controls and shows everything as the form has it.
    void bind(Form& form);
    /// The form goes: no event is raised any more, what was posted is dropped.
    void unbind();
    bool bound() const { return form_ != nullptr; }
    /// A property of the form or of a control of it has changed.
    void changed(Control& control, PropertyId property);
    /// The system's font or its scale has changed.
    void rescale();
    int textWidth(const std::string& text) const;  ///< pixels of a form

    // What happened to the window.
    void activated();
    void moved(Twips left, Twips top);
    void sized(PixelSize inner);
    void stateIs(WindowState state);
    void mouse(const NativeMouse& mouse);
    bool helpKey(int shift);       ///< F1 went down; true: the form takes it
    bool key(const KeyArgs& key);  ///< a key went down that no control took; true: the form takes it
    void cancel();                 ///< Escape
    void askToClose(bool altHeld);

    // For binders.
    Form& form() const { return *form_; }  ///< only while bound
    NativeSurface& surface() const { return surface_; }
    const FormScale& scale() const { return scale_; }
    const AccessKeys& keys() const { return keys_; }
    MouseArgs args(const NativeMouse& mouse) const;
    /// Runs a handler of the form, then brings the controls in step. For input that changes properties alone.
    void run(const EventLoop::Handler& handler);
    void post(EventLoop::Handler handler);
    /// Raises what may close the form or put up a box, as an event of its own: the native control's own handler ends
    /// first. Not while a box is up, which only an assistive program would reach past.
    void command(const Event<>& event);
    /// The binder's flush() is called soon: several changes of a control are shown as one.
    void flushSoon(Binder& binder);
    /// Runs it when the system's present event is over, if the form is still there.
    void soon(EventLoop::Handler handler);

private:
    void makeBinders();
    void takeScale();
    void measure();
    double shareThatFits() const;
    void formChanged(PropertyId property);
    void takeSize();
    void putInPlace();
    bool putInSight();
    void flush();
    EventLoop::Handler whileBound(EventLoop::Handler handler) const;

    EventLoop& loop_;
    NativeSurface& surface_;
    Form* form_ = nullptr;
    std::vector<std::unique_ptr<Binder>> binders_;
    std::map<const Control*, Binder*> byControl_;
    std::vector<Binder*> waiting_;  ///< to be flushed
    FormScale scale_;
    AccessKeys keys_;
    std::shared_ptr<bool> alive_;  ///< while bound
    bool shownBefore_ = false;
    bool taking_ = false;  ///< the window changes the form's properties
};

}  // namespace corvane
