// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/player.h"

namespace corvane {

/// The movie starts after its delay, or when it is resumed: at the custom start position when that is in force.
void startMovie(Player& player, MovieWindowControls& window);

}  // namespace corvane
