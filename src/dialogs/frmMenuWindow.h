// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>

#include "engine/player.h"

namespace corvane {

/// The hidden form of the popup menu: what each item does.
class frmMenuWindow : public MenuWindowControls {
public:
    explicit frmMenuWindow(Player& player);

private:
    void mnuSub_Click(int index);
    void PlayCmd_Click(int index);
    void PlayMode_Click(int index);
    void PlayCustom_Click(int index);
    void setStartPosition();
    void setStopPosition();
    /// The position of the open file in the unit of its kind; empty for a picture or nothing.
    std::optional<std::int32_t> currentPosition() const;

    Player& player_;
};

}  // namespace corvane
