// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/mdlPublicFunction.h"
#include "engine/panel_texts.h"

namespace corvane::mdlPublicFunction {

namespace {

/// The list may have been replaced under the file that plays: its window goes when the next one plays in another.
void giveWay(Player& player, const OpenMedium& next) {
    const auto open = player.media.current();
    if (!open) return;
    open->giveUp();
    if (open->window() != next.window()) open->close(false);
}

void openFresh(Player& player, MainPanelControls& panel) {
    const std::string path = currentPath(player);
    const auto medium = player.ports.files.lookUp(path) ? player.media.make(path) : nullptr;
    if (!medium || !medium->canOpen(path)) {
        askAboutFile(player, path, "");
        return;
    }
    giveWay(player, *medium);
    player.media.setCurrent(medium);
    player.openedPath = path;
    player.opening = {player.lists, player.opening.number + 1};
    panel.lblMainPanel[kTextLabel].Caption = medium->type().text;
    panel.lblMainPanel[kTimeLabel].ToolTipText = medium->timeTip();
    showEntry(player, panel);
    panel.pctSlide.Width = kTwipsPerPixel;
    medium->open();
}

/// Place in the list of the entry that comes after the present one; empty: none does.
std::optional<std::size_t> nextEntry(const Player& player) {
    const std::size_t next = static_cast<std::size_t>(player.gFileIndex) + 1;
    if (next < static_cast<std::size_t>(player.gFileCount)) return next;
    if (player.gFileCount == 0 || !player.gRepeat) return std::nullopt;  // 0: emptied since the file was opened
    return 0;
}

}  // namespace

void PlayFile(Player& player) {
    auto* panel = player.forms.find<MainPanelControls>();
    if (player.gFileCount == 0 || panel == nullptr) return;
    ++player.turns;
    player.gPlaying = true;
    player.gSlideState = mdlDefinePublic::kNoDrag;
    panel->cmdMainPanel[kPlay].Enabled = false;
    nameStepButtons(*panel, false);
    panel->cmdMainPanel[kEditor].Enabled = false;
    if (panel->isPaused()) {
        panel->cmdMainPanel[kPause].Enabled = true;
        if (const auto medium = player.media.current()) medium->resume();
    } else {
        openFresh(player, *panel);
    }
}

void prepareNext(Player& player) {
    const auto next = nextEntry(player);
    if (!next) return player.ports.media.expectNothing();
    const std::string& path = player.gFilePath[*next];
    player.texts.expect(path);
    player.media.make(path)->makeReady(path);
}

void prepareOtherNext(Player& player) {
    if (player.media.isOpen() && !player.pictureAwaited) prepareNext(player);
}

void prepareFirst(Player& player) {
    const bool begins = player.gAutoPlay || player.playsAtStart || player.remembered.openAtUs;
    if (player.gFileCount == 0 || !begins) return;
    player.media.make(currentPath(player))->makeReady(currentPath(player));
}

}  // namespace corvane::mdlPublicFunction
