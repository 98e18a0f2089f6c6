// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/player.h"

namespace corvane {

/// Ties what the movie and the image window have in common: keys, focus and the window manager's close.
void tieMediaWindow(Player& player, Form& window);

}  // namespace corvane
