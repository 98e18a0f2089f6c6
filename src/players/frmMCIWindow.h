// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/player.h"

namespace corvane {

/// The host of the multimedia control: progress, quick play, custom stop rules, and on to the next file.
class frmMCIWindow : public MciWindowControls {
public:
    explicit frmMCIWindow(Player& player);

    /// Position as a fraction of length, both in packed CD form, in whole seconds; 0 for a length under a second.
    static void CalcPer(std::int32_t position, std::int32_t length, double& result);

private:
    void mmcMci_StatusUpdate();
    void mmcMci_Done(int notifyCode);
    void takeLength();
    void showProgress(std::int32_t position);
    bool isQuicklyPlayed(std::int32_t position) const;
    bool isPastStop(std::int32_t position) const;
    void returnToStart();
    bool isCd() const { return player_.gMediaKind == mdlDefinePublic::mkCDTrack; }

    Player& player_;
};

}  // namespace corvane
