// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/return_to_panel.h"

#include "engine/mdlPublicFunction.h"

namespace corvane {

void returnToPanel(Player& player, FormId dialog) {
    auto* panel = player.forms.find<MainPanelControls>();
    if (panel != nullptr) panel->Enabled = true;
    player.forms.unload(dialog);
    if (panel != nullptr) panel->Show();
    if (!player.gAutoPlay) return;
    player.ports.loop.post([&player] {
        if (player.forms.find<MainPanelControls>() != nullptr) mdlPublicFunction::PlayFile(player);
    });
}

}  // namespace corvane
