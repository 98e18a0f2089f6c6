// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/frmMenuWindow.h"

#include <optional>

#include "engine/mdlPublicFunction.h"

namespace corvane {

using mdlDefinePublic::kCustomOff;
using mdlDefinePublic::kCustomPlay;
using mdlDefinePublic::kCustomRepeat;
using mdlPublicFunction::messageBox;
using mdlPublicFunction::NextFile;
using mdlPublicFunction::PauseFile;
using mdlPublicFunction::PlayFile;
using mdlPublicFunction::powerOff;
using mdlPublicFunction::PrevFile;
using mdlPublicFunction::SetVolume;
using mdlPublicFunction::ShuffleList;
using mdlPublicFunction::stopAll;
using mdlPublicFunction::toggleRepeat;

frmMenuWindow::frmMenuWindow(Player& player) : player_(player) {
    for (MenuItem& item : mnuSub) {
        item.Click.tie([this, index = item.index()] { mnuSub_Click(index); });
    }
    for (MenuItem& item : PlayCmd) {
        item.Click.tie([this, index = item.index()] { PlayCmd_Click(index); });
    }
    for (MenuItem& item : PlayMode) {
        item.Click.tie([this, index = item.index()] { PlayMode_Click(index); });
    }
    for (MenuItem& item : PlayCustom) {
        item.Click.tie([this, index = item.index()] { PlayCustom_Click(index); });
    }
}

void frmMenuWindow::mnuSub_Click(int index) {
    auto* panel = player_.forms.find<MainPanelControls>();
    if (panel == nullptr) return;
    switch (index) {
        case kMin:
            panel->WindowState =
                panel->WindowState == WindowState::Normal ? WindowState::Minimized : WindowState::Normal;
            break;
        case kHelp:
            player_.ports.dialogs.help();
            break;
        case kPowerOff:
            powerOff(player_);
            break;
        default:
            break;
    }
}

void frmMenuWindow::PlayCmd_Click(int index) {
    auto* panel = player_.forms.find<MainPanelControls>();
    if (panel == nullptr) return;
    switch (index) {
        // The tests look one button above those that the keys test, on purpose.
        case kPlayEntry:
            if (panel->cmdMainPanel[kPause].Enabled) PlayFile(player_);
            break;
        case kPauseEntry:
            if (panel->cmdMainPanel[kStop].Enabled) PauseFile(player_);
            break;
        case kStopEntry:
            stopAll(player_);
            break;
        case kPrevEntry:
            player_.gBackPending = true;  // goes back one file at once
            PrevFile(player_);
            break;
        case kNextEntry:
            NextFile(player_);
            break;
        case kVolumeUpEntry:
            SetVolume(player_, 0);
            break;
        case kVolumeDownEntry:
            SetVolume(player_, 1);
            break;
        default:
            break;
    }
}

void frmMenuWindow::PlayMode_Click(int index) {
    if (index == kRepeatEntry) {
        toggleRepeat(player_);
    } else if (player_.gFileCount >= 3) {
        ShuffleList(player_);
    }
}

void frmMenuWindow::PlayCustom_Click(int index) {
    switch (index) {
        case kStartPosition:
            setStartPosition();
            break;
        case kStopPosition:
            setStopPosition();
            break;
        case kCustomOn:
            player_.gCustomMode = player_.gCustomMode == kCustomOff ? kCustomPlay : kCustomOff;
            break;
        case kCustomRepeats:
            player_.gCustomMode = player_.gCustomMode == kCustomRepeat ? kCustomPlay : kCustomRepeat;
            break;
        default:
            break;
    }
}

std::optional<std::int32_t> frmMenuWindow::currentPosition() const {
    const auto medium = player_.media.current();
    return medium ? medium->position() : std::nullopt;
}

void frmMenuWindow::setStartPosition() {
    if (const auto position = currentPosition()) {
        player_.gStartPosition[static_cast<std::size_t>(player_.gFileIndex)] = *position;
    }
}

void frmMenuWindow::setStopPosition() {
    const auto position = currentPosition();
    if (!position) return;
    const auto index = static_cast<std::size_t>(player_.gFileIndex);
    const std::int32_t start = player_.gStartPosition[index];
    player_.gStopPosition[index] = *position;
    if (player_.media.current()->isBefore(start, *position)) return;
    player_.gStopPosition[index] = 0;
    messageBox(player_, "Stop Position too Small!", Buttons::Ok, Icon::Stop);
}

}  // namespace corvane
