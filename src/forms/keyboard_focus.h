// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/form.h"

namespace corvane {

/// The keyboard on a form whose controls are drawn. Until Tab is pressed there is no focus, and every key is the form's
/// alone. Tab then moves it over the controls that have a TabIndex; Space and Enter press the one that has it, the
/// arrow keys, Page Up, Page Down, Home and End move one that is dragged to a value, Escape takes the focus away.
class KeyboardFocus {
public:
    enum class Act {
        None,     ///< not a key of this class
        Move,     ///< control() is another one, or null: the form is given the key as well
        Press,    ///< press control()
        SetValue  ///< set control() to value
    };
    struct Answer {
        Act act = Act::None;
        double value = 0;
    };

    /// A key goes down on the form. isRepeat: it is still held.
    Answer keyDown(const Form& form, const KeyArgs& key, bool isRepeat);

    Control* control() const { return control_; }  ///< null: none
    void set(Control* control) { control_ = control; }

private:
    Answer move(const Form& form, bool back);

    Control* control_ = nullptr;
};

}  // namespace corvane
