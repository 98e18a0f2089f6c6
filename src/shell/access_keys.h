// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <string>
#include <vector>

#include "forms/form.h"
#include "forms/menu.h"

namespace corvane {

/// Access keys of a dialog or of a menu: letters chosen out of the captions, first letters of words where they are
/// free, no two alike. Default and Cancel buttons have none: Enter and Escape press them.
class AccessKeys {
public:
    AccessKeys() = default;
    explicit AccessKeys(const Form& form);
    /// Of one level of a menu: its visible items.
    explicit AccessKeys(const MenuItem& menu);

    /// The caption with "&" before the control's letter and other ampersands doubled.
    std::string marked(const Control& control, const std::string& caption) const;

private:
    void chooseFor(std::vector<const Control*> controls);
    void choose(const Control& control, bool initialsOnly);
    std::map<const Control*, char> letters_;  ///< capitals
};

}  // namespace corvane
