// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/player.h"

namespace corvane {

/// Registers frmStartup with the form host.
void registerStartupForms(Player& player);

/// The program's start: single instance, platform test, paths, checks; then frmStartup with the opening animation.
/// False: the program ends at once (a box may have been shown).
bool startProgram(Player& player);

}  // namespace corvane
