// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <utility>

#include "shell/native/native_form.h"
#include "shell/windowing/bound_window.h"
#include "shell/windowing/screens.h"

namespace corvane {

/// The window of a dialog form that is a Frame of a desktop itself: what happens to the form is the NativeForm's, which
/// the derived class owns.
template <class Frame>
class DialogWindow : public BoundWindow, public Frame, public NativeSurface {
public:
    WindowFrame& frame() override { return *this; }
    void refresh() override { Frame::refresh(); }
    int textWidth(const std::string& text) override { return dialog_.textWidth(text); }
    PixelPoint onScreen(Twips left, Twips top) const override {
        const PixelPoint corner = screens_.cornerFor(form());
        return {corner.x + screens_.toPixels(left), corner.y + screens_.toPixels(top)};
    }

protected:
    /// All outlive it, the NativeForm but for its end. frame: what the frame is made of.
    template <class... FrameParts>
    DialogWindow(Form& form, EventLoop& loop, const Screens& screens, NativeForm& dialog, FrameParts&&... frame)
        : BoundWindow(form, loop), Frame(std::forward<FrameParts>(frame)...), screens_(screens), dialog_(dialog) {}

    void onUnbinding() override { dialog_.unbind(); }
    void propertyChanged(Control& control, PropertyId property) override { dialog_.changed(control, property); }
    /// The window's corner lies there on the screen now. Only while bound.
    void cornerIs(PixelPoint at) {
        const PixelPoint from = screens_.cornerFor(form());
        dialog_.moved(screens_.toTwips(at.x - from.x), screens_.toTwips(at.y - from.y));
    }

private:
    const Screens& screens_;
    NativeForm& dialog_;
};

}  // namespace corvane
