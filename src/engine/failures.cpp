// SPDX-License-Identifier: GPL-3.0-or-later
// Files that cannot be opened, and answers that come too late.
#include "engine/mdlPublicFunction.h"
#include "engine/panel_texts.h"
#include "types/text.h"

namespace corvane::mdlPublicFunction {

namespace {

std::string cannotOpen(const std::string& path, const std::string& reason) {
    return text::onOneLine(path) + " Can't open!!" + (reason.empty() ? "" : "\r\n" + reason);
}

void unlessOvertaken(Player& player, std::uint32_t asked, void (*operation)(Player&)) {
    player.ports.loop.post([&player, asked, operation] {
        if (player.turns == asked) operation(player);
    });
}

}  // namespace

void askAboutFile(Player& player, const std::string& path, const std::string& reason) {
    const std::uint32_t asked = player.turns;
    switch (messageBox(player, cannotOpen(path, reason), Buttons::AbortRetryIgnore, Icon::Stop)) {
        case Answer::Retry:
            unlessOvertaken(player, asked, PrevFile);
            break;
        case Answer::Ignore:
            unlessOvertaken(player, asked, NextFile);
            break;
        default:
            if (player.turns == asked) CloseFile(player, false);
            break;
    }
}

void mediaFailed(Player& player, const std::string& reason) {
    auto* panel = player.forms.find<MainPanelControls>();
    if (panel == nullptr || !player.media.isOpen()) return;
    const std::string path = player.openedPath;
    if (player.opening.list != player.lists) {
        CloseFile(player, false);
        messageBox(player, cannotOpen(path, reason), Buttons::Ok, Icon::Stop);
        return;
    }
    closeMedia(player, *panel, keepsPicture(player));
    showPlaying(player, *panel);  // as it is after a play that found no file, also when the file was paused
    ++player.turns;
    askAboutFile(player, path, reason);
}

void listReplaced(Player& player) {
    ++player.lists;
    ++player.turns;
    player.shuffled = false;
    clearCustomPositions(player);
    player.gBackPending = false;
    auto* panel = player.forms.find<MainPanelControls>();
    if (panel == nullptr) return;
    panel->tmrPlayBack.Enabled = false;
    if (!player.media.isOpen() && !panel->isStopped()) {
        CloseFile(player, true);
    } else if (player.media.isOpen() && panel->isStopped()) {
        panel->cmdMainPanel[kPause].Enabled = false;  // a held picture whose press of previous is void: it is held on
    }
}

bool isStillOpen(const Player& player, const Opening& opening) {
    return player.media.isOpen() && player.opening == opening;
}

}  // namespace corvane::mdlPublicFunction
