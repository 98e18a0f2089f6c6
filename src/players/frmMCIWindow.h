// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/player.h"

namespace corvane {

/// The host of the multimedia control: what it tells goes to the medium that plays by it.
class frmMCIWindow : public MciWindowControls {
public:
    explicit frmMCIWindow(Player& player);

    /// Position as a fraction of length, both in packed CD form, in whole seconds; 0 for a length under a second.
    static void CalcPer(std::int32_t position, std::int32_t length, double& result);

private:
    void mmcMci_StatusUpdate();
    void mmcMci_Done(int notifyCode);

    Player& player_;
};

}  // namespace corvane
