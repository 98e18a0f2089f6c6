// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/player.h"

namespace corvane {

/// Registers the play-list editor frmFileList with the form host.
void registerListEditForms(Player& player);

}  // namespace corvane
