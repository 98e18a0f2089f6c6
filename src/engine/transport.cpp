// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/mdlPublicFunction.h"
#include "engine/panel_texts.h"

namespace corvane::mdlPublicFunction {

namespace {

bool somethingIsOpen(const Player& player) { return player.gFileCount > 0 || player.media.isOpen() || player.gPlaying; }

void moveForward(Player& player) {
    ++player.gFileIndex;
    if (player.gFileIndex >= player.gFileCount) player.gFileIndex = 0;
}

void moveBackward(Player& player) {
    if (player.gFileIndex > 0) {
        --player.gFileIndex;
    } else if (player.gRepeat) {
        player.gFileIndex = static_cast<std::int16_t>(player.gFileCount - 1);
    }
}

void forgetBackPress(Player& player, MainPanelControls& panel) {
    player.gBackPending = false;
    panel.tmrPlayBack.Enabled = false;
}

void closeAndPlay(Player& player) {
    CloseFile(player, keepsPicture(player));
    PlayFile(player);
}

/// The file just opened holds at its beginning, unless it could not be opened.
void holdOpened(Player& player) {
    if (player.media.isOpen()) PauseFile(player);
}

}  // namespace

bool keepsPicture(const Player& player) {
    const auto medium = player.media.current();
    return (!medium || medium->staysUp()) && !player.gImageHide;
}

bool canGoForward(const Player& player) { return player.gFileIndex < player.gFileCount - 1 || player.gRepeat; }

void nextWhilePlaying(Player& player, MainPanelControls& panel) {
    if (canGoForward(player)) {
        moveForward(player);
        closeAndPlay(player);
        return;
    }
    player.gFileIndex = 0;
    showEntry(player, panel);
    CloseFile(player, false);
}

void previousWhilePlaying(Player& player, MainPanelControls& panel) {
    if (!player.gBackPending) {
        player.gBackPending = true;
        panel.tmrPlayBack.restart();
        return;
    }
    forgetBackPress(player, panel);
    moveBackward(player);
    showEntry(player, panel);  // also when its file is missing
    closeAndPlay(player);
}

void PauseFile(Player& player) {
    auto* panel = player.forms.find<MainPanelControls>();
    if (panel == nullptr || !somethingIsOpen(player) || !player.gPlaying) return;
    ++player.turns;
    const auto medium = player.media.current();
    if (!medium) {  // the file could not be opened: there is nothing to hold
        CloseFile(player, true);
        return;
    }
    player.gPlaying = false;
    forgetBackPress(player, *panel);
    panel->cmdMainPanel[kPlay].Enabled = true;
    panel->cmdMainPanel[kPause].Enabled = false;
    medium->pause();
}

void NextFile(Player& player) {
    auto* panel = player.forms.find<MainPanelControls>();
    if (panel == nullptr) return;
    ++player.turns;
    if (player.gFileCount == 0) {
        CloseFile(player, false);
    } else if (panel->isStopped()) {
        if (canGoForward(player)) {
            moveForward(player);
            showEntry(player, *panel);
        } else {
            CloseFile(player, false);
        }
    } else if (panel->isPaused()) {
        if (const auto medium = player.media.current()) medium->step();
    } else {
        nextWhilePlaying(player, *panel);
    }
}

void PrevFile(Player& player) {
    auto* panel = player.forms.find<MainPanelControls>();
    if (panel == nullptr) return;
    ++player.turns;
    if (player.gFileCount == 0) {
        player.gBackPending = false;
    } else if (panel->isStopped()) {
        player.gBackPending = false;
        moveBackward(player);
        showEntry(player, *panel);
    } else if (panel->isPaused()) {
        if (const auto medium = player.media.current()) medium->back();
    } else {
        previousWhilePlaying(player, *panel);
    }
}

void skipToNext(Player& player) {
    auto* panel = player.forms.find<MainPanelControls>();
    if (panel == nullptr) return;
    if (player.gFileCount == 0 || !panel->isPaused()) {
        NextFile(player);
        return;
    }
    nextWhilePlaying(player, *panel);
    holdOpened(player);
}

void skipToPrevious(Player& player) {
    auto* panel = player.forms.find<MainPanelControls>();
    if (panel == nullptr) return;
    if (player.gFileCount == 0 || panel->isStopped()) {
        PrevFile(player);
        return;
    }
    const bool paused = panel->isPaused();
    moveBackward(player);
    closeAndPlay(player);
    if (paused) holdOpened(player);
}

void CloseFile(Player& player, bool keepImage) {
    auto* panel = player.forms.find<MainPanelControls>();
    if (panel == nullptr) return;
    ++player.turns;
    const bool keptPicture = player.forms.find<ImageWindowControls>() != nullptr;
    if (!somethingIsOpen(player) && !keptPicture) return;
    closeMedia(player, *panel, keepImage);
    player.gPlaying = false;
    panel->cmdMainPanel[kPlay].Enabled = true;
    panel->cmdMainPanel[kPause].Enabled = true;
    panel->cmdMainPanel[kEditor].Enabled = true;
    nameStepButtons(*panel, false);
}

void playEntry(Player& player, int entry) {
    if (entry < 0 || entry >= player.gFileCount) return;
    CloseFile(player, keepsPicture(player));
    player.gFileIndex = static_cast<std::int16_t>(entry);
    PlayFile(player);
}

void closeMedia(Player& player, MainPanelControls& panel, bool keepImage) {
    forgetBackPress(player, panel);
    player.gSlideState = mdlDefinePublic::kNoDrag;
    const auto medium = player.media.current();
    if (medium) medium->giveUp();
    if (!keepImage) player.forms.unload<ImageWindowControls>();
    if (medium) medium->close(keepImage);
    player.media.setCurrent(nullptr);
    panel.pctSlide.Width = kTwipsPerPixel;
    setTime(panel, "");
    player.elapsedText.clear();
    panel.lblMainPanel[kTimeLabel].ToolTipText = "";
}

}  // namespace corvane::mdlPublicFunction
