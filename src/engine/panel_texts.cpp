// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/panel_texts.h"
#include "types/numbers.h"

namespace corvane::mdlPublicFunction {

void nameStepButtons(MainPanelControls& panel, bool paused) {
    panel.cmdMainPanel[kPrev].ToolTipText = paused ? "Back" : "Prev";
    panel.cmdMainPanel[kNext].ToolTipText = paused ? "Step" : "Next";
}

void showPlaying(Player& player, MainPanelControls& panel) {
    player.gPlaying = true;
    panel.cmdMainPanel[kPlay].Enabled = false;
    panel.cmdMainPanel[kPause].Enabled = true;
    panel.cmdMainPanel[kEditor].Enabled = false;
    nameStepButtons(panel, false);
}

void setTime(MainPanelControls& panel, const std::string& text) { panel.lblMainPanel[kTimeLabel].Caption = text; }

void setSlider(Player& player, MainPanelControls& panel, double position, double length) {
    panel.pctSlide.Width = sliderWidth(player, position, length);
}

void showEntry(Player& player, MainPanelControls& panel) {
    panel.lblMainPanel[kNumberLabel].Caption = zeroPadded(player.gFileIndex + 1, 3);
    const auto index = static_cast<std::size_t>(player.gFileIndex);
    panel.lblMainPanel[kTitleLabel].Caption = player.texts.show(player.gFilePath[index], player.gFileTitle[index]);
}

const std::string& currentPath(const Player& player) {
    return player.gFilePath[static_cast<std::size_t>(player.gFileIndex)];
}

}  // namespace corvane::mdlPublicFunction
