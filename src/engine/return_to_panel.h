// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/player.h"

namespace corvane {

/// The end of the editor or the settings dialog: closes it, brings the panel back where it was and, with auto play on,
/// starts the list when the events that wait now have run. The dialog may call this from its own handlers.
void returnToPanel(Player& player, FormId dialog);

}  // namespace corvane
