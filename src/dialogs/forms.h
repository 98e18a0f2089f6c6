// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/player.h"

namespace corvane {

/// Registers the popup menu's form frmMenuWindow and the settings dialog frmCustom with the form host.
void registerDialogForms(Player& player);

}  // namespace corvane
