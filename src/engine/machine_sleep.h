// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>

#include "engine/player.h"

namespace corvane {

/// What becomes of what plays while the machine sleeps: it is held where it stands, and goes on when the machine is
/// awake again, unless somebody has done something with the player meanwhile. What was paused or stopped stays so.
/// Called on the user-interface thread, from posted events.
class MachineSleep {
public:
    explicit MachineSleep(Player& player) : player_(player) {}
    MachineSleep(const MachineSleep&) = delete;
    MachineSleep& operator=(const MachineSleep&) = delete;

    void begins();
    void isOver();  ///< also where it did not come to it

private:
    Player& player_;
    std::optional<std::uint32_t> held_;  ///< Player::turns when something was held; empty: nothing is
};

}  // namespace corvane
