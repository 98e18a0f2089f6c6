// SPDX-License-Identifier: GPL-3.0-or-later
#include "players/frmMCIWindow.h"

#include "engine/mdlPublicFunction.h"
#include "players/media_window.h"

namespace corvane {

using mdlPublicFunction::mediaFailed;
using mdlPublicFunction::NextFile;
using mdlPublicFunction::packedSeconds;

frmMCIWindow::frmMCIWindow(Player& player) : MciWindowControls(player.ports.media), player_(player) {
    mmcMci->StatusUpdate.tie([this] { mmcMci_StatusUpdate(); });
    mmcMci->Done.tie([this](int notifyCode) { mmcMci_Done(notifyCode); });
    mmcMci->Failed.tie([this](const std::string& reason) { mediaFailed(player_, reason); });
}

void frmMCIWindow::CalcPer(std::int32_t position, std::int32_t length, double& result) {
    const std::int32_t seconds = packedSeconds(length);
    result = seconds > 0 ? static_cast<double>(packedSeconds(position)) / seconds : 0;
}

void frmMCIWindow::mmcMci_StatusUpdate() { progressIn(player_, kId); }

void frmMCIWindow::mmcMci_Done(int notifyCode) {
    if (notifyCode == kNotifySuccessful) NextFile(player_);
}

}  // namespace corvane
