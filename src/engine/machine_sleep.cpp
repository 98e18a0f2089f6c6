// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/machine_sleep.h"

#include <utility>

#include "engine/mdlPublicFunction.h"

namespace corvane {

void MachineSleep::begins() {
    const auto* const panel = player_.forms.find<MainPanelControls>();
    if (panel == nullptr || panel->isStopped() || panel->isPaused() || !player_.media.isOpen()) return;
    mdlPublicFunction::PauseFile(player_);
    held_ = player_.turns;
}

void MachineSleep::isOver() {
    const auto held = std::exchange(held_, std::nullopt);
    const auto* const panel = player_.forms.find<MainPanelControls>();
    if (panel == nullptr || held != player_.turns || !panel->isPaused()) return;
    mdlPublicFunction::PlayFile(player_);
}

}  // namespace corvane
