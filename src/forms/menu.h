// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "forms/control.h"

namespace corvane {

/// One entry of a menu; the caption "-" makes it a separator. Children make it a submenu.
class MenuItem : public Control {
public:
    MenuItem(Form* owner, std::string name, int index = -1)
        : Control(owner, ControlKind::MenuItem, std::move(name), index) {}
    Property<std::string> Caption{*this, PropertyId::Caption};
    Property<bool> Checked{*this, PropertyId::Checked, false};
    Event<> Click;

    bool Checkable = false;           ///< choosing it turns what Checked shows on and off
    std::vector<MenuItem*> children;  ///< not owned, top to bottom
    bool isSeparator() const { return Caption.get() == "-"; }
};

}  // namespace corvane
