// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/player.h"

namespace corvane {

/// Registers frmMainPanel with the form host.
void registerPanelForms(Player& player);

}  // namespace corvane
