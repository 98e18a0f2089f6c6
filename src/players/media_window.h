// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/player.h"

namespace corvane {

/// Ties what the movie and the image window have in common: keys, focus and the window manager's close.
void tieMediaWindow(Player& player, Form& window);

/// The control or clock of that window says that time has gone on: the medium that plays in it does what is due. When
/// another one plays, nothing.
void progressIn(Player& player, FormId window);

}  // namespace corvane
