// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <string>

#include "forms/form.h"

namespace corvane {

/// Access keys of a dialog: letters chosen out of the captions, first letters of words where they are free, no two
/// alike. Default and Cancel buttons have none: Enter and Escape press them.
class AccessKeys {
public:
    AccessKeys() = default;
    explicit AccessKeys(const Form& form);

    /// The caption with "&" before the control's letter and other ampersands doubled.
    std::string marked(const Control& control, const std::string& caption) const;

private:
    void choose(const Control& control, bool initialsOnly);
    std::map<const Control*, char> letters_;  ///< capitals
};

}  // namespace corvane
