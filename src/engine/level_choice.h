// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "platform/sound_level.h"

namespace corvane {

struct Player;

/// How loud the entry of the list with that path is played: the present one, else the next one. By its album where it
/// is played as a part of one: the list has not been shuffled, and its neighbours of the same folder follow each other,
/// by the numbers on one album in their tags or by their names. Without the convenience as it was recorded.
SoundLevel soundLevelOf(const Player& player, const std::string& path);

}  // namespace corvane
