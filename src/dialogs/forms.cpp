// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/forms.h"

#include <memory>

#include "dialogs/frmConveniences.h"
#include "dialogs/frmCustom.h"
#include "dialogs/frmFind.h"
#include "dialogs/frmMenuWindow.h"

namespace corvane {

void registerDialogForms(Player& player) {
    player.forms.registerForm(FormId::MenuWindow, [&player] { return std::make_unique<frmMenuWindow>(player); });
    player.forms.registerForm(FormId::Find, [&player] { return std::make_unique<frmFind>(player); });
    player.forms.registerForm(FormId::Custom, [&player] { return std::make_unique<frmCustom>(player); });
    player.forms.registerForm(FormId::Conveniences, [&player] { return std::make_unique<frmConveniences>(player); });
}

}  // namespace corvane
