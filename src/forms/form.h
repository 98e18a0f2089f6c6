// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "forms/control.h"
#include "forms/controls.h"

namespace corvane {

enum class WindowState { Normal = 0, Minimized = 1, Maximized = 2 };

/// How a desktop dresses a form.
enum class FormStyle {
    Painted,  ///< borderless, composed from pictures at the skin's own resolution
    Media,    ///< borderless, shows a movie or a picture
    Dialog,   ///< a native window with native controls
    Hidden    ///< a host of controls, never shown
};

/// A window. Geometry is in twips on the screen. Invisible until shown.
class Form : public MouseControl {
public:
    Form(std::string name, FormStyle style);
    ~Form() override;

    FormStyle style() const { return style_; }
    /// The controls in paint order, bottom to top. Pointers stay valid until the control dies.
    const std::vector<Control*>& controls() const { return controls_; }
    /// Control of that name and index, or null.
    Control* control(const std::string& name, int index = -1) const;
    /// Puts a control above all others in paint and hit order.
    void raise(Control& control);

    Property<std::string> Caption{*this, PropertyId::Caption};
    Property<corvane::Picture> Picture{*this, PropertyId::Picture};
    Property<corvane::WindowState> WindowState{*this, PropertyId::WindowState, WindowState::Normal};
    bool KeyPreview = true;  ///< keys reach the form before the control that has the focus
    bool Resizable = false;  ///< dialogs: can be made larger
    Twips MinWidth = 0;      ///< dialogs: smallest inner size
    Twips MinHeight = 0;

    void Show() { Visible = true; }
    void Hide() { Visible = false; }

    Event<> Load;
    Event<> Unload;
    Event<> Activate;
    Event<> Resize;       ///< the user changed Width or Height
    Event<int> KeyPress;  ///< character code
    Event<KeyArgs> KeyDown;
    Event<KeyArgs> KeyUp;
    /// The window manager asks the window to close; altHeld: Alt was down (Alt+F4).
    Event<bool> CloseRequest;

private:
    friend class Control;
    void add(Control& control);
    void remove(Control& control);

    FormStyle style_;
    std::vector<Control*> controls_;
};

}  // namespace corvane
