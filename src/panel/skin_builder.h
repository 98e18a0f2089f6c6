// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/player.h"

namespace corvane {

/// Builds the panel from skin records 1 to 40 of player.gTextPath and the bitmap held by the menu form. False on any error:
/// an unreadable file, a malformed number, a cell outside the bitmap; the panel is then half built.
bool buildPanel(Player& player, MainPanelControls& panel);

}  // namespace corvane
