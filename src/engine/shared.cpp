// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/hands.h"
#include "engine/mdlPublicFunction.h"
#include "engine/panel_texts.h"

namespace corvane::mdlPublicFunction {

namespace {

constexpr std::uint32_t kShowFlags = 0x53;  // no size, no move, no activate, show
constexpr std::uint32_t kHideFlags = 0x93;  // no size, no move, no activate, hide

void stopAndLeave(Player& player, MainPanelControls& panel) {
    panel.cmdMainPanel[kPower].Enabled = false;
    stopAll(player);
    player.forms.unload<MainPanelControls>();
}

using M = MenuWindowControls;

void prepareMenu(Player& player, M& menu, const MainPanelControls& panel) {
    menu.PlayMode[M::kRepeatEntry].Checked = player.gRepeat;
    menu.mnuSub[M::kMin].Caption = panel.WindowState != WindowState::Normal ? "Max" : "Min";
    menu.PlayCmd[M::kPlayEntry].Visible = panel.cmdMainPanel[kPlay].Enabled.get();
    menu.PlayCmd[M::kPauseEntry].Visible = panel.cmdMainPanel[kPause].Enabled.get();
    const auto index = static_cast<std::size_t>(player.gFileIndex);
    menu.PlayCustom[M::kStartPosition].Checked = player.gStartPosition[index] != 0;
    menu.PlayCustom[M::kStopPosition].Checked = player.gStopPosition[index] != 0;
    const auto medium = player.media.current();
    const bool settable = medium && medium->takesCustomPositions() && panel.isPaused();
    menu.PlayCustom[M::kStartPosition].Enabled = settable;
    menu.PlayCustom[M::kStopPosition].Enabled = settable;
    menu.PlayCustom[M::kCustomOn].Checked = player.gCustomMode != mdlDefinePublic::kCustomOff;
    menu.PlayCustom[M::kCustomRepeats].Checked = player.gCustomMode == mdlDefinePublic::kCustomRepeat;
}

}  // namespace

Answer messageBox(Player& player, const std::string& text, Buttons buttons, Icon icon) {
    const EventLoop::Hold hold(player.ports.loop);
    return player.ports.dialogs.messageBox(text, "Corvane", buttons, icon);
}

void SetWindowZOrder(Player& player, Form& window, int insertAfter, std::int16_t show) {
    player.ports.windows.SetWindowPos(window, insertAfter, show != 0 ? kShowFlags : kHideFlags);
}

void setPanelCaption(Player& player, int label, const std::string& caption) {
    const auto index = static_cast<std::size_t>(label);
    if (auto* panel = player.forms.find<MainPanelControls>()) {
        panel->lblMainPanel[index].Caption = caption;
    } else {
        player.panelCaptions[index] = caption;
    }
}

void lightLamp(MainPanelControls& panel, int lamp, bool on) {
    const auto visible = static_cast<std::size_t>(lamp);
    panel.imgMainPanel[visible].Picture = panel.imgMainPanel[visible + (on ? 2 : 1)].Picture;
    panel.imgMainPanel[visible].Checked = on;
}

void toggleRepeat(Player& player) {
    auto* panel = player.forms.find<MainPanelControls>();
    if (panel == nullptr) return;
    auto& images = panel->imgMainPanel;
    player.gRepeat = !player.gRepeat;
    panel->cmdMainPanel[kRepeat].Picture = images[player.gRepeat ? kRepeatOnImage : kRepeatOffImage].Picture;
    panel->cmdMainPanel[kRepeat].Checked = player.gRepeat;
    lightLamp(*panel, kRepeatLamp, player.gRepeat);
    prepareOtherNext(player);  // what comes after the last entry
}

bool commandKey(Player& player, int character) {
    auto* panel = player.forms.find<MainPanelControls>();
    if (panel == nullptr || character == 0) return false;
    auto& buttons = panel->cmdMainPanel;
    if (character == player.gKeyPower) {
        stopAndLeave(player, *panel);
    } else if (character == player.gKeyMin) {
        panel->WindowState = WindowState::Minimized;
    } else if (character == player.gKeyRepeat) {
        toggleRepeat(player);
    } else if (character == player.gKeyShuffle) {
        if (player.gFileCount > 2) ShuffleList(player);
    } else if (character == player.gKeyPlay) {
        if (buttons[kPlay].Enabled) PlayFile(player);
    } else if (character == player.gKeyPause) {
        if (buttons[kPause].Enabled) PauseFile(player);
    } else if (character == player.gKeyStop) {
        stopAll(player);
    } else if (character == player.gKeyPrev) {
        PrevFile(player);
    } else if (character == player.gKeyNext) {
        NextFile(player);
    } else if (character == player.gKeyVolumeUp) {
        SetVolume(player, 0);
    } else if (character == player.gKeyVolumeDown) {
        SetVolume(player, 1);
    } else {
        return false;
    }
    return true;
}

void fixedKeyDown(Player& player, const KeyArgs& key) {
    if (key.keyCode == kKeyF1 && key.shift == 0) player.ports.dialogs.help();
    if (player.conveniences.hands && (screenKey(player, key) || movieKey(player, key))) return;
    if (key.shift != kAltMask) return;
    if (key.keyCode == kKeyF4) {
        player.gAltMenuArmed = false;
        powerOff(player);
    } else {
        player.gAltMenuArmed = true;
    }
}

void fixedKeyUp(Player& player, const KeyArgs& /*key*/) {
    if (!player.gAltMenuArmed) return;
    player.gAltMenuArmed = false;
    showPopupMenu(player);
}

void powerOff(Player& player) {
    if (auto* panel = player.forms.find<MainPanelControls>()) stopAndLeave(player, *panel);
}

void showPopupMenu(Player& player) {
    auto* panel = player.forms.find<MainPanelControls>();
    auto* menu = player.forms.find<MenuWindowControls>();
    if (panel == nullptr || menu == nullptr) return;
    prepareMenu(player, *menu, *panel);
    player.ports.dialogs.popUp(menu->mnuMenu);
}

}  // namespace corvane::mdlPublicFunction
