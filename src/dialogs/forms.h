// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/player.h"

namespace corvane {

/// Registers the popup menu's form frmMenuWindow, the settings dialog frmCustom with its page frmConveniences, and
/// frmFind, the window that finds an entry, with the form host.
void registerDialogForms(Player& player);

}  // namespace corvane
