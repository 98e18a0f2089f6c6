// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "engine/player.h"

/// Times of the open file in one unit for all kinds: microseconds from its beginning.
namespace corvane::mdlPublicFunction {

std::int64_t openLengthUs(const Player& player);    ///< 0: nothing is open, or not known (yet)
std::int64_t openPositionUs(const Player& player);  ///< 0: nothing is open; inside the length, where that is known
/// The open file's position moves by itself now: not before a movie's delay is over, nor behind its end.
bool isProgressing(const Player& player);
/// Goes to a position inside the length and shows it; what plays goes on from there, what is paused holds there.
/// Nothing while the length is not known or a movie that has ended is about to hand over.
void seekOpenFile(Player& player, std::int64_t positionUs);

}  // namespace corvane::mdlPublicFunction
