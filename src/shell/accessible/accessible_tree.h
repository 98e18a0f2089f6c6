// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "shell/accessible/accessible_window.h"

namespace corvane {

enum class AccessibleRole {
    Button,   ///< can be pressed
    Slider,   ///< is dragged to a value
    Text,     ///< only tells something: its name says what, its value is the caption
    Graphic,  ///< a picture
    Movie
};

struct AccessibleState {
    bool hidden = true;     ///< the control, or its window
    bool offscreen = true;  ///< nothing of it can be seen now
    bool disabled = false;
    bool focusable = false;
    bool focused = false;
    bool pressed = false;
    bool checkable = false;
    bool checked = false;
    bool readOnly = false;
};

/// A window whose controls are drawn, as assistive programs see it: below it stand the controls that have an
/// AccessibleName, in the form's order, whether they are shown or not, as what is hidden says by its state. These
/// programs keep what they have found and where it stands among the others: nothing moves when a control goes and
/// comes. Whatever is asked after the form has gone has an empty answer. User-interface thread.
class AccessibleTree {
public:
    /// The window outlives it, or it is asked nothing more.
    explicit AccessibleTree(AccessibleWindow& window) : window_(window) {}

    std::string name() const;                ///< the window's
    std::vector<Control*> controls() const;  ///< the children
    Control* at(std::size_t index) const;    ///< null: there are not so many
    std::optional<std::size_t> indexOf(const Control& control) const;
    /// The topmost shown one at a place of the window; null: none.
    Control* hit(double x, double y) const;
    /// The one that has the keyboard; null: none, or another window has it.
    Control* focused() const;

    static AccessibleRole roleOf(const Control& control);
    static std::string nameOf(const Control& control) { return control.AccessibleName; }
    /// What it is for, where that is not its name; else "".
    static std::string descriptionOf(const Control& control);
    static std::string captionOf(const Control& control);  ///< of a text; else ""
    /// Of a slider.
    static DraggedValue rangeOf(const Control& control);
    AccessibleState stateOf(const Control& control) const;

    void press(Control& control) const;
    /// Held inside the range; nothing happens while there is none.
    void setValue(Control& control, double value) const;
    void step(Control& control, int steps) const;  ///< of the range, up or down
    void takeFocus(Control& control) const;        ///< of one that is focusable
    bool hasMenu() const;                          ///< the right button on the form means something
    void showMenu() const;

private:
    AccessibleWindow& window_;
};

}  // namespace corvane
