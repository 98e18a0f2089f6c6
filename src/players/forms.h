// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/player.h"

namespace corvane {

/// Registers the MCI, movie and image windows with the form host.
void registerPlayerForms(Player& player);

}  // namespace corvane
