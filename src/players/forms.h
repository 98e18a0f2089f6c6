// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/player.h"

namespace corvane {

/// Registers the MCI, movie and image windows with the form host, and the media that play in them.
void registerPlayerForms(Player& player);

}  // namespace corvane
